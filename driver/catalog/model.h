// What this model has switched on, and which facility is behind a store or a section of a settings file.
//
// Readers: IsFacilityEnabled, IsStoreEnabled, IsFileSectionEnabled. Ids are stored or shared: never renumber one.
#pragma once

#include <cstdint>

namespace heron::catalog {

struct FacilitySwitch {
  uint16_t facility;
  bool on;
};

struct FacilityOf {
  uint16_t id;
  uint16_t facility;
};

// clang-format off
inline constexpr FacilitySwitch kFacilities[] = {
    {1, true}, {2, true}, {3, true}, {4, true}, {5, true}, {6, true}, {7, true}};

inline constexpr FacilityOf kStoreFacilities[] = {{4097, 2}, {4098, 3}, {4099, 4}, {4100, 5}, {4101, 6}, {8198, 7}};

inline constexpr FacilityOf kFileSectionFacilities[] = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 6}, {8, 7}};
// clang-format on

}  // namespace heron::catalog

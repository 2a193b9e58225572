// Which paper trays a paper feed unit doesn't have.
//
// Reader: CatalogQueryFiltered. A row hides the tray `tray` (a value of feature 27 and its kin) from lists while the
// unit `sourceUnit` (a value of feature 60) is installed.
#pragma once

#include <cstdint>

namespace heron::catalog {

struct HiddenTray {
  int16_t tray;
  uint16_t sourceUnit;
};

// clang-format off
inline constexpr HiddenTray kHiddenTrays[] = {
    {258, 1},
    {259, 1}, {259, 3}, {259, 5},
    {270, 1}, {270, 2}, {270, 3},
};
// clang-format on

}  // namespace heron::catalog

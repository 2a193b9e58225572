// The option catalogue: what this printer model offers, feature by feature, and the texts that go with it.
//
// A feature is a number from 0 to 1005. A feature without rows doesn't exist on this model: its count and its default
// are 0. Queries never fail loudly: an unknown feature, a bad selector or a bad index gives 0.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/api/types.h"

namespace heron {

/// Opened per operation by OpenResourceContext, closed by its opener.
struct ResourceContext {
  platform::HMODULE module;  ///< the resource module, or null: labels are then empty, everything else works
  uint32_t reserved;         ///< 0
  uint32_t destinationMask;  ///< 0xFF, 0xFF00 or 0x10000
};

/// The user's country code, from the locale; 1 if it can't be read.
uint32_t ReadLocaleCountry();

/// 0x10000 for country 81, 0xFF00 for the countries of the second destination, else 0xFF.
uint32_t DestinationMask(uint32_t country);

/// Null only if memory runs out.
ResourceContext* OpenResourceContext(uint32_t country);
void CloseResourceContext(ResourceContext* context);  ///< null is accepted

struct CloseContext {
  void operator()(ResourceContext* context) const { CloseResourceContext(context); }
};

/// What a query asks. The three paper groups come as: every row, row `index`, the default row.
enum Selector : uint32_t {
  kCount = 1,      ///< number of rows
  kAllLabels = 2,  ///< labels, `size` characters apart; gives count x size
  kLabel = 3,      ///< label or text of row `index` into `size` (characters for a list, bytes for a text); its length
  kDefaultLabel = 4,  ///< the same for the default row
  kAllValues = 5,     ///< values as u16 if `size` is 2, else as i32; gives 0
  kValue = 6,         ///< value of row `index` (a range: its default)
  kDefaultValue = 7,  ///< value of the default row
  kMin = 8,
  kMax = 9,
  kStep = 10,
  kSizes = 30,  ///< width and height, u32, hundredths of a millimetre
  kSize = 31,
  kDefaultSize = 32,
  kMargins = 33,  ///< printable left, top, right, bottom, u32, hundredths of a millimetre
  kMargin = 34,
  kDefaultMargin = 35,
  kDotSizes = 36,  ///< width and height, u32, dots at 300 dpi
  kDotSize = 37,
  kDefaultDotSize = 38,
  kDotMargins = 39,  ///< printable left, top, right, bottom, u32, dots at 300 dpi
  kDotMargin = 40,
  kDefaultDotMargin = 41,
};

/// One query. `out` must have room for what the selector writes; only selectors 1 and 6 to 10 accept a null `out`.
/// Null `resources` gives 0. An index at or above the count gives 0, also with the selectors of a default row. A paper
/// selector leaves the slot of a row without geometry as it was.
uint32_t CatalogQuery(const ResourceContext* resources, uint16_t feature, uint32_t selector, void* out, uint32_t index,
                      uint32_t size);

/// The destination's default value of a list, or a range's default; 0 for a feature that doesn't exist.
uint32_t CatalogDefault(const ResourceContext* resources, uint16_t feature);

/// The tray lists as the paper feed unit `source_unit` leaves them: selector 1 counts, 2 writes labels `size`
/// characters apart and returns their lengths in all, 5 writes u16 values; any other selector gives 0.
uint32_t CatalogQueryFiltered(const ResourceContext* resources, uint16_t feature, uint32_t selector, void* out,
                              uint32_t index, uint32_t size, uint16_t source_unit);

/// Rows of list feature `feature` that store `value`: index of the first one, or -1.
int CatalogIndexOf(uint16_t feature, int32_t value);

bool IsFacilityEnabled(uint16_t facility);       ///< 1 to 7
bool IsStoreEnabled(uint16_t store_id);          ///< 4097 to 4101, 8198
bool IsFileSectionEnabled(uint16_t section_id);  ///< sections 1 to 8 of a settings file

/// What the tables know of a feature, for listings. Spans point into constant tables.
enum class FeatureKind : uint8_t { kNone = 0, kList = 1, kRange = 3, kText = 4, kBoundedText = 5 };
struct ListOption {
  uint16_t feature;
  uint16_t label;  ///< text number, 0 for none
  int16_t value;
  uint32_t defaultMask;  ///< default for a destination that shares a bit
};
FeatureKind KindOf(uint16_t feature);
std::u16string_view FeatureName(uint16_t feature);            ///< empty if the feature has none
std::span<const ListOption> ListOptionsOf(uint16_t feature);  ///< rows of a list feature, else empty
inline constexpr uint16_t kFeatureLimit = 1006;               ///< features lie below this number

}  // namespace heron

// The catalogue's tables in the form that queries walk: rows, and an index that leads from a feature to its rows.
//
// Private to this room. Everything is constant and made at compile time, so a look-up is one index access from any
// thread.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "catalog/catalog.h"

namespace heron::catalog {

inline constexpr uint32_t kDestinationFirst = 0xFF;     ///< inch countries
inline constexpr uint32_t kDestinationSecond = 0xFF00;  ///< metric countries
inline constexpr uint32_t kDestinationThird = 0x10000;  ///< country 81
inline constexpr uint32_t kEveryDestination = kDestinationFirst | kDestinationSecond | kDestinationThird;

struct RangeOption {
  uint16_t feature;
  int16_t min;
  int16_t max;
  uint16_t defaultValue;
  uint16_t step = 1;
};

/// A row of either text table; an unbounded text, and every one of the plain table, has kUnbounded twice.
struct TextOption {
  uint16_t feature;
  std::u16string_view text;
  uint32_t defaultMask;
  uint32_t min;
  uint32_t max;
};
inline constexpr uint32_t kUnbounded = 0xFFFFFFFF;

struct Feature {
  FeatureKind kind = FeatureKind::kNone;
  uint16_t first = 0;  ///< its first row in the table of its kind
  uint16_t count = 0;
  std::u16string_view name;
};

/// Never fails: a feature that doesn't exist is of kind kNone with 0 rows.
const Feature& FeatureOf(uint16_t feature);

/// Rows of a feature of the kind at hand; the caller has looked at `feature.kind`.
std::span<const ListOption> ListRows(const Feature& feature);
const RangeOption& RangeRow(const Feature& feature);
std::span<const TextOption> TextRows(const Feature& feature);  ///< of either kind of text

/// Index of the last row that is a default for the destination; 0 if none is. `rows` isn't empty.
template <typename Row>
uint32_t DefaultIndex(std::span<const Row> rows, uint32_t destination_mask) {
  uint32_t index = 0;
  for (uint32_t i = 0; i < rows.size(); ++i) {
    if ((rows[i].defaultMask & destination_mask) != 0) index = i;
  }
  return index;
}

/// Geometry of a paper: in hundredths of a millimetre and in dots at 300 dpi. Rectangles are left, top, right, bottom.
struct PaperGeometry {
  uint16_t code = 0;
  std::array<uint32_t, 2> size{};
  std::array<uint32_t, 4> printable{};
  std::array<uint32_t, 2> dotSize{};
  std::array<uint32_t, 4> dotPrintable{};
};

/// The first row with the paper code that `value` holds, or null.
const PaperGeometry* GeometryOf(int16_t value);
/// Every row; for listings and checks.
std::span<const PaperGeometry> AllGeometry();

}  // namespace heron::catalog

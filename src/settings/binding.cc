#include "settings/binding.h"

#include <algorithm>

#include "settings/paper_feed_tables.h"

namespace heron {
namespace {

constexpr uint8_t kAutomatic = 1;
constexpr uint16_t kFamilyBits = 0x3000;

/// The code of the size twice as large, or the code itself.
uint16_t Doubled(uint16_t paper) {
  const auto row = std::ranges::find(kHalfSizeTable, paper, &HalfSize::paper);
  return row == kHalfSizeTable.end() ? paper : row->doubled;
}

/// Feed class of the sheet, 0 if the paper isn't known. The first condition that holds decides.
uint8_t FeedClass(const DriverEnv& env, uint16_t paper) {
  const auto row = std::ranges::find(kPaperFeedTable, paper, &PaperFeed::paper);
  if (row == kPaperFeedTable.end()) return 0;
  if (Get<"lpPRNType">(env) == 3 || Get<"AdhesiveBind_Check">(env) == 1) return 1;
  if (Get<"Fold_Check">(env) == 1) {
    const uint8_t fold = Get<"lpFold">(env);
    if (fold == 21 && std::ranges::count(kRotatedPairTable, paper, &RotatedPair::rotated) > 0) return 1;
    if (fold == 22 && std::ranges::count(kRotatedPairTable, paper, &RotatedPair::plain) > 0) return 2;
  }
  return row->feedClass;
}

}  // namespace

int16_t SheetOrientation(const DriverEnv& env) {
  int16_t orientation = Get<"dmOrientation">(env);
  const uint8_t layout = Get<"lpLayout">(env);
  if (Get<"Nup_Check">(env) == 1 && (layout == 5 || layout == 8)) orientation = FlipOrientation(orientation);
  if (Get<"POD_OnePerSheet_Check">(env) == 1) orientation = FlipOrientation(orientation);
  return orientation;
}

uint8_t ComputeBindingSide(const DriverEnv& env) {
  const uint8_t position = Get<"lpBindPosit">(env);
  if (position != kAutomatic) return position;
  auto paper = static_cast<uint16_t>(Get<"lpOutputPaper">(env) & ~kFamilyBits);
  if (Get<"POD_OnePerSheet_Check">(env) == 1) paper = Doubled(paper);
  const bool portrait = SheetOrientation(env) == 1;
  switch (FeedClass(env, paper)) {
    case 1:
      return portrait ? 2 : 4;
    case 2:
      return portrait ? 4 : 2;
    default:
      return position;
  }
}

uint8_t ComputeBindMarginSide(const DriverEnv& env) {
  switch (ComputeBindingSide(env)) {
    case 3:
      return 2;
    case 4:
      return 3;
    default:
      return 1;
  }
}

}  // namespace heron

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
uint8_t FeedClass(const BindingChoice& choice, uint16_t paper) {
  const auto row = std::ranges::find(kPaperFeedTable, paper, &PaperFeed::paper);
  if (row == kPaperFeedTable.end()) return 0;
  if (choice.printType == 3 || choice.adhesive) return 1;
  if (choice.fold == 21 && std::ranges::count(kRotatedPairTable, paper, &RotatedPair::rotated) > 0) return 1;
  if (choice.fold == 22 && std::ranges::count(kRotatedPairTable, paper, &RotatedPair::plain) > 0) return 2;
  return row->feedClass;
}

BindingChoice ChoiceOf(const DriverEnv& env) {
  return {.position = Get<"lpBindPosit">(env),
          .paper = static_cast<uint16_t>(Get<"lpOutputPaper">(env)),
          .orientation = static_cast<uint16_t>(Get<"dmOrientation">(env)),
          .printType = Get<"lpPRNType">(env),
          .layout = Get<"Nup_Check">(env) == 1 ? Get<"lpLayout">(env) : uint8_t{0},
          .fold = Get<"Fold_Check">(env) == 1 ? Get<"lpFold">(env) : uint8_t{0},
          .onePerSheet = Get<"POD_OnePerSheet_Check">(env) == 1,
          .adhesive = Get<"AdhesiveBind_Check">(env) == 1};
}

}  // namespace

int16_t SheetOrientation(const BindingChoice& choice) {
  auto orientation = static_cast<int16_t>(choice.orientation);
  if (choice.layout == 5 || choice.layout == 8) orientation = FlipOrientation(orientation);
  if (choice.onePerSheet) orientation = FlipOrientation(orientation);
  return orientation;
}

int16_t SheetOrientation(const DriverEnv& env) {
  return SheetOrientation(ChoiceOf(env));
}

uint8_t BindingSide(const BindingChoice& choice) {
  const auto position = static_cast<uint8_t>(choice.position);
  if (position != kAutomatic) return position;
  auto paper = static_cast<uint16_t>(choice.paper & ~kFamilyBits);
  if (choice.onePerSheet) paper = Doubled(paper);
  const bool portrait = SheetOrientation(choice) == 1;
  switch (FeedClass(choice, paper)) {
    case 1:
      return portrait ? 2 : 4;
    case 2:
      return portrait ? 4 : 2;
    default:
      return position;
  }
}

uint8_t ComputeBindingSide(const DriverEnv& env) {
  return BindingSide(ChoiceOf(env));
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

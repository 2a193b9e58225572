#include "settings/binding.h"

#include <algorithm>

#include "catalog/other_values.h"
#include "catalog/paper_codes.h"
#include "settings/paper_feed_tables.h"

namespace heron {
namespace {

namespace bind = value::lpBindPosit;
namespace fold = value::lpFold;

/// Feed classes of kPaperFeedTable: which side of the sheet goes first.
constexpr uint8_t kShortEdgeFirst = 1;
constexpr uint8_t kLongEdgeFirst = 2;

/// The code of the size twice as large, or the code itself.
uint16_t Doubled(uint16_t paper) {
  const auto row = std::ranges::find(kHalfSizeTable, paper, &HalfSize::paper);
  return row == kHalfSizeTable.end() ? paper : row->doubled;
}

/// Feed class of the sheet, 0 if the paper isn't known. The first condition that holds decides.
uint8_t FeedClass(const BindingChoice& choice, uint16_t paper) {
  const auto row = std::ranges::find(kPaperFeedTable, paper, &PaperFeed::paper);
  if (row == kPaperFeedTable.end()) return 0;
  if (choice.printType == value::lpPRNType::kBooklet || choice.adhesive) return kShortEdgeFirst;
  if (choice.fold == fold::kTurnsBack && std::ranges::count(kRotatedPairTable, paper, &RotatedPair::rotated) > 0)
    return kShortEdgeFirst;
  if (choice.fold == fold::kTurns && std::ranges::count(kRotatedPairTable, paper, &RotatedPair::plain) > 0)
    return kLongEdgeFirst;
  return row->feedClass;
}

BindingChoice ChoiceOf(const DriverEnv& env) {
  return {.position = Get<"lpBindPosit">(env),
          .paper = static_cast<uint16_t>(Get<"lpOutputPaper">(env)),
          .orientation = static_cast<uint16_t>(Get<"dmOrientation">(env)),
          .printType = Get<"lpPRNType">(env),
          .layout = IsOn<"Nup_Check">(env) ? Get<"lpLayout">(env) : uint8_t{0},
          .fold = IsOn<"Fold_Check">(env) ? Get<"lpFold">(env) : uint8_t{0},
          .onePerSheet = IsOn<"POD_OnePerSheet_Check">(env),
          .adhesive = IsOn<"AdhesiveBind_Check">(env)};
}

}  // namespace

int16_t SheetOrientation(const BindingChoice& choice) {
  auto orientation = static_cast<int16_t>(choice.orientation);
  if (LayoutTurnsPages(choice.layout)) orientation = FlipOrientation(orientation);
  if (choice.onePerSheet) orientation = FlipOrientation(orientation);
  return orientation;
}

int16_t SheetOrientation(const DriverEnv& env) {
  return SheetOrientation(ChoiceOf(env));
}

uint8_t BindingSide(const BindingChoice& choice) {
  const auto position = static_cast<uint8_t>(choice.position);
  if (position != bind::kAuto) return position;
  auto sheet = static_cast<uint16_t>(choice.paper & ~paper::kFamilies);
  if (choice.onePerSheet) sheet = Doubled(sheet);
  const bool portrait = SheetOrientation(choice) == value::lpOrientation::kPortrait;
  switch (FeedClass(choice, sheet)) {
    case kShortEdgeFirst:
      return portrait ? bind::kLeft : bind::kTop;
    case kLongEdgeFirst:
      return portrait ? bind::kTop : bind::kLeft;
    default:
      return position;
  }
}

uint8_t ComputeBindingSide(const DriverEnv& env) {
  return BindingSide(ChoiceOf(env));
}

uint8_t ComputeBindMarginSide(const DriverEnv& env) {
  switch (ComputeBindingSide(env)) {
    case bind::kRight:
      return value::lpBindMargin::kRight;
    case bind::kTop:
      return value::lpBindMargin::kTop;
    default:
      return value::lpBindMargin::kLeft;
  }
}

}  // namespace heron

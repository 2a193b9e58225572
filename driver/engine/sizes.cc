// Papers, zoom and derived settings. Integer arithmetic in the order written; products are 64 bits wide.
#include "engine/sizes.h"

#include <algorithm>
#include <cstdlib>

#include "catalog/catalog.h"
#include "catalog/other_values.h"
#include "catalog/paper_codes.h"
#include "engine/setting.h"
#include "generated/features.h"
#include "rules/controls.h"
#include "settings/zoom.h"

namespace heron::engine {
namespace {

namespace layout = value::lpLayout;
namespace margin = value::lpBindMargin;
namespace order_of = value::lpOrder;
namespace print_type = value::lpPRNType;

constexpr uint16_t kRasterButton = 612;  ///< on the page of quality; no rule names it
constexpr int64_t kTolerance = 5;        ///< sizes closer than this count as equal

constexpr uint32_t HundredthMm(uint32_t thou) {
  return static_cast<uint32_t>(uint64_t{thou} * 254 / 100);
}

/// The entry as the user sees it now, which printer data may not hold yet.
CustomPaperEntry EntryOf(const UiState& ui, int32_t code) {
  const int number = CustomPaperNumber(code);
  return ui.stores.userPapers == nullptr ? DefaultUserPaper(number)
                                         : (*ui.stores.userPapers)[static_cast<size_t>(number - 1)];
}

Area PrintableArea(const UiState& ui, int32_t code) {
  if (IsCustomPaper(code)) {
    const CustomArea area = ComputeCustomInsets(ui, code);
    return {int64_t{area.width} - area.insets.left - area.insets.right,
            int64_t{area.height} - area.insets.top - area.insets.bottom};
  }
  static constexpr ResourceContext kNoTexts = {nullptr, 0, 0xFF};  // sizes need no destination
  const int row = CatalogIndexOf(feature::lpMediaSize, code);
  Rect rect{};
  if (row >= 0) CatalogQuery(&kNoTexts, feature::lpMediaSize, kMargin, &rect, static_cast<uint32_t>(row), sizeof rect);
  return {rect.Width(), rect.Height()};
}

Area SourceArea(const UiState& ui) {
  return PrintableArea(ui, Setting<u"lpMediaSize">(ui));
}

Area TargetArea(const UiState& ui) {
  const uint16_t source = Setting<u"lpMediaSize">(ui);
  const uint16_t output = Setting<u"lpOutputPaper">(ui);
  return PrintableArea(ui, IsCustomPaper(output) ? output : output | (source & paper::kFamilyF));
}

void SnapTo(const Area& source, Area& target) {
  if (std::abs(target.width - source.width) < kTolerance) target.width = source.width;
  if (std::abs(target.height - source.height) < kTolerance) target.height = source.height;
}

/// The smaller ratio of target to source, percent; 100 if the source has no size.
int64_t Ratio(const Area& source, Area& target) {
  if (source.width == 0 || source.height == 0) return 100;
  SnapTo(source, target);
  return std::min(target.width * 100 / source.width, target.height * 100 / source.height);
}

int64_t LowestZoom(const UiState& ui) {
  return RangeOf<u"Zoom">(ui).min;
}

void SetZoom(const UiState& ui, bool on, int64_t zoom) {
  Setting<u"ZoomCheck">(ui) = on ? 1 : 0;
  Setting<u"Zoom">(ui) = static_cast<uint16_t>(zoom);
}

void SetReducedZoom(const UiState& ui) {
  SetZoom(ui, true, ComputeReducedZoom(ui).zoom);
}

void SetFitZoom(const UiState& ui) {
  if (Setting<u"lpOutputPaper">(ui) == kSameAsDocument) return SetZoom(ui, false, 100);
  const Area source = SourceArea(ui);
  Area target = TargetArea(ui);
  SetZoom(ui, true, std::max(Ratio(source, target), LowestZoom(ui)));
}

/// Several pages on a sheet, by either of the two places where that can be set.
bool HasLayout(const UiState& ui) {
  return (IsOn<u"Nup_Check">(ui) && IsOn<u"Layout_Check2">(ui)) ||
         (IsOn<u"POD_Nup_Check">(ui) && IsOn<u"POD_Check">(ui));
}

bool MarginIsOn(const UiState& ui) {
  return (IsOn<u"BindMargin_Check">(ui) && IsOn<u"Layout_Check2">(ui)) ||
         (IsOn<u"POD_BindMargin_Check">(ui) && IsOn<u"POD_Check">(ui));
}

/// Whether the size ratio is to be looked at again after a change of this control.
bool AsksForFit(const UiState& ui, uint16_t id) {
  const bool reduces = Setting<u"lpMarginMode">(ui) == value::lpMarginMode::kReduce;
  const bool margin = IsOn<u"BindMargin_Check">(ui) || IsOn<u"POD_BindMargin_Check">(ui);
  const bool layout = IsOn<u"Nup_Check">(ui) || IsOn<u"Booklet_Check">(ui) || IsOn<u"POD_Nup_Check">(ui);
  switch (id) {
    case ControlId(u"lpMediaSize"):
    case ControlId(u"lpOutputPaper"):
      return true;
    case ControlId(u"Layout_Check2"):
    case ControlId(u"POD_Check"):
      return layout || ((!IsOn<u"Layout_Check2">(ui) || !IsOn<u"POD_Check">(ui)) && margin && reduces);
    case ControlId(u"Nup_Check"):
      return layout;
    case ControlId(u"BindMargin_Check"):
      return (!IsOn<u"BindMargin_Check">(ui) || !IsOn<u"POD_BindMargin_Check">(ui)) && reduces;
    case ControlId(u"lpMarginMode.Shift"):
      return Setting<u"lpMarginMode">(ui) == value::lpMarginMode::kShift;
    case kRasterButton:
      return Setting<u"lpGraphicsMode">(ui) == value::lpGraphicsMode::kRaster;
    default:
      return false;
  }
}

/// The margin in force: the larger side where both sides are printed.
int MarginThatCounts(const UiState& ui) {
  const uint16_t type = Setting<u"lpPRNType">(ui);
  const int front = Setting<u"fMargin">(ui);
  const int back = Setting<u"bMargin">(ui);
  return type == print_type::kTwoSided || type == print_type::kBooklet ? std::max(front, back) : front;
}

bool IsLandscape(const UiState& ui) {
  const bool turned = HasLayout(ui) && LayoutTurnsPages(Setting<u"lpLayout">(ui));
  const bool landscape = Setting<u"lpOrientation">(ui) == value::lpOrientation::kLandscape;
  return landscape != turned;
}

/// Whether the margin lies on the left or right of the sheet; else at its top or bottom.
bool MarginTakesWidth(const UiState& ui) {
  const uint16_t edge = Setting<u"lpBindMargin">(ui);
  return edge == margin::kLeft || edge == margin::kRight;
}
bool MarginTakesHeight(const UiState& ui) {
  const uint16_t edge = Setting<u"lpBindMargin">(ui);
  return edge == margin::kTop || edge == margin::kBottom;
}

/// The largest margin, millimetres, that leaves the reduced page at the lowest zoom.
int64_t LargestMargin(const UiState& ui, const ReducedZoom& reduced) {
  Area room = reduced.target;
  if (MarginTakesWidth(ui)) room.width += int64_t{reduced.margin} * 100;
  if (MarginTakesHeight(ui)) room.height += int64_t{reduced.margin} * 100;
  const int64_t lowest = LowestZoom(ui);
  return std::min((room.width - lowest * reduced.source.width / 100) / 100,
                  (room.height - lowest * reduced.source.height / 100) / 100);
}

/// Narrows the table's ranges to `largest` and brings the values into them.
void LimitRanges(MarginRanges& ranges, int64_t largest) {
  const auto limited = [largest](int min, int max) { return std::max(std::min<int64_t>(largest, max), int64_t{min}); };
  const int front = static_cast<int>(limited(ranges.minFront, ranges.maxFront));
  const int back = static_cast<int>(limited(ranges.minBack, ranges.maxBack));
  if (front != ranges.maxFront) ranges.bits |= MarginRanges::kFrontLimited;
  if (back != ranges.maxBack) ranges.bits |= MarginRanges::kBackLimited;
  ranges.maxFront = front;
  ranges.maxBack = back;
  if (front == ranges.minFront) ranges.bits |= MarginRanges::kFrontEmpty;
  if (back == ranges.minBack) ranges.bits |= MarginRanges::kBackEmpty;
  if ((ranges.bits & MarginRanges::kFrontLimited) != 0) {
    const int clamped = std::clamp(ranges.front, ranges.minFront, ranges.maxFront);
    if (clamped != ranges.front) ranges.bits |= MarginRanges::kFrontChanged;
    ranges.front = clamped;
  }
  if ((ranges.bits & MarginRanges::kBackLimited) != 0) {
    const int clamped = std::clamp(ranges.back, ranges.minBack, ranges.maxBack);
    if (clamped != ranges.back) ranges.bits |= MarginRanges::kBackChanged;
    ranges.back = clamped;
  }
}

/// The fields that the edge of the binding depends on, as the record's own operation wants them.
DriverEnv BindingFields(const UiState& ui) {
  DriverEnv env{};
  Set<"lpBindPosit">(env, static_cast<uint8_t>(Setting<u"lpBindPosit">(ui)));
  Set<"lpOutputPaper">(env, static_cast<FieldValue<"lpOutputPaper">>(PrintedPaper(ui)));
  Set<"POD_OnePerSheet_Check">(env, static_cast<uint8_t>(Setting<u"POD_OnePerSheet_Check">(ui)));
  Set<"dmOrientation">(env, static_cast<int16_t>(Setting<u"lpOrientation">(ui)));
  Set<"lpLayout">(env, static_cast<uint8_t>(Setting<u"lpLayout">(ui)));
  Set<"Nup_Check">(env, static_cast<uint8_t>(Setting<u"Nup_Check">(ui)));
  Set<"lpPRNType">(env, static_cast<uint8_t>(Setting<u"lpPRNType">(ui)));
  Set<"AdhesiveBind_Check">(env, static_cast<uint8_t>(Setting<u"AdhesiveBind_Check">(ui)));
  Set<"Fold_Check">(env, static_cast<uint8_t>(Setting<u"Fold_Check">(ui)));
  Set<"lpFold">(env, static_cast<uint8_t>(Setting<u"lpFold">(ui)));
  return env;
}

}  // namespace

CustomArea ComputeCustomInsets(const UiState& ui, int32_t code) {
  const CustomPaperEntry entry = EntryOf(ui, code);
  CustomArea area{HundredthMm(entry.width), HundredthMm(entry.height), {}};
  area.insets = UserPaperMargins(Setting<u"lpMediaSource">(ui), Setting<u"lpSourceUnit">(ui),
                                 static_cast<int32_t>(area.width), static_cast<int32_t>(area.height));
  return area;
}

const SourceLimit& LimitOfSource(const UiState& ui, int unit) {
  return FindSourceLimit(Setting<u"lpMediaSource">(ui), Setting<u"lpSourceUnit">(ui), static_cast<uint16_t>(unit));
}

uint16_t PrintedPaper(const UiState& ui) {
  const uint16_t output = Setting<u"lpOutputPaper">(ui);
  return output == kSameAsDocument ? Setting<u"lpMediaSize">(ui) : output;
}

bool CustomPaperFits(const UiState& ui) {
  const uint16_t paper = PrintedPaper(ui);
  if (!IsCustomPaper(paper)) return true;
  const CustomPaperEntry entry = EntryOf(ui, paper);
  const SourceLimit& limit = LimitOfSource(ui, entry.unit);
  const auto lies = [&limit](uint32_t thou, int64_t min, int64_t max) {
    const int64_t shown = ThouToTenthMm(limit.unit, thou);
    return shown >= min && shown <= max;
  };
  return lies(entry.width, limit.minWidth, limit.maxWidth) && lies(entry.height, limit.minLength, limit.maxLength);
}

BindingChoice BindingOf(const UiState& ui) {
  return {.position = Setting<u"lpBindPosit">(ui),
          .paper = PrintedPaper(ui),
          .orientation = Setting<u"lpOrientation">(ui),
          .printType = Setting<u"lpPRNType">(ui),
          .layout = IsOn<u"Nup_Check">(ui) ? Setting<u"lpLayout">(ui) : uint16_t{0},
          .fold = IsOn<u"Fold_Check">(ui) ? Setting<u"lpFold">(ui) : uint16_t{0},
          .onePerSheet = IsOn<u"POD_OnePerSheet_Check">(ui),
          .adhesive = IsOn<u"AdhesiveBind_Check">(ui)};
}

uint8_t ResolveBindingEdge(const UiState& ui) {
  return BindingSide(BindingOf(ui));
}

int MaxZoomForPaper(const UiState& ui, int32_t code) {
  constexpr uint64_t kDotLimit = 32760;
  uint32_t width = 0;
  uint32_t height = 0;
  if (IsCustomPaper(code)) {
    const CustomPaperEntry entry = EntryOf(ui, code);
    width = entry.width;
    height = entry.height;
  } else {
    PaperSizeThou(code, &width, &height);
  }
  const uint64_t dots = uint64_t{std::max(width, height)} * 600 / 1000;
  uint64_t zoom = 400;
  while (zoom > 100 && dots * zoom / 100 >= kDotLimit) zoom -= 50;
  return static_cast<int>(zoom);
}

bool MarginReducesPage(const UiState& ui) {
  return MarginIsOn(ui) && Setting<u"lpMarginMode">(ui) == value::lpMarginMode::kReduce;
}

bool ZoomIsFree(const UiState& ui) {
  if (Setting<u"ZoomCheck">(ui) == 0 || MarginReducesPage(ui)) return false;
  const bool paper_layout = IsOn<u"Layout_Check2">(ui) && (IsOn<u"Nup_Check">(ui) || IsOn<u"Booklet_Check">(ui));
  return !paper_layout && !(IsOn<u"POD_Check">(ui) && IsOn<u"POD_Nup_Check">(ui));
}

ReducedZoom ComputeReducedZoom(const UiState& ui) {
  ReducedZoom result;
  result.margin = MarginThatCounts(ui);
  result.source = SourceArea(ui);
  result.target = Setting<u"lpOutputPaper">(ui) == kSameAsDocument ? result.source : TargetArea(ui);
  if (IsLandscape(ui)) {
    std::swap(result.source.width, result.source.height);
    std::swap(result.target.width, result.target.height);
  }
  const int64_t margin = int64_t{result.margin} * 100;
  if (MarginTakesWidth(ui)) result.target.width -= margin;
  if (MarginTakesHeight(ui)) result.target.height -= margin;
  const bool has_size = result.source.width != 0 && result.source.height != 0;
  result.ratio = Ratio(result.source, result.target);
  result.zoom = result.ratio;
  if (has_size) {
    const int64_t highest = MaxZoomForPaper(ui, Setting<u"lpMediaSize">(ui));
    result.zoom = std::max(std::min(result.ratio, highest), LowestZoom(ui));
  }
  return result;
}

void ComputeAutoZoom(const UiState& ui) {
  if (MarginReducesPage(ui))
    SetReducedZoom(ui);
  else
    SetFitZoom(ui);
}

void UpdateAutoZoom(const UiState& ui, uint16_t id) {
  if (MarginReducesPage(ui))
    SetReducedZoom(ui);
  else if (AsksForFit(ui, id))
    SetFitZoom(ui);
}

MarginRanges BindingMarginRanges(const UiState& ui) {
  const NumericBlock& front = RangeOf<u"fMargin">(ui);
  const NumericBlock& back = RangeOf<u"bMargin">(ui);
  MarginRanges ranges{.bits = 0,
                      .minFront = front.min,
                      .maxFront = front.max,
                      .minBack = back.min,
                      .maxBack = back.max,
                      .front = front.value,
                      .back = back.value};
  if (!MarginReducesPage(ui)) return ranges;
  const ReducedZoom reduced = ComputeReducedZoom(ui);
  if (reduced.ratio < LowestZoom(ui))
    ranges.bits |= MarginRanges::kZoomTooSmall;
  else if (reduced.ratio > MaxZoomForPaper(ui, Setting<u"lpMediaSize">(ui)))
    ranges.bits |= MarginRanges::kZoomTooLarge;
  LimitRanges(ranges, LargestMargin(ui, reduced));
  if (IsOn<u"MarginEqual_Check">(ui) && ranges.front != ranges.back) {
    ranges.back = ranges.front;
    ranges.bits |= MarginRanges::kBackFollows;
  }
  return ranges;
}

void DeriveLayout(const UiState& ui) {
  uint16_t select = 0;
  if (IsOn<u"Layout_Check2">(ui)) {
    select = IsOn<u"Nup_Check">(ui)       ? value::lpLayout_Select::kPagesPerSheet
             : IsOn<u"Booklet_Check">(ui) ? value::lpLayout_Select::kBooklet
                                          : 0;
  } else if (IsOn<u"POD_Check">(ui) && IsOn<u"POD_Nup_Check">(ui)) {
    select = value::lpLayout_Select::kPagesPerSheet;
  }
  Setting<u"Layout_Check">(ui) = select == 0 ? 0 : 1;
  Setting<u"lpLayout_Select">(ui) = select;
  Setting<u"lpBorder">(ui) = Setting<u"lpBorder2">(ui);
  Setting<u"lpBooklet">(ui) = Setting<u"lpBooklet2">(ui);
}

void DeriveBindMargin(const UiState& ui) {
  Setting<u"lpBindMargin">(ui) = ComputeBindMarginSide(BindingFields(ui));
}

OrderRows OrderRowsOf(const UiState& ui) {
  if (!IsTwoPages(Setting<u"lpLayout">(ui))) return {4, 7};
  return Setting<u"lpOrientation">(ui) == value::lpOrientation::kLandscape ? OrderRows{2, 3} : OrderRows{0, 1};
}

uint16_t OrderForLayout(uint16_t layout, uint16_t order) {
  const bool two_pages = IsTwoPages(layout);
  if (two_pages && order >= order_of::kRightThenDown && order <= order_of::kDownThenLeft) return order_of::kLeftToRight;
  if (!two_pages && (order == order_of::kLeftToRight || order == order_of::kRightToLeft))
    return order_of::kRightThenDown;
  return order;
}

bool IsTwoPages(uint16_t layout) {
  return layout == layout::kOlderTwoPages || layout == layout::kTwoPages;
}

}  // namespace heron::engine

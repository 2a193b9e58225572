// The rows of the summary lists, tab by tab. Read by summary.cc, which walks them in this order.
//
// A row: what it shows | its control | the control that guards it (a row appears only while the guard's value isn't 0;
// a kGuarded row shows the guard itself) | the number's format | the operation that makes the rows of a kBuilt row.
// Rows of a tab with an indent are part of the setting above. To add a setting, add its row; it needs a control in
// rules/controls.table or a row among the enable rules.
#pragma once

#include "pages/summary_builders.h"
#include "rules/controls.h"

namespace heron::pages {

enum class SummaryKind : uint8_t {
  kCheck,    ///< On or Off
  kChoice,   ///< label of the value; no row for a value without label
  kNumber,   ///< formatted
  kBuilt,    ///< as the builder decides
  kGuarded,  ///< On or Off of the guard, and the choice if it is on
};

struct SummaryItem {
  SummaryKind kind;
  uint16_t control;
  uint16_t guard = 0;
  std::u16string_view indent = {};
  std::u16string_view format = {};
  SummaryBuilder builder = nullptr;
};

namespace summary_internal {

using engine::ControlId;
using enum SummaryKind;

inline constexpr std::u16string_view kPart = u" ";            ///< of the setting above
inline constexpr std::u16string_view kWatermarkPart = u"  ";  ///< the same on the watermark's tab
inline constexpr std::u16string_view kPlain = u"%d";
inline constexpr std::u16string_view kPercent = u"%d %%";
inline constexpr uint16_t kPaperTypeButton = 182;  ///< shows no setting: known to the rules alone

consteval SummaryItem Check(std::u16string_view name, uint16_t guard = 0, std::u16string_view indent = {}) {
  return {.kind = kCheck, .control = ControlId(name), .guard = guard, .indent = indent};
}
consteval SummaryItem Choice(std::u16string_view name, uint16_t guard = 0, std::u16string_view indent = {}) {
  return {.kind = kChoice, .control = ControlId(name), .guard = guard, .indent = indent};
}
consteval SummaryItem Number(std::u16string_view name, std::u16string_view format, uint16_t guard = 0,
                             std::u16string_view indent = {}) {
  return {.kind = kNumber, .control = ControlId(name), .guard = guard, .indent = indent, .format = format};
}
consteval SummaryItem Guarded(std::u16string_view name, std::u16string_view guard) {
  return {.kind = kGuarded, .control = ControlId(name), .guard = ControlId(guard)};
}
consteval SummaryItem Built(uint16_t control, SummaryBuilder builder) {
  return {.kind = kBuilt, .control = control, .builder = builder};
}
consteval SummaryItem Built(std::u16string_view name, SummaryBuilder builder) {
  return Built(ControlId(name), builder);
}

}  // namespace summary_internal

// clang-format off
inline constexpr auto kPaperItems = [] {
  using namespace summary_internal;
  constexpr uint16_t kMargin = ControlId(u"BindMargin_Check");
  return std::to_array<SummaryItem>({
      Choice(u"lpOrientation.Portrait"),
      Built(u"lpMediaSize", AddDocumentSize),
      Built(u"lpOutputPaper", AddPrintSize),
      Number(u"Zoom", kPercent),
      Choice(u"lpMediaSource"),
      Built(kPaperTypeButton, AddPaperType),
      Choice(u"lpBindPosit"),
      Choice(u"lpPRNType"),
      Guarded(u"lpLayout", u"Nup_Check"),
      Built(u"lpOrder", AddPageOrder),
      Choice(u"lpBorder2", ControlId(u"Nup_Check"), kPart),
      Check(u"BindMargin_Check"),
      Check(u"MarginEqual_Check", kMargin, kPart),
      Number(u"fMargin", kPlain, kMargin, kPart),
      Number(u"bMargin", kPlain, kMargin, kPart),
      Choice(u"lpMarginMode.Shift", kMargin, kPart),
      Guarded(u"lpStaple", u"Staple_Check"),
      Guarded(u"lpPunchHoles", u"Punch_Check"),
      Guarded(u"lpFoldStaple", u"FoldStaple_Check"),
      Choice(u"lpOutputMethod"),
      Number(u"Copies", kPlain),
      Choice(u"lpOutputTray"),
      Check(u"Sort_Check"),
      Check(u"Collate_Check"),
      Check(u"PaperLess_Check"),
      Built(u"lpOutputPaper", AddCustomSizes),
  });
}();

inline constexpr auto kPerPageItems = [] {
  using namespace summary_internal;
  return std::to_array<SummaryItem>({
      Built(u"Front_Check", AddFrontCover),
      Built(u"Back_Check", AddBackCover),
      Built(u"Chapter_Check", AddChapters),
      Built(u"InterSheet_Check", AddPageLists),
  });
}();

inline constexpr auto kSpecialItems = [] {
  using namespace summary_internal;
  return std::to_array<SummaryItem>({
      Guarded(u"lpPOD_OnePerSheet", u"POD_OnePerSheet_Check"),
      Built(u"ImageShift_Check", AddImageShift),
      Check(u"ImgShiftBackAuto_Check", ControlId(u"ImageShift_Check"), kPart),
  });
}();

inline constexpr auto kOverlayItems = [] {
  using namespace summary_internal;
  return std::to_array<SummaryItem>({
      Choice(u"lpOverlay.NoOverlay"),
      Built(u"lpOverlay.NoOverlay", AddOverlayPrompt),
      Built(u"lpOverlay.NoOverlay", AddForms),
  });
}();

inline constexpr auto kWatermarkItems = [] {
  using namespace summary_internal;
  constexpr uint16_t kCopyNumber = ControlId(u"CopyNo_Check");
  return std::to_array<SummaryItem>({
      Built(u"Watermark_Use", AddWatermark),
      Check(u"CopyNo_Check"),
      Choice(u"lpPrintPageC", kCopyNumber, kWatermarkPart),
      Number(u"CopyNo_WM_StartC", kPlain, kCopyNumber, kWatermarkPart),
  });
}();

inline constexpr auto kQualityItems = [] {
  using namespace summary_internal;
  return std::to_array<SummaryItem>({
      Guarded(u"lpPrintCADMode.TextAndGraphics", u"PrintCAD_Check"),
      Choice(u"lpBrushPtPit.Fine"),
      Check(u"EngSaveToner_Check"),
      Check(u"DraftPrint"),
      Choice(u"lpSmoothing"),
  });
}();

inline constexpr auto kFontItems = [] {
  using namespace summary_internal;
  return std::to_array<SummaryItem>({
      Check(u"FontUseFlg"),
      Choice(u"lpDLFontFormat"),
  });
}();
// clang-format on

/// The fax tab's rows need no control.
using FaxBuilder = void (*)(const SummaryInput&, SummaryWriter&);
inline constexpr std::array<FaxBuilder, 9> kFaxItems = {AddFaxSubject, AddFaxStyle,   AddFaxRecipient,
                                                        AddFaxSender,  AddFaxDate,    AddFaxPageNumber,
                                                        AddFaxPaper,   AddFaxPicture, AddFaxComment};

static_assert(kPaperItems.size() == 26 && kPerPageItems.size() == 4 && kSpecialItems.size() == 3);
static_assert(kOverlayItems.size() == 3 && kWatermarkItems.size() == 4 && kQualityItems.size() == 5);
static_assert(kFontItems.size() == 2);

}  // namespace heron::pages

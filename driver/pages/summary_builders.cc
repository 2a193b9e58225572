// Rows of paper, covers, chapters, image shift, forms and the watermark (summary_builders.h).
#include "pages/summary_builders.h"

#include <algorithm>

#include "engine/page_list_text.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "pages/custom_papers.h"
#include "pages/size_text.h"
#include "presets/page_numbers.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using engine::Setting;
using platform::ExpandText;

constexpr std::u16string_view kPart = u" ";
constexpr std::u16string_view kDeepPart = u"  ";
constexpr std::u16string_view kUnknown = u"--";

std::u16string LabelOf(uint16_t control, uint16_t value) {
  const char16_t* label = engine::GetValueLabel(control, value);
  return label == nullptr ? std::u16string() : label;
}

std::u16string CustomSizeText(const CustomPaperEntry& entry) {
  const int unit = UnitOf(entry);
  return ExpandSizes(unit, {u"(%ld.%01ld x %ld.%01ldmm)", u"(%ld.%03ld x %ld.%03ldinch)"},
                     ShownFromThou(unit, entry.width), ShownFromThou(unit, entry.height));
}

/// A custom paper's name and size come from the settings' own list.
void AddPaper(const SummaryInput& input, TextNumber label, uint16_t control, uint16_t paper, SummaryWriter& rows) {
  const CustomPaperEntry* entry = CustomEntry(input.ui, CustomPaperNumber(paper));
  if (entry == nullptr) return rows.Row({}, label, LabelOf(control, paper));
  rows.Row({}, label, CustomPaperName(*entry), CustomSizeText(*entry));
}

/// The cover's check with what is printed on it, and the tray that it comes from.
struct Cover {
  TextNumber label;
  bool on;
  uint16_t cover;
  uint16_t trayControl;
  uint16_t tray;
};

void AddCover(const Cover& cover, SummaryWriter& rows) {
  if (!cover.on) return rows.Row({}, cover.label, SwitchText(false));
  const std::u16string_view printed = cover.cover == value::lpFrontCover::kBlank     ? GetUiString(text::kCoverBlank)
                                      : cover.cover == value::lpFrontCover::kPrinted ? GetUiString(text::kCoverPrinted)
                                                                                     : kUnknown;
  rows.Row({}, cover.label, SwitchText(true), printed);
  rows.Row(kPart, text::kPaperTrayRow, LabelOf(cover.trayControl, cover.tray));
}

TextNumber OrderText(const UiState& ui) {
  const bool portrait = Setting<u"lpOrientation">(ui) == value::lpOrientation::kPortrait;
  switch (Setting<u"lpOrder">(ui)) {
    case value::lpOrder::kLeftToRight:
      return portrait ? text::kLeftToRight : text::kTopToBottom;
    case value::lpOrder::kRightToLeft:
      return portrait ? text::kRightToLeft : text::kBottomToTop;
    case value::lpOrder::kRightThenDown:
      return text::kRightThenDown;
    case value::lpOrder::kDownThenRight:
      return text::kDownThenRight;
    case value::lpOrder::kLeftThenDown:
      return text::kLeftThenDown;
    case value::lpOrder::kDownThenLeft:
      return text::kDownThenLeft;
    default:
      return text::kEmpty;
  }
}

/// One side's image shift: controls of its directions and numbers.
struct ShiftSide {
  TextNumber side;
  uint16_t acrossTo, across, alongTo, along, interval;
};
constexpr ShiftSide kShiftSides[] = {
    {text::kFrontSide, engine::ControlId(u"lpImgShiftDirectLRF.Left"), engine::ControlId(u"ImgShiftValueLRF"),
     engine::ControlId(u"lpImgShiftDirectUDF.Up"), engine::ControlId(u"ImgShiftValueUDF"),
     engine::ControlId(u"ImgShiftPageIntervalF")},
    {text::kBackSide, engine::ControlId(u"lpImgShiftDirectLRB.Left"), engine::ControlId(u"ImgShiftValueLRB"),
     engine::ControlId(u"lpImgShiftDirectUDB.Up"), engine::ControlId(u"ImgShiftValueUDB"),
     engine::ControlId(u"ImgShiftPageIntervalB")}};

void AddShiftSide(const SummaryInput& input, const ShiftSide& side, SummaryWriter& rows) {
  const auto value = [&](uint16_t control) { return engine::GetControlValue(input.engine, control); };
  const auto number = [&](uint16_t control) { return PlainNumber(value(control)); };
  rows.Row(std::u16string(kPart) + GetUiString(side.side), GetUiString(text::kLeftOrRight),
           LabelOf(side.acrossTo, value(side.acrossTo)));
  rows.Row({}, GetUiString(text::kShiftInTenths), number(side.across));
  rows.Row({}, GetUiString(text::kUpOrDown), LabelOf(side.alongTo, value(side.alongTo)));
  rows.Row({}, GetUiString(text::kShiftInTenths), number(side.along));
  rows.Row({}, GetUiString(text::kPageInterval), number(side.interval));
}

std::u16string WithUnit(int64_t number, TextNumber unit) {
  return ExpandText(u"%d %s", {number, std::u16string_view(GetUiString(unit))});
}

void AddWatermarkFields(const UiState& ui, const WatermarkEntry& mark, SummaryWriter& rows) {
  const std::u16string_view shown = FieldText(mark.text);
  // A darkness of 100 % is shade 0; the bits above the shade's byte mean nothing.
  const int64_t shade = static_cast<uint8_t>(mark.color);
  const auto tenths = [](uint32_t place) { return int64_t{static_cast<int16_t>(place)}; };
  rows.Row(kDeepPart, text::kWatermarkText, shown.empty() ? GetUiString(text::kNoWatermark) : shown);
  rows.Row(kDeepPart, text::kWatermarkMode,
           TextAt({text::kOverprint, text::kTransparent}, Setting<u"lpWatermarkOrder">(ui),
                  value::lpWatermarkOrder::kOverprint));
  rows.Row(kDeepPart, text::kFirstPageOnly, SwitchText(IsOn<u"FirstPageOnly">(ui)));
  rows.Row(kDeepPart, text::kWatermarkFont, FieldText(mark.font));
  rows.Row(kDeepPart, text::kStyle,
           TextAt({text::kStyleRegular, text::kStyleBold, text::kStyleItalic, text::kStyleBoldItalic}, mark.style, 1));
  rows.Row(kDeepPart, text::kSize, WithUnit(static_cast<int32_t>(mark.size), text::kPointUnit));
  rows.Row(kDeepPart, text::kAngle, WithUnit(mark.angle / 10, text::kDegreesUnit));
  rows.Row(kDeepPart, text::kDarkness, WithUnit((255 - shade) * 100 / 255, text::kPercentUnit));
  rows.Row(kDeepPart, text::kPosition,
           ExpandText(u"(%d, %d)", {tenths(mark.centerX) / 10, -tenths(mark.centerY) / 10}));
}

}  // namespace

void SummaryWriter::Separator() {
  constexpr size_t kLength = 67;
  const std::u16string line(kLength, u'-');
  Row(line, line);
}

const char16_t* SwitchText(bool on) {
  return GetUiString(on ? text::kSwitchOn : text::kSwitchOff);
}

std::u16string_view TextAt(std::initializer_list<TextNumber> texts, int64_t value, int64_t first) {
  const int64_t place = value - first;
  if (place < 0 || place >= static_cast<int64_t>(texts.size())) return kUnknown;
  return GetUiString(texts.begin()[place]);
}

void AddDocumentSize(const SummaryInput& input, uint16_t control, SummaryWriter& rows) {
  AddPaper(input, text::kDocumentSize, control, Setting<u"lpMediaSize">(input.ui), rows);
}

void AddPrintSize(const SummaryInput& input, uint16_t control, SummaryWriter& rows) {
  AddPaper(input, text::kPrintSize, control, Setting<u"lpOutputPaper">(input.ui), rows);
}

void AddPaperType(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  const TrayMedia media = engine::MediaOfTray(input.engine, Setting<u"lpMediaSource">(input.ui));
  rows.Row({}, text::kPaperType, LabelOf(engine::ControlId(u"lpMediaType"), media.mediaType));
  if (media.mediaType != value::lpMediaType::kTransparency || !IsOn<u"OHPInterLeave_Check">(input.ui)) return;
  rows.Row(kDeepPart, text::kPaperTrayRow,
           LabelOf(engine::ControlId(u"lpOIPaperTray"), Setting<u"lpOIPaperTray">(input.ui)));
}

void AddPageOrder(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  if (IsOn<u"Nup_Check">(input.ui)) rows.Row(kPart, text::kPageOrder, GetUiString(OrderText(input.ui)));
}

void AddCustomSizes(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  rows.Separator();
  rows.Row({}, text::kCustomSizes);
  for (int number = 1; number <= kUserPaperCount; ++number) {
    const CustomPaperEntry* entry = CustomEntry(input.ui, number);
    if (entry != nullptr) rows.Row(CustomPaperName(*entry), CustomSizeText(*entry));
  }
}

void AddFrontCover(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  AddCover({text::kFrontCover, IsOn<u"Front_Check">(input.ui), Setting<u"lpFrontCover">(input.ui),
            engine::ControlId(u"lpFrontCoverTray"), Setting<u"lpFrontCoverTray">(input.ui)},
           rows);
}

void AddBackCover(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  AddCover({text::kBackCover, IsOn<u"Back_Check">(input.ui), Setting<u"lpBackCover">(input.ui),
            engine::ControlId(u"lpBackCoverTray"), Setting<u"lpBackCoverTray">(input.ui)},
           rows);
}

void AddChapters(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  const bool on = IsOn<u"Chapter_Check">(input.ui);
  rows.Row({}, text::kChapters, SwitchText(on));
  if (!on) return;
  const PageNumberLists& lists = PageNumbersOf(input.ui);
  uint16_t numbers[kPageNumbersPerList];
  std::ranges::copy(lists.pages[kChapterList], numbers);
  const size_t count = std::min<size_t>(lists.count[kChapterList], kPageNumbersPerList);
  rows.Row(kPart, text::kChapterStartPages, engine::FormatPageList({numbers, count}));
}

void AddImageShift(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  const bool on = IsOn<u"ImageShift_Check">(input.ui);
  rows.Row({}, text::kImageShift, SwitchText(on));
  if (!on) return;
  for (const ShiftSide& side : kShiftSides) AddShiftSide(input, side, rows);
}

void AddOverlayPrompt(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  rows.Row(kPart, text::kConfirmBeforePrinting, SwitchText(IsOn<u"OverlayPrompt">(input.ui)));
}

void AddForms(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  rows.Separator();
  rows.Row({}, text::kOverlayForms);
  const OverlayStore* store = input.ui.stores.overlays.get();
  const int count = store == nullptr ? 0 : std::min<int>(store->formListNum, kFormCount);
  for (int i = 0; i < count; ++i) rows.Row(std::u16string(kDeepPart).append(FieldText(store->forms[i])));
  if (count == 0) rows.Row(kDeepPart, text::kNoForms);
}

void AddWatermark(const SummaryInput& input, uint16_t, SummaryWriter& rows) {
  const WatermarkStore* store = input.ui.stores.watermarks.get();
  const bool on = IsOn<u"Watermark_Use">(input.ui);
  rows.Row({}, text::kWatermark, SwitchText(on));
  // The index comes from a record, the count from a file; both may exceed the list.
  const auto current = SlotAs<u"bWatermarkCurrent", uint8_t>(input.ui);
  if (on && store != nullptr)
    AddWatermarkFields(input.ui, store->entries[std::min<int>(current, kWatermarkCount - 1)], rows);
  rows.Separator();
  rows.Row({}, text::kWatermarks);
  const int count = store == nullptr ? 0 : std::min<int>(store->wMarkListNum, kWatermarkCount);
  for (int i = 1; i < count; ++i) rows.Row(std::u16string(kDeepPart).append(FieldText(store->entries[i].text)));
  rows.Separator();
}

}  // namespace heron::pages

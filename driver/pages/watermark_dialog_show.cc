// What dialog 1100 shows (watermark_dialog.h).
#include <algorithm>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "pages/settings_view.h"
#include "pages/watermark_controls.h"
#include "pages/watermark_dialog.h"
#include "pages/watermark_rows.h"
#include "platform/api/text.h"
#include "printpath/watermark_stamp.h"

namespace heron::pages {

using namespace mark;

namespace {

std::u16string Millimetres(int32_t tenths) {
  return platform::ExpandText(u"%dmm", {int64_t{tenths / 10}});
}

}  // namespace

void WatermarkDialog::OnInitialise() {
  if (ui().stores.watermarks == nullptr) return dialog().End(platform::IDCANCEL);
  families_ = dialog().FontFamilies();
  dialog().SetTextLimit(kText, kMarkTextLength);
  for (const ControlId field : {kSize, kAngle}) dialog().SetTextLimit(field, kNumberLength);
  for (const ControlId bar : {kSizeSpin, kSizeBar}) dialog().SetRange(bar, kMarkSize.lowest, kMarkSize.highest);
  for (const ControlId bar : {kAngleSpin, kAngleSlider}) dialog().SetRange(bar, -kDegrees, kDegrees);
  dialog().SetRange(kShade, kMarkShade.lowest, kMarkShade.highest);
  const auto [x, y] = preview::CenterLimits(Frame());
  dialog().SetRange(kAcross, -x, x);
  dialog().SetRange(kDown, -y, y);
  dialog().SetSteps(kSizeBar, {.line = 1, .page = 10, .tick = 0});
  dialog().SetSteps(kAngleSlider, {.line = 1, .page = 10, .tick = 10});
  dialog().SetSteps(kShade, {.line = 1, .page = 10, .tick = 32});
  for (const ControlId bar : {kAcross, kDown}) dialog().SetSteps(bar, {.line = 10, .page = 100, .tick = 0});
  std::vector<platform::ListRow> rows;
  for (const platform::FontFamily& family : families_) rows.push_back({.text = family.name, .cells = {}});
  dialog().SetRows(kFont, rows);
  rows.clear();
  for (int style = kMarkStyle.lowest; style <= kMarkStyle.highest; ++style)
    rows.push_back(
        {.text = TextOf(text::kStyleRegular + static_cast<uint32_t>(style - kMarkStyle.lowest)), .cells = {}});
  dialog().SetRows(kStyle, rows);
  const int current = SlotAs<u"bWatermarkCurrent", uint8_t>(ui());
  selected_ = current < WatermarksIn(store()) ? current : 0;
  Show(kEverything);
  EnableEditing();
  dialog().Enable(kNew, WatermarksIn(store()) < kWatermarkCount);
}

void WatermarkDialog::FillList() {
  dialog().SetRows(kList, WatermarkRows(store()));
  dialog().SelectRow(kList, selected_);
}

/// An entry from a file may hold anything: size and angle are brought back to what their fields can show.
void WatermarkDialog::Show(uint32_t mask) {
  if (Edits()) ClampWatermark(entry());
  WatermarkEntry shown = entry();
  ClampWatermark(shown);
  if ((mask & kListPart) != 0) FillList();
  if ((mask & kTextPart) != 0) dialog().SetText(kText, MarkText(shown));
  if ((mask & kFontPart) != 0) ShowFont();
  if ((mask & kStylePart) != 0)
    dialog().SelectRow(kStyle, static_cast<int>(std::clamp<uint32_t>(shown.style, 1, 4)) - 1);
  if ((mask & kSizePart) != 0) SetSize(static_cast<int>(shown.size));
  if ((mask & kAnglePart) != 0) SetAngle(shown.angle / 10);
  if ((mask & kShadePart) != 0) dialog().SetPosition(kShade, kDeepest - static_cast<int>(shown.color & 0xFF));
  ShowCenter(mask);
  Repaint();
}

/// A font that isn't installed is shown as another one and stays in the entry.
void WatermarkDialog::ShowFont() {
  const auto row_of = [this](std::u16string_view name) {
    const auto family = std::ranges::find(families_, name, &platform::FontFamily::name);
    return family == families_.end() ? platform::kNoRow : static_cast<int>(family - families_.begin());
  };
  int row = row_of(MarkFont(entry()));
  if (row == platform::kNoRow) row = row_of(kUsualFont);
  if (row == platform::kNoRow && !families_.empty()) row = 0;
  dialog().SelectRow(kFont, row);
}

void WatermarkDialog::ShowCenter(uint32_t mask) {
  const int32_t x = MarkCenterX(entry()), y = MarkCenterY(entry());
  if ((mask & kAcrossPart) != 0) {
    dialog().SetPosition(kAcross, x);
    dialog().SetText(kAcrossText, Millimetres(x));
  }
  if ((mask & kDownPart) == 0) return;
  dialog().SetPosition(kDown, y);
  dialog().SetText(kDownText, Millimetres(-y));
}

void WatermarkDialog::EnableEditing() {
  for (const ControlId id : kEditing) dialog().Enable(id, Edits());
}

void WatermarkDialog::Repaint() {
  dialog().Repaint(kPicture);
  dialog().Repaint(kSample);
}

preview::PaperFrame WatermarkDialog::Frame() const {
  return preview::FramePaper(ui(), dialog().PlaceArea(kPicture));
}

void WatermarkDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id == kPicture) {
    preview::DrawWatermarkPicture(
        preview::DescribeWatermark(ui(), entry(), preview::WatermarkView::kEditor, place, families_, canvas), canvas);
  }
  if (id == kSample) canvas.FillRect(place, StampColor(entry().selectColor, static_cast<uint8_t>(entry().color)), {});
}

void WatermarkDialog::OnHelp(ControlId id) {
  dialog().ShowHelp(kHelpTopic, id);
}

}  // namespace heron::pages

#include "pages/watermark_page.h"

#include "forms/watermark_list.h"
#include "generated/values.h"
#include "pages/watermark_dialog.h"
#include "pages/watermark_rows.h"
#include "preview/watermark_picture.h"
#include "rules/dialogs.h"

namespace heron::pages {

using engine::IsOn;
using engine::Setting;

namespace {

constexpr ControlId kUse = engine::ControlId(u"Watermark_Use"), kList = 502, kEdit = 503;
constexpr ControlId kOverprint = engine::ControlId(u"lpWatermarkOrder.Overprint"),
                    kTransparent = engine::ControlId(u"lpWatermarkOrder.Transparent");
constexpr ControlId kFirstPage = engine::ControlId(u"FirstPageOnly"), kPicture = 507, kModePicture = 2369;
constexpr ControlId kPaperView = engine::ControlId(u"previewMode.Paper"),
                    kMachineView = engine::ControlId(u"previewMode.Machine");
constexpr ControlId kNumbers = engine::ControlId(u"CopyNo_Check"), kNumbersOn = engine::ControlId(u"lpPrintPageC");
constexpr ControlId kFirstNumber = engine::ControlId(u"CopyNo_WM_StartC"), kFirstNumberSpin = 525;
constexpr size_t kNumberLength = 4;

/// Bits of the RefreshMask.
enum Group : uint8_t { kUseGroup, kListGroup, kOrder, kFirst, kView = 5, kNumbering = 11, kPages = 13, kStart };
constexpr ShownControl kControls[] = {
    {kUse, kUseGroup},      {kOverprint, kOrder}, {kTransparent, kOrder},
    {kFirstPage, kFirst},   {kPaperView, kView},  {kMachineView, kView},
    {kNumbers, kNumbering}, {kNumbersOn, kPages}, {kFirstNumber, kStart, kFirstNumberSpin},
};

/// Pictures of the mode, with their masks: off, overprint, transparent.
constexpr uint32_t kModePictures = 15850;
constexpr uint32_t kModeMasks = 15853;

uint32_t ModeOf(const UiState& ui) {
  if (!IsOn<u"Watermark_Use">(ui)) return 0;
  return Setting<u"lpWatermarkOrder">(ui) == value::lpWatermarkOrder::kOverprint ? 1 : 2;
}

uint8_t& Current(const UiState& ui) {
  return SlotAs<u"bWatermarkCurrent", uint8_t>(ui);
}

}  // namespace

WatermarkPage::WatermarkPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

void WatermarkPage::OnInitialise() {
  const NumericBlock& range = engine::RangeOf<u"CopyNo_WM_StartC">(*engine().ui);  // ui() is bound below
  dialog().SetRange(kFirstNumberSpin, range.min, range.max);
  dialog().SetTextLimit(kFirstNumber, kNumberLength);
  families_ = dialog().FontFamilies();
  Page::OnInitialise();
}

void WatermarkPage::OnGroupShown(uint8_t group) {
  if (group == kListGroup) FillList();
  if (group != kUseGroup && group != kOrder) return;
  const uint32_t mode = ModeOf(ui());
  dialog().SetPicture(kModePicture, kModePictures + mode, kModeMasks + mode);
}

void WatermarkPage::FillList() {
  const WatermarkStore* const store = ui().stores.watermarks.get();
  if (store == nullptr) return;
  dialog().SetRows(kList, WatermarkRows(*store));
  const int current = Current(ui());
  dialog().SelectRow(kList, current < WatermarksIn(*store) ? current : 0);
}

void WatermarkPage::RepaintPictures() {
  Page::RepaintPictures();
  dialog().SetDescription(kPicture, preview::SayWatermark(ui()));
  dialog().Repaint(kPicture);
}

void WatermarkPage::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id != kPicture) return Page::OnDraw(id, canvas, place);
  preview::DrawWatermarkPicture(preview::DescribeWatermark(ui(), preview::CurrentWatermark(ui()),
                                                           preview::WatermarkView::kPage, place, families_, canvas),
                                canvas);
}

void WatermarkPage::OnRowSelected(ControlId id) {
  if (id != kList) return Page::OnRowSelected(id);
  SetActiveDialog(number());
  const int row = dialog().SelectedRow(kList);
  if (row < 0) return;
  Current(ui()) = static_cast<uint8_t>(row);
  MarkChanged();
}

void WatermarkPage::OnNumber(ControlId id, uint16_t number) {
  const NumericBlock& range = engine::RangeOf<u"CopyNo_WM_StartC">(ui());
  const uint16_t kept = std::min(number, range.max);
  if (kept != number) {
    dialog().SetText(id, NumberText(kept));
    FocusControl(id);
  }
  if (engine::GetControlValue(engine(), id) == kept) return;
  engine::SetControlValue(engine(), id, kept);
  MarkChanged();
}

/// Digits; none that would put a 0 in front of a number.
bool WatermarkPage::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  if (id != kFirstNumber || key.character < u' ') return true;
  if (key.character < u'0' || key.character > u'9') return false;
  const bool replaces = key.selection_start != key.selection_end;
  if (key.character == u'0' && key.selection_start == 0 && !replaces && !key.text.empty()) return false;
  return !(key.selection_start == 1 && key.text.starts_with(u'0'));
}

void WatermarkPage::OnButton(ControlId id) {
  if (id == kEdit) return OpenEditor();
  Page::OnButton(id);
}

/// The editor works on a copy of all settings, list included; nothing of it is taken over unless it ends with OK.
void WatermarkPage::OpenEditor() {
  WatermarkDialog editor(sheet());
  if (RunOnClone(dialog::kWatermarkEditor, editor) != platform::IDOK) return;
  ShowGroup(kListGroup);
  MarkChanged();
}

void WatermarkPage::ResetUnshown() {
  Current(ui()) = 0;
}

void WatermarkPage::OnDefaultsRestored(const engine::ResolveOutcome&) {
  ShowGroup(kListGroup);
  RepaintPictures();
}

}  // namespace heron::pages

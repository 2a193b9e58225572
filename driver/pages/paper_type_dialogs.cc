#include "pages/paper_type_dialogs.h"

#include <algorithm>

#include "generated/values.h"
#include "uistate/tray_media.h"

namespace heron::pages {

using engine::Setting;

namespace {

constexpr platform::ControlId kTrayList = 2911;
constexpr platform::ControlId kEdit = 2912;
constexpr platform::ControlId kInterleave = engine::ControlId(u"OHPInterLeave_Check");
constexpr platform::ControlId kInterleaveSettings = 2914;
constexpr ShownControl kPaperTypeControls[] = {{kInterleave}};
constexpr ShownControl kEditControls[] = {{engine::ControlId(u"lpMediaType.dialog")}};
constexpr ShownControl kInterleaveControls[] = {{engine::ControlId(u"lpOIPaperTray")}};

/// Means the selected tray; no template has it.
constexpr uint16_t kSelectedTray = engine::ControlId(u"trayRowSource");

std::u16string LabelOfType(uint16_t media_type) {
  const char16_t* label = engine::GetValueLabel(engine::ControlId(u"lpMediaType.dialog"), media_type);
  return label == nullptr ? std::u16string() : label;
}

/// What dialog 2920 has set lies in the tray now.
void StoreMediaType(const UiState& ui, uint16_t tray) {
  if (TrayMedia* media = FindTrayMedia(ui, tray)) media->mediaType = static_cast<uint8_t>(Setting<u"lpMediaType">(ui));
}

}  // namespace

// -- 2910

PaperTypeDialog::PaperTypeDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kPaperTypeControls) {}

void PaperTypeDialog::OnInitialise() {
  SettingsView::OnInitialise();
  SetActiveDialog(kNumber);
  EvaluateAndApply();
  FillTrays();
}

/// The trays that the rules offer, each with what lies in it.
void PaperTypeDialog::FillTrays() {
  engine::ComputeItemStatus(engine(), kSelectedTray);
  trays_.clear();
  std::vector<platform::ListRow> rows;
  for (const ListItem& item : engine::GetControlBlock(engine(), kSelectedTray)->Items()) {
    if (item.status != engine::kItemAllowed) continue;
    trays_.push_back(item.value);
    const uint16_t type = engine::MediaOfTray(engine(), item.value).mediaType;
    rows.push_back({.text = RowText(kTrayList, item), .cells = {LabelOfType(type)}, .picture = 0});
  }
  dialog().SetRows(kTrayList, rows);
  const auto selected = std::ranges::find(trays_, engine::GetControlValue(engine(), kSelectedTray));
  dialog().SelectRow(kTrayList,
                     selected == trays_.end() ? platform::kNoRow : static_cast<int>(selected - trays_.begin()));
  dialog().Enable(kEdit, selected != trays_.end());
}

void PaperTypeDialog::OnRowSelected(platform::ControlId id) {
  const auto row = static_cast<size_t>(dialog().SelectedRow(kTrayList));  // kNoRow is beyond every list
  if (id != kTrayList || row >= trays_.size()) return;
  engine::SetControlValue(engine(), kSelectedTray, trays_[row]);
  dialog().Enable(kEdit, true);
}

void PaperTypeDialog::OnRowActivated(platform::ControlId id) {
  if (id == kTrayList) EditTray();
}

void PaperTypeDialog::OnButton(platform::ControlId id) {
  if (id == kEdit) return EditTray();
  if (id == kInterleaveSettings) return EditInterleave();
  if (id != platform::kOkButton && id != platform::kCancelButton) return;
  dialog().SetRows(kTrayList, {});
  dialog().End(id);
}

void PaperTypeDialog::EditTray() {
  OnRowSelected(kTrayList);
  const uint16_t tray = engine::GetControlValue(engine(), kSelectedTray);
  if (dialog().SelectedRow(kTrayList) < 0) return;
  Setting<u"lpMediaType">(ui()) = engine::MediaOfTray(engine(), tray).mediaType;
  PaperTypeEditDialog edit(sheet());
  const int result = RunOnClone(PaperTypeEditDialog::kNumber, edit);
  if (result == 0) return;
  if (result == platform::IDOK) {
    StoreMediaType(ui(), tray);
    FillTrays();
  }
  LoadAllTrayMirrors(ui());
  EvaluateAndApply();
  DropIdleInterleave();
}

/// Without transparencies there is nothing to lay sheets between.
void PaperTypeDialog::DropIdleInterleave() {
  uint16_t& interleave = Setting<u"OHPInterLeave_Check">(ui());
  const bool idle = !engine::IsControlAvailable(engine(), kInterleave) ||
                    engine::GetControlValue(engine(), engine::ControlId(u"trayMediaType.page")) !=
                        value::lpMediaType::kTransparency ||
                    !HasTransparencyTray();
  if (interleave != value::OHPInterLeave_Check::kOn || !idle) return;
  interleave = 0;
  RedisplayControl(kInterleave);
  EvaluateAndApply();
}

bool PaperTypeDialog::HasTransparencyTray() const {
  return std::ranges::any_of(trays_, [this](uint16_t tray) {
    return engine::MediaOfTray(engine(), tray).mediaType == value::lpMediaType::kTransparency;
  });
}

void PaperTypeDialog::OnChanged(platform::ControlId id) {
  Resolve(id);
  if (engine::IsOn<u"OHPInterLeave_Check">(ui())) return EditInterleave();
  EvaluateAndApply();
}

/// Cancelling leaves the check on. The rules were last asked for the dialog's copy.
void PaperTypeDialog::EditInterleave() {
  InterleaveDialog interleave(sheet());
  RunOnClone(InterleaveDialog::kNumber, interleave);
  EvaluateAndApply();
}

// -- 2920 and 2020

void OneListDialog::OnInitialise() {
  SettingsView::OnInitialise();
  SetActiveDialog(number());
  EvaluateAndApply();
  ShowAll();
}

void OneListDialog::OnChanged(platform::ControlId id) {
  Store(id);
  RedisplayControl(id);
}

void OneListDialog::OnButton(platform::ControlId id) {
  if (id == platform::kOkButton || id == platform::kCancelButton) dialog().End(id);
}

PaperTypeEditDialog::PaperTypeEditDialog(SheetContext& sheet) : OneListDialog(sheet, kNumber, kEditControls) {}

InterleaveDialog::InterleaveDialog(SheetContext& sheet) : OneListDialog(sheet, kNumber, kInterleaveControls) {}

void InterleaveDialog::OnInitialise() {
  OneListDialog::OnInitialise();
  typeBefore_ = Setting<u"lpOhpIntlvType">(ui());
  trayBefore_ = Setting<u"lpOIPaperTray">(ui());
}

void InterleaveDialog::OnButton(platform::ControlId id) {
  if (id == platform::kCancelButton) {
    Setting<u"lpOhpIntlvType">(ui()) = typeBefore_;
    Setting<u"lpOIPaperTray">(ui()) = trayBefore_;
  }
  OneListDialog::OnButton(id);
}

}  // namespace heron::pages

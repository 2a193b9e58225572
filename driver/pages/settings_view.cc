#include "pages/settings_view.h"

#include <algorithm>
#include <limits>

#include "platform/api/text.h"
#include "rules/control_tables.h"

namespace heron::pages {

using engine::ControlType;

namespace {

/// Another dialog owns the controls for a scope.
class Ownership {
 public:
  Ownership(UiHead& head, uint16_t dialog) : head_(head), before_(head.activeDialogId) { head.activeDialogId = dialog; }
  ~Ownership() { head_.activeDialogId = before_; }
  Ownership(const Ownership&) = delete;
  Ownership& operator=(const Ownership&) = delete;

 private:
  UiHead& head_;
  uint16_t before_;
};

}  // namespace

uint16_t ParseNumber(std::u16string_view text) {
  uint32_t number = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') break;
    number = std::min<uint32_t>(number * 10 + (c - u'0'), 65535);
  }
  return static_cast<uint16_t>(number);
}

std::optional<int32_t> ParseSigned(std::u16string_view text) {
  const bool negative = text.starts_with(u'-');
  if (negative) text.remove_prefix(1);
  if (text.empty() || text[0] < u'0' || text[0] > u'9') return std::nullopt;
  int64_t number = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') break;
    number = std::min<int64_t>(number * 10 + (c - u'0'), std::numeric_limits<int32_t>::max());
  }
  return static_cast<int32_t>(negative ? -number : number);
}

std::u16string NumberText(int64_t number) {
  return platform::ExpandText(u"%d", {number});
}

// -- in front of the engine

std::optional<ControlType> SettingsView::TypeOf(const ShownControl& control) const {
  if (control.param == kNoIndex) {
    const int type = engine::GetControlType(control.id);
    return type < 0 ? std::nullopt : std::optional(static_cast<ControlType>(type));
  }
  switch (kParamRows[control.param].kind) {
    case ParamKind::kList:
      return ControlType::kList;
    case ParamKind::kRadio:
      return ControlType::kRadio;
    case ParamKind::kCheck:
      return ControlType::kCheck;
    case ParamKind::kNumber:
      return ControlType::kNumber;
    default:
      return std::nullopt;
  }
}

uint16_t SettingsView::ValueOf(const ShownControl& control) const {
  if (control.param == kNoIndex) return engine::GetControlValue(engine(), control.id);
  return kParamRows[control.param].HasBlock() ? *FieldsOf(ui(), control.param).value : uint16_t{0};
}

uint16_t SettingsView::RadioValueOf(const ShownControl& control) const {
  return control.param == kNoIndex ? static_cast<uint16_t>(engine::RadioMemberValue(control.id)) : control.value;
}

/// Null for what isn't a list.
ListBlock* SettingsView::BlockOf(const ShownControl& control) const {
  if (control.param == kNoIndex) return engine::GetControlBlock(engine(), control.id);
  const bool is_list = kParamRows[control.param].kind == ParamKind::kList;
  return is_list ? reinterpret_cast<ListBlock*>(SlotOf(ui(), control.param)) : nullptr;
}

uint16_t SettingsView::ReadControl(uint16_t id) {
  if (pending_ && pending_->first == id) return pending_->second;
  const ShownControl* shown = Find(id);
  if (shown == nullptr) return engine::GetControlValue(engine(), id);
  const auto type = TypeOf(*shown);
  if (!type) return ValueOf(*shown);
  switch (*type) {
    case ControlType::kList: {
      const auto& values = block_->values[static_cast<size_t>(shown - controls_.data())];
      const auto row = static_cast<size_t>(dialog().SelectedRow(id));  // kNoRow is beyond every list
      return row < values.size() ? values[row] : ValueOf(*shown);
    }
    case ControlType::kRadio:
      return RadioValueOf(*shown);
    case ControlType::kNumber:
      return ParseNumber(dialog().Text(id));
    default:
      return dialog().IsChecked(id) ? 1 : 0;
  }
}

bool SettingsView::Show(const engine::Report& report) {
  const platform::DWORD flags =
      report.asks ? platform::MB_YESNO | platform::MB_ICONQUESTION : platform::MB_OK | platform::MB_ICONINFORMATION;
  const int answer = Tell(std::u16string(report.text), std::u16string(report.caption), flags);
  return !report.asks || answer == platform::IDYES;
}

void SettingsView::RedisplayControl(uint16_t id, uint16_t) {
  if (const ShownControl* shown = Find(id)) ShowGroup(shown->group);
}

void SettingsView::RefreshList(uint16_t id) {
  if (const ShownControl* shown = Find(id)) FillList(*shown);
}

void SettingsView::EnableControl(uint16_t id, bool available) {
  dialog().Enable(id, available && Editable());
}

void SettingsView::FocusControl(uint16_t id) {
  constexpr size_t kWholeNumber = 8;
  dialog().Focus(id);
  dialog().SelectText(id, 0, kWholeNumber);
}

// -- what the user does

void SettingsView::OnInitialise() {
  block_ = std::make_unique<PageBlock>();
  block_->ui = engine().ui;
  block_->values.resize(controls_.size());
  ShowAll();
}

/// What the engine knows is resolved by whoever derives; the rest is stored at once.
void SettingsView::Changed(const ShownControl& control) {
  if (control.param == kNoIndex) return OnChanged(control.id);
  Store(control.id);
  OnStored(control.id);
}

void SettingsView::OnClicked(ControlId id) {
  SetActiveDialog(number_);
  const ShownControl* const shown = Find(id);
  if (shown == nullptr) return OnButton(id);
  const auto type = TypeOf(*shown);
  if (type == ControlType::kCheck) return Changed(*shown);
  if (type != ControlType::kRadio || !dialog().IsChecked(id)) return;
  if (ValueOf(*shown) != RadioValueOf(*shown)) Changed(*shown);
}

void SettingsView::OnRowSelected(ControlId id) {
  SetActiveDialog(number_);
  if (const ShownControl* const shown = Find(id)) Changed(*shown);
}

void SettingsView::OnTextChanged(ControlId id) {
  SetActiveDialog(number_);
  const ShownControl* shown = Find(id);
  if (shown == nullptr) return;
  const uint16_t typed = ParseNumber(dialog().Text(id));
  OnNumber(id, typed);
  dialog().SetPosition(shown->spin, ValueOf(*shown));
}

void SettingsView::OnPositionChanged(ControlId id) {
  SetActiveDialog(number_);
  const auto shown = std::ranges::find(controls_, id, &ShownControl::spin);
  if (id == 0 || shown == controls_.end()) return;
  const auto position = static_cast<uint16_t>(std::clamp(dialog().Position(id), 0, 65535));
  dialog().SetText(shown->id, NumberText(position));
  OnNumber(shown->id, position);
}

// -- showing

const ShownControl* SettingsView::Find(ControlId id) const {
  const auto shown = std::ranges::find(controls_, id, &ShownControl::id);
  return shown == controls_.end() ? nullptr : &*shown;
}

void SettingsView::ShowAll() {
  block_->RefreshMask = 0xFFFFFFFF;
  RunShowStep();
}

void SettingsView::ShowGroup(uint8_t group) {
  block_->RefreshMask |= uint32_t{1} << group;
  RunShowStep();
}

void SettingsView::RunShowStep() {
  for (uint8_t group = 0; block_->RefreshMask != 0; ++group) {
    const uint32_t bit = uint32_t{1} << group;
    if ((block_->RefreshMask & bit) == 0) continue;
    block_->RefreshMask &= ~bit;
    for (const ShownControl& control : controls_) {
      if (control.group == group) ShowControl(control);
    }
    OnGroupShown(group);
  }
}

void SettingsView::ShowControl(const ShownControl& control) {
  const auto type = TypeOf(control);
  if (!type) return;
  const uint16_t value = ValueOf(control);
  switch (*type) {
    case ControlType::kList:
      return FillList(control);
    case ControlType::kRadio:
      return dialog().SetChecked(control.id, value == RadioValueOf(control));
    case ControlType::kNumber:
      dialog().SetText(control.id, NumberText(value));
      return dialog().SetPosition(control.spin, value);
    case ControlType::kButton:
      return;
    default:
      return dialog().SetChecked(control.id, value == 1);
  }
}

bool SettingsView::Offers(ControlId list, size_t item) {
  const ShownControl* const shown = Find(list);
  ListBlock* const block = shown == nullptr ? nullptr : BlockOf(*shown);
  return block != nullptr && block->Items()[item].status == engine::kItemAllowed;
}

std::u16string SettingsView::RowText(ControlId, const ListItem& item) {
  const std::u16string_view label(item.label, kLabelLength);
  return std::u16string(label.substr(0, label.find(u'\0')));
}

/// Fills a list with the items that are offered and selects the setting's value. Where that isn't offered the default
/// is shown, and the setting stays.
void SettingsView::FillList(const ShownControl& control) {
  if (control.param == kNoIndex && !engine::ComputeItemStatus(engine(), control.id)) return;
  ListBlock& block = *BlockOf(control);
  std::vector<uint16_t>& values = block_->values[static_cast<size_t>(&control - controls_.data())];
  std::vector<platform::ListRow> rows;
  values.clear();
  for (size_t i = 0; i < block.count; ++i) {
    if (!Offers(control.id, i)) continue;
    values.push_back(block.Items()[i].value);
    rows.push_back({.text = RowText(control.id, block.Items()[i]), .cells = {}, .picture = RowPicture(control.id, i)});
  }
  dialog().SetRows(control.id, rows);
  auto row = std::ranges::find(values, block.value);
  if (row == values.end()) row = std::ranges::find(values, block.defaultValue);
  dialog().SelectRow(control.id, row == values.end() ? platform::kNoRow : static_cast<int>(row - values.begin()));
}

void SettingsView::Store(ControlId id) {
  const ShownControl* const shown = Find(id);
  const uint16_t value = ReadControl(id);
  if (shown == nullptr || shown->param == kNoIndex) return engine::SetControlValue(engine(), id, value);
  if (kParamRows[shown->param].HasBlock()) *FieldsOf(ui(), shown->param).value = value;
}

void SettingsView::EvaluateAndApply() {
  engine::EvaluateRules(engine(), this);
  engine::ApplyAvailability(engine(), this);
}

void SettingsView::Rebuild() {
  ShowAll();
  EvaluateAndApply();
}

void SettingsView::DisableAll() const {
  for (const ControlId id : dialog().Controls()) dialog().Enable(id, false);
}

int SettingsView::RunOwned(uint16_t dialog_number, DialogLogic& logic) {
  const Ownership owned(ui().head(), dialog_number);
  return dialog().RunDialog(dialog_number, &logic);
}

int SettingsView::RunOnClone(uint16_t dialog_number, DialogLogic& logic) {
  UiStatePtr clone = CloneUiState(ui());
  if (clone == nullptr) return 0;
  clone->head().activeDialogId = dialog_number;
  int result = 0;
  {
    const engine::BoundClone bound(engine(), *clone);
    result = dialog().RunDialog(dialog_number, &logic);
  }
  if (result == platform::IDOK) {
    CopyUiState(ui(), *clone);
    SetActiveDialog(number_);
  }
  FreeUiStateClone(clone);
  return result;
}

}  // namespace heron::pages

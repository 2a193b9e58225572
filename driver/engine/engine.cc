// Binding, values, labels and snapshots.
#include "engine/engine.h"

#include <algorithm>
#include <cstring>

#include "catalog/strings.h"
#include "platform/api/text.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

bool ShowsPaper(uint16_t id) {
  return id == ControlId(u"lpMediaSize") || id == ControlId(u"lpOutputPaper");
}

}  // namespace

Engine::Engine(UiState& state) {
  for (size_t i = 0; i < kControlCount; ++i) rules.available[i] = FirstEnableRule(kControls[i].id) < 0;
  BindControls(*this, state);
}

bool Engine::Usable(ControlIndex control) const {
  if (Available(control)) return true;
  const int row = FirstEnableRule(kControls[control].id);
  return row >= 0 && kEnableRules[static_cast<size_t>(row)].alwaysUsable;
}

void BindControls(Engine& engine, UiState& ui) {
  engine.ui = &ui;
  for (size_t i = 0; i < kControlCount; ++i) {
    ControlBinding& binding = engine.controls[i];
    binding = {};
    const uint16_t param = ParamIndexOfControl(static_cast<ControlIndex>(i));
    if (param == kNoParam) continue;
    binding.fields = FieldsOf(ui, param);
    if (kParamRows[param].kind == ParamKind::kList) binding.list = reinterpret_cast<ListBlock*>(SlotOf(ui, param));
  }
}

uint16_t GetControlValue(const Engine& engine, uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? kUnknownValue : engine.Value(control);
}

uint16_t GetControlDefault(const Engine& engine, uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? kUnknownValue : engine.Default(control);
}

void SetControlValue(Engine& engine, uint16_t id, uint16_t value) {
  const ControlIndex control = IndexOf(id);
  if (control != kNoControl) engine.Set(control, value);
}

ListBlock* GetControlBlock(const Engine& engine, uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? nullptr : engine.controls[control].list;
}

int GetControlType(uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? -1 : static_cast<int>(kControls[control].type);
}

int GetControlDialog(uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? int{kUnknownValue} : int{kControls[control].dialog};
}

int GetControlPageMask(uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? -1 : int{kControls[control].pageMask};
}

int GetControlKind(uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control == kNoControl ? -1 : kControls[control].Kind();
}

bool GetControlFixedFlag(uint16_t id) {
  const ControlIndex control = IndexOf(id);
  return control != kNoControl && kControls[control].fixed;
}

std::u16string GetControlLabel(const Engine& engine, uint16_t id) {
  const ControlIndex control = IndexOf(id);
  if (control == kNoControl) return {};
  std::u16string label = GetUiString(kControls[control].label);
  const ControlIndex source = SourceOfMirror(control);
  if (source == kNoControl) return label;
  const char16_t* tray = GetValueLabel(kControls[source].id, engine.Value(source));
  return label + u"(" + (tray == nullptr ? u"" : tray) + u")";
}

const char16_t* GetValueLabel(uint16_t id, uint16_t value) {
  const ControlIndex control = IndexOf(id);
  if (control == kNoControl) return nullptr;
  if (ShowsPaper(id)) return PaperLabel(value);
  const uint16_t text = ValueLabel(control, static_cast<int16_t>(value));
  return text == 0 ? nullptr : GetUiString(text);
}

int GetValueByLabel(uint16_t id, std::u16string_view text) {
  const ControlIndex control = IndexOf(id);
  if (control == kNoControl || ShowsPaper(id)) return -1;
  for (const ListOption& option : ValueLabels(control)) {
    if (option.label != 0 && GetUiString(option.label) == text) return option.value;
  }
  return -1;
}

void SnapshotValues(Engine& engine) {
  for (size_t i = 0; i < kControlCount; ++i) engine.savedValues[i] = engine.Value(static_cast<ControlIndex>(i));
  std::memcpy(engine.savedTrays.data(), engine.ui->head().trayTable, engine.savedTrays.size());
}

void RestoreValues(Engine& engine) {
  for (size_t i = 0; i < kControlCount; ++i) engine.Set(static_cast<ControlIndex>(i), engine.savedValues[i]);
  std::memcpy(engine.ui->head().trayTable, engine.savedTrays.data(), engine.savedTrays.size());
}

}  // namespace heron::engine

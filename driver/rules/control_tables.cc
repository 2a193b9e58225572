// Joins the controls with their parameters and with the catalogue's texts.
#include "rules/control_tables.h"

#include <algorithm>
#include <array>

#include "generated/texts.h"
#include "rules/notation.h"
#include "rules/radio_values_table.h"
#include "uistate/params.h"

namespace heron::engine {
namespace {

/// A check box whose feature this model lacks has no options in the catalogue; its states are called the same.
constexpr std::array<ListOption, 2> kSwitchLabels = {{
    {.feature = kNoFeature, .label = text::kOff, .value = 0, .defaultMask = 0},
    {.feature = kNoFeature, .label = text::kOn, .value = 1, .defaultMask = 0},
}};

constexpr uint16_t FindParam(const ControlRow& control) {
  if (control.type == ControlType::kButton) return kNoParam;
  for (size_t i = 0; i < kParamRows.size(); ++i) {
    const bool found =
        control.parameter != 0 ? kParamRows[i].id == control.parameter : kParamRows[i].key == control.key;
    if (found) return static_cast<uint16_t>(i);
  }
  throw "a control without a setting";
}

consteval auto JoinParams() {
  std::array<uint16_t, kControlCount> params{};
  for (size_t i = 0; i < kControlCount; ++i) {
    const ControlRow& control = kControls[i];
    params[i] = control.firstOfSetting < i ? params[control.firstOfSetting] : FindParam(control);
  }
  return params;
}
constexpr auto kControlParams = JoinParams();

struct RadioButton {
  uint16_t id;
  int16_t value;
};

constexpr size_t CountButtons(Text text) {
  return static_cast<size_t>(std::ranges::count(text, u'='));
}

template <size_t kCount>
consteval auto ParseRadioValues(Text text) {
  std::array<RadioButton, kCount> buttons{};
  size_t used = 0;
  catalog::ForEachLine(text, [&](Text line) {
    for (Text word = catalog::CutWord(line); !word.empty(); word = catalog::CutWord(line)) {
      const Operand operand = ParseOperand(word);
      buttons[used++] = {ControlIdOf(operand.control), operand.values[0]};
    }
  });
  return buttons;
}

constexpr auto kRadioValues = ParseRadioValues<CountButtons(kRadioValueText)>(kRadioValueText);
constexpr auto kPageRadioValues = ParseRadioValues<CountButtons(kPageRadioValueText)>(kPageRadioValueText);
static_assert(kRadioValues.size() == 30 && kPageRadioValues.size() == 17);

int ValueOf(std::span<const RadioButton> buttons, uint16_t id) {
  const auto button = std::ranges::find(buttons, id, &RadioButton::id);
  return button == buttons.end() ? -1 : button->value;
}

}  // namespace

uint16_t ParamIndexOfControl(ControlIndex control) {
  return control < kControlCount ? kControlParams[control] : kNoParam;
}

int RadioValue(uint16_t id) {
  return ValueOf(kRadioValues, id);
}

int RadioMemberValue(uint16_t id) {
  const int value = RadioValue(id);
  return value >= 0 ? value : ValueOf(kPageRadioValues, id);
}

std::span<const ListOption> ValueLabels(ControlIndex control) {
  const uint16_t param = ParamIndexOfControl(control);
  if (param == kNoParam) return {};
  const auto options = ListOptionsOf(kParamRows[param].feature);
  if (options.empty() && kControls[control].type == ControlType::kCheck) return kSwitchLabels;
  return options;
}

uint16_t ValueLabel(ControlIndex control, int32_t value) {
  const auto labels = ValueLabels(control);
  const auto row = std::ranges::find_if(labels, [&](const ListOption& option) { return option.value == value; });
  return row == labels.end() ? uint16_t{0} : row->label;
}

}  // namespace heron::engine

#include "settings_text.h"

#include <algorithm>
#include <iostream>

#include "engine/control_tables.h"
#include "platform/text.h"
#include "settings_table.h"

namespace heron::cli {
namespace {

constexpr size_t kLineWidth = 110;
constexpr size_t kSettingWidth = 42;
constexpr size_t kKeyWidth = 28;

/// Text of the setting's first control.
std::string ControlText(uint16_t param_index, const Catalogue& catalogue) {
  for (size_t i = 0; i < engine::kControlCount; ++i) {
    const auto control = static_cast<engine::ControlIndex>(i);
    if (engine::ParamIndexOfControl(control) == param_index) return catalogue.Text(engine::kControls[i].label);
  }
  return {};
}

std::vector<Choice> ChoicesOf(uint16_t feature, const Catalogue& catalogue) {
  std::vector<Choice> choices;
  for (const ListOption& option : ListOptionsOf(feature)) {
    const auto row = static_cast<uint32_t>(choices.size());
    choices.push_back({option.value, catalogue.Label(feature, row)});
  }
  return choices;
}

Setting MakeSetting(const UiState& ui, const Catalogue& catalogue, const SettingPage& page, const SettingRow& row) {
  const uint16_t index = ParamIndexOf(row.parameter);
  const ParamRow& param = kParamRows[index];
  const ValueFields fields = FieldsOf(ui, index);
  Setting setting;
  setting.parameter = row.parameter;
  setting.key = platform::ToUtf8(param.key);
  setting.page = page.title;
  setting.inner = page.inner;
  setting.label = row.label != nullptr ? row.label : ControlText(index, catalogue);
  setting.choices = ChoicesOf(param.feature, catalogue);
  setting.hasRange = KindOf(param.feature) == FeatureKind::kRange;
  // Numbers that can be negative are kept in their 16 bits; options are unsigned but for the range of a number.
  const auto number = [&](uint16_t value) {
    return setting.hasRange ? int32_t{static_cast<int16_t>(value)} : int32_t{value};
  };
  setting.value = number(*fields.value);
  setting.defaultValue = number(*fields.defaultValue);
  if (setting.hasRange) {
    const auto* block = reinterpret_cast<const NumericBlock*>(SlotOf(ui, index));
    setting.min = number(block->min);
    setting.max = number(block->max);
  }
  return setting;
}

/// "*1=Portrait (default)", "2=Landscape": the star stands before the current choice.
std::vector<std::string> ChoiceTexts(const Setting& setting) {
  std::vector<std::string> texts;
  if (setting.hasRange) {
    texts.push_back(std::to_string(setting.min) + " to " + std::to_string(setting.max) + ", " +
                    std::to_string(setting.defaultValue) + " by default");
    return texts;
  }
  bool current = false;
  bool standard = false;
  for (const Choice& choice : setting.choices) {
    // Of a value that stands twice, the first row is marked.
    const bool is_current = !current && choice.value == setting.value;
    const bool is_default = !standard && choice.value == setting.defaultValue;
    current |= is_current;
    standard |= is_default;
    std::string text = is_current ? "*" : "";
    text += std::to_string(choice.value) + '=' + choice.label;
    if (is_default) text += " (default)";
    texts.push_back(std::move(text));
  }
  return texts;
}

void PrintChoices(const Setting& setting) {
  constexpr size_t kIndent = 6;
  size_t column = 0;
  const std::vector<std::string> texts = ChoiceTexts(setting);
  for (size_t i = 0; i < texts.size(); ++i) {
    std::string text = texts[i];
    if (i + 1 < texts.size()) text += "; ";
    if (column == 0 || column + text.size() > kLineWidth) {
      std::cout << (column == 0 ? "" : "\n") << std::string(kIndent, ' ');
      column = kIndent;
    }
    std::cout << text;
    column += text.size();
  }
  std::cout << '\n';
}

void PrintLine(const Setting& setting, const std::string& remark) {
  const std::string name = setting.key.empty() ? std::to_string(setting.parameter) : setting.key;
  std::cout << "  " << Padded(setting.label, kSettingWidth) << ' ' << Padded(name, kKeyWidth) << ' '
            << setting.ValueText(setting.value) << remark << '\n';
}

void PrintLine(const Setting& setting) {
  PrintLine(setting, setting.value == setting.defaultValue ? " (default)" : "");
}

/// Starts a page with its title where `setting` is the first of it.
void PrintPageOf(const Setting& setting, std::string& page) {
  if (setting.page == page) return;
  std::cout << (page.empty() ? "" : "\n") << Heading(setting.page) << '\n';
  page = setting.page;
}

}  // namespace

std::string Setting::ValueText(int32_t of) const {
  const auto choice = std::ranges::find(choices, of, &Choice::value);
  if (hasRange || choice == choices.end()) return std::to_string(of);
  return choice->label.empty() ? std::to_string(of) : choice->label;
}

std::vector<Setting> SettingsOf(const UiState& ui, const Catalogue& catalogue) {
  std::vector<Setting> settings;
  for (const SettingPage& page : kSettingPages) {
    for (const SettingRow& row : page.rows) settings.push_back(MakeSetting(ui, catalogue, page, row));
  }
  return settings;
}

void PrintAll(const std::vector<Setting>& settings) {
  std::string page;
  for (const Setting& setting : settings) {
    PrintPageOf(setting, page);
    PrintLine(setting);
    PrintChoices(setting);
  }
}

void PrintChanged(const std::vector<Setting>& settings, const std::vector<Setting>& fresh) {
  std::string page;
  size_t same = 0;
  for (size_t i = 0; i < settings.size(); ++i) {
    if (settings[i].inner) continue;
    if (settings[i].value == fresh[i].value) {
      ++same;
      continue;
    }
    PrintPageOf(settings[i], page);
    PrintLine(settings[i]);
  }
  std::cout << (page.empty() ? "" : "\n") << (page.empty() ? "All " : "") << same
            << " settings are as the printer starts with; -l lists all.\n";
}

bool PrintDifferences(const std::vector<Setting>& settings, const std::vector<Setting>& now) {
  std::string page;
  for (size_t i = 0; i < settings.size(); ++i) {
    if (settings[i].inner || settings[i].value == now[i].value) continue;
    PrintPageOf(settings[i], page);
    PrintLine(settings[i], " (now " + now[i].ValueText(now[i].value) + ')');
  }
  return !page.empty();
}

Json SettingsJson(const std::vector<Setting>& settings) {
  Json rows = Json::array();
  for (const Setting& setting : settings) {
    Json options = Json::array();
    for (const Choice& choice : setting.choices) {
      options.push_back({{"value", choice.value},
                         {"label", choice.label},
                         {"current", choice.value == setting.value},
                         {"default", choice.value == setting.defaultValue}});
    }
    rows.push_back({{"parameter", setting.parameter},
                    {"key", setting.key},
                    {"page", setting.page},
                    {"label", setting.label},
                    {"value", setting.value},
                    {"valueLabel", setting.ValueText(setting.value)},
                    {"default", setting.defaultValue},
                    {"defaultLabel", setting.ValueText(setting.defaultValue)},
                    {"min", setting.hasRange ? Json(setting.min) : Json(nullptr)},
                    {"max", setting.hasRange ? Json(setting.max) : Json(nullptr)},
                    {"options", options}});
  }
  return rows;
}

}  // namespace heron::cli

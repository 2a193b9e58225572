// Settings, their values and choices as text and JSON (settings_text.h).

#include "settings_text.h"

#include <algorithm>
#include <iostream>

#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "rules/control_tables.h"
#include "settings/papers.h"
#include "settings_table.h"
#include "uistate/tray_media.h"

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

/// Which of two texts of one value counts: the page order's goes with layout and orientation.
int CurrentChoice(const UiState& ui, uint16_t index, const Setting& setting) {
  const auto is_value = [&](const Choice& choice) { return choice.value == setting.value; };
  auto first = setting.choices.begin();
  if (index == ParamNamed<u"lpOrder">()) {
    const engine::OrderRows rows = engine::OrderRowsOf(ui);
    const auto offered =
        std::find_if(first + static_cast<int>(rows.first), first + static_cast<int>(rows.last) + 1, is_value);
    if (offered != first + static_cast<int>(rows.last) + 1) first = offered;
  }
  const auto choice = std::find_if(first, setting.choices.end(), is_value);
  return choice == setting.choices.end() ? -1 : static_cast<int>(choice - setting.choices.begin());
}

/// A custom size as its dialog shows it. A record holds the stored size cut to tenths of a millimetre, so that 210.0 mm
/// are shown as 209.9.
uint16_t ShownSize(const UiState& ui, uint16_t index, uint16_t value) {
  constexpr uint16_t kWidth = ParamNamed<u"UDPaperWidth">(), kLength = ParamNamed<u"UDPaperLength">();
  constexpr uint16_t kOutputWidth = ParamNamed<u"UDMediaWidth">(), kOutputLength = ParamNamed<u"UDMediaLength">();
  const bool width = index == kWidth || index == kOutputWidth;
  if (!width && index != kLength && index != kOutputLength) return value;
  const bool original = index == kWidth || index == kLength;
  // A print size that is the document's has the document's size, also before a record says so.
  if (!original && engine::Setting<u"lpOutputPaper">(ui) == kSameAsDocument)
    value = width ? engine::Setting<u"UDPaperWidth">(ui) : engine::Setting<u"UDPaperLength">(ui);
  const int number = CustomPaperNumber(original ? engine::Setting<u"lpMediaSize">(ui) : engine::PrintedPaper(ui));
  if (number == 0 || ui.stores.userPapers == nullptr) return value;
  const CustomPaperEntry& entry = (*ui.stores.userPapers)[static_cast<size_t>(number - 1)];
  // Only a size that is the stored one, cut, is shown as the dialog shows it; an application's own size stays.
  const uint32_t stored = width ? entry.width : entry.height;
  const bool is_stored = value == uint64_t{stored} * 2540 / 1000 / 10;
  return is_stored ? static_cast<uint16_t>(ThouToTenthMm(value::lpUDPaperUnit::kMillimetre, stored)) : value;
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
  setting.value = number(ShownSize(ui, index, *fields.value));
  setting.defaultValue = number(*fields.defaultValue);
  if (setting.hasRange) {
    const auto* block = reinterpret_cast<const NumericBlock*>(SlotOf(ui, index));
    setting.min = number(block->min);
    setting.max = number(block->max);
  }
  setting.current = CurrentChoice(ui, index, setting);
  return setting;
}

/// The place in the user's list of watermarks.
Setting WatermarkInUse(const UiState& ui, const SettingPage& page) {
  constexpr uint16_t kChoice = ParamNamed<u"bWatermarkCurrent">();
  Setting setting;
  setting.parameter = kParamRows[kChoice].id;
  setting.key = platform::ToUtf8(kParamRows[kChoice].key);
  setting.page = page.title;
  setting.label = "Watermark in use";
  setting.value = SlotAs<u"bWatermarkCurrent", uint8_t>(ui);
  setting.choices.push_back({0, "None"});
  const WatermarkStore* const list = ui.stores.watermarks.get();
  const size_t count = list == nullptr ? 0 : std::min<size_t>(list->wMarkListNum, kWatermarkCount);
  for (size_t i = 1; i < count; ++i)
    setting.choices.push_back({static_cast<int32_t>(i), Printable(list->entries[i].text)});
  setting.current = CurrentChoice(ui, kChoice, setting);
  return setting;
}

/// What lies in each tray.
void AddTrays(const UiState& ui, const Catalogue& catalogue, const SettingPage& page, std::vector<Setting>& settings) {
  constexpr uint16_t kMediaType = kMirroredTrays[0].mirrors[0];
  constexpr uint16_t kSource = kMirroredTrays[0].source;
  for (const TrayRow& row : TraysOf(ui).rows) {
    const std::string tray = catalogue.LabelOfValue(kParamRows[kSource].feature, row.source);
    // Trays that the model lacks have no label; several sources may mean one tray.
    if (tray.empty() || std::ranges::find(settings, int{row.source}, &Setting::tray) != settings.end()) continue;
    Setting setting;
    setting.parameter = kParamRows[kMediaType].id;
    setting.page = page.title;
    setting.label = "Paper type in: " + tray;
    setting.tray = row.source;
    setting.choices = ChoicesOf(kParamRows[kMediaType].feature, catalogue);
    setting.value = row.media.mediaType;
    setting.defaultValue = *FieldsOf(ui, kMediaType).defaultValue;
    setting.current = CurrentChoice(ui, kMediaType, setting);
    settings.push_back(std::move(setting));
  }
}

/// "*1=Portrait (default)", "2=Landscape": the star marks the current choice.
std::vector<std::string> ChoiceTexts(const Setting& setting) {
  std::vector<std::string> texts;
  if (setting.hasRange) {
    texts.push_back(std::to_string(setting.min) + " to " + std::to_string(setting.max) + ", " +
                    std::to_string(setting.defaultValue) + " by default");
    return texts;
  }
  bool standard = false;
  for (size_t i = 0; i < setting.choices.size(); ++i) {
    const Choice& choice = setting.choices[i];
    // If a value is in two rows, only one is marked.
    const bool is_current = static_cast<int>(i) == setting.current;
    const bool is_default = !standard && choice.value == setting.defaultValue;
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
  constexpr uint16_t kTrayPaper = engine::ControlId(u"trayMediaType.page");
  const std::string name = setting.tray >= 0
                               ? std::to_string(kTrayPaper) + ", lpMediaSource=" + std::to_string(setting.tray)
                           : setting.key.empty() ? std::to_string(setting.parameter)
                                                 : setting.key;
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
  auto choice = std::ranges::find(choices, of, &Choice::value);
  // Two choices may share a value; the current one knows which of the two labels is meant.
  if (current >= 0 && of == value) choice = choices.begin() + current;
  if (hasRange || choice == choices.end()) return std::to_string(of);
  return choice->label.empty() ? std::to_string(of) : choice->label;
}

std::vector<Setting> SettingsOf(const UiState& ui, const Catalogue& catalogue) {
  std::vector<Setting> settings;
  for (const SettingPage& page : kSettingPages) {
    for (const SettingRow& row : page.rows) settings.push_back(MakeSetting(ui, catalogue, page, row));
    if (page.rows.data() == kPaperSettings.data()) AddTrays(ui, catalogue, page, settings);
    if (page.rows.data() == kWatermarkSettings.data()) settings.push_back(WatermarkInUse(ui, page));
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
    if (settings[i].inner) continue;  // follows from others that are listed
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
    for (size_t i = 0; i < setting.choices.size(); ++i) {
      const Choice& choice = setting.choices[i];
      options.push_back({{"value", choice.value},
                         {"label", choice.label},
                         {"current", static_cast<int>(i) == setting.current},
                         {"default", choice.value == setting.defaultValue}});
    }
    rows.push_back({{"parameter", setting.parameter},
                    {"key", setting.key},
                    {"page", setting.page},
                    {"tray", setting.tray >= 0 ? Json(setting.tray) : Json(nullptr)},
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

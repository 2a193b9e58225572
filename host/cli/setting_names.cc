#include "setting_names.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

#include "command.h"
#include "engine/control_tables.h"
#include "platform/text.h"

namespace heron::cli {
namespace {

using engine::ControlIndex;
using engine::ControlType;
using engine::kControls;

/// Values that are no settings but entries of a list which open a dialog.
constexpr uint16_t kCustomEntry = 512;
constexpr uint16_t kOlderCustomEntry = 511;
constexpr uint16_t kLayoutDetails = 20;

bool SameText(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

std::optional<int32_t> Number(std::string_view text) {
  int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// Of several controls of one setting, the one whose page is the setting's own: the paper type's dialog, else the
/// first.
uint16_t MainControl(uint16_t parameter, int32_t value) {
  constexpr uint16_t kPaperType = 2921;
  uint16_t found = 0;
  for (size_t i = 0; i < engine::kControlCount; ++i) {
    if (engine::ParamIndexOfControl(static_cast<ControlIndex>(i)) != parameter) continue;
    const uint16_t id = kControls[i].id;
    if (id == kPaperType) return id;
    const bool radio = kControls[i].type == ControlType::kRadio;
    if (found == 0 && (!radio || engine::RadioMemberValue(id) == value)) found = id;
  }
  return found;
}

uint16_t ParameterOfKey(const std::string& key) {
  std::vector<std::string> keys;
  uint16_t found = kNoIndex;
  for (uint16_t i = 0; i < kParamRows.size(); ++i) {
    if ((!kParamRows[i].HasBlock() && i != kWatermarkChoice) || kParamRows[i].key.empty()) continue;
    keys.push_back(platform::ToUtf8(kParamRows[i].key));
    if (found == kNoIndex && SameText(keys.back(), key)) found = i;
  }
  if (found != kNoIndex) return found;
  std::string hint = DidYouMean(key, keys);
  if (hint.empty()) hint = "`heron settings -l` lists all";
  throw Failure(kUsage, "there is no setting \"" + Printable(key) + "\"; " + hint);
}

/// The setting and, for a number, the control that was named.
void FindSetting(const std::string& key, Wish& wish) {
  const std::optional<int32_t> id = Number(key);
  if (!id) {
    wish.parameter = ParameterOfKey(key);
    return;
  }
  const auto row = std::ranges::find(kControls, static_cast<uint16_t>(*id), &engine::ControlRow::id);
  if (*id <= 0 || *id > 0xFFFF || row == kControls.end() || row->type == ControlType::kButton) {
    throw Failure(kRefused, "there is no control " + key + " that holds a value; `heron controls` lists all");
  }
  wish.control = row->id;
  wish.parameter = engine::ParamIndexOfControl(static_cast<ControlIndex>(row - kControls.begin()));
}

std::vector<std::string> LabelsOf(uint16_t feature, const Catalogue& catalogue) {
  std::vector<std::string> labels;
  for (uint32_t row = 0; row < ListOptionsOf(feature).size(); ++row) labels.push_back(catalogue.Label(feature, row));
  return labels;
}

int32_t ValueOf(const Wish& wish, const std::string& text, const Catalogue& catalogue) {
  const uint16_t feature = kParamRows[wish.parameter].feature;
  const std::vector<std::string> labels = LabelsOf(feature, catalogue);
  const auto label = std::ranges::find_if(labels, [&](const std::string& known) { return SameText(known, text); });
  if (label != labels.end()) return ListOptionsOf(feature)[static_cast<size_t>(label - labels.begin())].value;
  const std::optional<int32_t> number = Number(text);
  if (!number) {
    std::string hint = DidYouMean(text, labels);
    if (hint.empty()) hint = "`heron settings -l` lists what it can be";
    throw Failure(kUsage, wish.text + ": it can't be \"" + Printable(text) + "\"; " + hint);
  }
  return *number;
}

void CheckValue(const Wish& wish, int32_t value, const engine::Engine& engine) {
  const ParamRow& param = kParamRows[wish.parameter];
  const auto refuse = [&](const std::string& why) { throw Failure(kRefused, wish.text + ": " + why); };
  const bool opens_dialog =
      ((param.feature == 0 || param.feature == 11) && (value == kCustomEntry || value == kOlderCustomEntry)) ||
      (param.key == u"lpLayout" && value == kLayoutDetails);
  if (opens_dialog) refuse("this entry opens a dialog and is no choice of its own");
  if (KindOf(param.feature) == FeatureKind::kRange) {
    const auto* block = reinterpret_cast<const NumericBlock*>(SlotOf(*engine.ui, wish.parameter));
    const auto min = static_cast<int16_t>(block->min);
    const auto max = static_cast<int16_t>(block->max);
    if (value < min || value > max) {
      refuse("give a number from " + std::to_string(min) + " to " + std::to_string(max));
    }
  } else if (CatalogIndexOf(param.feature, value) < 0) {
    refuse("the setting has no choice " + std::to_string(value) + "; `heron settings -l` lists what it can be");
  }
}

/// The place in the user's list of a watermark, named by its text or its number; 0 stands for none.
uint16_t WatermarkPlace(const Wish& wish, const std::string& text, const UiState& ui) {
  std::vector<std::string> texts;
  if (ui.stores.watermarks != nullptr) {
    const WatermarkStore& list = *ui.stores.watermarks;
    for (size_t i = 0; i < std::min<size_t>(list.wMarkListNum, kWatermarkCount); ++i)
      texts.push_back(Printable(list.entries[i].text));
  }
  const auto named = std::ranges::find_if(texts, [&](const std::string& known) { return SameText(known, text); });
  if (!text.empty() && named != texts.end()) return static_cast<uint16_t>(named - texts.begin());
  const std::optional<int32_t> number = Number(text);
  if (!number) throw Failure(kUsage, wish.text + ": there is no such watermark; " + DidYouMean(text, texts));
  if (*number < 0 || *number >= std::max<int32_t>(1, static_cast<int32_t>(texts.size())))
    throw Failure(kRefused, wish.text + ": the list of watermarks has " + std::to_string(texts.size()) + " places");
  return static_cast<uint16_t>(*number);
}

}  // namespace

Wish ParseWish(const std::string& text, const engine::Engine& engine, const Catalogue& catalogue) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw Failure(kUsage, "write -o KEY=VALUE instead of -o " + Printable(text));
  }
  Wish wish;
  wish.text = Printable(text);
  FindSetting(text.substr(0, equals), wish);
  if (wish.parameter == kWatermarkChoice) {
    wish.value = WatermarkPlace(wish, text.substr(equals + 1), *engine.ui);
    return wish;
  }
  const int32_t value = ValueOf(wish, text.substr(equals + 1), catalogue);
  CheckValue(wish, value, engine);
  wish.value = static_cast<uint16_t>(value);
  const auto named = std::ranges::find(kControls, wish.control, &engine::ControlRow::id);
  const bool radio = wish.control != 0 && named->type == ControlType::kRadio;
  if (wish.control == 0 || (radio && engine::RadioMemberValue(wish.control) != value)) {
    wish.control = MainControl(wish.parameter, value);
  }
  return wish;
}

std::string ControlName(const engine::Engine& engine, uint16_t control) {
  const std::string label = Printable(engine::GetControlLabel(engine, control));
  if (!label.empty()) return label;
  const auto row = std::ranges::find(kControls, control, &engine::ControlRow::id);
  return row == kControls.end() ? std::to_string(control) : Printable(row->key);
}

std::string ValueName(uint16_t control, uint16_t value) {
  const char16_t* label = engine::GetValueLabel(control, value);
  return label == nullptr ? std::to_string(value) : Printable(label);
}

}  // namespace heron::cli

// Resolves KEY=VALUE into a setting, a control and a value (setting_names.h).

#include "setting_names.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

#include "catalog/paper_codes.h"
#include "catalog/strings.h"
#include "common/command.h"
#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/features.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "rules/control_tables.h"
#include "secrets.h"
#include "settings/papers.h"

namespace heron::cli {
namespace {

using engine::ControlIndex;
using engine::ControlType;
using engine::kControls;

constexpr uint16_t kOrder = ParamNamed<u"lpOrder">();

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
  constexpr uint16_t kPaperType = engine::ControlId(u"lpMediaType.dialog");
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
  std::string hint = SecretHint(key);  // texts have keys too, but are set with --secret
  if (hint.empty()) hint = DidYouMean(key, keys);
  if (hint.empty()) hint = "`heron settings -l` lists all";
  throw Failure(kUsage, "there is no setting \"" + Printable(key) + "\"; " + hint);
}

/// The setting and, for a number, the control that was named.
void FindSetting(const std::string& key, RequestedChange& request) {
  const std::optional<int32_t> id = Number(key);
  if (!id) {
    request.parameter = ParameterOfKey(key);
    return;
  }
  const auto row = std::ranges::find(kControls, static_cast<uint16_t>(*id), &engine::ControlRow::id);
  if (*id <= 0 || *id > 0xFFFF || row == kControls.end() || row->type == ControlType::kButton) {
    throw Failure(kRefused, "there is no control " + key + " that holds a value; `heron controls` lists all");
  }
  request.control = row->id;
  request.parameter = engine::ParamIndexOfControl(static_cast<ControlIndex>(row - kControls.begin()));
}

/// A text of the page order goes with a layout and an orientation; one value can be in several rows.
uint16_t OrderOfRow(const RequestedChange& request, size_t row, const UiState& ui) {
  const auto options = ListOptionsOf(kParamRows[request.parameter].feature);
  const engine::OrderRows offered = engine::OrderRowsOf(ui);
  const auto value = static_cast<uint16_t>(options[row].value);
  if (row >= offered.first && row <= offered.last) return value;
  std::string offers;
  for (size_t i = offered.first; i <= offered.last; ++i) {
    offers += (i == offered.first ? "" : ", ") + std::string(1, '"') + Printable(GetUiString(options[i].label)) + '"';
  }
  throw Failure(kRefused,
                request.text + ": with \"" +
                    ValueName(engine::ControlId(u"lpLayout"), engine::Setting<u"lpLayout">(ui)) + "\" and \"" +
                    ValueName(engine::ControlId(u"lpOrientation.Portrait"), engine::Setting<u"lpOrientation">(ui)) +
                    "\" the order can be " + offers + "; set lpLayout or lpOrientation first for another");
}

std::vector<std::string> LabelsOf(uint16_t feature, const Catalogue& catalogue) {
  std::vector<std::string> labels;
  for (uint32_t row = 0; row < ListOptionsOf(feature).size(); ++row) labels.push_back(catalogue.Label(feature, row));
  return labels;
}

int32_t ValueOf(const RequestedChange& request, const std::string& text, const Catalogue& catalogue,
                const UiState& ui) {
  const uint16_t feature = kParamRows[request.parameter].feature;
  const std::vector<std::string> labels = LabelsOf(feature, catalogue);
  const auto label = std::ranges::find_if(labels, [&](const std::string& known) { return SameText(known, text); });
  const auto row = static_cast<size_t>(label - labels.begin());
  if (label != labels.end()) {
    return request.parameter == kOrder ? OrderOfRow(request, row, ui) : ListOptionsOf(feature)[row].value;
  }
  // Labels come before numbers, so that a label made of digits means what the list shows.
  const std::optional<int32_t> number = Number(text);
  if (!number) {
    std::string hint = DidYouMean(text, labels);
    if (hint.empty()) hint = "`heron settings -l` lists what it can be";
    throw Failure(kUsage, request.text + ": it can't be \"" + Printable(text) + "\"; " + hint);
  }
  return *number;
}

void CheckValue(const RequestedChange& request, int32_t value, const engine::Engine& engine) {
  const ParamRow& param = kParamRows[request.parameter];
  const auto refuse = [&](const std::string& why) { throw Failure(kRefused, request.text + ": " + why); };
  if (param.key == u"Layout_Check2" && value != value::Layout_Check2::kOn)
    refuse("the driver keeps the layout options in use; each has a switch of its own, as Nup_Check and Staple_Check");
  if (OpensDialog(request.parameter, value)) refuse("this entry opens a dialog and is no choice of its own");
  if (KindOf(param.feature) == FeatureKind::kRange) {
    const auto* block = reinterpret_cast<const NumericBlock*>(SlotOf(*engine.ui, request.parameter));
    const auto min = static_cast<int16_t>(block->min);  // stored unsigned, but a range may begin below 0
    const auto max = static_cast<int16_t>(block->max);
    if (value < min || value > max) {
      refuse("give a number from " + std::to_string(min) + " to " + std::to_string(max));
    }
  } else if (CatalogIndexOf(param.feature, value) < 0) {
    refuse("the setting has no choice " + std::to_string(value) + "; `heron settings -l` lists what it can be");
  } else if (request.parameter == kOrder) {
    const auto options = ListOptionsOf(param.feature);
    const engine::OrderRows offered = engine::OrderRowsOf(*engine.ui);
    size_t row = offered.first;
    while (row < offered.last && options[row].value != value) ++row;
    if (options[row].value != value) row = static_cast<size_t>(CatalogIndexOf(param.feature, value));
    OrderOfRow(request, row, *engine.ui);
  }
}

/// The place in the user's list of a watermark, named by its text or its number; 0 means none.
uint16_t WatermarkPlace(const RequestedChange& request, const std::string& text, const UiState& ui) {
  std::vector<std::string> texts;
  if (ui.stores.watermarks != nullptr) {
    const WatermarkStore& list = *ui.stores.watermarks;
    for (size_t i = 0; i < std::min<size_t>(list.wMarkListNum, kWatermarkCount); ++i)
      texts.push_back(Printable(list.entries[i].text));
  }
  const auto named = std::ranges::find_if(texts, [&](const std::string& known) { return SameText(known, text); });
  if (!text.empty() && named != texts.end()) return static_cast<uint16_t>(named - texts.begin());
  const std::optional<int32_t> number = Number(text);
  if (!number) throw Failure(kUsage, request.text + ": there is no such watermark; " + DidYouMean(text, texts));
  if (*number < 0 || *number >= std::max<int32_t>(1, static_cast<int32_t>(texts.size())))
    throw Failure(kRefused, request.text + ": the list of watermarks has " + std::to_string(texts.size()) + " places");
  return static_cast<uint16_t>(*number);
}

}  // namespace

RequestedChange ParseRequest(const std::string& text, const engine::Engine& engine, const Catalogue& catalogue) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw Failure(kUsage, "write -o KEY=VALUE instead of -o " + Printable(text));
  }
  RequestedChange request;
  request.text = Printable(text);
  FindSetting(text.substr(0, equals), request);
  if (request.parameter == kWatermarkChoice) {
    request.value = WatermarkPlace(request, text.substr(equals + 1), *engine.ui);
    return request;
  }
  const int32_t value = ValueOf(request, text.substr(equals + 1), catalogue, *engine.ui);
  CheckValue(request, value, engine);
  request.value = static_cast<uint16_t>(value);
  const auto named = std::ranges::find(kControls, request.control, &engine::ControlRow::id);
  const bool radio = request.control != 0 && named->type == ControlType::kRadio;
  if (request.control == 0 || (radio && engine::RadioMemberValue(request.control) != value)) {
    request.control = MainControl(request.parameter, value);
  }
  return request;
}

std::string ControlName(const engine::Engine& engine, uint16_t control) {
  const std::string label = Printable(engine::GetControlLabel(engine, control));
  if (!label.empty()) return label;
  const auto row = std::ranges::find(kControls, control, &engine::ControlRow::id);
  return row == kControls.end() ? std::to_string(control) : Printable(row->key);
}

std::string ValueName(uint16_t control, uint16_t value) {
  const char16_t* label = engine::GetValueLabel(control, value);
  if (label != nullptr) return Printable(label);
  const engine::ControlIndex index = engine::IndexOf(control);
  return std::to_string(index == engine::kNoControl ? value : NumberOf(engine::ParamIndexOfControl(index), value));
}

std::string ValueNameNow(const engine::Engine& engine, uint16_t control, uint16_t value) {
  const engine::ControlIndex index = engine::IndexOf(control);
  if (index == engine::kNoControl || engine::ParamIndexOfControl(index) != kOrder) return ValueName(control, value);
  const engine::OrderRows rows = engine::OrderRowsOf(*engine.ui);
  const auto options = ListOptionsOf(kParamRows[kOrder].feature);
  for (size_t row = rows.first; row <= rows.last; ++row) {
    if (options[row].value == value) return Printable(GetUiString(options[row].label));
  }
  return ValueName(control, value);
}

int32_t NumberOf(uint16_t parameter, uint16_t value) {
  const bool range = parameter < kParamRows.size() && KindOf(kParamRows[parameter].feature) == FeatureKind::kRange;
  return range ? int32_t{static_cast<int16_t>(value)} : int32_t{value};
}

std::string KeyOfSetting(uint16_t parameter) {
  const ParamRow& row = kParamRows[parameter];
  return row.key.empty() ? std::to_string(row.id) : Printable(row.key);
}

std::string KeyOfControl(uint16_t control, uint16_t value) {
  const uint16_t parameter = engine::ParamIndexOfControl(engine::IndexOf(control));
  const std::u16string_view key = kParamRows[parameter].key;
  const auto first = std::ranges::find(kParamRows, key, &ParamRow::key);
  const bool means_it =
      !key.empty() && first - kParamRows.begin() == parameter &&
      (MainControl(parameter, value) == control || kControls[engine::IndexOf(control)].type == ControlType::kRadio);
  return means_it ? Printable(key) : std::to_string(control);
}

bool OpensDialog(uint16_t parameter, int32_t value) {
  const ParamRow& param = kParamRows[parameter];
  const bool of_papers = param.feature == feature::lpMediaSize || param.feature == feature::lpOutputPaper;
  return (of_papers && (value == kCustomEntry || value == paper::kPrintPosition)) ||
         (param.key == u"lpLayout" && value == value::lpLayout::kDetails);
}

}  // namespace heron::cli

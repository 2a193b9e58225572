#include "preview/labels.h"

#include <array>

#include "catalog/strings.h"
#include "engine/setting.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "settings/papers.h"

namespace heron::preview {

using engine::IsOn;
using engine::Setting;

namespace {

struct PaperText {
  std::u16string name, size;
};

/// Of a custom paper what its entry says now, which the paper table may not know yet.
PaperText TextOf(const UiState& ui, uint16_t paper) {
  if (IsCustomPaper(paper)) {
    const int number = CustomPaperNumber(paper);
    const CustomPaperEntry entry = ui.stores.userPapers == nullptr
                                       ? DefaultUserPaper(number)
                                       : (*ui.stores.userPapers)[static_cast<size_t>(number - 1)];
    const std::u16string_view name(entry.name, std::size(entry.name));
    return {std::u16string(name.substr(0, name.find(u'\0'))), UserPaperSizeText(entry)};
  }
  const auto text = [](const char16_t* label) { return std::u16string(label == nullptr ? u"" : label); };
  return {text(PaperLabel(paper)), text(PaperSizeText(paper))};
}

std::u16string ZoomText(uint16_t zoom) {
  std::u16string number = platform::ExpandText(u"%d", {int64_t{zoom}});
  constexpr size_t kDigits = 3;
  if (number.size() < kDigits) number.insert(0, kDigits - number.size(), u' ');
  return number + u" %";
}

}  // namespace

std::u16string PaperName(const UiState& ui, uint16_t paper) {
  return TextOf(ui, paper).name;
}

bool ShowsZoom(const UiState& ui) {
  const bool reduced = IsOn<u"BindMargin_Check">(ui) && Setting<u"lpMarginMode">(ui) == value::lpMarginMode::kReduce;
  return Setting<u"lpOutputPaper">(ui) != kSameAsDocument && !IsOn<u"Nup_Check">(ui) && !reduced;
}

std::string_view NameOf(LabelPlace place) {
  static constexpr std::array<std::string_view, kLabelPlaces> kNames = {
      "originalName", "originalSize", "outputName", "outputSize", "arrow", "zoom", "copies"};
  return kNames[static_cast<size_t>(place)];
}

std::vector<Label> PaperLabels(const UiState& ui) {
  const uint16_t output = Setting<u"lpOutputPaper">(ui);
  const bool differs = output != kSameAsDocument;
  PaperText original = TextOf(ui, Setting<u"lpMediaSize">(ui));
  PaperText printed = differs ? TextOf(ui, output) : PaperText{GetUiString(text::kEmpty), GetUiString(text::kEmpty)};
  std::vector<Label> labels = {
      {LabelPlace::kOriginalName, std::move(original.name)},
      {LabelPlace::kOriginalSize, std::move(original.size)},
      {LabelPlace::kOutputName, std::move(printed.name)},
      {LabelPlace::kOutputSize, std::move(printed.size)},
      {LabelPlace::kArrow, differs ? u"=>" : GetUiString(text::kEmpty)},
  };
  if (ShowsZoom(ui)) labels.push_back({LabelPlace::kZoom, ZoomText(Setting<u"Zoom">(ui))});
  if (const uint16_t copies = Setting<u"Copies">(ui); copies > 1)
    labels.push_back({LabelPlace::kCopies, platform::ExpandText(u" X%d", {int64_t{copies}})});
  return labels;
}

}  // namespace heron::preview

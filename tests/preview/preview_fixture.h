// Previews of a default record's settings. Settings and stacks are short texts: "lpPRNType=TwoSided", "15000 15070
// &15030 ^15020".
#pragma once

#include "engine/engine_fixture.h"
#include "platform/api/text.h"
#include "preview/machine_view.h"
#include "preview/paper_view.h"
#include "preview/status_view.h"

namespace heron::preview {

inline constexpr platform::RECT kPanel = {0, 0, 200, 84};

/// Numbers in their order; masks behind "&", what is laid by XOR behind "^".
inline std::string TextOf(const Stack& stack) {
  std::string text;
  for (const Layer& layer : stack) {
    if (!text.empty()) text += ' ';
    if (layer.isMask) text += '&';
    if (layer.mode == Mode::kXor) text += '^';
    text += std::to_string(layer.picture);
  }
  return text;
}

class PreviewTest : public engine::EngineTest {
 protected:
  /// Writes settings by their keys, whether the rules like them or not; "tray.Auto=Transparency" is the
  /// media type in a tray.
  void Write(const std::string& settings) {
    test::ForEachWord(settings, [&](std::string_view name, std::string_view word) {
      if (name.starts_with("tray.")) return Put(std::string(name) + "=" + std::string(word));
      const std::u16string key = platform::FromUtf8(name);
      const auto row =
          std::ranges::find_if(kParamRows, [&](const ParamRow& r) { return r.key == key && r.HasBlock(); });
      ASSERT_NE(row, kParamRows.end()) << name;
      const bool is_named = word[0] < '0' || word[0] > '9';
      const auto value = is_named ? test::ValueNamed(engine::ControlNamed(name), word)
                                  : static_cast<uint16_t>(std::stoi(std::string(word)));
      *FieldsOf(*ui, static_cast<uint16_t>(row - kParamRows.begin())).value = value;
    });
  }
  /// A plain A4 sheet, and then `settings`.
  void Set(const std::string& settings) {
    Write(
        "lpOrientation=Portrait lpMediaSize=A4 lpOutputPaper=SameAsDocument Zoom=100 Nup_Check=Off lpLayout=TwoPages "
        "lpOrder=TopToBottom lpBorder=0 "
        "BindMargin_Check=Off lpMarginMode=Shift lpPRNType=OneSided lpBindPosit=Auto Staple_Check=Off Punch_Check=Off "
        "Fold_Check=Off "
        "POD_OnePerSheet_Check=Off lpPOD_OnePerSheet=TwoPages AdhesiveBind_Check=0 FoldStaple_Check=Off " +
        settings);
  }

  /// The fields that aren't 0: "bindMark=1 duplexEdge=1".
  std::string Paper(const std::string& settings) {
    Set(settings);
    const PaperPicture picture = DescribePaper(*ui);
    std::string text;
    for (const PaperField& field : kPaperFields) {
      if (picture.*field.field == 0) continue;
      text += (text.empty() ? "" : " ") + std::string(field.name) + '=' + std::to_string(picture.*field.field);
    }
    return text;
  }
};

}  // namespace heron::preview

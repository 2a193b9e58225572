// What a person may write for a setting and its value: KEY=VALUE, the key a setting's key or a control's number, the
// value a number or a label.
#pragma once

#include <string>
#include <string_view>

#include "engine/engine.h"
#include "labels.h"
#include "uistate/ui_state.h"

namespace heron::cli {

/// A wish, understood: a setting, the control that stands for it, and the value it shall have.
struct Wish {
  std::string text;        ///< as it was written
  uint16_t parameter = 0;  ///< row of kParamRows
  uint16_t control = 0;    ///< id; 0 for a setting that no control shows
  uint16_t value = 0;
};

/// The setting that is a place in the user's own list of watermarks; it has no control and no options of the catalogue.
inline constexpr uint16_t kWatermarkChoice = ParamNamed<u"bWatermarkCurrent">();

/// Exit code 2, naming the nearest, for what can't be understood; 4 for a control or a number that the model hasn't
/// got.
Wish ParseWish(const std::string& text, const engine::Engine& engine, const Catalogue& catalogue);

/// "Staple", the label of a control as reports have it; the key or number for one without.
std::string ControlName(const engine::Engine& engine, uint16_t control);
/// Text of a control's value; the number for one without.
std::string ValueName(uint16_t control, uint16_t value);

}  // namespace heron::cli

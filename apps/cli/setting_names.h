// Parses KEY=VALUE: the key is a setting's key or a control's number, the value a number or a label.
#pragma once

#include <string>
#include <string_view>

#include "engine/engine.h"
#include "labels.h"
#include "uistate/ui_state.h"

namespace heron::cli {

/// A requested change after parsing: a setting, the control that represents it, and its new value.
struct RequestedChange {
  std::string text;        ///< as it was written
  uint16_t parameter = 0;  ///< row of kParamRows
  uint16_t control = 0;    ///< id; 0 for a setting that no control shows
  uint16_t value = 0;
};

/// The setting that is a place in the user's own list of watermarks; it has no control and no options of the catalogue.
inline constexpr uint16_t kWatermarkChoice = ParamNamed<u"bWatermarkCurrent">();

/// Exit code 2, naming the nearest, for what can't be understood; 4 for a control or a number that the model hasn't
/// got.
RequestedChange ParseRequest(const std::string& text, const engine::Engine& engine, const Catalogue& catalogue);

/// "Staple", the label of a control as reports have it; the key or number for one without.
std::string ControlName(const engine::Engine& engine, uint16_t control);
/// Text of a control's value; the number for one without, which is signed where the setting's range is.
std::string ValueName(uint16_t control, uint16_t value);
/// The same as the settings are now: of two texts for one value the one that the page would show.
std::string ValueNameNow(const engine::Engine& engine, uint16_t control, uint16_t value);
/// A setting's value as a number for display: a range may be signed, options aren't.
int32_t NumberOf(uint16_t parameter, uint16_t value);

/// The key by which `-o` reaches this control with this value: the setting's if it means this control, else its number.
std::string KeyOfControl(uint16_t control, uint16_t value);
/// The setting's key, or its number if it has none.
std::string KeyOfSetting(uint16_t parameter);

/// Whether the value is no choice but an entry that opens a dialog.
bool OpensDialog(uint16_t parameter, int32_t value);

}  // namespace heron::cli

// What else is known of a control: its setting's parameter, what a radio button stands for, what a value is called.
//
// Constant. The texts of values are those of the catalogue's options, so that a report and a list say the same.
#pragma once

#include <cstdint>
#include <span>

#include "catalog/catalog.h"
#include "rules/controls.h"

namespace heron::engine {

inline constexpr uint16_t kNoParam = 0xFFFF;

/// Place of the control's setting in kParamRows (uistate/params.h), or kNoParam for a restore-defaults button. The
/// control's value is that parameter's.
uint16_t ParamIndexOfControl(ControlIndex control);

/// The value that a radio button stands for, or -1. RadioValue knows the buttons that the engine reads by itself,
/// RadioMemberValue those of every dialog.
int RadioValue(uint16_t id);
int RadioMemberValue(uint16_t id);

/// Every value of a control that has a text, with the text's number, in the order of the list; a radio button has those
/// of its whole group, a check box its two states, a number none. Where a value occurs twice the first text counts.
std::span<const ListOption> ValueLabels(ControlIndex control);

/// Text number of a value, 0 if it has none. 111 and 114 take paper names instead (settings/papers.h).
uint16_t ValueLabel(ControlIndex control, int32_t value);

}  // namespace heron::engine

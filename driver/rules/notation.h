// Reading the engine's tables at compile time: operands, values in braces, names of controls.
//
// An operand is control=value or control={value,value,...}. A control is a name of controls.table; a bare number is a
// control that has no row there. A value is the name of an option of the control's setting; a bare number is a value
// that no option has. What can't be read doesn't compile.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "catalog/table_text.h"
#include "rules/controls.h"

namespace heron::engine {

using Text = std::u16string_view;

constexpr size_t CountWords(Text text) {
  size_t words = 0;
  while (!catalog::CutWord(text).empty()) ++words;
  return words;
}

constexpr size_t CountLines(Text text) {
  size_t lines = 0;
  catalog::ForEachLine(text, [&](Text) { ++lines; });
  return lines;
}

/// The id that a name or a bare number means.
constexpr uint16_t ControlIdOf(Text word) {
  if (word.empty() || word[0] < u'0' || word[0] > u'9') return kControls[NamedIndex(word)].id;
  const uint16_t id = catalog::Unsigned(word);
  if (IndexOf(id) != kNoControl) throw "a control with a name is written as a number";
  return id;
}

inline constexpr size_t kMostValues = 9;  ///< in a pair of braces

/// An operand with all the values of its braces.
struct Operand {
  Text control;
  std::array<int16_t, kMostValues> values{};
  size_t count = 0;
};

/// A value of a control by its name.
struct ControlValue {
  ControlIndex control;
  int16_t value;
  Text name;
};

inline constexpr auto kControlValues = std::to_array<ControlValue>({
#include "generated/control_values.inc"
});

inline constexpr Text kTrayMediaName = u"M";  ///< in pair rules: the media type of each tray in turn

/// Index of the control that a name in a rule means, or the first of those that it names.
constexpr ControlIndex RuleControl(Text name) {
  return NamedIndex(name == kTrayMediaName ? u"trayMediaType.page" : name);
}

/// The value that a name or a bare number means for a control.
constexpr int16_t ValueOf(ControlIndex control, Text word) {
  if (word.empty() || word[0] < u'A' || word[0] > u'Z') return catalog::Signed(word);
  for (const ControlValue& row : kControlValues) {
    if (row.control == control && row.name == word) return row.value;
  }
  throw "the control has no value of this name";
}

/// "On" or "{Left,Right,Top}".
constexpr void ParseValues(Text text, Operand& operand) {
  if (text.starts_with(u'{')) {
    if (!text.ends_with(u'}')) throw "a brace isn't closed";
    text = text.substr(1, text.size() - 2);
  }
  while (!text.empty()) {
    const Text word = catalog::Cut(text, u',');
    const bool named = word.empty() || word[0] < u'0' || word[0] > u'9';
    operand.values.at(operand.count++) = ValueOf(named ? RuleControl(operand.control) : kNoControl, word);
  }
  if (operand.count == 0) throw "a value is missing";
}

constexpr Operand ParseOperand(Text text) {
  Operand operand{.control = catalog::Cut(text, u'=')};
  ParseValues(text, operand);
  return operand;
}

/// An operand of one value whose control has a row.
constexpr RuleTerm ParseTerm(Text text) {
  const Operand operand = ParseOperand(text);
  if (operand.count != 1) throw "one value is wanted";
  return {NamedIndex(operand.control), operand.values[0]};
}

}  // namespace heron::engine

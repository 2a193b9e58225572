// Controls and the values of their settings by name, for tests: "lpPRNType", "Booklet".
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <concepts>
#include <ostream>
#include <string>
#include <string_view>

#include "engine/engine.h"
#include "platform/api/text.h"
#include "rules/notation.h"

namespace heron::test {

/// By name, with or without what follows its point: the first control that shows the setting.
inline engine::ControlIndex ControlNamed(std::string_view name) {
  const std::u16string wanted = platform::FromUtf8(name);
  for (size_t i = 0; i < engine::kControlCount; ++i) {
    const engine::ControlRow& row = engine::kControls[i];
    if (row.name == wanted || row.name.substr(0, row.name.find(u'.')) == wanted)
      return static_cast<engine::ControlIndex>(i);
  }
  ADD_FAILURE() << "no control " << name;
  return 0;
}

/// The value of an option's name; digits mean themselves.
inline uint16_t ValueNamed(engine::ControlIndex control, std::string_view word) {
  const bool isNumber = !word.empty() && word.find_first_not_of("-0123456789") == std::string_view::npos;
  if (isNumber) return static_cast<uint16_t>(std::stoi(std::string(word)));
  const std::u16string wanted = platform::FromUtf8(word);
  for (const engine::ControlValue& row : engine::kControlValues) {
    if (row.control == control && row.name == wanted) return static_cast<uint16_t>(row.value);
  }
  ADD_FAILURE() << platform::ToUtf8(engine::kControls[control].name) << " has no value " << word;
  return 0;
}

/// The name of a control's value, or its digits if no option has it.
inline std::string NameOfValue(engine::ControlIndex control, uint16_t value) {
  for (const engine::ControlValue& row : engine::kControlValues) {
    if (row.control == control && static_cast<uint16_t>(row.value) == value) return platform::ToUtf8(row.name);
  }
  return std::to_string(value);
}

/// What a control holds; equal to a number and to an option's name.
struct HeldValue {
  engine::ControlIndex control;
  uint16_t value;

  operator uint16_t() const { return value; }
  bool operator==(const HeldValue& other) const { return value == other.value; }
  bool operator==(std::integral auto number) const { return value == number; }
  bool operator==(const char* name) const { return value == ValueNamed(control, name); }
};

inline void PrintTo(const HeldValue& held, std::ostream* out) {
  *out << NameOfValue(held.control, held.value);
}

/// Calls `take(name, value)` for each word of "lpPRNType=Booklet Copies=3".
void ForEachWord(std::string_view settings, const std::invocable<std::string_view, std::string_view> auto& take) {
  while (!settings.empty()) {
    const std::string_view word = settings.substr(0, settings.find(' '));
    settings.remove_prefix(std::min(word.size() + 1, settings.size()));
    if (!word.empty()) take(word.substr(0, word.find('=')), word.substr(word.find('=') + 1));
  }
}

/// Calls `set(control, value)` for each word.
void ForEachSetting(std::string_view settings, const std::invocable<engine::ControlIndex, uint16_t> auto& set) {
  ForEachWord(settings, [&](std::string_view name, std::string_view value) {
    const engine::ControlIndex control = ControlNamed(name);
    set(control, ValueNamed(control, value));
  });
}

}  // namespace heron::test

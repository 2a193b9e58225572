// Reading the catalogue's tables at compile time: rows are lines, columns are separated by bars, words by blanks.
//
// The tables are constexpr variables, so all of this runs in the compiler; a text that can't be read doesn't compile,
// since a `throw` ends constant evaluation.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace heron::catalog {

/// Cuts the part before the next `end` off `rest`, without the blanks around it; the whole rest if there is no `end`.
constexpr std::u16string_view Cut(std::u16string_view& rest, char16_t end) {
  const size_t at = std::min(rest.find(end), rest.size());
  std::u16string_view part = rest.substr(0, at);
  rest.remove_prefix(std::min(at + 1, rest.size()));
  while (part.starts_with(u' ')) part.remove_prefix(1);
  while (part.ends_with(u' ')) part.remove_suffix(1);
  return part;
}

/// Cuts the next word off `rest`; empty at its end.
constexpr std::u16string_view CutWord(std::u16string_view& rest) {
  while (rest.starts_with(u' ')) rest.remove_prefix(1);
  return Cut(rest, u' ');
}

constexpr int32_t Number(std::u16string_view word) {
  const bool negative = word.starts_with(u'-');
  if (negative) word.remove_prefix(1);
  if (word.empty()) throw "a number is missing";
  int32_t value = 0;
  for (const char16_t c : word) {
    if (c < u'0' || c > u'9') throw "not a number";
    value = value * 10 + (c - u'0');
    if (value > 65535) throw "a number is too large";
  }
  return negative ? -value : value;
}

constexpr uint16_t Unsigned(std::u16string_view word) {
  const int32_t value = Number(word);
  if (value < 0) throw "a number is negative";
  return static_cast<uint16_t>(value);
}

constexpr int16_t Signed(std::u16string_view word) {
  const int32_t value = Number(word);
  if (value > INT16_MAX || value < INT16_MIN) throw "a number is too large";
  return static_cast<int16_t>(value);
}

/// Hands every line of a raw text, which begins with a line end, to `visit`.
constexpr void ForEachLine(std::u16string_view text, auto visit) {
  text.remove_prefix(1);
  while (!text.empty()) {
    const size_t end = text.find(u'\n');
    visit(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
}

}  // namespace heron::catalog

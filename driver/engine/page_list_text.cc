#include "engine/page_list_text.h"

#include <algorithm>

namespace heron::engine {
namespace {

constexpr bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

/// What is wrong with `c` at the start of a number.
PageTextError ErrorAtStart(char16_t c) {
  switch (c) {
    case u',':
      return PageTextError::kComma;
    case u'0':
      return PageTextError::kZero;
    case u'-':
      return PageTextError::kHyphen;
    default:
      return PageTextError::kNone;
  }
}

/// 65535 for anything larger, so that no text wraps around.
uint16_t NumberOf(std::u16string_view digits) {
  uint32_t number = 0;
  for (const char16_t c : digits) number = std::min<uint32_t>(number * 10 + static_cast<uint32_t>(c - u'0'), 65535);
  return static_cast<uint16_t>(number);
}

void AppendNumber(std::u16string& text, uint16_t number) {
  for (const char digit : std::to_string(number)) text += static_cast<char16_t>(digit);
}

}  // namespace

PageTextError CheckPageText(std::u16string_view text, size_t max_digits) {
  if (text.empty()) return PageTextError::kNone;
  if (!std::ranges::all_of(text, [](char16_t c) { return IsDigit(c) || c == u',' || c == u'-'; }))
    return PageTextError::kCharacter;
  if (const PageTextError error = ErrorAtStart(text[0]); error != PageTextError::kNone) return error;
  for (size_t i = 1; i < text.size(); ++i) {
    if (IsDigit(text[i - 1])) continue;
    if (const PageTextError error = ErrorAtStart(text[i]); error != PageTextError::kNone) return error;
  }
  size_t digits = 0;
  for (const char16_t c : text) {
    digits = IsDigit(c) ? digits + 1 : 0;
    if (digits > max_digits) return PageTextError::kCharacter;
  }
  int hyphens = 0;
  for (const char16_t c : text) {
    hyphens = c == u',' ? 0 : hyphens + (c == u'-');
    if (hyphens > 1) return PageTextError::kHyphen;
  }
  return PageTextError::kNone;
}

int ParsePageText(std::u16string_view text, std::span<uint16_t> numbers) {
  size_t count = 0;
  bool range_open = false;
  uint32_t range_start = 0;
  while (!text.empty()) {
    const size_t length = std::min(text.find_first_of(u",-"), text.size());
    const std::u16string_view token = text.substr(0, length);
    const bool opens = length < text.size() && text[length] == u'-';
    text.remove_prefix(std::min(length + 1, text.size()));
    if (token.empty()) continue;
    const uint32_t number = NumberOf(token);
    if (opens && !range_open) {
      range_open = true;
      range_start = number;
      continue;
    }
    const uint32_t first = range_open ? std::min(range_start, number) : number;
    const uint32_t last = range_open ? std::max(range_start, number) : number;
    if (last - first + 1 > numbers.size() - count) return -1;
    for (uint32_t page = first; page <= last; ++page) numbers[count++] = static_cast<uint16_t>(page);
    range_open = false;
  }
  return static_cast<int>(count);
}

std::u16string FormatPageList(std::span<const uint16_t> numbers) {
  std::u16string text;
  for (size_t i = 0; i < numbers.size();) {
    size_t last = i;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
    if (!text.empty()) text += u',';
    AppendNumber(text, numbers[i]);
    if (last > i) {
      text += u'-';
      AppendNumber(text, numbers[last]);
    }
    i = last + 1;
  }
  return text;
}

}  // namespace heron::engine

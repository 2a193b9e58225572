// Paths of keys (key_path.h).

#include "platform/api/key_path.h"

#include <algorithm>

namespace heron::platform {

std::u16string JoinKeyPath(std::u16string_view above, std::u16string_view path) {
  std::u16string joined(above);
  joined.reserve(above.size() + path.size() + 1);
  bool between = true;
  for (const char16_t c : path) {
    if (c == u'\\') {
      between = true;
      continue;
    }
    if (between && !joined.empty()) joined += u'\\';
    between = false;
    joined += c;
  }
  return joined;
}

std::u16string_view LastPart(std::u16string_view path) {
  const size_t end = path.rfind(u'\\');
  return end == std::u16string_view::npos ? path : path.substr(end + 1);
}

std::u16string_view ParentPath(std::u16string_view path) {
  const size_t end = path.rfind(u'\\');
  return end == std::u16string_view::npos ? std::u16string_view() : path.substr(0, end);
}

std::u16string FoldCase(std::u16string_view text) {
  std::u16string folded(text);
  // ASCII only, as SQLite's NOCASE compares: both backends must agree on which names are the same.
  std::ranges::transform(folded, folded.begin(), [](char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
  });
  return folded;
}

}  // namespace heron::platform

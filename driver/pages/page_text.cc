#include "pages/page_text.h"

#include <algorithm>

namespace heron::pages {

using engine::PageTextError;

PageNumbers ReadPageText(std::u16string_view text, size_t most) {
  if (const PageTextError error = engine::CheckPageText(text); error != PageTextError::kNone) return {error, {}};
  std::vector<uint16_t> numbers(most);
  const int count = engine::ParsePageText(text, numbers);
  if (count < 0) return {PageTextError::kTooMany, {}};
  if (count == 0 && !text.empty()) return {PageTextError::kCharacter, {}};
  numbers.resize(static_cast<size_t>(count));
  return {PageTextError::kNone, std::move(numbers)};
}

std::vector<uint16_t> RepeatedPages(std::span<const uint16_t> numbers) {
  std::vector<uint16_t> sorted(numbers.begin(), numbers.end());
  std::ranges::sort(sorted);
  std::vector<uint16_t> repeated;
  for (size_t i = 1; i < sorted.size(); ++i) {
    const bool again = sorted[i] == sorted[i - 1];
    if (again && (repeated.empty() || repeated.back() != sorted[i])) repeated.push_back(sorted[i]);
  }
  return repeated;
}

std::u16string NormalPageText(std::vector<uint16_t> numbers) {
  std::ranges::sort(numbers);
  return engine::FormatPageList(numbers);
}

bool AcceptsPageKey(const platform::TypedKey& key, size_t most) {
  if (key.character < u' ') return true;
  std::u16string text(key.text);
  const size_t start = std::min({key.selection_start, key.selection_end, text.size()});
  const size_t end = std::min(std::max(key.selection_start, key.selection_end), text.size());
  text.replace(start, end - start, 1, key.character);
  return text.size() <= most && engine::CheckPageText(text) == PageTextError::kNone;
}

}  // namespace heron::pages

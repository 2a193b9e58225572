#include "pages/chapter_pages.h"

#include <algorithm>

#include "presets/page_numbers.h"

namespace heron::pages {

std::vector<uint16_t> ChapterPages(const UiState& ui) {
  const PageNumberLists& lists = PageNumbersOf(ui);
  const uint16_t* pages = lists.pages[kChapterList];
  return {pages, pages + std::min(lists.count[kChapterList], kPageNumbersPerList)};
}

std::u16string ChapterText(const UiState& ui) {
  return engine::FormatPageList(ChapterPages(ui));
}

ChapterCheck CheckChapters(std::u16string_view text) {
  PageNumbers read = ReadPageText(text, kPageNumbersPerList);
  std::vector<uint16_t> repeated = RepeatedPages(read.numbers);
  std::ranges::sort(read.numbers);
  return {read.error, std::move(repeated), std::move(read.numbers)};
}

void StoreChapters(const UiState& ui, const std::vector<uint16_t>& pages) {
  PageNumberLists& lists = PageNumbersOf(ui);
  const size_t count = std::min<size_t>(pages.size(), kPageNumbersPerList);
  std::ranges::fill(lists.pages[kChapterList], uint16_t{0});
  std::copy_n(pages.begin(), count, lists.pages[kChapterList]);
  lists.count[kChapterList] = static_cast<uint8_t>(count);
}

}  // namespace heron::pages

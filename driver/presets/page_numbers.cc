// Page numbers and runs of them as text (page_numbers.h).
#include "presets/page_numbers.h"

#include <algorithm>
#include <span>

namespace heron {
namespace {

constexpr std::string_view kChapterTag = "/C";
constexpr size_t kListTextLength = 150;
constexpr uint16_t kHighestPage = 9999;
constexpr size_t kMostDigits = 4;

/// Takes a number of one to four digits off `text`.
bool TakeNumber(std::string_view& text, uint16_t* number) {
  const size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  if (digits == 0 || digits > kMostDigits) return false;
  *number = 0;
  for (const char c : text.substr(0, digits)) *number = static_cast<uint16_t>(*number * 10 + (c - '0'));
  text.remove_prefix(digits);
  return true;
}

/// "a" or "a-b", a being the smaller or the larger.
bool ParseRun(std::string_view item, uint16_t* first, uint16_t* last) {
  if (!TakeNumber(item, first)) return false;
  *last = *first;
  if (item.starts_with('-')) {
    item.remove_prefix(1);
    if (!TakeNumber(item, last)) return false;
  }
  if (*first > *last) std::swap(*first, *last);
  return item.empty();
}

/// False if the list is full.
bool AddPage(uint16_t page, uint8_t* count, uint16_t* pages) {
  uint16_t* const place = std::lower_bound(pages, pages + *count, page);
  if (place != pages + *count && *place == page) return true;
  if (*count == kPageNumbersPerList) return false;
  std::copy_backward(place, pages + *count, pages + *count + 1);
  *place = page;
  ++*count;
  return true;
}

void AddItems(std::string_view items, uint8_t* count, uint16_t* pages) {
  while (!items.empty()) {
    const std::string_view item = items.substr(0, items.find(','));
    items.remove_prefix(std::min(item.size() + 1, items.size()));
    uint16_t first;
    uint16_t last;
    if (!ParseRun(item, &first, &last)) continue;
    for (uint16_t page = first; page <= last; ++page) {
      if (!AddPage(page, count, pages)) return;
    }
  }
}

}  // namespace

PageNumberLists& PageNumbersOf(const UiState& ui) {
  return SlotAs<u"pagenumStr", PageNumberLists>(ui);
}

std::string FormatPageNumbers(const PageNumberLists& lists) {
  const size_t count = std::min(lists.count[kChapterList], kPageNumbersPerList);
  const std::span<const uint16_t> pages(lists.pages[kChapterList], count);
  std::string text;
  for (size_t i = 0; i < count;) {
    size_t last = i;
    while (last + 1 < count && pages[last + 1] == pages[last] + 1 && pages[last + 1] <= kHighestPage) ++last;
    std::string item = std::to_string(pages[i]);
    if (last > i) item.append(1, '-').append(std::to_string(pages[last]));
    const bool legal = pages[i] <= kHighestPage && text.size() + item.size() < kListTextLength;
    if (legal) text.append(text.empty() ? "" : ",").append(item);
    i = last + 1;
  }
  return text.empty() ? text : std::string(kChapterTag) + text;
}

void ParsePageNumbers(std::string_view text, PageNumberLists* lists) {
  uint8_t* const count = &lists->count[kChapterList];
  uint16_t* const pages = lists->pages[kChapterList];
  *count = 0;
  std::fill_n(pages, kPageNumbersPerList, uint16_t{0});
  // From the end; what precedes the first tag belongs to the same list.
  for (size_t tag = text.rfind(kChapterTag); tag != std::string_view::npos; tag = text.rfind(kChapterTag)) {
    AddItems(text.substr(tag + kChapterTag.size()), count, pages);
    text = text.substr(0, tag);
  }
  AddItems(text, count, pages);
}

}  // namespace heron

// The pages at which chapters start, as text and in the settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pages/page_text.h"
#include "uistate/ui_state.h"

namespace heron::pages {

/// The stored pages in ascending order.
std::vector<uint16_t> ChapterPages(const UiState& ui);
/// Their text in normal form; empty without pages.
std::u16string ChapterText(const UiState& ui);

struct ChapterCheck {
  engine::PageTextError error = engine::PageTextError::kNone;
  std::vector<uint16_t> repeated;
  std::vector<uint16_t> pages;  ///< ascending; empty with an error
};

/// Checks a text for the chapter starts, which has 30 pages at most. An empty text is right and has no pages.
ChapterCheck CheckChapters(std::u16string_view text);

/// Stores ascending pages, at most 30; none clears the list.
void StoreChapters(const UiState& ui, const std::vector<uint16_t>& pages);

}  // namespace heron::pages

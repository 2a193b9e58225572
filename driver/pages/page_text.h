// Texts of page numbers as they are typed: the field of chapter starts and the row of a per-page list share them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/page_list_text.h"
#include "platform/dialog/dialog.h"

namespace heron::pages {

inline constexpr size_t kMostPages = 9999;         ///< of a row, and of all rows of its class
inline constexpr size_t kRowTextLength = 20;       ///< characters of a row's pages
inline constexpr size_t kChapterTextLength = 150;  ///< characters of the chapter starts

struct PageNumbers {
  engine::PageTextError error = engine::PageTextError::kNone;
  std::vector<uint16_t> numbers;  ///< in the order of the text; empty with an error
};

/// The numbers of a text, at most `most`. A text that isn't empty and gives none has the error of a wrong character.
PageNumbers ReadPageText(std::u16string_view text, size_t most);

/// The numbers that occur more than once, ascending, each once.
std::vector<uint16_t> RepeatedPages(std::span<const uint16_t> numbers);

/// The normal form of numbers in any order: "10-6,3" becomes "3,6-10".
std::u16string NormalPageText(std::vector<uint16_t> numbers);

/// Whether a field of page numbers takes a key: the text would stay right, and not become longer than `most`.
bool AcceptsPageKey(const platform::TypedKey& key, size_t most);

}  // namespace heron::pages

// The page-number lists of a state and their text: "/C" and the pages at which chapters start, "/C1,4-6,9".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "uistate/ui_state.h"

namespace heron {

inline constexpr uint8_t kPageNumberLists = 8;
inline constexpr uint8_t kPageNumbersPerList = 30;
inline constexpr uint8_t kChapterList = 1;  ///< the only one in use

/// The record's form of the lists, 488 bytes.
struct PageNumberLists {
  uint8_t count[kPageNumberLists];
  uint16_t pages[kPageNumberLists][kPageNumbersPerList];
};
static_assert(sizeof(PageNumberLists) == 488);

PageNumberLists& PageNumbersOf(const UiState& ui);

/// The lists as text; empty without pages. A number above 9999 can't be written and is left out.
std::string FormatPageNumbers(const PageNumberLists& lists);
/// The reverse. Pages ascend and appear once; what is no number or run is passed over, so are pages beyond the room.
void ParsePageNumbers(std::string_view text, PageNumberLists* lists);

}  // namespace heron

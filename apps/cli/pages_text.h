// The per-page lists and the chapter starts as text and as JSON. Rows count from 1 here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/command.h"
#include "engine/engine.h"

namespace heron::cli {

/// A text of the driver in one line.
std::string OneLine(std::u16string_view text);

/// The working list with its rows.
Json PageListJson(const UiState& ui);
void PrintPageList(const UiState& ui);
/// One row in a line: pages, print type, tray.
std::string PageRowText(const PageEntry& row);

/// All ten lists.
Json PageListsJson(const UiState& ui);
void PrintPageLists(const UiState& ui);

Json ChaptersJson(const UiState& ui);

}  // namespace heron::cli

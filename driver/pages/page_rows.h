// Editing the rows of the working per-page list, without a window: page 200, its row dialog and the command share it.
//
// Rows count from 0. A row under edit is in the row settings (the controls of dialog 2400); its pages are a text beside
// them. Nothing here validates the whole list: after an edit, ValidatePerPageList (engine/page_list.h) marks the rows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/engine.h"
#include "engine/page_list_text.h"

namespace heron::pages {

using RowNumber = std::optional<size_t>;  ///< nothing for a new row

/// The rows in use. The span is valid until the number of rows changes.
std::span<PageEntry> WorkingRows(const UiState& ui);

inline constexpr size_t kMostRows = kPagesPerList;

/// The text of a row's pages, up to its terminator or its width.
std::u16string_view PagesOfRow(const PageEntry& row);

// -- one row

/// Brings a row into the row settings, a new one with their defaults, and changes what the other settings forbid.
/// Returns what was changed, as PerPageRowCheck::Fields.
uint8_t OpenRow(engine::Engine& engine, RowNumber row);

/// The same repair once more, after the tray in the row settings was changed: its media are loaded too.
uint8_t RepairRow(engine::Engine& engine);

struct RowPages {
  engine::PageTextError error = engine::PageTextError::kNone;
  std::vector<uint16_t> repeated;  ///< pages that occur twice, in the text or together with the other rows
  std::u16string text;             ///< the normal form; empty with an error
};

/// Checks the pages of a row of print type `type` against the syntax and against the other rows of its class: inserted
/// sheets, or printed pages. `row` itself is left out. An empty text has no error and no pages.
RowPages CheckRowPages(const UiState& ui, std::u16string_view text, RowNumber row, uint16_t type);

/// Stores the row settings with these pages as row `row`, or behind the last one; the row's number. A full list takes
/// no new row: then nothing is stored and the number is kMostRows.
size_t StoreRow(const engine::Engine& engine, RowNumber row, std::u16string_view pages);

// -- the list

/// Removes the rows with these numbers; those outside are ignored.
void RemoveRows(const UiState& ui, std::span<const size_t> rows);
/// Moves a row so that it is row `to` afterwards. False, with nothing changed, for a number outside.
bool MoveRow(const UiState& ui, size_t row, size_t to);

enum class RowColumn : uint8_t { kPages, kType, kTray };
inline constexpr size_t kRowColumns = 3;

/// Sorts the rows, stable: by the first page, then printed pages before inserted sheets; by the place of the print type
/// or of the tray in its list, what isn't offered last. Returns where each row was before.
std::vector<size_t> SortRows(engine::Engine& engine, RowColumn column, bool descending);

/// A copy of the rows, to undo an edit.
struct KeptRows {
  uint16_t list = 0;  ///< number of the list that they are of
  std::vector<PageEntry> rows;
};
KeptRows KeepRows(const UiState& ui);
/// Puts the copy back. False, with nothing changed, if another list is the working one now.
bool PutRowsBack(const UiState& ui, const KeptRows& kept);

// -- names

inline constexpr size_t kListNameLength = 16;

enum class NameFault : uint8_t { kNone, kEmpty, kTaken, kTooLong, kLeadingBlank };

/// List `number`, 1 to 10, in the state's store; null without a store or for another number.
PageList* ListNumbered(const UiState& ui, size_t number);
std::u16string NameOfList(const PageList& list);
/// What is wrong with a new name for list `number`.
NameFault FindNameFault(const UiState& ui, size_t number, std::u16string_view name);
/// Stores a right name, also as the text of the list in lpInterSheetList.
void RenameList(const UiState& ui, size_t number, std::u16string_view name);

}  // namespace heron::pages

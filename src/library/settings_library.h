// The settings library of a user and a queue: at most 25 settings files, in an order that the user chose.
//
// A library lives as long as one dialog, menu or command; nothing outlives it but the registry's list and the files. It
// tells and asks the user through its view, under the texts' own numbers, which the caller keeps in use
// (catalog/strings.h). What is written is written whole: a file replaced, the list as one; a file that gets another
// name stands under both until the list names the new one. A place is 0 to count - 1, in the order shown.
//
// The checks and sequences behind the buttons of the dialogs stand here too, so that whoever shows them only calls.
#pragma once

#include <array>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "engine/view.h"
#include "library/library_entry.h"
#include "library/library_index.h"
#include "library/library_texts.h"

namespace heron {

enum class LibraryLoad : uint8_t {
  kHeads,     ///< names, comments and identities only
  kSettings,  ///< every entry's settings too
};
enum class LibraryWrites : uint8_t {
  kYes,
  kNo,  ///< a trial: neither list nor files change, everything else is as it would be
};

struct SettingsLibrary {
  SettingsLibrary(engine::EngineView& shown, const UiState& working, const ResourceContext* context)
      : view(shown), ui(working), resources(context) {}

  engine::EngineView& view;
  const UiState& ui;  ///< the working settings, which entries start from
  const ResourceContext* resources;
  bool loads = false;
  bool writes = true;
  std::u16string printerName;
  LibraryIndex stored;  ///< the registry's list, as last read or written
  int count = 0;
  std::array<int, kLibraryCapacity> turn{};  ///< slot of each place; 0, 1, 2, ... after opening and removal
  std::array<LibraryEntryPtr, kLibraryCapacity> slots;

  LibraryEntry* At(int place) const;  ///< null for a place that isn't there
};
using SettingsLibraryPtr = std::unique_ptr<SettingsLibrary>;

/// Opens the library of the queue that `ui` belongs to, and writes its list anew where it isn't true any more: files
/// that are gone or of another driver leave it. A list of another model begins anew with the standard file; after a
/// change of the driver's version the user is asked first. Null, with nothing written: the list can't be read or is of
/// more than 25, or a question has no answer (EngineView::CanAnswer). `view`, `ui` and `resources` outlive the library.
SettingsLibraryPtr SettingsLibraryOpen(engine::EngineView& view, const UiState& ui, const ResourceContext* resources,
                                       LibraryLoad load, LibraryWrites writes = LibraryWrites::kYes);
void SettingsLibraryClose(SettingsLibraryPtr& library);

/// Saves the user's new and changed entries, then the list. An entry that can't be saved keeps its old file in the
/// list, a new one isn't in it. False if anything couldn't be written; the user has been told.
bool LibrarySaveIndex(SettingsLibrary& library);

/// Makes a new entry of `settings`, to be saved by LibrarySaveIndex; one of the same file gives up its place to it.
/// False, with the user told where he can do something about it: the library is full, folder or name is empty or too
/// long, the folder or a file of that name can't be written, memory is short.
bool LibraryAddCurrent(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                       std::u16string_view name, std::u16string_view comment);

/// Adds an existing file at the end. False, with nothing changed and the user told unless the library is full.
bool LibraryRegisterFile(SettingsLibrary& library, const FileLocation& location);

enum class LibraryDirection : uint8_t { kUp = 1, kDown = 2, kRemove = 3 };
/// False for a place that isn't there, the first upward, the last downward, a standard entry's removal. Its file stays.
bool LibraryMove(SettingsLibrary& library, int place, LibraryDirection direction);

/// Gives an entry with loaded settings another name, which was checked, and its file the same; saved at once. False,
/// with the user told and everything as it was: the name is another entry's or a file's, or file or list can't be
/// written.
bool LibraryRename(SettingsLibrary& library, int place, std::u16string_view name);

/// Takes a comment of any line ends; LibrarySaveIndex saves it. False for more than 512 characters and for an entry
/// that is never written.
bool LibrarySetComment(SettingsLibrary& library, int place, std::u16string_view comment);

// Checks of a new name. False after the first that fails, of which the user is told.

bool CheckSaveName(const SettingsLibrary& library, const std::u16string& folder, std::u16string_view name);
/// For the entry at `place`, which may have the name itself.
bool CheckEntryName(const SettingsLibrary& library, int place, std::u16string_view name);

// What the OK of a dialog does. False if it can't be done, of which the user is told; the list is written.

/// Also false, after a message, where the library is full.
bool SaveSettingsAs(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                    std::u16string_view name, std::u16string_view comment);
bool RegisterSettingsFile(SettingsLibrary& library, std::u16string_view path);
bool RenameSettings(SettingsLibrary& library, int place, std::u16string_view name);
/// Asks first.
bool RemoveSettings(SettingsLibrary& library, int place);

/// Says that the library is full if it is.
bool TellIfFull(const SettingsLibrary& library);

// Shared by the files of this library.

/// Why an entry isn't opened. The numbers are told to nobody outside.
enum class OpenCode : uint8_t {
  kOpened = 0,
  kNoFile = 12,
  kNoSettingsFile = 13,
  kSystemDiffers = 14,
  kModelDiffers = 15,
  kNotConverted = 16,
  kNotConvertible = 17,
  kNoState = 19,
  kLanguageDiffers = 21,
  kDestinationDiffers = 22,
  kUnanswered = 255,  ///< the question about its conversion has no answer
};
enum class OpenFor : uint8_t { kList, kRegistering };

/// Opens the entry of a file, with its settings if the library loads them. Null unless the code is kOpened; of a file
/// that another driver wrote the user has been told.
LibraryEntryPtr OpenEntry(const SettingsLibrary& library, const FileLocation& location, OpenFor purpose,
                          OpenCode* code);
/// Puts an entry into the slot behind the last; there is one.
void AppendEntry(SettingsLibrary& library, LibraryEntryPtr entry);
/// Writes the list if it differs from the stored one, then deletes the files that renamed entries have left. Where
/// that can't be done, such an entry is back in its old file and the result is false.
bool SettleList(SettingsLibrary& library);

void TellUser(const SettingsLibrary& library, LibraryText caption, std::initializer_list<LibraryText> texts);
/// Asks with the texts one behind the other.
enum class UserAnswer : uint8_t { kYes, kNo, kNone };
UserAnswer AskUser(const SettingsLibrary& library, LibraryText caption, const std::u16string& text);
std::u16string TextsOf(std::initializer_list<LibraryText> texts);

}  // namespace heron

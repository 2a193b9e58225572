// The settings library of a user and a queue: at most 25 settings files, in an order that the user chose.
//
// A library lives as long as one dialog, menu or command; nothing outlives it but the registry's list and the files. It
// informs and asks the user through its view, under the texts' own numbers, which the caller keeps in use
// (catalog/strings.h). What is written is written whole: a file replaced, the list as one; a file that gets another
// name is there under both until the list names the new one. A place is 0 to count - 1, in the order shown.
//
// Several programs may have the library of one user open. Files and list are written in one batch of the user's tree,
// and only if the stored list and the files to be replaced are still what the library has read. Otherwise the library
// is read anew and the change is made again of what is there now, with its checks and questions. Nothing is asked or
// reported while the batch blocks the others.
//
// The checks and sequences behind the buttons of the dialogs are here too, so that a dialog only calls them.
#pragma once

#include <array>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/view.h"
#include "generated/texts.h"
#include "presets/preset_entry.h"
#include "presets/preset_index.h"

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
  LibraryLoad wanted = LibraryLoad::kHeads;  ///< what it was opened for
  bool loads = false;                        ///< whether entries are opened with their settings
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

/// Saves the user's new and changed entries and the list, as one. An entry that can't be saved keeps its old file in
/// the list, a new one isn't in it. False if anything couldn't be written, or if another program has changed list or
/// files since they were read; the user has been informed.
bool LibrarySaveIndex(SettingsLibrary& library);

/// Makes a new entry of `settings`, to be saved by LibrarySaveIndex; one of the same file gives up its place to it.
/// False, with the user informed where he can do something about it: the library is full, folder or name is empty or
/// too long, the folder or a file of that name can't be written, memory is short.
bool LibraryAddCurrent(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                       std::u16string_view name, std::u16string_view comment);

/// Adds an existing file at the end. False, with nothing changed and the user informed unless the library is full.
bool LibraryRegisterFile(SettingsLibrary& library, const FileLocation& location);

enum class LibraryDirection : uint8_t { kUp = 1, kDown = 2, kRemove = 3 };
/// False for a place that isn't there, the first upward, the last downward, a standard entry's removal. Its file stays.
bool LibraryMove(SettingsLibrary& library, int place, LibraryDirection direction);

/// Gives an entry with loaded settings another name, which was checked, and its file the same; saved at once. False,
/// with the user informed and everything as it was: the name is another entry's or a file's, file or list can't be
/// written, or another program has changed them.
bool LibraryRename(SettingsLibrary& library, int place, std::u16string_view name);

/// Takes a comment of any line ends; LibrarySaveIndex saves it. False for more than 512 characters, for an entry that
/// is never written or can't be reached now, and, with the user informed, for characters that the code page lacks.
bool LibrarySetComment(SettingsLibrary& library, int place, std::u16string_view comment);

// Checks of a new name. False after the first that fails, of which the user is informed.

/// A file of the name is replaced if the user agrees; the question names other queues whose lists have it.
bool CheckSaveName(const SettingsLibrary& library, const std::u16string& folder, std::u16string_view name);
/// For the entry at `place`, which may have the name itself.
bool CheckEntryName(const SettingsLibrary& library, int place, std::u16string_view name);

// What the OK of a dialog does. False if it can't be done, of which the user is informed; the list is written. The
// library may have been read anew meanwhile, so that entries have other places.

/// Also false, after a message, where the library is full.
bool SaveSettingsAs(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                    std::u16string_view name, std::u16string_view comment);
bool RegisterSettingsFile(SettingsLibrary& library, std::u16string_view path);
bool RenameSettings(SettingsLibrary& library, int place, std::u16string_view name);
/// Asks first.
bool RemoveSettings(SettingsLibrary& library, int place);
/// Also false, without a message, for what LibraryMove and LibrarySetComment refuse.
bool MoveSettings(SettingsLibrary& library, int place, LibraryDirection direction);
/// Moves the settings past others, until they are at place `to` or at an end.
bool MoveSettingsTo(SettingsLibrary& library, int place, int to);
bool CommentSettings(SettingsLibrary& library, int place, std::u16string_view comment);
/// Writes a copy of the entry's file to `path`, under that file's name and as a user's own settings, so that it can be
/// registered elsewhere. Asks before it replaces a file; never replaces one of the list.
bool ExportSettings(const SettingsLibrary& library, int place, std::u16string_view path);

/// What the name of a file may hold: one that settings are saved to, and a copy of an entry.
bool CheckFileName(const SettingsLibrary& library, std::u16string_view name);
bool CheckCopyName(const SettingsLibrary& library, std::u16string_view name);

/// Says that the library is full if it is.
bool TellIfFull(const SettingsLibrary& library, TextNumber caption = text::kSaveSettings,
                TextNumber text = text::kLibraryFull);

// Shared by the files of this library.

/// Why an entry isn't opened. The numbers stay inside the driver.
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
  kAway = 254,        ///< its folder can't be reached now
  kUnanswered = 255,  ///< the question about its conversion has no answer
};
enum class OpenFor : uint8_t { kList, kRegistering };

/// Opens the entry of a file, with its settings if the library loads them. Null unless the code is kOpened; of a file
/// that another driver wrote the user has been informed.
LibraryEntryPtr OpenEntry(const SettingsLibrary& library, const FileLocation& location, OpenFor purpose,
                          OpenCode* code);
/// Puts an entry into the slot behind the last; there is one.
void AppendEntry(SettingsLibrary& library, LibraryEntryPtr entry);

/// Reads list and entries. False, with the library to be given up: they can't be read now, a question has no answer.
bool LoadLibrary(SettingsLibrary& library);

/// How often a change is made again before the other programs are given as the reason that it can't be.
inline constexpr int kLibraryAttempts = 64;

enum class LibrarySaved : uint8_t {
  kYes,
  kNo,        ///< the user has been informed
  kOutdated,  ///< nothing was written: list or files aren't what was read any more
};
LibrarySaved SaveLibrary(SettingsLibrary& library);
/// Deletes settings files that a killed program made, or was about to delete, and that no list names.
void SweepUnfinishedFiles(std::u16string_view printer_name);
/// Makes `change` and saves it, again on the library as it is then while other programs change it. False if the change
/// itself is, or if it can't be saved, of which the user has been informed.
bool ChangeLibrary(SettingsLibrary& library, const std::function<bool()>& change);

/// Whether an entry other than `own` (may be null) is shown under the name.
bool IsOtherDisplayName(const SettingsLibrary& library, const LibraryEntry* own, std::u16string_view name);
/// `text` with the names of the user's other queues that list the file; empty if none does. Nothing if the store can't
/// be read now.
std::optional<std::u16string> OtherListsText(const SettingsLibrary& library, const FileLocation& location,
                                             TextNumber text);

/// Place of an entry by its file, -1 if there is none.
int PlaceOfFile(const SettingsLibrary& library, const FileLocation& location);

/// Whether the code page can hold the text; names the characters that it lacks in `text`.
bool CheckCodePage(const SettingsLibrary& library, std::u16string_view checked, TextNumber caption, TextNumber text);

enum class StoredList : uint8_t { kOurs, kOfOtherVersion, kOfOtherDriver };
/// Which driver wrote the list.
StoredList Judge(const LibraryIndex& stored);

void TellUser(const SettingsLibrary& library, TextNumber caption, std::initializer_list<TextNumber> texts);
/// Asks with the texts one behind the other.
enum class UserAnswer : uint8_t { kYes, kNo, kNone };
UserAnswer AskUser(const SettingsLibrary& library, TextNumber caption, const std::u16string& text);
std::u16string TextsOf(std::initializer_list<TextNumber> texts);

}  // namespace heron

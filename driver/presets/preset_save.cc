// Writing the library: entries and list in one batch, and only over what was read (preset_library.h).
#include <algorithm>
#include <utility>
#include <vector>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/files.h"
#include "platform/api/handles.h"
#include "presets/preset_library.h"

namespace heron {
namespace {

using platform::HKEY_CURRENT_USER;
using platform::RegistryBatch;

/// The list as it is to be stored: each entry at the file that it has on the disk.
LibraryIndex ListOf(const SettingsLibrary& library) {
  LibraryIndex index;
  index.driver.emplace();
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry& entry = *library.At(place);
    const int slot = library.turn[static_cast<size_t>(place)];
    if (entry.onDisk) index.entries.push_back({slot, *entry.onDisk, entry.identity.attributes});
  }
  index.count = static_cast<uint32_t>(index.entries.size());
  return index;
}

bool SameList(const LibraryIndex& a, const LibraryIndex& b) {
  return Judge(a) == StoredList::kOurs && Judge(b) == StoredList::kOurs &&
         a.driver->versionNumber == b.driver->versionNumber && a.count == b.count && a.entries == b.entries;
}

template <typename Use>
void ForEachEntry(SettingsLibrary& library, Use use) {
  for (int place = 0; place < library.count; ++place) use(*library.At(place));
}

bool NeedsWriting(SettingsLibrary& library) {
  bool needs = !SameList(ListOf(library), library.stored);
  ForEachEntry(library, [&](LibraryEntry& entry) { needs |= NeedsSaving(entry); });
  return needs;
}

/// Whether list and files are still what was read. The batch is open, so that the list stays so.
LibrarySaved CompareWithStore(SettingsLibrary& library) {
  LibraryIndex now;
  if (!ReadLibraryIndex(library.printerName, &now)) return LibrarySaved::kNo;
  bool same = now == library.stored;
  ForEachEntry(library, [&](LibraryEntry& entry) { same = same && (!NeedsSaving(entry) || IsAsRead(entry)); });
  return same ? LibrarySaved::kYes : LibrarySaved::kOutdated;
}

/// Back to the file that it left, which is still there.
void ReturnToOldFile(LibraryEntry& entry) {
  platform::DeleteFileW(entry.location.Path().c_str());
  entry.location = *entry.leaving;
  entry.onDisk = std::exchange(entry.leaving, std::nullopt);
  entry.bytes = std::move(entry.leftBytes);
  entry.dirty = EntryState::kChanged;
}

/// Files that saving will make: those of new and renamed entries.
std::vector<FileLocation> FilesToMake(SettingsLibrary& library) {
  std::vector<FileLocation> files;
  ForEachEntry(library, [&](LibraryEntry& entry) {
    if (NeedsSaving(entry) && !FileExists(entry.location.Path())) files.push_back(entry.location);
  });
  return files;
}

/// Files that renamed entries leave.
std::vector<FileLocation> FilesToLeave(SettingsLibrary& library) {
  std::vector<FileLocation> files;
  ForEachEntry(library, [&](LibraryEntry& entry) {
    if (entry.leaving) files.push_back(*entry.leaving);
  });
  return files;
}

/// In an open batch.
bool WriteList(SettingsLibrary& library) {
  LibraryIndex index = ListOf(library);
  if (SameList(index, library.stored)) return true;
  if (!WriteLibraryIndex(library.printerName, index)) return false;
  library.stored = std::move(index);
  return true;
}

/// What couldn't be written, to be reported when no other program is blocked any more, and what has to go for it.
struct Failures {
  std::vector<LibraryEntry*> madeFiles;  ///< new entries whose file wasn't there before
  int newEntries = 0;
  int changedEntries = 0;
  bool list = false;
};

/// Entries, then the list that names them, as one for every other program.
LibrarySaved WriteInBatch(SettingsLibrary& library, Failures* failures) {
  RegistryBatch batch(HKEY_CURRENT_USER);
  failures->list = !batch.open();
  if (failures->list) return LibrarySaved::kNo;
  const LibrarySaved compared = CompareWithStore(library);
  failures->list = compared == LibrarySaved::kNo;
  if (compared != LibrarySaved::kYes) return compared;
  ForEachEntry(library, [&](LibraryEntry& entry) {
    const bool is_new = entry.dirty == EntryState::kNew;
    const bool makes_file = is_new && !entry.replaces && !entry.onDisk;
    if (entry.identity.attributes != kOwnEntry || entry.isAway) return;
    if (!SaveEntry(entry))
      ++(is_new ? failures->newEntries : failures->changedEntries);
    else if (makes_file)
      failures->madeFiles.push_back(&entry);
  });
  const LibraryIndex before = library.stored;
  if (WriteList(library) && NoteUnfinishedFiles(library.printerName, FilesToLeave(library)) && batch.Keep())
    return LibrarySaved::kYes;
  library.stored = before;
  failures->list = true;
  return LibrarySaved::kNo;
}

/// Whether the file that an entry has left is its own still: another program may have saved under that name since.
bool IsLeftFile(const LibraryEntry& entry, const LibraryIndex& now) {
  const auto names_it = [&](const IndexEntry& listed) { return listed.location == *entry.leaving; };
  return std::ranges::none_of(now.entries, names_it) && BytesOfFile(*entry.leaving) == entry.leftBytes;
}

/// Deletes the files that renamed entries have left; the stored list names the new ones by now. False if one can't be:
/// its entry is back in its old file.
bool DeleteLeftFiles(SettingsLibrary& library) {
  bool deleted = true;
  RegistryBatch batch(HKEY_CURRENT_USER);
  LibraryIndex now;
  const bool known = ReadLibraryIndex(library.printerName, &now);
  ForEachEntry(library, [&](LibraryEntry& entry) {
    if (!entry.leaving) return;
    const std::u16string old = entry.leaving->Path();
    if ((known && !IsLeftFile(entry, now)) || platform::DeleteFileW(old.c_str()) != 0 || !FileExists(old)) {
      entry.leaving.reset();
    } else {
      ReturnToOldFile(entry);
      deleted = false;
    }
  });
  if (deleted) batch.Keep();
  if (!deleted && now == library.stored && WriteList(library)) batch.Keep();
  return deleted;
}

/// The list isn't written: entries go back to the files that it names, and files that it doesn't name go.
void TakeBack(SettingsLibrary& library, const Failures& failures) {
  ForEachEntry(library, [](LibraryEntry& entry) {
    if (entry.leaving) ReturnToOldFile(entry);
  });
  for (LibraryEntry* entry : failures.madeFiles) {
    platform::DeleteFileW(entry->location.Path().c_str());
    entry->onDisk.reset();
    entry->dirty = EntryState::kNew;
  }
}

bool TellFailures(const SettingsLibrary& library, const Failures& failures) {
  for (int i = 0; i < failures.newEntries; ++i) TellUser(library, text::kSaveSettings, {text::kNotSavedInFolder});
  for (int i = 0; i < failures.changedEntries; ++i)
    TellUser(library, text::kSettingsLibrary, {text::kSettingsFileNotWritten});
  if (failures.list) TellUser(library, text::kSettingsLibrary, {text::kSettingsFileNotWritten});
  return failures.newEntries != 0 || failures.changedEntries != 0 || failures.list;
}

}  // namespace

LibrarySaved SaveLibrary(SettingsLibrary& library) {
  if (!library.writes || !NeedsWriting(library)) return LibrarySaved::kYes;
  Failures failures;
  const std::vector<FileLocation> made = FilesToMake(library);
  if (!made.empty()) NoteUnfinishedFiles(library.printerName, made);
  const LibrarySaved saved = WriteInBatch(library, &failures);
  if (saved != LibrarySaved::kYes && !made.empty()) NoteUnfinishedFiles(library.printerName, {});
  if (saved == LibrarySaved::kOutdated) return saved;
  if (saved == LibrarySaved::kNo) {
    TakeBack(library, failures);
  } else if (!FilesToLeave(library).empty()) {
    failures.list = !DeleteLeftFiles(library);
    NoteUnfinishedFiles(library.printerName, {});
  }
  return TellFailures(library, failures) ? LibrarySaved::kNo : LibrarySaved::kYes;
}

void SweepUnfinishedFiles(std::u16string_view printer_name) {
  if (ReadUnfinishedFiles(printer_name).empty()) return;
  // No save is running while this batch is open, so what is noted and in no list was left by a program that is gone.
  RegistryBatch batch(HKEY_CURRENT_USER);
  LibraryIndex list;
  if (!batch.open() || !ReadLibraryIndex(printer_name, &list)) return;
  for (const FileLocation& file : ReadUnfinishedFiles(printer_name)) {
    const auto names_it = [&](const IndexEntry& entry) { return SameLocation(entry.location, file); };
    std::vector<std::u16string> others;
    const bool listed =
        std::ranges::any_of(list.entries, names_it) || !OtherListsOf(printer_name, file, &others) || !others.empty();
    LibraryEntry head;
    if (!listed && ReadEntryHead(file, &head)) platform::DeleteFileW(file.Path().c_str());
  }
  if (NoteUnfinishedFiles(printer_name, {})) batch.Keep();
}

bool LibrarySaveIndex(SettingsLibrary& library) {
  const LibrarySaved saved = SaveLibrary(library);
  if (saved == LibrarySaved::kOutdated) TellUser(library, text::kSettingsLibrary, {text::kLibraryKeepsChanging});
  return saved == LibrarySaved::kYes;
}

bool ChangeLibrary(SettingsLibrary& library, const std::function<bool()>& change) {
  for (int i = 0; i < kLibraryAttempts; ++i) {
    if (!change()) return false;
    const LibrarySaved saved = SaveLibrary(library);
    if (saved != LibrarySaved::kOutdated) return saved == LibrarySaved::kYes;
    if (!LoadLibrary(library)) return false;
  }
  TellUser(library, text::kSettingsLibrary, {text::kLibraryKeepsChanging});
  return false;
}

}  // namespace heron

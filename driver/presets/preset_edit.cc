// Changes of the library that a user asks for (preset_library.h).
#include <algorithm>
#include <optional>
#include <utility>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/files.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "presets/key_walk.h"
#include "presets/preset_library.h"
#include "presets/repair.h"

namespace heron {
namespace {

/// The name is another entry's, whatever folder that lies in.
bool IsOtherBaseName(const SettingsLibrary& library, const LibraryEntry* own, std::u16string_view name) {
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry* entry = library.At(place);
    if (entry != own && SameFolded(entry->location.name, name)) return true;
  }
  return false;
}

/// Line ends become CR LF.
std::u16string WithLineEnds(std::u16string_view text) {
  std::u16string lines;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\n' && (i == 0 || text[i - 1] != u'\r')) lines += u'\r';
    lines += text[i];
  }
  return lines;
}

/// The places close up: each entry moves to the slot of its place.
void Compact(SettingsLibrary& library) {
  std::array<LibraryEntryPtr, kLibraryCapacity> slots;
  for (int place = 0; place < library.count; ++place) {
    const auto at = static_cast<size_t>(place);
    slots[at] = std::move(library.slots[static_cast<size_t>(library.turn[at])]);
    library.turn[at] = place;
  }
  library.slots = std::move(slots);
}

void RemoveEntry(SettingsLibrary& library, int place) {
  const auto at = static_cast<size_t>(place);
  library.slots[static_cast<size_t>(library.turn[at])].reset();
  std::rotate(library.turn.begin() + place, library.turn.begin() + place + 1, library.turn.begin() + library.count);
  --library.count;
  Compact(library);
}

LibraryEntryPtr MakeEntry(const SettingsLibrary& library, const UiState& settings, const FileLocation& location,
                          std::u16string_view comment) {
  auto entry = std::make_unique<LibraryEntry>();
  entry->dirty = EntryState::kNew;
  entry->location = location;
  entry->displayName = location.name;
  entry->comment = comment;
  entry->state = CloneUiState(settings);
  if (entry->state == nullptr) return nullptr;
  RepairSettings(*entry->state, kAllGroups, library.resources);
  return entry;
}

/// Message of a file that isn't opened; the other codes have shown theirs.
void TellNotRegistered(const SettingsLibrary& library, OpenCode code) {
  if (code == OpenCode::kNoFile || code == OpenCode::kNoSettingsFile || code == OpenCode::kNoState)
    TellUser(library, text::kRegisterSettingsFile, {text::kNotASettingsFile});
}

/// Puts a new entry into the library, in the place of the one that has its file. `replaces`: the file that it may
/// replace, as it was when the user agreed.
bool AddEntry(SettingsLibrary& library, const UiState& settings, const FileLocation& location,
              std::u16string_view comment, std::optional<std::string> replaces) {
  const std::u16string lines = WithLineEnds(comment);
  const size_t name_length = location.name.size();
  if (library.count >= kLibraryCapacity || location.folder.empty() || location.folder.size() > kFolderLength ||
      name_length == 0 || name_length > kLibraryNameLength || lines.size() > kLibraryCommentLength) {
    return false;
  }
  if (!CheckCodePage(library, comment, text::kSaveSettings, text::kCommentNotInCodePage)) return false;
  if (!IsFolderWritable(location.folder) || IsProtectedFile(location.Path())) {
    TellUser(library, text::kSaveSettings, {text::kNotSavedInFolder});
    return false;
  }
  LibraryEntryPtr entry = MakeEntry(library, settings, location, lines);
  if (entry == nullptr) {
    TellUser(library, text::kSaveSettings, {text::kSettingsFileNotCreated});
    return false;
  }
  entry->replaces = std::move(replaces);
  const int place = PlaceOfFile(library, location);
  if (place < 0) {
    AppendEntry(library, std::move(entry));
    return true;
  }
  LibraryEntryPtr& slot = library.slots[static_cast<size_t>(library.turn[static_cast<size_t>(place)])];
  // Until the file is replaced, the list goes on naming it. One whose name differs in its case goes after that.
  entry->onDisk = slot->onDisk;
  entry->leftBytes = slot->bytes;
  slot = std::move(entry);
  return true;
}

/// The name becomes the entry's and its file's, in memory.
void GiveName(LibraryEntry& entry, const FileLocation& renamed) {
  entry.location = renamed;
  entry.displayName = renamed.name;
  entry.replaces.reset();
  entry.dirty = EntryState::kChanged;
}

bool MayBeRenamed(const SettingsLibrary& library, const LibraryEntry& entry, const FileLocation& renamed) {
  const int32_t attributes = entry.identity.attributes;
  return attributes != kStandardEntry && attributes != kProtectedEntry && entry.state != nullptr &&
         !renamed.name.empty() && renamed.name.size() <= kLibraryNameLength &&
         !IsOtherBaseName(library, &entry, renamed.name) && (renamed == entry.location || !FileExists(renamed.Path()));
}

/// Renames an entry and saves it. On kNo the user has been informed and everything is as it was.
LibrarySaved RenameEntry(SettingsLibrary& library, LibraryEntry& entry, std::u16string_view name) {
  if (entry.location.name == name && entry.displayName == name) return LibrarySaved::kYes;
  const FileLocation old_location = entry.location;
  const std::u16string old_name = entry.displayName;
  const EntryState old_state = entry.dirty;
  FileLocation renamed = entry.location;
  renamed.name = name;
  if (MayBeRenamed(library, entry, renamed)) {
    GiveName(entry, renamed);
    const LibrarySaved saved = SaveLibrary(library);
    if (saved != LibrarySaved::kNo) return saved;
    entry.location = old_location;
    entry.displayName = old_name;
    entry.dirty = old_state;
  }
  TellUser(library, text::kOrganizeSettings, {text::kSettingsFileNotRenamed});
  return LibrarySaved::kNo;
}

/// A file that other lists have too leaves them: the user is asked.
bool AgreesToRename(const SettingsLibrary& library, const LibraryEntry& entry) {
  const std::optional<std::u16string> question = OtherListsText(library, entry.location, text::kAskToRenameShared);
  if (!question) TellUser(library, text::kOrganizeSettings, {text::kSettingsFileNotRenamed});
  return question && (question->empty() || AskUser(library, text::kOrganizeSettings, *question) == UserAnswer::kYes);
}

/// What a user does to one entry, wherever it is in the list by now.
bool ChangeEntry(SettingsLibrary& library, int place, const std::function<bool(int place)>& change) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr) return false;
  const FileLocation location = entry->location;
  return ChangeLibrary(library, [&] {
    const int now = PlaceOfFile(library, location);
    if (now >= 0) return change(now);
    TellUser(library, text::kOrganizeSettings, {text::kEntryGone});
    return false;
  });
}

}  // namespace

bool LibraryAddCurrent(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                       std::u16string_view name, std::u16string_view comment) {
  const FileLocation location{folder, std::u16string(name)};
  return AddEntry(library, settings, location, comment, BytesOfFile(location));
}

bool LibraryRegisterFile(SettingsLibrary& library, const FileLocation& location) {
  const auto complain = [&](TextNumber caption, TextNumber text) {
    TellUser(library, caption, {text});
    return false;
  };
  if (IsOtherBaseName(library, nullptr, location.name))
    return complain(text::kOrganizeSettings, text::kOrganizeNameTaken);
  if (library.count >= kLibraryCapacity) return false;
  OpenCode code;
  LibraryEntryPtr entry = OpenEntry(library, location, OpenFor::kRegistering, &code);
  if (entry == nullptr) {
    TellNotRegistered(library, code);
    return false;
  }
  if (IsOtherDisplayName(library, nullptr, entry->displayName))
    return complain(text::kOrganizeSettings, text::kOrganizeNameTaken);
  if (entry->identity.attributes == kStandardEntry)
    return complain(text::kRegisterSettingsFile, text::kStandardNotRegistered);
  AppendEntry(library, std::move(entry));
  return true;
}

bool LibraryMove(SettingsLibrary& library, int place, LibraryDirection direction) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr) return false;
  if (direction == LibraryDirection::kRemove) {
    if (entry->identity.attributes == kStandardEntry) return false;
    RemoveEntry(library, place);
    return true;
  }
  const int other = direction == LibraryDirection::kUp ? place - 1 : place + 1;
  if (library.At(other) == nullptr) return false;
  std::swap(library.turn[static_cast<size_t>(place)], library.turn[static_cast<size_t>(other)]);
  return true;
}

bool LibraryRename(SettingsLibrary& library, int place, std::u16string_view name) {
  LibraryEntry* const entry = library.At(place);
  if (entry == nullptr) return false;
  const LibrarySaved saved = RenameEntry(library, *entry, name);
  if (saved == LibrarySaved::kOutdated) {
    TellUser(library, text::kOrganizeSettings, {text::kLibraryKeepsChanging});
    LoadLibrary(library);
  }
  return saved == LibrarySaved::kYes;
}

bool LibrarySetComment(SettingsLibrary& library, int place, std::u16string_view comment) {
  LibraryEntry* const entry = library.At(place);
  const std::u16string lines = WithLineEnds(comment);
  if (entry == nullptr) return false;
  if (entry->comment == lines) return true;
  if (lines.size() > kLibraryCommentLength || entry->identity.attributes != kOwnEntry || entry->isAway) return false;
  if (!CheckCodePage(library, comment, text::kOrganizeSettings, text::kCommentNotInCodePage)) return false;
  entry->comment = lines;
  if (entry->dirty == EntryState::kClean) entry->dirty = EntryState::kChanged;
  return true;
}

bool TellIfFull(const SettingsLibrary& library, TextNumber caption, TextNumber full) {
  if (library.count < kLibraryCapacity) return false;
  const std::u16string text = platform::ExpandText(GetUiString(full), {int64_t{kLibraryCapacity}});
  library.view.Show({GetUiString(caption), text, false});
  return true;
}

bool SaveSettingsAs(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                    std::u16string_view name, std::u16string_view comment) {
  const FileLocation location{folder, std::u16string(name)};
  const auto add = [&] {
    if (TellIfFull(library)) return false;
    // Read before the question: what is replaced is what the user was asked about.
    std::optional<std::string> replaces = BytesOfFile(location);
    return CheckSaveName(library, folder, name) && AddEntry(library, settings, location, comment, std::move(replaces));
  };
  if (!ChangeLibrary(library, add)) return false;
  if (library.writes) WriteLastFolder(library.printerName, LastFolder::kSaved, folder);  // a proposal, no more
  return true;
}

bool RegisterSettingsFile(SettingsLibrary& library, std::u16string_view path) {
  const FileLocation location = LocationOf(path);
  const auto complain = [&](TextNumber text) {
    TellUser(library, text::kRegisterSettingsFile, {text});
    return false;
  };
  const auto add = [&] {
    if (TellIfFull(library, text::kRegisterSettingsFile, text::kLibraryFullForRegistering)) return false;
    if (!SameFolded(location.extension, u"vxs")) return complain(text::kRegisterExtension);
    if (location.name.size() > kLibraryNameLength) return complain(text::kRegisterNameTooLong);
    if (location.folder.size() > kFolderLength) return complain(text::kNotASettingsFile);
    if (IsOtherDisplayName(library, nullptr, location.name)) return complain(text::kRegisterNameTaken);
    return LibraryRegisterFile(library, location);
  };
  if (!ChangeLibrary(library, add)) return false;
  if (library.writes) WriteLastFolder(library.printerName, LastFolder::kRegistered, location.folder);  // the same
  return true;
}

bool RenameSettings(SettingsLibrary& library, int place, std::u16string_view name) {
  return ChangeEntry(library, place, [&](int now) {
    if (!CheckEntryName(library, now, name)) return false;
    LibraryEntry& entry = *library.At(now);
    if (entry.location.name != name && !AgreesToRename(library, entry)) return false;
    // Outdated: saving it once more says so too, and the change is made again.
    return RenameEntry(library, entry, name) != LibrarySaved::kNo;
  });
}

bool RemoveSettings(SettingsLibrary& library, int place) {
  return ChangeEntry(library, place, [&](int now) {
    if (library.At(now)->identity.attributes == kStandardEntry) {
      TellUser(library, text::kOrganizeSettings, {text::kStandardSettingsStay});
      return false;
    }
    return AskUser(library, text::kOrganizeSettings, TextsOf({text::kAskToRemove})) == UserAnswer::kYes &&
           LibraryMove(library, now, LibraryDirection::kRemove);
  });
}

bool MoveSettings(SettingsLibrary& library, int place, LibraryDirection direction) {
  return ChangeEntry(library, place, [&](int now) { return LibraryMove(library, now, direction); });
}

bool MoveSettingsTo(SettingsLibrary& library, int place, int to) {
  return ChangeEntry(library, place, [&](int now) {
    while (now < to && LibraryMove(library, now, LibraryDirection::kDown)) ++now;
    while (now > to && LibraryMove(library, now, LibraryDirection::kUp)) --now;
    return true;
  });
}

bool CommentSettings(SettingsLibrary& library, int place, std::u16string_view comment) {
  return ChangeEntry(library, place, [&](int now) { return LibrarySetComment(library, now, comment); });
}

}  // namespace heron

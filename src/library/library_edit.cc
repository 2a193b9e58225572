// Changes of the library that a user asks for (settings_library.h).
#include <algorithm>

#include "catalog/strings.h"
#include "library/fold_case.h"
#include "library/key_walk.h"
#include "library/repair.h"
#include "library/settings_library.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/text.h"

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

bool IsOtherDisplayName(const SettingsLibrary& library, const LibraryEntry* own, std::u16string_view name) {
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry* entry = library.At(place);
    if (entry != own && SameFolded(entry->displayName, name)) return true;
  }
  return false;
}

int PlaceOfFile(const SettingsLibrary& library, const FileLocation& location) {
  for (int place = 0; place < library.count; ++place) {
    if (SameLocation(library.At(place)->location, location)) return place;
  }
  return -1;
}

/// A name that the code page can't hold would come back as another one.
bool SurvivesCodePage(std::u16string_view name) {
  std::string bytes;
  platform::AppendAnsi(name, &bytes);
  return platform::FromAnsi(bytes) == name;
}

/// Which texts tell what is wrong with a name.
struct NameTexts {
  LibraryText caption;
  LibraryText illegal;
  LibraryText missing;
};

/// The checks that every name goes through.
bool CheckCharacters(const SettingsLibrary& library, std::u16string_view name, const NameTexts& texts) {
  constexpr std::u16string_view kIllegal = u"\\/:*?\"<>|.";
  const auto is_control = [](char16_t c) { return c < u' ' || c == 0x7F; };
  const auto complain = [&](LibraryText text) {
    TellUser(library, texts.caption, {text});
    return false;
  };
  if (name.find_first_of(kIllegal) != std::u16string_view::npos) return complain(texts.illegal);
  if (std::ranges::any_of(name, is_control)) return complain(kNameControl);
  if (!SurvivesCodePage(name)) return complain(texts.illegal);
  if (name.size() > kLibraryNameLength) return complain(kNameTooLong);
  return !name.empty() || complain(texts.missing);
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

/// Message of a file that isn't opened; the other codes have told theirs.
void TellNotRegistered(const SettingsLibrary& library, OpenCode code) {
  if (code == OpenCode::kNoFile || code == OpenCode::kNoSettingsFile || code == OpenCode::kNoState)
    TellUser(library, kRegisterCaption, {kNotASettingsFile});
}

}  // namespace

bool LibraryAddCurrent(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                       std::u16string_view name, std::u16string_view comment) {
  const std::u16string lines = WithLineEnds(comment);
  if (library.count >= kLibraryCapacity || folder.empty() || folder.size() > kFolderLength || name.empty() ||
      name.size() > kLibraryNameLength || lines.size() > kLibraryCommentLength) {
    return false;
  }
  const FileLocation location{folder, std::u16string(name)};
  if (!IsFolderWritable(folder) || IsProtectedFile(location.Path())) {
    TellUser(library, kSaveCaption, {kNotSavedThere});
    return false;
  }
  LibraryEntryPtr entry = MakeEntry(library, settings, location, lines);
  if (entry == nullptr) {
    TellUser(library, kSaveCaption, {kNotCreated});
    return false;
  }
  const int place = PlaceOfFile(library, location);
  if (place < 0) {
    AppendEntry(library, std::move(entry));
    return true;
  }
  LibraryEntryPtr& slot = library.slots[static_cast<size_t>(library.turn[static_cast<size_t>(place)])];
  // Until the file is replaced, the list goes on naming it.
  if (slot->onDisk == location) entry->onDisk = location;
  slot = std::move(entry);
  return true;
}

bool LibraryRegisterFile(SettingsLibrary& library, const FileLocation& location) {
  const auto complain = [&](LibraryText caption, LibraryText text) {
    TellUser(library, caption, {text});
    return false;
  };
  if (IsOtherBaseName(library, nullptr, location.name)) return complain(kOrganizeCaption, kNameTaken);
  if (library.count >= kLibraryCapacity) return false;
  OpenCode code;
  LibraryEntryPtr entry = OpenEntry(library, location, OpenFor::kRegistering, &code);
  if (entry == nullptr) {
    TellNotRegistered(library, code);
    return false;
  }
  if (IsOtherDisplayName(library, nullptr, entry->displayName)) return complain(kOrganizeCaption, kNameTaken);
  if (entry->identity.attributes == kStandardEntry) return complain(kRegisterCaption, kStandardNotRegistered);
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
  if (entry->location.name == name && entry->displayName == name) return true;
  FileLocation renamed = entry->location;
  renamed.name = name;
  const int32_t attributes = entry->identity.attributes;
  const bool possible = attributes != kStandardEntry && attributes != kProtectedEntry && entry->state != nullptr &&
                        !name.empty() && name.size() <= kLibraryNameLength && !IsOtherBaseName(library, entry, name) &&
                        (renamed == entry->location || !FileExists(renamed.Path()));
  const FileLocation old_location = entry->location;
  const std::u16string old_name = entry->displayName;
  const EntryState old_state = entry->dirty;
  if (possible) {
    entry->location = renamed;
    entry->displayName = name;
    entry->dirty = EntryState::kChanged;
    if (!library.writes) return true;
    const bool saved = SaveEntry(*entry);
    if (saved && SettleList(library)) return true;
    // A folder that couldn't be flushed may hold the new file all the same.
    if (!saved && renamed != old_location) platform::DeleteFileW(renamed.Path().c_str());
    entry->location = old_location;
    entry->displayName = old_name;
    entry->dirty = old_state;
  }
  TellUser(library, kOrganizeCaption, {kNotRenamed});
  return false;
}

bool LibrarySetComment(SettingsLibrary& library, int place, std::u16string_view comment) {
  LibraryEntry* const entry = library.At(place);
  const std::u16string lines = WithLineEnds(comment);
  if (entry == nullptr) return false;
  if (entry->comment == lines) return true;
  if (lines.size() > kLibraryCommentLength || entry->identity.attributes != kOwnEntry) return false;
  entry->comment = lines;
  if (entry->dirty == EntryState::kClean) entry->dirty = EntryState::kChanged;
  return true;
}

bool CheckSaveName(const SettingsLibrary& library, const std::u16string& folder, std::u16string_view name) {
  const auto complain = [&](LibraryText text) {
    TellUser(library, kSaveCaption, {text});
    return false;
  };
  if (!CheckCharacters(library, name, {kSaveCaption, kSaveNameIllegal, kSaveNameMissing})) return false;
  if (IsOtherDisplayName(library, nullptr, name)) return complain(kSaveNameTaken);
  if (!IsFolderWritable(folder)) return complain(kFolderProtected);
  const FileLocation location{folder, std::u16string(name)};
  const std::u16string path = location.Path();
  const LibraryEntry* entry = library.At(PlaceOfFile(library, location));
  if (entry == nullptr && !FileExists(path)) return true;
  if (IsProtectedFile(path) || (entry != nullptr && entry->identity.attributes == kProtectedEntry))
    return complain(kFileProtected);
  return AskUser(library, kSaveCaption, TextsOf({kAskToReplace})) == UserAnswer::kYes;
}

bool CheckEntryName(const SettingsLibrary& library, int place, std::u16string_view name) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr) return name.empty() && library.count == 0;
  if (!CheckCharacters(library, name, {kOrganizeCaption, kNameIllegal, kNameMissing})) return false;
  if (!IsOtherDisplayName(library, entry, name)) return true;
  TellUser(library, kOrganizeCaption, {kNameTaken});
  return false;
}

bool TellIfFull(const SettingsLibrary& library) {
  if (library.count < kLibraryCapacity) return false;
  const std::u16string text = platform::ExpandText(GetUiString(kLibraryFull), {int64_t{kLibraryCapacity}});
  library.view.Show({GetUiString(kSaveCaption), text, false});
  return true;
}

bool SaveSettingsAs(SettingsLibrary& library, const UiState& settings, const std::u16string& folder,
                    std::u16string_view name, std::u16string_view comment) {
  if (TellIfFull(library) || !CheckSaveName(library, folder, name)) return false;
  if (!LibraryAddCurrent(library, settings, folder, name, comment)) return false;
  if (!library.writes) return true;
  WriteLastFolder(library.printerName, LastFolder::kSaved, folder);  // a proposal for the next time, no more
  return LibrarySaveIndex(library);
}

bool RegisterSettingsFile(SettingsLibrary& library, std::u16string_view path) {
  const FileLocation location = LocationOf(path);
  const auto complain = [&](LibraryText text) {
    TellUser(library, kRegisterCaption, {text});
    return false;
  };
  if (TellIfFull(library)) return false;
  if (!SameFolded(location.extension, u"vxs")) return complain(kRegisterExtension);
  if (location.name.size() > kLibraryNameLength) return complain(kFileNameTooLong);
  if (location.folder.size() > kFolderLength) return complain(kNotASettingsFile);
  if (IsOtherDisplayName(library, nullptr, location.name)) return complain(kRegisterNameTaken);
  if (!LibraryRegisterFile(library, location)) return false;
  if (!library.writes) return true;
  WriteLastFolder(library.printerName, LastFolder::kRegistered, location.folder);  // the same
  return LibrarySaveIndex(library);
}

bool RenameSettings(SettingsLibrary& library, int place, std::u16string_view name) {
  return CheckEntryName(library, place, name) && LibraryRename(library, place, name);
}

bool RemoveSettings(SettingsLibrary& library, int place) {
  const LibraryEntry* entry = library.At(place);
  if (entry == nullptr) return false;
  if (entry->identity.attributes == kStandardEntry) {
    TellUser(library, kOrganizeCaption, {kStandardStays});
    return false;
  }
  if (AskUser(library, kOrganizeCaption, TextsOf({kAskToRemove})) != UserAnswer::kYes) return false;
  return LibraryMove(library, place, LibraryDirection::kRemove) && LibrarySaveIndex(library);
}

}  // namespace heron

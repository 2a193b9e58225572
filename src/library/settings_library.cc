// Opening, closing and keeping the library (settings_library.h).
#include "library/settings_library.h"

#include <algorithm>

#include "catalog/strings.h"
#include "library/fold_case.h"
#include "platform/handles.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

constexpr size_t kNamesInQuestion = 22;
constexpr std::u16string_view kAnyDestination = u"0";

enum class StoredList : uint8_t { kOurs, kOfOtherVersion, kOfOtherDriver };

StoredList Judge(const LibraryIndex& stored) {
  if (!stored.driver) return StoredList::kOfOtherDriver;
  const DriverIdentity& theirs = *stored.driver;
  const DriverIdentity ours;
  const bool same = SameFolded(theirs.manufacture, ours.manufacture) && SameFolded(theirs.product, ours.product) &&
                    SameFolded(theirs.system, ours.system) && SameFolded(theirs.model, ours.model) &&
                    SameFolded(theirs.language, ours.language) && SameFolded(theirs.destination, ours.destination) &&
                    theirs.usetVersion == ours.usetVersion;
  if (!same) return StoredList::kOfOtherDriver;
  return SameFolded(theirs.version, ours.version) ? StoredList::kOurs : StoredList::kOfOtherVersion;
}

bool IsUsers(const IndexEntry& entry) {
  return entry.type == kOwnEntry || entry.type == kProtectedEntry;
}
bool IsStandard(const IndexEntry& entry) {
  return entry.type == kStandardEntry || entry.type == kReplaceableEntry;
}
bool IsThere(const IndexEntry& entry) {
  return platform::CanOpenFile(entry.location.Path().c_str());
}

std::u16string DisplayNameAt(const FileLocation& location) {
  LibraryEntry head;
  return ReadEntryHead(location, &head) ? head.displayName : location.name;
}

std::vector<IndexEntry> FreshList() {
  return {{.slot = 0, .location = StandardFile(0), .type = kStandardEntry}};
}

/// Names of the user's files that are there.
std::vector<std::u16string> UserNames(const std::vector<IndexEntry>& entries) {
  std::vector<std::u16string> names;
  for (const IndexEntry& entry : entries) {
    if (IsUsers(entry) && IsThere(entry)) names.push_back(DisplayNameAt(entry.location));
  }
  return names;
}

UserAnswer AskToKeepList(const SettingsLibrary& library, const std::vector<std::u16string>& names) {
  std::u16string text = TextsOf({kDriverReplaced});
  for (size_t i = 0; i < std::min(names.size(), kNamesInQuestion); ++i) text.append(names[i]).append(1, u'\n');
  if (names.size() > kNamesInQuestion) text += u" :\n :\n";
  return AskUser(library, kLibraryCaption, text + TextsOf({kFilesCanBeConverted, kAskToKeep}));
}

/// The user's files stay, and of the standard ones the new driver's takes the first's place; without any it comes last,
/// if there is room. It is left out where a file of the user's bears its name.
std::vector<IndexEntry> MigrateList(const std::vector<IndexEntry>& entries, const std::vector<std::u16string>& names) {
  const IndexEntry standard = FreshList().front();
  const std::u16string standard_name = DisplayNameAt(standard.location);
  const bool taken = std::ranges::any_of(names, [&](const auto& name) { return SameFolded(name, standard_name); });
  std::vector<IndexEntry> migrated;
  bool placed = taken;
  for (const IndexEntry& entry : entries) {
    if (!IsStandard(entry))
      migrated.push_back(entry);
    else if (!std::exchange(placed, true))
      migrated.push_back(standard);
  }
  if (!placed && migrated.size() < kLibraryCapacity) migrated.push_back(standard);
  return migrated;
}

/// What the library holds now. False: it can't be opened.
bool ChooseEntries(SettingsLibrary& library, std::vector<IndexEntry>* entries) {
  *entries = library.stored.entries;
  const StoredList list = Judge(library.stored);
  if (list == StoredList::kOfOtherDriver) {
    *entries = FreshList();
    return true;
  }
  if (library.stored.count > kLibraryCapacity) return false;
  if (list == StoredList::kOurs) return true;
  const std::vector<std::u16string> names = UserNames(*entries);
  const UserAnswer answer = names.empty() ? UserAnswer::kNo : AskToKeepList(library, names);
  if (answer == UserAnswer::kNone) return false;
  if (answer == UserAnswer::kNo) {
    *entries = FreshList();
  } else {
    *entries = MigrateList(*entries, names);
    library.loads = true;
  }
  return true;
}

/// Whether the driver that wrote the file is this one; tells what differs.
bool IsFromThisDriver(const SettingsLibrary& library, const DriverIdentity& theirs, OpenCode* code) {
  const DriverIdentity ours;
  struct Difference {
    bool differs;
    LibraryText text;
    OpenCode code;
  };
  const Difference differences[] = {
      {!SameFolded(theirs.system, ours.system), kOtherSystem, OpenCode::kSystemDiffers},
      {!SameFolded(theirs.model, ours.model), kOtherModel, OpenCode::kModelDiffers},
      {!SameFolded(theirs.language, ours.language), kOtherLanguage, OpenCode::kLanguageDiffers},
      {theirs.destination != kAnyDestination && !SameFolded(theirs.destination, ours.destination), kOtherLanguage,
       OpenCode::kDestinationDiffers},
  };
  const auto first = std::ranges::find(differences, true, &Difference::differs);
  if (first == std::end(differences)) return true;
  TellUser(library, kLibraryCaption, {first->text});
  *code = first->code;
  return false;
}

/// A file of another version is converted if the user agrees: it is written anew at the next save.
bool ConvertVersion(const SettingsLibrary& library, LibraryEntry& entry, OpenFor purpose, OpenCode* code) {
  const DriverIdentity ours;
  if (SameFolded(entry.identity.version, ours.version)) return true;
  if (entry.identity.attributes == kProtectedEntry) {
    if (purpose == OpenFor::kList)
      TellUser(library, kLibraryCaption, {kOtherVersion, kProtectedAtOpening, kLeavesTheList});
    else
      TellUser(library, kLibraryCaption, {kOtherVersion, kProtected});
    *code = OpenCode::kNotConvertible;
    return false;
  }
  const UserAnswer answer = AskUser(library, kLibraryCaption, TextsOf({kOtherVersion, kCanBeConverted, kAskToConvert}));
  *code = answer == UserAnswer::kNone ? OpenCode::kUnanswered : OpenCode::kNotConverted;
  if (answer != UserAnswer::kYes) return false;
  entry.identity.version = ours.version;
  entry.dirty = EntryState::kChanged;
  return true;
}

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
  return a.driver && b.driver && Judge(a) == StoredList::kOurs && Judge(b) == StoredList::kOurs &&
         a.driver->versionNumber == b.driver->versionNumber && a.count == b.count && a.entries == b.entries;
}

bool WriteList(SettingsLibrary& library) {
  if (!library.writes) return true;
  LibraryIndex index = ListOf(library);
  if (SameList(index, library.stored)) return true;
  if (!WriteLibraryIndex(library.printerName, index)) return false;
  library.stored = std::move(index);
  return true;
}

/// Back to the file that it left, which stands still.
void ReturnToOldFile(LibraryEntry& entry) {
  platform::DeleteFileW(entry.location.Path().c_str());
  entry.location = *entry.leaving;
  entry.onDisk = std::exchange(entry.leaving, std::nullopt);
  entry.dirty = EntryState::kChanged;
}

}  // namespace

LibraryEntry* SettingsLibrary::At(int place) const {
  return place < 0 || place >= count ? nullptr : slots[static_cast<size_t>(turn[static_cast<size_t>(place)])].get();
}

std::u16string TextsOf(std::initializer_list<LibraryText> texts) {
  std::u16string all;
  for (const LibraryText text : texts) all += GetUiString(text);
  return all;
}

void TellUser(const SettingsLibrary& library, LibraryText caption, std::initializer_list<LibraryText> texts) {
  const std::u16string text = TextsOf(texts);
  library.view.Show({GetUiString(caption), text, false});
}

UserAnswer AskUser(const SettingsLibrary& library, LibraryText caption, const std::u16string& text) {
  if (library.view.Show({GetUiString(caption), text, true})) return UserAnswer::kYes;
  return library.view.CanAnswer() ? UserAnswer::kNo : UserAnswer::kNone;
}

LibraryEntryPtr OpenEntry(const SettingsLibrary& library, const FileLocation& location, OpenFor purpose,
                          OpenCode* code) {
  auto entry = std::make_unique<LibraryEntry>();
  *code = OpenCode::kNoFile;
  const std::u16string path = location.Path();
  if (!FileExists(path)) return nullptr;
  *code = OpenCode::kNoSettingsFile;
  if (!ReadEntryHead(location, entry.get())) return nullptr;
  int32_t& attributes = entry->identity.attributes;
  if (attributes == kOwnEntry && (IsProtectedFile(path) || !IsFolderWritable(location.folder)))
    attributes = kProtectedEntry;
  if (!IsFromThisDriver(library, entry->identity, code)) return nullptr;
  if (!ConvertVersion(library, *entry, purpose, code)) return nullptr;
  *code = OpenCode::kNoState;
  if (library.loads && !LoadEntrySettings(*entry, library.ui, library.resources)) return nullptr;
  *code = OpenCode::kOpened;
  return entry;
}

void AppendEntry(SettingsLibrary& library, LibraryEntryPtr entry) {
  const auto place = static_cast<size_t>(library.count++);
  library.turn[place] = static_cast<int>(place);
  library.slots[place] = std::move(entry);
}

SettingsLibraryPtr SettingsLibraryOpen(engine::EngineView& view, const UiState& ui, const ResourceContext* resources,
                                       LibraryLoad load, LibraryWrites writes) {
  auto library = std::make_unique<SettingsLibrary>(view, ui, resources);
  library->loads = load == LibraryLoad::kSettings;
  library->writes = writes == LibraryWrites::kYes;
  library->printerName = PrinterName(ui.printer);
  std::vector<IndexEntry> entries;
  if (library->printerName.empty() || !ReadLibraryIndex(library->printerName, &library->stored)) return nullptr;
  if (!ChooseEntries(*library, &entries)) return nullptr;
  for (const IndexEntry& listed : entries) {
    if (!IsThere(listed)) continue;
    OpenCode code;
    LibraryEntryPtr entry = OpenEntry(*library, listed.location, OpenFor::kList, &code);
    if (code == OpenCode::kUnanswered) return nullptr;
    if (entry != nullptr) AppendEntry(*library, std::move(entry));
  }
  LibrarySaveIndex(*library);
  return library;
}

void SettingsLibraryClose(SettingsLibraryPtr& library) {
  library.reset();
}

bool SettleList(SettingsLibrary& library) {
  const bool written = WriteList(library);
  bool settled = written;
  for (int place = 0; place < library.count; ++place) {
    LibraryEntry& entry = *library.At(place);
    if (!entry.leaving) continue;
    const std::u16string old = entry.leaving->Path();
    if (written && (platform::DeleteFileW(old.c_str()) != 0 || !FileExists(old))) {
      entry.leaving.reset();
    } else {
      ReturnToOldFile(entry);
      settled = false;
    }
  }
  if (written && !settled) WriteList(library);
  return settled;
}

bool LibrarySaveIndex(SettingsLibrary& library) {
  bool saved = true;
  for (int place = 0; place < library.count && library.writes; ++place) {
    LibraryEntry& entry = *library.At(place);
    const bool is_new = entry.dirty == EntryState::kNew;
    if (entry.identity.attributes != kOwnEntry || SaveEntry(entry)) continue;
    TellUser(library, is_new ? kSaveCaption : kLibraryCaption, {is_new ? kNotSavedThere : kChangedNotWritten});
    saved = false;
  }
  if (SettleList(library)) return saved;
  TellUser(library, kLibraryCaption, {kChangedNotWritten});
  return false;
}

}  // namespace heron

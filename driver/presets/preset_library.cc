// Opening, closing and keeping the library (preset_library.h).
#include "presets/preset_library.h"

#include <algorithm>
#include <utility>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

constexpr size_t kNamesInQuestion = 22;
constexpr std::u16string_view kAnyDestination = u"0";

bool IsUsers(const IndexEntry& entry) {
  return entry.type == kOwnEntry || entry.type == kProtectedEntry;
}
bool IsStandard(const IndexEntry& entry) {
  return entry.type == kStandardEntry || entry.type == kReplaceableEntry;
}
bool IsListed(const IndexEntry& entry) {
  return LookForFile(entry.location.Path()) != FilePresence::kGone;
}

std::u16string DisplayNameAt(const FileLocation& location) {
  LibraryEntry head;
  return ReadEntryHead(location, &head) ? head.displayName : location.name;
}

std::vector<IndexEntry> FreshList() {
  return {{.slot = 0, .location = StandardFile(0), .type = kStandardEntry}};
}

/// Names of the user's files that aren't gone.
std::vector<std::u16string> UserNames(const std::vector<IndexEntry>& entries) {
  std::vector<std::u16string> names;
  for (const IndexEntry& entry : entries) {
    if (IsUsers(entry) && IsListed(entry)) names.push_back(DisplayNameAt(entry.location));
  }
  return names;
}

UserAnswer AskToKeepList(const SettingsLibrary& library, const std::vector<std::u16string>& names) {
  std::u16string text = TextsOf({text::kDriverReplaced});
  for (size_t i = 0; i < std::min(names.size(), kNamesInQuestion); ++i) text.append(names[i]).append(1, u'\n');
  if (names.size() > kNamesInQuestion) text += u" :\n :\n";
  return AskUser(library, text::kSettingsLibrary, text + TextsOf({text::kFilesCanBeConverted, text::kAskToKeepInList}));
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

/// Whether the driver that wrote the file is this one; reports what differs.
bool IsFromThisDriver(const SettingsLibrary& library, const DriverIdentity& theirs, OpenCode* code) {
  const DriverIdentity ours;
  struct Difference {
    bool differs;
    TextNumber text;
    OpenCode code;
  };
  const Difference differences[] = {
      {!SameFolded(theirs.system, ours.system), text::kOtherSystem, OpenCode::kSystemDiffers},
      {!SameFolded(theirs.model, ours.model), text::kOtherModel, OpenCode::kModelDiffers},
      {!SameFolded(theirs.language, ours.language), text::kOtherLanguage, OpenCode::kLanguageDiffers},
      {theirs.destination != kAnyDestination && !SameFolded(theirs.destination, ours.destination), text::kOtherLanguage,
       OpenCode::kDestinationDiffers},
  };
  const auto first = std::ranges::find(differences, true, &Difference::differs);
  if (first == std::end(differences)) return true;
  TellUser(library, text::kSettingsLibrary, {first->text});
  *code = first->code;
  return false;
}

/// A file of another version is converted if the user agrees: it is written anew at the next save.
bool ConvertVersion(const SettingsLibrary& library, LibraryEntry& entry, OpenFor purpose, OpenCode* code) {
  const DriverIdentity ours;
  if (SameFolded(entry.identity.version, ours.version)) return true;
  if (entry.identity.attributes == kProtectedEntry) {
    if (purpose == OpenFor::kList)
      TellUser(library, text::kSettingsLibrary, {text::kOtherVersion, text::kProtectedAtOpening, text::kLeavesTheList});
    else
      TellUser(library, text::kSettingsLibrary, {text::kOtherVersion, text::kProtectedFile});
    *code = OpenCode::kNotConvertible;
    return false;
  }
  const UserAnswer answer = AskUser(library, text::kSettingsLibrary,
                                    TextsOf({text::kOtherVersion, text::kFileCanBeConverted, text::kAskToConvert}));
  *code = answer == UserAnswer::kNone ? OpenCode::kUnanswered : OpenCode::kNotConverted;
  if (answer != UserAnswer::kYes) return false;
  entry.identity.version = ours.version;
  entry.dirty = EntryState::kChanged;
  return true;
}

/// An entry that keeps its place in the list until its file can be read again.
LibraryEntryPtr AwayEntry(const IndexEntry& listed) {
  auto entry = std::make_unique<LibraryEntry>();
  entry->location = listed.location;
  entry->onDisk = listed.location;
  entry->displayName = listed.location.name;
  entry->identity.attributes = listed.type;
  entry->isAway = true;
  return entry;
}

/// Where a listed file is now: one of the driver's is looked for beside the driver too, which may have been moved.
IndexEntry Located(const IndexEntry& listed) {
  IndexEntry located = listed;
  if (IsStandard(listed) && LookForFile(listed.location.Path()) != FilePresence::kThere)
    located.location.folder = StandardFile(0).folder;
  return located;
}

/// Puts a listed entry into the library if it isn't gone or refused. False: it can't be read now.
bool TakeListed(SettingsLibrary& library, const IndexEntry& stored) {
  const IndexEntry listed = Located(stored);
  const FilePresence presence = LookForFile(listed.location.Path());
  if (presence == FilePresence::kGone || (presence == FilePresence::kAway && IsStandard(listed))) return true;
  OpenCode code = OpenCode::kAway;
  LibraryEntryPtr entry =
      presence == FilePresence::kAway ? nullptr : OpenEntry(library, listed.location, OpenFor::kList, &code);
  if (code == OpenCode::kUnanswered || code == OpenCode::kNoState) return false;
  if (code == OpenCode::kAway && IsUsers(listed)) entry = AwayEntry(listed);
  if (entry != nullptr) AppendEntry(library, std::move(entry));
  return true;
}

/// Names the entries whose folder can't be reached.
void TellAway(const SettingsLibrary& library) {
  std::u16string names;
  for (int place = 0; place < library.count; ++place) {
    const LibraryEntry& entry = *library.At(place);
    if (!entry.isAway) continue;
    names.append(names.empty() ? u"" : u"\n").append(entry.displayName).append(u": ").append(entry.location.folder);
  }
  if (names.empty()) return;
  const std::u16string text = platform::ExpandText(GetUiString(text::kFolderUnreachable), {std::u16string_view(names)});
  library.view.Show({GetUiString(text::kSettingsLibrary), text, false});
}

}  // namespace

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

LibraryEntry* SettingsLibrary::At(int place) const {
  return place < 0 || place >= count ? nullptr : slots[static_cast<size_t>(turn[static_cast<size_t>(place)])].get();
}

std::u16string TextsOf(std::initializer_list<TextNumber> texts) {
  std::u16string all;
  for (const TextNumber text : texts) all += GetUiString(text);
  return all;
}

void TellUser(const SettingsLibrary& library, TextNumber caption, std::initializer_list<TextNumber> texts) {
  const std::u16string text = TextsOf(texts);
  library.view.Show({GetUiString(caption), text, false});
}

UserAnswer AskUser(const SettingsLibrary& library, TextNumber caption, const std::u16string& text) {
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
  if (!ReadEntryHead(location, entry.get())) {
    // A disk that fails between two looks says nothing about what its file is.
    if (LookForFile(path) == FilePresence::kAway) *code = OpenCode::kAway;
    return nullptr;
  }
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

bool LoadLibrary(SettingsLibrary& library) {
  library.count = 0;
  for (LibraryEntryPtr& slot : library.slots) slot.reset();
  library.loads = library.wanted == LibraryLoad::kSettings;
  std::vector<IndexEntry> entries;
  if (!ReadLibraryIndex(library.printerName, &library.stored) || !ChooseEntries(library, &entries)) return false;
  return std::ranges::all_of(entries, [&](const IndexEntry& listed) { return TakeListed(library, listed); });
}

SettingsLibraryPtr SettingsLibraryOpen(engine::EngineView& view, const UiState& ui, const ResourceContext* resources,
                                       LibraryLoad load, LibraryWrites writes) {
  auto library = std::make_unique<SettingsLibrary>(view, ui, resources);
  library->wanted = load;
  library->writes = writes == LibraryWrites::kYes;
  library->printerName = PrinterName(ui.printer);
  if (library->printerName.empty()) return nullptr;
  if (library->writes) SweepUnfinishedFiles(library->printerName);
  for (int i = 0; i < kLibraryAttempts; ++i) {
    if (!LoadLibrary(*library)) return nullptr;
    // A list that goes on changing can be looked at all the same: no change is written that isn't made of it.
    if (SaveLibrary(*library) != LibrarySaved::kOutdated) break;
  }
  TellAway(*library);
  return library;
}

void SettingsLibraryClose(SettingsLibraryPtr& library) {
  library.reset();
}

}  // namespace heron

// Files of the settings library (preset_entry.h).
#include "presets/preset_entry.h"

#include <string>
#include <utility>

#include "catalog/other_values.h"
#include "catalog/strings.h"
#include "engine/page_list.h"
#include "engine/setting.h"
#include "platform/api/files.h"
#include "platform/api/handles.h"
#include "presets/fold_case.h"
#include "presets/preset_file.h"

namespace heron {
namespace {

using engine::Setting;

using platform::Profile;

constexpr uint16_t kEngineOfAnyModel = 99;
constexpr std::string_view kPlainSectionName = "IP_SETTING LIBRARY UIPARAM";

std::u16string Joined(const std::u16string& folder, std::u16string_view name) {
  std::u16string path = folder;
  if (!path.ends_with(platform::kPathSeparator)) path += platform::kPathSeparator;
  return path.append(name);
}

bool IsFromDriver(const LibraryEntry& entry) {
  return entry.identity.attributes == kStandardEntry || entry.identity.attributes == kReplaceableEntry;
}

/// What older files and files for every model say in another way. The file is asked, as the value may be none of this
/// model's and be repaired by now.
void AdjustSettings(const LibraryEntry& entry, const Profile& file, const UiState& working) {
  const UiState& ui = *entry.state;
  std::string_view engine;
  if (IsFromDriver(entry) && file.Get(kPlainSectionName, "lpEngine", &engine) &&
      platform::LeadingNumber(engine) == kEngineOfAnyModel) {
    Setting<u"lpEngine">(ui) = Setting<u"lpEngine">(working);
  }
  if (engine::IsOn<u"Saddle_Check">(ui)) {
    Setting<u"FoldStaple_Check">(ui) = value::FoldStaple_Check::kOn;
    Setting<u"lpFoldStaple">(ui) = value::lpFoldStaple::kFoldAndStaple;
    Setting<u"Saddle_Check">(ui) = 0;
  }
}

}  // namespace

std::u16string FileLocation::Path() const {
  return Joined(folder, name).append(1, u'.').append(extension);
}

FileLocation LocationOf(std::u16string_view path) {
  FileLocation location;
  const size_t slash = path.rfind(platform::kPathSeparator);
  if (slash != std::u16string_view::npos) location.folder = path.substr(0, slash == 0 ? 1 : slash);
  const std::u16string_view file = path.substr(slash + 1);  // npos + 1 is 0
  const size_t point = file.rfind(u'.');
  location.name = file.substr(0, point);
  location.extension = point == std::u16string_view::npos ? std::u16string_view() : file.substr(point + 1);
  return location;
}

bool SameLocation(const FileLocation& a, const FileLocation& b) {
  return SameFolded(a.folder, b.folder) && SameFolded(a.name, b.name) && SameFolded(a.extension, b.extension);
}

FileLocation StandardFile(int number) {
  FileLocation location = LocationOf(DriverDirectory());
  location.name = u"TVOR61";
  for (const char digit : std::to_string(number)) location.name += static_cast<char16_t>(digit);
  location.extension = u"vxs";
  return location;
}

bool FileExists(const std::u16string& path) {
  return platform::GetFileAttributesW(path.c_str()) != platform::INVALID_FILE_ATTRIBUTES;
}

bool IsProtectedFile(const std::u16string& path) {
  constexpr platform::DWORD kProtecting = platform::FILE_ATTRIBUTE_READONLY | platform::FILE_ATTRIBUTE_HIDDEN |
                                          platform::FILE_ATTRIBUTE_SYSTEM | platform::FILE_ATTRIBUTE_DIRECTORY;
  const platform::DWORD attributes = platform::GetFileAttributesW(path.c_str());
  return attributes != platform::INVALID_FILE_ATTRIBUTES && (attributes & kProtecting) != 0;
}

bool IsFolderWritable(const std::u16string& folder) {
  return !folder.empty() && platform::CanMakeFilesIn(folder.c_str()) != 0;
}

FilePresence LookForFile(const std::u16string& path) {
  if (platform::CanOpenFile(path.c_str())) return FilePresence::kThere;
  switch (platform::GetLastError()) {
    case platform::kErrorFileNotFound:
      return FilePresence::kGone;
    case platform::kErrorAccessDenied:  // of the file, or of the whole folder
      return FileExists(path) ? FilePresence::kGone : FilePresence::kAway;
    default:
      return FilePresence::kAway;
  }
}

std::optional<std::string> BytesOfFile(const FileLocation& location) {
  std::string bytes;
  const platform::DWORD status = platform::ReadProfileBytes(location.Path().c_str(), &bytes);
  return status == platform::kErrorSuccess ? std::optional(std::move(bytes)) : std::nullopt;
}

bool IsAsRead(const LibraryEntry& entry) {
  const bool rewrites = entry.dirty == EntryState::kChanged && entry.onDisk;
  if (rewrites && BytesOfFile(*entry.onDisk) != entry.bytes) return false;
  return (rewrites && entry.onDisk == entry.location) || BytesOfFile(entry.location) == entry.replaces;
}

bool ReadEntryHead(const FileLocation& location, LibraryEntry* entry) {
  const std::u16string path = location.Path();
  if (platform::ReadProfileBytes(path.c_str(), &entry->bytes) != platform::kErrorSuccess) return false;
  const Profile file(entry->bytes);
  entry->comment = ReadLibraryComment(file);
  entry->displayName = ReadLibraryName(file, path);
  if (!ReadDriverIdentity(file, &entry->identity)) return false;
  entry->location = location;
  entry->onDisk = location;
  return true;
}

bool LoadEntrySettings(LibraryEntry& entry, const UiState& ui, const ResourceContext* resources) {
  entry.state = CloneUiState(ui);
  if (entry.state == nullptr) return false;
  const Profile file(entry.bytes);
  LibraryReadSettings(*entry.state, file, resources);
  AdjustSettings(entry, file, ui);
  // The copy still has the rows of the list that `ui` works on.
  engine::LoadWorkingList(*entry.state, engine::Setting<u"lpInterSheetList">(*entry.state));
  return true;
}

bool NeedsSaving(const LibraryEntry& entry) {
  return entry.dirty != EntryState::kClean && entry.identity.attributes == kOwnEntry && entry.state != nullptr &&
         !entry.isAway;
}

bool SaveEntry(LibraryEntry& entry) {
  if (entry.dirty == EntryState::kClean || entry.identity.attributes == kProtectedEntry) return true;
  if (entry.state == nullptr) return entry.dirty == EntryState::kChanged;
  Profile file(entry.bytes);
  WriteLibraryName(file, entry.displayName);
  WriteLibraryComment(file, entry.comment);
  WriteDriverIdentity(file, entry.identity);
  if (!LibraryWriteSettings(*entry.state, file)) return false;
  std::string bytes = file.Bytes();
  if (bytes.size() > platform::kProfileLimit) return false;  // it couldn't be read again
  const std::u16string path = entry.location.Path();
  const bool is_fresh = !FileExists(path);
  if (platform::SaveProfile(path.c_str(), file) != platform::kErrorSuccess) {
    // A folder that couldn't be flushed may hold the file all the same.
    if (is_fresh) platform::DeleteFileW(path.c_str());
    return false;
  }
  if (entry.onDisk && *entry.onDisk != entry.location) {
    entry.leaving = entry.onDisk;
    // A new entry that takes another's place knows what that one held.
    if (entry.dirty == EntryState::kChanged) entry.leftBytes = std::move(entry.bytes);
  }
  entry.onDisk = entry.location;
  entry.bytes = std::move(bytes);
  entry.replaces.reset();
  entry.dirty = EntryState::kClean;
  return true;
}

}  // namespace heron

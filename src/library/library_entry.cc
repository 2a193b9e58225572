// Files of the settings library (library_entry.h).
#include "library/library_entry.h"

#include <string>

#include "catalog/strings.h"
#include "library/fold_case.h"
#include "library/library_file.h"
#include "platform/files.h"

namespace heron {
namespace {

using platform::Profile;

constexpr char16_t kProbeName[] = u"nisnis24.tmp";
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

template <ParamKey kKey>
uint16_t& Value(const UiState& ui) {
  return *FieldsOf(ui, ParamNamed<kKey>()).value;
}

/// What older files and files for every model say in another way. The file is asked, as the value may be none of this
/// model's and be repaired by now.
void AdjustSettings(const LibraryEntry& entry, const Profile& file, const UiState& working) {
  const UiState& ui = *entry.state;
  std::string_view engine;
  if (IsFromDriver(entry) && file.Get(kPlainSectionName, "lpEngine", &engine) &&
      platform::LeadingNumber(engine) == kEngineOfAnyModel) {
    Value<u"lpEngine">(ui) = Value<u"lpEngine">(working);
  }
  if (Value<u"Saddle_Check">(ui) == 1) {
    Value<u"FoldStaple_Check">(ui) = Value<u"lpFoldStaple">(ui) = 1;
    Value<u"Saddle_Check">(ui) = 0;
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
  if (folder.empty()) return false;
  const std::u16string probe = Joined(folder, kProbeName);
  const platform::HANDLE file = platform::CreateFileW(probe.c_str(), platform::GENERIC_WRITE, 0, platform::CREATE_NEW);
  if (file != platform::INVALID_HANDLE_VALUE) {
    platform::CloseHandle(file);
    return platform::DeleteFileW(probe.c_str()) != 0;
  }
  if (platform::GetLastError() != platform::kErrorFileExists) return false;
  // Somebody's file has the name: any other will do.
  char16_t other[platform::kMaxPath];
  return platform::GetTempFileNameW(folder.c_str(), u"nis", 0, other) != 0 && platform::DeleteFileW(other) != 0;
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
  return true;
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
  if (bytes.size() > platform::kProfileLimit) return false;  // nobody could read it again
  if (platform::SaveProfile(entry.location.Path().c_str(), file) != platform::kErrorSuccess) return false;
  if (entry.onDisk && *entry.onDisk != entry.location) entry.leaving = entry.onDisk;
  entry.onDisk = entry.location;
  entry.bytes = std::move(bytes);
  entry.dirty = EntryState::kClean;
  return true;
}

}  // namespace heron

// The list in the registry (preset_index.h).
#include "presets/preset_index.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/api/handles.h"
#include "presets/fold_case.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using platform::DWORD;
using platform::HKEY;
using platform::HKEY_CURRENT_USER;
using platform::kErrorFileNotFound;
using platform::kErrorMoreData;
using platform::kErrorSuccess;
using platform::UniqueKey;

constexpr std::u16string_view kUnfinished = u"Unfinished";
constexpr size_t kIdentityRoom = 63;  ///< characters

struct IdentityValue {
  const char16_t* name;
  std::u16string DriverIdentity::*member;
};
constexpr IdentityValue kIdentityValues[] = {{u"Manufacture", &DriverIdentity::manufacture},
                                             {u"Product", &DriverIdentity::product},
                                             {u"System", &DriverIdentity::system},
                                             {u"Model", &DriverIdentity::model},
                                             {u"Version", &DriverIdentity::version},
                                             {u"DrvLanguage", &DriverIdentity::language},
                                             {u"DrvMachineDestination", &DriverIdentity::destination}};

std::u16string BasePath(std::u16string_view printer_name) {
  return BuildUserKey(printer_name, u"IP_UIPROFILE");
}
std::u16string LocatePath(std::u16string_view printer_name, std::u16string_view part) {
  return BasePath(printer_name).append(u"\\Locate Info\\").append(part);
}

std::u16string Digits(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}
std::u16string FileInfoName(int slot) {
  return (slot < 10 ? u"File Info 0" : u"File Info ") + Digits(slot);
}

/// One key, read. What isn't there, or is of another shape, is its fallback; what can't be read now makes it fail.
class KeyReading {
 public:
  explicit KeyReading(const std::u16string& path) {
    DWORD status = kErrorSuccess;
    key_ = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ, &status);
    failed_ = status != kErrorSuccess && status != kErrorFileNotFound;
  }

  uint32_t Number(const char16_t* name, uint32_t fallback) {
    uint32_t number = 0;
    DWORD size = sizeof number;
    const bool found = Read(name, platform::REG_DWORD, reinterpret_cast<uint8_t*>(&number), &size);
    return found && size == sizeof number ? number : fallback;
  }
  /// A text of more than `room` characters counts as missing.
  std::u16string Text(const char16_t* name, size_t room, std::u16string_view fallback = {}) {
    std::u16string text(room + 1, u'\0');
    auto size = static_cast<DWORD>(text.size() * sizeof(char16_t));
    if (!Read(name, platform::REG_SZ, reinterpret_cast<uint8_t*>(text.data()), &size)) return std::u16string(fallback);
    text.resize(std::min<size_t>(size / sizeof(char16_t), text.find(u'\0')));
    return text.size() <= room ? text : std::u16string(fallback);
  }

  bool exists() const { return key_ != nullptr; }
  bool failed() const { return failed_; }

 private:
  bool Read(const char16_t* name, DWORD wanted, uint8_t* data, DWORD* size) {
    if (key_ == nullptr) return false;
    DWORD type = 0;
    const DWORD status = platform::RegQueryValueExW(key_.get(), name, &type, data, size);
    failed_ |= status != kErrorSuccess && status != kErrorFileNotFound && status != kErrorMoreData;
    return status == kErrorSuccess && type == wanted;
  }

  UniqueKey key_;
  bool failed_ = false;
};

bool PutNumber(HKEY key, const std::u16string& name, uint32_t number) {
  std::array<uint8_t, sizeof number> bytes;
  std::memcpy(bytes.data(), &number, sizeof number);
  return platform::RegSetValueExW(key, name.c_str(), platform::REG_DWORD, bytes.data(), bytes.size()) == kErrorSuccess;
}

bool PutText(HKEY key, const char16_t* name, std::u16string_view text) {
  const std::u16string whole(text);
  const auto size = static_cast<DWORD>((whole.size() + 1) * sizeof(char16_t));
  return platform::RegSetValueExW(key, name, platform::REG_SZ, reinterpret_cast<const uint8_t*>(whole.c_str()), size) ==
         kErrorSuccess;
}

bool ReadDriver(std::u16string_view printer_name, LibraryIndex* index) {
  KeyReading key(BasePath(printer_name));
  DriverIdentity driver;
  for (const IdentityValue& value : kIdentityValues) driver.*value.member = key.Text(value.name, kIdentityRoom);
  driver.versionNumber = key.Number(u"DrvVersion", 0);
  driver.usetVersion = static_cast<int32_t>(key.Number(u"UsetVersion", 0));
  // A folder may be kept there before any list is.
  if (key.exists() && !driver.manufacture.empty()) index->driver = driver;
  return !key.failed();
}

bool ReadEntries(std::u16string_view printer_name, LibraryIndex* index) {
  KeyReading counts(LocatePath(printer_name, u"Count"));
  KeyReading turns(LocatePath(printer_name, u"Turn"));
  index->count = counts.Number(u"count", 0);
  std::array<bool, kLibraryCapacity> used{};
  for (uint32_t place = 0; place < std::min<uint32_t>(index->count, kLibraryCapacity); ++place) {
    const uint32_t slot = turns.Number(Digits(static_cast<int>(place)).c_str(), kLibraryCapacity);
    if (slot >= used.size() || used[slot]) continue;
    used[slot] = true;
    KeyReading file(LocatePath(printer_name, FileInfoName(static_cast<int>(slot))));
    IndexEntry entry;
    entry.slot = static_cast<int>(slot);
    entry.location = {.folder = file.Text(u"Path", kFolderLength),
                      .name = file.Text(u"Name", kLibraryNameLength),
                      .extension = file.Text(u"Extent", kExtensionLength, u"vxs")};
    entry.type = static_cast<int32_t>(file.Number(u"File Type", 0));
    if (file.failed()) return false;
    index->entries.push_back(std::move(entry));
  }
  return !counts.failed() && !turns.failed();
}

bool WriteDriver(std::u16string_view printer_name, const DriverIdentity& driver) {
  const UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, BasePath(printer_name).c_str());
  const auto put = [&](const IdentityValue& value) { return PutText(key.get(), value.name, driver.*value.member); };
  return key != nullptr && std::ranges::all_of(kIdentityValues, put) &&
         PutNumber(key.get(), u"DrvVersion", driver.versionNumber) &&
         PutNumber(key.get(), u"UsetVersion", static_cast<uint32_t>(driver.usetVersion));
}

bool DropOldEntries(std::u16string_view printer_name) {
  const auto drop = [&](std::u16string_view part) {
    const DWORD status = platform::RegDeleteKeyW(HKEY_CURRENT_USER, LocatePath(printer_name, part).c_str());
    return status == kErrorSuccess || status == kErrorFileNotFound;
  };
  bool dropped = drop(u"Turn");
  for (int slot = 0; slot <= kLibraryCapacity; ++slot) dropped = drop(FileInfoName(slot)) && dropped;
  return dropped;
}

bool WriteEntry(std::u16string_view printer_name, const IndexEntry& entry) {
  const std::u16string path = LocatePath(printer_name, FileInfoName(entry.slot));
  const UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, path.c_str());
  return key != nullptr && PutText(key.get(), u"Name", entry.location.name) &&
         PutText(key.get(), u"Extent", entry.location.extension) &&
         PutText(key.get(), u"Path", entry.location.folder) &&
         PutNumber(key.get(), u"File Type", static_cast<uint32_t>(entry.type));
}

bool WriteEntries(std::u16string_view printer_name, const std::vector<IndexEntry>& entries) {
  const UniqueKey count = platform::CreateKey(HKEY_CURRENT_USER, LocatePath(printer_name, u"Count").c_str());
  if (count == nullptr || !PutNumber(count.get(), u"count", static_cast<uint32_t>(entries.size()))) return false;
  if (!DropOldEntries(printer_name)) return false;
  const UniqueKey turns = platform::CreateKey(HKEY_CURRENT_USER, LocatePath(printer_name, u"Turn").c_str());
  if (turns == nullptr) return false;
  for (size_t place = 0; place < entries.size(); ++place) {
    const IndexEntry& entry = entries[place];
    const std::u16string name = Digits(static_cast<int>(place));
    if (!PutNumber(turns.get(), name, static_cast<uint32_t>(entry.slot)) || !WriteEntry(printer_name, entry))
      return false;
  }
  return true;
}

/// A queue whose name has backslashes has a key below another; a share of a server is the deepest that there is.
constexpr int kDeepestQueue = 3;

/// Opens a key if it exists; false if that can't be read now.
bool OpenIfThere(const std::u16string& path, UniqueKey* key) {
  DWORD status = kErrorSuccess;
  *key = platform::OpenKey(HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ, &status);
  return status == kErrorSuccess || status == kErrorFileNotFound;
}

/// Adds the names of the queues at and below `name` that have a list, as their keys have them. False if the store can't
/// be read now.
bool AddQueuesBelow(const std::u16string& name, int depth, std::vector<std::u16string>* names) {
  UniqueKey key;
  if (!name.empty()) {
    if (!OpenIfThere(BasePath(name), &key)) return false;
    if (key != nullptr) names->push_back(name);
  }
  if (key != nullptr || depth == kDeepestQueue) return true;
  if (!OpenIfThere(BuildUserKey(name), &key)) return false;
  std::array<char16_t, 256> part;
  for (DWORD i = 0; key != nullptr; ++i) {
    auto length = static_cast<DWORD>(part.size());
    const DWORD status = platform::RegEnumKeyExW(key.get(), i, part.data(), &length);
    if (status == kErrorMoreData) continue;
    if (status != kErrorSuccess) return status == platform::kErrorNoMoreItems;
    std::u16string below = name.empty() ? u"" : name + u'\\';
    if (!AddQueuesBelow(below.append(part.data(), length), depth + 1, names)) return false;
  }
  return true;
}

constexpr const char16_t* kStartFile = u"Start File";

const char16_t* NameOf(LastFolder which) {
  return which == LastFolder::kSaved ? u"UsetSave SaveFile" : u"UsetEdit LoadFile";
}

}  // namespace

bool ReadLibraryIndex(std::u16string_view printer_name, LibraryIndex* index) {
  *index = {};
  // Another process may be writing the list: one look sees all of the old one or all of the new one.
  platform::RegistryBatch look(HKEY_CURRENT_USER);
  const bool read = ReadDriver(printer_name, index) && ReadEntries(printer_name, index);
  look.Keep();  // a look must never withdraw a batch around it
  return read;
}

bool OtherListsOf(std::u16string_view printer_name, const FileLocation& location, std::vector<std::u16string>* names) {
  const std::u16string own = BasePath(printer_name);
  platform::RegistryBatch look(HKEY_CURRENT_USER);
  std::vector<std::u16string> queues;
  bool known = AddQueuesBelow({}, 0, &queues);
  for (const std::u16string& name : queues) {
    LibraryIndex index;
    if (SameFolded(BasePath(name), own)) continue;
    known = ReadEntries(name, &index) && known;
    const auto is_it = [&](const IndexEntry& entry) { return SameLocation(entry.location, location); };
    if (std::ranges::any_of(index.entries, is_it)) names->push_back(name);
  }
  look.Keep();
  return known;
}

bool WriteLibraryIndex(std::u16string_view printer_name, const LibraryIndex& index) {
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  return batch.open() && index.driver && WriteDriver(printer_name, *index.driver) &&
         WriteEntries(printer_name, index.entries) && batch.Keep();
}

bool NoteUnfinishedFiles(std::u16string_view printer_name, const std::vector<FileLocation>& files) {
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  const DWORD dropped = platform::RegDeleteKeyW(HKEY_CURRENT_USER, LocatePath(printer_name, kUnfinished).c_str());
  if (dropped != kErrorSuccess && dropped != kErrorFileNotFound) return false;
  if (files.empty()) return batch.Keep();
  const UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, LocatePath(printer_name, kUnfinished).c_str());
  if (key == nullptr) return false;
  for (size_t i = 0; i < std::min<size_t>(files.size(), kLibraryCapacity); ++i) {
    const std::u16string number = Digits(static_cast<int>(i));
    if (!PutText(key.get(), (u"Path" + number).c_str(), files[i].folder) ||
        !PutText(key.get(), (u"Name" + number).c_str(), files[i].name))
      return false;
  }
  return batch.Keep();
}

std::vector<FileLocation> ReadUnfinishedFiles(std::u16string_view printer_name) {
  KeyReading key(LocatePath(printer_name, kUnfinished));
  std::vector<FileLocation> files;
  while (key.exists() && files.size() < kLibraryCapacity) {
    const std::u16string number = Digits(static_cast<int>(files.size()));
    FileLocation file;
    file.folder = key.Text((u"Path" + number).c_str(), kFolderLength);
    file.name = key.Text((u"Name" + number).c_str(), kLibraryNameLength);
    if (file.folder.empty() || file.name.empty()) break;
    files.push_back(std::move(file));
  }
  return files;
}

std::u16string ReadLastFolder(std::u16string_view printer_name, LastFolder which) {
  return KeyReading(BasePath(printer_name)).Text(NameOf(which), kFolderLength);
}

bool WriteLastFolder(std::u16string_view printer_name, LastFolder which, std::u16string_view folder) {
  const UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, BasePath(printer_name).c_str());
  return key != nullptr && PutText(key.get(), NameOf(which), folder);
}

std::u16string ReadStartFile() {
  return KeyReading(BuildUserKey({})).Text(kStartFile, kFolderLength + kLibraryNameLength + kExtensionLength);
}

bool WriteStartFile(std::u16string_view path) {
  const UniqueKey key = platform::CreateKey(HKEY_CURRENT_USER, BuildUserKey({}).c_str());
  return key != nullptr && PutText(key.get(), kStartFile, path);
}

}  // namespace heron

#include "forms/temp_files.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/api/files.h"
#include "platform/api/handles.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using namespace platform;

constexpr char16_t kRecord[] = u"Fax Cover Sheet";
constexpr char16_t kCountKey[] = u"Tempfile Count";
constexpr char16_t kNameKey[] = u"Tempfile Name";
constexpr char16_t kCountValue[] = u"0";

std::u16string ValueName(uint32_t number) {
  return ExpandText(u"%u", {int64_t{number}});
}

/// Whether this is a name that MakeTempFile can have made.
bool IsTempFileName(std::u16string_view name) {
  constexpr std::u16string_view kEnding = u".tmp";
  constexpr size_t kPrefixLength = 3;
  const bool known =
      name.starts_with(kCoverPrefix) || name.starts_with(kLastCoverPrefix) || name.starts_with(kSpoolPrefix);
  if (!known || !name.ends_with(kEnding) || name.size() <= kPrefixLength + kEnding.size()) return false;
  name.remove_prefix(kPrefixLength);
  name.remove_suffix(kEnding.size());
  return name.size() <= 4 && name.find_first_not_of(u"0123456789abcdef") == std::u16string_view::npos;
}

UniqueKey OpenRecord(std::u16string_view printer_name, const char16_t* part) {
  return OpenKey(HKEY_CURRENT_USER, BuildUserKey(printer_name, kRecord, part).c_str(), KEY_READ);
}

uint32_t RecordedCount(std::u16string_view printer_name) {
  const UniqueKey key = OpenRecord(printer_name, kCountKey);
  uint32_t count = 0;
  DWORD type = 0;
  DWORD size = sizeof count;
  const bool known = key != nullptr &&
                     RegQueryValueExW(key.get(), kCountValue, &type, reinterpret_cast<uint8_t*>(&count), &size) == 0 &&
                     type == REG_DWORD && size == sizeof count;
  return known ? std::min(count, kTempFileCount) : 0;
}

std::u16string RecordedPath(HKEY names, uint32_t number) {
  std::array<char16_t, kMaxPath> path{};
  DWORD type = 0;
  DWORD size = sizeof path;
  const DWORD status =
      RegQueryValueExW(names, ValueName(number).c_str(), &type, reinterpret_cast<uint8_t*>(path.data()), &size);
  if (status != kErrorSuccess || type != REG_SZ) return {};
  return {path.begin(), std::ranges::find(path, u'\0')};
}

void DeleteRecordPart(std::u16string_view printer_name, const char16_t* part) {
  RegDeleteKeyW(HKEY_CURRENT_USER, BuildUserKey(printer_name, kRecord, part).c_str());
}

/// The whole record; a path that isn't a temporary file of ours isn't part of it.
struct Record {
  std::vector<std::u16string> numbered;
  std::u16string spool;
};

bool IsTempFile(std::u16string_view path) {
  const std::u16string folder = SpoolFolder();
  return !folder.empty() && path.starts_with(folder) && IsTempFileName(path.substr(folder.size()));
}

Record ReadRecord(std::u16string_view printer_name) {
  Record record;
  const UniqueKey names = OpenRecord(printer_name, kNameKey);
  if (names == nullptr) return record;
  const uint32_t count = RecordedCount(printer_name);
  for (uint32_t number = 0; number < count; ++number) {
    std::u16string path = RecordedPath(names.get(), number);
    if (IsTempFile(path)) record.numbered.push_back(std::move(path));
  }
  record.spool = RecordedPath(names.get(), kSpoolFileNumber);
  if (!IsTempFile(record.spool)) record.spool.clear();
  return record;
}

/// Replaces the record; without files there is none.
bool WriteRecord(std::u16string_view printer_name, const Record& record) {
  DeleteRecordPart(printer_name, kNameKey);
  bool written = RecordTempFileCount(printer_name, static_cast<uint32_t>(record.numbered.size()));
  for (uint32_t number = 0; number < record.numbered.size(); ++number)
    written = RecordTempFile(printer_name, number, record.numbered[number]) && written;
  if (!record.spool.empty()) written = RecordTempFile(printer_name, kSpoolFileNumber, record.spool) && written;
  return written;
}

/// Deletes the file; true if it is there all the same, since a job of another process uses it.
bool IsInUse(const std::u16string& path) {
  return !path.empty() && !DeleteTempFile(path) && GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void DropRecord(std::u16string_view printer_name, platform::RegistryBatch& batch) {
  DeleteRecordPart(printer_name, kCountKey);
  DeleteRecordPart(printer_name, kNameKey);
  batch.Keep();
}

}  // namespace

std::u16string SpoolFolder() {
  std::array<char16_t, kMaxPath> folder{};
  const DWORD length = GetSystemDirectoryW(folder.data(), kMaxPath);
  if (length == 0 || length >= kMaxPath) return {};
  std::u16string path(folder.data(), length);
  for (const char16_t* part : {u"spool", u"PRINTERS", u""}) (path += kPathSeparator) += part;
  return path;
}

std::u16string MakeTempFile(const char16_t* prefix) {
  const std::u16string folder = SpoolFolder();
  std::array<char16_t, kMaxPath> name{};
  if (folder.empty() || GetTempFileNameW(folder.c_str(), prefix, 0, name.data()) == 0) return {};
  return name.data();
}

bool DeleteTempFile(std::u16string_view path) {
  if (!IsTempFile(path)) return false;
  return DeleteFileW(std::u16string(path).c_str()) != 0;
}

bool RecordTempFileCount(std::u16string_view printer_name, uint32_t count) {
  if (count == 0) {
    DeleteRecordPart(printer_name, kCountKey);
    return true;
  }
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, BuildUserKey(printer_name, kRecord, kCountKey).c_str());
  return key != nullptr && RegSetValueExW(key.get(), kCountValue, REG_DWORD, reinterpret_cast<const uint8_t*>(&count),
                                          sizeof count) == kErrorSuccess;
}

bool RecordTempFile(std::u16string_view printer_name, uint32_t number, std::u16string_view path) {
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, BuildUserKey(printer_name, kRecord, kNameKey).c_str());
  const std::u16string text(path);
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(char16_t));
  return key != nullptr && RegSetValueExW(key.get(), ValueName(number).c_str(), REG_SZ,
                                          reinterpret_cast<const uint8_t*>(text.c_str()), size) == kErrorSuccess;
}

bool RecordTempFiles(std::u16string_view printer_name, std::span<const std::u16string> paths) {
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  if (!batch.open()) return false;
  Record record = ReadRecord(printer_name);
  if (record.numbered.size() + paths.size() > kTempFileCount) return false;
  record.numbered.insert(record.numbered.end(), paths.begin(), paths.end());
  return WriteRecord(printer_name, record) && batch.Keep();
}

void ForgetTempFiles(std::u16string_view printer_name, std::span<const std::u16string> paths) {
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  if (!batch.open()) return;
  Record record = ReadRecord(printer_name);
  const auto gone = [&](const std::u16string& path) { return std::ranges::count(paths, path) != 0; };
  std::erase_if(record.numbered, gone);
  if (gone(record.spool)) record.spool.clear();
  if (WriteRecord(printer_name, record)) batch.Keep();
}

void DeleteRecordedFiles(std::u16string_view printer_name) {
  platform::RegistryBatch batch(HKEY_CURRENT_USER);
  if (!batch.open()) return;
  Record record = ReadRecord(printer_name);
  if (record.numbered.empty() && record.spool.empty()) return DropRecord(printer_name, batch);
  std::erase_if(record.numbered, [](const std::u16string& path) { return !IsInUse(path); });
  if (!IsInUse(record.spool)) record.spool.clear();
  if (WriteRecord(printer_name, record)) batch.Keep();
}

}  // namespace heron

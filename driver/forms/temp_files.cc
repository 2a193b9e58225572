#include "forms/temp_files.h"

#include <algorithm>
#include <array>

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
  const std::u16string folder = SpoolFolder();
  if (folder.empty() || !path.starts_with(folder) || !IsTempFileName(path.substr(folder.size()))) return false;
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

void ForgetTempFile(std::u16string_view printer_name, uint32_t number) {
  const UniqueKey names = CreateKey(HKEY_CURRENT_USER, BuildUserKey(printer_name, kRecord, kNameKey).c_str());
  if (names != nullptr) RegDeleteValueW(names.get(), ValueName(number).c_str());
}

void ForgetTempFiles(std::u16string_view printer_name) {
  DeleteRecordPart(printer_name, kCountKey);
  DeleteRecordPart(printer_name, kNameKey);
}

void DeleteRecordedFiles(std::u16string_view printer_name) {
  const UniqueKey names = OpenRecord(printer_name, kNameKey);
  if (names == nullptr) return;
  const uint32_t count = RecordedCount(printer_name);
  for (uint32_t number = 0; number < count; ++number) DeleteTempFile(RecordedPath(names.get(), number));
  DeleteTempFile(RecordedPath(names.get(), kSpoolFileNumber));
  ForgetTempFiles(printer_name);
}

}  // namespace heron

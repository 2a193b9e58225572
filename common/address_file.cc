#include "address_file.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "platform/api/files.h"
#include "settings/driver_env.h"

namespace heron::cli {
namespace {

using namespace platform;

constexpr char16_t kPrefix[] = u"vpb";
constexpr size_t kLargest = size_t{1} << 16;

/// Path of the file `*id`; with 0 a new one is made. Empty on failure.
std::u16string PathOf(uint32_t* id) {
  std::array<char16_t, kMaxPath> folder{}, name{};
  const DWORD length = GetTempPathW(kMaxPath, folder.data());
  if (length == 0 || length >= kMaxPath) return {};
  const DWORD number = GetTempFileNameW(folder.data(), kPrefix, *id, name.data());
  if (number == 0) return {};
  *id = number;
  return name.data();
}

Bytes ReadCopy(uint32_t id) {
  constexpr uint32_t kNumberMask = 0xFFFF;
  if ((id & kNumberMask) == 0) return {};
  const std::u16string path = PathOf(&id);
  const HANDLE file =
      path.empty() ? INVALID_HANDLE_VALUE : CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return {};
  Bytes bytes(kLargest);
  DWORD got = 0;
  if (ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got) == 0) got = 0;
  CloseHandle(file);
  bytes.resize(got);
  return bytes;
}

uint32_t FileOf(const Bytes& record) {
  if (record.size() != kEnvSize) return 0;  // a record of another driver, which names no such file
  DriverEnv env;
  std::ranges::copy(record, env.bytes.begin());
  return Get<"faxAddressFileId">(env);
}

}  // namespace

uint32_t MakeAddressCopy(std::span<const uint8_t> bytes) {
  uint32_t id = 0;
  const std::u16string path = PathOf(&id);
  const HANDLE file =
      path.empty() ? INVALID_HANDLE_VALUE : CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
  if (file == INVALID_HANDLE_VALUE) return 0;
  DWORD written = 0;
  const bool whole = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written) != 0;
  CloseHandle(file);
  if (whole && written == bytes.size()) return id;
  DeleteAddressCopy(id);
  return 0;
}

void DeleteAddressCopy(uint32_t id) {
  if (id == 0) return;
  const std::u16string path = PathOf(&id);
  if (!path.empty()) DeleteFileW(path.c_str());
}

SheetRecipients::SheetRecipients(Bytes& record) {
  const uint32_t named = FileOf(record);
  const Bytes bytes = named == 0 ? Bytes() : ReadCopy(named);
  if (bytes.empty() || (id_ = MakeAddressCopy(bytes)) == 0) return;
  DriverEnv env;
  std::ranges::copy(record, env.bytes.begin());
  Set<"faxAddressFileId">(env, id_);
  std::ranges::copy(env.bytes, record.begin());
  named_ = named;
}

void SheetRecipients::Kept(const Bytes& stored) {
  const uint32_t now = FileOf(stored);
  if (now != id_ && now != 0) return;  // another program's record stayed
  DeleteAddressCopy(std::exchange(named_, 0));
  if (now == id_) id_ = 0;
}

}  // namespace heron::cli

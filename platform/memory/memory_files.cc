// Files in memory. Two folders exist; an open file outlives its deletion, as on the host.
#include "platform/memory/memory_files.h"

#include <algorithm>

#include "platform/api/files.h"

namespace heron::platform {
namespace {

constexpr char16_t kTempFolder[] = u"/tmp/heron/";
constexpr char16_t kSystemFolder[] = u"/system";
constexpr char16_t kDocumentsFolder[] = u"/home/user";

class OpenMemoryFile final : public OpenFile {
 public:
  OpenMemoryFile(std::shared_ptr<std::vector<uint8_t>> bytes, bool write, const SYSTEMTIME& written)
      : bytes_(std::move(bytes)), written_(written), write_(write) {}

  DWORD Read(std::span<uint8_t> room, DWORD* read) override {
    const std::lock_guard guard(mutex_);
    const size_t left = bytes_->size() - std::min(at_, bytes_->size());
    const size_t count = std::min(left, room.size());
    std::copy_n(bytes_->data() + at_, count, room.data());
    at_ += count;
    *read = static_cast<DWORD>(count);
    return kErrorSuccess;
  }

  DWORD Write(std::span<const uint8_t> data, DWORD* written) override {
    const std::lock_guard guard(mutex_);
    if (!write_) return kErrorAccessDenied;
    bytes_->resize(std::max(bytes_->size(), at_ + data.size()));
    std::ranges::copy(data, bytes_->data() + at_);
    at_ += data.size();
    *written = static_cast<DWORD>(data.size());
    return kErrorSuccess;
  }

  DWORD Size(uint64_t* size) override {
    const std::lock_guard guard(mutex_);
    *size = bytes_->size();
    return kErrorSuccess;
  }

  DWORD WriteTime(SYSTEMTIME* time) override {
    *time = written_;
    return kErrorSuccess;
  }

 private:
  std::mutex mutex_;
  std::shared_ptr<std::vector<uint8_t>> bytes_;
  const SYSTEMTIME written_;
  size_t at_ = 0;
  bool write_;
};

}  // namespace

std::u16string MemoryFiles::TempFolder() {
  return kTempFolder;
}

std::u16string MemoryFiles::SystemFolder() {
  return kSystemFolder;
}

std::u16string MemoryFiles::DocumentsFolder() {
  return kDocumentsFolder;
}

bool MemoryFiles::MayChange(std::u16string_view path) const {
  const std::u16string folder(path.substr(0, std::min(path.rfind(kPathSeparator), path.size())));
  return writable && !IsAway(path) && !protectedPaths.contains(std::u16string(path)) &&
         !protectedPaths.contains(folder);
}

bool MemoryFiles::IsAway(std::u16string_view path) const {
  return awayFolders.contains(std::u16string(path.substr(0, std::min(path.rfind(kPathSeparator), path.size()))));
}

DWORD MemoryFiles::CreateNew(std::u16string_view path) {
  const std::lock_guard guard(mutex_);
  if (!MayChange(path)) return kErrorAccessDenied;
  const bool made = content.try_emplace(std::u16string(path), std::make_shared<std::vector<uint8_t>>()).second;
  return made ? kErrorSuccess : kErrorFileExists;
}

bool MemoryFiles::CanMakeFiles(std::u16string_view folder) {
  const std::lock_guard guard(mutex_);
  const std::u16string file = std::u16string(folder) + kPathSeparator + u'*';
  return MayChange(file) && !IsAway(file);
}

DWORD MemoryFiles::Open(std::u16string_view path, bool write, bool create, std::shared_ptr<OpenFile>* file) {
  const std::lock_guard guard(mutex_);
  if (IsAway(path)) return kErrorPathNotFound;
  if ((write || create) && !MayChange(path)) return kErrorAccessDenied;
  auto found = content.find(std::u16string(path));
  if (found == content.end()) {
    if (!create) return kErrorFileNotFound;
    found = content.emplace(std::u16string(path), std::make_shared<std::vector<uint8_t>>()).first;
  }
  static constexpr SYSTEMTIME kFirstMoment = {.wYear = 2026,
                                              .wMonth = 1,
                                              .wDayOfWeek = 4,
                                              .wDay = 1,
                                              .wHour = 0,
                                              .wMinute = 0,
                                              .wSecond = 0,
                                              .wMilliseconds = 0};
  const auto time = written.find(found->first);
  auto opened =
      std::make_shared<OpenMemoryFile>(found->second, write, time == written.end() ? kFirstMoment : time->second);
  if (create) found->second->clear();
  *file = std::move(opened);
  return kErrorSuccess;
}

DWORD MemoryFiles::Delete(std::u16string_view path) {
  const std::lock_guard guard(mutex_);
  if (!MayChange(path)) return kErrorAccessDenied;
  return content.erase(std::u16string(path)) == 1 ? kErrorSuccess : kErrorFileNotFound;
}

DWORD MemoryFiles::Attributes(std::u16string_view path, DWORD* attributes) {
  const std::lock_guard guard(mutex_);
  if (IsAway(path)) return kErrorPathNotFound;
  if (!content.contains(std::u16string(path))) return kErrorFileNotFound;
  *attributes = MayChange(path) ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_READONLY;
  return kErrorSuccess;
}

DWORD MemoryFiles::Replace(std::u16string_view path, std::span<const uint8_t> data) {
  const std::lock_guard guard(mutex_);
  if (!MayChange(path)) return kErrorAccessDenied;
  content.insert_or_assign(std::u16string(path), std::make_shared<std::vector<uint8_t>>(data.begin(), data.end()));
  return kErrorSuccess;
}

}  // namespace heron::platform

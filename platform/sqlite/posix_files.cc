// Files through POSIX calls. A link is never followed and what isn't a regular file is never opened, so that a file
// planted in a folder that others may write does no harm. Opening doesn't wait: a pipe without a writer would never
// open.
#include "platform/sqlite/posix_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

#include "platform/api/files.h"
#include "platform/api/text.h"
#include "platform/sqlite/machine.h"
#include "platform/sqlite/notices.h"
#include "platform/sqlite/store.h"

namespace heron::store {
namespace {

namespace fs = std::filesystem;
using namespace platform;

constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kOwnersFolder = 0700;
constexpr mode_t kAnybodyWrites = 0222;

DWORD StatusOf(int error) {
  switch (error) {
    case 0:
      return kErrorSuccess;
    case ENOENT:
      return kErrorFileNotFound;
    case ENOTDIR:
      return kErrorPathNotFound;
    case EEXIST:
      return kErrorFileExists;
    case ENOSPC:
    case EDQUOT:
      return kErrorDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
    case ELOOP:
    case EISDIR:
      return kErrorAccessDenied;
    case EIO:
      return kErrorWriteFault;
    default:
      return kErrorGenFailure;
  }
}

class OpenPosixFile final : public OpenFile {
 public:
  OpenPosixFile() = default;
  ~OpenPosixFile() override {
    if (fd_ >= 0) close(fd_);
  }
  OpenPosixFile(const OpenPosixFile&) = delete;
  OpenPosixFile& operator=(const OpenPosixFile&) = delete;

  /// 0, or the errno of the failure.
  int Open(const std::string& path, int flags, bool empty) {
    fd_ = open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, kOwnerOnly);
    struct stat info;
    if (fd_ < 0 || fstat(fd_, &info) != 0) return errno;
    // Checked on the open file: a check of the path could be outrun by a change of the folder.
    if (!S_ISREG(info.st_mode)) return EACCES;
    // Emptied after the check, not by O_TRUNC, so that a refused file isn't changed.
    return empty && ftruncate(fd_, 0) != 0 ? errno : 0;
  }

  DWORD Read(std::span<uint8_t> room, DWORD* read_bytes) override {
    size_t done = 0;
    while (done < room.size()) {
      const ssize_t got = read(fd_, room.data() + done, room.size() - done);
      if (got == 0) break;
      if (got < 0 && errno != EINTR) return StatusOf(errno);
      if (got > 0) done += static_cast<size_t>(got);
    }
    *read_bytes = static_cast<DWORD>(done);
    return kErrorSuccess;
  }

  DWORD Write(std::span<const uint8_t> data, DWORD* written) override {
    size_t done = 0;
    while (done < data.size()) {
      const ssize_t put = write(fd_, data.data() + done, data.size() - done);
      if (put < 0 && errno != EINTR) return StatusOf(errno);
      if (put > 0) done += static_cast<size_t>(put);
      *written = static_cast<DWORD>(done);
    }
    return kErrorSuccess;
  }

  DWORD Size(uint64_t* size) override {
    struct stat info;
    if (fstat(fd_, &info) != 0) return StatusOf(errno);
    *size = static_cast<uint64_t>(info.st_size);
    return kErrorSuccess;
  }

  DWORD WriteTime(platform::SYSTEMTIME* time) override {
    struct stat info;
    if (fstat(fd_, &info) != 0) return StatusOf(errno);
    return ToLocalTime(info.st_mtim, time) ? kErrorSuccess : platform::kErrorGenFailure;
  }

 private:
  int fd_ = -1;
};

}  // namespace

/// The user's own folder of this name in the home, made if it is missing; empty if anybody else can enter it.
fs::path PosixFiles::PrivateFolder(const char* name) {
  const fs::path folder = home_ / (name + std::to_string(geteuid()));
  std::error_code ignored;
  fs::create_directories(home_, ignored);
  struct stat info;
  // The home may be shared: a folder of this name that another user made must not receive our files.
  const bool there = mkdir(folder.c_str(), kOwnersFolder) == 0 || errno == EEXIST;
  const bool ours = there && lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid() &&
                    (info.st_mode & 0777) == kOwnersFolder;
  return ours ? folder : fs::path();
}

std::u16string PosixFiles::TempFolder() {
  const fs::path folder = PrivateFolder("temp-");
  return folder.empty() ? std::u16string() : FromUtf8((folder / "").native());
}

std::u16string PosixFiles::SystemFolder() {
  const fs::path folder = PrivateFolder("system-");
  std::error_code error;
  if (!folder.empty()) fs::create_directories(folder / "spool" / "PRINTERS", error);
  return folder.empty() || error ? std::u16string() : FromUtf8(folder.native());
}

std::u16string PosixFiles::DocumentsFolder() {
  std::error_code error;
  if (!documents_.empty()) fs::create_directories(documents_, error);
  return error ? std::u16string() : FromUtf8(documents_.native());
}

std::u16string PosixFiles::DriverFolder() {
  return FromUtf8((machine_home_ / kDriverFolder / "").native());
}

uint32_t PosixFiles::NumberHint() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

DWORD PosixFiles::CreateNew(std::u16string_view path) {
  const int fd = open(ToUtf8(path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly);
  if (fd < 0) return StatusOf(errno);
  const std::string name = ToUtf8(path);
  if (!IsSpoolFile(name) || flock(fd, LOCK_EX | LOCK_NB) != 0) {
    close(fd);
    return kErrorSuccess;
  }
  const std::lock_guard guard(mutex_);
  held_.emplace(name, fd);
  return kErrorSuccess;
}

bool PosixFiles::CanMakeFiles(std::u16string_view folder) {
  const std::string name = ToUtf8(folder);
  // A file without a name needs no clean-up. Some file systems don't know such files.
  const int fd = open(name.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kOwnerOnly);
  if (fd >= 0) return close(fd) == 0;
  const bool unknown = errno == EOPNOTSUPP || errno == EISDIR;
  return unknown && faccessat(AT_FDCWD, name.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

DWORD PosixFiles::Open(std::u16string_view path, bool write, bool create, std::shared_ptr<OpenFile>* file) {
  auto opened = std::make_shared<OpenPosixFile>();
  const int flags = (write ? O_RDWR : O_RDONLY) | (create ? O_CREAT : 0);
  const std::string name = ToUtf8(path);
  if (const int error = opened->Open(name, flags, create); error != 0) {
    // ENOENT doesn't say whether the file or its folder is missing; callers report the two differently.
    const bool folder_is_there = error != ENOENT || access(fs::path(name).parent_path().c_str(), F_OK) == 0;
    return folder_is_there ? StatusOf(error) : kErrorPathNotFound;
  }
  *file = std::move(opened);
  return kErrorSuccess;
}

PosixFiles::~PosixFiles() {
  for (const auto& [path, fd] : held_) close(fd);
}

bool PosixFiles::IsSpoolFile(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  return folder.filename() == "PRINTERS" && folder.parent_path().filename() == "spool" &&
         folder.parent_path().parent_path() == PrivateFolder("system-");
}

/// Ends this process's own lock; kErrorAccessDenied if another process holds one.
DWORD PosixFiles::Release(const std::string& path) {
  const std::lock_guard guard(mutex_);
  if (const auto held = held_.find(path); held != held_.end()) {
    close(held->second);
    held_.erase(held);
    return kErrorSuccess;
  }
  const int fd = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return kErrorSuccess;  // what is in the way shows when it is deleted
  const bool free = flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  close(fd);
  return free ? kErrorSuccess : kErrorAccessDenied;
}

DWORD PosixFiles::Delete(std::u16string_view path) {
  const std::string name = ToUtf8(path);
  if (IsSpoolFile(name)) {
    if (const DWORD status = Release(name); status != kErrorSuccess) return status;
  }
  return unlink(name.c_str()) == 0 ? kErrorSuccess : StatusOf(errno);
}

DWORD PosixFiles::Attributes(std::u16string_view path, DWORD* attributes) {
  const std::string name = ToUtf8(path);
  struct stat info;
  if (lstat(name.c_str(), &info) != 0) return StatusOf(errno);
  DWORD bits = 0;
  if (name.compare(name.rfind('/') + 1, 1, ".") == 0) bits |= FILE_ATTRIBUTE_HIDDEN;
  if (S_ISDIR(info.st_mode))
    bits |= FILE_ATTRIBUTE_DIRECTORY;
  else if (!S_ISREG(info.st_mode))
    bits |= FILE_ATTRIBUTE_SYSTEM;
  // The system lets an administrator write what its owner protected; the driver doesn't.
  if ((info.st_mode & kAnybodyWrites) == 0 || access(name.c_str(), W_OK) != 0) bits |= FILE_ATTRIBUTE_READONLY;
  *attributes = bits == 0 ? FILE_ATTRIBUTE_NORMAL : bits;
  return kErrorSuccess;
}

DWORD PosixFiles::Replace(std::u16string_view path, std::span<const uint8_t> data) {
  const std::string name = ToUtf8(path);
  struct stat info;
  if (lstat(name.c_str(), &info) == 0) {
    // A new file would take the place of one that its owner protected.
    if (!S_ISREG(info.st_mode) || access(name.c_str(), W_OK) != 0) return kErrorAccessDenied;
  }
  const DWORD status = StatusOf(ReplaceFileBytes(name, data));
  if (status != kErrorSuccess) NoteFailure(name, status);
  return status;
}

}  // namespace heron::store

// Whole files, read bounded and replaced as one (store.h).

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "platform/sqlite/leftovers.h"
#include "platform/sqlite/store.h"

namespace heron::store {
namespace {

namespace fs = std::filesystem;

class UniqueFd {
 public:
  explicit UniqueFd(int fd) : fd_(fd) {}
  ~UniqueFd() { Close(); }
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;

  int Get() const { return fd_; }
  void Take(int fd) {
    Close();
    fd_ = fd;
  }
  int Close() {
    const int fd = std::exchange(fd_, -1);
    return fd >= 0 && close(fd) != 0 ? errno : 0;
  }

 private:
  int fd_;
};

/// 0 for a regular file, else why it isn't one.
int CheckRegular(const struct stat& info) {
  if (S_ISREG(info.st_mode)) return 0;
  return S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
}

int WriteAll(int fd, std::span<const uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return errno;
    if (written > 0) bytes = bytes.subspan(static_cast<size_t>(written));
  }
  return fsync(fd) == 0 ? 0 : errno;
}

int FlushFolder(const fs::path& folder) {
  const UniqueFd fd(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (fd.Get() < 0) return errno;
  // Some file systems don't flush folders and say EINVAL.
  return fsync(fd.Get()) == 0 || errno == EINVAL ? 0 : errno;
}

/// A file being written beside its target; it goes again unless it is given its name.
class FileBeside {
 public:
  explicit FileBeside(const fs::path& target) {
    SweepUnfinishedOnce(target.parent_path());
    int fd = -1;
    error_ = MakeUnfinishedFile(target.parent_path(), &name_, &fd);
    fd_.Take(fd);
    exists_ = error_ == 0;
  }
  ~FileBeside() {
    if (exists_) unlink(name_.c_str());
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  int Fill(std::span<const uint8_t> bytes) {
    if (error_ == 0) error_ = WriteAll(fd_.Get(), bytes);
    return error_;  // stays open, and so locked, until it has its name
  }
  int Rename(const fs::path& target) {
    if (rename(name_.c_str(), target.c_str()) != 0) return errno;
    exists_ = false;
    return 0;
  }

 private:
  std::string name_;
  UniqueFd fd_{-1};
  bool exists_ = false;
  int error_ = 0;
};

}  // namespace

int ReadFileBytes(const fs::path& path, size_t limit, std::vector<uint8_t>* bytes) {
  // Without waiting: opening a pipe without a writer would never return.
  const UniqueFd fd(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat info;
  if (fd.Get() < 0 || fstat(fd.Get(), &info) != 0) return errno;
  if (const int error = CheckRegular(info); error != 0) return error;
  if (static_cast<uint64_t>(info.st_size) > limit) return EFBIG;  // before anything is allocated
  std::vector<uint8_t> read_bytes;
  for (;;) {
    // One byte more than the limit detects a file that grows meanwhile.
    const size_t held = read_bytes.size();
    read_bytes.resize(std::min(limit - held, size_t{1} << 16) + held + 1);
    const ssize_t got = read(fd.Get(), read_bytes.data() + held, read_bytes.size() - held);
    if (got < 0 && errno != EINTR) return errno;
    read_bytes.resize(held + static_cast<size_t>(std::max<ssize_t>(got, 0)));
    if (read_bytes.size() > limit) return EFBIG;
    if (got == 0) break;
  }
  *bytes = std::move(read_bytes);
  return 0;
}

int ReplaceFileBytes(const fs::path& path, std::span<const uint8_t> bytes) {
  fs::path target = path;
  struct stat info;
  if (stat(path.c_str(), &info) == 0) {
    if (const int error = CheckRegular(info); error != 0) return error;
    // A link keeps pointing at its file, which is what is replaced.
    std::error_code error;
    target = fs::canonical(path, error);
    if (error) return error.value();
  }
  if (!target.has_parent_path()) target = fs::path(".") / target;
  FileBeside beside(target);
  if (const int error = beside.Fill(bytes); error != 0) return error;
  if (const int error = beside.Rename(target); error != 0) return error;
  return FlushFolder(target.parent_path());
}

}  // namespace heron::store

// Locks unfinished files and removes those of killed programs (leftovers.h).

#include "platform/sqlite/leftovers.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <set>
#include <string_view>

namespace heron::store {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFileStem = ".heron-";
constexpr std::string_view kFolderStem = ".heron-job-";
constexpr std::string_view kPlaces = "XXXXXX";  ///< what mkstemp and mkdtemp fill with letters and digits

/// Sweeping deletes, so a name must match exactly what mkstemp makes, not only its prefix.
bool IsNameOf(std::string_view name, std::string_view stem) {
  const auto is_filled = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  };
  return name.size() == stem.size() + kPlaces.size() && name.starts_with(stem) &&
         std::ranges::all_of(name.substr(stem.size()), is_filled);
}

int OpenFolder(const std::string& path) {
  return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

/// Locks what was just made. False if a sweep was there between its making and now and has taken it away. A file system
/// without locks doesn't sweep either.
bool LockMade(int fd, const std::string& path) {
  while (flock(fd, LOCK_EX) != 0 && errno == EINTR) {
  }
  struct stat info;
  return lstat(path.c_str(), &info) == 0;
}

/// Whether `fd`, now locked, is still what bears this name and belongs to this user.
bool IsOurs(int fd, const fs::path& path) {
  struct stat opened;
  struct stat named;
  return fstat(fd, &opened) == 0 && lstat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino &&
         opened.st_dev == named.st_dev && opened.st_uid == geteuid();
}

void SweepOne(const fs::path& path, bool is_folder) {
  const int fd =
      is_folder ? OpenFolder(path.native()) : open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return;
  // The kernel drops the lock of a killed program; a running maker still holds it.
  if (flock(fd, LOCK_EX | LOCK_NB) == 0 && IsOurs(fd, path)) {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  close(fd);
}

}  // namespace

int MakeUnfinishedFile(const fs::path& folder, std::string* path, int* fd) {
  for (;;) {
    std::string name = (folder / kFileStem).string().append(kPlaces);
    const int made = mkostemp(name.data(), O_CLOEXEC);
    if (made < 0) return errno;
    if (LockMade(made, name)) {
      *path = std::move(name);
      *fd = made;
      return 0;
    }
    close(made);
  }
}

int UnfinishedFolder::Make(const fs::path& parent) {
  SweepUnfinished(parent);
  for (;;) {
    std::string name = (parent / kFolderStem).string().append(kPlaces);
    if (mkdtemp(name.data()) == nullptr) return errno;
    fd_ = OpenFolder(name);
    // One that can't be opened was swept already.
    if (fd_ >= 0 && LockMade(fd_, name)) {
      path_ = name;
      return 0;
    }
    if (fd_ < 0 && errno != ENOENT) return errno;
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
  }
}

UnfinishedFolder::~UnfinishedFolder() {
  if (fd_ >= 0) close(fd_);
}

void SweepUnfinished(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().native();
    const bool is_folder = IsNameOf(name, kFolderStem);
    if (is_folder || IsNameOf(name, kFileStem)) SweepOne(entry->path(), is_folder);
  }
}

void SweepUnfinishedOnce(const fs::path& folder) {
  static std::mutex& mutex = *new std::mutex;
  static std::set<fs::path>& swept = *new std::set<fs::path>;
  {
    const std::lock_guard guard(mutex);
    if (!swept.insert(folder).second) return;
  }
  SweepUnfinished(folder);
}

}  // namespace heron::store

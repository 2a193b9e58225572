// Makes and publishes a job's folder (job_folder.h).

#include "job_folder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "common/command.h"
#include "platform/sqlite/store.h"

namespace heron::spool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const fs::path& path, int error) {
  const int code = error == ENOENT                                       ? cli::kNotFound
                   : error == EACCES || error == EPERM || error == EROFS ? cli::kNotPermitted
                                                                         : cli::kFailed;
  throw cli::Failure(code, "can't write the folder \"" + cli::Printable(path.string()) + "\": " + std::strerror(error));
}

void FlushFile(const fs::path& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

}  // namespace

JobFolder::JobFolder(const std::string& place) : place_(fs::absolute(place).lexically_normal()) {
  if (!place_.has_filename()) place_ = place_.parent_path();  // "job/" is "job"
  std::error_code error;
  const fs::file_status status = fs::symlink_status(place_, error);  // a link isn't replaced by the folder
  const bool there = fs::exists(status);
  if (there && (!fs::is_directory(status) || !fs::is_empty(place_, error))) {
    throw cli::Failure(cli::kFailed, '"' + cli::Printable(place) +
                                         "\" is there already and isn't an empty folder; "
                                         "name another one with --out");
  }
  // Beside its place, so that the rename stays on one file system.
  if (const int failed = unfinished_.Make(place_.parent_path()); failed != 0) Fail(place_, failed);
  making_ = unfinished_.path();
}

JobFolder::~JobFolder() {
  std::error_code error;
  if (!making_.empty()) fs::remove_all(making_, error);
}

void JobFolder::Write(const std::string& name, std::span<const uint8_t> bytes) const {
  if (const int failed = store::ReplaceFileBytes(making_ / name, bytes); failed != 0) Fail(place_, failed);
}

void JobFolder::Remove(const std::string& name) const {
  std::error_code error;
  if (!fs::remove(making_ / name, error) || error) Fail(place_, error.value());
}

void JobFolder::Keep() {
  // Contents before the name: after a power failure the folder is there with all its files, or not at all.
  for (const fs::directory_entry& file : fs::directory_iterator(making_)) FlushFile(file.path());
  FlushFile(making_);
  // Takes the place of an empty folder too, and of nothing else.
  if (rename(making_.c_str(), place_.c_str()) != 0) Fail(place_, errno);
  making_.clear();
  FlushFile(place_.parent_path());
}

}  // namespace heron::spool

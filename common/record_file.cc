// Reading and writing records as files (record_file.h).

#include "record_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>

#include "command.h"
#include "platform/api/registry.h"
#include "platform/sqlite/store.h"
#include "settings/driver_env.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;

constexpr size_t kLargestRecord = 64 * 1024;
constexpr size_t kSmallestRecord = 72;  ///< up to dmDriverExtra, the last field that a record's size depends on

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::string Named(const std::string& path) {
  return path == "-" ? "standard input" : '"' + Printable(path) + '"';
}

[[noreturn]] void FailFile(const std::string& path, const char* doing, int error) {
  const int code = error == ENOENT                                       ? kNotFound
                   : error == EACCES || error == EPERM || error == EROFS ? kNotPermitted
                                                                         : kFailed;
  throw Failure(code, "can't " + std::string(doing) + ' ' + Named(path) + ": " + std::strerror(error));
}

/// At most one byte more than a record may have.
Bytes ReadBounded(const std::string& path) {
  const File file =
      path == "-" ? File(stdin, [](std::FILE*) { return 0; }) : File(std::fopen(path.c_str(), "rb"), std::fclose);
  if (file == nullptr) FailFile(path, "read", errno);
  Bytes bytes(kLargestRecord + 1);  // a device or pipe has no size to ask for
  errno = 0;
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  if (std::ferror(file.get()) != 0) FailFile(path, "read", errno);
  return bytes;
}

[[noreturn]] void Refuse(const std::string& path, const std::string& why) {
  throw Failure(kFailed, Named(path) + " isn't a settings record: " + why);
}

/// Writes through to something that must not be replaced by a file.
void WriteThrough(const std::string& path, const Bytes& bytes) {
  const File file(std::fopen(path.c_str(), "wb"), std::fclose);
  if (file == nullptr) FailFile(path, "write", errno);
  errno = 0;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() || std::fflush(file.get()) != 0) {
    FailFile(path, "write", errno);
  }
}

}  // namespace

Bytes ReadRecord(const std::string& path) {
  Bytes bytes = ReadBounded(path);
  const std::string held = "it holds " + std::to_string(bytes.size()) + " bytes";
  if (bytes.size() > kLargestRecord) Refuse(path, "it is longer than 64 KiB");
  if (bytes.size() < kSmallestRecord) Refuse(path, held + ", fewer than the 72 that contain its size");
  const ForeignEnv record(bytes.data());
  if (record.PublicSize() < kSmallestRecord) {
    Refuse(path,
           "it declares a public part (dmSize) of " + std::to_string(record.PublicSize()) + " bytes, fewer than 72");
  }
  if (record.Size() != bytes.size()) {
    Refuse(path, held + ", but declares dmSize " + std::to_string(record.PublicSize()) + " and dmDriverExtra " +
                     std::to_string(record.PrivateSize()) + ", together " + std::to_string(record.Size()) +
                     (record.Size() > bytes.size() ? "; it is cut short" : "; it has bytes behind its end"));
  }
  return bytes;
}

void ReplaceFile(const std::string& path, const Bytes& bytes) {
  if (const int failed = store::ReplaceFileBytes(fs::absolute(path), bytes); failed != 0)
    FailFile(path, "write", failed);
}

void WriteRecord(const std::string& path, const Bytes& bytes) {
  if (path == "-") {
    if (isatty(STDOUT_FILENO) != 0)
      throw Failure(kUsage, "a record isn't text and may hold passwords; name a file or redirect the output");
    std::cout.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return;
  }
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) return WriteThrough(path, bytes);
  // A link keeps pointing at its file, which is what gets replaced.
  ReplaceFile(fs::exists(status) ? fs::canonical(path).string() : path, bytes);
}

Bytes OwnRecord(const std::string& printer) {
  const fs::path path = store::WorkingRecordPath(printer);
  std::error_code error;
  return fs::exists(path, error) ? ReadRecord(path.string()) : Bytes();
}

UserLock::UserLock() {
  const platform::DWORD status = platform::RegBeginBatch(platform::HKEY_CURRENT_USER);
  if (status != platform::kErrorSuccess) FailWith(status, "write to the user's store");
}

UserLock::~UserLock() {
  if (open_) platform::RegEndBatch(platform::HKEY_CURRENT_USER, 0);
}

void UserLock::Keep() {
  open_ = false;
  const platform::DWORD status = platform::RegEndBatch(platform::HKEY_CURRENT_USER, 1);
  if (status != platform::kErrorSuccess) FailWith(status, "write to the user's store");
}

bool KeepOwnRecord(const std::string& printer, const Bytes* seen, const Bytes& record) {
  const fs::path path = store::WorkingRecordPath(printer);
  UserLock lock;  // compare and replace are one step for all programs that keep records
  const bool current = seen == nullptr || OwnRecord(printer) == *seen;
  if (current) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    fs::permissions(path.parent_path(), fs::perms::owner_all, error);
    ReplaceFile(path.string(), record);
  }
  lock.Keep();  // also where nothing was written: a lock around this one mustn't be withdrawn
  return current;
}

bool KeepConfirmedRecord(const std::string& printer, const Bytes* seen, const Bytes& record, bool touched,
                         const std::function<bool()>& asks_to_replace) {
  Bytes now;
  while (!KeepOwnRecord(printer, seen, record)) {
    if (!touched) return true;
    now = OwnRecord(printer);  // before the question: what changes while it is open is asked about again
    seen = &now;
    if (!asks_to_replace()) return false;
  }
  return true;
}

}  // namespace heron::cli

// Opening, making and repairing a tree's file (tree_file.h).

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "platform/sqlite/notices.h"
#include "platform/sqlite/tree_file.h"

namespace heron::store {

using namespace platform;

namespace {

namespace fs = std::filesystem;

// Never renumbered: they identify our files and their format permanently.
constexpr int64_t kApplicationId = 0x48726E31;
constexpr int64_t kFormat = 1;
constexpr int64_t kLastFormat = 99;  ///< no release will ever count this far: a larger number is damage

/// Up to this size a file is checked whole when it is opened, which takes some milliseconds.
constexpr off_t kCheckedSize = off_t{1} << 20;

/// Where SQLite's header keeps the versions that it needs for writing and reading, and the largest that we write (2, a
/// write-ahead log).
constexpr sqlite3_int64 kVersionsAt = 18;
constexpr uint8_t kLargestVersion = 2;

// Ids are never given twice (AUTOINCREMENT), and begin at random, so that an id from before a repair finds no other
// key. The root has 0. Values lie in their key's order, so that reading one costs a single descent.
constexpr char kSchema[] =
    "CREATE TABLE keys(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL,"
    " path TEXT NOT NULL COLLATE NOCASE UNIQUE);"
    "CREATE INDEX keys_by_parent ON keys(parent);"
    "CREATE TABLE vals(key INTEGER NOT NULL, name TEXT NOT NULL COLLATE NOCASE, type INTEGER NOT NULL,"
    " data BLOB NOT NULL, PRIMARY KEY(key, name)) WITHOUT ROWID;"
    "INSERT INTO keys(id, parent, path) VALUES(0, -1, '');"
    "UPDATE sqlite_sequence SET seq = (random() & 0x7FFFFFFF) WHERE name = 'keys';"
    "PRAGMA application_id = 1215458865;"
    "PRAGMA user_version = 1;";
static_assert(kApplicationId == 1215458865);

/// By the order of TreeFile::Sql.
constexpr const char* kStatements[] = {
    "SELECT id FROM keys WHERE path = ?1",
    "SELECT 1 FROM keys WHERE id = ?1",
    "SELECT path FROM keys WHERE parent = ?1 ORDER BY id LIMIT 1 OFFSET ?2",
    "INSERT INTO keys(id, parent, path) SELECT max(seq, ?3) + 1, ?1, ?2 FROM sqlite_sequence WHERE name = 'keys'",
    "DELETE FROM keys WHERE id = ?1",
    "DELETE FROM vals WHERE key = ?1",
    "SELECT type, data FROM vals WHERE key = ?1 AND name = ?2",
    "SELECT name, type, data FROM vals WHERE key = ?1",
    "SELECT k.path, v.name, v.type, v.data FROM keys k JOIN vals v ON v.key = k.id WHERE k.parent = ?1 ORDER BY k.id",
    "INSERT INTO vals(key, name, type, data) SELECT ?1, ?2, ?3, ?4 WHERE EXISTS (SELECT 1 FROM keys WHERE id = ?1)"
    " ON CONFLICT(key, name) DO UPDATE SET type = excluded.type, data = excluded.data",
    "DELETE FROM vals WHERE key = ?1 AND name = ?2",
};

/// Makes `folder` and what is missing above it; `mode` is the last one's.
int MakeFolder(const fs::path& folder, mode_t mode) {
  std::error_code error;
  fs::create_directories(folder.parent_path(), error);
  if (error) return error.value();
  if (mkdir(folder.c_str(), mode) != 0) return errno == EEXIST ? 0 : errno;
  return chmod(folder.c_str(), mode) == 0 ? 0 : errno;  // whatever the umask took away
}

/// `path` as an SQLite URI with immutable=1: the file doesn't change, take no locks.
std::string ImmutableName(const fs::path& path) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string name = "file:";
  for (const char c : path.native()) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '%' || c == '?' || c == '#')
      name += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    else
      name += c;
  }
  return name + "?immutable=1";
}

/// An exclusive hold on a folder among the processes that repair files in it.
class FolderLock {
 public:
  explicit FolderLock(const fs::path& folder) : fd_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    while (fd_ >= 0 && flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  ~FolderLock() {
    if (fd_ >= 0) close(fd_);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int fd_;
};

/// The first free name for the damaged file at `path`.
fs::path NameAside(const fs::path& path) {
  for (int n = 1;; ++n) {
    fs::path aside = path;
    aside += ".damaged-" + std::to_string(n);
    struct stat info;
    if (lstat(aside.c_str(), &info) != 0) return aside;
  }
}

}  // namespace

void TreeFile::Close() {
  for (UniqueStatement& statement : sql_) statement.reset();
  db_.reset();
  absent_ = false;
  immutable_ = false;
}

bool TreeFile::SameFile() const {
  struct stat info;
  if (stat(options_.path.c_str(), &info) != 0) return false;
  const bool unchanged =
      !immutable_ || (info.st_mtim.tv_sec == stamp_.changed.tv_sec && info.st_mtim.tv_nsec == stamp_.changed.tv_nsec);
  return info.st_dev == stamp_.device && info.st_ino == stamp_.inode && unchanged;
}

/// Sees to it that `db_` is the file that now has the name.
DWORD TreeFile::Ready(bool write) {
  if (db_ != nullptr) {
    if (!absent_ && SameFile()) return kErrorSuccess;
    if (absent_ && !write && access(options_.path.c_str(), F_OK) != 0) return kErrorSuccess;
    Close();
  }
  const DWORD status = Open(write);
  if (status != kErrorSuccess) Close();
  return status;
}

DWORD TreeFile::Open(bool write) {
  struct stat info;
  if (stat(options_.path.c_str(), &info) != 0) {
    if (!write) return errno == ENOENT || errno == ENOTDIR ? OpenAbsent() : StatusOfErrno(errno);
    if (const DWORD status = MakeFile(); status != kErrorSuccess) return status;
    if (stat(options_.path.c_str(), &info) != 0) return StatusOfErrno(errno);
  }
  stamp_ = {info.st_dev, info.st_ino, info.st_mtim, info.st_size};
  DWORD status = Connect(options_.path.native(), 0);
  if (status == kErrorSuccess) status = CheckFormat(write);
  const bool refused = status == kErrorAccessDenied || status == kErrorDiskFull || status == kErrorWriteFault;
  return refused && !write ? OpenImmutable(status) : status;
}

/// A tree that was never written reads as empty, and reading it makes no file.
DWORD TreeFile::OpenAbsent() {
  Close();
  absent_ = true;
  DWORD status = Connect(":memory:", 0);
  if (status == kErrorSuccess) status = Execute(db_.get(), kSchema);
  return status == kErrorSuccess ? PrepareAll() : status;
}

/// A write-ahead log wants to make files even for a reader. Where the folder forbids it or the disk is full, the file
/// is read as it lies there, provided no log holds more than it and no change was interrupted halfway. `reason` is why
/// it can't be opened in the usual way.
DWORD TreeFile::OpenImmutable(DWORD reason) {
  const auto has = [this](const char* suffix) {
    struct stat log;
    return stat((options_.path.native() + suffix).c_str(), &log) == 0 && log.st_size > 0;
  };
  struct stat file;
  if (has("-wal") || has("-journal") || stat(options_.path.c_str(), &file) != 0) return reason;
  if (file.st_size == 0) return OpenAbsent();
  Close();
  immutable_ = true;
  stamp_ = {file.st_dev, file.st_ino, file.st_mtim, file.st_size};
  const DWORD status = Connect(ImmutableName(options_.path), SQLITE_OPEN_URI);
  return status == kErrorSuccess ? CheckFormat(false) : status;
}

DWORD TreeFile::Connect(const std::string& name, int flags) {
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(
      name.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE | flags, nullptr);
  db_.reset(raw);
  if (code != SQLITE_OK) return raw == nullptr ? kErrorNotEnoughMemory : StatusOf(raw, code);
  sqlite3_busy_handler(raw, OnBusy, this);
  // EXTRA also flushes the folder after the rollback journal is gone: without it a power failure could bring the
  // journal back and with it undo a change that was reported as durable. A write-ahead log needs FULL only.
  // What is deleted from a file that everyone reads is overwritten.
  return Execute(raw, options_.shared
                          ? "PRAGMA synchronous = EXTRA; PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON;"
                            " PRAGMA secure_delete = ON"
                          : "PRAGMA synchronous = FULL; PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON");
}

/// Makes the schema of an empty file and refuses a foreign one.
DWORD TreeFile::CheckFormat(bool write) {
  int64_t format = 0;
  int64_t application = 0;
  int64_t tables = 0;
  // One look: another process may be making the schema, and what it has made by half isn't damage.
  DWORD status = Execute(db_.get(), "BEGIN");
  if (status == kErrorSuccess) status = QueryNumber(db_.get(), "PRAGMA user_version", &format);
  if (status == kErrorSuccess) status = QueryNumber(db_.get(), "PRAGMA application_id", &application);
  if (status == kErrorSuccess) status = QueryNumber(db_.get(), "SELECT count(*) FROM sqlite_schema", &tables);
  if (sqlite3_get_autocommit(db_.get()) == 0) Execute(db_.get(), "ROLLBACK");
  // A plain question that SQLite doesn't understand: the file's description of itself is spoilt.
  if (status != kErrorSuccess) return status == kErrorGenFailure ? kErrorRegistryCorrupt : status;
  if (tables == 0 && format == 0 && application == 0) {
    if (!write) return OpenAbsent();
    status = MakeSchema();
    return status == kErrorSuccess ? PrepareAll() : status;
  }
  if (application != kApplicationId || format < kFormat || format > kLastFormat) return kErrorRegistryCorrupt;
  if (format > kFormat) return kErrorNotSupported;
  status = CheckHeader();
  if (status == kErrorSuccess) status = PrepareAll();
  return status == kErrorSuccess ? CheckPages() : status;
}

/// A spoilt version would make SQLite refuse to write, as if the rights were missing.
DWORD TreeFile::CheckHeader() {
  sqlite3_file* file = nullptr;
  uint8_t versions[2] = {};
  if (sqlite3_file_control(db_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || file == nullptr ||
      file->pMethods == nullptr || file->pMethods->xRead(file, versions, sizeof versions, kVersionsAt) != SQLITE_OK) {
    return kErrorReadFault;
  }
  return std::ranges::max(versions) <= kLargestVersion ? kErrorSuccess : kErrorRegistryCorrupt;
}

/// Damage that SQLite wouldn't meet by itself, such as pages that changed places, would make settings vanish silently.
DWORD TreeFile::CheckPages() {
  int64_t roots = 0;
  DWORD status = QueryNumber(db_.get(),
                             "SELECT count(*) FROM keys, sqlite_sequence WHERE id = 0 AND path = '' AND parent = -1"
                             " AND sqlite_sequence.name = 'keys'",
                             &roots);
  if (status == kErrorSuccess && roots != 1) status = kErrorRegistryCorrupt;
  if (status != kErrorSuccess || stamp_.size > kCheckedSize) return status;
  int64_t whole = 0;
  status = QueryNumber(db_.get(), "SELECT integrity_check = 'ok' FROM pragma_integrity_check(1)", &whole);
  if (status == kErrorGenFailure) return kErrorRegistryCorrupt;
  return status == kErrorSuccess && whole == 0 ? kErrorRegistryCorrupt : status;
}

DWORD TreeFile::MakeFile() {
  const fs::path folder = options_.path.parent_path();
  // Where something that is no folder is in the way, nothing can be written; there is nothing to be found either.
  const auto status_of = [](int error) {
    const DWORD status = StatusOfErrno(error);
    return status == kErrorPathNotFound ? kErrorWriteFault : status;
  };
  if (const int error = MakeFolder(folder, options_.shared ? 0755 : 0700); error != 0) return status_of(error);
  const int fd = open(options_.path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (fd < 0) return errno == EEXIST ? kErrorSuccess : status_of(errno);
  // An administrator's umask must not keep the queues from their users.
  if (options_.shared) fchmod(fd, 0644);
  close(fd);
  return kErrorSuccess;
}

DWORD TreeFile::MakeSchema() {
  if (!options_.shared) {
    // Where the file system can't share memory this keeps a rollback journal, which serves as well.
    const DWORD status = Execute(db_.get(), "PRAGMA journal_mode = WAL");
    if (status != kErrorSuccess) return status;
  }
  DWORD status = Execute(db_.get(), "BEGIN IMMEDIATE");
  if (status != kErrorSuccess) return status;
  int64_t tables = 0;  // another process may have been first
  status = QueryNumber(db_.get(), "SELECT count(*) FROM sqlite_schema", &tables);
  if (status == kErrorSuccess && tables == 0) status = Execute(db_.get(), kSchema);
  if (status == kErrorSuccess) status = Execute(db_.get(), "COMMIT");
  return status;  // a failure closes the connection, which rolls back
}

DWORD TreeFile::PrepareAll() {
  static_assert(std::size(kStatements) == kSqlCount);
  for (size_t i = 0; i < kSqlCount; ++i) {
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v3(db_.get(), kStatements[i], -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    sql_[i].reset(raw);
    // A statement that doesn't suit the file's tables: they aren't those of our format.
    if (code == SQLITE_ERROR) return kErrorRegistryCorrupt;
    if (code != SQLITE_OK) return StatusOf(db_.get(), code);
  }
  return kErrorSuccess;
}

/// Renames the damaged file and what belongs to it, unless another process has done so.
DWORD TreeFile::SetAside() {
  Close();  // first, since closing may remove the files that lie beside it
  const FolderLock lock(options_.path.parent_path());
  if (!SameFile()) return kErrorSuccess;
  const fs::path aside = NameAside(options_.path);
  // The journals go first: a new file must never find the old one's.
  for (const char* suffix : {"-journal", "-wal", "-shm", ""}) {
    const std::string from = options_.path.native() + suffix;
    const std::string to = aside.native() + suffix;
    if (rename(from.c_str(), to.c_str()) != 0 && errno != ENOENT) {
      AddNotice(options_.path.native() + " is damaged and can't be set aside (" + std::strerror(errno) +
                "); its owner or an administrator can, with any heron command, and begins it anew");
      return kErrorRegistryCorrupt;
    }
  }
  AddNotice("the settings in " + options_.path.native() + " were damaged and begin anew; the damaged file is kept as " +
            aside.native());
  return kErrorSuccess;
}

}  // namespace heron::store

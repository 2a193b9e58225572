// One tree of keys and values in one SQLite file. See platform/api/backend.h for what the operations mean.
//
// The file is opened at the first call, and again if another file replaced it. A damaged file is renamed, and a new one
// begins, with a notice. A small file is checked completely when it is opened; a larger one where it is read. A mutex
// serialises the calls of this process; a transaction holds it for its thread. SQLite's locks serialise processes, with
// random waits up to the busy limit.
#pragma once

#include <sys/stat.h>

#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>

#include "platform/api/backend.h"
#include "platform/api/owner_lock.h"
#include "platform/sqlite/sqlite.h"

namespace heron::store {

struct TreeFileOptions {
  std::filesystem::path path;
  bool shared = false;  ///< read by all users: mode 0644 and a rollback journal; otherwise 0600 and a write-ahead log
  std::chrono::milliseconds busy_limit{10000};
};

class TreeFile {
 public:
  using DWORD = platform::DWORD;
  using KeyId = platform::KeyId;

  explicit TreeFile(TreeFileOptions options) : options_(std::move(options)) {}

  DWORD Find(std::u16string_view path, KeyId* key);
  DWORD Create(std::u16string_view path, KeyId* key, bool* created);
  DWORD Remove(std::u16string_view path);
  DWORD Subkey(KeyId key, uint32_t index, std::u16string* name);
  DWORD Read(KeyId key, std::u16string_view name, DWORD* type, std::span<uint8_t> room, DWORD* size);
  DWORD ReadAll(KeyId key, const platform::TreeStore::Visitor& visit);
  DWORD ReadBelow(KeyId key, const platform::TreeStore::BelowVisitor& visit);
  DWORD Write(KeyId key, std::u16string_view name, DWORD type, std::span<const uint8_t> data);
  DWORD Delete(KeyId key, std::u16string_view name);
  DWORD Begin();
  DWORD End(bool keep);
  bool Writable() const;

  /// Closes the file unless another thread uses it or a transaction is running.
  void CloseIfIdle();
  /// Around fork(): a child must not meet SQLite's knowledge of locks that it doesn't have. The file is closed before.
  /// Only where a transaction is open, the forking thread's own or another's that doesn't end within the time, it goes
  /// on in the parent alone: the child's calls fail from then on.
  void BeforeFork(std::chrono::milliseconds patience);
  void AfterForkInParent();
  void AfterForkInChild();

 private:
  enum Sql {
    kFind,
    kHasKey,
    kSubkey,
    kAddKey,
    kDropKey,
    kDropValues,
    kRead,
    kReadAll,
    kReadBelow,
    kWrite,
    kDelete,
    kSqlCount
  };
  using Clock = std::chrono::steady_clock;

  /// Identifies the file, to notice that another took its place.
  struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    timespec changed{};
    off_t size = 0;
  };

  template <class Work>
  DWORD Run(bool write, Work&& work);
  template <class Work>
  DWORD RunInTransaction(Work&& work);
  template <class Work>
  DWORD Attempt(bool write, Work&& work);
  template <class Work>
  DWORD Together(Work&& work);

  // Under the lock:
  DWORD FindNow(std::u16string_view path, KeyId* key);
  DWORD CreateNow(std::u16string_view path, KeyId* key, bool* created);
  DWORD RemoveNow(std::u16string_view path);
  /// kErrorSuccess if the key is there, else kErrorKeyDeleted.
  DWORD HasKey(KeyId key);
  bool Wait();
  static int OnBusy(void* self, int tries);

  // Opening and repair (tree_file_open.cc), under the lock:
  DWORD Ready(bool write);
  DWORD Open(bool write);
  DWORD OpenAbsent();
  DWORD OpenImmutable(DWORD reason);
  DWORD Connect(const std::string& name, int flags);
  DWORD CheckFormat(bool write);
  DWORD CheckPages();
  DWORD CheckHeader();
  DWORD MakeFile();
  DWORD MakeSchema();
  DWORD PrepareAll();
  DWORD SetAside();
  bool SameFile() const;
  void Close();

  const TreeFileOptions options_;
  platform::OwnerLock lock_;

  // Guarded by lock_:
  UniqueConnection db_;
  std::array<UniqueStatement, kSqlCount> sql_;
  FileStamp stamp_;
  bool absent_ = false;     ///< there is no file: `db_` is an empty tree in memory, for reading only
  bool immutable_ = false;  ///< opened without any lock, since its folder can't be written
  KeyId highest_id_ = 0;    ///< given out here: withdrawing a transaction takes SQLite's own count back
  bool in_transaction_ = false;
  DWORD broken_ = 0;  ///< what voided the running transaction
  Clock::time_point deadline_;

  bool held_for_fork_ = false;          ///< of the thread that is forking; one at a time
  std::atomic<bool> abandoned_{false};  ///< this is the child of a fork() in a transaction; the lock may be lost
};

}  // namespace heron::store

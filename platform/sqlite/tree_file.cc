// Operations on a tree's file (tree_file.h).

#include "platform/sqlite/tree_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <mutex>
#include <random>
#include <thread>

#include "platform/api/key_path.h"
#include "platform/api/text.h"
#include "platform/sqlite/notices.h"

namespace heron::store {

using namespace platform;

namespace {

/// Whether a failure inside a transaction says that it can't be kept: anything but an answer about keys, values and
/// rights.
bool Voids(DWORD status) {
  switch (status) {
    case kErrorSuccess:
    case kErrorFileNotFound:
    case kErrorAccessDenied:
    case kErrorKeyDeleted:
    case kErrorMoreData:
    case kErrorNoMoreItems:
    case kErrorInvalidParameter:
      return false;
    default:
      return true;
  }
}

std::minstd_rand& Dice() {
  thread_local std::minstd_rand dice(std::random_device{}());
  return dice;
}

}  // namespace

/// Sleeps a little, at random, so that waiting processes don't meet again. False once the deadline has passed.
bool TreeFile::Wait() {
  if (Clock::now() >= deadline_) return false;
  std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution(500, 10000)(Dice())));
  return true;
}

int TreeFile::OnBusy(void* self, int) {
  return static_cast<TreeFile*>(self)->Wait() ? 1 : 0;
}

/// Runs `work` on the opened file, as often as a locked or newly replaced file demands; a damaged one is set aside
/// once.
template <class Work>
DWORD TreeFile::Run(bool write, Work&& work) {
  if (abandoned_) return kErrorGenFailure;
  const std::lock_guard guard(lock_);
  deadline_ = Clock::now() + options_.busy_limit;
  // Inside a transaction nothing is retried: the file is open and locked, and what was done so far can't be repeated.
  const DWORD status = in_transaction_ ? RunInTransaction(work) : Attempt(write, work);
  if (Voids(status) || status == kErrorAccessDenied) NoteFailure(options_.path, status);
  return status;
}

template <class Work>
DWORD TreeFile::Attempt(bool write, Work&& work) {
  bool repaired = false;
  bool reopened = false;
  for (;;) {
    DWORD status = Ready(write);
    if (status == kErrorSuccess) status = work();
    // Once only: if the new file is damaged too, the disk or another program is at fault.
    if (status == kErrorRegistryCorrupt && !repaired) {
      repaired = true;
      if (SetAside() == kErrorSuccess) continue;
    }
    if (status == kErrorAccessDenied && write && !reopened && db_ != nullptr &&
        sqlite3_db_readonly(db_.get(), "main") == 1) {
      reopened = true;  // opened for reading; the rights may have come since
      Close();
      continue;
    }
    if (status != kErrorBusy || !Wait()) return status;
  }
}

template <class Work>
DWORD TreeFile::RunInTransaction(Work&& work) {
  if (broken_ != kErrorSuccess) return broken_;
  const DWORD status = work();
  // SQLite itself rolls back on some failures; what follows must not slip through one by one.
  if (Voids(status))
    broken_ = status;
  else if (sqlite3_get_autocommit(db_.get()) != 0)
    broken_ = kErrorGenFailure;
  return status;
}

/// Runs `work`, several statements, as one change.
template <class Work>
DWORD TreeFile::Together(Work&& work) {
  if (in_transaction_) return work();
  struct Rollback {
    sqlite3* db;
    ~Rollback() {
      if (sqlite3_get_autocommit(db) == 0) Execute(db, "ROLLBACK");
    }
  };
  // IMMEDIATE takes the write lock now. A deferred transaction would fail at its first write if another writer came
  // between, and couldn't be retried from there.
  DWORD status = Execute(db_.get(), "BEGIN IMMEDIATE");
  if (status != kErrorSuccess) return status;
  const Rollback rollback{db_.get()};
  status = work();
  return status == kErrorSuccess ? Execute(db_.get(), "COMMIT") : status;
}

DWORD TreeFile::FindNow(std::u16string_view path, KeyId* key) {
  const std::string utf8 = ToUtf8(path);
  Query query(sql_[kFind]);
  DWORD status = kErrorSuccess;
  if (!query.Bind(utf8).Row(&status)) return status == kErrorSuccess ? kErrorFileNotFound : status;
  *key = query.Number(0);
  return kErrorSuccess;
}

DWORD TreeFile::HasKey(KeyId key) {
  Query query(sql_[kHasKey]);
  DWORD status = kErrorSuccess;
  const bool found = query.Bind(key).Row(&status);
  return found || status != kErrorSuccess ? status : kErrorKeyDeleted;
}

DWORD TreeFile::CreateNow(std::u16string_view path, KeyId* key, bool* created) {
  *created = false;
  DWORD status = FindNow(path, key);
  if (status != kErrorFileNotFound) return status;
  if (path.empty()) return kErrorRegistryCorrupt;  // every tree has its root
  KeyId parent = 0;
  status = CreateNow(ParentPath(path), &parent, created);
  if (status != kErrorSuccess) return status;
  const std::string utf8 = ToUtf8(path);
  // Ids aren't reused, so that a handle to a removed key can't reach a new one.
  status = Query(sql_[kAddKey]).Bind(parent).Bind(utf8).Bind(highest_id_).Finish();
  if (status != kErrorSuccess) return status;
  if (sqlite3_changes(db_.get()) == 0) return kErrorRegistryCorrupt;  // the count itself has gone
  *key = highest_id_ = sqlite3_last_insert_rowid(db_.get());
  *created = true;
  return kErrorSuccess;
}

DWORD TreeFile::RemoveNow(std::u16string_view path) {
  KeyId key = 0;
  DWORD status = FindNow(path, &key);
  if (status != kErrorSuccess) return status;
  if (path.empty()) return kErrorAccessDenied;
  // As in the Win32 API, a key with subkeys isn't removed.
  if (Query(sql_[kSubkey]).Bind(key).Bind(int64_t{0}).Row(&status)) return kErrorAccessDenied;
  if (status == kErrorSuccess) status = Query(sql_[kDropKey]).Bind(key).Finish();
  return status == kErrorSuccess ? Query(sql_[kDropValues]).Bind(key).Finish() : status;
}

DWORD TreeFile::Find(std::u16string_view path, KeyId* key) {
  return Run(false, [&] { return FindNow(path, key); });
}

DWORD TreeFile::Create(std::u16string_view path, KeyId* key, bool* created) {
  return Run(true, [&] { return Together([&] { return CreateNow(path, key, created); }); });
}

DWORD TreeFile::Remove(std::u16string_view path) {
  return Run(true, [&] { return Together([&] { return RemoveNow(path); }); });
}

DWORD TreeFile::Subkey(KeyId key, uint32_t index, std::u16string* name) {
  return Run(false, [&] {
    Query query(sql_[kSubkey]);
    DWORD status = kErrorSuccess;
    if (query.Bind(key).Bind(int64_t{index}).Row(&status)) {
      *name = LastPart(FromUtf8(query.Text(0)));
      return kErrorSuccess;
    }
    // No row means the end of the list or a key that was removed behind its handle; only a second query
    // distinguishes the two.
    if (status == kErrorSuccess) status = HasKey(key);
    return status == kErrorSuccess ? kErrorNoMoreItems : status;
  });
}

DWORD TreeFile::Read(KeyId key, std::u16string_view name, DWORD* type, std::span<uint8_t> room, DWORD* size) {
  const std::string utf8 = ToUtf8(name);
  return Run(false, [&] {
    Query query(sql_[kRead]);
    DWORD status = kErrorSuccess;
    if (query.Bind(key).Bind(utf8).Row(&status)) {
      const std::span<const uint8_t> data = query.Bytes(1);
      *type = static_cast<DWORD>(query.Number(0));
      *size = static_cast<DWORD>(data.size());
      if (data.size() > room.size()) return kErrorMoreData;
      std::ranges::copy(data, room.begin());
      return kErrorSuccess;
    }
    if (status == kErrorSuccess) status = HasKey(key);
    return status == kErrorSuccess ? kErrorFileNotFound : status;
  });
}

DWORD TreeFile::ReadAll(KeyId key, const TreeStore::Visitor& visit) {
  return Run(false, [&] {
    Query query(sql_[kReadAll]);
    query.Bind(key);
    DWORD status = kErrorSuccess;
    bool any = false;
    for (; query.Row(&status); any = true) {
      visit(FromUtf8(query.Text(0)), static_cast<DWORD>(query.Number(1)), query.Bytes(2));
    }
    return status == kErrorSuccess && !any ? HasKey(key) : status;
  });
}

DWORD TreeFile::ReadBelow(KeyId key, const TreeStore::BelowVisitor& visit) {
  return Run(false, [&] {
    Query query(sql_[kReadBelow]);
    query.Bind(key);
    DWORD status = kErrorSuccess;
    bool any = false;
    for (; query.Row(&status); any = true) {
      const std::u16string path = FromUtf8(query.Text(0));
      visit(LastPart(path), FromUtf8(query.Text(1)), static_cast<DWORD>(query.Number(2)), query.Bytes(3));
    }
    return status == kErrorSuccess && !any ? HasKey(key) : status;
  });
}

DWORD TreeFile::Write(KeyId key, std::u16string_view name, DWORD type, std::span<const uint8_t> data) {
  const std::string utf8 = ToUtf8(name);
  return Run(true, [&] {
    const DWORD status = Query(sql_[kWrite]).Bind(key).Bind(utf8).Bind(int64_t{type}).Bind(data).Finish();
    // The statement inserts only below an existing key: no change means that another program removed it.
    return status == kErrorSuccess && sqlite3_changes(db_.get()) == 0 ? kErrorKeyDeleted : status;
  });
}

DWORD TreeFile::Delete(KeyId key, std::u16string_view name) {
  const std::string utf8 = ToUtf8(name);
  return Run(true, [&] {
    const DWORD status = Query(sql_[kDelete]).Bind(key).Bind(utf8).Finish();
    if (status != kErrorSuccess || sqlite3_changes(db_.get()) != 0) return status;
    const DWORD found = HasKey(key);
    return found == kErrorSuccess ? kErrorFileNotFound : found;
  });
}

DWORD TreeFile::Begin() {
  if (abandoned_) return kErrorGenFailure;
  const std::lock_guard guard(lock_);
  if (in_transaction_) return kErrorInvalidParameter;
  const DWORD status = Run(true, [&] {
    // SQLite would begin one for reading, and refuse at the first change only.
    const bool may = sqlite3_db_readonly(db_.get(), "main") == 0 && Writable();
    return may ? Execute(db_.get(), "BEGIN IMMEDIATE") : kErrorAccessDenied;
  });
  if (status != kErrorSuccess) return status;
  in_transaction_ = true;
  broken_ = kErrorSuccess;
  lock_.lock();  // held until End
  return kErrorSuccess;
}

DWORD TreeFile::End(bool keep) {
  if (abandoned_) return kErrorGenFailure;
  const std::lock_guard guard(lock_);
  if (!in_transaction_) return kErrorInvalidParameter;
  deadline_ = Clock::now() + options_.busy_limit;
  // A transaction in which a step failed isn't kept: half of a batch would become durable.
  DWORD status = broken_;
  if (status == kErrorSuccess && keep) {
    do {
      status = Execute(db_.get(), "COMMIT");
    } while (status == kErrorBusy && Wait());
    if (status != kErrorSuccess) NoteFailure(options_.path, status);
  }
  if (sqlite3_get_autocommit(db_.get()) == 0) Execute(db_.get(), "ROLLBACK");
  in_transaction_ = false;
  lock_.unlock();
  return keep ? status : kErrorSuccess;
}

bool TreeFile::Writable() const {
  const auto may = [](const std::filesystem::path& path, int mode) {
    return faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
  };
  std::filesystem::path folder = options_.path.parent_path();
  if (may(options_.path, F_OK)) return may(options_.path, W_OK) && may(folder, W_OK | X_OK);
  while (!may(folder, F_OK) && folder.has_relative_path()) folder = folder.parent_path();
  return may(folder, W_OK | X_OK);  // where the missing folders would be made
}

void TreeFile::CloseIfIdle() {
  if (abandoned_ || !lock_.try_lock()) return;
  if (!in_transaction_) Close();
  lock_.unlock();
}

void TreeFile::BeforeFork(std::chrono::milliseconds patience) {
  // Never waits for good: the thread whose transaction this is may be waiting for what the forking one holds.
  const auto end = Clock::now() + patience;
  while (!(held_for_fork_ = !abandoned_ && lock_.try_lock()) && !abandoned_ && Clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  if (held_for_fork_ && !in_transaction_) Close();
}

void TreeFile::AfterForkInParent() {
  if (held_for_fork_) lock_.unlock();
}

void TreeFile::AfterForkInChild() {
  const bool own_transaction = held_for_fork_ && in_transaction_;
  if (!held_for_fork_ || own_transaction) {
    // Not even closing them is safe here; they are left as they are.
    for (UniqueStatement& statement : sql_) static_cast<void>(statement.release());
    static_cast<void>(db_.release());
    in_transaction_ = false;
    abandoned_ = true;
  }
  if (own_transaction) lock_.unlock();  // what Begin took
  if (held_for_fork_) lock_.unlock();
}

}  // namespace heron::store

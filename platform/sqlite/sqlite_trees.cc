// The two files of a user's trees, and what must happen to them around fork().

#include "platform/sqlite/sqlite_trees.h"

#include <pthread.h>

#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/sqlite/file_names.h"

namespace heron::store {
namespace {

/// All files that live, so that fork() finds them.
struct LivingFiles {
  std::mutex mutex;
  std::vector<TreeFile*> files;
};

LivingFiles& Living() {
  static LivingFiles& living = *new LivingFiles;
  return living;
}

/// How long a fork() waits for other threads' transactions, which take milliseconds.
constexpr std::chrono::milliseconds kForkPatience{2000};

void BeforeFork() {
  Living().mutex.lock();
  // SQLite's connections and locks don't survive a fork: files are closed before it wherever that is possible.
  for (TreeFile* file : Living().files) file->BeforeFork(kForkPatience);
}

void AfterForkInParent() {
  for (TreeFile* file : Living().files) file->AfterForkInParent();
  Living().mutex.unlock();
}

void AfterForkInChild() {
  for (TreeFile* file : Living().files) file->AfterForkInChild();
  Living().mutex.unlock();
}

void Register(std::initializer_list<TreeFile*> files) {
  static const int watching = pthread_atfork(BeforeFork, AfterForkInParent, AfterForkInChild);
  static_cast<void>(watching);  // fails for want of memory only; then fork() is as unsafe as SQLite alone
  const std::lock_guard guard(Living().mutex);
  Living().files.insert(Living().files.end(), files);
}

}  // namespace

SqliteTrees::SqliteTrees(const std::filesystem::path& machine_home, const std::filesystem::path& home,
                         const std::string& user, std::chrono::milliseconds busy_limit)
    : machine_({.path = machine_home / "printers.db", .shared = true, .busy_limit = busy_limit}),
      user_({.path = home / "users" / (FileNameOf(user) + ".db"), .shared = false, .busy_limit = busy_limit}) {
  Register({&machine_, &user_});
}

SqliteTrees::~SqliteTrees() {
  const std::lock_guard guard(Living().mutex);
  std::erase(Living().files, &machine_);
  std::erase(Living().files, &user_);
}

void SqliteTrees::CloseFiles() {
  machine_.CloseIfIdle();
  user_.CloseIfIdle();
}

}  // namespace heron::store

// The real store's files: what outlives a process, a crash, damage, missing rights, a lock and a fork.

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <atomic>
#include <fstream>
#include <thread>

#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "store_fixture.h"

namespace heron::test {
namespace {

using namespace platform;
namespace fs = std::filesystem;

bool Put(HKEY root, uint32_t number, const char16_t* name = u"v") {
  const UniqueKey key = CreateKey(root, u"Software\\Test");
  return key != nullptr &&
         RegSetValueExW(key.get(), name, REG_DWORD, reinterpret_cast<const uint8_t*>(&number), sizeof number) == 0;
}

/// The number stored, or -1 - error.
int64_t Get(HKEY root, const char16_t* name = u"v") {
  HKEY key = nullptr;
  DWORD status = RegOpenKeyExW(root, u"Software\\Test", 0, KEY_READ, &key);
  if (status != 0) return -1 - int64_t{status};
  const UniqueKey owner(key);
  uint32_t number = 0;
  DWORD size = sizeof number;
  status = RegQueryValueExW(key, name, nullptr, reinterpret_cast<uint8_t*>(&number), &size);
  return status == 0 ? int64_t{number} : -1 - int64_t{status};
}

constexpr int64_t kNothing = -1 - int64_t{kErrorFileNotFound};

mode_t ModeOf(const fs::path& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

class StoreTest : public ::testing::Test {
 protected:
  StoreTest() { store::TakeNotices(); }

  fs::path File(HKEY root) const {
    return root == HKEY_CURRENT_USER ? home / "users" / "user.db" : home / "printers.db";
  }

  TempFolder folder;
  const fs::path home = folder.path / "home";
  std::unique_ptr<store::StoreBackend> backend = InstallAt(home);
};

/// What holds for both files alike.
class EitherTree : public StoreTest, public ::testing::WithParamInterface<bool> {
 protected:
  /// Another program's statements on the closed file.
  void Run(const char* statements) {
    backend->CloseFiles();
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(File(root).c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, statements, nullptr, nullptr, nullptr), SQLITE_OK) << statements;
    sqlite3_close(db);
  }
  void Overwrite(std::streamoff at, const std::string& bytes) {
    backend->CloseFiles();
    std::fstream(File(root), std::ios::in | std::ios::out | std::ios::binary).seekp(at) << bytes;
  }

  const HKEY root = GetParam() ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
};
INSTANTIATE_TEST_SUITE_P(Trees, EitherTree, ::testing::Bool(),
                         [](const auto& tree) { return tree.param ? "User" : "Machine"; });

TEST_F(StoreTest, ReadingMakesNoFilesAndWritingMakesThemPrivate) {
  const mode_t mask = umask(022);
  EXPECT_EQ(Get(HKEY_CURRENT_USER), kNothing);
  std::vector<std::u16string> names{u"stale"};
  EXPECT_EQ(ListQueues(&names), kErrorSuccess);
  EXPECT_TRUE(names.empty());
  EXPECT_FALSE(fs::exists(home));
  EXPECT_TRUE(Put(HKEY_CURRENT_USER, 1) && Put(HKEY_LOCAL_MACHINE, 2));
  umask(mask);
  EXPECT_EQ(ModeOf(home / "users"), 0700u);
  EXPECT_EQ(ModeOf(File(HKEY_CURRENT_USER)), 0600u);
  EXPECT_EQ(ModeOf(File(HKEY_LOCAL_MACHINE)), 0644u);
  EXPECT_EQ(Get(HKEY_CURRENT_USER), 1);
  EXPECT_EQ(Get(HKEY_LOCAL_MACHINE), 2);
}

TEST_P(EitherTree, ValuesOutliveTheProcessAndAKillInsideABatchLeavesTheOldOnes) {
  EXPECT_EQ(RunChild([&] { return Put(root, 1) ? 0 : 1; }), 0);  // ends without closing
  EXPECT_EQ(Get(root), 1);
  EXPECT_EQ(RunChild([&] { return RegBeginBatch(root) == 0 && Put(root, 2) && Get(root) == 2 ? 0 : 1; }), 0);
  EXPECT_EQ(Get(root), 1);
  backend.reset();
  backend = InstallAt(home);
  EXPECT_EQ(Get(root), 1);
}

TEST_P(EitherTree, ProcessesThatWriteAtOnceLoseNothing) {
  constexpr int kWriters = 3;
  constexpr char16_t kNames[kWriters][2] = {u"a", u"b", u"c"};
  ASSERT_TRUE(Put(root, 0, u"sum"));
  std::vector<pid_t> children;
  for (const auto& name : kNames) {
    children.push_back(StartChild([&, name = &name[0]] {
      for (uint32_t i = 1; i <= 30; ++i) {
        if (!Put(root, i, name)) return 1;
        RegistryBatch batch(root);  // reading and writing in one: no other's sum slips between
        if (!Put(root, static_cast<uint32_t>(Get(root, u"sum")) + 1, u"sum") || !batch.Keep()) return 2;
      }
      return 0;
    }));
  }
  for (const pid_t child : children) EXPECT_EQ(WaitForChild(child), 0);
  for (const auto& name : kNames) EXPECT_EQ(Get(root, name), 30);
  EXPECT_EQ(Get(root, u"sum"), 30 * kWriters);
}

TEST_P(EitherTree, AForkedChildAndItsParentBothGoOn) {
  ASSERT_TRUE(Put(root, 1));
  const UniqueKey key = OpenKey(root, u"Software\\Test", KEY_READ);
  EXPECT_EQ(RunChild([&] {
              DWORD size = 0;
              const bool reads = RegQueryValueExW(key.get(), u"v", nullptr, nullptr, &size) == 0 && size == 4;
              return reads && Put(root, 2) ? 0 : 1;
            }),
            0);
  EXPECT_EQ(Get(root), 2);

  ASSERT_EQ(RegBeginBatch(root), kErrorSuccess);
  ASSERT_TRUE(Put(root, 3));
  // A child has no part in the transaction, and can't break it.
  EXPECT_EQ(RunChild([&] { return Put(root, 4) || RegEndBatch(root, 1) == 0 ? 1 : 0; }), 0);
  EXPECT_EQ(RegEndBatch(root, 1), kErrorSuccess);
  EXPECT_EQ(Get(root), 3);
}

TEST_P(EitherTree, AForkBesideAnotherThreadsTransactionNeverHangs) {
  ASSERT_TRUE(Put(root, 1));
  std::atomic<int> stage = 0;
  std::thread other([&] {
    const RegistryBatch batch(root);
    stage = 1;
    while (stage == 1) std::this_thread::yield();
  });
  while (stage == 0) std::this_thread::yield();
  const pid_t child = StartChild([&] { return Get(root) == -1 - int64_t{kErrorGenFailure} ? 0 : 1; });
  stage = 2;
  other.join();
  EXPECT_EQ(WaitForChild(child), 0);
  EXPECT_EQ(Get(root), 1);
}

TEST_P(EitherTree, ADamagedFileIsSetAsideWithANotice) {
  ASSERT_TRUE(Put(root, 1));
  const fs::path file = File(root);
  const fs::path aside = file.native() + ".damaged-";
  const HKEY stale = OpenKey(root, u"Software\\Test", KEY_ALL_ACCESS).release();
  backend->CloseFiles();
  const auto size = fs::file_size(file);
  WriteFile(file, std::string(8192, 'x'));  // no header
  WriteFile(file.native() + "-journal", "leftover");
  EXPECT_EQ(Get(root), kNothing);
  EXPECT_EQ(fs::file_size(aside.native() + "1"), 8192u);
  EXPECT_FALSE(fs::exists(file.native() + "-journal"));
  EXPECT_TRUE(Put(root, 2));
  EXPECT_EQ(RegSetValueExW(stale, u"v", REG_DWORD, reinterpret_cast<const uint8_t*>("xxxx"), 4), kErrorKeyDeleted);
  RegCloseKey(stale);

  backend->CloseFiles();
  fs::resize_file(file, size / 2);  // cut short
  EXPECT_TRUE(Put(root, 3));
  EXPECT_EQ(Get(root), 3);
  EXPECT_TRUE(fs::exists(aside.native() + "2"));
  const std::vector<std::string> notices = store::TakeNotices();
  ASSERT_EQ(notices.size(), 2u);
  EXPECT_NE(notices[1].find(aside.native() + "2"), std::string::npos);
  EXPECT_TRUE(store::TakeNotices().empty());
}

/// Damages of a small store that SQLite wouldn't meet on its way to a value.
TEST_P(EitherTree, DamageBesideTheWayIsMetWhenTheFileIsOpened) {
  constexpr const char* kDamages[] = {
      "DELETE FROM keys WHERE id = 0",
      "UPDATE keys SET path = 'x' WHERE id = 0",
      "DELETE FROM sqlite_sequence",
      "PRAGMA user_version = 1000",
      "PRAGMA application_id = 7",
      "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = 2 WHERE rootpage > 2"};
  for (const char* damage : kDamages) {
    ASSERT_TRUE(Put(root, 1));
    Run(damage);
    EXPECT_EQ(Get(root), kNothing) << damage;
    EXPECT_TRUE(Put(root, 2)) << damage;
    EXPECT_EQ(Get(root), 2) << damage;
    EXPECT_EQ(store::TakeNotices().size(), 1u) << damage;
  }
}

TEST_P(EitherTree, AVersionThatForbidsWritingIsDamage) {
  ASSERT_TRUE(Put(root, 1));
  Overwrite(18, "\3");  // SQLite's header: needed for writing
  EXPECT_TRUE(Put(root, 2));
  EXPECT_EQ(store::TakeNotices().size(), 1u);
}

TEST_P(EitherTree, DamageMetInsideABatchFailsItAndIsRepairedAfterwards) {
  // Larger than what is checked when it is opened.
  std::vector<uint8_t> big(size_t{3} << 20);
  ASSERT_TRUE(Put(root, 1));
  const auto key = OpenKey(root, u"Software\\Test", KEY_ALL_ACCESS);
  const auto length = static_cast<DWORD>(big.size());
  ASSERT_EQ(RegSetValueExW(key.get(), u"big", REG_BINARY, big.data(), length), kErrorSuccess);
  const auto read_big = [&] {
    DWORD size = length;
    return RegQueryValueExW(key.get(), u"big", nullptr, big.data(), &size);
  };
  backend->CloseFiles();
  const size_t size = fs::file_size(File(root));
  Overwrite(static_cast<std::streamoff>(size / 2), std::string(size / 2, '\xFF'));
  ASSERT_EQ(RegBeginBatch(root), kErrorSuccess);
  EXPECT_EQ(read_big(), kErrorRegistryCorrupt);
  EXPECT_FALSE(Put(root, 2));
  EXPECT_EQ(RegEndBatch(root, 1), kErrorRegistryCorrupt);
  EXPECT_EQ(read_big(), kErrorKeyDeleted);  // outside a batch the damaged file is set aside
  EXPECT_TRUE(Put(root, 3));
  EXPECT_EQ(Get(root), 3);
  EXPECT_TRUE(fs::exists(File(root).native() + ".damaged-1"));
}

TEST_P(EitherTree, AFileOfSomethingElseOrOfANewerReleaseIsNotWrittenTo) {
  ASSERT_TRUE(Put(root, 1));
  Run("PRAGMA user_version = 2");
  EXPECT_EQ(Get(root), -1 - int64_t{kErrorNotSupported});
  EXPECT_FALSE(Put(root, 2));
  EXPECT_TRUE(store::TakeNotices().empty());
}

TEST_P(EitherTree, AFileReplacedUnderAnOpenConnectionIsNoticed) {
  ASSERT_TRUE(Put(root, 1));
  fs::remove_all(home);
  EXPECT_EQ(Get(root), kNothing);
  EXPECT_TRUE(Put(root, 2));
  EXPECT_TRUE(fs::exists(File(root)));
}

TEST_P(EitherTree, ALockedFileIsBusyAfterTheLimitAndServedWithinIt) {
  ASSERT_TRUE(Put(root, 1));
  backend.reset();
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(File(root).c_str(), &db), SQLITE_OK);
  const auto lock = [&] { return sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr); };
  ASSERT_EQ(lock(), SQLITE_OK);
  backend = InstallAt(home, 50);
  EXPECT_EQ(Get(root), 1);  // a reader isn't kept out
  EXPECT_EQ(RegBeginBatch(root), kErrorBusy);
  EXPECT_FALSE(Put(root, 2));
  sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
  EXPECT_TRUE(Put(root, 3));
  sqlite3_close(db);
}

/// Rights are tried as another user where root would pass any check.
int AsPlainUser(const fs::path& path, const std::function<int()>& work) {
  return RunChild([&] {
    if (geteuid() == 0) {
      for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (lchown(entry.path().c_str(), 65534, 65534) != 0) return 99;
      }
      if (chown(path.c_str(), 65534, 65534) != 0 || setresuid(65534, 65534, 65534) != 0) return 99;
    }
    return work();
  });
}

TEST_P(EitherTree, WithoutTheRightToWriteItStillReads) {
  ASSERT_TRUE(Put(root, 1));
  backend.reset();
  const int failed_step = AsPlainUser(home, [&] {
    const fs::path place = File(root).parent_path();
    chmod(File(root).c_str(), 0444);
    chmod(place.c_str(), 0555);
    const auto mine = InstallAt(home);
    if (Get(root) != 1) return 1;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, u"Software\\Test", 0, KEY_ALL_ACCESS, &key) != kErrorAccessDenied) return 2;
    if (RegCreateKeyExW(root, u"Software\\New", KEY_READ, &key, nullptr) != kErrorAccessDenied) return 3;
    if (RegBeginBatch(root) != kErrorAccessDenied) return 4;
    chmod(File(root).c_str(), 0644);  // the folder alone is enough to forbid it
    if (Put(root, 3) || RegBeginBatch(root) != kErrorAccessDenied || Get(root) != 1) return 5;
    chmod(place.c_str(), 0755);
    return Put(root, 2) && Get(root) == 2 ? 0 : 6;  // the rights came; no restart is needed
  });
  EXPECT_EQ(failed_step, 0);
}

TEST_F(StoreTest, AnUmaskKeepsNoQueueFromItsUsers) {
  const mode_t mask = umask(077);
  EXPECT_TRUE(Put(HKEY_LOCAL_MACHINE, 1) && Put(HKEY_CURRENT_USER, 1));
  umask(mask);
  EXPECT_EQ(ModeOf(home), 0755u);
  EXPECT_EQ(ModeOf(File(HKEY_LOCAL_MACHINE)), 0644u);
  EXPECT_EQ(ModeOf(File(HKEY_CURRENT_USER)), 0600u);
}

/// A change that was interrupted halfway can't be completed by one who may only read: what lies there is no state of
/// the queues.
TEST_F(StoreTest, AnInterruptedChangeIsNotReadAsItLies) {
  ASSERT_TRUE(Put(HKEY_LOCAL_MACHINE, 1));
  backend.reset();
  const fs::path journal = File(HKEY_LOCAL_MACHINE).native() + "-journal";
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(File(HKEY_LOCAL_MACHINE).c_str(), &db), SQLITE_OK);
  const char* const change =
      "PRAGMA cache_spill = 1; PRAGMA cache_size = 1; BEGIN IMMEDIATE;"
      "UPDATE vals SET data = zeroblob(200000)";
  ASSERT_EQ(sqlite3_exec(db, change, nullptr, nullptr, nullptr), SQLITE_OK);
  fs::copy_file(File(HKEY_LOCAL_MACHINE), folder.path / "half.db");
  fs::copy_file(journal, folder.path / "half.db-journal");
  sqlite3_close(db);
  fs::rename(folder.path / "half.db", File(HKEY_LOCAL_MACHINE));
  fs::rename(folder.path / "half.db-journal", journal);
  const int failed_step = AsPlainUser(home, [&] {
    chmod(File(HKEY_LOCAL_MACHINE).c_str(), 0444);
    chmod(home.c_str(), 0555);
    const auto mine = InstallAt(home);
    return Get(HKEY_LOCAL_MACHINE) == -1 - int64_t{kErrorAccessDenied} ? 0 : 1;
  });
  EXPECT_EQ(failed_step, 0);
}

TEST_F(StoreTest, AMissingHomeThatCannotBeMadeReadsAsEmpty) {
  fs::create_directories(home);
  const int failed_step = AsPlainUser(home, [&] {
    chmod(home.c_str(), 0555);
    const auto mine = InstallAt(home / "below");
    std::vector<std::u16string> names;
    if (ListQueues(&names) != 0 || Get(HKEY_CURRENT_USER) != kNothing) return 1;
    Queue queue;
    queue.name = u"P1";
    return AddQueue(queue) == kErrorAccessDenied ? 0 : 2;
  });
  EXPECT_EQ(failed_step, 0);
}

/// Programs that find no store make one at the same moment; what one has made by half isn't damage to another.
TEST(FreshStore, KeepsWhatEveryProgramWroteThatMadeIt) {
  constexpr int kPrograms = 6;
  constexpr int kRounds = 25;
  const HKEY kRoots[] = {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};
  for (int round = 0; round < kRounds; ++round) {
    const TempFolder home;
    std::vector<pid_t> programs;
    for (int n = 0; n < kPrograms; ++n) {
      programs.push_back(StartChild([&home, n] {
        const auto backend = store::InstallStoreBackend(home.path);
        const std::u16string name = u"v" + std::u16string(1, static_cast<char16_t>(u'0' + n));
        return Put(HKEY_CURRENT_USER, 1, name.c_str()) && Put(HKEY_LOCAL_MACHINE, 1, name.c_str()) ? 0 : 1;
      }));
    }
    for (const pid_t program : programs) ASSERT_EQ(WaitForChild(program), 0);
    const auto backend = store::InstallStoreBackend(home.path);
    for (int n = 0; n < kPrograms; ++n) {
      const std::u16string name = u"v" + std::u16string(1, static_cast<char16_t>(u'0' + n));
      for (const HKEY root : kRoots) ASSERT_EQ(Get(root, name.c_str()), 1) << "round " << round << " program " << n;
    }
  }
}

}  // namespace
}  // namespace heron::test

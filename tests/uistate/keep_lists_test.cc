// Lists that are changed by several programs at once: nothing that was written is lost, nothing untouched comes back.
#include "uistate/keep_lists.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/sqlite/store.h"
#include "store_fixture.h"
#include "uistate/list_stores_seed.h"

namespace heron::test {
namespace {

class KeepListsTest : public StoreTest {
 protected:
  /// A program that has read the lists.
  struct Program {
    ListStoreSet mine;
    ListStoreSet seen;
  };
  Program Start() {
    ListStoreSet read = ReadAll();
    ListStoreSet seen = CopyOfLists(read);
    return {std::move(read), std::move(seen)};
  }
  ListsKept Keep(Program& program, Overtaken overtaken = Overtaken::kLeave) {
    return KeepListStores(program.mine, program.seen, u"P1", printer.get(), false, overtaken);
  }
};

TEST_F(KeepListsTest, WhatAProgramDidNotTouchIsNeverWritten) {
  ASSERT_TRUE(WriteListStores(PatternSet(3), u"P1", printer.get(), false));
  Program first = Start();
  Program second = Start();
  first.mine.watermarks->wMarkListNum = 2;
  Put(first.mine.pageLists->lists[4].name, u"mine");
  (*first.mine.userPapers)[1].width = 5000;
  ASSERT_TRUE(Keep(first).All());
  const std::string after = UserTree() + backend.Dump(platform::Hive::kMachine);

  backend.FailCall(0, 0);
  EXPECT_TRUE(Keep(second).All());
  EXPECT_EQ(backend.Calls(), 0u) << "an untouched sheet doesn't even look";
  std::memset(second.mine.pageLists->lists[4].head, 0x55, sizeof second.mine.pageLists->lists[4].head);
  second.mine.watermarks->current.size = 99;
  EXPECT_TRUE(Keep(second).All());
  EXPECT_EQ(UserTree() + backend.Dump(platform::Hive::kMachine), after) << "working memory isn't a change";

  // Another list and another paper of the same stores go beside those of the first.
  Put(second.mine.pageLists->lists[5].name, u"also mine");
  (*second.mine.userPapers)[2].width = 6000;
  second.mine.faxCover->zoom = 50;
  EXPECT_TRUE(Keep(second).All());
  EXPECT_TRUE(Keep(second).All());
  const ListStoreSet stored = ReadAll();
  EXPECT_EQ(std::u16string_view(stored.pageLists->lists[4].name), u"mine");
  EXPECT_EQ(std::u16string_view(stored.pageLists->lists[5].name), u"also mine");
  EXPECT_EQ((*stored.userPapers)[1].width, 5000u);
  EXPECT_EQ((*stored.userPapers)[2].width, 6000u);
  EXPECT_EQ(stored.watermarks->wMarkListNum, 2);
  EXPECT_EQ(stored.faxCover->zoom, 50u);
}

TEST_F(KeepListsTest, WhatBothChangedIsOvertakenAndReplacedOnRequestOnly) {
  ASSERT_TRUE(WriteListStores(PatternSet(3), u"P1", printer.get(), false));
  Program first = Start();
  Program second = Start();
  const auto change = [](Program& program, uint16_t value) {
    program.mine.watermarks->entries[1].size = value;
    program.mine.pageLists->lists[0].mixplex = value;
    (*program.mine.userPapers)[0].height = value;
    program.mine.overlays->formListNum = value == 1 ? 3 : 2;
  };
  change(first, 1);
  change(second, 2);
  ASSERT_TRUE(Keep(first).All());
  const std::string before = UserTree() + backend.Dump(platform::Hive::kMachine);
  second.mine.overlays->formListNum = 3;  // changed back: as it was read
  ListsKept kept = Keep(second);
  EXPECT_EQ(kept.overtaken, (std::vector{ListStoreId::kPageLists, ListStoreId::kWatermarks, ListStoreId::kUserPapers}));
  EXPECT_TRUE(kept.unwritten.empty());
  EXPECT_EQ(UserTree() + backend.Dump(platform::Hive::kMachine), before);

  EXPECT_TRUE(Keep(second, Overtaken::kOverwrite).All());
  EXPECT_EQ(ReadAll().watermarks->entries[1].size, 2u);
  EXPECT_TRUE(Keep(second).All()) << "its own writing overtakes nothing";
  change(first, 1);
  first.mine.faxCover->zoom = 40;
  kept = Keep(first);
  EXPECT_TRUE(kept.All()) << "what was written once isn't written again for nothing";
  EXPECT_EQ(ReadAll().watermarks->entries[1].size, 2u);
  EXPECT_EQ(ReadAll().faxCover->zoom, 40u);
}

TEST_F(KeepListsTest, AFailureLeavesTheStoreAsItWasAndIsReported) {
  Program program;
  SweepFailures(
      [&] {
        ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
        program = Start();
        program.mine.watermarks->wMarkListNum = 1;
      },
      [&] { return Keep(program).All(); });
  program.mine.fontSubst.reset();
  EXPECT_EQ(Keep(program).unwritten, std::vector{ListStoreId::kFontSubst});
}

// -- programs of their own, on the real files

constexpr int kWriters = 6;

/// Changes of all writers together; the whole sweep asks for more than a test run.
int ChangesOfEach() {
  const char* const wanted = std::getenv("HERON_SWEEP_CHANGES");
  return (wanted != nullptr ? std::atoi(wanted) : 60) / kWriters;
}

class ListSweep : public ::testing::TestWithParam<bool> {
 protected:
  ListSweep() {
    std::string name = (std::filesystem::temp_directory_path() / "heron-lists-XXXXXX").string();
    home_ = mkdtemp(name.data());
    backend_ = store::InstallStoreBackend(home_);
    EXPECT_EQ(
        platform::AddQueue({.name = u"P1", .server = {}, .port = {}, .driver = {}, .dataFile = {}, .devMode = {}}), 0u);
  }
  ~ListSweep() override {
    backend_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
  }

  static ListStoreSet Read(platform::HANDLE printer) {
    ListStoreSet set = CreateListStoreSet();
    EXPECT_TRUE(ReadListStores(set, u"P1", printer));
    return set;
  }

  /// One change: a list and a paper that are the writer's alone, and a count that all writers share. The count carries
  /// its writer's number: two programs that ask for the very same value are both content with it, and both are counted.
  static bool ChangeOnce(platform::HANDLE printer, int writer, uint16_t value) {
    while (true) {
      ListStoreSet mine = Read(printer);
      ListStoreSet seen = CopyOfLists(mine);
      mine.pageLists->lists[writer].mixplex = value;
      (*mine.userPapers)[static_cast<size_t>(writer)].height = value;
      ++mine.faxCover->lineNum;
      mine.faxCover->pagenum = static_cast<uint32_t>(writer);
      platform::RegistryBatch together(platform::HKEY_CURRENT_USER);
      if (!together.open()) return false;
      const ListsKept kept = KeepListStores(mine, seen, u"P1", printer, false);
      if (!kept.unwritten.empty()) return false;
      if (kept.overtaken.empty()) return together.Keep();
    }
  }

  /// Writes the number of each change that was kept to `acknowledged`. Starts where the one before was killed.
  static pid_t StartWriter(int writer, uint16_t first, int changes, int acknowledged) {
    const pid_t child = fork();
    if (child != 0) return child;
    const platform::UniquePrinter printer = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
    for (uint16_t value = first; value < first + changes; ++value) {
      if (!ChangeOnce(printer.get(), writer, value)) _exit(1);
      if (write(acknowledged, &value, sizeof value) != sizeof value) _exit(2);
    }
    _exit(0);
  }

  std::filesystem::path home_;
  std::unique_ptr<store::StoreBackend> backend_;
};

/// The last number in the pipe, which has no writer any more; 0 if there is none.
uint16_t LastOf(int pipe_end, int* count) {
  uint16_t last = 0;
  for (uint16_t value = 0; read(pipe_end, &value, sizeof value) == sizeof value; ++*count) last = value;
  return last;
}

TEST_P(ListSweep, EveryAcknowledgedChangeIsThere) {
  const bool kills = GetParam();
  std::minstd_rand dice(7);
  int acknowledged = 0;
  int killed = 0;
  std::array<uint16_t, kWriters> next;
  next.fill(1);
  const int rounds = kills ? std::max(4, ChangesOfEach() / 10) : 1;
  for (int round = 0; round < rounds; ++round) {
    std::array<pid_t, kWriters> children{};
    std::array<std::array<int, 2>, kWriters> pipes{};
    for (int n = 0; n < kWriters; ++n) {
      const auto at = static_cast<size_t>(n);
      ASSERT_EQ(pipe(pipes[at].data()), 0);
      children[at] = StartWriter(n, next[at], ChangesOfEach() / rounds, pipes[at][1]);
      close(pipes[at][1]);
    }
    for (int n = 0; kills && n < kWriters; n += 2) {
      std::this_thread::sleep_for(std::chrono::milliseconds(std::uniform_int_distribution(1, 60)(dice)));
      kill(children[static_cast<size_t>(n)], SIGKILL);
    }
    const platform::UniquePrinter printer = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
    for (size_t n = 0; n < kWriters; ++n) {
      int status = 0;
      waitpid(children[n], &status, 0);
      const bool was_killed = WIFSIGNALED(status);
      ASSERT_TRUE(was_killed || WEXITSTATUS(status) == 0) << "writer " << n << " ended with " << WEXITSTATUS(status);
      killed += was_killed;
      const auto last = std::max<uint16_t>(LastOf(pipes[n][0], &acknowledged), static_cast<uint16_t>(next[n] - 1));
      close(pipes[n][0]);
      // One that was killed may have written its change before it could say so.
      const ListStoreSet stored = Read(printer.get());
      const uint16_t found = stored.pageLists->lists[n].mixplex;
      if (last != 0) {
        EXPECT_GE(found, last) << "writer " << n;
      }
      if (found > 0) {
        EXPECT_LE(found, was_killed ? last + 1 : last) << "writer " << n;
      }
      // The papers lie in another file, which is written first.
      const uint32_t height = (*stored.userPapers)[n].height;
      if (found != 0) {
        EXPECT_TRUE(height == found || (was_killed && height == found + 1u)) << "writer " << n;
      }
      next[n] = static_cast<uint16_t>(std::max(found, last) + 1);
    }
    const uint32_t shared = Read(printer.get()).faxCover->lineNum;
    EXPECT_GE(shared, static_cast<uint32_t>(acknowledged));
    EXPECT_LE(shared, static_cast<uint32_t>(acknowledged + killed));
  }
  if (!kills) {
    EXPECT_EQ(acknowledged, ChangesOfEach() * kWriters);
  }
  std::cout << acknowledged << " changes acknowledged by " << kWriters << " processes, " << killed << " killed"
            << (HasFailure() ? "\n" : ", none lost\n");
}

INSTANTIATE_TEST_SUITE_P(Programs, ListSweep, ::testing::Bool(),
                         [](const auto& param_info) { return param_info.param ? "UnderKill" : "Undisturbed"; });

}  // namespace
}  // namespace heron::test

// The lists over the real files: what one process wrote the next one reads, and what it withdrew is not there.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/sqlite/store.h"
#include "store_fixture.h"
#include "uistate/list_stores_seed.h"
#include "uistate/user_stores.h"

namespace heron::test {
namespace {

class RestartTest : public ::testing::Test {
 protected:
  RestartTest() {
    std::string name = (std::filesystem::temp_directory_path() / "heron-stores-XXXXXX").string();
    home_ = mkdtemp(name.data());
    Restart();
  }
  ~RestartTest() override {
    backend_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
  }
  void Restart() {
    backend_.reset();
    backend_ = store::InstallStoreBackend(home_);
  }
  static ListStoreSet ReadAll() {
    ListStoreSet set = CreateListStoreSet();
    for (const ListStoreId store : kRegistryStores) EXPECT_TRUE(WalkStore(set, store, u"P1", WalkOp::kRead));
    return set;
  }

  std::filesystem::path home_;
  std::unique_ptr<store::StoreBackend> backend_;
};

TEST_F(RestartTest, ListsOutliveTheProcess) {
  for (const int count : {500, 2}) {
    const ListStoreSet written = PatternSet(count);
    for (const ListStoreId store : kRegistryStores) ASSERT_TRUE(WalkStore(written, store, u"P1", WalkOp::kWrite));
    Restart();
    EXPECT_TRUE(SameLists(ReadAll(), written)) << count;
  }
}

TEST_F(RestartTest, AWithdrawnChangeIsGone) {
  ASSERT_TRUE(SeedStores(u"P1", kDriverVersion - 1));
  const ListStoreSet seeded = ReadAll();
  {
    platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
    DeleteOldStores(u"P1");
    WalkStore(PatternSet(3), ListStoreId::kWatermarks, u"P1", WalkOp::kWrite);
  }
  Restart();
  EXPECT_EQ(CompareDriverVersion(u"P1", kDriverVersion), 2);
  EXPECT_TRUE(SameLists(ReadAll(), seeded));
}

}  // namespace
}  // namespace heron::test

#include "uistate/user_stores.h"

#include "generated/values.h"
#include "store_fixture.h"

namespace heron::test {
namespace {

class UserStoresTest : public StoreTest {
 protected:
  /// A record whose mirror names `printer_name` and `version`, with indexes in use.
  static DriverEnv Record(std::u16string_view printer_name, uint16_t version = kDriverVersion) {
    DriverEnv env{};
    SetText<"dmDeviceName">(env, printer_name);
    Set<"dmDriverVersion">(env, version);
    std::memcpy(FieldBytes<"publicMirror">(env), env.bytes.data(), 68);
    SetText<"dmDeviceName">(env, u"not the mirror");
    Set<"lpOverlay">(env, value::lpOverlay::kPrintWithForm);
    Set<"bOverlayIndex">(env, 2);
    Set<"watermarkIndex">(env, 5);
    return env;
  }
  static std::vector<int> Indexes(const DriverEnv& env) {
    return {Get<"lpOverlay">(env), Get<"bOverlayIndex">(env), Get<"watermarkIndex">(env)};
  }
  static void StoreVersion(std::u16string_view printer_name, uint32_t version) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&version);
    platform::RegSetValueExW(Key({}, printer_name).get(), u"DriverVersion", platform::REG_DWORD, bytes, 4);
  }
};

TEST_F(UserStoresTest, TheFirstRefreshSeedsAndTheNextChangesNothing) {
  DriverEnv env = Record(u"P1");
  EXPECT_TRUE(RefreshUserStores(env));
  EXPECT_EQ(Indexes(env), (std::vector<int>{1, 0, 0}));
  EXPECT_EQ(CompareDriverVersion(u"P1", kDriverVersion), 1);

  const ListStoreSet set = ReadAll();
  const PageList& list = set.pageLists->lists[9];
  EXPECT_EQ(std::u16string_view(list.name), u"List 10");
  EXPECT_EQ(list.mixplex, CatalogDefault(resources.get(), 124));
  EXPECT_EQ(UserTree().find("ISPageListData"), std::string::npos);
  EXPECT_EQ(set.overlays->messages[0].caption[0], u'\0');
  EXPECT_EQ(std::u16string_view(set.overlays->messages[2].caption), u"Text 29542");
  EXPECT_EQ(set.watermarks->entries[0].text[0], u'\0');
  EXPECT_EQ(std::u16string_view(set.watermarks->entries[11].text), u"Mark 12");
  EXPECT_EQ(std::u16string_view(set.watermarks->entries[11].font), u"宋体");
  EXPECT_EQ(std::u16string_view(set.fontSubst->pairs[7].deviceFont), u"Courier");
  EXPECT_EQ(std::u16string_view(set.faxCover->fixedform), u"Please find");
  EXPECT_TRUE(PrinterData(u"UDPaper1").empty());

  const std::string tree = UserTree();
  env = Record(u"P1", kDriverVersion ^ 0xC000);  // the top two bits don't count
  EXPECT_TRUE(RefreshUserStores(env));
  EXPECT_EQ(Indexes(env), (std::vector<int>{3, 2, 5}));
  EXPECT_EQ(UserTree(), tree);
}

TEST_F(UserStoresTest, AWatermarkIndexNamesAStoredWatermark) {
  DriverEnv env = Record(u"P1");
  ASSERT_TRUE(RefreshUserStores(env));
  const auto refreshed = [&](int index) {
    Set<"watermarkIndex">(env, index);
    RefreshUserStores(env);
    return int{Get<"watermarkIndex">(env)};
  };
  EXPECT_EQ(refreshed(11), 11);
  EXPECT_EQ(refreshed(12), 0);
  EXPECT_EQ(refreshed(255), 0);
  platform::RegDeleteKeyW(platform::HKEY_CURRENT_USER, BuildUserKey(u"P1", u"WaterMark", u"WMarkListData3").c_str());
  EXPECT_EQ(refreshed(2), 2);
  EXPECT_EQ(refreshed(7), 0);  // counted up to the gap
}

TEST_F(UserStoresTest, AVersionChangeSparesWhatIsNotAList) {
  ASSERT_TRUE(WriteListStores(PatternSet(20), u"P1", printer.get(), false));
  StoreVersion(u"P1", kDriverVersion - 1);
  const std::u16string_view kept[] = {u"IP_UIPROFILE\\Entry1",
                                      u"BookMode",
                                      u"TempPlistID",
                                      u"Fax Cover Sheet\\Tempfile Count",
                                      u"fax cover sheet\\tempfile name\\1",
                                      u"Old\\bookmode"};
  for (const auto sub : kept) StoreNumber(sub, u"Value", 1);
  StoreNumber(u"Old list\\Deep\\Deeper", u"Value", 1);
  StoreNumber(u"UDPaper1", u"Value", 1);

  DriverEnv env = Record(u"P1");
  EXPECT_TRUE(RefreshUserStores(env));
  EXPECT_EQ(Indexes(env), (std::vector<int>{1, 0, 0}));
  for (const auto sub : kept) EXPECT_TRUE(Value(sub, u"Value").has_value()) << platform::ToUtf8(sub);
  for (const auto* sub : {u"Old list", u"UDPaper1", u"WaterMark\\WMarkListData12"}) EXPECT_FALSE(HasKey(sub));
  EXPECT_EQ(ReadAll().watermarks->wMarkListNum, 12);
  EXPECT_EQ(UserTree().find("ISPageListData"), std::string::npos);
  EXPECT_EQ(CompareDriverVersion(u"P1", kDriverVersion), 1);
}

TEST_F(UserStoresTest, OnlyTheQueuesOwnKeysAreDeleted) {
  for (const auto* name : {u"P1", u"P10", u"server", u"\\\\server\\queue", u"\\\\server\\far\\queue"}) {
    Key(u"WaterMark", name);
    StoreVersion(name, kDriverVersion);
  }
  EXPECT_TRUE(DeleteOldStores(u"P1"));
  EXPECT_FALSE(HasKey(u"WaterMark", u"P1"));
  EXPECT_TRUE(HasKey({}, u"P1"));
  EXPECT_TRUE(HasKey(u"WaterMark", u"P10"));
  EXPECT_TRUE(DeleteOldStores(u"server"));
  EXPECT_FALSE(HasKey(u"WaterMark", u"server"));
  EXPECT_TRUE(HasKey(u"WaterMark", u"server\\queue"));
  EXPECT_TRUE(HasKey(u"WaterMark", u"server\\far\\queue"));
  EXPECT_TRUE(DeleteOldStores(u"\\\\server\\queue"));
  EXPECT_FALSE(HasKey(u"WaterMark", u"server\\queue"));

  const std::string tree = UserTree();
  for (const auto* name : {u"", u"\\\\", u"\\\\\\"}) {  // no name: the key of all queues
    EXPECT_FALSE(DeleteOldStores(name));
    EXPECT_FALSE(SeedStores(name, kDriverVersion));
  }
  EXPECT_TRUE(DeleteOldStores(u"unknown"));
  EXPECT_EQ(UserTree(), tree);
}

TEST_F(UserStoresTest, AnUnreadableVersionDoesNotCostAUserTheLists) {
  ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
  StoreVersion(u"P1", kDriverVersion);
  const std::string tree = UserTree();
  for (uint64_t call = 1; call <= 3; ++call) {
    backend.FailCall(call, platform::kErrorReadFault);
    DriverEnv env = Record(u"P1");
    RefreshUserStores(env);
    backend.FailCall(0, 0);
    EXPECT_EQ(UserTree(), tree) << "call " << call;
  }
}

TEST_F(UserStoresTest, AFailedVersionChangeLeavesTheOldListsWhole) {
  SweepFailures(
      [&] {
        ASSERT_TRUE(DeleteOldStores(u"P1"));
        ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
        StoreVersion(u"P1", kDriverVersion - 1);
      },
      [&] {
        DriverEnv env = Record(u"P1");
        return RefreshUserStores(env);
      },
      /*may_bear=*/true);  // a key that can't be deleted is passed over
  EXPECT_EQ(ReadAll().watermarks->wMarkListNum, 12);
}

}  // namespace
}  // namespace heron::test

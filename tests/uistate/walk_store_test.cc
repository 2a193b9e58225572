#include "uistate/walk_store.h"

#include "store_fixture.h"
#include "uistate/list_stores_seed.h"

namespace heron::test {
namespace {

using platform::REG_BINARY;
using platform::REG_DWORD;
using platform::REG_SZ;

TEST_F(StoreTest, WhatWasWrittenIsReadBack) {
  for (const int count : {3, 0, 500, 1}) {  // a shorter list after a longer one, too
    const ListStoreSet written = PatternSet(count);
    ASSERT_TRUE(WriteListStores(written, u"P1", printer.get(), false)) << count;
    EXPECT_TRUE(SameLists(ReadAll(), written)) << count;
  }
}

TEST_F(StoreTest, ValuesHaveTheirKeysTypesAndSizes) {
  ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
  const struct {
    const char16_t* key;
    const char16_t* name;
    uint32_t type;
    size_t size;
  } kValues[] = {{u"InterSheet\\InterSheetList10", u"InterSheetListName", REG_SZ, 14},
                 {u"InterSheet\\InterSheetList1", u"ISPageListNum", REG_DWORD, 4},
                 {u"InterSheet\\InterSheetList1", u"ISPageListData1", REG_BINARY, 280},
                 {u"InterSheet\\InterSheetList1", u"TabSettingData", REG_BINARY, 8},
                 {u"InterSheet\\InterSheetList1", u"TabTextDtlDlgLastSetting", REG_BINARY, 72},
                 {u"Form\\Overlays", u"PrintFileName", REG_SZ, 520},
                 {u"Form\\Overlays", u"Caption3", REG_SZ, 20},
                 {u"Form\\Overlays", u"Style1", REG_DWORD, 4},
                 {u"Form\\Overlay File", u"FormListNum", REG_DWORD, 4},
                 {u"Form\\Overlay File", u"1", REG_SZ, 14},
                 {u"WaterMark", u"WMarkListNum", REG_DWORD, 4},
                 {u"WaterMark\\WMarkListData1", u"Watermark Color(Thickness)", REG_DWORD, 4},
                 {u"FontSubTbl", u"Index", REG_DWORD, 4},
                 {u"FontSubTbl\\DevFont List", u"DevFaceName0", REG_SZ, 18},
                 {u"Fax Cover Sheet", u"Receipt Company1", REG_SZ, 2},
                 {u"Fax Cover Sheet\\Comment", u"Text", REG_SZ, 28}};
  for (const auto& value : kValues) {
    platform::DWORD type = 0;
    const auto data = Value(value.key, value.name, &type);
    ASSERT_TRUE(data.has_value()) << platform::ToUtf8(value.name);
    EXPECT_EQ(type, value.type) << platform::ToUtf8(value.name);
    EXPECT_EQ(data->size(), value.size) << platform::ToUtf8(value.name);
  }
  EXPECT_EQ(Value(u"WaterMark\\WMarkListData1", u"Watermark Angle"), (std::vector<uint8_t>{0xFF, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(Value(u"InterSheet\\InterSheetList1", u"Mixplex"), (std::vector<uint8_t>{0xF0, 0xFF, 0, 0}));
  for (const char16_t* name : {u"Caption1", u"Caption0", u"Caption4", u"Message0", u"Message4"}) {
    EXPECT_FALSE(Value(u"Form\\Overlays", name).has_value());
  }
  EXPECT_EQ(UserTree().find("Page0"), std::string::npos);    // rows of settings files stay out
  EXPECT_EQ(UserTree().find("UDPaper"), std::string::npos);  // user papers are printer data
  EXPECT_FALSE(HasKey(u"InterSheet\\InterSheetList0"));
  EXPECT_FALSE(HasKey(u"InterSheet\\InterSheetList11"));
}

TEST_F(StoreTest, CountsBoundWhatIsReadAndAreBoundThemselves) {
  const std::u16string list = u"InterSheet\\InterSheetList2";
  PageEntry page{};
  for (int n = 0; n < 32; ++n) {
    page.tray = static_cast<int16_t>(n + 1);
    const std::u16string name = u"ISPageListData" + Wide(std::to_string(n));
    StoreRaw(list, name.c_str(), REG_BINARY, &page, sizeof page);
  }
  const struct {
    uint32_t stored;
    uint16_t read;
  } kCounts[] = {{3, 3}, {0, 0}, {30, 30}, {31, 30}, {65535, 30}, {65537, 1}, {0x80000000, 0}};
  for (const auto& count : kCounts) {
    StoreNumber(list, u"ISPageListNum", count.stored);
    const ListStoreSet set = ReadAll();
    EXPECT_EQ(set.pageLists->lists[1].pageCount, count.read) << count.stored;
    for (int n = 0; n < kPagesPerList; ++n) {
      EXPECT_EQ(set.pageLists->lists[1].pages[n].tray, n < count.read ? n + 1 : 0) << count.stored;
    }
    EXPECT_EQ(set.pageLists->lists[2].pageCount, 0);
  }
  for (const auto& [key, name] : {std::pair{u"Form\\Overlay File", u"FormListNum"},
                                  {u"WaterMark", u"WMarkListNum"},
                                  {u"FontSubTbl", u"FontSubTblNum"}}) {
    StoreNumber(key, name, 65535);
  }
  const ListStoreSet set = ReadAll();
  EXPECT_EQ(set.overlays->formListNum, kFormCount);
  EXPECT_EQ(set.watermarks->wMarkListNum, kWatermarkCount);
  EXPECT_EQ(set.fontSubst->fontSubTblNum, kFontPairCount);

  // A count that grew beyond its list in memory is cut on its way out.
  set.watermarks->wMarkListNum = 60;
  ASSERT_TRUE(Write(set, ListStoreId::kWatermarks));
  EXPECT_EQ(Value(u"WaterMark", u"WMarkListNum"), (std::vector<uint8_t>{51, 0, 0, 0}));
  EXPECT_FALSE(HasKey(u"WaterMark\\WMarkListData51"));
}

TEST_F(StoreTest, ValuesOfAnotherShapeCountAsMissing) {
  const std::u16string list = u"InterSheet\\InterSheetList1";
  const std::vector<uint8_t> bytes(2000, 0x41);
  const std::u16string comment = u"Fax Cover Sheet\\Comment";
  StoreRaw(list, u"ISPageListNum", REG_SZ, bytes.data(), 4);
  StoreRaw(list, u"Mixplex", REG_DWORD, bytes.data(), 2);
  StoreRaw(list, u"TabSettingData", REG_BINARY, bytes.data(), 7);
  StoreRaw(list, u"TabTextDtlDlgLastSetting", REG_BINARY, bytes.data(), 73);
  StoreRaw(list, u"InterSheetListName", REG_SZ, bytes.data(), 34);  // fills the field without a terminator
  StoreRaw(u"Fax Cover Sheet", u"Subject", REG_SZ, bytes.data(), 131);
  StoreRaw(u"Fax Cover Sheet", u"Sender Name", REG_SZ, bytes.data(), 3);
  StoreRaw(u"Fax Cover Sheet", u"Sender Email", REG_BINARY, bytes.data(), 4);
  StoreRaw(u"Fax Cover Sheet", u"Filename", REG_SZ, u"ab\0cd", 12);
  StoreRaw(comment, u"Text", REG_SZ, bytes.data(), 0);
  ListStoreSet set = PatternSet(2);
  const ListStoreSet before = PatternSet(2);
  ASSERT_TRUE(ReadListStores(set, u"P1", printer.get()));

  const PageList& read = set.pageLists->lists[0];
  const PageList& old = before.pageLists->lists[0];
  EXPECT_EQ(read.pageCount, old.pageCount);
  EXPECT_EQ(read.mixplex, old.mixplex);
  EXPECT_TRUE(SameBytes(read.tabSettings, old.tabSettings));
  EXPECT_TRUE(SameBytes(read.tabDialog, old.tabDialog));
  EXPECT_EQ(std::u16string_view(read.name), std::u16string(16, u'\x4141'));
  EXPECT_TRUE(SameBytes(set.faxCover->subject, before.faxCover->subject));
  EXPECT_TRUE(SameBytes(set.faxCover->senderName, before.faxCover->senderName));
  EXPECT_TRUE(SameBytes(set.faxCover->senderEmail, before.faxCover->senderEmail));
  EXPECT_EQ(std::u16string_view(set.faxCover->filename, 5), std::u16string_view(u"ab\0\0\0", 5));
  EXPECT_EQ(set.faxCover->text[0], u'\0');
  EXPECT_TRUE(SameBytes(*set.fontSubst, *before.fontSubst));
}

TEST_F(StoreTest, AShorterListLeavesNothingBehind) {
  ASSERT_TRUE(WriteListStores(PatternSet(500), u"P1", printer.get(), false));
  StoreNumber(u"WaterMark\\Other", u"Kept", 1);
  ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
  const std::string tree = UserTree();
  for (const char* gone : {"ISPageListData2=", "ISPageListData29=", "|2=", "|99=", "WMarkListData2|",
                           "WMarkListData50|", "TTFaceName2=", "TTFaceName499=", "DevFaceName2=", "DevFaceName499="}) {
    EXPECT_EQ(tree.find(gone), std::string::npos) << gone;
  }
  EXPECT_TRUE(HasKey(u"WaterMark\\Other"));
  EXPECT_TRUE(SameLists(ReadAll(), PatternSet(2)));
}

TEST_F(StoreTest, AFailedWriteChangesNothing) {
  const ListStoreSet old_set = PatternSet(4);
  const ListStoreSet new_set = PatternSet(2);
  for (const ListStoreId store : kRegistryStores) {
    SweepFailures([&] { ASSERT_TRUE(Write(old_set, store)); }, [&] { return Write(new_set, store); });
  }
  EXPECT_TRUE(SameLists(ReadAll(), new_set));
}

TEST_F(StoreTest, AFailedSeedChangesNothing) {
  SweepFailures([this] { ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false)); },
                [] { return SeedListStores(u"P1"); }, /*may_bear=*/true);  // a text that can't be had is empty
  EXPECT_EQ(ReadAll().fontSubst->fontSubTblNum, 26);
}

TEST_F(StoreTest, AFailedReadIsReported) {
  ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
  backend.FailCall(8, platform::kErrorGenFailure, true);
  ListStoreSet set = CreateListStoreSet();
  EXPECT_FALSE(ReadListStores(set, u"P1", printer.get()));
  uint16_t count = 77;
  EXPECT_FALSE(ReadListPageCount(u"P1", 1, &count));
  EXPECT_EQ(count, 77);
}

TEST_F(StoreTest, NullStoresAndReadOnlyUsers) {
  ListStoreSet empty;
  const std::string before = UserTree();
  EXPECT_FALSE(WriteListStores(empty, u"P1", printer.get(), false));
  EXPECT_FALSE(ReadListStores(empty, u"P1", printer.get()));
  EXPECT_EQ(UserTree(), before);

  ASSERT_TRUE(WriteListStores(PatternSet(2), u"P1", printer.get(), false));
  backend.userWritable = false;
  EXPECT_TRUE(SameLists(ReadAll(), PatternSet(2)));
  EXPECT_FALSE(Write(PatternSet(3), ListStoreId::kFontSubst));
}

TEST_F(StoreTest, UserPapersAreNotWrittenToAServersQueueWhenLocked) {
  const ListStoreSet set = PatternSet(1);
  (*set.userPapers)[2].width = 4242;
  EXPECT_TRUE(WriteListStores(set, u"\\\\server\\queue", printer.get(), true));
  EXPECT_TRUE(PrinterData(u"UDPaper3").empty());
  EXPECT_TRUE(HasKey(u"InterSheet", u"server\\queue"));
  EXPECT_TRUE(WriteListStores(set, u"\\\\server\\queue", printer.get(), false));
  EXPECT_EQ(PrinterData(u"UDPaper3").size(), 76u);
  (*set.userPapers)[2].width = 4343;
  EXPECT_TRUE(WriteListStores(set, u"P1", printer.get(), true));
  EXPECT_EQ((*ReadAll().userPapers)[2].width, 4343u);
}

TEST_F(StoreTest, APrintJobReadsItsList) {
  ASSERT_TRUE(Write(PatternSet(3), ListStoreId::kPageLists));
  uint16_t number = 0;
  PageEntry page{};
  TabSettings tab{};
  EXPECT_TRUE(ReadListPageCount(u"P1", 10, &number));
  EXPECT_EQ(number, 3);
  EXPECT_TRUE(ReadListMixplex(u"P1", 10, &number));
  EXPECT_EQ(number, 0xFFF9);
  EXPECT_TRUE(ReadListPage(u"P1", 1, 2, &page));
  EXPECT_EQ(page.tray, 0x4242);
  EXPECT_TRUE(ReadListTabSettings(u"P1", 2, &tab));
  EXPECT_EQ(tab.tabPaperSize, 0x1111);
  EXPECT_FALSE(ReadListPageCount(u"P1", 0, &number));
  EXPECT_FALSE(ReadListMixplex(u"P1", 11, &number));
  EXPECT_FALSE(ReadListPage(u"P1", 1, 30, &page));
  EXPECT_FALSE(ReadListPage(u"P1", 1, -1, &page));
  EXPECT_TRUE(ReadListPageCount(u"P2", 1, &number));  // nothing stored: an empty list
  EXPECT_EQ(number, 0);
}

}  // namespace
}  // namespace heron::test

// Page numbers as text, and the working per-page list.
#include "engine/page_list.h"

#include <array>

#include "changes/reports.h"
#include "engine/page_list_text.h"
#include "resolve_fixture.h"

namespace heron::engine {
namespace {

std::string Parsed(std::u16string_view text, size_t room = 30) {
  std::vector<uint16_t> numbers(room);
  const int count = ParsePageText(text, numbers);
  if (count < 0) return "too many";
  std::string result;
  for (int i = 0; i < count; ++i) result += std::to_string(numbers[static_cast<size_t>(i)]) + " ";
  return result;
}

TEST(PageText, Errors) {
  const std::pair<const char16_t*, int> cases[] = {
      {u"", 0},      {u"2,4,6-10", 0}, {u"3,", 0},   {u"5-", 0},   {u"1234", 0}, {u"1--2", 4},  {u",1", 2},
      {u"1,,2", 2},  {u"0", 3},        {u"1,0", 3},  {u"1-0", 3},  {u"-3", 4},   {u"1-2-3", 4}, {u"1-2,3-", 0},
      {u"12345", 1}, {u"1 2", 1},      {u"1,-2", 4}, {u"1-,2", 2}, {u"10", 0},   {u"1;0", 1},
  };
  for (const auto& [text, error] : cases)
    EXPECT_EQ(static_cast<int>(CheckPageText(text)), error) << platform::ToUtf8(text);
}

TEST(PageText, NumbersAndTheirNormalForm) {
  EXPECT_EQ(Parsed(u"2,4,6-10"), "2 4 6 7 8 9 10 ");
  EXPECT_EQ(Parsed(u"10-6,3"), "6 7 8 9 10 3 ");
  EXPECT_EQ(Parsed(u"5-"), "");
  EXPECT_EQ(Parsed(u"3,5-"), "3 ");
  EXPECT_EQ(Parsed(u"7,7,"), "7 7 ");
  EXPECT_EQ(Parsed(u"1-30").size(), 9 * 2u + 21 * 3u);
  EXPECT_EQ(Parsed(u"1-31"), "too many");
  EXPECT_EQ(Parsed(u"1-29,40,50"), "too many");
  EXPECT_EQ(Parsed(u"99999999999", 1), "65535 ") << "unchecked text is bounded all the same";

  const std::array<uint16_t, 7> numbers = {2, 3, 5, 7, 8, 9, 11};
  EXPECT_EQ(FormatPageList(numbers), u"2-3,5,7-9,11");
  EXPECT_EQ(FormatPageList({}), u"");
}

class PageListTest : public ResolveTest {
 protected:
  PageListTest() {
    Put("InterSheet_Check=On lpSourceUnit=NotInstalled");
    for (PageEntry& row : CurrentPages(*ui)) row = {};
    AddRow(0, 1);
    AddRow(0, 258);  // a tray of a larger paper feed unit
  }
  void AddRow(int16_t type, int16_t tray) {
    uint16_t& count = SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui);
    PageEntry& row = CurrentPages(*ui)[count++];
    row.type = type;
    row.tray = tray;
    row.staple = 100;
    row.punch = 100;
    row.stat = kRowValid;
  }
  std::string Marks() const {
    std::string marks;
    for (const PageEntry& row : CurrentPages(*ui).first(2)) marks += std::to_string(row.stat);
    return marks;
  }
};

TEST_F(PageListTest, RowsThatTheSettingsForbidAreMarked) {
  Put("lpInterSheetListTray=Tray2 lpInterSheetListMediaType=Special2");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kNew), 1);
  EXPECT_EQ(Marks(), "14");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kAll), 1);
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kNew), 0);
  EXPECT_EQ(Value("lpInterSheetListTray"), "Tray2") << "the row settings are put back";
  EXPECT_EQ(Value("lpInterSheetListMediaType"), "Special2");
  Put("lpSourceUnit=Tray3And4");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kNew), -1);
  EXPECT_EQ(Marks(), "11");
  Put("lpSourceUnit=NotInstalled InterSheet_Check=Off");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kAll), 0);
  EXPECT_EQ(Marks(), "11") << "not looked at";
}

TEST_F(PageListTest, RepairTakesWhatIsAllowed) {
  Put("lpInterSheetListTray=Tray3 lpInterSheetListPRNType=BlankSheet lpInterSheetListStaple=11 "
      "InterSheetListStapleStop=1");
  const uint16_t output = Value("lpOutputPaper");
  EXPECT_EQ(CheckPerPageRow(*engine, false).failed, PerPageRowCheck::kTray) << "the first failure alone";
  EXPECT_EQ(Value("InterSheetListStapleStop"), 1);
  EXPECT_EQ(CheckPerPageRow(*engine, true).failed, PerPageRowCheck::kTray | PerPageRowCheck::kStapleStop);
  EXPECT_FALSE(Forbids("lpInterSheetListTray", std::to_string(uint16_t{Value("lpInterSheetListTray")})));
  EXPECT_EQ(Value("InterSheetListStapleStop"), 0);
  EXPECT_EQ(CheckPerPageRow(*engine, true).failed, 0);
  EXPECT_EQ(Value("lpOutputPaper"), output);
}

TEST_F(PageListTest, Messages) {
  auto& texts = backend.modules[test::kResourceModule];
  texts[28512] = u"no %s;";
  texts[28514] = u"%s: %d digits";
  texts[21018] = u"%s: at most %s";
  ReleaseStrings();
  AcquireStrings();
  const auto error = [](int code, PageTextField field) {
    return platform::ToUtf8(PageTextErrorText(static_cast<PageTextError>(code), field));
  };
  EXPECT_EQ(error(0, PageTextField::kRow), "");
  EXPECT_EQ(error(1, PageTextField::kRow), "[21002]: 4 digits");
  EXPECT_EQ(error(1, PageTextField::kChapters), "[21001]: 4 digits");
  EXPECT_EQ(error(2, PageTextField::kRow), "no [21003];[28513]");
  EXPECT_EQ(error(4, PageTextField::kChapters), "no [21005];[28513]");
  EXPECT_EQ(error(5, PageTextField::kRow), "[21002]: at most 9999");
  EXPECT_EQ(error(5, PageTextField::kChapters), "[21001]: at most 30");
  const std::array<uint16_t, 6> pages = {1, 2, 3, 4, 5, 9};
  EXPECT_EQ(DuplicatePagesText(pages), u"[28502][28503]1,2,3,4,5,...");
  EXPECT_EQ(DuplicatePagesText(std::span(pages).first(5)), u"[28502][28503]1,2,3,4,5,");

  Put("lpInterSheetListTray=Tray3 lpInterSheetListPRNType=BlankSheet");
  const PerPageRowCheck repaired = CheckPerPageRow(*engine, true);
  EXPECT_EQ(platform::ToUtf8(RepairedRowText(*engine, repaired)), "[22226][20136] => [21531] \n");
  EXPECT_EQ(RepairedRowText(*engine, {}), u"");
}

TEST_F(PageListTest, AnotherListReplacesTheWorkingOne) {
  const auto before = Bytes();
  front.yes = false;
  EXPECT_EQ(Resolve("lpInterSheetList", "List2"), "0");
  EXPECT_EQ(WorkingList(*ui), 2);
  EXPECT_EQ((SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui)), 0);
  EXPECT_EQ(ui->stores.pageLists->lists[0].pageCount, 2);
  EXPECT_EQ(Resolve("lpInterSheetList", "List1"), "0");
  EXPECT_EQ(front.shown, "|[22227]") << "all conflicts of the list that comes count";
  EXPECT_EQ((SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui)), 2);
  EXPECT_EQ(Marks(), "14");
}

TEST_F(PageListTest, NewConflictsAreReportedWithTheChange) {
  Put("lpSourceUnit=Tray3And4");
  ValidatePerPageList(*engine, Conflicts::kAll);
  EXPECT_EQ(Resolve("lpSourceUnit", "NotInstalled"), "0");
  EXPECT_EQ(front.shown, "[20800]|[22227]");
  EXPECT_EQ(Resolve("lpOrientation.Landscape", "Landscape"), "0");
  EXPECT_EQ(front.shown, "") << "reported before";
}

TEST_F(PageListTest, ARecallClosesItsListBeforeTheRemark) {
  Put("lpSourceUnit=Tray3And4 lpOutputUnit=Bin lpMailBinKit=Installed Staple_Check=On");
  ValidatePerPageList(*engine, Conflicts::kAll);
  const Action action(*resolver);
  Put("lpSourceUnit=NotInstalled lpOutputTray=MailBin1");
  RecordRecallDifferences(*resolver);
  EXPECT_TRUE(ResolveRecall(*resolver, &front).applied);
  EXPECT_TRUE(front.shown.starts_with("[22101]|[22102]")) << front.shown;
  EXPECT_TRUE(front.shown.ends_with("[22104]\n[22227]\n")) << front.shown;
}

}  // namespace
}  // namespace heron::engine

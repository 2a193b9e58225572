// Page numbers as text, and the working per-page list.
#include "engine/page_list.h"

#include <array>

#include "engine/page_list_text.h"
#include "engine/resolve_fixture.h"

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
    Put("InterSheet_Check=1 lpSourceUnit=1");
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
  Put("lpInterSheetListTray=2 lpInterSheetListMediaType=3");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kNew), 1);
  EXPECT_EQ(Marks(), "14");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kAll), 1);
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kNew), 0);
  EXPECT_EQ(Value("lpInterSheetListTray"), 2) << "the row settings are put back";
  EXPECT_EQ(Value("lpInterSheetListMediaType"), 3);
  Put("lpSourceUnit=2");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kNew), -1);
  EXPECT_EQ(Marks(), "11");
  Put("lpSourceUnit=1 InterSheet_Check=0");
  EXPECT_EQ(ValidatePerPageList(*engine, Conflicts::kAll), 0);
  EXPECT_EQ(Marks(), "11") << "not looked at";
}

TEST_F(PageListTest, RepairTakesWhatIsAllowed) {
  Put("lpInterSheetListTray=258 lpInterSheetListPRNType=0 lpInterSheetListStaple=11 InterSheetListStapleStop=1");
  const uint16_t output = Value("lpOutputPaper");
  EXPECT_EQ(CheckPerPageRow(*engine, false).failed, PerPageRowCheck::kTray) << "the first failure alone";
  EXPECT_EQ(Value("InterSheetListStapleStop"), 1);
  EXPECT_EQ(CheckPerPageRow(*engine, true).failed, PerPageRowCheck::kTray | PerPageRowCheck::kStapleStop);
  EXPECT_FALSE(Forbids("lpInterSheetListTray", Value("lpInterSheetListTray")));
  EXPECT_EQ(Value("InterSheetListStapleStop"), 0);
  EXPECT_EQ(CheckPerPageRow(*engine, true).failed, 0);
  EXPECT_EQ(Value("lpOutputPaper"), output);
}

TEST_F(PageListTest, AnotherListTakesThePlaceOfTheWorkingOne) {
  const auto before = Bytes();
  front.yes = false;
  EXPECT_EQ(Resolve("lpInterSheetList", 2), "0");
  EXPECT_EQ(WorkingList(*ui), 2);
  EXPECT_EQ((SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui)), 0);
  EXPECT_EQ(ui->stores.pageLists->lists[0].pageCount, 2);
  EXPECT_EQ(Resolve("lpInterSheetList", 1), "0");
  EXPECT_EQ(front.shown, "|[22227]") << "all conflicts of the list that comes count";
  EXPECT_EQ((SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui)), 2);
  EXPECT_EQ(Marks(), "14");
}

TEST_F(PageListTest, NewConflictsAreToldWithTheChange) {
  Put("lpSourceUnit=2");
  ValidatePerPageList(*engine, Conflicts::kAll);
  EXPECT_EQ(Resolve("lpSourceUnit", 1), "0");
  EXPECT_EQ(front.shown, "[20800]|[22227]");
  EXPECT_EQ(Resolve("lpOrientation.107", 2), "0");
  EXPECT_EQ(front.shown, "") << "told before";
}

}  // namespace
}  // namespace heron::engine

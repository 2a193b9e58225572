// What the summary lists: settings as text in, rows as text out.
#include "pages/summary.h"

#include "engine/page_list.h"
#include "pages/summary_compare.h"
#include "presets/page_numbers.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using pages::SummaryRow;
using pages::SummaryTab;

std::string TextOf(const SummaryRow& row) {
  std::string text = platform::ToUtf8(row[0]) + "|" + platform::ToUtf8(row[1]) + "|" + platform::ToUtf8(row[2]);
  while (text.ends_with('|')) text.pop_back();
  return text.starts_with("-----") ? "---" : text;
}

class SummaryTest : public SheetTest {
 protected:
  SummaryTest() { OpenPage(); }

  UiState& state() { return *engine().ui; }
  /// Rows of a tab, one to a line.
  std::string Rows(SummaryTab tab) {
    std::string text;
    for (const SummaryRow& row : pages::BuildSummary(state(), tab)) text += TextOf(row) + "\n";
    return text;
  }
  /// The rows of the tab from the one with this label on, `count` of them.
  std::string Rows(SummaryTab tab, const std::string& label, int count) {
    std::string text;
    bool found = false;
    for (const SummaryRow& row : pages::BuildSummary(state(), tab)) {
      found |= platform::ToUtf8(row[0]) == label;
      if (found && count-- > 0) text += TextOf(row) + "\n";
    }
    return text;
  }
  template <size_t N>
  static void Write(char16_t (&field)[N], std::u16string_view text) {
    std::ranges::fill(field, u'\0');
    std::ranges::copy(text.substr(0, N - 1), field);
  }
};

TEST_F(SummaryTest, PaperOfABarePrinter) {
  Put("Copies=3 Zoom=71 Sort_Check=On");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[20006]", 1), "[20006]|71 %\n");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[20005]", 1), "[20005]|3\n");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[20014]", 1) + Rows(SummaryTab::kPaper, "[20015]", 1), "[20015]|[21110]\n");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[21440]", 1), "") << "without a finisher there are no staples";
  Put("lpOutputUnit=Floor4");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[21440]", 1), "[21440]|[21111]\n");
}

TEST_F(SummaryTest, ChoicesAppearWithTheirGuard) {
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[21420]", 2).substr(0, 16), "[21420]|[21111]\n") << "the check row alone";
  Put("Nup_Check=On lpLayout=FourPages lpOrder=3");
  const auto shown = Rows(SummaryTab::kPaper, "[21420]", 3);
  EXPECT_TRUE(shown.starts_with("[21420]|[21110]|[")) << shown;
  EXPECT_NE(shown.find("\n [21426]|[21431]\n [21435]|"), std::string::npos) << shown;
  EXPECT_EQ(Rows(SummaryTab::kPaper, " [21485]", 1), "");
  Put("BindMargin_Check=On fMargin=12 bMargin=7");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[21480]", 4), "[21480]|[21110]\n [21485]|[21110]\n [21112]|12\n [21113]|7\n");
}

/// What the order of the pages is called hangs on the orientation for the first two.
TEST_F(SummaryTest, OrderOfPages) {
  const struct {
    const char* settings;
    const char* text;
  } kCases[] = {{"lpOrientation=Portrait lpOrder=1", "[21427]"},  {"lpOrientation=Landscape lpOrder=1", "[21429]"},
                {"lpOrientation=Portrait lpOrder=2", "[21428]"},  {"lpOrientation=Landscape lpOrder=2", "[21430]"},
                {"lpOrientation=Landscape lpOrder=3", "[21431]"}, {"lpOrientation=Portrait lpOrder=4", "[21432]"},
                {"lpOrientation=Portrait lpOrder=5", "[21433]"},  {"lpOrientation=Portrait lpOrder=6", "[21434]"}};
  for (const auto& row : kCases) {
    Put(std::string("Nup_Check=On ") + row.settings);
    EXPECT_EQ(Rows(SummaryTab::kPaper, " [21426]", 1), std::string(" [21426]|") + row.text + "\n") << row.settings;
  }
}

TEST_F(SummaryTest, CustomSizesInTheirUnits) {
  UserPaperStore& papers = *ui().stores.userPapers;
  Write(papers[1].name, u"Card");
  papers[1].unit = 1;
  papers[1].width = 3937;
  papers[1].height = 5826;
  Write(papers[9].name, u"Last");
  papers[9].unit = 2;
  papers[9].width = 8267;
  papers[9].height = 11005;
  Put("lpMediaSize=514 lpOutputPaper=256");
  EXPECT_EQ(Rows(SummaryTab::kPaper, "[20007]", 2),
            "[20007]|Card|(100.0 x 148.0mm)\n[20008]|Last|(8.267 x 11.005inch)\n");
  const std::string list = Rows(SummaryTab::kPaper, "[26404]", 20);
  EXPECT_EQ(std::ranges::count(list, '\n'), 11) << list;
  EXPECT_NE(list.find("\nCard|(100.0 x 148.0mm)\n"), std::string::npos) << list;
  EXPECT_TRUE(list.ends_with("Last|(8.267 x 11.005inch)\n")) << list;
}

TEST_F(SummaryTest, CoversWithTheirTrays) {
  Put("Front_Check=On lpFrontCover=Printed Back_Check=Off");
  const std::string rows = Rows(SummaryTab::kPerPage, "[20100]", 3);
  EXPECT_TRUE(rows.starts_with("[20100]|[21110]|[20103]\n [20009]|[")) << rows;
  EXPECT_TRUE(rows.ends_with("[20101]|[21111]\n")) << rows;
}

TEST_F(SummaryTest, ChaptersInNormalForm) {
  Put("lpPRNType=TwoSided Chapter_Check=On");
  PageNumberLists& lists = PageNumbersOf(ui());
  const uint16_t pages[] = {1, 4, 5, 6, 9};
  std::ranges::copy(pages, lists.pages[kChapterList]);
  lists.count[kChapterList] = 5;
  EXPECT_EQ(Rows(SummaryTab::kPerPage, "[20210]", 2), "[20210]|[21110]\n [21001]|1,4-6,9\n");
  lists.count[kChapterList] = 255;  // a record can say that
  EXPECT_NE(Rows(SummaryTab::kPerPage), "");
}

class PageListSummaryTest : public SummaryTest {
 protected:
  void Fill(uint16_t rows) {
    Put("InterSheet_Check=On");
    SlotAs<u"InterSheetListData_PageListNum", uint16_t>(ui()) = rows;
    int number = 0;
    for (PageEntry& entry : CurrentPages(ui())) {
      Write(entry.page, platform::FromUtf8(std::to_string(++number)));
      entry.type = number % 2 == 0 ? 3 : 7;
      entry.tray = number % 2 == 0 ? 4096 : 1;
    }
    Write(ui().stores.pageLists->lists[0].name, u"Mine");
    ui().stores.pageLists->lists[2].pageCount = 4;
  }
};

TEST_F(PageListSummaryTest, NamesAndRowsOfTheWorkingList) {
  Fill(2);
  const std::string head = Rows(SummaryTab::kPerPage, "[20156]", 7);
  EXPECT_TRUE(head.starts_with("[20156]|[21110]\n[26424]|Mine\n---\n[26425]\n  Mine|[26427]\n")) << head;
  EXPECT_NE(head.find("|[26426]\n"), std::string::npos) << head;
  const std::string rows = Rows(SummaryTab::kPerPage, "[26428]", 99);
  EXPECT_EQ(std::ranges::count(rows, '\n'), 7) << rows;
  EXPECT_TRUE(rows.starts_with("[26428]\n  [21002]|1\n  [20154]|--\n  [20009]|[")) << rows;
  EXPECT_TRUE(rows.ends_with("  [21002]|2\n  [20154]|[20124]\n  [20009]\n")) << rows;
  Put("InterSheet_Check=Off");
  EXPECT_EQ(Rows(SummaryTab::kPerPage, "[26428]", 99), "");
  EXPECT_EQ(Rows(SummaryTab::kPerPage, "[26424]", 1), "");
  EXPECT_EQ(std::ranges::count(Rows(SummaryTab::kPerPage, "[26425]", 99), '\n'), 11);
}

TEST_F(PageListSummaryTest, LongLists) {
  Fill(20);
  EXPECT_EQ(std::ranges::count(Rows(SummaryTab::kPerPage, "[26428]", 99), '\n'), 61);
  Fill(21);
  const std::string rows = Rows(SummaryTab::kPerPage, "[26428]", 99);
  EXPECT_EQ(std::ranges::count(rows, '\n'), 63);
  EXPECT_TRUE(rows.ends_with("\n      [26531]\n\n")) << rows;
  Fill(30);
  EXPECT_EQ(std::ranges::count(Rows(SummaryTab::kPerPage, "[26428]", 99), '\n'), 63);
  Fill(31);
  EXPECT_EQ(Rows(SummaryTab::kPerPage, "[26428]", 99), "");
}

TEST_F(SummaryTest, ImageShift) {
  EXPECT_EQ(Rows(SummaryTab::kSpecial, "[20232]", 9), "[20232]|[21111]\n");
  Put("ImageShift_Check=On ImgShiftValueLRF=25 ImgShiftValueUDF=31 ImgShiftPageIntervalF=2 ImgShiftValueLRB=7");
  const std::string rows = Rows(SummaryTab::kSpecial, "[20232]", 11);
  EXPECT_EQ(std::ranges::count(rows, '\n'), 11);
  EXPECT_TRUE(rows.starts_with("[20232]|[21110]\n [21112]|[21156]|[")) << rows;
  EXPECT_NE(rows.find("]\n|[21158]|25\n|[21157]|["), std::string::npos) << rows;
  EXPECT_NE(rows.find("]\n|[21158]|31\n|[21114]|2\n [21113]|[21156]|["), std::string::npos) << rows;
}

TEST_F(SummaryTest, Forms) {
  EXPECT_TRUE(Rows(SummaryTab::kOverlay).ends_with("---\n[26412]\n  [21202]\n")) << Rows(SummaryTab::kOverlay);
  Write(ui().stores.overlays->forms[0], u"/home/user/letter.vxf");
  ui().stores.overlays->formListNum = 1;
  Put("OverlayPrompt=On");
  const std::string rows = Rows(SummaryTab::kOverlay);
  EXPECT_TRUE(rows.ends_with(" [20303]|[21110]\n---\n[26412]\n  /home/user/letter.vxf\n")) << rows;
}

TEST_F(SummaryTest, WatermarkInUse) {
  WatermarkStore& store = *ui().stores.watermarks;
  store.wMarkListNum = 3;
  for (int i = 1; i < 3; ++i) Write(store.entries[i].text, i == 1 ? u"One" : u"Two");
  WatermarkEntry& mark = store.entries[2];
  Write(mark.font, u"Sans");
  mark.style = 4;
  mark.size = 72;
  mark.angle = 455;
  mark.color = 0xFF7F;
  mark.centerX = 125;
  mark.centerY = static_cast<uint16_t>(-340);
  const std::string list = "---\n[26423]\n  One\n  Two\n---\n";
  EXPECT_TRUE(Rows(SummaryTab::kWatermark).starts_with("[20400]|[21111]\n" + list)) << Rows(SummaryTab::kWatermark);
  SlotAs<u"bWatermarkCurrent", uint8_t>(ui()) = 2;
  Put("Watermark_Use=On lpWatermarkOrder=Transparent FirstPageOnly=On");
  EXPECT_TRUE(Rows(SummaryTab::kWatermark)
                  .starts_with("[20400]|[21110]\n  [26414]|Two\n  [20401]|[26416]\n  [20402]|[21110]\n  [26417]|Sans\n"
                               "  [20153]|[21118]\n  [21119]|72 [26418]\n  [26419]|45 [26420]\n  [26421]|50 [26422]\n"
                               "  [20152]|(12, 34)\n" +
                               list))
      << Rows(SummaryTab::kWatermark);
  SlotAs<u"bWatermarkCurrent", uint8_t>(ui()) = 255;
  store.wMarkListNum = 999;
  EXPECT_NE(Rows(SummaryTab::kWatermark).find("  [26414]|"), std::string::npos);
}

class FaxSummaryTest : public SummaryTest {
 protected:
  FaxCoverStore& cover() { return *ui().stores.faxCover; }
};

TEST_F(FaxSummaryTest, TemplateAndSender) {
  engine::Setting<u"FaxCover_Subject">(ui()) = 1;
  Write(cover().subject, u"Offer");
  cover().style = 4;
  cover().fcsPaper = 6;
  cover().pagenum = 12;
  engine::Setting<u"lpFaxCover_ReceiveSetup">(ui()) = 0;
  Write(cover().fixedform, u"Dear all");
  engine::Setting<u"FaxCover_SenderName">(ui()) = 0;
  Write(cover().senderName, u"hidden");
  engine::Setting<u"FaxCover_Pagenum">(ui()) = 1;
  engine::Setting<u"FaxCover_Date">(ui()) = 0;
  engine::Setting<u"FaxCover_Image">(ui()) = 0;
  const std::string rows = Rows(SummaryTab::kFax);
  EXPECT_TRUE(
      rows.starts_with("[26200]\n  [26201]|[21110]|Offer\n  [26217]|[21123]\n  [26202]\n    [26203]|Dear all\n"
                       "  [26208]\n    [21125]|"))
      << rows;
  EXPECT_NE(rows.find("\n    [21127]|[21111]\n"), std::string::npos) << rows;
  EXPECT_NE(
      rows.find(
          "\n  [26211]|[21111]\n  [21129]|[21110]|12 [26212]\n  [26213]|--\n  [26214]|[21111]\n\n  [26216]\n---\n"),
      std::string::npos)
      << rows;
}

TEST_F(FaxSummaryTest, RecipientTextsAreThoseThatWereTyped) {
  engine::Setting<u"lpFaxCover_ReceiveSetup">(ui()) = 1;
  for (uint16_t* on :
       {&engine::Setting<u"FaxCover_ReceiveCompany1">(ui()), &engine::Setting<u"FaxCover_ReceiveFaxnum">(ui())})
    *on = 1;
  Write(cover().receiptCompany1, u"Works");
  Write(cover().receiptFaxnum, u"123");
  engine::Setting<u"lpFaxCover_ReceivePersonal">(ui()) = 1;
  EXPECT_EQ(Rows(SummaryTab::kFax, "    [26207]", 2), "    [26207]|[26205]\n    [21125]|[21110]\n");
  engine::Setting<u"lpFaxCover_ReceivePersonal">(ui()) = 2;
  EXPECT_EQ(Rows(SummaryTab::kFax, "    [26207]", 2), "    [26207]|[26206]\n    [21125]|[21110]|Works\n");
  EXPECT_NE(Rows(SummaryTab::kFax).find("    [21128]|[21110]|123\n"), std::string::npos);
}

TEST_F(FaxSummaryTest, PictureAndComment) {
  engine::Setting<u"FaxCover_Image">(ui()) = 1;
  engine::Setting<u"FaxCover_Zoom">(ui()) = 1;
  Write(cover().filename, u"/logo.bmp");
  cover().xPosition = 4960;
  cover().yPosition = static_cast<uint32_t>(-1);
  cover().zoom = 80;
  Write(cover().text, u"one\r\n\r\ntwo\r\n");
  EXPECT_EQ(
      Rows(SummaryTab::kFax, "  [26214]", 99),
      "  [26214]|[21110]\n    [26215]|/logo.bmp\n    [20152] X|50  (0-100)\n    [20006]|[21110]|80  %\n\n  [26216]\n"
      "---\none\n\ntwo\n");
  state().stores.faxCover.reset();
  EXPECT_EQ(Rows(SummaryTab::kFax), "");
}

TEST_F(SummaryTest, LeavesTheSheetAsItIs) {
  Put("lpOverlay=PrintWithForm Nup_Check=On");
  const auto before = Bytes();
  const engine::RuleStates rules = engine::SaveRuleStates(engine());
  UiStatePtr entry = CloneUiState(ui());
  engine::Engine other(*entry);
  other.Set(engine::Control(u"lpOutput.Fax"), 1);
  const auto of = [](UiState& settings) { return pages::BuildSummary(settings, SummaryTab::kPaper); };
  EXPECT_NE(of(*entry), of(state())) << "a fax has fewer settings";
  EXPECT_EQ(std::memcmp(&rules, &engine().rules, sizeof rules), 0);
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(SummaryTest, Differences) {
  const auto compare = [](const pages::SummaryRows& shown, const pages::SummaryRows& now) {
    std::string text;
    for (const pages::ComparedRow& row : pages::CompareSummaries(shown, now)) {
      text += (row.in == pages::RowOf::kShown ? "+" : row.in == pages::RowOf::kNow ? "-" : row.Differs() ? "*" : "=");
      text += platform::ToUtf8(row.in == pages::RowOf::kNow ? row.now[0] : row.shown[0]);
    }
    return text;
  };
  EXPECT_EQ(compare({{u"a", u"1", {}}, {u"b", u"1", {}}}, {{u"a", u"1", {}}, {u"b", u"2", {}}}), "=a*b");
  EXPECT_EQ(compare({{u"a"}, {u"x"}, {u"b"}}, {{u"a"}, {u"b"}, {u"c"}}), "=a+x=b-c");
  // Of rows with one label, the equal ones belong together.
  EXPECT_EQ(compare({{u"p", u"2", {}}, {u"p", u"3", {}}}, {{u"p", u"1", {}}, {u"p", u"2", {}}, {u"p", u"3", {}}}),
            "-p=p=p");
  EXPECT_EQ(compare({}, {}), "");
}

TEST_F(SummaryTest, Search) {
  Write(ui().stores.overlays->forms[0], u"/home/user/Letter.vxf");
  ui().stores.overlays->formListNum = 1;
  EXPECT_TRUE(pages::SummaryMentions(state(), u"lETTER"));
  EXPECT_FALSE(pages::SummaryMentions(state(), u"nothing of this kind"));
}

}  // namespace
}  // namespace heron::test

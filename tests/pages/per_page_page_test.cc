// Page 200: the per-page list with its dialogs, and the field of chapter starts.
#include <random>

#include "pages/chapter_pages.h"
#include "pages/page_rows.h"
#include "pages/page_text.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using namespace platform;

class PerPagePageTest : public SheetTest {
 protected:
  ScriptedDialog& Open(const std::string& settings = {}) {
    return OpenPage("lpPRNType=TwoSided InterSheet_Check=On " + settings, "per-page");
  }
  /// The page's button with the row dialog behind it.
  void Add(std::u16string_view pages, std::string_view type = {}, std::string_view tray = {}) {
    desk.Expect("row-of-the-per-page-list", Fill(pages, type, tray));
    page->Click("addPageListRow");
  }
  ScriptedDesk::Script Fill(std::u16string_view pages, std::string_view type, std::string_view tray) {
    return [=, this](ScriptedDialog& dialog) {
      if (!tray.empty()) Choose(dialog, "lpInterSheetListTray", tray);
      if (!type.empty()) Choose(dialog, "lpInterSheetListPRNType", type);
      dialog.Type("rowPages", pages);
      EXPECT_TRUE(dialog.Click("OK"));
      EXPECT_EQ(desk.Told(), "");
    };
  }
  /// Pages of the rows, the selected one in brackets.
  std::string Rows() const {
    std::string text;
    const auto& rows = (*page)["pageListRows"].rows;
    for (size_t i = 1; i < rows.size(); ++i) {
      const bool selected = page->SelectedRow("pageListRows") == static_cast<int>(i);
      const std::string pages = ToUtf8(rows[i].text) + (rows[i].grey ? "!" : "");
      text += (text.empty() ? "" : " ") + (selected ? "[" + pages + "]" : pages);
    }
    return text;
  }
  std::string Buttons() const {
    std::string text;
    for (const char* name : {"addPageListRow", "editPageListRow", "deletePageListRow", "movePageListRowUp"})
      text += page->IsEnabled(name) ? '1' : '0';
    return text + " " + std::to_string((*page)["movePageListRowDown"].picture);
  }
};

TEST_F(PerPagePageTest, ALifeOfRows) {
  Open();
  EXPECT_EQ(page->RowsOf("pageListRows").front().substr(0, 8), "[28511]|");
  EXPECT_EQ(Buttons(), "1000 10503");
  Add(u"10-6,3", "OneSided");
  EXPECT_EQ(Rows(), "[3,6-10]");
  EXPECT_EQ(Buttons(), "1111 10501");
  Add(u"1-2", "TwoSided");
  Add(u"3,9", "BlankSheet");
  EXPECT_EQ(Rows(), "3,6-10 1-2 [3,9]");
  const auto& rows = (*page)["pageListRows"].rows;
  EXPECT_EQ(rows[0].picture, 14010U);
  EXPECT_EQ(rows[1].picture, 14009U);
  EXPECT_EQ(rows[2].picture, 14010U);
  EXPECT_EQ(rows[3].picture, 14000U);

  page->Click("movePageListRowUp");
  EXPECT_EQ(Rows(), "3,6-10 [3,9] 1-2");
  page->PressKey("pageListRows", ListKey::kUndo);
  EXPECT_EQ(Rows(), "3,6-10 [1-2] 3,9");
  page->PressKey("pageListRows", ListKey::kUndo);
  EXPECT_EQ(page->beeps, 1) << "one step";
  page->DragRow("pageListRows", 3, 1);
  EXPECT_EQ(Rows(), "[3,9] 3,6-10 1-2");
  page->Click("movePageListRowUp");
  page->DragRow("pageListRows", 1, 0);
  page->DragRow("pageListRows", 0, 2);
  EXPECT_EQ(page->beeps, 4) << "the first row and the row of the other pages stay where they are";
  EXPECT_EQ(Rows(), "[3,9] 3,6-10 1-2");

  page->ClickHeading("pageListRows", 0);
  EXPECT_EQ(Rows(), "1-2 3,6-10 [3,9]");
  page->ClickHeading("pageListRows", 0);
  EXPECT_EQ(Rows(), "[3,9] 3,6-10 1-2");
  page->ClickHeading("pageListRows", 1);
  EXPECT_EQ(Rows(), "[3,9] 3,6-10 1-2") << "sorted already";
  page->ClickHeading("pageListRows", 1);
  EXPECT_EQ(Rows(), "1-2 3,6-10 [3,9]");

  desk.Expect("row-of-the-per-page-list", [&](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf("rowPages"), "3,6-10");
    EXPECT_TRUE(dialog.TextOf(2401).starts_with("[20158]"));
    Choose(dialog, "lpInterSheetListPRNType", "BlankSheet");
    EXPECT_EQ(Confirm(dialog), "[20157]|[28502][28503]3,9, at rowPages") << "inserted with another row already";
    Choose(dialog, "lpInterSheetListPRNType", "OneSided");
    EXPECT_EQ(Confirm(dialog, "rowPages", u"2,3"), "[20157]|[28502][28503]2, at rowPages");
    EXPECT_EQ(Confirm(dialog, "rowPages", u"3,6-10"), "closed") << "a row isn't a duplicate of itself";
  });
  page->Activate("pageListRows", 2);
  EXPECT_EQ(Rows(), "1-2 [3,6-10] 3,9");

  page->SelectSeveral("pageListRows", {0, 1, 3});
  EXPECT_EQ(page->SelectedRows(ControlName("pageListRows")), (std::vector<int>{1, 3}));
  page->PressKey("pageListRows", ListKey::kDelete);
  EXPECT_EQ(Rows(), "[3,6-10]");
  page->Click("deletePageListRow");
  EXPECT_EQ(page->SelectedRow("pageListRows"), kNoRow);
  EXPECT_EQ(Buttons(), "1000 10503");
  EXPECT_EQ(desk.Told(), "");
}

TEST_F(PerPagePageTest, TheRowOfTheOtherPagesIsNeverSelected) {
  Open();
  page->ClickRow("pageListRows", 0);
  EXPECT_EQ(page->SelectedRow("pageListRows"), kNoRow);
  for (const char16_t* pages : {u"1", u"2", u"3"}) Add(pages);
  page->ClickRow("pageListRows", 2);
  page->ClickRow("pageListRows", 0);
  EXPECT_EQ(Rows(), "1 [2] 3") << "back to the row that had it";
  page->PressKey("pageListRows", ListKey::kPageUp);
  EXPECT_EQ(Rows(), "[1] 2 3");
  page->PressKey("pageListRows", ListKey::kUp);
  EXPECT_EQ(Rows(), "[1] 2 3");
}

TEST_F(PerPagePageTest, TextsOfARow) {
  Open();
  Add(u"1-9");
  desk.Expect("row-of-the-per-page-list", [&](ScriptedDialog& dialog) {
    dialog.Type("rowPages", u",1,,20-x0-5");
    EXPECT_EQ(dialog.TextOf("rowPages"), "1,20-5") << "wrong characters never reach the field";
    const std::pair<const char16_t*, const char*> cases[] = {{u"", "[28514]"},
                                                             {u"1 2", "[28514]"},
                                                             {u"5-", "[28514]"},
                                                             {u"1,,2", "[28512][28513]"},
                                                             {u"0", "[28512][28513]"},
                                                             {u"1-2-3", "[28512][28513]"},
                                                             {u"11-9999,11-30", "[21018]"}};
    for (const auto& [text, message] : cases)
      EXPECT_EQ(Confirm(dialog, "rowPages", text), std::string("[20157]|") + message + " at rowPages") << ToUtf8(text);
    EXPECT_EQ(Confirm(dialog, "rowPages", u"12,12,9"), "[20157]|[28502][28503]9,12, at rowPages");
    dialog.Put("rowPages", u"1,,2");
    EXPECT_FALSE(dialog.MoveFocus("lpInterSheetListTray"));
    EXPECT_EQ(desk.Told(), "[20157]|[28512][28513]");
    dialog.Put("rowPages", u"9");
    EXPECT_TRUE(dialog.MoveFocus("lpInterSheetListTray")) << "other rows are asked by OK alone";
    dialog.Click("Cancel");
  });
  page->Click("addPageListRow");
  EXPECT_EQ(Rows(), "[1-9]");
}

TEST_F(PerPagePageTest, AFullListAndItsOtherNine) {
  Open();
  for (int i = 0; i < 30; ++i) pages::StoreRow(engine(), {}, u"1");
  page->Click("addPageListRow");
  EXPECT_EQ(desk.Told(), "[20157]|[28585]");
  desk.Expect("name-of-the-per-page-list", [&](ScriptedDialog& dialog) {
    EXPECT_EQ(Confirm(dialog, "pageListName", u""), "[28546]|[28547] at pageListName");
    EXPECT_EQ(Confirm(dialog, "pageListName", u"[28588]"), "[28546]|[28548] at pageListName");
    dialog.Type("pageListName", u" Board and all others");
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  page->Click("renamePageList");
  EXPECT_EQ(page->SelectedText("lpInterSheetList"), "Board and all ot");
  Choose("lpInterSheetList", 2);
  EXPECT_EQ(Rows(), "");
  EXPECT_EQ(ui().stores.pageLists->lists[0].pageCount, 30);
  page->PressKey("pageListRows", ListKey::kUndo);
  EXPECT_EQ(page->beeps, 1);
  Choose("lpInterSheetList", 1);
  EXPECT_EQ((*page)["pageListRows"].rows.size(), 31U);
  EXPECT_TRUE(sheet->Confirm());
}

TEST_F(PerPagePageTest, RowsInConflictAreGreyAndRepairedWhenOpened) {
  Open("lpSourceUnit=Tray3And4");
  Add(u"1", "OneSided", "Tray3");
  Add(u"2", "OneSided", "Tray1");
  Put("lpSourceUnit=NotInstalled");
  ASSERT_NE(sheet->Show("per-page"), nullptr);
  EXPECT_EQ(Rows(), "1! [2]");
  desk.Expect("row-of-the-per-page-list", [](ScriptedDialog& dialog) { dialog.Click("OK"); });
  page->Activate("pageListRows", 1);
  EXPECT_EQ(Rows(), "[1] 2");
  EXPECT_TRUE(desk.Told().starts_with("[20157]|[22226][20136] => "));
}

TEST_F(PerPagePageTest, ChapterStarts) {
  Open("Chapter_Check=On InterSheet_Check=Off");
  page->Type("pagenumStr", u"10-6,2,4");
  EXPECT_TRUE(page->MoveFocus("Front_Check"));
  EXPECT_EQ(ToUtf8(pages::ChapterText(ui())), "2,4,6-10");
  const std::pair<const char16_t*, const char*> cases[] = {{u"1,,2", "[28512][28513]"},
                                                           {u"5-", "[28514]"},
                                                           {u"1-31", "[21018]"},
                                                           {u"12345", "[28514]"},
                                                           {u"1-6,1-6", "[28502][28503]1,2,3,4,5,..."}};
  for (const auto& [text, message] : cases) {
    page->Put("pagenumStr", text);
    EXPECT_FALSE(page->MoveFocus("Front_Check"));
    EXPECT_EQ(sheet->Show("paper"), nullptr);
    EXPECT_EQ(desk.Told(), "[20210]|" + std::string(message) + " / [20210]|" + message);
    EXPECT_EQ(page->FocusedName(), "pagenumStr");
  }
  EXPECT_EQ(ToUtf8(pages::ChapterText(ui())), "2,4,6-10");
  page->Put("pagenumStr", u"1-30");
  EXPECT_TRUE(page->MoveFocus("Front_Check"));
  page->Put("pagenumStr", u"");
  EXPECT_EQ(sheet->Show("paper"), nullptr) << "chapters without pages are switched off, and the page stays";
  EXPECT_EQ(desk.Told(), "[20210]|[29002]");
  EXPECT_EQ(Value("Chapter_Check"), "Off");
  EXPECT_FALSE(page->IsEnabled("pagenumStr"));
  EXPECT_NE(sheet->Show("paper"), nullptr);
}

TEST_F(PerPagePageTest, ReadOnlyShowsAndChangesNothing) {
  OpenPage("InterSheet_Check=On Chapter_Check=On", "per-page", kMayChangePrinterData | 32);
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << NameOfControl(id);
  EXPECT_TRUE(sheet->Confirm());
}

/// The rows against a plain model: numbers in a vector.
TEST_F(PerPagePageTest, RandomEditsAgreeWithAModel) {
  Open();
  std::mt19937 dice(7);
  std::vector<int> model;
  const auto pick = [&](size_t count) { return std::uniform_int_distribution<size_t>(0, count - 1)(dice); };
  for (int step = 0, next = 1; step < 3000; ++step) {
    const size_t size = model.size();
    const size_t act = pick(5);
    if (act <= 1) {
      const size_t place = pages::StoreRow(engine(), {}, FromUtf8(std::to_string(next)));
      EXPECT_EQ(place, size < 30 ? size : pages::kMostRows);
      if (size < 30) model.push_back(next++ % 9000);
      if (next == 9000) next = 1;
    } else if (act == 2) {
      const size_t from = pick(31), to = pick(31);
      EXPECT_EQ(pages::MoveRow(ui(), from, to), from < size && to < size);
      if (from >= size || to >= size) continue;
      const int moved = model[from];
      model.erase(model.begin() + static_cast<std::ptrdiff_t>(from));
      model.insert(model.begin() + static_cast<std::ptrdiff_t>(to), moved);
    } else if (act == 3 && size > 0) {
      const std::vector<size_t> gone = {pick(size), pick(40)};
      pages::RemoveRows(ui(), gone);
      std::vector<int> kept;
      for (size_t i = 0; i < size; ++i) {
        if (i != gone[0] && i != gone[1]) kept.push_back(model[i]);
      }
      model = kept;
    } else if (act == 4 && pick(20) == 0) {
      const bool descending = pick(2) == 1;
      pages::SortRows(engine(), pages::RowColumn::kPages, descending);
      std::ranges::stable_sort(model, [&](int a, int b) { return descending ? b < a : a < b; });
    }
    std::string wanted, found;
    for (const int row : model) wanted += std::to_string(row) + " ";
    for (const PageEntry& row : pages::WorkingRows(ui())) found += ToUtf8(pages::PagesOfRow(row)) + " ";
    ASSERT_EQ(found, wanted) << step;
  }
}

TEST(PageText, RandomTextsSurviveTheirNormalForm) {
  std::mt19937 dice(11);
  constexpr char16_t kSigns[] = u"0123456789,,--,1234567890";
  int right = 0;
  for (int i = 0; i < 100000; ++i) {
    std::u16string text;
    const size_t length = dice() % 12;
    for (size_t at = 0; at < length; ++at) text += kSigns[dice() % 24];
    const pages::PageNumbers read = pages::ReadPageText(text, pages::kMostPages);
    if (read.error != engine::PageTextError::kNone) continue;
    ++right;
    std::vector<uint16_t> sorted = read.numbers;
    std::ranges::sort(sorted);
    const std::u16string normal = pages::NormalPageText(read.numbers);
    ASSERT_EQ(engine::CheckPageText(normal), engine::PageTextError::kNone) << ToUtf8(text);
    ASSERT_EQ(pages::ReadPageText(normal, pages::kMostPages).numbers, sorted) << ToUtf8(text);
    ASSERT_EQ(pages::NormalPageText(sorted), normal) << ToUtf8(text);
  }
  EXPECT_GT(right, 10000);
}

}  // namespace
}  // namespace heron::test

// The paper page: what runs after a change of each of its controls.
#include "pages/sheet_fixture.h"
#include "pages/text_settings.h"

namespace heron::test {
namespace {

using namespace platform;
using pages::TextSetting;

class PaperPageTest : public SheetTest {
 protected:
  std::string Zoom() const {
    return page->TextOf(116) + (page->IsEnabled(116) ? "" : " locked") + " to " + std::to_string((*page)[117].maximum);
  }
};

TEST_F(PaperPageTest, EachKindStoresOnceAndMarksTheSheet) {
  OpenPage("lpOutputUnit=41");
  page->Press(107);
  page->Press(107);
  EXPECT_EQ(page->changes, 1) << "a radio that is pressed already is no change";
  EXPECT_EQ((*page)[183].picture, 10201U);
  page->Check(130, true);
  EXPECT_TRUE(page->IsEnabled(131));
  EXPECT_EQ((*page)[131].rows.size(), 2U);
  Choose(131, 4);
  Choose(174, 2);
  EXPECT_EQ(page->changes, 4);
  EXPECT_EQ(Value("lpOrientation"), 2);
  EXPECT_EQ(Value("lpStaple"), 4);
  EXPECT_EQ(Value("lpBindPosit"), 2);
  EXPECT_EQ(desk.Told(), "");
}

TEST_F(PaperPageTest, CopiesAreCutWhileTheyAreTyped) {
  OpenPage();
  page->Type(103, u"1000");
  EXPECT_EQ(page->TextOf(103), "999");
  EXPECT_EQ((*page)[103].selection_end - (*page)[103].selection_start, 3U);
  EXPECT_EQ((*page)[104].position, 999);
  page->Put(103, u"");
  EXPECT_EQ(page->TextOf(103), "1");
  page->Put(103, u"99999999999999999999x");
  EXPECT_EQ(Value("Copies"), 999);
  for (int copies = 0; copies <= 1001; ++copies) {
    page->Put(103, platform::FromUtf8(std::to_string(copies)));
    ASSERT_EQ(Value("Copies"), std::clamp(copies, 1, 999));
  }
  page->Spin(104, 12);
  EXPECT_EQ(page->TextOf(103), "12");
  EXPECT_EQ(Value("Copies"), 12);
  page->beeps = 0;
  page->Type(103, u"0-a7");
  EXPECT_EQ(page->TextOf(103), "7");
  EXPECT_EQ(page->beeps, 3);
  Put("lpOutput=1");
  page->Type(103, u"5");
  EXPECT_EQ(page->TextOf(103), "1") << "a fax has one";
  EXPECT_EQ(Value("Copies"), 1);
}

TEST_F(PaperPageTest, TheZoomFollowsThePapersAndIsCheckedWhenItIsLeft) {
  OpenPage("lpMediaSize=9");
  EXPECT_EQ(Zoom(), "100 locked to 400");
  Choose(114, 8);
  EXPECT_EQ(Zoom(), "142 to 400");
  page->Type(116, u"0");
  EXPECT_EQ(page->TextOf(116), "142") << "the filter drops a leading zero";
  page->Put(116, u"0");
  EXPECT_EQ(page->TextOf(116), "1");
  page->Put(116, u"5000");
  EXPECT_EQ(page->TextOf(116), "400");
  page->Type(116, u"5");
  EXPECT_EQ(Value("Zoom"), 5) << "more digits may follow";
  for (const ControlId to : {ControlId{0}, kCancelButton}) {
    page->Focus(116);
    EXPECT_TRUE(page->MoveFocus(to)) << "another window, and who cancels";
  }
  page->Focus(116);
  EXPECT_FALSE(page->Check(157, !(*page)[157].checked));
  EXPECT_EQ(desk.Told(), "[21016]|[21016] 25-400");
  for (int zoom = 1; zoom <= 402; ++zoom) {
    page->Put(116, platform::FromUtf8(std::to_string(zoom)));
    ASSERT_EQ(Value("Zoom"), std::min(zoom, 400));
    ASSERT_EQ(sheet->pages[0].logic->Deactivate(), zoom >= 25) << zoom;
  }
  desk.Told();
  page->Type(116, u"5");
  EXPECT_TRUE(page->Click(151)) << "the defaults set the zoom anyhow";
  EXPECT_EQ(Zoom(), "100 locked to 400");
  Choose(114, 8);
  page->Type(116, u"5");
  sheet->pages[0].logic->Reset();
  EXPECT_TRUE(sheet->pages[0].logic->Deactivate()) << "who cancels isn't asked";
}

TEST_F(PaperPageTest, TheZoomIsLimitedByThePaper) {
  OpenPage("lpMediaSize=9");
  UserPaperStore& papers = *ui().stores.userPapers;
  papers[0].height = 17000;
  Choose(111, 513);
  EXPECT_EQ(Zoom(), "100 locked to 300");
  papers[1].width = papers[1].height = 400;  // all but 1.68 mm of which are margins
  Choose(111, 514);
  Choose(114, 9);
  EXPECT_EQ(Zoom(), "400 to 400");
  EXPECT_EQ(Value("Zoom"), 400);
}

TEST_F(PaperPageTest, ALayoutOrAReducingMarginTakesTheZoomAway) {
  OpenPage("lpMediaSize=9 fMargin=20");
  Choose(114, 8);
  page->Check(124, true);
  EXPECT_EQ(Zoom(), "142 locked to 400");
  page->Check(124, false);
  Put("lpMarginMode=2");
  page->Check(155, true);
  EXPECT_EQ(Zoom(), "135 locked to 400") << "what is left beside the margin";
}

TEST_F(PaperPageTest, PaperListsOfferWhatExistsAsASheet) {
  OpenPage("lpPRNType=0 lpMediaSource=4 lpOutputTray=31");  // of which no rule forbids a paper
  // Whether the page shows any paper in the place of B4.
  const auto offers = [this, place = ToUtf8(PaperLabel(12))](uint16_t list, uint16_t paper) {
    engine::GetControlBlock(engine(), list)->Items()[list == 111 ? 3 : 4].value = paper;
    sheet->Show(100);
    const auto rows = page->RowsOf(list);
    return std::ranges::count(rows, place) != 0;
  };
  struct Case {
    uint16_t paper;
    bool original, output;
  };
  // A plain form, a rotated one, one that is produced on a larger sheet, one that is never offered.
  constexpr Case kCases[] = {
      {8, true, true}, {2057, false, true}, {333, false, true}, {0x40C, false, false}, {kCustomEntry, true, true}};
  for (const Case& c : kCases) {
    EXPECT_EQ(offers(111, c.paper), c.original) << c.paper;
    EXPECT_EQ(offers(114, c.paper), c.output) << c.paper;
  }
  engine::Setting<u"lpGraphicsMode">(ui()) = 1;
  EXPECT_TRUE(offers(111, kCustomEntry));
  EXPECT_FALSE(offers(114, kCustomEntry));
}

TEST_F(PaperPageTest, LayoutDetailsAreTakenOrPutBack) {
  OpenPage("lpLayout=8 lpOrder=1");
  page->Check(124, true);
  for (const bool landscape : {true, false}) {
    page->Press(landscape ? 107 : 106);
    desk.Expect(2900, [landscape](ScriptedDialog& dialog) {
      EXPECT_EQ(dialog.SelectedText(2904), landscape ? "[21429]" : "[21427]") << "the first of two";
      dialog.Click(kCancelButton);
    });
    Choose(125, 20);
  }
  desk.Expect(2900, [&](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.RowsOf(2902).size(), 5U) << "without the entry that opens the dialog";
    EXPECT_EQ(dialog.RowsOf(2904).size(), 2U);
    Choose(dialog, 2902, 5);
    EXPECT_EQ(Value("lpOrder"), 3) << "an order of four pages";
    EXPECT_EQ(dialog.RowsOf(2904).size(), 4U);
    dialog.Select(2904, 2);
    EXPECT_EQ(Value("lpOrder"), 5);
    Choose(dialog, 2902, 8);
    EXPECT_EQ(Value("lpOrder"), 1);
    Choose(dialog, 2902, 10);
    dialog.Select(2906, 1);
    dialog.Click(kCancelButton);
  });
  Choose(125, 20);
  EXPECT_EQ(Value("lpLayout"), 8);
  EXPECT_EQ(Value("lpOrder"), 1);
  EXPECT_EQ(engine::Setting<u"lpBorder2">(ui()), 0);
  EXPECT_EQ(page->SelectedText(125), "[40007]");

  desk.Expect(2900, [&](ScriptedDialog& dialog) {
    Choose(dialog, 2902, 6);
    dialog.Select(2906, 1);
    dialog.Click(kOkButton);
  });
  Choose(125, 20);
  EXPECT_EQ(Value("lpLayout"), 6);
  EXPECT_EQ(page->SelectedText(125), "[40010]");
  EXPECT_EQ(engine::Setting<u"lpBorder">(ui()), engine::Setting<u"lpBorder2">(ui()));
  EXPECT_EQ(engine::Setting<u"lpLayout_Select">(ui()), 1) << "derived from the check";
}

TEST_F(PaperPageTest, OutputMethodsWithADialog) {
  OpenPage("lpCopierHardDisk=2");
  desk.Expect(1800, [](ScriptedDialog& dialog) {
    dialog.Type(2931, u"plans");
    dialog.Click(kCancelButton);
  });
  Choose(172, 2);
  EXPECT_EQ(Value("lpOutputMethod"), 1);
  EXPECT_EQ(page->SelectedText(172), "[40103]");
  EXPECT_EQ(pages::GetText(ui(), TextSetting::kSecureId), u"");

  desk.Expect(1800, [](ScriptedDialog& dialog) {
    dialog.Type(2931, u"plans");
    dialog.Click(kOkButton);
  });
  Choose(172, 2);
  EXPECT_EQ(Value("lpOutputMethod"), 2);
  EXPECT_EQ(pages::GetText(ui(), TextSetting::kSecureId), u"plans");

  desk.Expect(2001, [](ScriptedDialog& dialog) { dialog.Click(kOkButton); });
  Choose(172, 4);
  EXPECT_EQ(desk.Told(), "[20021]|[25302]");
  EXPECT_EQ(page->Focused(), 172);
  EXPECT_EQ(Value("lpOutputMethod"), 1) << "nothing can be saved without a file name";

  desk.Expect(2001, [](ScriptedDialog& dialog) {
    dialog.Type(2941, u"report");
    dialog.Click(kOkButton);
  });
  Choose(172, 3);
  EXPECT_EQ(Value("lpOutputMethod"), 3);
}

TEST_F(PaperPageTest, AMethodThatIsDeclinedTakesItsTextsAlong) {
  OpenPage("OHPInterLeave_Check=0 lpCopierHardDisk=2 Sort_Check=1");
  Choose(172, 7);
  EXPECT_EQ(Value("lpOutputMethod"), 7);
  const auto before = Bytes();
  desk.Answer(IDNO);
  page->Check(142, false);
  EXPECT_NE(desk.Told().find("[20018] => "), std::string::npos);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_TRUE((*page)[142].checked);
}

TEST_F(PaperPageTest, DefaultsBringTheTraysBackToo) {
  OpenPage("lpMediaSource=1 lpPRNType=2");
  FindTrayMedia(ui(), 1)->mediaType = 2;
  page->Type(103, u"4");
  page->Click(151);
  EXPECT_EQ(engine::MediaOfTray(engine(), 1).mediaType, engine().Default(Named("trayMediaType")));
  EXPECT_EQ(Value("lpMediaSource"), 7);
  EXPECT_EQ(page->TextOf(103), "1");
  EXPECT_EQ(page->SelectedText(176), "[21595]");
  EXPECT_EQ(page->Focused(), 151);
}

}  // namespace
}  // namespace heron::test

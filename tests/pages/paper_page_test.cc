// The paper page: what runs after a change of each of its controls.
#include "generated/values.h"
#include "pages/text_settings.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using namespace platform;
using pages::TextSetting;

class PaperPageTest : public SheetTest {
 protected:
  std::string Zoom() const {
    return page->TextOf("Zoom") + (page->IsEnabled("Zoom") ? "" : " locked") + " to " +
           std::to_string((*page)["Zoom.spin"].maximum);
  }
};

TEST_F(PaperPageTest, EachKindStoresOnceAndMarksTheSheet) {
  OpenPage("lpOutputUnit=Floor2");
  page->Press("lpOrientation.Landscape");
  page->Press("lpOrientation.Landscape");
  EXPECT_EQ(page->changes, 1) << "a radio that is pressed already is no change";
  EXPECT_EQ((*page)["orientationPicture"].picture, 10201U);
  page->Check("Staple_Check", true);
  EXPECT_TRUE(page->IsEnabled("lpStaple"));
  EXPECT_EQ((*page)["lpStaple"].rows.size(), 2U);
  Choose("lpStaple", "TwoStaples");
  Choose("lpBindPosit", "Left");
  EXPECT_EQ(page->changes, 4);
  EXPECT_EQ(Value("lpOrientation"), "Landscape");
  EXPECT_EQ(Value("lpStaple"), "TwoStaples");
  EXPECT_EQ(Value("lpBindPosit"), "Left");
  EXPECT_EQ(desk.Told(), "");
}

TEST_F(PaperPageTest, CopiesAreCutWhileTheyAreTyped) {
  OpenPage();
  page->Type("Copies", u"1000");
  EXPECT_EQ(page->TextOf("Copies"), "999");
  EXPECT_EQ((*page)["Copies"].selection_end - (*page)["Copies"].selection_start, 3U);
  EXPECT_EQ((*page)["Copies.spin"].position, 999);
  page->Put("Copies", u"");
  EXPECT_EQ(page->TextOf("Copies"), "1");
  page->Put("Copies", u"99999999999999999999x");
  EXPECT_EQ(Value("Copies"), 999);
  for (int copies = 0; copies <= 1001; ++copies) {
    page->Put("Copies", platform::FromUtf8(std::to_string(copies)));
    ASSERT_EQ(Value("Copies"), std::clamp(copies, 1, 999));
  }
  page->Spin("Copies.spin", 12);
  EXPECT_EQ(page->TextOf("Copies"), "12");
  EXPECT_EQ(Value("Copies"), 12);
  page->beeps = 0;
  page->Type("Copies", u"0-a7");
  EXPECT_EQ(page->TextOf("Copies"), "7");
  EXPECT_EQ(page->beeps, 3);
  Put("lpOutput=Fax");
  page->Type("Copies", u"5");
  EXPECT_EQ(page->TextOf("Copies"), "1") << "a fax has one";
  EXPECT_EQ(Value("Copies"), 1);
}

TEST_F(PaperPageTest, TheZoomFollowsThePapersAndIsCheckedWhenItIsLeft) {
  OpenPage("lpMediaSize=A4");
  EXPECT_EQ(Zoom(), "100 locked to 400");
  Choose("lpOutputPaper", "A3");
  EXPECT_EQ(Zoom(), "142 to 400");
  page->Type("Zoom", u"0");
  EXPECT_EQ(page->TextOf("Zoom"), "142") << "the filter drops a leading zero";
  page->Put("Zoom", u"0");
  EXPECT_EQ(page->TextOf("Zoom"), "1");
  page->Put("Zoom", u"5000");
  EXPECT_EQ(page->TextOf("Zoom"), "400");
  page->Type("Zoom", u"5");
  EXPECT_EQ(Value("Zoom"), 5) << "more digits may follow";
  for (const ControlId to : {ControlId{0}, kCancelButton}) {
    page->Focus("Zoom");
    EXPECT_TRUE(page->MoveFocus(to)) << "another window, and Cancel";
  }
  page->Focus("Zoom");
  EXPECT_FALSE(page->Check("PaperLess_Check", !(*page)["PaperLess_Check"].checked));
  EXPECT_EQ(desk.Told(), "[21016]|[21016] 25-400");
  for (int zoom = 1; zoom <= 402; ++zoom) {
    page->Put("Zoom", platform::FromUtf8(std::to_string(zoom)));
    ASSERT_EQ(Value("Zoom"), std::min(zoom, 400));
    ASSERT_EQ(sheet->pages[0].logic->Deactivate(), zoom >= 25) << zoom;
  }
  desk.Told();
  page->Type("Zoom", u"5");
  EXPECT_TRUE(page->Click("restoreDefaults.paper")) << "the defaults set the zoom anyhow";
  EXPECT_EQ(Zoom(), "100 locked to 400");
  Choose("lpOutputPaper", "A3");
  page->Type("Zoom", u"5");
  sheet->pages[0].logic->Reset();
  EXPECT_TRUE(sheet->pages[0].logic->Deactivate()) << "a cancelled sheet asks nothing";
}

TEST_F(PaperPageTest, TheZoomIsLimitedByThePaper) {
  OpenPage("lpMediaSize=A4");
  UserPaperStore& papers = *ui().stores.userPapers;
  papers[0].height = 17000;
  Choose("lpMediaSize", "Custom1");
  EXPECT_EQ(Zoom(), "100 locked to 300");
  papers[1].width = papers[1].height = 400;  // all but 1.68 mm of which are margins
  Choose("lpMediaSize", "Custom2");
  Choose("lpOutputPaper", "A4");
  EXPECT_EQ(Zoom(), "400 to 400");
  EXPECT_EQ(Value("Zoom"), 400);
}

TEST_F(PaperPageTest, ALayoutOrAReducingMarginTakesTheZoomAway) {
  OpenPage("lpMediaSize=A4 fMargin=20");
  Choose("lpOutputPaper", "A3");
  page->Check("Nup_Check", true);
  EXPECT_EQ(Zoom(), "142 locked to 400");
  page->Check("Nup_Check", false);
  Put("lpMarginMode=Reduce");
  page->Check("BindMargin_Check", true);
  EXPECT_EQ(Zoom(), "135 locked to 400") << "what is left beside the margin";
}

TEST_F(PaperPageTest, PaperListsOfferWhatExistsAsASheet) {
  OpenPage("lpPRNType=0 lpMediaSource=Bypass lpOutputTray=Tray2");  // of which no rule forbids a paper
  // Whether the page shows any paper in the place of B4.
  const auto offers = [this, place = ToUtf8(PaperLabel(value::lpMediaSize::kB4))](ControlName list, uint16_t paper) {
    engine::GetControlBlock(engine(), list)->Items()[list == "lpMediaSize"_id ? 3 : 4].value = paper;
    sheet->Show("paper");
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
    EXPECT_EQ(offers("lpMediaSize", c.paper), c.original) << c.paper;
    EXPECT_EQ(offers("lpOutputPaper", c.paper), c.output) << c.paper;
  }
  engine::Setting<u"lpGraphicsMode">(ui()) = value::lpGraphicsMode::kRaster;
  EXPECT_TRUE(offers("lpMediaSize", kCustomEntry));
  EXPECT_FALSE(offers("lpOutputPaper", kCustomEntry));
}

TEST_F(PaperPageTest, LayoutDetailsAreTakenOrPutBack) {
  OpenPage("lpLayout=TwoPages lpOrder=TopToBottom");
  page->Check("Nup_Check", true);
  for (const bool landscape : {true, false}) {
    page->Press(landscape ? "lpOrientation.Landscape" : "lpOrientation.Portrait");
    desk.Expect("layout-details", [landscape](ScriptedDialog& dialog) {
      EXPECT_EQ(dialog.SelectedText("lpOrder.dialog"), landscape ? "[21429]" : "[21427]") << "the first of two";
      dialog.Click(kCancelButton);
    });
    Choose("lpLayout", "Details");
  }
  desk.Expect("layout-details", [&](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.RowsOf("lpLayout.dialog").size(), 5U) << "without the entry that opens the dialog";
    EXPECT_EQ(dialog.RowsOf("lpOrder.dialog").size(), 2U);
    Choose(dialog, "lpLayout.dialog", "SixPages");
    EXPECT_EQ(Value("lpOrder"), "RightThenDown") << "an order of four pages";
    EXPECT_EQ(dialog.RowsOf("lpOrder.dialog").size(), 4U);
    dialog.Select("lpOrder.dialog", 2);
    EXPECT_EQ(Value("lpOrder"), "LeftThenDown");
    Choose(dialog, "lpLayout.dialog", "TwoPages");
    EXPECT_EQ(Value("lpOrder"), "TopToBottom");
    Choose(dialog, "lpLayout.dialog", "FourPages");
    dialog.Select("lpBorder2.dialog", 1);
    dialog.Click(kCancelButton);
  });
  Choose("lpLayout", "Details");
  EXPECT_EQ(Value("lpLayout"), "TwoPages");
  EXPECT_EQ(Value("lpOrder"), "TopToBottom");
  EXPECT_EQ(engine::Setting<u"lpBorder2">(ui()), value::lpBorder2::kNoBorder);
  EXPECT_EQ(page->SelectedText("lpLayout"), "[40007]");

  desk.Expect("layout-details", [&](ScriptedDialog& dialog) {
    Choose(dialog, "lpLayout.dialog", "NinePages");
    dialog.Select("lpBorder2.dialog", 1);
    dialog.Click(kOkButton);
  });
  Choose("lpLayout", "Details");
  EXPECT_EQ(Value("lpLayout"), "NinePages");
  EXPECT_EQ(page->SelectedText("lpLayout"), "[40010]");
  EXPECT_EQ(engine::Setting<u"lpBorder">(ui()), engine::Setting<u"lpBorder2">(ui()));
  EXPECT_EQ(engine::Setting<u"lpLayout_Select">(ui()), value::lpLayout_Select::kPagesPerSheet)
      << "derived from the check";
}

TEST_F(PaperPageTest, OutputMethodsWithADialog) {
  OpenPage("lpCopierHardDisk=Installed");
  desk.Expect("secure-print", [](ScriptedDialog& dialog) {
    dialog.Type("secureId", u"plans");
    dialog.Click(kCancelButton);
  });
  Choose("lpOutputMethod", "Secure");
  EXPECT_EQ(Value("lpOutputMethod"), "Print");
  EXPECT_EQ(page->SelectedText("lpOutputMethod"), "[40103]");
  EXPECT_EQ(pages::GetText(ui(), TextSetting::kSecureId), u"");

  desk.Expect("secure-print", [](ScriptedDialog& dialog) {
    dialog.Type("secureId", u"plans");
    dialog.Click(kOkButton);
  });
  Choose("lpOutputMethod", "Secure");
  EXPECT_EQ(Value("lpOutputMethod"), "Secure");
  EXPECT_EQ(pages::GetText(ui(), TextSetting::kSecureId), u"plans");

  for (const ControlId button : {kOkButton, kCancelButton}) {
    desk.Expect("secure-print", [button](ScriptedDialog& dialog) {
      dialog.Type("secureId", button == kOkButton ? u"again" : u"never");
      dialog.Click(button);
    });
    Choose("lpOutputMethod", "Secure");
    EXPECT_EQ(Value("lpOutputMethod"), "Secure");
    EXPECT_EQ(pages::GetText(ui(), TextSetting::kSecureId), u"again") << "of the row that was chosen already";
  }

  desk.Expect("box", [](ScriptedDialog& dialog) { dialog.Click(kOkButton); });
  Choose("lpOutputMethod", "SaveToBoxAndPrint");
  EXPECT_EQ(desk.Told(), "[20021]|[25302]");
  EXPECT_EQ(page->FocusedName(), "lpOutputMethod");
  EXPECT_EQ(Value("lpOutputMethod"), "Print") << "nothing can be saved without a file name";

  desk.Expect("box", [](ScriptedDialog& dialog) {
    dialog.Type("boxFileName", u"report");
    dialog.Click(kOkButton);
  });
  Choose("lpOutputMethod", "SaveToBox");
  EXPECT_EQ(Value("lpOutputMethod"), "SaveToBox");
}

TEST_F(PaperPageTest, AMethodThatIsDeclinedTakesItsTextsAlong) {
  OpenPage("OHPInterLeave_Check=Off lpCopierHardDisk=Installed Sort_Check=On");
  Choose("lpOutputMethod", "Proof");
  EXPECT_EQ(Value("lpOutputMethod"), "Proof");
  const auto before = Bytes();
  desk.Answer(IDNO);
  page->Check("Sort_Check", false);
  EXPECT_NE(desk.Told().find("[20018] => "), std::string::npos);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_TRUE((*page)["Sort_Check"].checked);
}

TEST_F(PaperPageTest, DefaultsBringTheTraysBackToo) {
  OpenPage("lpMediaSource=Tray1 lpPRNType=TwoSided");
  FindTrayMedia(ui(), 1)->mediaType = 2;
  page->Type("Copies", u"4");
  page->Click("restoreDefaults.paper");
  EXPECT_EQ(engine::MediaOfTray(engine(), 1).mediaType, engine().Default(ControlNamed("trayMediaType")));
  EXPECT_EQ(Value("lpMediaSource"), "Auto");
  EXPECT_EQ(page->TextOf("Copies"), "1");
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21595]");
  EXPECT_EQ(page->FocusedName(), "restoreDefaults.paper");
}

}  // namespace
}  // namespace heron::test

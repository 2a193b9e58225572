// Custom sizes: units, typing, dialog 2200, and the warning that a size doesn't fit its tray.
#include "generated/values.h"
#include "pages/custom_papers.h"
#include "pages/size_text.h"
#include "platform/api/text.h"
#include "settings/papers.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using namespace platform;
using namespace pages;

TEST(SizeTextTest, EveryMillimetreSizeComesBackAsItWasTyped) {
  for (uint32_t tenths = 920; tenths <= 4318; ++tenths) {
    const std::u16string text = FormatSize(kMillimetre, tenths);
    ASSERT_EQ(ParseSize(kMillimetre, text), tenths) << ToUtf8(text);
    ASSERT_EQ(ShownFromThou(kMillimetre, ThouFromShown(kMillimetre, tenths)), tenths) << ToUtf8(text);
  }
  for (uint32_t mils = 3622; mils <= 17000; mils += 7) {
    ASSERT_EQ(ParseSize(kInch, FormatSize(kInch, mils)), mils);
  }
  EXPECT_EQ(ThouFromShown(kMillimetre, 2100), 8267U);
}

TEST(SizeTextTest, TypedTextOfAnyKind) {
  struct Case {
    const char16_t* text;
    uint32_t mm, inch;
  };
  constexpr Case kCases[] = {
      {u"", 0, 0},
      {u"210", 2100, 210000},
      {u"210.0mm", 2100, 210000},
      {u"  8.267inch", 82, 8267},
      {u".5", 5, 500},
      {u"8.26789", 82, 8268},
      {u"8.2672999", 82, 8267},
      {u"1.2.3", 12, 1200},
      {u"a1b2", 10, 1000},
      {u"0.05", 0, 50},
      {u"100.96", 1009, 100960},
      {u"mm", 0, 0},
      {u"12345678901234567890123456789012", 0, 0},
      {u"99999999999999999999", 10000000, 1000000000},
  };
  for (const Case& c : kCases) {
    EXPECT_EQ(ParseSize(kMillimetre, c.text), c.mm) << ToUtf8(c.text);
    EXPECT_EQ(ParseSize(kInch, c.text), c.inch) << ToUtf8(c.text);
  }
}

TEST(SizeTextTest, KeysThatASizeTakes) {
  struct Case {
    const char16_t* text;
    size_t start, end;
    char16_t key;
    bool mm, inch;
  };
  constexpr Case kCases[] = {
      {u"", 0, 0, u'2', true, true},          {u"", 0, 0, u'0', false, false},       {u"", 0, 0, u'.', false, false},
      {u"0", 1, 1, u'0', false, false},       {u"21", 2, 2, u'/', false, false},     {u"21", 2, 2, u'a', false, false},
      {u"21", 2, 2, u'.', true, true},        {u"21.0", 4, 4, u'.', false, false},   {u"21.0", 4, 4, u'5', false, true},
      {u"21.0", 1, 1, u'5', true, true},      {u"21.0mm", 6, 6, u'5', false, false}, {u"21.0mm", 6, 6, 8, true, true},
      {u"210.0mmx", 0, 0, u'1', false, true}, {u"210.0mmx", 0, 8, u'1', true, true}, {u"21.0", 3, 4, u'5', true, true},
  };
  for (const Case& c : kCases) {
    const TypedKey key{c.key, c.text, c.start, c.end};
    EXPECT_EQ(AcceptsSizeKey(kMillimetre, key), c.mm) << ToUtf8(c.text) << " " << static_cast<int>(c.key);
    EXPECT_EQ(AcceptsSizeKey(kInch, key), c.inch) << ToUtf8(c.text) << " " << static_cast<int>(c.key);
  }
}

TEST(SizeTextTest, KeysThatANumberTakes) {
  const auto takes = [](std::u16string_view text, size_t start, char16_t key) {
    return AcceptsNumberKey({key, text, start, text.size()}, 3);
  };
  EXPECT_TRUE(takes(u"100", 3, u'0'));
  EXPECT_FALSE(takes(u"1000", 4, u'0'));
  EXPECT_TRUE(takes(u"1000", 3, u'0')) << "over what is selected";
  EXPECT_TRUE(takes(u"1000", 4, 8)) << "control keys pass";
  EXPECT_FALSE(takes(u"10", 0, u'0'));
  EXPECT_FALSE(takes(u"1", 1, u'-'));
}

class CustomSizeTest : public SheetTest {
 protected:
  CustomPaperEntry& Entry(int number) { return *CustomEntry(*engine().ui, number); }  ///< of a dialog's copy too
  /// Opens dialog 2200 from a paper list.
  void Edit(ScriptedDesk::Script script, ControlName list = "lpMediaSize") {
    desk.Expect("custom-size", std::move(script));
    page->Choose(list, PaperLabel(kCustomEntry));
  }
};

TEST_F(CustomSizeTest, ATypedPaperIsChosenAndWritten) {
  OpenPage();
  desk.Answer(IDYES);
  Edit([](ScriptedDialog& dialog) {
    dialog.Select("customSizes", 1);
    EXPECT_EQ(dialog.TextOf("customName"), "[21551]");
    EXPECT_EQ(dialog.TextOf("customWidth.range"), "( 92.0 - 297.0mm )");
    EXPECT_EQ(dialog.TextOf("trayNote"), "for [21530]");
    dialog.Type("customName", u"Card");
    dialog.Type("customWidth", u"105.5");
    EXPECT_EQ(dialog.RowsOf("customSizes")[1], "Card(105.5 x 210.0mm)");
    dialog.Type("customLength", u"500");
    EXPECT_EQ(dialog.TextOf("customLength"), "431.8mm") << "cut at the maximum at once";
    dialog.Spin("customLength.spin", 1480);
    EXPECT_EQ(dialog.RowsOf("customSizes")[1], "Card(105.5 x 148.0mm)");
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(desk.Told(), "[21008]|[22215]?") << "the shortest length fits the tray";
  EXPECT_EQ(Value("lpMediaSize"), "Custom2");
  EXPECT_EQ(page->SelectedText("lpMediaSize"), "Card");
  EXPECT_EQ(engine::Setting<u"UDPaperWidth">(ui()), 1055);
  EXPECT_EQ(engine::Setting<u"UDPaperLength">(ui()), 1480);
  EXPECT_EQ(engine::Setting<u"lpUDPaperType">(ui()), value::lpUDPaperType::kCustom2);
  EXPECT_EQ(engine::Setting<u"UDMediaWidth">(ui()), 0) << "the output has another entry";
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"dmPaperSize">(sheet->out), 514);
  CustomPaperEntry stored;
  ASSERT_TRUE(ReadStoredUserPaper(printer.get(), 2, &stored));
  EXPECT_EQ(stored.width, 1055U * 1000 / 254);
}

TEST_F(CustomSizeTest, BothPapersOfOneEntryChangeTogether) {
  OpenPage("lpMediaSize=Custom2");
  engine::Setting<u"lpUDMediaType">(ui()) = value::lpUDMediaType::kCustom2;
  Entry(3).name[0] = u'\0';
  Edit([](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.SelectedRow("customSizes"), 1) << "the paper in force";
    dialog.Type("customWidth", u"100");
    dialog.Press("unit.Inches");
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(engine::Setting<u"UDPaperWidth">(ui()), 1000) << "in millimetres whatever the unit";
  EXPECT_EQ(engine::Setting<u"UDMediaWidth">(ui()), 1000);
  EXPECT_EQ(engine::Setting<u"lpUDMediaUnit">(ui()), kInch);
  const auto rows = page->RowsOf("lpMediaSize");
  EXPECT_EQ(std::ranges::count(rows, "(210.0 x 210.0mm)"), 1) << "a paper without a name shows its size";
}

TEST_F(CustomSizeTest, CancelAndNoLeaveEveryByte) {
  OpenPage();
  const auto before = Bytes();
  const std::string shown = page->SelectedText("lpMediaSize");
  Edit([](ScriptedDialog& dialog) {
    dialog.Type("customWidth", u"100");
    dialog.Click(kCancelButton);
  });
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(page->SelectedText("lpMediaSize"), shown);
  EXPECT_EQ(page->changes, 0);

  desk.Answer(IDNO);
  Edit([](ScriptedDialog& dialog) {
    dialog.Type("customName", u"Gone");
    dialog.Click(kOkButton);
  });
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(page->SelectedText("lpMediaSize"), shown);
  EXPECT_EQ(std::u16string(PaperLabel(513)), u"[21550]") << "the process's paper table too";
}

TEST_F(CustomSizeTest, ChecksInTheirOrder) {
  OpenPage();
  Edit([this](ScriptedDialog& dialog) {
    dialog.Type("customWidth", u"50");
    EXPECT_FALSE(dialog.MoveFocus("customLength"));
    EXPECT_EQ(desk.Told(), "[21008]|[25001]");
    EXPECT_TRUE(dialog.MoveFocus(0)) << "another window";
    dialog.Put("customWidth", u"");
    dialog.Put("customLength", u"1");
    dialog.Put("customName", u"");
    EXPECT_EQ(Confirm(dialog), "[21008]|[25001] at customWidth") << "the width first";
    EXPECT_EQ(dialog.TextOf("customWidth"), "92.0mm") << "nothing becomes the minimum";
    EXPECT_EQ(Confirm(dialog), "[21008]|[25001] at customLength");
    EXPECT_EQ(Confirm(dialog, "customLength", u"200"), "[21008]|[25003] at customName");
    EXPECT_FALSE(dialog.MoveFocus("customWidth"));
    EXPECT_EQ(desk.Told(), "[21008]|[25003]");
    EXPECT_EQ(Confirm(dialog, "customName", u"[21552]"), "[21008]|[25004] at customName");
    dialog.Put("customName", std::u16string(30, u'x') + u"\U0001F4C4 pasted");
    EXPECT_EQ(CustomPaperName(Entry(1)), std::u16string(30, u'x')) << "cut between characters";
    dialog.Click(kCancelButton);
  });
}

TEST_F(CustomSizeTest, ATrayWithoutCustomPapersIsNotNamed) {
  OpenPage("lpMediaSource=Tray1");
  Edit([this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf("trayNote"), "");
    dialog.Type("customWidth", u"300");
    EXPECT_EQ(dialog.TextOf("customWidth"), "297.0mm");
    dialog.Type("customWidth", u"91.9");
    EXPECT_FALSE(dialog.MoveFocus("customLength"));
    EXPECT_EQ(desk.Told(), "[21008]|[25002]");
    EXPECT_EQ(dialog.TextOf("customWidth"), "91.9mm");
    EXPECT_EQ(dialog["customWidth"].selection_end - dialog["customWidth"].selection_start, 6U);
    dialog.Click(kCancelButton);
  });
}

TEST_F(CustomSizeTest, TheUnitAloneChangesNoPaper) {
  OpenPage();
  Edit([this](ScriptedDialog& dialog) {
    const CustomPaperEntry before = Entry(1);
    dialog.Press("unit.Inches");
    EXPECT_EQ(dialog.TextOf("customWidth"), "8.267inch");
    EXPECT_EQ(dialog.TextOf("customLength.range"), "( 5.826 - 17.000inch )");
    dialog.Press("unit.Millimetres");
    EXPECT_EQ(dialog.TextOf("customWidth"), "210.0mm");
    EXPECT_EQ(Entry(1).width, before.width);
    EXPECT_EQ(Entry(1).height, before.height);
    Entry(1).width = 3620;
    dialog.Select("customSizes", 0);
    EXPECT_EQ(dialog.TextOf("customWidth"), "92.0mm");
    dialog.Press("unit.Inches");
    EXPECT_EQ(dialog.TextOf("customWidth"), "3.622inch") << "the smallest width in inches";
    EXPECT_EQ(Entry(1).width, 3622U);
    dialog.Click(kCancelButton);
  });
}

TEST_F(CustomSizeTest, WithoutRightsOneMayOnlyChoose) {
  for (const bool locked : {true, false}) {
    OpenPage({}, "paper", locked ? DM_COPY : kMayChangePrinterData);
    if (!locked) backend.machineWritable = false;
    desk.Answer(IDYES);
    Edit(
        [](ScriptedDialog& dialog) {
          for (const char* id : {"customWidth", "customWidth.spin", "customLength", "customLength.spin", "customName",
                                 "unit.Millimetres", "unit.Inches"})
            EXPECT_FALSE(dialog.IsEnabled(id)) << id;
          dialog.Select("customSizes", 9);
          dialog.Click(kOkButton);
        },
        "lpOutputPaper");
    EXPECT_EQ(Value("lpOutputPaper"), "Custom10");
    desk.Told();
  }
}

TEST_F(CustomSizeTest, APaperThatDoesNotFitItsTrayIsWarnedOf) {
  OpenPage("lpMediaSize=Custom1");
  for (uint32_t length = 1480; length <= 4318; ++length) {
    Entry(1).width = ThouFromShown(kMillimetre, std::min(length - 560, 2970U));
    Entry(1).height = ThouFromShown(kMillimetre, length);
    ASSERT_EQ(CustomPaperWarning(ui()).text, u"") << length << ": the dialog takes it";
  }
  Entry(1).width = 12000;
  Entry(1).height = 8267;
  Choose("lpMediaSource", "Bypass");
  EXPECT_EQ(desk.Told(), "[25006]|[21550], 304.8 mm, 210.0 mm,[21537],92.0-297.0 mm,148.0-431.8 mm");
  EXPECT_EQ(Value("lpMediaSource"), "Bypass") << "a warning only";
  Choose("lpMediaSize", "A4");
  EXPECT_EQ(desk.Told(), "");
  Choose("lpMediaSize", "Custom1");
  EXPECT_EQ(desk.Told().substr(0, 8), "[25006]|");
  Entry(1).unit = kInch;
  Choose("lpMediaSource", "Auto");
  EXPECT_EQ(desk.Told(), "[25006]|[21550], 12.000 inch , 8.267 inch ,[21530],3.622-11.692 inch,5.826-17.000 inch");
}

class PrintPositionTest : public CustomSizeTest {
 protected:
  /// Neither catalogue nor rules know a paper of the wide form: rows of the lists become one, and the entry that opens
  /// the dialog, and the settings are such that no rule asks for the paper.
  void OpenWithWidePapers(const std::string& settings = {}) {
    OpenPage("lpPRNType=0 lpMediaSource=Bypass lpOutputTray=Tray2 " + settings);
    for (const ControlName list : {"lpMediaSize", "lpOutputPaper"}) {
      for (ListItem& item : engine::GetControlBlock(engine(), list)->Items()) {
        if (item.value == 8) item.value = kWide;
        if (item.value == 12) item.value = kEntry;
      }
    }
    sheet->Show("paper");
  }
  /// The user presses a radio of the dialog, then OK or Cancel. The page's papers are still the old ones.
  void ExpectDialog(ControlName radio, ControlId button) {
    const auto papers = [this] { return std::pair(Value("lpMediaSize"), Value("lpOutputPaper")); };
    desk.Expect("print-position", [radio, button, papers, before = papers()](ScriptedDialog& dialog) {
      EXPECT_EQ(papers(), before) << "asked before the rules run";
      dialog.Press(radio);
      dialog.Click(button);
    });
  }
  static constexpr uint16_t kWide = 0x2008, kEntry = 0x1FF;
};

TEST_F(PrintPositionTest, IsAskedForAWideFormThatIsPrintedOn) {
  OpenWithWidePapers();
  ExpectDialog("lpWidePaperPos.TrailingEdge", kOkButton);
  Choose("lpMediaSize", kWide);
  EXPECT_EQ(Value("lpMediaSize"), kWide);
  EXPECT_EQ(Value("lpWidePaperPos"), "TrailingEdge");
  ExpectDialog("lpWidePaperPos.LeadingEdge", kCancelButton);
  Choose("lpOutputPaper", "SameAsDocument");
  EXPECT_EQ(Value("lpWidePaperPos"), "TrailingEdge");
  Put("lpOutputPaper=A4");
  desk.Answer(IDNO);
  Choose("lpMediaSize", kWide);
  EXPECT_EQ(page->changes, 3) << "another paper is printed on: no dialog";
  ExpectDialog("lpWidePaperPos.Center", kOkButton);
  Choose("lpOutputPaper", kWide);
  EXPECT_EQ(Value("lpOutputPaper"), kWide);
  EXPECT_EQ(Value("lpWidePaperPos"), "Center");
}

TEST_F(PrintPositionTest, HasAnEntryThatNeverStaysSelected) {
  OpenWithWidePapers("ImageShift_Check=On POD_Check=On");
  const std::string shown = page->SelectedText("lpOutputPaper");
  desk.Expect("print-position", [this](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled("lpWidePaperPos.Center")) << "a shifted image isn't centred";
    EXPECT_EQ(dialog["positionPicture"].picture, 10230U);
    dialog.Press("lpWidePaperPos.TrailingEdge");
    EXPECT_EQ(Value("lpWidePaperPos"), "TrailingEdge");
    EXPECT_EQ(dialog["positionPicture"].picture, 10231U);
    dialog.Click(kCancelButton);
  });
  Choose("lpOutputPaper", kEntry);
  EXPECT_EQ(Value("lpWidePaperPos"), "LeadingEdge");
  EXPECT_EQ(page->changes, 0);
  ExpectDialog("lpWidePaperPos.TrailingEdge", kOkButton);
  Choose("lpOutputPaper", kEntry);
  EXPECT_EQ(Value("lpWidePaperPos"), "TrailingEdge");
  EXPECT_EQ(page->SelectedText("lpOutputPaper"), shown);
  EXPECT_EQ(page->changes, 1);
}

}  // namespace
}  // namespace heron::test

// Custom sizes: units, typing, dialog 2200, and the warning that a size doesn't fit its tray.
#include "pages/custom_papers.h"
#include "pages/sheet_fixture.h"
#include "pages/size_text.h"
#include "platform/text.h"
#include "settings/papers.h"

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
  void Edit(ScriptedDesk::Script script, uint16_t list = 111) {
    desk.Expect(2200, std::move(script));
    page->Choose(list, PaperLabel(kCustomEntry));
  }
};

TEST_F(CustomSizeTest, ATypedPaperIsChosenAndWritten) {
  OpenPage();
  desk.Answer(IDYES);
  Edit([](ScriptedDialog& dialog) {
    dialog.Select(2201, 1);
    EXPECT_EQ(dialog.TextOf(2215), "[21551]");
    EXPECT_EQ(dialog.TextOf(2211), "( 92.0 - 297.0mm )");
    EXPECT_EQ(dialog.TextOf(2212), "for [21530]");
    dialog.Type(2215, u"Card");
    dialog.Type(2204, u"105.5");
    EXPECT_EQ(dialog.RowsOf(2201)[1], "Card(105.5 x 210.0mm)");
    dialog.Type(2207, u"500");
    EXPECT_EQ(dialog.TextOf(2207), "431.8mm") << "cut at the maximum at once";
    dialog.Spin(2208, 1480);
    EXPECT_EQ(dialog.RowsOf(2201)[1], "Card(105.5 x 148.0mm)");
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(desk.Told(), "[21008]|[22215]?") << "the shortest length fits the tray";
  EXPECT_EQ(Value("lpMediaSize"), 514);
  EXPECT_EQ(page->SelectedText(111), "Card");
  EXPECT_EQ(engine::Setting<u"UDPaperWidth">(ui()), 1055);
  EXPECT_EQ(engine::Setting<u"UDPaperLength">(ui()), 1480);
  EXPECT_EQ(engine::Setting<u"lpUDPaperType">(ui()), 2);
  EXPECT_EQ(engine::Setting<u"UDMediaWidth">(ui()), 0) << "the output has another entry";
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"dmPaperSize">(sheet->out), 514);
  CustomPaperEntry stored;
  ASSERT_TRUE(ReadStoredUserPaper(printer.get(), 2, &stored));
  EXPECT_EQ(stored.width, 1055U * 1000 / 254);
}

TEST_F(CustomSizeTest, BothPapersOfOneEntryChangeTogether) {
  OpenPage("lpMediaSize=514");
  engine::Setting<u"lpUDMediaType">(ui()) = 2;
  Entry(3).name[0] = u'\0';
  Edit([](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.SelectedRow(2201), 1) << "the paper in force";
    dialog.Type(2204, u"100");
    dialog.Press(2219);
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(engine::Setting<u"UDPaperWidth">(ui()), 1000) << "in millimetres whatever the unit";
  EXPECT_EQ(engine::Setting<u"UDMediaWidth">(ui()), 1000);
  EXPECT_EQ(engine::Setting<u"lpUDMediaUnit">(ui()), kInch);
  const auto rows = page->RowsOf(111);
  EXPECT_EQ(std::ranges::count(rows, "(210.0 x 210.0mm)"), 1) << "a paper without a name shows its size";
}

TEST_F(CustomSizeTest, CancelAndNoLeaveEveryByte) {
  OpenPage();
  const auto before = Bytes();
  const std::string shown = page->SelectedText(111);
  Edit([](ScriptedDialog& dialog) {
    dialog.Type(2204, u"100");
    dialog.Click(kCancelButton);
  });
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(page->SelectedText(111), shown);
  EXPECT_EQ(page->changes, 0);

  desk.Answer(IDNO);
  Edit([](ScriptedDialog& dialog) {
    dialog.Type(2215, u"Gone");
    dialog.Click(kOkButton);
  });
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(page->SelectedText(111), shown);
  EXPECT_EQ(std::u16string(PaperLabel(513)), u"[21550]") << "the process's paper table too";
}

TEST_F(CustomSizeTest, ChecksInTheirOrder) {
  OpenPage();
  Edit([this](ScriptedDialog& dialog) {
    dialog.Type(2204, u"50");
    EXPECT_FALSE(dialog.MoveFocus(2207));
    EXPECT_EQ(desk.Told(), "[21008]|[25001]");
    EXPECT_TRUE(dialog.MoveFocus(0)) << "another window";
    dialog.Put(2204, u"");
    dialog.Put(2207, u"1");
    dialog.Put(2215, u"");
    EXPECT_EQ(Confirm(dialog), "[21008]|[25001] at 2204") << "the width first";
    EXPECT_EQ(dialog.TextOf(2204), "92.0mm") << "nothing becomes the minimum";
    EXPECT_EQ(Confirm(dialog), "[21008]|[25001] at 2207");
    EXPECT_EQ(Confirm(dialog, 2207, u"200"), "[21008]|[25003] at 2215");
    EXPECT_FALSE(dialog.MoveFocus(2204));
    EXPECT_EQ(desk.Told(), "[21008]|[25003]");
    EXPECT_EQ(Confirm(dialog, 2215, u"[21552]"), "[21008]|[25004] at 2215");
    dialog.Put(2215, std::u16string(30, u'x') + u"\U0001F4C4 pasted");
    EXPECT_EQ(CustomPaperName(Entry(1)), std::u16string(30, u'x')) << "cut between characters";
    dialog.Click(kCancelButton);
  });
}

TEST_F(CustomSizeTest, ATrayWithoutCustomPapersIsNotNamed) {
  OpenPage("lpMediaSource=1");
  Edit([this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf(2212), "");
    dialog.Type(2204, u"300");
    EXPECT_EQ(dialog.TextOf(2204), "297.0mm");
    dialog.Type(2204, u"91.9");
    EXPECT_FALSE(dialog.MoveFocus(2207));
    EXPECT_EQ(desk.Told(), "[21008]|[25002]");
    EXPECT_EQ(dialog.TextOf(2204), "91.9mm");
    EXPECT_EQ(dialog[2204].selection_end - dialog[2204].selection_start, 6U);
    dialog.Click(kCancelButton);
  });
}

TEST_F(CustomSizeTest, TheUnitAloneChangesNoPaper) {
  OpenPage();
  Edit([this](ScriptedDialog& dialog) {
    const CustomPaperEntry before = Entry(1);
    dialog.Press(2219);
    EXPECT_EQ(dialog.TextOf(2204), "8.267inch");
    EXPECT_EQ(dialog.TextOf(2210), "( 5.826 - 17.000inch )");
    dialog.Press(2218);
    EXPECT_EQ(dialog.TextOf(2204), "210.0mm");
    EXPECT_EQ(Entry(1).width, before.width);
    EXPECT_EQ(Entry(1).height, before.height);
    Entry(1).width = 3620;
    dialog.Select(2201, 0);
    EXPECT_EQ(dialog.TextOf(2204), "92.0mm");
    dialog.Press(2219);
    EXPECT_EQ(dialog.TextOf(2204), "3.622inch") << "the smallest width in inches";
    EXPECT_EQ(Entry(1).width, 3622U);
    dialog.Click(kCancelButton);
  });
}

TEST_F(CustomSizeTest, WithoutRightsOneMayOnlyChoose) {
  for (const bool locked : {true, false}) {
    OpenPage({}, 100, locked ? DM_COPY : kMayChangePrinterData);
    if (!locked) backend.machineWritable = false;
    desk.Answer(IDYES);
    Edit(
        [](ScriptedDialog& dialog) {
          for (const int id : {2204, 2205, 2207, 2208, 2215, 2218, 2219})
            EXPECT_FALSE(dialog.IsEnabled(static_cast<ControlId>(id))) << id;
          dialog.Select(2201, 9);
          dialog.Click(kOkButton);
        },
        114);
    EXPECT_EQ(Value("lpOutputPaper"), 256);
    desk.Told();
  }
}

TEST_F(CustomSizeTest, APaperThatDoesNotFitItsTrayIsWarnedOf) {
  OpenPage("lpMediaSize=513");
  for (uint32_t length = 1480; length <= 4318; ++length) {
    Entry(1).width = ThouFromShown(kMillimetre, std::min(length - 560, 2970U));
    Entry(1).height = ThouFromShown(kMillimetre, length);
    ASSERT_EQ(CustomPaperWarning(ui()).text, u"") << length << ": the dialog takes it";
  }
  Entry(1).width = 12000;
  Entry(1).height = 8267;
  Choose(120, 4);
  EXPECT_EQ(desk.Told(), "[25006]|[21550], 304.8 mm, 210.0 mm,[21537],92.0-297.0 mm,148.0-431.8 mm");
  EXPECT_EQ(Value("lpMediaSource"), 4) << "a warning only";
  Choose(111, 9);
  EXPECT_EQ(desk.Told(), "");
  Choose(111, 513);
  EXPECT_EQ(desk.Told().substr(0, 8), "[25006]|");
  Entry(1).unit = kInch;
  Choose(120, 7);
  EXPECT_EQ(desk.Told(), "[25006]|[21550], 12.000 inch , 8.267 inch ,[21530],3.622-11.692 inch,5.826-17.000 inch");
}

class PrintPositionTest : public CustomSizeTest {
 protected:
  /// Neither catalogue nor rules know a paper of the wide form: rows of the lists become one, and the entry that opens
  /// the dialog, and the settings are such that no rule asks for the paper.
  void OpenWithWidePapers(const std::string& settings = {}) {
    OpenPage("lpPRNType=0 lpMediaSource=4 lpOutputTray=31 " + settings);
    for (const uint16_t list : {uint16_t{111}, uint16_t{114}}) {
      for (ListItem& item : engine::GetControlBlock(engine(), list)->Items()) {
        if (item.value == 8) item.value = kWide;
        if (item.value == 12) item.value = kEntry;
      }
    }
    sheet->Show(100);
  }
  /// The user presses a radio of the dialog, then OK or Cancel. The page's papers are still the old ones.
  void ExpectDialog(ControlId radio, ControlId button) {
    const auto papers = [this] { return std::pair(Value("lpMediaSize"), Value("lpOutputPaper")); };
    desk.Expect(2355, [radio, button, papers, before = papers()](ScriptedDialog& dialog) {
      EXPECT_EQ(papers(), before) << "asked before the rules run";
      dialog.Press(radio);
      dialog.Click(button);
    });
  }
  static constexpr uint16_t kWide = 0x2008, kEntry = 0x1FF;
};

TEST_F(PrintPositionTest, IsAskedForAWideFormThatIsPrintedOn) {
  OpenWithWidePapers();
  ExpectDialog(2359, kOkButton);
  Choose(111, kWide);
  EXPECT_EQ(Value("lpMediaSize"), kWide);
  EXPECT_EQ(Value("lpWidePaperPos"), 2);
  ExpectDialog(2357, kCancelButton);
  Choose(114, kSameAsDocument);
  EXPECT_EQ(Value("lpWidePaperPos"), 2);
  Put("lpOutputPaper=9");
  desk.Answer(IDNO);
  Choose(111, kWide);
  EXPECT_EQ(page->changes, 3) << "another paper is printed on: no dialog";
  ExpectDialog(2358, kOkButton);
  Choose(114, kWide);
  EXPECT_EQ(Value("lpOutputPaper"), kWide);
  EXPECT_EQ(Value("lpWidePaperPos"), 1);
}

TEST_F(PrintPositionTest, HasAnEntryThatNeverStaysSelected) {
  OpenWithWidePapers("ImageShift_Check=1 POD_Check=1");
  const std::string shown = page->SelectedText(114);
  desk.Expect(2355, [this](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled(2358)) << "a shifted image isn't centred";
    EXPECT_EQ(dialog[2356].picture, 10230U);
    dialog.Press(2359);
    EXPECT_EQ(Value("lpWidePaperPos"), 2);
    EXPECT_EQ(dialog[2356].picture, 10231U);
    dialog.Click(kCancelButton);
  });
  Choose(114, kEntry);
  EXPECT_EQ(Value("lpWidePaperPos"), 0);
  EXPECT_EQ(page->changes, 0);
  ExpectDialog(2359, kOkButton);
  Choose(114, kEntry);
  EXPECT_EQ(Value("lpWidePaperPos"), 2);
  EXPECT_EQ(page->SelectedText(114), shown);
  EXPECT_EQ(page->changes, 1);
}

}  // namespace
}  // namespace heron::test

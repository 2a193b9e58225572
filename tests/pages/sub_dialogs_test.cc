// The dialogs that the paper page opens: binding margin, secure print, box, authentication, paper types.
#include "pages/identity_fields.h"
#include "pages/sheet_fixture.h"
#include "platform/text.h"
#include "support/failing_new.h"

namespace heron::test {
namespace {

using namespace platform;
using pages::GetText;
using pages::TextSetting;

class SubDialogsTest : public SheetTest {
 protected:
  void Margin(ScriptedDesk::Script script) {
    desk.Expect(2300, std::move(script));
    page->Click(179);
  }
  std::string Margins() { return std::to_string(Value("fMargin")) + " " + std::to_string(Value("bMargin")); }
};

// -- binding margin

TEST_F(SubDialogsTest, MarginsAreTypedCheckedAndResolved) {
  OpenPage("BindMargin_Check=1 MarginEqual_Check=0");
  Margin([this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf(2308), "(0-50mm)");
    dialog.Type(2306, u"a99");
    EXPECT_EQ(dialog.TextOf(2306), "50") << "cut at the maximum";
    dialog.Type(2306, u"25");
    dialog.Type(2310, u"05");
    EXPECT_EQ(dialog.TextOf(2310), "0");
    EXPECT_EQ(Margins(), "25 10") << "a 0 is stored when it is left";
    EXPECT_TRUE(dialog.MoveFocus(2306));
    EXPECT_EQ(Margins(), "25 0");
    dialog.Put(2310, u"");
    EXPECT_FALSE(dialog.MoveFocus(2306));
    EXPECT_EQ(desk.Told(), "[21009]|[21480] 0-50");
    dialog.Put(2310, u"");
    EXPECT_EQ(Confirm(dialog), "[21009]|[21480] 0-50 at 2310");
    EXPECT_EQ(dialog.TextOf(2310), "0");
    EXPECT_EQ(Confirm(dialog, 2306, u"7x"), "[21009]|[21480] 0-50 at 2306");
    dialog.Check(2315, true);
    EXPECT_FALSE(dialog.IsEnabled(2310));
    dialog.Type(2306, u"33");
    EXPECT_EQ(dialog.TextOf(2310), "33");
    EXPECT_EQ(Margins(), "33 33");
    dialog.Spin(2307, 34);
    EXPECT_EQ(Margins(), "34 34");
    EXPECT_EQ(Confirm(dialog, 2306, u"7x"), "[21009]|[21480] 0-50 at 2306");
    EXPECT_EQ(dialog.TextOf(2310), "0") << "or what was refused would stay in a field that can't be reached";
    EXPECT_EQ(Confirm(dialog, 2306, u"99"), "closed") << "cut to 50 while it was typed";
  });
  EXPECT_EQ(Margins(), "50 50");
  EXPECT_EQ(page->changes, 1);
}

TEST_F(SubDialogsTest, CancelTakesTheMarginsBackWithTheirMode) {
  OpenPage("BindMargin_Check=1 lpMediaSize=9 fMargin=20 bMargin=5 MarginEqual_Check=0");
  const auto before = Bytes();
  Margin([](ScriptedDialog& dialog) {
    dialog.Press(2302);
    dialog.Check(2315, true);
    dialog.Type(2306, u"44");
    dialog.Put(2306, u"");
    dialog.Click(kCancelButton);
  });
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(page->changes, 0);
}

TEST_F(SubDialogsTest, AReductionWithoutRoomIsGivenUpAndToldOnce) {
  // The catalogue doesn't know how much of paper 11 can be printed on, so nothing fits it.
  OpenPage("BindMargin_Check=1 lpMarginMode=2 lpMediaSize=8 lpOutputPaper=11 fMargin=40");
  Margin([this](ScriptedDialog& dialog) {
    EXPECT_EQ(desk.Told(), "") << "not before it is on the screen";
    EXPECT_EQ(Value("lpMarginMode"), 1);
    EXPECT_FALSE(dialog.IsEnabled(2302));
    dialog.Paint(2316);
    EXPECT_EQ(desk.Told(), "[21019]|[25501]");
    dialog.Paint(2316);
    EXPECT_EQ(desk.Told(), "");
    dialog.Click(kCancelButton);
  });
  EXPECT_EQ(Value("lpMarginMode"), 2);
  EXPECT_EQ(Value("fMargin"), 40);
}

TEST_F(SubDialogsTest, ATighterRangeLowersTheMarginAndSaysSo) {
  OpenPage("BindMargin_Check=1 lpMediaSize=8 lpOutputPaper=43 lpMediaSource=4 fMargin=50 bMargin=50");
  Margin([this](ScriptedDialog& dialog) {
    dialog.Press(2302);
    EXPECT_EQ(desk.Told(),
              "[21019]|[25502][21112] => " + dialog.TextOf(2306) + " mm\n[21113] => " + dialog.TextOf(2310) + " mm\n");
    EXPECT_LT(Value("fMargin"), 50);
    EXPECT_EQ((*page)[155].enabled, true);
    EXPECT_EQ(dialog[2307].maximum, Value("fMargin"));
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(Value("lpMarginMode"), 2);
  EXPECT_EQ(Value("fMargin"), 19);
  EXPECT_EQ(Value("Zoom"), 29) << "what is left beside the margin";
  Margin([](ScriptedDialog& dialog) {
    dialog.Press(2301);
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(Value("Zoom"), 31) << "the rules see what the dialog changed";
}

// -- identity

TEST_F(SubDialogsTest, SecurePrintChecksInItsOrder) {
  OpenPage("lpCopierHardDisk=2");
  desk.Expect(1800, [this](ScriptedDialog& dialog) {
    EXPECT_TRUE(dialog[1802].visible);
    EXPECT_FALSE(dialog[1808].visible);
    EXPECT_EQ(Confirm(dialog), "[20025]|[21701] at 2931");
    dialog.Put(1802, u"p+");
    EXPECT_EQ(Confirm(dialog, 2931, u"caf\u00e9"), "[21700]|[21013][25203] at 2931");
    EXPECT_EQ(dialog.TextOf(2931), "");
    EXPECT_EQ(Confirm(dialog, 2931, u"plans"), "[25204]|[21013][25203] at 1802");
    EXPECT_EQ(dialog.TextOf(1802), "");
    dialog.beeps = 0;
    dialog.Type(1802, u"p\"+w123456789");
    EXPECT_EQ(dialog.TextOf(1802), "pw123456") << "eight characters, without the two";
    EXPECT_EQ(dialog.beeps, 5);
    EXPECT_EQ(GetText(ui(), TextSetting::kSecureId), u"") << "nothing is stored before the last check";
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  Choose(172, 2);
  const std::u16string kept = GetText(ui(), TextSetting::kSecurePassword);
  EXPECT_EQ(kept.find(u'p'), std::u16string::npos);
  EXPECT_EQ(TextScramble(kept, SecretKind::kSecurePrint), u"pw123456");
  ASSERT_TRUE(sheet->Confirm());
  sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
}

TEST_F(SubDialogsTest, ASecuredDeviceTakesNoPassword) {
  OpenPage("lpCopierHardDisk=2 Secur_Check=1");
  desk.Expect(1800, [](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled(1802));
    EXPECT_TRUE(dialog.IsEnabled(2931));
    dialog.Click(kCancelButton);
  });
  Choose(172, 2);
}

TEST_F(SubDialogsTest, APasswordIsPlainOnlyForAnOwnerWithAName) {
  OpenPage("lpCopierHardDisk=2");
  const auto shown = [this](std::u16string_view owner, uint16_t hides) {
    pages::SetText(ui(), TextSetting::kOwnerName, owner);
    engine::Setting<u"UnDisplayPW">(ui()) = hides;
    std::string fields;
    desk.Expect(1800, [&](ScriptedDialog& dialog) {
      for (const ControlId id : {ControlId{1802}, ControlId{1808}})
        fields += dialog[id].visible ? std::to_string(id) : "";
      dialog.Click(kCancelButton);
    });
    Choose(172, 2);
    return fields;
  };
  EXPECT_EQ(shown(u"ada", 0), "1808");
  EXPECT_EQ(shown(u"ada", 1), "1802");
  EXPECT_EQ(shown(u"", 0), "1802");
  EXPECT_EQ(shown(std::u16string(32, u'x'), 0), "1808");
  EXPECT_EQ(shown(std::u16string(33, u'x'), 0), "1802");
}

TEST_F(SubDialogsTest, BoxChecksInItsOrder) {
  OpenPage("lpCopierHardDisk=2");
  desk.Expect(2001, [this](ScriptedDialog& dialog) {
    dialog.Put(2941, u"a+b");
    EXPECT_EQ(Confirm(dialog, 2003, u"12a"), "[25301]|[21013][21011] at 2003");
    EXPECT_EQ(Confirm(dialog, 2003, u"000"), "[25301]|[25301] 1-999999999 at 2003");
    EXPECT_EQ(Confirm(dialog, 2003, u"0012"), "[21726]|[21013] at 2941");
    EXPECT_EQ(Confirm(dialog, 2941, std::u16string(31, u'x')), "[21726]|[21725] at 2941");
    EXPECT_EQ(Confirm(dialog, 2941, u"plans"), "closed");
  });
  Choose(172, 3);
  EXPECT_EQ(GetText(ui(), TextSetting::kBoxNumber), u"0012");
  EXPECT_EQ(GetText(ui(), TextSetting::kBoxFileName), u"plans");
}

TEST_F(SubDialogsTest, AuthenticationChecksInItsOrder) {
  OpenPage();
  const auto before = Bytes();
  desk.Expect(2950, [&](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled(2953));
    EXPECT_FALSE(dialog.IsEnabled(2956));
    dialog.Check(2952, true);
    dialog.Press(2954);
    EXPECT_TRUE(dialog.IsEnabled(2956));
    dialog.Check(2962, true);
    dialog.Put(2958, u"p\u00fc");
    EXPECT_EQ(Confirm(dialog, 2964, u"d\""), "[21711]|[21013][25203] at 2958");
    EXPECT_EQ(Confirm(dialog, 2958, u"pw"), "[21719]|[21715] at 2956");
    EXPECT_EQ(Confirm(dialog, 2956, std::u16string(40, u'\u00fc')), "[21723]|[21722] at 2956") << "bytes count";
    EXPECT_EQ(Confirm(dialog, 2956, u"a+"), "[21723]|[21013] at 2956");
    dialog.Put(2966, u"+");
    EXPECT_EQ(Confirm(dialog, 2956, u"ada"), "[21712]|[21013][25203] at 2966");
    EXPECT_EQ(Confirm(dialog), "[21710]|[21013][25203] at 2964");
    EXPECT_TRUE(Bytes() == before) << "it works on a copy";
    EXPECT_EQ(Confirm(dialog, 2964, u"lab"), "closed");
  });
  page->Click(181);
  EXPECT_EQ(Value("lpAuthUserMode"), 2);
  EXPECT_EQ(GetText(ui(), TextSetting::kAuthUserName), u"ada");
  EXPECT_EQ(TextScramble(GetText(ui(), TextSetting::kAuthPassword), SecretKind::kUser), u"pw");
  EXPECT_EQ(GetText(ui(), TextSetting::kDepartmentName), u"lab");
  EXPECT_EQ(GetText(ui(), TextSetting::kDepartmentPassword), u"");

  desk.Expect(2950, [this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf(2958), "pw");
    dialog.Put(2956, u"");
    dialog.Press(2953);
    EXPECT_EQ(Confirm(dialog), "closed") << "a shared user has no name";
  });
  page->Click(181);
}

TEST_F(SubDialogsTest, ANameCountsItsBytesInTheSystemsCodePage) {
  constexpr pages::IdentityField kField[] = {{1, pages::FieldClass::kName, 30}};
  const auto takes = [&](std::u16string_view text, char16_t key) {
    return pages::AcceptsIdentityKey(kField, 1, {key, text, text.size(), text.size()});
  };
  const std::u16string wide(15, u'\u00e9');  // two bytes each in UTF-8
  EXPECT_TRUE(takes(wide.substr(1), u'\u00e9'));
  EXPECT_FALSE(takes(wide, u'\u00e9'));
  EXPECT_FALSE(takes(wide, u'x'));
  EXPECT_FALSE(takes(wide.substr(1) + u"x", u'\u00e9'));
  EXPECT_TRUE(takes(wide.substr(1) + u"x", u'y'));
  EXPECT_TRUE(takes(std::u16string(13, u'\u00e9') + u"\xD83D", u'\xDE00')) << "a pair is one character of four bytes";
  EXPECT_TRUE(takes(wide, 8)) << "control keys pass";
  EXPECT_FALSE(takes(u"", u'+'));
}

// -- paper types

TEST_F(SubDialogsTest, EachTrayHasItsPaper) {
  OpenPage("lpMediaSource=4");
  desk.Expect(2910, [this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.RowsOf(2911).at(1).substr(0, 8), "[21531]|");
    EXPECT_FALSE(dialog.IsEnabled(2913)) << "there are no transparencies";
    EXPECT_FALSE(dialog.IsEnabled(2912)) << "no tray is selected";
    desk.Expect(2920, [this](ScriptedDialog& edit) {
      Choose(edit, 2921, 2);
      edit.Click(kOkButton);
    });
    dialog.Choose(2911, u"[21537]");
    dialog.Click(2912);
    EXPECT_TRUE(dialog.IsEnabled(2913));
    desk.Expect(2020, [](ScriptedDialog& tray) { tray.Click(kCancelButton); });
    dialog.Check(2913, true);
    EXPECT_TRUE(dialog[2913].checked) << "cancelling there leaves it on";
    EXPECT_TRUE(dialog.IsEnabled(2914));

    desk.Expect(2920, [this](ScriptedDialog& edit) {
      Choose(edit, 2921, 1);
      edit.Click(kOkButton);
    });
    dialog.Choose(2911, u"[21537]");
    dialog.Click(2912);
    EXPECT_FALSE(dialog[2913].checked) << "with the last transparencies the interleave goes";
    desk.Expect(2920, [this](ScriptedDialog& edit) {
      Choose(edit, 2921, 2);
      edit.Click(kOkButton);
    });
    dialog.Click(2912);
    dialog.Click(kOkButton);
  });
  page->Click(182);
  EXPECT_EQ(engine::MediaOfTray(engine(), 4).mediaType, 2);
  EXPECT_EQ(Value("trayMediaType"), 2);
  EXPECT_EQ(page->changes, 1);

  desk.Expect(2910, [this](ScriptedDialog& dialog) {
    desk.Expect(2920, [this](ScriptedDialog& edit) {
      Choose(edit, 2921, 1);
      edit.Click(kOkButton);
    });
    dialog.Choose(2911, u"[21537]");
    dialog.Click(2912);
    dialog.Click(kCancelButton);
  });
  page->Click(182);
  EXPECT_EQ(engine::MediaOfTray(engine(), 4).mediaType, 2) << "the copy was dropped";
}

TEST_F(SubDialogsTest, ATrayIsLeftAloneIfNoCopyCanBeMadeToEditIt) {
  OpenPage("OHPInterLeave_Check=1");
  desk.Expect(2910, [](ScriptedDialog& dialog) {
    dialog.Select(2911, 0);
    {
      const FailingNew none(0);
      dialog.Click(2912);
    }
    EXPECT_TRUE(dialog[2913].checked) << "nothing was edited that could have ended it";
    dialog.Click(kCancelButton);
  });
  page->Click(182);
}

}  // namespace
}  // namespace heron::test

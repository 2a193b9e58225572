// The dialogs that the paper page opens: binding margin, secure print, box, authentication, paper types.
#include "pages/identity_fields.h"
#include "platform/api/text.h"
#include "sheet_fixture.h"
#include "support/failing_new.h"

namespace heron::test {
namespace {

using namespace platform;
using pages::GetText;
using pages::TextSetting;

class SubDialogsTest : public SheetTest {
 protected:
  void Margin(ScriptedDesk::Script script) {
    desk.Expect("binding-margin", std::move(script));
    page->Click("bindingMarginButton");
  }
  std::string Margins() { return std::to_string(Value("fMargin")) + " " + std::to_string(Value("bMargin")); }
};

// -- binding margin

TEST_F(SubDialogsTest, MarginsAreTypedCheckedAndResolved) {
  OpenPage("BindMargin_Check=On MarginEqual_Check=Off");
  Margin([this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf("fMargin.range"), "(0-50mm)");
    dialog.Type("fMargin", u"a99");
    EXPECT_EQ(dialog.TextOf("fMargin"), "50") << "cut at the maximum";
    dialog.Type("fMargin", u"25");
    dialog.Type("bMargin", u"05");
    EXPECT_EQ(dialog.TextOf("bMargin"), "0");
    EXPECT_EQ(Margins(), "25 10") << "a 0 is stored when it is left";
    EXPECT_TRUE(dialog.MoveFocus("fMargin"));
    EXPECT_EQ(Margins(), "25 0");
    dialog.Put("bMargin", u"");
    EXPECT_FALSE(dialog.MoveFocus("fMargin"));
    EXPECT_EQ(desk.Told(), "[21009]|[21480] 0-50");
    dialog.Put("bMargin", u"");
    EXPECT_EQ(Confirm(dialog), "[21009]|[21480] 0-50 at bMargin");
    EXPECT_EQ(dialog.TextOf("bMargin"), "0");
    EXPECT_EQ(Confirm(dialog, "fMargin", u"7x"), "[21009]|[21480] 0-50 at fMargin");
    dialog.Check("MarginEqual_Check", true);
    EXPECT_FALSE(dialog.IsEnabled("bMargin"));
    dialog.Type("fMargin", u"33");
    EXPECT_EQ(dialog.TextOf("bMargin"), "33");
    EXPECT_EQ(Margins(), "33 33");
    dialog.Spin("fMargin.spin", 34);
    EXPECT_EQ(Margins(), "34 34");
    EXPECT_EQ(Confirm(dialog, "fMargin", u"7x"), "[21009]|[21480] 0-50 at fMargin");
    EXPECT_EQ(dialog.TextOf("bMargin"), "0") << "or what was refused would stay in a field that can't be reached";
    EXPECT_EQ(Confirm(dialog, "fMargin", u"99"), "closed") << "cut to 50 while it was typed";
  });
  EXPECT_EQ(Margins(), "50 50");
  EXPECT_EQ(page->changes, 1);
}

TEST_F(SubDialogsTest, CancelTakesTheMarginsBackWithTheirMode) {
  OpenPage("BindMargin_Check=On lpMediaSize=A4 fMargin=20 bMargin=5 MarginEqual_Check=Off");
  const auto before = Bytes();
  Margin([](ScriptedDialog& dialog) {
    dialog.Press("lpMarginMode.Reduce");
    dialog.Check("MarginEqual_Check", true);
    dialog.Type("fMargin", u"44");
    dialog.Put("fMargin", u"");
    dialog.Click(kCancelButton);
  });
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(page->changes, 0);
}

TEST_F(SubDialogsTest, AReductionWithoutRoomIsGivenUpAndReportedOnce) {
  // The catalogue doesn't know how much of paper 11 can be printed on, so nothing fits it.
  OpenPage("BindMargin_Check=On lpMarginMode=Reduce lpMediaSize=A3 lpOutputPaper=11 fMargin=40");
  Margin([this](ScriptedDialog& dialog) {
    EXPECT_EQ(desk.Told(), "") << "not before it is on the screen";
    EXPECT_EQ(Value("lpMarginMode"), "Shift");
    EXPECT_FALSE(dialog.IsEnabled("lpMarginMode.Reduce"));
    dialog.Paint("firstPaint.bindingMargin");
    EXPECT_EQ(desk.Told(), "[21019]|[25501]");
    dialog.Paint("firstPaint.bindingMargin");
    EXPECT_EQ(desk.Told(), "");
    dialog.Click(kCancelButton);
  });
  EXPECT_EQ(Value("lpMarginMode"), "Reduce");
  EXPECT_EQ(Value("fMargin"), 40);
}

TEST_F(SubDialogsTest, ATighterRangeLowersTheMarginAndSaysSo) {
  OpenPage("BindMargin_Check=On lpMediaSize=A3 lpOutputPaper=Postcard lpMediaSource=Bypass fMargin=50 bMargin=50");
  Margin([this](ScriptedDialog& dialog) {
    dialog.Press("lpMarginMode.Reduce");
    EXPECT_EQ(desk.Told(), "[21019]|[25502][21112] => " + dialog.TextOf("fMargin") + " mm\n[21113] => " +
                               dialog.TextOf("bMargin") + " mm\n");
    EXPECT_LT(Value("fMargin"), 50);
    EXPECT_EQ((*page)["BindMargin_Check"].enabled, true);
    EXPECT_EQ(dialog["fMargin.spin"].maximum, Value("fMargin"));
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(Value("lpMarginMode"), "Reduce");
  EXPECT_EQ(Value("fMargin"), 19);
  EXPECT_EQ(Value("Zoom"), 29) << "what is left beside the margin";
  Margin([](ScriptedDialog& dialog) {
    dialog.Press("lpMarginMode.Shift");
    dialog.Click(kOkButton);
  });
  EXPECT_EQ(Value("Zoom"), 31) << "the rules see what the dialog changed";
}

// -- identity

TEST_F(SubDialogsTest, SecurePrintChecksInItsOrder) {
  OpenPage("lpCopierHardDisk=Installed");
  desk.Expect("secure-print", [this](ScriptedDialog& dialog) {
    EXPECT_TRUE(dialog["securePassword"].visible);
    EXPECT_FALSE(dialog["securePassword.plain"].visible);
    EXPECT_EQ(Confirm(dialog), "[20025]|[21701] at secureId");
    dialog.Put("securePassword", u"p+");
    EXPECT_EQ(Confirm(dialog, "secureId", u"caf\u00e9"), "[21700]|[21013][25203] at secureId");
    EXPECT_EQ(dialog.TextOf("secureId"), "");
    EXPECT_EQ(Confirm(dialog, "secureId", u"plans"), "[25204]|[21013][25203] at securePassword");
    EXPECT_EQ(dialog.TextOf("securePassword"), "");
    dialog.beeps = 0;
    dialog.Type("securePassword", u"p\"+w123456789");
    EXPECT_EQ(dialog.TextOf("securePassword"), "pw123456") << "eight characters, without the two";
    EXPECT_EQ(dialog.beeps, 5);
    EXPECT_EQ(GetText(ui(), TextSetting::kSecureId), u"") << "nothing is stored before the last check";
    EXPECT_EQ(Confirm(dialog), "closed");
  });
  Choose("lpOutputMethod", "Secure");
  const std::u16string kept = GetText(ui(), TextSetting::kSecurePassword);
  EXPECT_EQ(kept.find(u'p'), std::u16string::npos);
  EXPECT_EQ(TextScramble(kept, SecretKind::kSecurePrint), u"pw123456");
  ASSERT_TRUE(sheet->Confirm());
  sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
}

TEST_F(SubDialogsTest, ASecuredDeviceTakesNoPassword) {
  OpenPage("lpCopierHardDisk=Installed Secur_Check=On");
  desk.Expect("secure-print", [](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled("securePassword"));
    EXPECT_TRUE(dialog.IsEnabled("secureId"));
    dialog.Click(kCancelButton);
  });
  Choose("lpOutputMethod", "Secure");
}

TEST_F(SubDialogsTest, APasswordIsPlainOnlyForAnOwnerWithAName) {
  OpenPage("lpCopierHardDisk=Installed");
  const auto shown = [this](std::u16string_view owner, uint16_t hides) {
    pages::SetText(ui(), TextSetting::kOwnerName, owner);
    engine::Setting<u"UnDisplayPW">(ui()) = hides;
    std::string fields;
    desk.Expect("secure-print", [&](ScriptedDialog& dialog) {
      for (const char* field : {"securePassword", "securePassword.plain"})
        if (dialog[field].visible) fields += field;
      dialog.Click(kCancelButton);
    });
    Choose("lpOutputMethod", "Secure");
    return fields;
  };
  EXPECT_EQ(shown(u"ada", 0), "securePassword.plain");
  EXPECT_EQ(shown(u"ada", 1), "securePassword");
  EXPECT_EQ(shown(u"", 0), "securePassword");
  EXPECT_EQ(shown(std::u16string(32, u'x'), 0), "securePassword.plain");
  EXPECT_EQ(shown(std::u16string(33, u'x'), 0), "securePassword");
}

TEST_F(SubDialogsTest, BoxChecksInItsOrder) {
  OpenPage("lpCopierHardDisk=Installed");
  desk.Expect("box", [this](ScriptedDialog& dialog) {
    dialog.Put("boxFileName", u"a+b");
    EXPECT_EQ(Confirm(dialog, "boxNumber", u"12a"), "[25301]|[21013][21011] at boxNumber");
    EXPECT_EQ(Confirm(dialog, "boxNumber", u"000"), "[25301]|[25301] 1-999999999 at boxNumber");
    EXPECT_EQ(Confirm(dialog, "boxNumber", u"0012"), "[21726]|[21013] at boxFileName");
    EXPECT_EQ(Confirm(dialog, "boxFileName", std::u16string(31, u'x')), "[21726]|[21725] at boxFileName");
    EXPECT_EQ(Confirm(dialog, "boxFileName", u"plans"), "closed");
  });
  Choose("lpOutputMethod", "SaveToBox");
  EXPECT_EQ(GetText(ui(), TextSetting::kBoxNumber), u"0012");
  EXPECT_EQ(GetText(ui(), TextSetting::kBoxFileName), u"plans");
}

TEST_F(SubDialogsTest, AuthenticationChecksInItsOrder) {
  OpenPage();
  const auto before = Bytes();
  desk.Expect("authentication-and-department", [&](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled("lpAuthUserMode.Shared"));
    EXPECT_FALSE(dialog.IsEnabled("authUserName"));
    dialog.Check("UserAuth_Check", true);
    dialog.Press("lpAuthUserMode.LoggedIn");
    EXPECT_TRUE(dialog.IsEnabled("authUserName"));
    dialog.Check("SecMana_Check", true);
    dialog.Put("authPassword", u"p\u00fc");
    EXPECT_EQ(Confirm(dialog, "departmentName", u"d\""), "[21711]|[21013][25203] at authPassword");
    EXPECT_EQ(Confirm(dialog, "authPassword", u"pw"), "[21719]|[21715] at authUserName");
    EXPECT_EQ(Confirm(dialog, "authUserName", std::u16string(40, u'\u00fc')), "[21723]|[21722] at authUserName")
        << "bytes count";
    EXPECT_EQ(Confirm(dialog, "authUserName", u"a+"), "[21723]|[21013] at authUserName");
    dialog.Put("departmentPassword", u"+");
    EXPECT_EQ(Confirm(dialog, "authUserName", u"ada"), "[21712]|[21013][25203] at departmentPassword");
    EXPECT_EQ(Confirm(dialog), "[21710]|[21013][25203] at departmentName");
    EXPECT_TRUE(Bytes() == before) << "it works on a copy";
    EXPECT_EQ(Confirm(dialog, "departmentName", u"lab"), "closed");
  });
  page->Click("authenticationButton");
  EXPECT_EQ(Value("lpAuthUserMode"), "LoggedIn");
  EXPECT_EQ(GetText(ui(), TextSetting::kAuthUserName), u"ada");
  EXPECT_EQ(TextScramble(GetText(ui(), TextSetting::kAuthPassword), SecretKind::kUser), u"pw");
  EXPECT_EQ(GetText(ui(), TextSetting::kDepartmentName), u"lab");
  EXPECT_EQ(GetText(ui(), TextSetting::kDepartmentPassword), u"");

  desk.Expect("authentication-and-department", [this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.TextOf("authPassword"), "pw");
    dialog.Put("authUserName", u"");
    dialog.Press("lpAuthUserMode.Shared");
    EXPECT_EQ(Confirm(dialog), "closed") << "a shared user has no name";
  });
  page->Click("authenticationButton");
}

TEST_F(SubDialogsTest, ANameCountsItsBytesInTheSystemsCodePage) {
  constexpr pages::IdentityField kField[] = {{1, pages::TextSetting::kBoxFileName}};
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

class PaperTypeTest : public SubDialogsTest {
 protected:
  /// Gives the bypass another media type.
  void Edit(ScriptedDialog& dialog, std::string_view media) {
    desk.Expect("edit-paper-type", [this, media](ScriptedDialog& edit) {
      Choose(edit, "lpMediaType.dialog", media);
      edit.Click(kOkButton);
    });
    dialog.Choose("trays", u"[21537]");
    dialog.Click("editTray");
  }
};

TEST_F(PaperTypeTest, EachTrayHasItsPaper) {
  OpenPage("lpMediaSource=Bypass");
  desk.Expect("paper-type", [this](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog.RowsOf("trays").at(1).substr(0, 8), "[21531]|");
    EXPECT_FALSE(dialog.IsEnabled("OHPInterLeave_Check")) << "there are no transparencies";
    EXPECT_FALSE(dialog.IsEnabled("editTray")) << "no tray is selected";
    Edit(dialog, "Transparency");
    EXPECT_TRUE(dialog.IsEnabled("OHPInterLeave_Check"));
    desk.Expect("transparency-interleave", [](ScriptedDialog& tray) { tray.Click(kCancelButton); });
    dialog.Check("OHPInterLeave_Check", true);
    EXPECT_TRUE(dialog["OHPInterLeave_Check"].checked) << "cancelling there leaves it on";
    EXPECT_TRUE(dialog.IsEnabled("interleaveSettings"));

    Edit(dialog, "Plain");
    EXPECT_FALSE(dialog["OHPInterLeave_Check"].checked) << "with the last transparencies the interleave goes";
    Edit(dialog, "Transparency");
    dialog.Click(kOkButton);
  });
  page->Click("paperTypeButton");
  EXPECT_EQ(engine::MediaOfTray(engine(), 4).mediaType, 2);
  EXPECT_EQ(Value("trayMediaType"), "Transparency");
  EXPECT_EQ(page->changes, 1);

  desk.Expect("paper-type", [this](ScriptedDialog& dialog) {
    Edit(dialog, "Plain");
    dialog.Click(kCancelButton);
  });
  page->Click("paperTypeButton");
  EXPECT_EQ(engine::MediaOfTray(engine(), 4).mediaType, 2) << "the copy was dropped";
}

TEST_F(SubDialogsTest, ATrayIsLeftAloneIfNoCopyCanBeMadeToEditIt) {
  OpenPage("OHPInterLeave_Check=On");
  desk.Expect("paper-type", [](ScriptedDialog& dialog) {
    dialog.Select("trays", 0);
    {
      const FailingNew none(0);
      dialog.Click("editTray");
    }
    EXPECT_TRUE(dialog["OHPInterLeave_Check"].checked) << "nothing was edited that could have ended it";
    dialog.Click(kCancelButton);
  });
  page->Click("paperTypeButton");
}

}  // namespace
}  // namespace heron::test

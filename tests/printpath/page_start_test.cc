// What goes out before the first page: the form, the font map, and the program's flags.
#include <gtest/gtest.h>

#include "generated/values.h"
#include "printpath/font_map.h"
#include "support/job_fixture.h"
#include "uistate/walk_store.h"

namespace heron::test {
namespace {

using namespace platform;

class PageStartTest : public JobTest {
 protected:
  PageStartTest() {
    SetText<"overlayName">(record, u"/forms/head.vxf");
    backend.files.content[u"/forms/head.vxf"] = std::make_shared<std::vector<uint8_t>>(321);
    Set<"FontUseFlg">(record, value::FontUseFlg::kOff);
    ListStoreSet set = CreateListStoreSet();
    std::u16string(u"Caption").copy(set.overlays->messages[2].caption, 7);
    std::u16string(u"Use %s?").copy(set.overlays->messages[2].message, 7);
    set.overlays->messages[2].style = MB_YESNO | MB_ICONQUESTION;
    EXPECT_TRUE(WalkStore(set, ListStoreId::kOverlays, u"P1", WalkOp::kWrite));
    desk.answer = IDYES;
  }

  /// The last step of a page's start.
  std::string StartPage() {
    const std::string log = Run(DOCUMENTEVENT_STARTPAGE);
    const std::string marker = "GetRecordSize GetRecord";
    return log.substr(log.find(marker) + marker.size());
  }
  int Mode() { return canvas.sent["EscSetFormBlock"].at(FormBlock::kMode); }

  void StorePairs(std::initializer_list<std::pair<std::u16string, std::u16string>> pairs) {
    ListStoreSet set = CreateListStoreSet();
    for (const auto& [true_type, device] : pairs) {
      FontPair& pair = set.fontSubst->pairs[set.fontSubst->fontSubTblNum++];
      true_type.copy(pair.trueTypeFont, 31);
      device.copy(pair.deviceFont, 31);
    }
    ASSERT_TRUE(WalkStore(set, ListStoreId::kFontSubst, u"P1", WalkOp::kWrite));
    Set<"FontUseFlg">(record, value::FontUseFlg::kOn);
  }
};

TEST_F(PageStartTest, FormGoesOutBeforeTheFirstPageOnly) {
  EXPECT_EQ(StartPage(), "");  // none is wanted
  Set<"lpOverlay">(record, value::lpOverlay::kPrintWithForm);
  EXPECT_EQ(StartPage(), " GetPageNumber GetDrawPath GetPageState SetFormBlock [528]");
  EXPECT_EQ(Mode(), 3);
  EXPECT_EQ(ReadAt<uint32_t>(canvas.sent["EscSetFormBlock"], FormBlock::kFileSize), 321u);
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetFormBlock"], FormBlock::kPath, 260), u"/forms/head.vxf");
  canvas.replies["EscGetPageNumber"].result = 1;
  EXPECT_EQ(StartPage(), " GetPageNumber");
}

TEST_F(PageStartTest, MissingOrRefusedFormIsNone) {
  Set<"lpOverlay">(record, 4);
  Set<"OverlayPrompt">(record, value::OverlayPrompt::kOn);
  StartPage();
  EXPECT_EQ(desk.shown, "Caption: Use head.vxf?");
  EXPECT_EQ(desk.style, MB_YESNO | MB_ICONQUESTION);
  EXPECT_EQ(Mode(), 4);
  for (const int answer : {IDNO, IDCANCEL, 0}) {
    desk.answer = answer;
    StartPage();
    EXPECT_EQ(Mode(), 1);
  }
  backend.files.content.clear();
  StartPage();
  EXPECT_EQ(Mode(), 1);
  EXPECT_EQ(desk.count, 4);  // no question about a form that isn't there
  Set<"lpOverlay">(record, value::lpOverlay::kCreateForm);
  Set<"OverlayPrompt">(record, value::OverlayPrompt::kOff);
  StartPage();
  EXPECT_EQ(Mode(), 2);  // a form that is to be made need not be there
}

TEST_F(PageStartTest, Path556SendsThePathOrMarksTheState) {
  UsePath556();
  Set<"lpOverlay">(record, value::lpOverlay::kPrintWithForm);
  pageState[PageState556::kOverlayPrompt] = 1;
  EXPECT_EQ(StartPage(), " GetPageNumber GetDrawPath GetPageState SetFormPath [520] SetPageState [556]");
  EXPECT_EQ(pageState[PageState556::kOverlaySkipped], 0);
  desk.answer = IDNO;
  EXPECT_EQ(StartPage(), " GetPageNumber GetDrawPath GetPageState SetPageState [556]");
  EXPECT_EQ(pageState[PageState556::kOverlaySkipped], 1);
}

TEST_F(PageStartTest, FontMapHoldsEveryPairInItsPlace) {
  StorePairs({{u"Arial Narrow", u"Helvetica Narrow"}, {u"Fancy", u"No Such Font"}, {u"Wingdings", u"Wingdings"}});
  Set<"lpPDLType">(record, value::lpPDLType::kPclXl);
  EXPECT_EQ(StartPage(), " GetPageNumber GetDrawPath SetFontMap [552]");
  const auto& sent = canvas.sent["EscSetFontMap"];
  const auto text = [&](size_t entry, size_t index) {
    const uint32_t offset = ReadAt<uint32_t>(sent, entry * 24 + index * 4);
    return std::string(reinterpret_cast<const char*>(sent.data()) + offset);
  };
  EXPECT_EQ(text(0, 0), "Arial Narrow");
  EXPECT_EQ(text(0, 4), "Helvetica NrBdOb");
  EXPECT_EQ(ReadAt<uint16_t>(sent, 20), 629);
  EXPECT_EQ(text(1, 0), "");
  EXPECT_EQ(text(2, 1), "Wingdings       ");
  EXPECT_EQ(ReadAt<uint16_t>(sent, 2 * 24 + 20), 18540);
  EXPECT_EQ(sent[2 * 24 + 22], 2);

  UsePath556();
  Set<"lpPDLType">(record, value::lpPDLType::kPcl5);
  EXPECT_EQ(StartPage(), " GetPageNumber GetDrawPath SetFontMap [540]");
  const auto& brief = canvas.sent["EscSetFontMap"];
  EXPECT_STREQ(reinterpret_cast<const char*>(brief.data()) + ReadAt<uint32_t>(brief, 8), "\x1b(19U\x1b(s1p4s3b24580T");
}

TEST_F(PageStartTest, NamesOfTheFontMapEndBehindAWholeCharacter) {
  StorePairs({{u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcde\u00E4", u"Wingdings"}});
  const FontMapEntry entry = BuildFontMap(record).at(0);
  EXPECT_EQ(std::string_view(entry.texts[0]), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcde") << "byte 32 is half a letter";
  EXPECT_EQ(WideText<4>(u"ab\U0001F600")[2], 0) << "two units would split the pair";
  EXPECT_EQ(WideText<5>(u"ab\U0001F600")[3], 0xDE00);
}

TEST_F(PageStartTest, FirstFormNeedsNoCodeAndEmptyVariantsStayEmpty) {
  StorePairs({{u"Chancery", u"ITC Zapf Chancery"}});
  Set<"lpPDLType">(record, value::lpPDLType::kPcl5);
  const FontMapEntry entry = BuildFontMap(record).at(0);
  EXPECT_STREQ(entry.texts[1], "");
  EXPECT_STREQ(entry.texts[2], "\x1b(19U\x1b(s1p1s0b45099T");
  EXPECT_EQ(entry.code + entry.flag, 0);
  SetText<"dmDeviceName">(record, u"");
  EXPECT_TRUE(BuildFontMap(record).empty());
}

TEST_F(PageStartTest, PathKnowsWhichProgramPrints) {
  const auto flags = [&](const char16_t* program) {
    backend.processFileName = program;
    Run(DOCUMENTEVENT_STARTDOC);
    return pageState[178] * 10 + pageState[179];
  };
  EXPECT_EQ(flags(u"/opt/msarn11j.exe"), 11);
  EXPECT_EQ(flags(u"/opt/writer"), 1);
  UsePath556();
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOC).find("PageState"), std::string::npos);
}

}  // namespace
}  // namespace heron::test

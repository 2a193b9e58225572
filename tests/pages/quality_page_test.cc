// Page 600: the sample follows every change. Page 700: the table of fonts.
#include "generated/values.h"
#include "pages/font_rows.h"
#include "sheet_fixture.h"
#include "support/recording_canvas.h"

namespace heron::test {
namespace {

using namespace platform;

class QualityPageTest : public SheetTest {
 protected:
  QualityPageTest() {
    const auto grey = [](uint32_t level) { return 0xFF000000 | level * 0x010101; };
    for (const uint32_t number : {11202U, 11203U, 11204U})
      desk.pictures[number] = {.width = 2, .height = 2, .pixels = std::vector<uint32_t>(4, grey(number % 256))};
    desk.pictures[11205] = {.width = 2, .height = 2, .pixels = std::vector<uint32_t>(4, grey(255))};
  }
};

TEST_F(QualityPageTest, EveryChangeRepaintsTheSample) {
  OpenPage({}, "quality");
  const auto repaints = [&] { return (*page)["samplePicture"].repaints; };
  int before = repaints();
  const auto expect_repaint = [&](const char* what) {
    EXPECT_GT(repaints(), before) << what;
    before = repaints();
  };
  page->Check("EngSaveToner_Check", true);
  expect_repaint("toner");
  page->Check("PrintCAD_Check", true);
  expect_repaint("black");
  page->Press("lpPrintCADMode.Everything");
  expect_repaint("mode");
  desk.Answer(IDYES);  // a draft saves toner by itself
  page->Check("DraftPrint", true);
  expect_repaint("draft");
  page->Click("restoreDefaults.quality");
  expect_repaint("defaults");
  EXPECT_EQ(Value("EngSaveToner_Check"), "Off");
  EXPECT_NE((*page)["samplePicture"].description, u"");
  EXPECT_TRUE(sheet->Confirm());
}

class FontPageTest : public SheetTest {
 protected:
  ScriptedDialog& Open(const std::string& settings = {}) {
    for (const char16_t* name : {u"Zapf", u"@Arial", u"arial", u"Courier New", u"Arial", u"Arial"})
      desk.families.push_back({.name = name});
    OpenPage(settings, "font");
    SetMode(value::lpGraphicsMode::kVector);
    return *page;
  }
  void SetMode(uint16_t mode) {
    engine::Setting<u"lpGraphicsMode">(ui()) = mode;
    ASSERT_NE(sheet->Show("font"), nullptr);
  }
};

TEST_F(FontPageTest, ReplacesFonts) {
  Open("FontUseFlg=On");
  EXPECT_EQ(page->RowsOf("fontTable"),
            (std::vector<std::string>{"Arial\tArial", "arial\t[31000]", "Courier New\tCourier", "Zapf\t[31000]"}));
  EXPECT_EQ(page->RowsOf("printerFont").size(), 27U);
  EXPECT_EQ(page->SelectedText("printerFont"), "Arial");
  page->Select("fontTable", 3);
  EXPECT_EQ(page->TextOf("trueTypeFont"), "Zapf");
  EXPECT_EQ(page->SelectedText("printerFont"), "[31000]");
  page->Choose("printerFont", u"Symbol");
  EXPECT_EQ(page->SelectedText("fontTable"), "Zapf\tSymbol");
  page->Select("fontTable", 0);
  page->Choose("printerFont", u"[31000]");
  EXPECT_EQ(page->changes, 4);
  ASSERT_TRUE(sheet->Apply());
  const FontSubstStore& store = *ui().stores.fontSubst;
  ASSERT_EQ(store.fontSubTblNum, 2) << "fonts that aren't installed are gone";
  EXPECT_EQ(pages::TextOfName(store.pairs[0].trueTypeFont), u"Courier New");
  EXPECT_EQ(pages::TextOfName(store.pairs[1].deviceFont), u"Symbol");
  EXPECT_EQ(store.index, 0);
  page->Click("restoreDefaults.font");
  EXPECT_EQ(page->RowsOf("fontTable")[0], "Arial\tArial");
  EXPECT_EQ(page->RowsOf("fontTable")[3], "Zapf\t[31000]");
}

TEST_F(FontPageTest, EnabledPartsFollowTheSwitches) {
  Open("FontUseFlg=On");
  const auto enabled = [&] {
    std::string text;
    for (const char* name : {"FontUseFlg", "fontTable", "printerFont", "lpDLFontFormat", "restoreDefaults.font"})
      text += page->IsEnabled(name) ? '1' : '0';
    return text + (page->SelectedRow("fontTable") == kNoRow ? " none" : " row");
  };
  EXPECT_EQ(enabled(), "11111 row");
  page->Check("FontUseFlg", false);
  EXPECT_EQ(enabled(), "10011 none");
  EXPECT_EQ((engine::Setting<u"FontUseFlg">(ui())), 0);
  page->Check("FontUseFlg", true);
  EXPECT_EQ(enabled(), "11111 row");
  SetMode(value::lpGraphicsMode::kRaster);
  EXPECT_EQ(enabled(), "00001 none");
  EXPECT_FALSE((*page)["FontUseFlg"].checked);
  EXPECT_EQ((engine::Setting<u"FontUseFlg">(ui())), 1) << "shown as off, and not changed";
}

TEST(FontRows, NamesAreCutBetweenCharacters) {
  const std::u16string letters(30, u'x');
  const auto listed = pages::ListedFonts({letters + u"abc", letters + u"\xD83D\xDE00", u"", u"@x"});
  ASSERT_EQ(listed.size(), 2U);
  EXPECT_EQ(listed[0].size(), 30U);
  EXPECT_EQ(listed[1].size(), 31U);
  FontSubstStore store{};
  std::vector<pages::FontRow> rows(501, {u"A", u"B"});
  pages::StorePairs(store, rows);
  EXPECT_EQ(store.fontSubTblNum, 500);
}

}  // namespace
}  // namespace heron::test

// Page 300 and dialog 2320: combination, image shift, and a back that follows the front.
#include "engine/sizes.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using namespace platform;

class SpecialPageTest : public SheetTest {
 protected:
  /// The dialog behind the button, on settings that hold `settings`.
  void Shift(const std::string& settings, ScriptedDesk::Script script) {
    OpenPage("ImageShift_Check=On " + settings, "special");
    desk.Expect("image-shift", std::move(script));
    page->Click("imageShiftButton");
  }
  std::string Numbers(const ScriptedDialog& dialog) const {
    std::string text;
    for (const char* name : {"ImgShiftValueLRF", "ImgShiftValueUDF", "ImgShiftValueLRB", "ImgShiftValueUDB"})
      text += dialog.TextOf(name) + (dialog.IsEnabled(name) ? " " : "- ");
    return text;
  }
};

TEST_F(SpecialPageTest, IsOnBeforeTheRulesRun) {
  OpenPage({}, "special");
  EXPECT_EQ(Value("POD_Check"), "On");
  EXPECT_TRUE(page->IsEnabled("ImageShift_Check"));
  EXPECT_FALSE(page->IsEnabled("imageShiftButton"));
  page->Check("ImageShift_Check", true);
  EXPECT_TRUE(page->IsEnabled("imageShiftButton"));
  page->Check("POD_OnePerSheet_Check", true);
  EXPECT_TRUE(page->IsEnabled("lpPOD_OnePerSheet"));
  EXPECT_EQ(desk.Told(), "");
  EXPECT_TRUE(sheet->Confirm());
}

TEST_F(SpecialPageTest, TheBackFollowsTheFront) {
  Shift("ImgShiftBackAuto_Check=Off lpImgShiftDirectLRF=Left", [&](ScriptedDialog& dialog) {
    for (const char* name : {"lpImgShiftMode.Driver", "ImgShiftPageIntervalF", "ImgShiftPageIntervalB"})
      EXPECT_FALSE(dialog.IsEnabled(name)) << name;
    dialog.Type("ImgShiftValueLRF", u"100");
    dialog.Type("ImgShiftValueUDB", u"7");
    EXPECT_EQ(Numbers(dialog), "100 0 0 7 ");
    dialog.Check("ImgShiftBackAuto_Check", true);
    EXPECT_EQ(Numbers(dialog), "100 0 100- 0- ");
    EXPECT_TRUE(dialog["lpImgShiftDirectLRB.Right"].checked) << "left on the front is right on the back";
    dialog.Press("lpImgShiftDirectLRF.Right");
    dialog.Press("lpImgShiftDirectUDF.Down");
    EXPECT_TRUE(dialog["lpImgShiftDirectLRB.Left"].checked);
    EXPECT_TRUE(dialog["lpImgShiftDirectUDB.Down"].checked);
    dialog.Type("ImgShiftValueUDF", u"2501");
    EXPECT_EQ(Numbers(dialog), "100 2500 100- 2500- ") << "clamped while it is typed, the back too";
    EXPECT_EQ(dialog["ImgShiftValueUDB.spin"].position, 2500);
    dialog.Spin("ImgShiftValueLRF.spin", 9999);
    EXPECT_EQ(Numbers(dialog), "2500 2500 2500- 2500- ");
    dialog.Check("ImgShiftBackAuto_Check", false);
    dialog.Press("lpImgShiftDirectLRB.Right");
    EXPECT_TRUE(dialog["lpImgShiftDirectLRF.Right"].checked) << "on its own now";
    EXPECT_EQ(Confirm(dialog, "ImgShiftValueUDB", u"30"), "closed");
  });
  EXPECT_EQ(page->changes, 1);
  EXPECT_EQ(Value("ImgShiftValueUDF"), 2500);
  EXPECT_EQ(Value("ImgShiftValueUDB"), 30);
}

TEST_F(SpecialPageTest, FieldsAreCheckedAndCancelPutsAllBack) {
  Shift("ImgShiftValueLRF=5 ImgShiftBackAuto_Check=On ImgShiftValueLRB=5 lpImgShiftDirectLRF=Left",
        [&](ScriptedDialog& dialog) {
          dialog.Type("ImgShiftValueLRF", u"007x8");
          EXPECT_EQ(dialog.TextOf("ImgShiftValueLRF"), "0");
          EXPECT_EQ(Confirm(dialog, "ImgShiftValueLRF", u""), "[20232]|[25601] 0-2500 at ImgShiftValueLRF");
          EXPECT_EQ(dialog.TextOf("ImgShiftValueLRF"), "0");
          dialog.Put("ImgShiftValueUDF", u"1x");
          EXPECT_FALSE(dialog.MoveFocus("ImgShiftValueLRF"));
          EXPECT_EQ(desk.Told(), "[20232]|[25601] 0-2500");
          EXPECT_EQ(dialog.TextOf("ImgShiftValueUDF"), "0");
          dialog.Type("ImgShiftValueUDF", u"12");
          dialog.Press("lpImgShiftDirectLRF.Right");
          dialog.Click("Cancel");
        });
  EXPECT_EQ(page->changes, 0);
  EXPECT_EQ(Value("ImgShiftValueLRF"), 5);
  EXPECT_EQ(Value("ImgShiftValueLRB"), 5);
  EXPECT_EQ(Value("ImgShiftValueUDF"), 0);
  EXPECT_EQ(Value("lpImgShiftDirectLRF"), "Left");
}

}  // namespace
}  // namespace heron::test

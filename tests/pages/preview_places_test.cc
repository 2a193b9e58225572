// The two places of a page that show what the settings come to.
#include <algorithm>
#include <map>

#include "sheet_fixture.h"
#include "support/recording_canvas.h"

namespace heron::test {
namespace {

constexpr char kUpper[] = "upperPicture", kLower[] = "lowerPicture";

class PreviewPlacesTest : public SheetTest {
 protected:
  class PictureCanvas : public RecordingCanvas {
   public:
    void DrawResource(uint32_t number, const platform::RECT&, const std::optional<platform::RECT>&) override {
      shown += std::to_string(number) + ' ';
    }
    std::string shown;
  };
  /// The pictures of a place, in the order in which they are drawn.
  std::string Shown(ControlName place) {
    PictureCanvas canvas;
    page->Paint(place, canvas, {0, 0, 200, 150});
    return canvas.shown;
  }
  /// What is to be drawn again since the last call: "upper", "lower" for the whole, "upper:2" for two areas of it.
  std::string Repainted() {
    std::string text;
    for (const auto& [place, name] : {std::pair(kUpper, "upper"), std::pair(kLower, "lower")}) {
      const int wholes = (*page)[place].repaints;
      const size_t areas = (*page)[place].repainted.size();
      auto& [old_wholes, old_areas] = asked_[name];
      if (wholes != old_wholes) text += std::string(name) + ' ';
      // A change may be told more than once before it is drawn.
      if (areas != old_areas)
        text += std::string(name) + (LastAreasAre(place, areas - old_areas) ? ":sheet " : ":label ");
      old_wholes = wholes;
      old_areas = areas;
    }
    return text;
  }
  /// Whether one of the last areas is as high as the sheet or more.
  bool LastAreasAre(ControlName place, size_t count) {
    const auto& areas = (*page)[place].repainted;
    return std::any_of(areas.end() - static_cast<std::ptrdiff_t>(count), areas.end(),
                       [](const platform::RECT& area) { return area.bottom - area.top >= 100; });
  }

 private:
  std::map<std::string, std::pair<int, size_t>> asked_;
};

TEST_F(PreviewPlacesTest, PicturesFollowEveryChange) {
  OpenPage(
      "lpOrientation=Portrait lpMediaSize=A4 lpOutputPaper=SameAsDocument lpPRNType=OneSided lpBindPosit=Auto "
      "Copies=1");
  EXPECT_EQ(Shown(kUpper), "15000 15070 15080 15400 ");
  EXPECT_EQ(Shown(kLower), "15597 15579 15510 15500 ");
  Repainted();
  page->Press("lpOrientation.Landscape");
  EXPECT_EQ(Repainted(), "upper:sheet ") << "the symbols and the labels are as before";
  EXPECT_EQ(Shown(kUpper), "15001 15071 15081 15406 ");
  Choose(*page, "lpPRNType", "TwoSided");
  EXPECT_EQ(Repainted(), "upper:sheet ");
  EXPECT_EQ(Shown(kUpper), "15001 15071 15081 15406 15191 ");
  page->Type("Copies", u"3");
  EXPECT_EQ(Repainted(), "upper:label ") << "copies pass no rule, but are told";
  Shown(kUpper);
  // What a dialog over the page changed.
  desk.Expect("authentication-and-department", [&](ScriptedDialog& dialog) {
    dialog.Check("SecMana_Check", true);
    dialog.Put("departmentName", u"lab");
    dialog.Click(platform::kOkButton);
  });
  page->Click("authenticationButton");
  EXPECT_EQ(Repainted(), "lower ");
  EXPECT_NE(Shown(kLower).find("15644 "), std::string::npos);
  // The machine instead of the sheet.
  page->Press("previewMode.Machine");
  EXPECT_EQ((*page)[kUpper].repainted.back().bottom, 150) << "all of it";
  EXPECT_EQ(Repainted(), "upper:sheet ");
  const std::string before = Shown(kUpper);
  EXPECT_EQ(before.substr(0, 2), "19");
  Choose(*page, "lpMediaSource", "Tray1");
  EXPECT_EQ(Repainted(), "upper:sheet ") << "the tray in use is lit";
  EXPECT_NE(Shown(kUpper), before);
}

TEST_F(PreviewPlacesTest, OtherPagesShowThemToo) {
  OpenPage("lpOrientation=Landscape", "special");
  EXPECT_NE(Shown(kUpper).find("15001 15071 "), std::string::npos);
  EXPECT_FALSE(Shown(kLower).empty());
}

}  // namespace
}  // namespace heron::test

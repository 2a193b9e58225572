// The watermark: its place, its look, and what either path does around it.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "generated/values.h"
#include "printpath/stamp_geometry.h"
#include "printpath/watermark_stamp.h"
#include "support/job_fixture.h"
#include "uistate/walk_store.h"

namespace heron::test {
namespace {

using namespace platform;

class WatermarkTest : public JobTest {
 protected:
  WatermarkTest() {
    entry.size = 72;
    entry.style = 4;
    entry.selectColor = 3;
    entry.color = 0x17E;
    std::u16string(u"Draft").copy(entry.text, 5);
    std::u16string(u"Serif").copy(entry.font, 5);
    Set<"Watermark_Use">(record, value::Watermark_Use::kOn);
    Set<"watermarkIndex">(record, 1);
    Set<"dmPrintQuality">(record, 600);
    Set<"dmYResolution">(record, 600);
  }

  /// Stores the entry as watermark 1 and fills the page state: 600 dpi, upright, 4960 x 7014 pixels.
  void Prepare() {
    ListStoreSet set = CreateListStoreSet();
    set.watermarks->wMarkListNum = 2;
    set.watermarks->entries[1] = entry;
    ASSERT_TRUE(WalkStore(set, ListStoreId::kWatermarks, u"P1", WalkOp::kWrite));
    const bool brief = pageState.size() == PageState488::kSize;
    const size_t devmode = brief ? PageState488::kDevMode : PageState556::kDevMode;
    const size_t physical = brief ? PageState488::kPhysical : PageState556::kPhysical;
    Put<int16_t>(devmode + 76, 1);
    Put<int16_t>(devmode + 90, 600);
    Put<int16_t>(devmode + 96, 600);
    Put<uint32_t>(physical + 8, 4960);
    Put<uint32_t>(physical + 12, 7014);
    Put<uint16_t>(brief ? PageState488::kZoom : PageState556::kZoom, 100);
  }
  template <class T>
  void Put(size_t offset, T value) {
    WriteAt(std::span(pageState), offset, value);
  }
  std::string EndPage() { return Run(DOCUMENTEVENT_ENDPAGE); }
  POINT Drawn() {
    canvas.drawings.clear();
    EndPage();
    return canvas.drawings.empty() ? POINT{-1, -1} : canvas.drawings[0].at;
  }

  WatermarkEntry entry{};
};

TEST(StampGeometry, EveryAngleIsWithinOnePixelOfItsPlace) {
  const StampPage page = {{0, 0, 4960, 7014}, 600, 1200, 100};
  for (int32_t angle = -3600; angle <= 3600; ++angle) {
    for (const LONG height : {0, 8, 601, 1000}) {
      const double turned = angle / 1800.0 * std::numbers::pi;
      const POINT at = StampPosition(page, 123, -456, angle, height);
      const double x = 2480 + 123 * 600 / 254 + std::sin(turned) * (height / 2);
      const double y = 3507 - 456 * 1200 / 254 + std::cos(turned) * (height / 2);
      ASSERT_LE(std::abs(at.x - std::lround(x)), 1) << angle << " height " << height;
      ASSERT_LE(std::abs(at.y - std::lround(y)), 1) << angle << " height " << height;
    }
    ASSERT_NEAR(SineOf(angle), std::sin(angle / 1800.0 * std::numbers::pi) * 16384, 2) << angle;
  }
  for (const int32_t angle : {INT32_MIN, INT32_MAX}) EXPECT_LE(std::abs(CosineOf(angle)), 16384);
}

TEST(StampGeometry, SidesAreKeptToAPage) {
  const auto text = [](const RECT& r) {
    return std::to_string(r.left) + ' ' + std::to_string(r.top) + ' ' + std::to_string(r.right) + ' ' +
           std::to_string(r.bottom);
  };
  EXPECT_EQ(text(PageArea({10, 20, 110, 420}, false, 100)), "10 20 110 420");
  EXPECT_EQ(text(PageArea({10, 20, 110, 420}, true, 50)), "40 20 840 220");
  EXPECT_EQ(text(PageArea({500, 0, 100, 0xFFFFFFFF}, false, 1)), "50000 0 50000 16777216");
}

TEST(StampColor, HasSevenKinds) {
  const COLORREF expected[] = {0x7E7E7E, 0x7E7EFF, 0x7EFF7E, 0xFF7E7E, 0x7EFFFF, 0xFF7EFF, 0xFFFF7E, 0x7E7E7E};
  for (uint32_t kind = 0; kind < std::size(expected); ++kind) EXPECT_EQ(StampColor(kind, 0x7E), expected[kind]);
}

TEST_F(WatermarkTest, Path488DrawsAMaskBetweenChangedFlags) {
  Prepare();
  for (size_t i = 0; i < 3; ++i) Put<uint8_t>(PageState488::kStampFlags + i, 9);
  Put<uint8_t>(PageState488::kColorMode, 2);
  std::string flags;
  canvas.on_escape = [&](const std::string& name, std::span<const uint8_t> in) {
    if (name == "EscSetPageState")
      flags += std::to_string(in[50]) + std::to_string(in[51]) + std::to_string(in[52]) + ' ';
    return false;
  };
  EXPECT_EQ(EndPage(),
            "GetRecordSize GetRecord GetDrawPath GetPageState GetPageOrientation SetPageState [488] StampColor 126 "
            "StampNoColor outline (2480,3807) angle 0 height -600 color 000000 'Draft' SetPageState [488]");
  EXPECT_EQ(flags, "900 999 ");
  const auto& drawn = canvas.drawings[0];
  EXPECT_EQ(drawn.font.lfWeight, 700);
  EXPECT_EQ(drawn.font.lfItalic, 1);
  EXPECT_EQ(drawn.pen_width, 1);
  EXPECT_EQ(drawn.align, 14u);
  EXPECT_EQ(drawn.clip->right, 4960);
  EXPECT_EQ(std::u16string(drawn.font.lfFaceName), u"Serif");

  Put<uint8_t>(PageState488::kColorMode, 3);
  Put<uint8_t>(PageState488::kDrawingOrder, 2);
  flags.clear();
  EXPECT_NE(EndPage().find("StampColor 126 StampBegin text (2480,3807) angle 0 height -600 color ff7e7e 'Draft' "
                           "StampEnd SetPageState"),
            std::string::npos);
  EXPECT_EQ(flags, "100 999 ");
  Put<uint8_t>(PageState488::kColorMode, 0);
  EXPECT_NE(EndPage().find("StampColor 126 StampBegin text (2480,3807) angle 0 height -600 color ffffff"),
            std::string::npos);
}

TEST_F(WatermarkTest, Path556DrawsOrLeavesTheStampToThePrintingSide) {
  UsePath556();
  entry.angle = 455;
  entry.centerX = 0xFFFF;
  Set<"FirstPageOnly">(record, value::FirstPageOnly::kOn);
  canvas.replies["EscGetPageNumber"].result = 1;
  Prepare();
  Put<uint8_t>(PageState556::kStampIntensity + 1, 0x33);
  const auto field = [&](size_t offset) { return ReadAt<int16_t>(canvas.sent["EscSetPageState"], offset); };
  const std::string stored = "GetRecordSize GetRecord GetPageNumber GetDrawPath GetPageState SetPageState [556]";
  EXPECT_EQ(EndPage(), stored);
  EXPECT_EQ(field(PageState556::kStampAngle), 45);
  EXPECT_EQ(field(PageState556::kStampIntensity), 0x337E);
  EXPECT_EQ(field(PageState556::kStampCenterX + 2), -1);
  EXPECT_EQ(field(PageState556::kStampStyle), 4);
  EXPECT_EQ(field(PageState556::kStampSize), 72);
  EXPECT_EQ(field(PageState556::kFirstPageOnly) + field(PageState556::kFirstPageOnlyToo), 2);
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetPageState"], PageState556::kStampText, 33), u"Draft");
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetPageState"], PageState556::kStampFont, 32), u"Serif");

  const std::string white = " height -600 color ffffff 'Draft'";
  const std::string black = " height -600 color 000000 'Draft'";
  const std::string colored = " height -600 color ff7e7e 'Draft'";
  const auto ends_with = [&](uint16_t order, uint8_t form, const std::string& ending) {
    Put(PageState556::kDrawingOrder, order);
    Put(PageState556::kFormMaking, form);
    const std::string log = EndPage();
    EXPECT_TRUE(log.ends_with(ending)) << log;
    return log;
  };
  EXPECT_NE(ends_with(1, 0, white).find("SetPageState [556] StampNoColor outline"), std::string::npos);
  EXPECT_EQ(field(PageState556::kStampAngle), 455);
  EXPECT_EQ(ends_with(1, 1, colored).find("StampNoColor"), std::string::npos);
  EXPECT_NE(ends_with(1, 2, black).find(white), std::string::npos);
  EXPECT_EQ(ends_with(0, 2, colored).find("SetPageState"), std::string::npos);
  ends_with(2, 2, colored + " StampEnd");
}

TEST_F(WatermarkTest, NothingIsDrawnWithoutAStamp) {
  Prepare();
  const std::string nothing = "GetRecordSize GetRecord";
  Set<"watermarkIndex">(record, 0);
  EXPECT_EQ(EndPage(), nothing);
  Set<"watermarkIndex">(record, 2);  // the list ends before it
  EXPECT_EQ(EndPage(), nothing);
  Set<"watermarkIndex">(record, 255);
  EXPECT_EQ(EndPage(), nothing);
  Set<"watermarkIndex">(record, 1);
  Set<"Watermark_Use">(record, value::Watermark_Use::kOff);
  EXPECT_EQ(EndPage(), nothing);
  Set<"Watermark_Use">(record, value::Watermark_Use::kOn);
  Set<"FirstPageOnly">(record, value::FirstPageOnly::kOn);
  canvas.replies["EscGetPageNumber"].result = 2;
  EXPECT_EQ(EndPage(), nothing + " GetPageNumber");
  Set<"FirstPageOnly">(record, value::FirstPageOnly::kOff);
  for (const uint32_t size : {0u, 12u}) {
    entry.size = size;
    if (size != 0) entry.text[0] = 0;
    Prepare();
    EXPECT_EQ(EndPage(), nothing);
  }
}

TEST_F(WatermarkTest, ZoomAndLayoutMoveTheMiddle) {
  Prepare();
  const auto at = [this](LONG x, LONG y) {
    const POINT drawn = Drawn();
    return drawn.x == x && drawn.y == y ? std::string() : std::to_string(drawn.x) + ',' + std::to_string(drawn.y);
  };
  EXPECT_EQ(at(2480, 3507 + 300), "");
  Put<uint16_t>(PageState488::kZoom, 50);
  EXPECT_EQ(at(4960, 7014 + 300), "");
  Put<uint8_t>(PageState488::kLayoutFlag, 3);  // the whole sheet stays
  EXPECT_EQ(at(2480, 3507 + 300), "");
  Put<uint16_t>(PageState488::kZoom, 0);
  EXPECT_EQ(at(2480, 3507 + 300), "");
  Put<uint8_t>(PageState488::kLayoutFlag, 4);  // the printable rectangle, which is empty
  EXPECT_EQ(at(0, 300), "");
  Put<uint8_t>(PageState488::kLayoutFlag, 0);
  Put<uint8_t>(PageState488::kLayoutKind, 1);
  Put<uint8_t>(PageState488::kLayoutKind + 1, 2);
  EXPECT_EQ(at(3507, 2480 + 300), "");
  Set<"Layout_Check">(record, value::Layout_Check::kOn);
  Set<"lpLayout">(record, value::lpLayout::kTwoPages);  // the record says the same
  EXPECT_EQ(at(3507, 2480 + 300), "");
  canvas.replies["EscGetPageOrientation"].result = 2;
  EXPECT_EQ(at(2480, 3507 + 300), "");
}

TEST_F(WatermarkTest, OffsetsAreTenthsOfAMillimetreAndEndAtTheEdge) {
  entry.centerX = 254;
  entry.centerY = static_cast<uint16_t>(-508);
  entry.angle = -900;
  Prepare();
  POINT drawn = Drawn();
  EXPECT_EQ(drawn.x, 2480 + 600 - 300);
  EXPECT_EQ(drawn.y, 3507 - 1200);
  Put<uint16_t>(PageState488::kZoom, 200);  // 2480 x 3507 pixels, offsets halved
  drawn = Drawn();
  EXPECT_EQ(drawn.x, 1240 + 300 - 300);
  entry.angle = 2700;
  entry.centerX = 0x7FFF;
  Prepare();
  drawn = Drawn();
  EXPECT_EQ(drawn.x, 4960 - 300);
  EXPECT_EQ(drawn.y, 3507 - 1200);
}

TEST_F(WatermarkTest, TheApplicationsContextComesBack) {
  Prepare();
  SetTextColor(canvas.hdc, 0x123456);
  SetViewportOrgEx(canvas.hdc, 7, 8, nullptr);
  IntersectClipRect(canvas.hdc, 0, 0, 100, 100);
  EndPage();
  TextOutW(canvas.hdc, 1, 1, u"a", 1);
  EXPECT_EQ(canvas.log.back(), "text (8,9) angle 0 height 16 color 123456 'a'");
  EXPECT_EQ(canvas.drawings.back().clip->right, 107);
  EXPECT_EQ(canvas.drawings[0].clip->right, 4960);
}

TEST_F(WatermarkTest, HostileStatesAndFailuresAreDrawnOverWithoutHarm) {
  for (const bool brief : {true, false}) {
    if (!brief) UsePath556();
    Prepare();
    pageState.assign(pageState.size(), 0xFF);
    if (!brief) Put<uint16_t>(PageState556::kDrawingOrder, 1);
    EXPECT_EQ((EndPage(), result), 1);
    for (uint32_t n = 1; n < 12; ++n) {
      canvas.escapes = 0;
      canvas.fail_at = n;
      EXPECT_EQ((EndPage(), result), 1);
    }
    canvas.fail_at = 0;
    canvas.failing = "EscGetPageState";
    EXPECT_EQ(EndPage().find("SetPageState"), std::string::npos);  // zeros aren't put back
    canvas.failing.clear();
  }
  Set<"watermarkIndex">(record, 1);
  canvas.replies["EscGetRecordSize"].bytes = {0xFF, 0xFF, 0xFF, 0xFF};
  EXPECT_EQ(DrvDocumentEvent(printer.get(), canvas.hdc, DOCUMENTEVENT_ENDPAGE, 0, nullptr, 0, nullptr), 1);
}

}  // namespace
}  // namespace heron::test

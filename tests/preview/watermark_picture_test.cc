// The picture of a watermark: its rectangles to the pixel, and that the stamp lies and reaches where it does on a
// printed page.
#include "preview/watermark_picture.h"

#include <cmath>

#include "forms/watermark_list.h"
#include "preview_fixture.h"
#include "printpath/stamp_geometry.h"
#include "printpath/watermark_stamp.h"
#include "support/recording_canvas.h"

namespace heron::preview {
namespace {

class WatermarkPictureTest : public PreviewTest {
 protected:
  WatermarkPictureTest() {
    Write("lpOrientation=Portrait lpMediaSize=A4 Watermark_Use=On");
    entry = ui->stores.watermarks->current;
    SetMarkText(entry, u"DRAFT");
    canvas.families = {{.name = u"宋体", .char_set = 1, .pitch_and_family = 2}};
  }
  WatermarkPicture Describe(WatermarkView shown = WatermarkView::kPage, platform::RECT place = {0, 0, 120, 160}) {
    return DescribeWatermark(*ui, entry, shown, place, canvas.families, canvas);
  }
  static std::string Text(const platform::RECT& r) {
    return std::to_string(r.left) + ' ' + std::to_string(r.top) + ' ' + std::to_string(r.right) + ' ' +
           std::to_string(r.bottom);
  }

  test::RecordingCanvas canvas;
  WatermarkEntry entry{};
};

TEST_F(WatermarkPictureTest, StandsInTheMiddleOfASquare) {
  const WatermarkPicture a4 = Describe();
  EXPECT_EQ(Text(a4.frame.square), "0 20 120 140");
  EXPECT_EQ(a4.frame.width, 21000);
  EXPECT_EQ(a4.frame.height, 29700);
  EXPECT_EQ(a4.frame.largest, 45720);
  // 60 - ((21000 * 1000 + 22860) / 45720 * 60 + 500) / 1000 = 60 - 28; the same with 29700: 60 - 39.
  EXPECT_EQ(a4.frame.insetX, 32);
  EXPECT_EQ(a4.frame.insetY, 21);
  EXPECT_EQ(Text(a4.frame.paper), "32 41 88 119");
  EXPECT_EQ(Text(a4.frame.clip), "33 42 87 118");
  EXPECT_EQ(a4.font.lfHeight, -((72 * 1000 * 56 / 4920 * 600 / 72 + 999) / 1000));
  EXPECT_EQ(a4.font.lfCharSet, 1);
  EXPECT_EQ(a4.font.lfPitchAndFamily, 2);
  EXPECT_EQ(Text(Describe(WatermarkView::kPage, {10, 10, 210, 110}).frame.square), "60 10 160 110");
  Write("lpOrientation=Landscape");
  EXPECT_EQ(Text(Describe().frame.paper), "21 52 99 108");
  SetMarkFont(entry, u"Nowhere");
  EXPECT_EQ(Describe().font.lfCharSet, 134);
  EXPECT_EQ(Describe().font.lfPitchAndFamily, 17);
}

TEST_F(WatermarkPictureTest, ShowsTheStampWhereItIsUsed) {
  EXPECT_TRUE(Describe().cross && Describe().text);
  Write("Watermark_Use=Off");
  EXPECT_FALSE(Describe().cross || Describe().text);
  EXPECT_EQ(Describe().textColor, 0xFFFFFFU);
  EXPECT_TRUE(Describe(WatermarkView::kEditor).cross);
  EXPECT_EQ(Describe(WatermarkView::kEditor).textColor, 0x7E7E7EU);
  SetMarkText(entry, {});
  EXPECT_FALSE(Describe(WatermarkView::kEditor).text);
  Write("Watermark_Use=On");
  SlotAs<u"bWatermarkCurrent", uint8_t>(*ui) = 200;
  EXPECT_EQ(MarkText(CurrentWatermark(*ui)), u"");
}

TEST_F(WatermarkPictureTest, DrawsPaperTextAndCross) {
  SetMarkCenter(entry, 100, -200);
  const WatermarkPicture picture = Describe();
  DrawWatermarkPicture(picture, canvas);
  ASSERT_EQ(canvas.drawings.size(), 1U);
  EXPECT_EQ(canvas.drawings[0].at.x, 60 + picture.offX + picture.dx);
  EXPECT_EQ(canvas.drawings[0].at.y, 80 + picture.offY + picture.dy);
  EXPECT_EQ(canvas.drawings[0].align, 14U);
  EXPECT_EQ(Text(*canvas.drawings[0].clip), Text(picture.frame.clip));
  EXPECT_EQ(picture.offX, 100 * 56 * 10 / 21000);
  EXPECT_EQ(picture.offY, -200 * 78 * 10 / 29700);
}

/// The printed stamp and the one of a large picture, both in millimetres.
TEST_F(WatermarkPictureTest, AgreesWithThePrint) {
  constexpr int kDpi = 600;
  constexpr platform::RECT kPlace = {0, 0, 4000, 4000};
  for (const char* paper : {"A4", "A3", "Letter", "B5"}) {
    for (const char* orientation : {"Portrait", "Landscape"}) {
      Write("lpMediaSize=" + std::string(paper) + " lpOrientation=" + orientation);
      for (const int angle : {0, 450, -900, 333}) {
        entry.angle = angle;
        SetMarkCenter(entry, 310, -275);
        const WatermarkPicture picture = Describe(WatermarkView::kPage, kPlace);
        const double scale = picture.frame.width / 100.0 / static_cast<double>(picture.frame.PaperWidth());
        const auto dots = [](int32_t hundredths) { return static_cast<platform::LONG>(hundredths / 2540.0 * kDpi); };
        const StampPage page = {{0, 0, dots(picture.frame.width), dots(picture.frame.height)}, kDpi, kDpi, 100};
        const platform::LONG letters = 72 * kDpi / 72;
        const platform::POINT at = StampPosition(page, 310, -275, angle, letters);
        const auto [middle_x, middle_y] = picture.frame.Middle();
        EXPECT_NEAR((picture.text->x - middle_x) * scale, (at.x - page.area.right / 2) * 25.4 / kDpi, 0.5) << paper;
        EXPECT_NEAR((picture.text->y - middle_y) * scale, (at.y - page.area.bottom / 2) * 25.4 / kDpi, 0.5) << paper;
        EXPECT_NEAR(-picture.font.lfHeight * scale, letters * 25.4 / kDpi, 0.5) << paper;
        EXPECT_EQ(picture.font.lfEscapement, angle);
      }
    }
  }
  for (uint32_t kind = 0; kind < 7; ++kind) {
    entry.selectColor = kind;
    EXPECT_EQ(Describe().textColor, StampColor(kind, 126));
  }
}

TEST_F(WatermarkPictureTest, ThePointerPutsTheStampWhereItIs) {
  const PaperFrame frame = FramePaper(*ui, {0, 0, 400, 400});
  EXPECT_EQ(CenterLimits(frame).x, 1050);
  EXPECT_EQ(CenterLimits(frame).y, 1485);
  for (const auto& [x, y] : {std::pair(200, 200), {150, 260}, {233, 120}}) {
    const auto [across, down] = CenterAt(frame, {x, y});
    SetMarkCenter(entry, across, down);
    const WatermarkPicture picture = Describe(WatermarkView::kEditor, {0, 0, 400, 400});
    EXPECT_NEAR(picture.cross->x, x, 1);
    EXPECT_NEAR(picture.cross->y, y, 1);
  }
}

TEST_F(WatermarkPictureTest, HostilePapersAndEntriesAreBounded) {
  entry.size = 0xFFFFFFFF;
  entry.style = 0xFFFFFFFF;
  entry.angle = INT32_MIN;
  entry.selectColor = 77;
  SetMarkCenter(entry, 32767, -32768);
  for (const int paper : {0, 9, 513, 256, 9999}) {
    *FieldsOf(*ui, ParamNamed<u"lpMediaSize">()).value = static_cast<uint16_t>(paper);
    for (const platform::RECT& place : {platform::RECT{0, 0, 0, 0}, {0, 0, 1, 1}, {0, 0, 120, 160}}) {
      const WatermarkPicture picture = Describe(WatermarkView::kEditor, place);
      EXPECT_GT(picture.frame.width, 0);
      CenterAt(picture.frame, {5, 5});
      DrawWatermarkPicture(picture, canvas);
    }
  }
}

}  // namespace
}  // namespace heron::preview

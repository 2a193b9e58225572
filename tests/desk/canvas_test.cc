// What a page draws, as it comes out on the screen.
#include <QImage>
#include <QPainter>

#include "desk/screen_canvas.h"
#include "desk_test.h"

namespace heron::desk {
namespace {

constexpr uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF, kClear = 0;

char Letter(uint32_t color) {
  return color == kRed ? 'r' : color == kGreen ? 'g' : color == kBlue ? 'b' : color == kWhite ? '.' : '?';
}

/// A white surface whose unit is `ratio` pixels wide.
class Surface {
 public:
  Surface(int width, int height, int ratio)
      : ratio_(ratio), image_(QSize(width, height) * ratio, QImage::Format_ARGB32_Premultiplied) {
    image_.setDevicePixelRatio(ratio);
    image_.fill(Qt::white);
  }
  void Draw(const std::function<void(ScreenCanvas&)>& drawing) {
    QPainter painter(&image_);
    ScreenCanvas canvas(painter, image_.width() / ratio_, image_.height() / ratio_);
    drawing(canvas);
  }
  /// A row of units, a letter each; x where the pixels of a unit differ.
  std::string Row(int y) const {
    std::string row;
    for (int x = 0; x < image_.width() / ratio_; ++x) {
      const char first = Letter(image_.pixel(x * ratio_, y * ratio_));
      const char last = Letter(image_.pixel(x * ratio_ + ratio_ - 1, y * ratio_ + ratio_ - 1));
      row += first == last ? first : 'x';
    }
    return row;
  }

 private:
  int ratio_;
  QImage image_;
};

class Canvases : public ::testing::TestWithParam<int> {};

TEST_P(Canvases, APictureCoversItsTargetPixelByPixel) {
  Surface surface(8, 8, GetParam());
  const uint32_t pixels[] = {kRed, kGreen, kClear, kBlue};
  surface.Draw([&](ScreenCanvas& canvas) {
    canvas.DrawPicture({2, 1, 4, 3}, {2, 2, pixels}, {});
    canvas.DrawPicture({6, 1, 8, 3}, {2, 2, pixels}, platform::RECT{7, 0, 8, 2});
    canvas.DrawPicture({4, 4, 8, 8}, {2, 2, pixels}, {});
  });
  EXPECT_EQ(surface.Row(0), "........");
  EXPECT_EQ(surface.Row(1), "..rg...g") << "the second one only inside of its clip";
  EXPECT_EQ(surface.Row(2), "...b....");
  EXPECT_EQ(surface.Row(3), "........");
  EXPECT_EQ(surface.Row(4), "....rrgg") << "stretched";
  EXPECT_EQ(surface.Row(5), surface.Row(4));
  EXPECT_EQ(surface.Row(7), "......bb");
}

TEST_P(Canvases, AreasTextAndMeasuresAreInTheUnitsOfThePlace) {
  Surface surface(8, 20, GetParam());
  surface.Draw([&](ScreenCanvas& canvas) {
    EXPECT_EQ(canvas.DeviceCap(platform::DeviceCap::kHorzRes), 8);
    EXPECT_EQ(canvas.DeviceCap(platform::DeviceCap::kVertRes), 20);
    canvas.FillRect({0, 0, 8, 4}, 0x0000FF, platform::RECT{0, 0, 2, 20});
    platform::TextDrawing line{};
    line.text = u"\u2588";  // a block as large as a letter
    line.font.lfHeight = -12;
    line.color = 0xFF0000;
    line.at = {3, 4};
    canvas.DrawLine(line, {});
    const platform::SIZE size = canvas.MeasureText(line.font, u"MM");
    EXPECT_TRUE(size.cx > 12 && size.cx < 36 && size.cy >= 12) << size.cx << " x " << size.cy;
  });
  EXPECT_EQ(surface.Row(3), "rr......");
  EXPECT_EQ(surface.Row(10).substr(0, 2), "..");
  EXPECT_EQ(surface.Row(10).substr(5), "bbb") << "the letter's edge is soft";
}

INSTANTIATE_TEST_SUITE_P(Ratios, Canvases, ::testing::Values(1, 2));

TEST(Places, ShowWhatTheLogicDrawsWhereTheyStand) {
  struct Drawing final : RecordingLogic {
    void Draw(platform::ControlId id, platform::Canvas& canvas, const platform::RECT& area) override {
      if (id == 2356) canvas.FillRect({area.right / 2, 0, area.right + 50, area.bottom}, 0x00FF00, {});
    }
  } logic;
  ModalWindow window(nullptr, BuiltResources(), *BuiltResources().Template(2355), logic);
  QTimer::singleShot(0, &window, [&] {
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QWidget* const place = WidgetOf(window.panel(), 2356);
    ASSERT_NE(place, nullptr);
    EXPECT_EQ(place->size(), QSize(96, 64));
    const QImage shown = window.grab().toImage();
    std::string row;
    for (const int x : {10, 46, 48, 94, 97}) {
      row += Letter(shown.pixel(place->mapTo(&window, QPoint(x, 30)) * shown.devicePixelRatio()));
    }
    EXPECT_EQ(row, "??gg?") << "and nothing beyond its frame";
    window.close();
  });
  window.Run();
}

}  // namespace
}  // namespace heron::desk

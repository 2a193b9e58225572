// What a page draws, as it comes out on the screen.
#include <QImage>
#include <QPainter>

#include "apps/desk/screen_canvas.h"
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

TEST_P(Canvases, AreasAndSizesAreInTheUnitsOfThePlace) {
  Surface surface(4, 3, GetParam());
  surface.Draw([](ScreenCanvas& canvas) {
    EXPECT_EQ(canvas.DeviceCap(platform::DeviceCap::kHorzRes), 4);
    EXPECT_EQ(canvas.DeviceCap(platform::DeviceCap::kVertRes), 3);
    canvas.FillRect({0, 0, 4, 2}, 0x0000FF, platform::RECT{1, 1, 3, 3});
  });
  EXPECT_EQ(surface.Row(0) + surface.Row(1) + surface.Row(2), ".....rr.....");
}

INSTANTIATE_TEST_SUITE_P(Ratios, Canvases, ::testing::Values(1, 2));

TEST(Places, ShowWhatTheLogicDrawsWhereTheyStand) {
  struct Drawing final : RecordingLogic {
    void Draw(platform::ControlId id, platform::Canvas& canvas, const platform::RECT& area) override {
      if (id == "positionPicture"_id) canvas.FillRect({area.right / 2, 0, area.right + 50, area.bottom}, 0x00FF00, {});
    }
  } logic;
  ModalWindow window(nullptr, BuiltResources(), *BuiltResources().Template(DialogName("print-position")), logic);
  QTimer::singleShot(0, &window, [&] {
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QWidget* const place = WidgetOf(window.panel(), "positionPicture");
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

// Lines and the driver's drawing on a page, as pixels.
#include <gtest/gtest.h>
#include <poppler-qt6.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>

#include "apps/desk/painting.h"
#include "apps/spool/job_canvas.h"
#include "escapes/escape_table.h"
#include "platform/memory/memory_backend.h"
#include "renderdriver/bytes.h"
#include "support/letter_record.h"

namespace heron::spool {
namespace {

using platform::TextDrawing;
using renderdriver::DrawPath;
using renderdriver::Write;
using Block = std::vector<uint8_t>;

class CanvasTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    static char name[] = "spool_tests", platform[] = "-platform", offscreen[] = "offscreen";
    static char* arguments[] = {name, platform, offscreen, nullptr};
    static int count = 3;
    if (qApp == nullptr) new QGuiApplication(count, arguments);  // lives as long as the process
  }

  static TextDrawing Line(platform::POINT at, std::u16string_view text, int pixels) {
    TextDrawing line{};
    line.at = at;
    line.text = text;
    line.font.lfHeight = -pixels;
    std::u16string_view(u"DejaVu Sans").copy(line.font.lfFaceName, platform::kFaceSize);
    return line;
  }
};

/// The rectangle of everything that isn't white.
QRect Ink(const QImage& image) {
  QRect box;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qGray(image.pixel(x, y)) < 250) box = box.united(QRect(x, y, 1, 1));
    }
  }
  return box;
}

TEST_F(CanvasTest, ALineLiesWhereAlignmentAndDirectionPutIt) {
  struct Case {
    platform::DWORD align;
    int direction;                  ///< tenths of a degree
    int left, right, above, below;  ///< on which sides of the position there is ink
  };
  // Text above or below its position, to the right or left of it; a quarter turn goes counter-clockwise.
  constexpr Case kCases[] = {
      {platform::TA_LEFT | platform::TA_BOTTOM, 0, 0, 1, 1, 0},
      {platform::TA_RIGHT | platform::TA_BOTTOM, 0, 1, 0, 1, 0},
      {platform::TA_CENTER | platform::TA_TOP, 0, 1, 1, 0, 1},
      {platform::TA_LEFT | platform::TA_BOTTOM, 900, 1, 0, 1, 0},
      {platform::TA_CENTER | platform::TA_BOTTOM, 900, 1, 0, 1, 1},
      {platform::TA_LEFT | platform::TA_BOTTOM, 1800, 1, 0, 0, 1},
      {platform::TA_LEFT | platform::TA_BOTTOM, -900, 0, 1, 0, 1},
  };
  for (const bool outline : {false, true}) {
    for (const Case& row : kCases) {
      QImage image(400, 400, QImage::Format_RGB32);
      image.fill(Qt::white);
      QPainter painter(&image);
      TextDrawing line = Line({200, 200}, u"HHHH", 30);
      line.align = row.align;
      line.font.lfEscapement = row.direction;
      line.outline = outline;
      desk::PaintLine(painter, line, std::nullopt);
      painter.end();
      const QRect ink = Ink(image);
      constexpr int kSlack = 3;
      SCOPED_TRACE(testing::Message() << "align " << row.align << " direction " << row.direction << " outline "
                                      << outline);
      EXPECT_EQ(ink.left() < 200 - kSlack, row.left == 1);
      EXPECT_EQ(ink.right() > 200 + kSlack, row.right == 1);
      EXPECT_EQ(ink.top() < 200 - kSlack, row.above == 1);
      EXPECT_EQ(ink.bottom() > 200 + kSlack, row.below == 1);
      EXPECT_NEAR(std::max(ink.width(), ink.height()), desk::MeasureLine(line.font, line.text).cx, 8);
    }
  }
}

/// A job with one page: the application fills its middle with blue, the driver writes across it.
class JobCanvasTest : public CanvasTest {
 protected:
  static constexpr double kScale = 72.0 / 600;

  void Open(DrawPath path, int order) {
    DriverEnv record = test::LetterRecord();
    Set<"lpWatermarkOrder">(record, order);
    job = *renderdriver::OpenJob({.record = record, .printer = u"P", .path = path});
    canvas = std::make_unique<JobCanvas>(job, Path());
    Send("EscSetUserName", Block(510));
    Send("EscSetCancelFlag", {0});
    Send("EscDocStarted");
    Send("EscOutputStart");
    ASSERT_TRUE(canvas->StartPage());
    const QRectF sheet = canvas->space().sheet;
    canvas->SetContent(
        {{{sheet.size(), [](QPainter& painter) { painter.fillRect(2500, 3000, 100, 600, Qt::blue); }, {}}, sheet}});
  }
  void Send(std::string_view name, const Block& in = {}) {
    const auto row = std::ranges::find(kEscapes, name, &EscapeRow::name);
    EXPECT_NE(canvas->Escape(row->code, in, {}), 0) << name;
  }
  void DrawAcross(platform::COLORREF color) {
    TextDrawing line = Line({2550, 3300}, u"▇▇▇▇▇▇", 600);
    line.align = platform::TA_CENTER | platform::TA_BOTTOM;
    line.color = line.pen_color = color;
    line.outline = true;
    line.pen_width = 1;
    canvas->DrawLine(line, std::nullopt);
  }
  /// The finished page at 72 dpi.
  QImage Page() {
    EXPECT_TRUE(canvas->EndPage());
    EXPECT_TRUE(canvas->Finish([](int) {}));
    const auto pdf = Poppler::Document::load(QString::fromStdString(Path()));
    EXPECT_EQ(pdf->numPages(), 1);
    return pdf->page(0)->renderToImage(72, 72).convertToFormat(QImage::Format_RGB32);
  }
  QRgb At(const QImage& page, int x, int y) {
    return page.pixel(static_cast<int>(x * kScale), static_cast<int>(y * kScale)) & 0xFFFFFF;
  }
  std::string Path() const { return folder.filePath("pages.pdf").toStdString(); }

  platform::MemoryBackend backend;
  QTemporaryDir folder;
  renderdriver::Job job;
  std::unique_ptr<JobCanvas> canvas;
};

constexpr QRgb kRed = 0xFF0000;
constexpr int kY = 3130, kBeside = 2100, kOn = 2525;  ///< inside the letters, beside and on the blue

TEST_F(JobCanvasTest, ThePageIsSeenThroughAMarkedStampAndNoOther) {
  for (const bool marked : {true, false}) {
    Open(DrawPath::k488, marked ? 2 : 1);
    if (marked) Send("EscStampBegin");
    DrawAcross(0x0000FF);
    if (marked) Send("EscStampEnd");
    const QImage page = Page();
    EXPECT_EQ(page.size(), QSize(612, 792));
    EXPECT_EQ(At(page, kBeside, kY), kRed);
    const QRgb on = At(page, kOn, kY);
    EXPECT_NEAR(qBlue(on), marked ? 128 : 0, 2);
    EXPECT_NEAR(qRed(on), marked ? 128 : 255, 2);
  }
}

TEST_F(JobCanvasTest, AMaskIsSeenInTheShadeThatWasSent) {
  Open(DrawPath::k488, 1);
  Send("EscStampColor", {0xC0});
  Send("EscStampNoColor");
  DrawAcross(0);
  EXPECT_EQ(At(Page(), kBeside, kY), 0xC0C0C0u);

  Open(DrawPath::k556, 1);
  Block state = job.pageState;
  Write<uint16_t>(state, PageState556::kStampIntensity, 0x80);
  Send("EscSetPageState", state);
  Send("EscStampNoColor");
  DrawAcross(0xFFFFFF);
  EXPECT_EQ(At(Page(), kBeside, kY), 0x808080u);
}

TEST_F(JobCanvasTest, AStampThatTheDriverLeavesToUsIsDrawnAroundTheMiddle) {
  Open(DrawPath::k556, 2);
  Block state = job.pageState;
  renderdriver::WriteText(state, PageState556::kStampText, 33, u"HHHHHHHH");
  renderdriver::WriteText(state, PageState556::kStampFont, 32, u"DejaVu Sans");
  Write<int16_t>(state, PageState556::kStampSize, 40);
  Write<int16_t>(state, PageState556::kStampAngle, 90);
  Write<int32_t>(state, PageState556::kStampCenterX, -508);  // two inches to the left
  Send("EscSetPageState", state);
  canvas->SetContent({});
  const QRect ink = Ink(Page());
  EXPECT_NEAR(ink.center().x(), 306 - 144, 4);
  EXPECT_NEAR(ink.center().y(), 396, 4);
  EXPECT_GT(ink.height(), 4 * ink.width());
}

}  // namespace
}  // namespace heron::spool

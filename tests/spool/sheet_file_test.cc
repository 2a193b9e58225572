// Pages in rectangles of a sheet: where they come to lie, which way they are turned, and what a full disk leaves.
#include <gtest/gtest.h>
#include <poppler-qt6.h>

#include <QGuiApplication>
#include <QTemporaryDir>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include "apps/spool/sheet_file.h"

namespace heron::spool {
namespace {

constexpr double kDpi = 600;
constexpr double kDots = kDpi / 72;  ///< of a point

class SheetFileTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    static char name[] = "spool_tests", platform[] = "-platform", offscreen[] = "offscreen";
    static char* arguments[] = {name, platform, offscreen, nullptr};
    static int count = 3;
    if (qApp == nullptr) new QGuiApplication(count, arguments);  // lives as long as the process
  }

  /// A page of 200 x 100 points as one reads it, red in its upper left quarter: drawn, or of a PDF that is stored
  /// turned by `stored`, or magnified by its unit.
  static DocumentPage Drawn() {
    const QSizeF size(200 * kDots, 100 * kDots);
    return {size, [size](QPainter& painter) { painter.fillRect(QRectF(QPointF(), size / 2), Qt::red); }, {}};
  }
  DocumentPage OfPdf(const std::string& entries, const std::string& drawing) {
    QPDFObjectHandle page = QPDFObjectHandle::parse("<</Type/Page/Resources<<>>" + entries + ">>");
    page.replaceKey("/Contents", QPDFObjectHandle::newStream(&source, drawing));
    QPDFPageDocumentHelper(source).addPage(QPDFPageObjectHelper(source.makeIndirectObject(page)), false);
    QPDFObjectHandle added = source.getAllPages().back();
    return {PageSizeOf(added, kDpi), nullptr, added};
  }
  /// The only sheet of the file at 72 dpi.
  QImage Sheet() const {
    const auto pdf = Poppler::Document::load(QString::fromStdString(Path()));
    EXPECT_EQ(pdf->numPages(), 1);
    return pdf->page(0)->renderToImage(72, 72).convertToFormat(QImage::Format_RGB32);
  }
  std::string Path() const { return folder.filePath("pages.pdf").toStdString(); }

  PageSpace space{kDpi, QRectF(0, 0, 600 * kDots, 400 * kDots), QRectF(0, 0, 600 * kDots, 400 * kDots)};
  QTemporaryDir folder;
  QPDF source;
};

TEST_F(SheetFileTest, APageFillsItsBoxAndIsTurnedClockwise) {
  source.emptyPDF();
  const std::vector<DocumentPage> pages = {
      Drawn(),
      OfPdf("/MediaBox[0 0 200 100]", "1 0 0 rg 0 50 100 50 re f"),
      OfPdf("/MediaBox[0 0 100 200]/Rotate 90", "1 0 0 rg 0 0 50 100 re f"),
      OfPdf("/MediaBox[50 60 150 110]/UserUnit 2", "1 0 0 rg 50 85 50 25 re f"),
      OfPdf("/MediaBox[-500 -500 900 900]/CropBox[300 200 100 100]", "1 0 0 rg 0 150 200 500 re f"),
  };
  // The red quarter of the box after each turn: upper left, upper right, lower right, lower left.
  const QPointF quarters[] = {{0.25, 0.25}, {0.75, 0.25}, {0.75, 0.75}, {0.25, 0.75}};
  for (size_t number = 0; number < pages.size(); ++number) {
    EXPECT_EQ(pages[number].size, QSizeF(200 * kDots, 100 * kDots)) << number;
    for (size_t turn = 0; turn < 4; ++turn) {
      SCOPED_TRACE(testing::Message() << "page " << number << " turn " << turn);
      const QRectF box(50, 30, turn % 2 == 0 ? 400 : 150, turn % 2 == 0 ? 200 : 300);
      SheetFile file(Path(), space);
      const PlacedPage placed{pages[number], QRectF(box.topLeft() * kDots, box.size() * kDots),
                              static_cast<int>(turn) * 90};
      ASSERT_TRUE(file.AddSheet({&placed, 1}, {}, {}));
      ASSERT_TRUE(file.Finish([](int) {}));
      const QImage sheet = Sheet();
      EXPECT_EQ(sheet.size(), QSize(600, 400));
      for (size_t quarter = 0; quarter < 4; ++quarter) {
        const QPointF at(box.left() + quarters[quarter].x() * box.width(),
                         box.top() + quarters[quarter].y() * box.height());
        EXPECT_EQ(sheet.pixelColor(at.toPoint()), quarter == turn ? Qt::red : Qt::white) << "quarter " << quarter;
      }
      EXPECT_EQ(sheet.pixelColor(45, 25), Qt::white);
      EXPECT_EQ(sheet.pixelColor(box.bottomRight().toPoint() + QPoint(5, 5)), Qt::white);
    }
  }
}

TEST_F(SheetFileTest, DrawingsLieUnderAndOverThePages) {
  const auto fill = [](QRectF area, QColor color) -> Drawing {
    return [=](QPainter& painter) {
      painter.fillRect(QRectF(area.topLeft() * kDots, area.size() * kDots), color);
      painter.setOpacity(0);  // is no business of the next drawing
    };
  };
  const PlacedPage page{Drawn(), QRectF(0, 0, 200 * kDots, 100 * kDots)};
  const Drawing under[] = {fill({0, 0, 600, 20}, Qt::blue), fill({0, 0, 300, 10}, Qt::green)};
  const Drawing over[] = {fill({50, 0, 20, 400}, Qt::black)};
  SheetFile file(Path(), space);
  ASSERT_TRUE(file.AddSheet({&page, 1}, under, over));
  ASSERT_TRUE(file.Finish([](int) {}));
  const QImage sheet = Sheet();
  EXPECT_EQ(sheet.pixelColor(10, 5), Qt::red);
  EXPECT_EQ(sheet.pixelColor(60, 5), Qt::black);
  EXPECT_EQ(sheet.pixelColor(150, 5), Qt::green) << "the page is open where it is white";
  EXPECT_EQ(sheet.pixelColor(450, 5), Qt::blue);
  EXPECT_EQ(sheet.pixelColor(60, 399), Qt::black) << "a drawing reaches the sheet's edge";
}

TEST_F(SheetFileTest, WhatCannotBeWrittenIsReported) {
  const PlacedPage page{Drawn(), QRectF(0, 0, 200 * kDots, 100 * kDots)};
  SheetFile nowhere(folder.filePath("none/pages.pdf").toStdString(), space);
  EXPECT_FALSE(nowhere.AddSheet({&page, 1}, {}, {}));

  // An empty sheet's file is so small that only closing it finds the disk full.
  SheetFile full("/dev/full", space);
  ASSERT_TRUE(full.AddSheet({}, {}, {}));
  EXPECT_FALSE(full.Finish([](int) {}));

  SheetFile ended(Path(), space);
  ASSERT_TRUE(ended.AddSheet({&page, 1}, {}, {}));
  EXPECT_THROW(ended.Finish([](int) { throw std::runtime_error("interrupted"); }), std::runtime_error);
}

}  // namespace
}  // namespace heron::spool

// Renders the pages of a fax with Poppler and writes them with libtiff (fax_file.h).

#include "fax_file.h"

#include <poppler-qt6.h>
#include <tiffio.h>

#include <QImage>
#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

namespace heron::spool {
namespace {

constexpr double kPointsPerInch = 72;
constexpr int kMostLines = 30000;  ///< of a page

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using UniqueTiff = std::unique_ptr<TIFF, CloseTiff>;

/// What libtiff says goes nowhere: the caller reports that the file couldn't be written.
class SilentTiff {
 public:
  SilentTiff() : errors_(TIFFSetErrorHandler(nullptr)), warnings_(TIFFSetWarningHandler(nullptr)) {}
  ~SilentTiff() {
    TIFFSetErrorHandler(errors_);
    TIFFSetWarningHandler(warnings_);
  }
  SilentTiff(const SilentTiff&) = delete;
  SilentTiff& operator=(const SilentTiff&) = delete;

 private:
  TIFFErrorHandler errors_, warnings_;
};

/// The picture in grey in the middle of a white sheet of kFaxLine pixels a line. Not Qt's conversion, whose worker
/// threads outlive what they are used for.
QImage GreySheet(const QImage& drawn) {
  constexpr int kPixelBits = 32;
  QImage sheet(kFaxLine, std::max(drawn.height(), 1), QImage::Format_Grayscale8);
  if (sheet.isNull()) return {};
  sheet.fill(Qt::white);
  const int left = (kFaxLine - drawn.width()) / 2;
  for (int y = 0; y < drawn.height(); ++y) {
    const auto* const line = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
    uchar* const grey = sheet.scanLine(y);
    for (int x = std::max(0, -left); x < std::min(drawn.width(), kFaxLine - left); ++x)
      grey[left + x] = static_cast<uchar>(qGray(drawn.depth() == kPixelBits ? line[x] : drawn.pixel(x, y)));
  }
  return sheet;
}

/// A page as a fax has it: one bit a pixel, a 1 is black, lines of kFaxLine pixels.
QImage FaxPage(const Poppler::Page& page, int resolution) {
  QSizeF inches = page.pageSizeF() / kPointsPerInch;
  const double line = double{kFaxLine} / kFaxAcross;
  const bool turned = inches.width() > line && inches.height() <= line;
  if (turned) inches.transpose();
  const double shrink = std::min({1.0, line / inches.width(), kMostLines / (inches.height() * resolution)});
  const auto turn = turned ? Poppler::Page::Rotate90 : Poppler::Page::Rotate0;
  const QImage drawn = page.renderToImage(kFaxAcross * shrink, resolution * shrink, -1, -1, -1, -1, turn);
  if (drawn.isNull()) return {};
  const QImage sheet = GreySheet(drawn);
  if (sheet.isNull()) return {};
  // Letters and lines are black or white already; greys of pictures become dots.
  QImage bits = sheet.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseDither);
  const bool black_is_1 = bits.colorCount() < 2 || qGray(bits.color(1)) < qGray(bits.color(0));
  if (!black_is_1) bits.invertPixels();
  return bits;
}

void DescribePage(TIFF* tiff, const QImage& bits, int resolution, uint16_t number, uint16_t count) {
  TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(bits.width()));
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(bits.height()));
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
  TIFFSetField(tiff, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(bits.height()));  // Class F: one strip a page
  TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, double{kFaxAcross});
  TIFFSetField(tiff, TIFFTAG_YRESOLUTION, static_cast<double>(resolution));
  TIFFSetField(tiff, TIFFTAG_PAGENUMBER, number, count);
  TIFFSetField(tiff, TIFFTAG_SOFTWARE, "Heron");
}

bool WritePage(TIFF* tiff, const QImage& bits, int resolution, int number, int count) {
  if (bits.isNull()) return false;
  DescribePage(tiff, bits, resolution, static_cast<uint16_t>(number), static_cast<uint16_t>(count));
  const auto line = static_cast<tmsize_t>((bits.width() + 7) / 8);
  std::vector<uint8_t> rows(static_cast<size_t>(line * bits.height()));
  for (int y = 0; y < bits.height(); ++y) std::copy_n(bits.constScanLine(y), line, rows.begin() + y * line);
  return TIFFWriteEncodedStrip(tiff, 0, rows.data(), static_cast<tmsize_t>(rows.size())) >= 0 &&
         TIFFWriteDirectory(tiff) == 1;
}

}  // namespace

bool WriteFaxFile(const FaxPages& pages, const std::string& path, const std::function<void(int, int)>& progress) {
  const SilentTiff silent;
  const std::unique_ptr<Poppler::Document> pdf = Poppler::Document::load(QString::fromStdString(pages.pdf));
  if (pdf == nullptr || pdf->isLocked()) return false;
  pdf->setRenderHint(Poppler::Document::Antialiasing, false);
  pdf->setRenderHint(Poppler::Document::TextAntialiasing, false);
  const int covers = std::accumulate(pages.covers.begin(), pages.covers.end(), 0);
  if (pdf->numPages() != covers + pages.pages) return false;
  const int count = covers + pages.pages * static_cast<int>(pages.covers.size());
  UniqueTiff tiff(TIFFOpen(path.c_str(), "w"));
  if (tiff == nullptr) return false;
  int number = 0, cover = 0;
  const auto write = [&](int page) {
    progress(number + 1, count);
    const std::unique_ptr<Poppler::Page> rendered = pdf->page(page);
    const bool written = rendered != nullptr &&
                         WritePage(tiff.get(), FaxPage(*rendered, pages.resolution), pages.resolution, number, count);
    ++number;
    return written;
  };
  for (const int own : pages.covers) {
    for (int i = 0; i < own; ++i)
      if (!write(cover++)) return false;
    for (int page = 0; page < pages.pages; ++page)
      if (!write(covers + page)) return false;
  }
  return TIFFFlush(tiff.get()) == 1;
}

}  // namespace heron::spool

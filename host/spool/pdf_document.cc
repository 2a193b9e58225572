// A PDF, page by page: each at its own size in the middle of the sheet, made smaller only if it doesn't fit.

#include <poppler-qt6.h>

#include <QImage>
#include <algorithm>
#include <cmath>

#include "cli/command.h"
#include "spool/document.h"

namespace heron::spool {
namespace {

constexpr double kRenderDpi = 300;
constexpr double kMostPixels = 100e6;

class PdfDocument : public Document {
 public:
  PdfDocument(std::unique_ptr<Poppler::Document> pdf, std::string name, const PageSpace& space)
      : pdf_(std::move(pdf)), name_(std::move(name)), space_(space) {
    pdf_->setRenderHint(Poppler::Document::Antialiasing);
    pdf_->setRenderHint(Poppler::Document::TextAntialiasing);
    // What the page leaves white stays open for what lies under it.
    pdf_->setRenderHint(Poppler::Document::IgnorePaperColor);
  }
  int PageCount() const override { return pdf_->numPages(); }
  void PaintPage(int number, QPainter& painter) const override {
    const std::unique_ptr<Poppler::Page> page = pdf_->page(number);
    const QSizeF points = page == nullptr ? QSizeF() : page->pageSizeF();
    if (!points.isValid() || points.isEmpty()) Fail(number);
    const QSizeF own = points * (space_.dpi / 72);
    const QSizeF sheet = space_.sheet.size();
    const double shrink = std::min({1.0, sheet.width() / own.width(), sheet.height() / own.height()});
    QRectF target(QPointF(), own * shrink);
    target.moveCenter(space_.sheet.center());
    const double dpi = std::min(kRenderDpi * shrink, std::sqrt(kMostPixels / (points.width() * points.height())) * 72);
    const QImage image = page->renderToImage(dpi, dpi);
    if (image.isNull()) Fail(number);
    painter.drawImage(target, image);
  }

 private:
  [[noreturn]] void Fail(int number) const {
    FailDocument(name_, "its page " + std::to_string(number + 1) + " is damaged");
  }

  std::unique_ptr<Poppler::Document> pdf_;
  std::string name_;
  PageSpace space_;
};

}  // namespace

std::unique_ptr<Document> LoadPdf(const QByteArray& bytes, const std::string& name, const PageSpace& space) {
  // What Poppler would write to stderr says less than our own sentence.
  Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, {});
  std::unique_ptr<Poppler::Document> pdf = Poppler::Document::loadFromData(bytes);
  if (pdf == nullptr) FailDocument(name, "the PDF is damaged");
  if (pdf->isLocked()) FailDocument(name, "the PDF wants a password");
  if (pdf->numPages() < 1) FailDocument(name, "the PDF has no pages");
  return std::make_unique<PdfDocument>(std::move(pdf), name, space);
}

}  // namespace heron::spool

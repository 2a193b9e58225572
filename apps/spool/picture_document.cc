// A picture on one page, as large as the printable area lets it be.

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include "document.h"

namespace heron::spool {
namespace {

constexpr int kLargestPictureMiB = 1024;
constexpr qint64 kMebibyte = 1024 * 1024;

class PictureDocument : public Document {
 public:
  PictureDocument(QImage image, const PageSpace& space) : image_(std::move(image)), space_(space) {}
  int PageCount() const override { return 1; }
  DocumentPage Page(int) const override {
    return {space_.sheet.size(), [this](QPainter& painter) { Paint(painter); }, {}};
  }

 private:
  void Paint(QPainter& painter) const {
    QRectF target(QPointF(), QSizeF(image_.size()).scaled(space_.printable.size(), Qt::KeepAspectRatio));
    target.moveCenter(space_.printable.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image_);
  }

  QImage image_;
  PageSpace space_;
};

/// A picture that is whole but needs more memory than there is or than a picture may take.
void CheckMemory(const QImageReader& reader, const std::string& name) {
  const QSize size = reader.size();
  if (!size.isValid()) return;  // the reader will say why
  const QImage::Format known = reader.imageFormat();
  const QImage::Format format = known == QImage::Format_Invalid ? QImage::Format_RGB32 : known;
  const qint64 bytes = qint64{size.width()} * size.height() * QImage::toPixelFormat(format).bitsPerPixel() / 8;
  const QString pixels = QStringLiteral("its %1 x %2 pixels").arg(size.width()).arg(size.height());
  if (bytes > kLargestPictureMiB * kMebibyte) {
    FailDocument(name, pixels.toStdString() + " take " + std::to_string(bytes / kMebibyte) +
                           " MiB of memory, and a picture may take " + std::to_string(kLargestPictureMiB) +
                           "; make it smaller");
  }
  if (QImage(size, format).isNull())
    FailDocument(name, "there isn't enough memory for " + pixels.toStdString() + "; make it smaller");
}

}  // namespace

std::unique_ptr<Document> LoadPicture(const QByteArray& bytes, const char* format, const std::string& name,
                                      const PageSpace& space) {
  QBuffer buffer;
  buffer.setData(bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, format);
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(kLargestPictureMiB);
  CheckMemory(reader, name);
  QImage image = reader.read();
  if (image.isNull()) FailDocument(name, "the picture is damaged (" + reader.errorString().toStdString() + ')');
  return std::make_unique<PictureDocument>(std::move(image), space);
}

}  // namespace heron::spool

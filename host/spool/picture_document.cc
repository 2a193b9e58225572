// A picture on one page, as large as the printable area lets it be.

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include "spool/document.h"

namespace heron::spool {
namespace {

constexpr int kLargestPictureMiB = 1024;

class PictureDocument : public Document {
 public:
  PictureDocument(QImage image, const PageSpace& space) : image_(std::move(image)), space_(space) {}
  int PageCount() const override { return 1; }
  void PaintPage(int, QPainter& painter) const override {
    QRectF target(QPointF(), QSizeF(image_.size()).scaled(space_.printable.size(), Qt::KeepAspectRatio));
    target.moveCenter(space_.printable.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image_);
  }

 private:
  QImage image_;
  PageSpace space_;
};

}  // namespace

std::unique_ptr<Document> LoadPicture(const QByteArray& bytes, const char* format, const std::string& name,
                                      const PageSpace& space) {
  QBuffer buffer;
  buffer.setData(bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, format);
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(kLargestPictureMiB);
  QImage image = reader.read();
  if (image.isNull()) FailDocument(name, "the picture is damaged (" + reader.errorString().toStdString() + ')');
  return std::make_unique<PictureDocument>(std::move(image), space);
}

}  // namespace heron::spool

// Renders pictures and keeps the most recent ones (picture_cache.h).

#include "picture_cache.h"

#include <QPaintEngine>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

namespace heron::desk {
namespace {

constexpr qsizetype kMostBytes = 8 << 20;
constexpr int kLargestSide = 4000;  // pixels; nothing that a module holds is drawn larger

int Side(double length) {
  return std::clamp(static_cast<int>(std::lround(length)), 1, kLargestSide);
}

}  // namespace

PictureCache::PictureCache(platform::HMODULE module) : module_(module), images_(kMostBytes) {}

void PictureCache::Paint(QPainter& painter, uint32_t number, const platform::RECT& target) {
  const QRectF place(QPointF(target.left, target.top), QPointF(target.right, target.bottom));
  if (place.isEmpty()) return;
  if (painter.paintEngine()->type() == QPaintEngine::SVG) return PaintVectors(painter, number, place);
  const QRectF pixels = painter.deviceTransform().mapRect(place);
  const Key key{number, QSize(Side(pixels.width()), Side(pixels.height()))};
  const QImage* image = images_.object(key);
  if (image != nullptr) return painter.drawImage(place, *image);
  const QImage fresh = Render(key);
  painter.drawImage(place, fresh);  // before the insertion, which may drop an image that is too large for the cache
  images_.insert(key, new QImage(fresh), std::max<qsizetype>(1, fresh.sizeInBytes()));
}

QSize PictureCache::SizeOf(uint32_t number) {
  if (const auto known = sizes_.find(number); known != sizes_.end()) return known->second;
  QSvgRenderer renderer;
  return sizes_[number] = Load(number, renderer) ? renderer.defaultSize() : QSize();
}

bool PictureCache::Load(uint32_t number, QSvgRenderer& renderer) const {
  if (module_ == nullptr) return false;
  const std::span<const uint8_t> source = platform::FindModuleData(module_, platform::RT_RCDATA, number);
  if (source.empty()) return false;
  renderer.setAspectRatioMode(Qt::IgnoreAspectRatio);
  return renderer.load(
      QByteArray::fromRawData(reinterpret_cast<const char*>(source.data()), static_cast<qsizetype>(source.size())));
}

void PictureCache::PaintVectors(QPainter& painter, uint32_t number, const QRectF& place) const {
  QSvgRenderer renderer;
  if (Load(number, renderer)) renderer.render(&painter, place);
}

QImage PictureCache::Render(const Key& key) const {
  QSvgRenderer renderer;
  if (!Load(key.number, renderer)) return {};
  QImage image(key.size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  renderer.render(&painter);
  return image;
}

}  // namespace heron::desk

// Pictures of the resource module, rendered from SVG at the requested size, with a cache.
#pragma once

#include <QCache>
#include <QImage>
#include <QPainter>
#include <map>

#include "platform/api/canvas.h"
#include "platform/api/modules.h"

class QSvgRenderer;

namespace heron::desk {

class PictureCache {
 public:
  /// `module` stays loaded as long as the cache; null has no pictures.
  explicit PictureCache(platform::HMODULE module);

  /// Draws picture `number` stretched to `target`, sharp in the pixels that `painter` has there, and as
  /// vectors into a drawing of vectors. Nothing if the module
  /// has no such picture.
  void Paint(QPainter& painter, uint32_t number, const platform::RECT& target);
  /// The size that the picture was drawn in; empty if the module has no such picture.
  QSize SizeOf(uint32_t number);

 private:
  struct Key {
    uint32_t number;
    QSize size;  ///< in pixels of the device
    bool operator==(const Key&) const = default;
    friend size_t qHash(const Key& key, size_t seed) {
      return qHashMulti(seed, key.number, key.size.width(), key.size.height());
    }
  };
  bool Load(uint32_t number, QSvgRenderer& renderer) const;
  void PaintVectors(QPainter& painter, uint32_t number, const QRectF& place) const;
  QImage Render(const Key& key) const;

  platform::HMODULE module_;
  std::map<uint32_t, QSize> sizes_;
  QCache<Key, QImage> images_;  ///< a picture that isn't there is kept as an empty image
};

}  // namespace heron::desk

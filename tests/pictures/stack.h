// A stack of pictures as text: parts NUMBER@X,Y or NUMBER@X,Y,WIDTH,HEIGHT joined by +, from the lowest.
#pragma once

#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>
#include <vector>

#include "picture_set.h"

namespace heron::test {

/// A stack's parts; `box` without a size has the picture's own.
struct Layer {
  uint32_t number = 0;
  QRectF box;
};

inline std::vector<Layer> ParseLayers(const PictureSet& set, const QString& item) {
  std::vector<Layer> layers;
  for (const QString& part : item.split('+')) {
    const QStringList halves = part.split('@');
    const QStringList values = halves.value(1).split(',');
    const auto value = [&](int n) { return values.value(n).toDouble(); };
    Layer layer{halves[0].toUInt(), {value(0), value(1), value(2), value(3)}};
    if (layer.box.isEmpty()) layer.box.setSize(QSvgRenderer(set.Source(layer.number)).defaultSize());
    layers.push_back(layer);
  }
  return layers;
}

/// The stack over a transparent ground.
inline QImage DrawStack(const PictureSet& set, const QString& text, qreal scale) {
  const std::vector<Layer> layers = ParseLayers(set, text);
  QRectF area;
  for (const Layer& layer : layers) area |= layer.box;
  QImage image((QSizeF(area.right(), area.bottom()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.scale(scale, scale);
  for (const Layer& layer : layers) QSvgRenderer(set.Source(layer.number)).render(&painter, layer.box);
  return image;
}

}  // namespace heron::test

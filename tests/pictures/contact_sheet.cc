// Puts pictures of the resource module side by side, in rows: contact_sheet MODULE OUT.PNG SCALE light|dark ITEM...
//
// An item is a picture's number or a stack (stack.h).
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>

#include "stack.h"

namespace heron::test {
namespace {

constexpr int kWidth = 1200, kGap = 8, kLabel = 13;  // pixels of the sheet

struct Item {
  QString label;
  QImage image;
};

Item Draw(const PictureSet& set, const QString& text, qreal scale) {
  return {text.section('+', 0, 0).section('@', 0, 0) + (text.contains('+') ? "..." : ""), DrawStack(set, text, scale)};
}

/// The upper left corner of each item, and the sheet's height as the last one's y.
std::vector<QPoint> PlaceInRows(const std::vector<Item>& items) {
  std::vector<QPoint> places;
  QPoint at(kGap, kGap);
  int highest = 0;
  for (const Item& item : items) {
    const int width = std::max(item.image.width(), 4 * kGap) + kGap;
    if (at.x() > kGap && at.x() + width > kWidth) {
      at = {kGap, at.y() + highest + kLabel + kGap};
      highest = 0;
    }
    places.push_back(at);
    at.rx() += width;
    highest = std::max(highest, item.image.height());
  }
  places.emplace_back(0, at.y() + highest + kLabel + kGap);
  return places;
}

QImage Arrange(const std::vector<Item>& items, bool dark) {
  const std::vector<QPoint> places = PlaceInRows(items);
  QImage sheet(kWidth, places.back().y(), QImage::Format_RGB32);
  sheet.fill(dark ? QColor(0x23, 0x26, 0x29) : QColor(Qt::white));
  QPainter painter(&sheet);
  QFont font("DejaVu Sans");
  font.setPixelSize(kLabel - 4);
  painter.setFont(font);
  painter.setPen(dark ? Qt::lightGray : Qt::darkGray);
  for (size_t n = 0; n < items.size(); ++n) {
    painter.drawImage(places[n], items[n].image);
    painter.drawText(places[n] + QPoint(0, items[n].image.height() + kLabel - 3), items[n].label);
  }
  return sheet;
}

/// With the most frequent colours only, each pixel in the nearest: a third of the bytes, and no difference to the eye.
QImage WithFewColors(const QImage& image) {
  constexpr size_t kColors = 256;
  std::map<QRgb, int> counts;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
  }
  std::vector<std::pair<int, QRgb>> by_count;
  for (const auto& [color, count] : counts) by_count.emplace_back(-count, color);
  std::ranges::sort(by_count);
  by_count.resize(std::min(by_count.size(), kColors));
  QList<QRgb> table;
  for (const auto& [count, color] : by_count) table.push_back(color);
  return image.convertToFormat(QImage::Format_Indexed8, table, Qt::AvoidDither);
}

int Run(const QStringList& arguments) {
  if (arguments.size() < 5) {
    std::fputs("usage: contact_sheet MODULE OUT.PNG SCALE light|dark ITEM...\n", stderr);
    return 2;
  }
  const PictureSet set(arguments[0]);
  std::vector<Item> items;
  for (const QString& item : arguments.mid(4)) items.push_back(Draw(set, item, arguments[2].toDouble()));
  constexpr int kSmallest = 0;  // of the PNG writer's qualities
  if (WithFewColors(Arrange(items, arguments[3] == "dark")).save(arguments[1], "PNG", kSmallest)) return 0;
  std::fprintf(stderr, "can't write %s\n", qPrintable(arguments[1]));
  return 1;
}

}  // namespace
}  // namespace heron::test

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  return heron::test::Run(QGuiApplication::arguments().mid(1));
}

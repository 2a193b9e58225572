// Drawing with Qt for the screen, jobs and pictures (painting.h).

#include "painting.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImageReader>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace heron::desk {
namespace {

using platform::COLORREF;
using platform::LOGFONTW;
using platform::LONG;
using platform::RECT;
using platform::TextDrawing;

constexpr int kUsualHeight = 12;
constexpr int kLargestHeight = 20000;
constexpr int kBoldFrom = 600;

/// Character sets of a LOGFONTW.
constexpr uint8_t kDefaultCharSet = 1;
constexpr uint8_t kFixedPitch = 1, kVariablePitch = 2;
constexpr std::pair<QFontDatabase::WritingSystem, uint8_t> kCharSets[] = {
    {QFontDatabase::SimplifiedChinese, 134},
    {QFontDatabase::TraditionalChinese, 136},
    {QFontDatabase::Japanese, 128},
    {QFontDatabase::Korean, 129},
};

QString Text(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QRectF Rectangle(const RECT& rect) {
  return QRectF(QPointF(rect.left, rect.top), QPointF(rect.right, rect.bottom)).normalized();
}

QString Family(const LOGFONTW& font) {
  const std::u16string_view face(font.lfFaceName, platform::kFaceSize);
  const QString family = Text(face.substr(0, face.find(u'\0')));
  return family.startsWith(u'@') ? family.mid(1) : family;  // the mark of lines that run downwards
}

/// Fonts of a Debian desktop in place of fonts that only Windows has, best first. Where none is installed Qt takes the
/// glyphs of any font that has them; a glyph that none has appears as an empty box.
struct Substitutes {
  const char16_t* family;
  std::initializer_list<const char*> instead;
};
const Substitutes kSubstitutes[] = {
    {u"宋体", {"Noto Serif CJK SC", "AR PL UMing CN", "AR PL SungtiL GB", "Liberation Serif", "DejaVu Serif"}},
    {u"黑体", {"Noto Sans CJK SC", "WenQuanYi Zen Hei", "WenQuanYi Micro Hei", "Liberation Sans", "DejaVu Sans"}},
    {u"Arial", {"Liberation Sans", "Nimbus Sans", "DejaVu Sans"}},
};

QStringList FamiliesFor(const QString& family) {
  QStringList families = {family};
  for (const Substitutes& row : kSubstitutes) {
    if (family != QString::fromUtf16(row.family)) continue;
    for (const char* name : row.instead) families << QString::fromLatin1(name);
  }
  return families;
}

QFont FontOf(const LOGFONTW& asked) {
  QFont font;  // the application's where none is named
  if (const QString family = Family(asked); !family.isEmpty())
    font.setFamilies(FamiliesFor(family));
  else
    font.setStyleHint(QFont::SansSerif);
  const int64_t height = std::min<int64_t>(std::abs(int64_t{asked.lfHeight}), kLargestHeight);
  font.setPixelSize(height == 0 ? kUsualHeight : static_cast<int>(height));
  if (asked.lfHeight > 0) {  // the line's height is given, not the letters'
    const double scale = static_cast<double>(height) / QFontMetricsF(font).height();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(scale * static_cast<double>(height)))));
  }
  font.setBold(asked.lfWeight >= kBoldFrom);
  font.setItalic(asked.lfItalic != 0);
  font.setUnderline(asked.lfUnderline != 0);
  font.setStrikeOut(asked.lfStrikeOut != 0);
  return font;
}

/// Where the line begins, seen from the point that its alignment puts at the drawing's position.
QPointF StartOfLine(const TextDrawing& drawing, const QFontMetricsF& metrics, double width) {
  const platform::DWORD across = drawing.align & platform::TA_CENTER;
  const double x = across == platform::TA_CENTER ? -width / 2 : across == platform::TA_RIGHT ? -width : 0;
  return {x, (drawing.align & platform::TA_BOTTOM) != 0 ? -metrics.descent() : metrics.ascent()};
}

void PaintOutline(QPainter& painter, const TextDrawing& drawing, QPointF start, const QFont& font) {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addText(start, font, Text(drawing.text));
  painter.setPen(QPen(ColorOf(drawing.pen_color), drawing.pen_width));
  painter.setBrush(ColorOf(drawing.color));
  painter.drawPath(path);
}

/// Restores the painter's state at the end of the scope.
class Clipped {
 public:
  Clipped(QPainter& painter, const std::optional<RECT>& clip) : painter_(painter) {
    painter_.save();
    if (clip) painter_.setClipRect(Rectangle(*clip), Qt::IntersectClip);
  }
  ~Clipped() { painter_.restore(); }
  Clipped(const Clipped&) = delete;
  Clipped& operator=(const Clipped&) = delete;

 private:
  QPainter& painter_;
};

}  // namespace

QColor ColorOf(COLORREF color) {
  return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                static_cast<int>(color >> 16 & 0xFF));
}

void PaintLine(QPainter& painter, const TextDrawing& drawing, const std::optional<RECT>& clip) {
  const Clipped clipped(painter, clip);
  const QFont font = FontOf(drawing.font);
  const QFontMetricsF metrics(font);
  const QString text = Text(drawing.text);
  const double width = metrics.horizontalAdvance(text);
  const QPointF start = StartOfLine(drawing, metrics, width);
  painter.translate(drawing.at.x, drawing.at.y);
  painter.rotate(-drawing.font.lfEscapement / 10.0);
  if (drawing.backdrop) {
    painter.fillRect(QRectF(start.x(), start.y() - metrics.ascent(), width, metrics.height()),
                     ColorOf(*drawing.backdrop));
  }
  if (drawing.outline) return PaintOutline(painter, drawing, start, font);
  painter.setFont(font);
  painter.setPen(ColorOf(drawing.color));
  painter.drawText(start, text);
}

void PaintRect(QPainter& painter, const RECT& area, COLORREF color, const std::optional<RECT>& clip) {
  const Clipped clipped(painter, clip);
  painter.fillRect(Rectangle(area), ColorOf(color));
}

void PaintPicture(QPainter& painter, const RECT& target, const platform::Picture& picture,
                  const std::optional<RECT>& clip) {
  const Clipped clipped(painter, clip);
  const QImage image(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width, picture.height,
                     QImage::Format_ARGB32);
  painter.drawImage(Rectangle(target), image);
}

QImage ReadBitmap(std::span<const uint8_t> file) {
  constexpr int kLargestMegabytes = 256;  // of the decoded picture
  QImageReader::setAllocationLimit(kLargestMegabytes);
  const auto bytes =
      QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size()));
  QBuffer buffer;
  buffer.setData(bytes);
  if (!buffer.open(QIODevice::ReadOnly)) return {};
  return QImageReader(&buffer, "BMP").read();
}

void PaintImage(QPainter& painter, const RECT& target, const QImage& image, const std::optional<RECT>& clip) {
  const Clipped clipped(painter, clip);
  painter.drawImage(Rectangle(target), image);
}

platform::SIZE MeasureLine(const LOGFONTW& font, std::u16string_view text) {
  const QFontMetricsF metrics(FontOf(font));
  return {static_cast<LONG>(std::lround(metrics.horizontalAdvance(Text(text)))),
          static_cast<LONG>(std::lround(metrics.height()))};
}

std::vector<platform::FontFamily> InstalledFamilies() {
  std::vector<platform::FontFamily> families;
  QStringList names;
  // A family of several foundries is listed once for each, with the foundry behind its name.
  for (const QString& name : QFontDatabase::families()) names << name.section(QStringLiteral(" ["), 0, 0);
  names.removeDuplicates();
  for (const QString& name : names) {
    const auto systems = QFontDatabase::writingSystems(name);
    const auto row = std::ranges::find_if(kCharSets, [&](const auto& r) { return systems.contains(r.first); });
    families.push_back({.name = name.toStdU16String(),
                        .char_set = row == std::end(kCharSets) ? kDefaultCharSet : row->second,
                        .pitch_and_family = QFontDatabase::isFixedPitch(name) ? kFixedPitch : kVariablePitch});
  }
  return families;
}

}  // namespace heron::desk

// Plain text: ten points, a typewriter's font, from edge to edge of what the printer can print on. Long lines go on in
// the next one, at a blank if there is one; a form feed begins a page.

#include <QFont>
#include <QFontMetricsF>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>

#include "spool/document.h"

namespace heron::spool {
namespace {

constexpr double kPoints = 10;
constexpr int kTabStop = 8;

class TextDocument : public Document {
 public:
  TextDocument(const QString& text, const PageSpace& space)
      : space_(space), font_(TextFont(space)), metrics_(font_), cell_(metrics_.horizontalAdvance(u'M')) {
    lines_on_page_ = std::max(1, static_cast<int>(space.printable.height() / metrics_.height()));
    // No list of views: a line may be several once it is wrapped.
    for (const QString& page : text.split(u'\f')) Paginate(page);
  }
  int PageCount() const override { return static_cast<int>(pages_.size()); }
  void PaintPage(int page, QPainter& painter) const override {
    painter.setFont(font_);
    painter.setPen(Qt::black);
    double baseline = space_.printable.top() + metrics_.ascent();
    for (const QString& line : pages_[static_cast<size_t>(page)]) {
      if (!line.isEmpty()) painter.drawText(QPointF(space_.printable.left(), baseline), line);
      baseline += metrics_.height();
    }
  }

 private:
  static QFont TextFont(const PageSpace& space) {
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(std::max(1, static_cast<int>(kPoints * space.dpi / 72)));
    return font;
  }

  void Paginate(const QString& text) {
    pages_.emplace_back();
    QStringList lines = text.split(u'\n');
    if (lines.size() > 1 && lines.back().isEmpty()) lines.pop_back();  // the end of the last line, not a line
    for (QString& line : lines) {
      if (line.endsWith(u'\r')) line.chop(1);
      ExpandTabs(line);
      while (true) {
        const qsizetype fits = Fitting(line);
        AddLine(line.left(fits));
        if (fits == line.size()) break;
        line.remove(0, line[fits] == u' ' ? fits + 1 : fits);
      }
    }
  }

  static void ExpandTabs(QString& line) {
    for (qsizetype at = line.indexOf(u'\t'); at >= 0; at = line.indexOf(u'\t', at))
      line.replace(at, 1, QString(kTabStop - at % kTabStop, u' '));
  }

  /// How many characters of `line` stand on one line of the page: at least one, and never half a character.
  qsizetype Fitting(const QString& line) const {
    const double room = space_.printable.width();
    const bool plain = std::ranges::all_of(line, [](QChar c) { return c.unicode() < 0x80; });
    qsizetype fits = plain ? std::min(line.size(), static_cast<qsizetype>(room / cell_)) : 0;
    for (double width = 0; !plain && fits < line.size();) {
      const qsizetype step = line[fits].isHighSurrogate() && fits + 1 < line.size() ? 2 : 1;
      width += metrics_.horizontalAdvance(line.mid(fits, step));
      if (width > room) break;
      fits += step;
    }
    if (fits == line.size()) return fits;
    if (line[fits] == u' ') return std::max<qsizetype>(fits, 1);
    const qsizetype blank = line.lastIndexOf(u' ', fits);
    return blank > 0 ? blank : std::max<qsizetype>(fits, 1);
  }

  void AddLine(QString line) {
    if (static_cast<int>(pages_.back().size()) == lines_on_page_) pages_.emplace_back();
    pages_.back().push_back(std::move(line));
  }

  PageSpace space_;
  QFont font_;
  QFontMetricsF metrics_;
  double cell_;  ///< width of a character of the typewriter's
  int lines_on_page_;
  std::vector<std::vector<QString>> pages_;
};

}  // namespace

std::unique_ptr<Document> LoadText(const QByteArray& bytes, const std::string& name, const PageSpace& space) {
  QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
  QString text = decoder.decode(bytes);
  if (decoder.hasError() || text.contains(u'\0'))
    FailDocument(name, "it is neither UTF-8 text nor a PNG, JPEG or PDF file");
  for (QChar& c : text)
    if (c < u' ' && c != u'\t' && c != u'\n' && c != u'\f' && c != u'\r') c = QChar::ReplacementCharacter;
  return std::make_unique<TextDocument>(text, space);
}

}  // namespace heron::spool

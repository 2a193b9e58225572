// Plain text: ten points, a typewriter's font, from edge to edge of what the printer can print on. Long lines go on in
// the next one, at a blank if there is one; a form feed begins a page.

#include <QFont>
#include <QFontMetricsF>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>

#include "document.h"

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
  DocumentPage Page(int page) const override {
    return {space_.sheet.size(), [this, page](QPainter& painter) { PaintPage(page, painter); }, {}};
  }

 private:
  void PaintPage(int page, QPainter& painter) const {
    painter.setFont(font_);
    painter.setPen(Qt::black);
    double baseline = space_.printable.top() + metrics_.ascent();
    for (const QString& line : pages_[static_cast<size_t>(page)]) {
      if (!line.isEmpty()) painter.drawText(QPointF(space_.printable.left(), baseline), line);
      baseline += metrics_.height();
    }
  }

  static QFont TextFont(const PageSpace& space) {
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    // In pixels of the page: points would be scaled by the resolution of the paint device a second time.
    font.setPixelSize(std::max(1, static_cast<int>(kPoints * space.dpi / 72)));
    return font;
  }

  void Paginate(const QString& text) {
    pages_.emplace_back();
    QStringList lines = text.split(u'\n');
    if (lines.size() > 1 && lines.back().isEmpty()) lines.pop_back();  // the end of the last line, not a line
    for (QString& line : lines) {
      if (line.endsWith(u'\r')) line.chop(1);
      const QString expanded = Expanded(line);
      // A view moves along, as a line may be the whole document.
      QStringView rest = expanded;
      while (true) {
        const qsizetype fits = Fitting(rest);
        AddLine(rest.first(fits).toString());
        if (fits == rest.size()) break;
        rest = rest.sliced(rest[fits] == u' ' ? fits + 1 : fits);
      }
    }
  }

  static QString Expanded(const QString& line) {
    if (!line.contains(u'\t')) return line;
    QString expanded;
    for (const QChar c : line) {
      if (c == u'\t') {
        expanded.append(QString(kTabStop - expanded.size() % kTabStop, u' '));
      } else {
        expanded.append(c);
      }
    }
    return expanded;
  }

  /// How many characters of `text` fit on one line of the page: at least one, and never half a character. Looks at no
  /// more of it than that.
  qsizetype Fitting(QStringView text) const {
    const double room = space_.printable.width();
    qsizetype fits = std::min(text.size(), static_cast<qsizetype>(room / cell_));
    // ASCII has one width in this font; measuring every character of a long text would be slow.
    if (!std::ranges::all_of(text.first(fits), [](QChar c) { return c.unicode() < 0x80; })) fits = Measured(text, room);
    if (fits == text.size()) return fits;
    if (text[fits] == u' ') return std::max<qsizetype>(fits, 1);
    const qsizetype blank = text.first(fits).lastIndexOf(u' ');
    return blank > 0 ? blank : std::max<qsizetype>(fits, text[0].isHighSurrogate() && text.size() > 1 ? 2 : 1);
  }

  /// How many characters fit into `room`, one by one: signs of other scripts may be wider than the typewriter's.
  qsizetype Measured(QStringView text, double room) const {
    qsizetype fits = 0;
    for (double width = 0; fits < text.size();) {
      const qsizetype step = text[fits].isHighSurrogate() && fits + 1 < text.size() ? 2 : 1;
      width += metrics_.horizontalAdvance(text.sliced(fits, step).toString());
      if (width > room) break;
      fits += step;
    }
    return fits;
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

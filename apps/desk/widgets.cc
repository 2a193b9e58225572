// Widgets that Qt doesn't have: filtered fields, places, short buttons (widgets.h).

#include "widgets.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace heron::desk {

// -- group

void GroupBox::EnableTitle(bool enabled) {
  title_enabled_ = enabled;
  update();
}

void GroupBox::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionGroupBox option;
  initStyleOption(&option);
  if (!title_enabled_) {
    option.state &= ~QStyle::State_Enabled;
    option.textColor = option.palette.color(QPalette::Disabled, QPalette::WindowText);
  }
  painter.drawComplexControl(QStyle::CC_GroupBox, option);
}

// -- spin

SpinField::SpinField(QWidget* parent) : QAbstractSpinBox(parent) {
  setFocusPolicy(Qt::StrongFocus);  // a wheel that rolls by mustn't change it
}

void SpinField::stepBy(int steps) {
  const int span = maximum - minimum + 1;
  int wanted = position + steps;
  if (wraps && span > 0) wanted = minimum + ((wanted - minimum) % span + span) % span;
  const int bounded = std::max(minimum, std::min(wanted, maximum));
  if (bounded == position) return;
  position = bounded;
  if (stepped) stepped();
}

QAbstractSpinBox::StepEnabled SpinField::stepEnabled() const {
  if (!spin_enabled || isReadOnly()) return StepNone;
  if (wraps) return StepUpEnabled | StepDownEnabled;
  return (position < maximum ? StepUpEnabled : StepNone) | (position > minimum ? StepDownEnabled : StepNone);
}

void SpinField::wheelEvent(QWheelEvent* event) {
  hasFocus() ? QAbstractSpinBox::wheelEvent(event) : event->ignore();
}

QSize SpinField::sizeHint() const {
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  const QSize text(fontMetrics().horizontalAdvance(QStringLiteral("0000.0 mm")), lineEdit()->sizeHint().height());
  return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

// -- characters

namespace {

/// The first character of a text, whole.
QStringView FirstCharacter(QStringView text) {
  return text.first(text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate() ? 2 : 1);
}

/// A lone half isn't text.
bool TakesWhole(const KeyFilter::Takes& takes, QStringView character, const QString& text, qsizetype first,
                qsizetype last) {
  const bool pair = character.size() == 2;
  if ((character[0].isSurrogate() && !pair) || !takes(character[0].unicode(), text, first, last)) return false;
  if (!pair) return true;
  const QString with_half = QString(text).replace(first, last - first, character[0]);
  return takes(character[1].unicode(), with_half, first + 1, first + 1);
}

bool Fits(int limit, qsizetype length, QStringView more) {
  return limit == 0 || length + more.size() <= limit;
}

}  // namespace

KeyFilter::KeyFilter(QLineEdit* field, Takes takes) : QValidator(field), field_(field), takes_(std::move(takes)) {
  connect(field, &QLineEdit::selectionChanged, this, &KeyFilter::Remember);
  connect(field, &QLineEdit::cursorPositionChanged, this, &KeyFilter::Remember);
  connect(field, &QLineEdit::textChanged, this, &KeyFilter::Remember);
}

void KeyFilter::Remember() {
  if (asking_) return;
  text_ = field_->text();
  const bool selected = field_->hasSelectedText();
  first_ = selected ? field_->selectionStart() : field_->cursorPosition();
  last_ = selected ? field_->selectionEnd() : first_;
}

// The field has the new text already; the inserted text is between the two ends that stayed. It is taken
// out again and put in one character after the other, as if each were typed.
QValidator::State KeyFilter::validate(QString& text, int& caret) const {
  if (passes || asking_) return Acceptable;
  const qsizetype kept = text_.size() - (last_ - first_);
  const qsizetype added = text.size() - kept;
  const bool inserted = added > 0 && text.first(std::min(first_, text.size())) == text_.first(first_) &&
                        text.endsWith(QStringView(text_).sliced(last_));
  if (!inserted) return Acceptable;
  asking_ = true;
  QString result = text_;
  qsizetype first = first_;
  qsizetype last = last_;
  const QString all = text.sliced(first_, added);
  for (QStringView rest = all; !rest.empty();) {
    const QStringView character = FirstCharacter(rest);
    rest = rest.sliced(character.size());
    if (!Fits(limit, result.size() - (last - first), character)) {
      if (full) full();
      break;
    }
    if (!TakesWhole(takes_, character, result, first, last)) continue;
    result.replace(first, last - first, character.data(), character.size());
    last = first += character.size();
  }
  asking_ = false;
  if (first == first_ && last == last_) return Invalid;  // nothing was taken: the field undoes the change
  // The field may ask again about what it gets here: nothing is new in it then.
  text_ = text = result;
  first_ = last_ = first;
  caret = static_cast<int>(first);
  return Acceptable;
}

// -- several lines

Memo::Memo(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
}

void Memo::Insert(const QString& text) {
  for (QStringView rest = text; !rest.empty();) {
    const QStringView character = FirstCharacter(rest);
    rest = rest.sliced(character.size());
    const QTextCursor cursor = textCursor();
    const QString now = toPlainText();
    const int first = cursor.selectionStart();
    const int last = cursor.selectionEnd();
    if (!Fits(limit, now.size() - (last - first), character)) {
      if (full) full();
      return;
    }
    const bool line_end = character[0] == u'\n' || character[0] == QChar::ParagraphSeparator;
    if (!line_end && takes && !TakesWhole(takes, character, now, first, last)) continue;
    insertPlainText(line_end ? QStringLiteral("\n") : character.toString());
  }
}

void Memo::keyPressEvent(QKeyEvent* event) {
  const QString text = event->text();
  const bool types = !isReadOnly() && !text.isEmpty() && text[0].isPrint() &&
                     (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
  const bool new_line = !isReadOnly() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter);
  if (types || new_line) return Insert(new_line ? QStringLiteral("\n") : text);
  QPlainTextEdit::keyPressEvent(event);
}

void Memo::insertFromMimeData(const QMimeData* source) {
  if (!isReadOnly() && source->hasText()) Insert(source->text().remove(u'\r'));
}

void Memo::inputMethodEvent(QInputMethodEvent* event) {
  const QString text = event->commitString();
  event->setCommitString({});
  QPlainTextEdit::inputMethodEvent(event);
  if (!isReadOnly()) Insert(text);
}

// -- rows

void RowMouse::Press(const QAbstractItemView& view, QPoint at) {
  from_ = moved ? view.indexAt(at).row() : platform::kNoRow;
  pressed_ = at;
  gap_ = kNoGap;
}

bool RowMouse::Drag(QAbstractItemView& view, QPoint at) {
  if (from_ == platform::kNoRow) return false;
  if (gap_ == kNoGap && (at - pressed_).manhattanLength() < QApplication::startDragDistance()) return true;
  const QRect area = view.viewport()->rect();
  const QPoint inside(area.center().x(), std::clamp(at.y(), area.top(), area.bottom()));
  const QModelIndex index = view.indexAt(inside);
  if (index.isValid()) view.scrollTo(index);
  const bool above = index.isValid() && inside.y() < view.visualRect(index).center().y();
  gap_ = !index.isValid() ? view.model()->rowCount() : index.row() + (above ? 0 : 1);
  view.viewport()->setCursor(Qt::ClosedHandCursor);
  view.viewport()->update();
  return true;
}

bool RowMouse::Drop(QAbstractItemView& view) {
  const int from = std::exchange(from_, platform::kNoRow);
  const int gap = std::exchange(gap_, kNoGap);
  if (from == platform::kNoRow || gap == kNoGap) return false;
  view.viewport()->unsetCursor();
  view.viewport()->update();
  const int to = gap > from ? gap - 1 : gap;
  if (to != from) moved(from, to);
  return true;
}

void RowMouse::PaintGap(QAbstractItemView& view) const {
  if (gap_ == kNoGap) return;
  const int last = view.model()->rowCount() - 1;
  const QRect row = view.visualRect(view.model()->index(std::min(gap_, last), 0));
  const int y = gap_ > last ? row.bottom() + 1 : row.top();
  QPainter painter(view.viewport());
  painter.setPen(QPen(view.palette().highlight(), 2));
  painter.drawLine(0, y, view.viewport()->width(), y);
}

// -- places

Place::Place(QWidget* parent, QSize size, bool grows) : QWidget(parent), size_(size), grows_(grows) {
  if (grows) {
    setMinimumSize(size * kUsualGrowth);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  } else {
    setFixedSize(size);
  }
  setFocusPolicy(Qt::NoFocus);
  setMouseTracking(true);
}

void Place::Point(platform::PointerAction action, const QMouseEvent& event) {
  const QPoint at = event.position().toPoint();
  if (pointed) pointed({.action = action, .at = {at.x(), at.y()}, .held = held_});
}

void Place::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
  held_ = true;
  Point(platform::PointerAction::kPress, *event);
}

void Place::mouseMoveEvent(QMouseEvent* event) {
  Point(platform::PointerAction::kMove, *event);
}

/// A release without its press belongs to a press that another control has kept from here.
void Place::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !held_) return QWidget::mouseReleaseEvent(event);
  held_ = false;
  Point(platform::PointerAction::kRelease, *event);
}

void Place::paintEvent(QPaintEvent*) {
  constexpr int kSymbol = 48;
  QStylePainter painter(this);
  if (width() > kSymbol || height() > kSymbol) {
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    frame.state |= QStyle::State_Sunken;
    frame.frameShape = QFrame::StyledPanel;
    painter.drawControl(QStyle::CE_ShapedFrame, frame);
    painter.setClipRect(rect().adjusted(1, 1, -1, -1));
  }
  if (!picture_.isNull()) style()->drawItemPixmap(&painter, rect(), Qt::AlignCenter, picture_);
  if (draw) draw(painter, rect());
}

void Place::SetPicture(const QPixmap& picture) {
  picture_ = picture;
  update();
}

void MenuButton::initStyleOption(QStyleOptionButton* option) const {
  QPushButton::initStyleOption(option);
  option->features |= QStyleOptionButton::HasMenu;
}

}  // namespace heron::desk

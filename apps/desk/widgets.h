// Widgets that Qt doesn't have in the form that the logic needs.
#pragma once

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QGroupBox>
#include <QMouseEvent>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QValidator>
#include <functional>

#include "platform/dialog/dialog.h"

namespace heron::desk {

/// A frame with a title that can be greyed without its contents.
class GroupBox final : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;
  void EnableTitle(bool enabled);
  bool IsTitleEnabled() const { return title_enabled_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool title_enabled_ = true;
};

/// A field and its spin as one control pair. The field's text belongs to the logic; a step only moves the position.
class SpinField final : public QAbstractSpinBox {
 public:
  explicit SpinField(QWidget* parent);

  std::function<void()> stepped;  ///< the user moved the position
  int minimum = 0;
  int maximum = 100;
  int position = 0;
  bool wraps = false;
  bool spin_enabled = true;

  QLineEdit* field() const { return lineEdit(); }
  void stepBy(int steps) override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  StepEnabled stepEnabled() const override;
  void wheelEvent(QWheelEvent* event) override;
};

/// Asks `takes` for each character that is typed, pasted, dropped or composed into a field. What is refused never
/// shows; of a character in two halves both are taken or none.
class KeyFilter final : public QValidator {
 public:
  /// The character, the text of the field, the selection.
  using Takes = std::function<bool(char16_t, const QString&, qsizetype first, qsizetype last)>;

  KeyFilter(QLineEdit* field, Takes takes);
  State validate(QString& text, int& caret) const override;
  std::function<void()> full;  ///< nothing more is taken
  /// Texts set by the logic pass unasked, also longer ones.
  bool passes = false;
  int limit = 0;  ///< characters, 0 for no limit

 private:
  void Remember();

  QLineEdit* field_;
  Takes takes_;
  mutable bool asking_ = false;
  mutable QString text_;  ///< as it was before the change that is being looked at
  mutable qsizetype first_ = 0;
  mutable qsizetype last_ = 0;
};

/// A text of several lines with a limit; each character is asked for as with KeyFilter.
class Memo final : public QPlainTextEdit {
 public:
  explicit Memo(QWidget* parent);
  KeyFilter::Takes takes;
  std::function<void()> full;
  int limit = 0;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

 private:
  void Insert(const QString& text);
};

/// The rows of a list box or list view, and what the mouse does with them.
class RowMouse {
 public:
  virtual ~RowMouse() = default;
  std::function<void(int row)> clicked;              ///< or kNoRow, after what it selected was reported
  std::function<void(int from, int to)> moved = {};  ///< without it rows can't be dragged

 protected:
  /// The three steps of a drag, with positions in the viewport.
  void Press(const QAbstractItemView& view, QPoint at);
  /// True while a row is being dragged: the view doesn't select then.
  bool Drag(QAbstractItemView& view, QPoint at);
  bool Drop(QAbstractItemView& view);
  /// Where the row would go.
  void PaintGap(QAbstractItemView& view) const;

 private:
  static constexpr int kNoGap = -1;
  int from_ = platform::kNoRow;
  QPoint pressed_;
  int gap_ = kNoGap;  ///< the row above which the dragged one would go; the number of rows behind the last
};

template <typename View>
class RowsOf final : public View, public RowMouse {
 public:
  using View::View;

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) Press(*this, event->position().toPoint());
    View::mousePressEvent(event);
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    const bool held = (event->buttons() & Qt::LeftButton) != 0;
    if (!held || !Drag(*this, event->position().toPoint())) View::mouseMoveEvent(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && Drop(*this)) return event->accept();
    View::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && clicked) clicked(this->indexAt(event->position().toPoint()).row());
  }
  void paintEvent(QPaintEvent* event) override {
    View::paintEvent(event);
    PaintGap(*this);
  }
};

/// A place that the logic paints. One for more than a symbol has a frame, also as long as nothing is painted.
class Place final : public QWidget {
 public:
  /// `grows`: a quarter larger than `size` at least, and takes the room that a larger window has; what is drawn in it
  /// scales as a whole.
  Place(QWidget* parent, QSize size, bool grows = false);
  std::function<void(QPainter&, const QRect&)> draw;
  std::function<void(const platform::PointerEvent&)> pointed;
  /// A picture that the place shows in its middle, under what is drawn.
  void SetPicture(const QPixmap& picture);
  QSize sizeHint() const override { return grows_ ? size_ * kUsualGrowth : size_; }
  bool Grows() const { return grows_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void Point(platform::PointerAction action, const QMouseEvent& event);

  static constexpr double kUsualGrowth = 1.25;  ///< more would make a page of two columns scroll

  QSize size_;
  bool grows_;
  bool held_ = false;  ///< the left button went down here
  QPixmap picture_;
};

/// A button that opens a menu and shows so.
class MenuButton final : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  void initStyleOption(QStyleOptionButton* option) const override;
};

}  // namespace heron::desk

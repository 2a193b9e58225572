// Widgets that Qt doesn't have in the form that the logic needs.
#pragma once

#include <QAbstractSpinBox>
#include <QGroupBox>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QValidator>
#include <functional>

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

/// A place that the logic paints. One for more than a symbol has a frame, also as long as nothing is painted.
class Place final : public QWidget {
 public:
  /// `grows`: at least as large as `size`, by a quarter, and a little wider where there is room.
  Place(QWidget* parent, QSize size, bool grows = false);
  std::function<void(QPainter&, const QRect&)> draw;
  /// A picture that the place shows in its middle, under what is drawn.
  void SetPicture(const QPixmap& picture);
  QSize sizeHint() const override { return grows_ ? size_ * kUsualGrowth : size_; }
  bool Grows() const { return grows_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  // Of a place that grows. More would make a page of two columns scroll.
  static constexpr double kUsualGrowth = 1.25, kMostGrowth = 1.3;

  QSize size_;
  bool grows_;
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

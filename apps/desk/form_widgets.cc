// Makes the widget of each control kind (form_widgets.h).

#include "form_widgets.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QStyledItemDelegate>
#include <QTabBar>
#include <QTreeView>
#include <QWheelEvent>
#include <algorithm>
#include <numeric>
#include <vector>

#include "row_model.h"
#include "text.h"
#include "widgets.h"

namespace heron::desk {
namespace {

using Kind = platform::ControlKind;
using platform::ControlTemplate;

/// As many as most labels of options have.
constexpr int kUsualLetters = 20;

/// A drop-down whose list is as wide as its rows, and that a wheel rolling by doesn't change.
class DropDown final : public QComboBox {
 public:
  explicit DropDown(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kUsualLetters);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxVisibleItems(20);
  }

  void showPopup() override {
    const int scroll_bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + scroll_bar + 8);
    QComboBox::showPopup();
  }

 protected:
  void wheelEvent(QWheelEvent* event) override { hasFocus() ? QComboBox::wheelEvent(event) : event->ignore(); }
};

/// Rows of a list box: a tab parts a row into halves of equal width.
class HalvedRows final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QStringList halves = index.data().toString().split(u'\t');
    if (halves.size() != 2) return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem half = option;
    initStyleOption(&half, index);
    const QStyle* const style = option.widget->style();
    half.state &= ~QStyle::State_HasFocus;
    half.rect.setWidth(option.rect.width() / 2);
    for (const QString& text : halves) {
      half.text = text;
      style->drawControl(QStyle::CE_ItemViewItem, &half, painter, option.widget);
      half.rect.setLeft(half.rect.right() + 1);
      half.rect.setRight(option.rect.right());
    }
    if ((option.state & QStyle::State_HasFocus) == 0) return;
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    const QStringList halves = index.data().toString().split(u'\t');
    if (halves.size() != 2) return size;
    const int margin = 2 * (option.widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
    for (const QString& half : halves) {
      size.setWidth(std::max(size.width(), 2 * (option.fontMetrics.horizontalAdvance(half) + margin)));
    }
    return size;
  }
};

RowModel* MakeRows(const FormParts& parts, QWidget* owner) {
  return new RowModel(owner, [&resources = parts.resources, owner](uint32_t number) -> QVariant {
    const QPixmap picture = resources.Picture(number, owner->devicePixelRatioF());
    return picture.isNull() ? QVariant() : QVariant(picture);
  });
}

QLabel* MakeLabel(QWidget* parent, const ControlTemplate& plan) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setText(ToQt(plan.label));
  return label;
}

QRadioButton* MakeRadio(FormParts& parts, const ControlTemplate& plan) {
  auto* const radio = new QRadioButton(ToQt(plan.label), parts.parent);
  QButtonGroup*& set = parts.sets[plan.set];
  if (set == nullptr) set = new QButtonGroup(parts.parent);
  set->addButton(radio);
  return radio;
}

QPushButton* MakeButton(QWidget* parent, const ControlTemplate& plan) {
  if (plan.kind == Kind::kLibrary) return new MenuButton(ToQt(plan.label), parent);
  return new QPushButton(ToQt(plan.label), parent);
}

QComboBox* MakeDropDown(const FormParts& parts, const ControlTemplate& plan, FormControl* control) {
  auto* const list = new DropDown(parts.parent);
  control->rows = MakeRows(parts, list);
  list->setModel(control->rows);
  if (plan.kind != Kind::kCombo) return list;
  list->setEditable(true);
  list->setCompleter(nullptr);
  control->field = list->lineEdit();
  return list;
}

QListView* MakeListBox(const FormParts& parts, FormControl* control) {
  auto* const box = new RowsOf<QListView>(parts.parent);
  control->rows = MakeRows(parts, box);
  box->setModel(control->rows);
  box->setEditTriggers(QAbstractItemView::NoEditTriggers);
  box->setItemDelegate(new HalvedRows(box));
  return box;
}

/// Gives columns their shares of the view when it is resized, never less than the template asks for. The last one fills
/// the rest.
class ColumnShares final : public QObject {
 public:
  ColumnShares(QTreeView* view, const std::vector<platform::ColumnHeading>& columns) : QObject(view), view_(view) {
    // Shares are meant for letters of 13 pixels; they grow with the font.
    for (const platform::ColumnHeading& column : columns) {
      const int wanted = column.width * view->fontMetrics().height() / 16;
      least_.push_back(std::max(view->header()->sectionSizeHint(static_cast<int>(least_.size())), wanted));
    }
    sum_ = std::accumulate(least_.begin(), least_.end(), 0);
    view->header()->setStretchLastSection(false);
    Share(0);
    view->viewport()->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) Share(view_->viewport()->width());
    return QObject::eventFilter(watched, event);
  }

 private:
  void Share(int width) {
    int left = std::max(width, sum_);
    for (size_t column = 0; column < least_.size(); ++column) {
      const bool last = column + 1 == least_.size();
      const int wide = last ? left : least_[column] * std::max(width, sum_) / sum_;
      view_->setColumnWidth(static_cast<int>(column), wide);
      left -= wide;
    }
  }

  QTreeView* view_;
  std::vector<int> least_;
  int sum_ = 0;
};

QTreeView* MakeListView(const FormParts& parts, const ControlTemplate& plan, FormControl* control) {
  auto* const view = new RowsOf<QTreeView>(parts.parent);
  control->rows = MakeRows(parts, view);
  QStringList headings;
  for (const platform::ColumnHeading& column : plan.columns) {
    headings += column.number != 0 ? parts.resources.Text(column.number) : ToQt(column.text);
  }
  control->rows->SetHeadings(headings);
  view->setModel(control->rows);
  view->setRootIsDecorated(false);
  view->setUniformRowHeights(true);
  view->setAllColumnsShowFocus(true);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setTabKeyNavigation(false);
  if (plan.several) view->setSelectionMode(QAbstractItemView::ExtendedSelection);
  view->header()->setSectionsClickable(true);
  view->header()->setSectionsMovable(false);
  if (!plan.columns.empty()) new ColumnShares(view, plan.columns);
  return view;
}

QWidget* MakeField(const FormParts& parts, const ControlTemplate& plan, FormControl* control) {
  const bool has_spin = std::ranges::any_of(parts.plan.controls, [&](const ControlTemplate& other) {
    return other.kind == Kind::kSpin && other.buddy == plan.id;
  });
  QWidget* widget = nullptr;
  if (has_spin) {
    widget = control->pair = new SpinField(parts.parent);
    control->field = control->pair->field();
  } else {
    widget = control->field = new QLineEdit(parts.parent);
  }
  control->field->setReadOnly(plan.read_only);
  if (plan.kind == Kind::kPassword) control->field->setEchoMode(QLineEdit::Password);
  return widget;
}

Memo* MakeMemo(QWidget* parent, const ControlTemplate& plan) {
  auto* const memo = new Memo(parent);
  memo->limit = plan.limit;
  memo->setReadOnly(plan.read_only);
  return memo;
}

template <typename Bar>
Bar* MakeBar(QWidget* parent, const ControlTemplate& plan) {
  auto* const bar = new Bar(plan.vertical ? Qt::Vertical : Qt::Horizontal, parent);
  bar->setFocusPolicy(Qt::StrongFocus);
  return bar;
}

QTabBar* MakeTabs(QWidget* parent) {
  auto* const tabs = new QTabBar(parent);
  tabs->setExpanding(false);
  tabs->setDrawBase(false);
  tabs->setUsesScrollButtons(true);
  return tabs;
}

QWidget* MakeWidget(FormParts& parts, const ControlTemplate& plan, FormControl* control) {
  switch (plan.kind) {
    case Kind::kLabel:
      return MakeLabel(parts.parent, plan);
    case Kind::kRadio:
      return MakeRadio(parts, plan);
    case Kind::kCheck:
      return new QCheckBox(ToQt(plan.label), parts.parent);
    case Kind::kButton:
    case Kind::kLibrary:
    case Kind::kDefaults:
      return MakeButton(parts.parent, plan);
    case Kind::kList:
    case Kind::kCombo:
      return MakeDropDown(parts, plan, control);
    case Kind::kListBox:
      return MakeListBox(parts, control);
    case Kind::kListView:
      return MakeListView(parts, plan, control);
    case Kind::kText:
    case Kind::kPassword:
    case Kind::kNumber:
      return MakeField(parts, plan, control);
    case Kind::kMemo:
      return MakeMemo(parts.parent, plan);
    case Kind::kSlider:
      return MakeBar<QSlider>(parts.parent, plan);
    case Kind::kScrollBar:
      return MakeBar<QScrollBar>(parts.parent, plan);
    case Kind::kPlace:
      return new Place(parts.parent, QSize(plan.width, plan.height), GrowsHigh(plan));
    case Kind::kTabs:
      return MakeTabs(parts.parent);
    case Kind::kGroup:
      return new GroupBox(ToQt(plan.label), parts.parent);
    case Kind::kSpin:
    case Kind::kFirstPaint:
      break;
  }
  return nullptr;
}

}  // namespace

FormControl MakeControl(FormParts& parts, const ControlTemplate& plan) {
  FormControl control{.plan = &plan};
  control.widget = MakeWidget(parts, plan, &control);
  if (plan.kind == Kind::kRadio) control.set = parts.sets[plan.set];
  if (control.widget != nullptr && !plan.name.empty()) control.widget->setAccessibleName(ToQt(plan.name));
  return control;
}

bool GrowsWide(const ControlTemplate& plan) {
  const Kind kind = plan.kind;
  return kind == Kind::kList || kind == Kind::kCombo || kind == Kind::kText || kind == Kind::kPassword ||
         ((kind == Kind::kSlider || kind == Kind::kScrollBar) && !plan.vertical) || GrowsHigh(plan);
}

bool GrowsHigh(const ControlTemplate& plan) {
  constexpr int kSmallestPreview = 200;  // smaller places are symbols
  return plan.kind == Kind::kListBox || plan.kind == Kind::kListView || plan.kind == Kind::kMemo ||
         (plan.kind == Kind::kPlace && plan.width >= kSmallestPreview);
}

}  // namespace heron::desk

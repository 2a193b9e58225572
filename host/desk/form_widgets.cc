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
#include <QTabBar>
#include <QTreeView>
#include <QWheelEvent>
#include <algorithm>

#include "row_model.h"
#include "text.h"
#include "widgets.h"

namespace heron::desk {
namespace {

using Kind = platform::ControlKind;
using platform::ControlTemplate;

/// A drop-down whose list is as wide as its rows, and that a wheel rolling by doesn't change.
class DropDown final : public QComboBox {
 public:
  explicit DropDown(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
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

RowModel* MakeRows(const FormParts& parts, QWidget* owner) {
  return new RowModel(owner, [&resources = parts.resources, owner](uint32_t number) -> QVariant {
    const QPixmap picture = resources.Picture(number, owner->devicePixelRatioF());
    return picture.isNull() ? QVariant() : QVariant(picture);
  });
}

QLabel* MakeLabel(QWidget* parent, const ControlTemplate& spec) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setText(ToQt(spec.label));
  return label;
}

QRadioButton* MakeRadio(FormParts& parts, const ControlTemplate& spec) {
  auto* const radio = new QRadioButton(ToQt(spec.label), parts.parent);
  QButtonGroup*& set = parts.sets[spec.set];
  if (set == nullptr) set = new QButtonGroup(parts.parent);
  set->addButton(radio);
  return radio;
}

QPushButton* MakeButton(QWidget* parent, const ControlTemplate& spec) {
  if (spec.kind == Kind::kLibrary) return new MenuButton(ToQt(spec.label), parent);
  return new QPushButton(ToQt(spec.label), parent);
}

QComboBox* MakeDropDown(const FormParts& parts, const ControlTemplate& spec, FormControl* control) {
  auto* const list = new DropDown(parts.parent);
  control->rows = MakeRows(parts, list);
  list->setModel(control->rows);
  if (spec.kind != Kind::kCombo) return list;
  list->setEditable(true);
  list->setCompleter(nullptr);
  control->field = list->lineEdit();
  if (spec.limit > 0) control->field->setMaxLength(spec.limit);
  return list;
}

QListView* MakeListBox(const FormParts& parts, FormControl* control) {
  auto* const box = new QListView(parts.parent);
  control->rows = MakeRows(parts, box);
  box->setModel(control->rows);
  box->setEditTriggers(QAbstractItemView::NoEditTriggers);
  box->setUniformItemSizes(true);
  return box;
}

/// Shares of the columns are meant for letters of 13 pixels; they grow with the font, and the last fills the view.
QTreeView* MakeListView(const FormParts& parts, const ControlTemplate& spec, FormControl* control) {
  auto* const view = new QTreeView(parts.parent);
  control->rows = MakeRows(parts, view);
  QStringList headings;
  for (const platform::ColumnHeading& column : spec.columns) {
    headings += column.number != 0 ? parts.resources.Text(column.number) : ToQt(column.text);
  }
  control->rows->SetHeadings(headings);
  view->setModel(control->rows);
  view->setRootIsDecorated(false);
  view->setUniformRowHeights(true);
  view->setAllColumnsShowFocus(true);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setTabKeyNavigation(false);
  if (spec.several) view->setSelectionMode(QAbstractItemView::ExtendedSelection);
  view->header()->setSectionsClickable(true);
  view->header()->setSectionsMovable(false);
  for (int column = 0; column + 1 < static_cast<int>(spec.columns.size()); ++column) {
    const int share = spec.columns[static_cast<size_t>(column)].width;
    const int needed = view->header()->sectionSizeHint(column);
    view->setColumnWidth(column, std::max(needed, share * view->fontMetrics().height() / 16));
  }
  return view;
}

QWidget* MakeField(const FormParts& parts, const ControlTemplate& spec, FormControl* control) {
  const bool has_spin = std::ranges::any_of(parts.spec.controls, [&](const ControlTemplate& other) {
    return other.kind == Kind::kSpin && other.buddy == spec.id;
  });
  QWidget* widget = nullptr;
  if (has_spin) {
    widget = control->pair = new SpinField(parts.parent);
    control->field = control->pair->field();
  } else {
    widget = control->field = new QLineEdit(parts.parent);
  }
  if (spec.limit > 0) control->field->setMaxLength(spec.limit);
  control->field->setReadOnly(spec.read_only);
  if (spec.kind == Kind::kPassword) control->field->setEchoMode(QLineEdit::Password);
  return widget;
}

Memo* MakeMemo(QWidget* parent, const ControlTemplate& spec) {
  auto* const memo = new Memo(parent);
  memo->limit = spec.limit;
  memo->setReadOnly(spec.read_only);
  return memo;
}

template <typename Bar>
Bar* MakeBar(QWidget* parent, const ControlTemplate& spec) {
  auto* const bar = new Bar(spec.vertical ? Qt::Vertical : Qt::Horizontal, parent);
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

QWidget* MakeWidget(FormParts& parts, const ControlTemplate& spec, FormControl* control) {
  switch (spec.kind) {
    case Kind::kLabel:
      return MakeLabel(parts.parent, spec);
    case Kind::kRadio:
      return MakeRadio(parts, spec);
    case Kind::kCheck:
      return new QCheckBox(ToQt(spec.label), parts.parent);
    case Kind::kButton:
    case Kind::kLibrary:
    case Kind::kDefaults:
      return MakeButton(parts.parent, spec);
    case Kind::kList:
    case Kind::kCombo:
      return MakeDropDown(parts, spec, control);
    case Kind::kListBox:
      return MakeListBox(parts, control);
    case Kind::kListView:
      return MakeListView(parts, spec, control);
    case Kind::kText:
    case Kind::kPassword:
    case Kind::kNumber:
      return MakeField(parts, spec, control);
    case Kind::kMemo:
      return MakeMemo(parts.parent, spec);
    case Kind::kSlider:
      return MakeBar<QSlider>(parts.parent, spec);
    case Kind::kScrollBar:
      return MakeBar<QScrollBar>(parts.parent, spec);
    case Kind::kPlace:
      return new Place(parts.parent, QSize(spec.width, spec.height));
    case Kind::kTabs:
      return MakeTabs(parts.parent);
    case Kind::kGroup:
      return new GroupBox(ToQt(spec.label), parts.parent);
    case Kind::kSpin:
    case Kind::kFirstPaint:
      break;
  }
  return nullptr;
}

}  // namespace

FormControl MakeControl(FormParts& parts, const ControlTemplate& spec) {
  FormControl control{.spec = &spec};
  control.widget = MakeWidget(parts, spec, &control);
  if (spec.kind == Kind::kRadio) control.set = parts.sets[spec.set];
  if (control.widget != nullptr && !spec.name.empty()) control.widget->setAccessibleName(ToQt(spec.name));
  return control;
}

bool GrowsWide(Kind kind) {
  return kind == Kind::kList || kind == Kind::kCombo || kind == Kind::kText || kind == Kind::kPassword ||
         kind == Kind::kSlider || kind == Kind::kScrollBar || GrowsHigh(kind);
}

bool GrowsHigh(Kind kind) { return kind == Kind::kListBox || kind == Kind::kListView || kind == Kind::kMemo; }

}  // namespace heron::desk

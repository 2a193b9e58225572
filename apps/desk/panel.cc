// What the user does, on its way to the logic; the logic's calls are in panel_controls.cc.
#include "panel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QTabBar>
#include <QTimer>
#include <QTreeView>
#include <QWhatsThis>
#include <algorithm>

#include "screen_canvas.h"
#include "text.h"
#include "widgets.h"

namespace heron::desk {

using Kind = platform::ControlKind;
using platform::ControlId;
using platform::DialogLogic;

Panel::Panel(QWidget* parent, Resources& resources, const platform::DialogTemplate& plan, DialogLogic& logic,
             PanelFrame& frame)
    : QWidget(parent), resources_(resources), plan_(plan), logic_(logic), frame_(frame) {
  controls_ = BuildForm(this, plan, resources);
  for (const FormControl& control : controls_) Connect(control);
  connect(qApp, &QApplication::focusChanged, this, &Panel::FocusMoved);
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
          [this] { AskHelp(window()->focusWidget()); });
  connect(new QShortcut(QKeySequence::WhatsThis, this), &QShortcut::activated, this,
          [] { QWhatsThis::enterWhatsThisMode(); });
}

Panel::~Panel() {
  disconnect(qApp, nullptr, this, nullptr);
  if (initialised_) logic_.Destroy();
}

void Panel::Initialise() {
  Ask([&](DialogLogic& logic) { logic.Initialise(this); });
  initialised_ = true;
}

void Panel::Settle() {
  // From the inside out: a group precedes the groups in it.
  for (auto control = controls_.rbegin(); control != controls_.rend(); ++control) {
    if (control->plan->kind == Kind::kGroup) control->widget->layout()->activate();
  }
  layout()->activate();
}

std::vector<QWidget*> Panel::TabStops() const {
  std::vector<QWidget*> stops;
  for (const FormControl& control : controls_) {
    if (control.widget == nullptr || control.plan->kind == Kind::kSpin) continue;
    if ((control.widget->focusPolicy() & Qt::TabFocus) != 0 || control.set != nullptr) stops.push_back(control.widget);
  }
  return stops;
}

template <typename Call>
void Panel::Tell(Call call) {
  if (initialised_ && quiet_ == 0) Ask(call);
}

// -- notifications

void Panel::Connect(const FormControl& control) {
  const ControlId id = control.plan->id;
  if (control.widget == nullptr) return;
  const auto moved = [this, id] { Tell([id](DialogLogic& logic) { logic.PositionChanged(id); }); };
  if (control.plan->kind == Kind::kSpin) {
    if (control.pair != nullptr) control.pair->stepped = moved;
    return;
  }
  control.widget->installEventFilter(this);
  if (auto* const button = qobject_cast<QAbstractButton*>(control.widget)) {
    connect(button, &QAbstractButton::clicked, this,
            [this, id] { Tell([id](DialogLogic& logic) { logic.Clicked(id); }); });
  } else if (auto* const bar = qobject_cast<QAbstractSlider*>(control.widget)) {
    connect(bar, &QAbstractSlider::valueChanged, this, moved);
  } else if (auto* const place = dynamic_cast<Place*>(control.widget)) {
    place->draw = [this, id](QPainter& painter, const QRect& area) {
      if (!initialised_) return;
      ScreenCanvas canvas(painter, area.width(), area.height(), &resources_.Pictures(), IsDark(palette()));
      Ask([&](DialogLogic& logic) { logic.Draw(id, canvas, {0, 0, area.width(), area.height()}); });
    };
    place->pointed = [this, id](const platform::PointerEvent& event) {
      Tell([&](DialogLogic& logic) { logic.PointerMoved(id, event); });
    };
  }
  ConnectRows(control);
  ConnectText(control);
}

void Panel::ConnectRows(const FormControl& control) {
  const ControlId id = control.plan->id;
  const auto selected = [this, id] { Tell([id](DialogLogic& logic) { logic.RowSelected(id); }); };
  if (auto* const list = qobject_cast<QComboBox*>(control.widget)) {
    connect(list, &QComboBox::activated, this, selected);
  } else if (auto* const tabs = qobject_cast<QTabBar*>(control.widget)) {
    connect(tabs, &QTabBar::currentChanged, this, selected);
  } else if (auto* const view = qobject_cast<QAbstractItemView*>(control.widget)) {
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, selected);
    connect(view, &QAbstractItemView::doubleClicked, this,
            [this, id] { Tell([id](DialogLogic& logic) { logic.RowActivated(id); }); });
    if (auto* const mouse = dynamic_cast<RowMouse*>(control.widget)) ConnectMouse(*mouse, *control.plan);
    if (auto* const tree = qobject_cast<QTreeView*>(view)) {
      connect(tree->header(), &QHeaderView::sectionClicked, this,
              [this, id](int column) { Tell([=](DialogLogic& logic) { logic.HeadingClicked(id, column); }); });
    }
  }
}

void Panel::ConnectMouse(RowMouse& mouse, const platform::ControlTemplate& plan) {
  mouse.clicked = [this, id = plan.id](int row) { Tell([=](DialogLogic& logic) { logic.RowClicked(id, row); }); };
  if (!plan.moves) return;
  mouse.moved = [this, id = plan.id](int from, int to) {
    Tell([=](DialogLogic& logic) { logic.RowMoved(id, from, to); });
  };
}

void Panel::ConnectText(const FormControl& control) {
  const ControlId id = control.plan->id;
  const auto changed = [this, id] { Tell([id](DialogLogic& logic) { logic.TextChanged(id); }); };
  const auto takes = [this, id](char16_t character, const QString& text, qsizetype first, qsizetype last) {
    return TakesKey(id, character, text, first, last);
  };
  if (control.field != nullptr) {
    auto* const filter = filters_[id] = new KeyFilter(control.field, takes);
    filter->limit = control.plan->limit;
    filter->full = [this] { Beep(); };
    control.field->setValidator(filter);
    connect(control.field, &QLineEdit::textEdited, this, changed);
  } else if (auto* const memo = dynamic_cast<Memo*>(control.widget)) {
    memo->takes = takes;
    memo->full = [this] { Beep(); };
    connect(memo, &QPlainTextEdit::textChanged, this, changed);
  }
}

bool Panel::TakesKey(ControlId id, char16_t character, const QString& text, qsizetype first, qsizetype last) {
  if (!initialised_ || quiet_ > 0) return true;
  const std::u16string now = FromQt(text);
  const platform::TypedKey key{.character = character,
                               .text = now,
                               .selection_start = static_cast<size_t>(first),
                               .selection_end = static_cast<size_t>(last)};
  return Ask([&](DialogLogic& logic) { return logic.TakesKey(id, key); });
}

namespace {

using platform::ListKey;

constexpr std::pair<int, ListKey> kListKeys[] = {
    {Qt::Key_Up, ListKey::kUp},         {Qt::Key_Down, ListKey::kDown},     {Qt::Key_PageUp, ListKey::kPageUp},
    {Qt::Key_Home, ListKey::kHome},     {Qt::Key_End, ListKey::kEnd},       {Qt::Key_PageDown, ListKey::kPageDown},
    {Qt::Key_Insert, ListKey::kInsert}, {Qt::Key_Delete, ListKey::kDelete}, {Qt::Key_Space, ListKey::kSpace},
};

std::optional<ListKey> ListKeyOf(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Copy)) return ListKey::kCopy;
  if (event.matches(QKeySequence::Paste)) return ListKey::kPaste;
  if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return std::nullopt;
  const auto* const row = std::ranges::find(kListKeys, event.key(), &std::pair<int, ListKey>::first);
  return row == std::end(kListKeys) ? std::nullopt : std::optional(row->second);
}

}  // namespace

bool Panel::TakesListKey(const QWidget* list, const QKeyEvent& event) {
  const auto key = ListKeyOf(event);
  if (!key || !initialised_ || quiet_ > 0) return false;
  const ControlId id = NumberOf(list);
  return Ask([&](DialogLogic& logic) { return logic.TakesListKey(id, *key); });
}

/// True if the list isn't to see the key. Enter in a list view would press the dialog's default button.
bool Panel::PressedInList(const QObject* watched, const QKeyEvent& event) {
  const auto* const view = qobject_cast<const QAbstractItemView*>(watched);
  if (view == nullptr) return false;
  if (TakesListKey(view, event)) return true;
  const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  if (!enter || qobject_cast<const QTreeView*>(view) == nullptr || !view->currentIndex().isValid()) return false;
  const ControlId id = NumberOf(view);
  Tell([id](DialogLogic& logic) { logic.RowActivated(id); });
  return true;
}

void Panel::Close() {
  const ControlId id = Has(platform::kCancelButton) ? platform::kCancelButton : platform::kOkButton;
  Tell([id](DialogLogic& logic) { logic.Clicked(id); });
}

// -- focus

ControlId Panel::NumberOf(const QWidget* widget) const {
  for (; widget != nullptr && widget != this; widget = widget->parentWidget()) {
    for (const FormControl& control : controls_) {
      if (control.widget == widget) return control.plan->id;
    }
  }
  return 0;
}

bool Panel::MayLeave(ControlId from, ControlId to) {
  if (!initialised_ || leaving_ || from == 0 || from == to) return true;
  leaving_ = true;
  const bool may = Ask([&](DialogLogic& logic) { return logic.LeavesFocus(from, to); });
  leaving_ = false;
  return may;
}

// Changes made by the logic itself aren't reported back to it.
void Panel::FocusMoved(QWidget* old, QWidget* now) {
  if (old == nullptr || calls_ > 0 || quiet_ > 0 || !isVisible()) return;
  const ControlId from = NumberOf(old);
  if (from == 0) return;
  ControlId to = NumberOf(now);  // the list of a drop-down belongs to it
  if (to == 0 && now != nullptr) to = frame_.NumberOf(now);
  if (!MayLeave(from, to)) HoldFocus(old);
}

/// Puts the focus back, and drops the press of the mouse that was about to follow it.
void Panel::HoldFocus(QWidget* widget) {
  const ControlId id = NumberOf(widget);
  if (Focused() != id) {
    leaving_ = true;
    widget->setFocus(Qt::OtherFocusReason);
    leaving_ = false;
  }
  if (swallows_press_) return;
  swallows_press_ = true;
  qApp->installEventFilter(this);
  QTimer::singleShot(0, this, [this] {
    qApp->removeEventFilter(this);
    swallows_press_ = false;
  });
}

bool Panel::eventFilter(QObject* watched, QEvent* event) {
  if (swallows_press_ && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)) {
    return true;
  }
  // The Alt key presses a button without waiting for the focus.
  if (event->type() == QEvent::Shortcut && qobject_cast<QAbstractButton*>(watched) != nullptr) {
    return !MayLeave(Focused(), NumberOf(qobject_cast<QWidget*>(watched)));
  }
  if (event->type() == QEvent::KeyPress && PressedInList(watched, *static_cast<QKeyEvent*>(event))) return true;
  return QWidget::eventFilter(watched, event);
}

// -- help

/// Asks the logic, which knows the topic. A label means the control that it names.
void Panel::AskHelp(const QWidget* widget) {
  ControlId id = NumberOf(widget);
  for (const FormControl& control : controls_) {
    if (control.widget == widget && control.plan->kind == Kind::kLabel && control.plan->buddy != 0) {
      id = control.plan->buddy;
    }
  }
  Tell([id](DialogLogic& logic) { logic.Help(id); });
}

/// A click that asks what something is comes here from whatever is under it, also from what is disabled.
bool Panel::event(QEvent* event) {
  if (event->type() != QEvent::WhatsThis && event->type() != QEvent::QueryWhatsThis) return QWidget::event(event);
  event->accept();
  if (event->type() == QEvent::QueryWhatsThis) return true;
  QWhatsThis::leaveWhatsThisMode();
  AskHelp(childAt(static_cast<QHelpEvent*>(event)->pos()));
  return true;
}

// -- first paint

void Panel::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  if (std::exchange(painted_, true)) return;
  // Behind this painting, so that a report appears over a visible page.
  QTimer::singleShot(0, this, &Panel::PaintFirst);
}

void Panel::PaintFirst() {
  for (const FormControl& control : controls_) {
    if (control.plan->kind != Kind::kFirstPaint) continue;
    QPixmap pixel(1, 1);
    QPainter painter(&pixel);
    ScreenCanvas canvas(painter, 1, 1);
    const ControlId id = control.plan->id;
    Tell([&](DialogLogic& logic) { logic.Draw(id, canvas, {0, 0, 1, 1}); });
  }
}

}  // namespace heron::desk

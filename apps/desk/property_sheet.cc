// The window of the sheet: tabs, buttons, Apply, closing (property_sheet.h).

#include "property_sheet.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTimer>

#include "questions.h"
#include "text.h"

namespace heron::desk {

using platform::DialogLogic;

namespace {

/// A page that scrolls where the screen is too small for it, and asks for its whole size elsewhere.
class PageView final : public QScrollArea {
 public:
  PageView(QWidget* parent, QWidget* page) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    page->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    setWidget(page);
  }
  QSize sizeHint() const override {
    const QSize least = widget()->minimumSizeHint();
    const QSize most = screen()->availableSize() - QSize(80, 200);
    return least.boundedTo(most);
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  // What the page needs changes with its texts.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
  }
};

}  // namespace

PropertySheet::PropertySheet(Resources& resources)
    : resources_(resources),
      tabs_(new QTabBar(this)),
      stack_(new QStackedWidget(this)),
      buttons_(new QDialogButtonBox(this)) {
  setObjectName(QStringLiteral("sheet"));
  // Tabs and pages of their own: a tab widget would show the next page before the one before could refuse to be left.
  stack_->setFrameStyle(QFrame::StyledPanel);
  tabs_->setExpanding(false);
  tabs_->setUsesScrollButtons(true);
  tabs_->setDrawBase(false);
  auto* const layout = new QVBoxLayout(this);
  auto* const folder = new QVBoxLayout();
  folder->setSpacing(0);
  folder->addWidget(tabs_);
  folder->addWidget(stack_, 1);
  layout->addLayout(folder, 1);
  layout->addWidget(buttons_);
  MakeButtons();
  MakeShortcuts();
  connect(tabs_, &QTabBar::currentChanged, this, &PropertySheet::ShowPage);
}

PropertySheet::~PropertySheet() {
  for (Page& page : pages_) {
    delete page.panel;
    page.panel = nullptr;
  }
}

void PropertySheet::MakeButtons() {
  buttons_->setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply |
                               QDialogButtonBox::Help);
  for (QAbstractButton* const button : buttons_->buttons()) button->setIcon({});
  buttons_->button(QDialogButtonBox::Ok)->setDefault(true);
  buttons_->button(QDialogButtonBox::Apply)->setEnabled(false);
  connect(buttons_, &QDialogButtonBox::accepted, this, &PropertySheet::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &PropertySheet::reject);
  connect(buttons_->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, [this] { Confirm(); });
  connect(buttons_, &QDialogButtonBox::helpRequested, this, [this] {
    Panel* const panel = current_ < 0 ? nullptr : pages_[static_cast<size_t>(current_)].panel;
    if (panel != nullptr) panel->Ask([](DialogLogic& logic) { logic.Help(0); });
  });
}

void PropertySheet::MakeShortcuts() {
  const auto add = [this](const QKeySequence& keys, int step) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, step] { Turn(step); });
  };
  add(QKeySequence(Qt::CTRL | Qt::Key_Tab), 1);
  add(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), -1);
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), -1);
  add(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
}

bool PropertySheet::AddPage(const platform::PropertyPage& page) {
  const platform::DialogTemplate* const plan = resources_.Template(page.dialog);
  if (plan == nullptr || page.logic == nullptr) return false;
  pages_.push_back({.page = page, .plan = plan});
  pages_.back().place = new QWidget(stack_);
  stack_->addWidget(pages_.back().place);
  const QSignalBlocker blocker(tabs_);
  tabs_->addTab(ToQt(plan->title));
  return true;
}

// -- life of the pages

void PropertySheet::MakePanel(Page& page) {
  page.panel = new Panel(page.place, resources_, *page.plan, *page.page.logic, *this);
  auto* const layout = new QVBoxLayout(page.place);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new PageView(page.place, page.panel));
  // The Tab key goes from the page to the buttons, which were there before it.
  const std::vector<QWidget*> stops = page.panel->TabStops();
  QWidget* before = stops.empty() ? tabs_ : stops.back();
  for (const auto button :
       {QDialogButtonBox::Ok, QDialogButtonBox::Cancel, QDialogButtonBox::Apply, QDialogButtonBox::Help}) {
    setTabOrder(before, buttons_->button(button));
    before = buttons_->button(button);
  }
  page.panel->installEventFilter(this);
  page.panel->Initialise();
}

void PropertySheet::Open() {
  ShowPage(0);
  QWidget* first = nullptr;
  for (QWidget* const stop : pages_[0].panel->TabStops()) {
    if (first == nullptr && stop->isEnabledTo(this)) first = stop;
  }
  if (focusWidget() == nullptr && first != nullptr) first->setFocus(Qt::OtherFocusReason);
  show();
  activateWindow();
}

void PropertySheet::ShowPage(int page) {
  const auto show_tab = [this](int index) {
    const QSignalBlocker blocker(tabs_);
    tabs_->setCurrentIndex(index);
  };
  if (page < 0 || page >= pageCount() || page == current_) return;
  if (!LeaveCurrent()) return show_tab(current_);
  Page& shown = pages_[static_cast<size_t>(page)];
  const bool by_tabs = current_ >= 0 && tabs_->hasFocus();
  if (shown.panel == nullptr) MakePanel(shown);
  show_tab(page);
  current_ = page;
  shown.panel->Ask([](DialogLogic& logic) { logic.Activate(); });
  shown.panel->Settle();
  buttons_->button(QDialogButtonBox::Help)->setEnabled(shown.page.has_help);
  stack_->setCurrentIndex(page);
  if (by_tabs) tabs_->setFocus();
}

void PropertySheet::Turn(int step) {
  ShowPage((current_ + step + pageCount()) % pageCount());
}

bool PropertySheet::LeaveCurrent() {
  if (current_ < 0) return true;
  return pages_[static_cast<size_t>(current_)].panel->Ask([](DialogLogic& logic) { return logic.Deactivate(); });
}

/// Has every page that was shown confirm; the first that refuses comes to the front.
bool PropertySheet::Confirm() {
  if (!LeaveCurrent()) return false;
  for (int page = 0; page < pageCount(); ++page) {
    Panel* const shown = panel(page);
    if (shown == nullptr || shown->Ask([](DialogLogic& logic) { return logic.Apply(); })) continue;
    ShowPage(page);
    return false;
  }
  buttons_->button(QDialogButtonBox::Apply)->setEnabled(false);
  return true;
}

void PropertySheet::MarkChanged() {
  touched_ = true;
  buttons_->button(QDialogButtonBox::Apply)->setEnabled(true);
}

platform::ControlId PropertySheet::NumberOf(const QWidget* widget) const {
  if (widget == buttons_->button(QDialogButtonBox::Ok)) return platform::kOkButton;
  return widget == buttons_->button(QDialogButtonBox::Cancel) ? platform::kCancelButton : platform::ControlId{0};
}

void PropertySheet::accept() {
  if (closing_ || !Confirm()) return;
  if (stores && !stores()) return MarkChanged();
  closing_ = true;
  QDialog::accept();
}

// What was confirmed before stays confirmed, so the result isn't touched.
void PropertySheet::reject() {
  if (std::exchange(closing_, true)) return;
  for (const Page& page : pages_) {
    if (page.panel != nullptr) page.panel->Ask([](DialogLogic& logic) { logic.Reset(); });
  }
  QDialog::reject();
}

void PropertySheet::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}

bool PropertySheet::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint && painted && isVisible()) {
    QTimer::singleShot(0, this, std::exchange(painted, nullptr));
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace heron::desk

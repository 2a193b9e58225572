// What the logic does with its controls.
#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QSlider>
#include <QTabBar>
#include <QTimer>
#include <QTreeView>
#include <QWhatsThis>
#include <algorithm>

#include "busy_window.h"
#include "modal_window.h"
#include "painting.h"
#include "panel.h"
#include "questions.h"
#include "row_model.h"
#include "text.h"
#include "widgets.h"

namespace heron::desk {

using Kind = platform::ControlKind;
using platform::ControlId;
using platform::ListRow;

/// While it lives, changes aren't reported to the logic, which makes them itself.
class Panel::Quiet {
 public:
  explicit Quiet(Panel* panel) : panel_(panel) { ++panel_->quiet_; }
  ~Quiet() { --panel_->quiet_; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  Panel* panel_;
};

const FormControl* Panel::Find(ControlId id) const {
  const auto found =
      std::ranges::find_if(controls_, [&](const FormControl& control) { return id != 0 && control.plan->id == id; });
  return found == controls_.end() ? nullptr : &*found;
}

std::vector<ControlId> Panel::Controls() const {
  std::vector<ControlId> ids;
  for (const FormControl& control : controls_) {
    if (control.plan->id != 0) ids.push_back(control.plan->id);
  }
  return ids;
}

// -- state

void Panel::Enable(ControlId id, bool enabled) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr) return;
  const Quiet quiet(this);
  if (control->plan->kind == Kind::kSpin) {
    control->pair->spin_enabled = enabled;
    control->pair->update();
  } else if (auto* const group = dynamic_cast<GroupBox*>(control->widget)) {
    group->EnableTitle(enabled);
  } else {
    control->widget->setEnabled(enabled);
  }
  // A label without a number of its own is the logic's only through the control that it names.
  for (const FormControl& label : controls_) {
    const bool names = label.plan->kind == Kind::kLabel && label.plan->id == 0 && label.plan->buddy == id;
    if (names && label.widget != nullptr) label.widget->setEnabled(enabled);
  }
}

bool Panel::IsEnabled(ControlId id) const {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr) return false;
  if (control->plan->kind == Kind::kSpin) return control->pair->spin_enabled;
  const auto* const group = dynamic_cast<const GroupBox*>(control->widget);
  return group != nullptr ? group->IsTitleEnabled() : control->widget->isEnabledTo(this);
}

void Panel::Show(ControlId id, bool visible) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr || control->plan->kind == Kind::kSpin) return;
  const Quiet quiet(this);
  control->widget->setVisible(visible);
  if (visible) NameByLabel(controls_, *control);
}

void Panel::Focus(ControlId id) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr) return;
  const Quiet quiet(this);
  control->widget->setFocus(Qt::OtherFocusReason);
}

ControlId Panel::Focused() const {
  const QWidget* const widget = window()->focusWidget();
  return widget != nullptr && isAncestorOf(widget) ? NumberOf(widget) : ControlId{0};
}

// -- texts

void Panel::SetText(ControlId id, std::u16string_view text) {
  const FormControl* const control = Find(id);
  if (control == nullptr) return;
  const Quiet quiet(this);
  const QString shown = ToQt(text);
  if (control->field != nullptr) {
    KeyFilter* const filter = filters_.at(id);
    filter->passes = true;
    control->field->setText(shown);
    filter->passes = false;
  } else if (auto* const label = qobject_cast<QLabel*>(control->widget)) {
    label->setText(shown);
  } else if (auto* const button = qobject_cast<QAbstractButton*>(control->widget)) {
    button->setText(shown);
  } else if (auto* const group = qobject_cast<QGroupBox*>(control->widget)) {
    group->setTitle(QString(shown).replace(u'&', QStringLiteral("&&")));
  } else if (auto* const memo = qobject_cast<QPlainTextEdit*>(control->widget)) {
    memo->setPlainText(shown);
  }
}

std::u16string Panel::Text(ControlId id) const {
  const FormControl* const control = Find(id);
  if (control == nullptr) return {};
  if (control->field != nullptr) return FromQt(control->field->text());
  if (const auto* const label = qobject_cast<const QLabel*>(control->widget)) return FromQt(label->text());
  if (const auto* const button = qobject_cast<const QAbstractButton*>(control->widget)) return FromQt(button->text());
  if (const auto* const group = qobject_cast<const QGroupBox*>(control->widget)) {
    return FromQt(group->title().replace(QStringLiteral("&&"), QStringLiteral("&")));
  }
  if (const auto* const memo = qobject_cast<const QPlainTextEdit*>(control->widget)) {
    return FromQt(memo->toPlainText());
  }
  const auto* const list = qobject_cast<const QComboBox*>(control->widget);
  return list == nullptr ? std::u16string() : FromQt(list->currentText());
}

void Panel::SetTextLimit(ControlId id, size_t characters) {
  const FormControl* const control = Find(id);
  if (control == nullptr) return;
  constexpr size_t kMost = 32767;
  const int limit = static_cast<int>(std::min(characters, kMost));
  if (control->field != nullptr) filters_.at(id)->limit = limit;
  if (auto* const memo = dynamic_cast<Memo*>(control->widget)) memo->limit = limit;
}

void Panel::SelectText(ControlId id, size_t first, size_t count) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->field == nullptr) return;
  const size_t length = static_cast<size_t>(control->field->text().size());
  const size_t start = std::min(first, length);
  control->field->setSelection(static_cast<int>(start), static_cast<int>(std::min(count, length - start)));
}

// -- checks and positions

void Panel::SetChecked(ControlId id, bool checked) {
  const FormControl* const control = Find(id);
  auto* const button = control == nullptr ? nullptr : qobject_cast<QAbstractButton*>(control->widget);
  if (button == nullptr || button->isChecked() == checked) return;
  const Quiet quiet(this);
  // Qt keeps one radio of a group checked unless the group is set to be non-exclusive.
  if (control->set != nullptr) control->set->setExclusive(checked);
  button->setChecked(checked);
  if (control->set != nullptr) control->set->setExclusive(true);
}

bool Panel::IsChecked(ControlId id) const {
  const FormControl* const control = Find(id);
  const auto* const button = control == nullptr ? nullptr : qobject_cast<const QAbstractButton*>(control->widget);
  return button != nullptr && button->isChecked();
}

void Panel::SetRange(ControlId id, int minimum, int maximum) {
  const FormControl* const control = Find(id);
  if (control == nullptr || maximum < minimum) return;
  const Quiet quiet(this);
  if (auto* const bar = qobject_cast<QAbstractSlider*>(control->widget)) return bar->setRange(minimum, maximum);
  if (control->plan->kind != Kind::kSpin) return;
  control->pair->minimum = minimum;
  control->pair->maximum = maximum;
  control->pair->update();
}

void Panel::SetPosition(ControlId id, int position) {
  const FormControl* const control = Find(id);
  if (control == nullptr) return;
  const Quiet quiet(this);
  if (auto* const bar = qobject_cast<QAbstractSlider*>(control->widget)) return bar->setValue(position);
  if (control->plan->kind != Kind::kSpin) return;
  control->pair->position = position;
  control->pair->update();
}

int Panel::Position(ControlId id) const {
  const FormControl* const control = Find(id);
  if (control == nullptr) return 0;
  if (const auto* const bar = qobject_cast<const QAbstractSlider*>(control->widget)) return bar->value();
  return control->plan->kind == Kind::kSpin ? control->pair->position : 0;
}

void Panel::SetSteps(ControlId id, const platform::BarSteps& steps) {
  const FormControl* const control = Find(id);
  auto* const bar = control == nullptr ? nullptr : qobject_cast<QAbstractSlider*>(control->widget);
  if (bar == nullptr) return;
  bar->setSingleStep(steps.line);
  bar->setPageStep(steps.page);
  auto* const slider = qobject_cast<QSlider*>(bar);
  if (slider == nullptr) return;
  slider->setTickInterval(steps.tick);
  slider->setTickPosition(steps.tick > 0 ? QSlider::TicksBelow : QSlider::NoTicks);
}

// -- rows

void Panel::SetRows(ControlId id, std::span<const ListRow> rows) {
  const FormControl* const control = Find(id);
  if (control == nullptr) return;
  const Quiet quiet(this);
  if (auto* const tabs = qobject_cast<QTabBar*>(control->widget)) {
    while (tabs->count() > 0) tabs->removeTab(0);
    for (const ListRow& row : rows) tabs->addTab(ToQt(row.text).replace(u'&', QStringLiteral("&&")));
    return;
  }
  if (control->rows == nullptr) return;
  control->rows->SetRows(rows);
  const auto pictured = std::ranges::find_if(rows, [](const ListRow& row) { return row.picture != 0; });
  if (auto* const list = qobject_cast<QComboBox*>(control->widget); list != nullptr && pictured != rows.end())
    list->setIconSize(resources_.Picture(pictured->picture, 1).size());
  SelectRow(id, platform::kNoRow);
}

void Panel::SelectRow(ControlId id, int row) {
  const FormControl* const control = Find(id);
  if (control == nullptr) return;
  const Quiet quiet(this);
  if (auto* const tabs = qobject_cast<QTabBar*>(control->widget)) return tabs->setCurrentIndex(row);
  if (auto* const list = qobject_cast<QComboBox*>(control->widget)) {
    const QString typed = list->isEditable() ? list->currentText() : QString();
    list->setCurrentIndex(row);
    if (row == platform::kNoRow && list->isEditable()) list->setEditText(typed);
    return;
  }
  auto* const view = qobject_cast<QAbstractItemView*>(control->widget);
  if (view == nullptr) return;
  const QModelIndex index = control->rows->index(row, 0);
  // Not the view's own way, which asks the keyboard: with Ctrl held it would select nothing.
  view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  if (!index.isValid()) view->clearSelection();
  if (index.isValid()) view->scrollTo(index);
}

int Panel::SelectedRow(ControlId id) const {
  const FormControl* const control = Find(id);
  if (control == nullptr) return platform::kNoRow;
  if (const auto* const tabs = qobject_cast<const QTabBar*>(control->widget)) return tabs->currentIndex();
  if (const auto* const list = qobject_cast<const QComboBox*>(control->widget)) return list->currentIndex();
  const auto* const view = qobject_cast<const QAbstractItemView*>(control->widget);
  if (view == nullptr || !view->selectionModel()->isRowSelected(view->currentIndex().row())) return platform::kNoRow;
  return view->currentIndex().row();
}

std::vector<int> Panel::SelectedRows(ControlId id) const {
  std::vector<int> rows;
  const FormControl* const control = Find(id);
  if (const auto* const view = control == nullptr ? nullptr : qobject_cast<QAbstractItemView*>(control->widget)) {
    for (const QModelIndex& index : view->selectionModel()->selectedRows()) rows.push_back(index.row());
    std::ranges::sort(rows);
  } else if (const int row = SelectedRow(id); row != platform::kNoRow) {
    rows.push_back(row);
  }
  return rows;
}

void Panel::SelectRows(ControlId id, std::span<const int> rows) {
  const FormControl* const control = Find(id);
  const auto* const view = control == nullptr ? nullptr : qobject_cast<QAbstractItemView*>(control->widget);
  if (view == nullptr) return;
  const Quiet quiet(this);
  view->selectionModel()->clearSelection();
  for (const int row : rows) {
    const QModelIndex index = control->rows->index(row, 0);
    view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
}

// -- pictures, questions

void Panel::Repaint(ControlId id) {
  const FormControl* const control = Find(id);
  if (control != nullptr && control->widget != nullptr) control->widget->update();
}

void Panel::RepaintArea(ControlId id, const platform::RECT& area) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr) return;
  control->widget->update(QRect(QPoint(area.left, area.top), QPoint(area.right - 1, area.bottom - 1)));
}

platform::RECT Panel::PlaceArea(ControlId id) const {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->plan->kind != Kind::kPlace) return {};
  if (!control->widget->isVisible()) return {0, 0, control->plan->width, control->plan->height};
  return {0, 0, control->widget->width(), control->widget->height()};
}

void Panel::SetCursor(ControlId id, uint32_t cursor) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr) return;
  const QPixmap picture =
      cursor == platform::kArrowCursor ? QPixmap() : resources_.Picture(cursor, devicePixelRatioF());
  if (picture.isNull()) return control->widget->unsetCursor();
  control->widget->setCursor(QCursor(picture));  // its hot spot is in its middle
}

void Panel::SetDescription(ControlId id, std::u16string_view text) {
  const FormControl* const control = Find(id);
  if (control == nullptr || control->widget == nullptr) return;
  control->widget->setAccessibleDescription(ToQt(text));
  control->widget->setToolTip(ToQt(text).toHtmlEscaped());
}

// The masks belong to pictures without transparency of their own; ours have it.
void Panel::SetPicture(ControlId id, uint32_t picture, uint32_t /*mask*/) {
  const FormControl* const control = Find(id);
  if (control == nullptr) return;
  const QPixmap pixels = picture == 0 ? QPixmap() : resources_.Picture(picture, devicePixelRatioF());
  if (auto* const button = qobject_cast<QAbstractButton*>(control->widget)) {
    button->setIcon(pixels);
  } else if (auto* const label = qobject_cast<QLabel*>(control->widget)) {
    label->setPixmap(pixels);
  } else if (auto* const place = dynamic_cast<Place*>(control->widget)) {
    place->SetPicture(pixels);
  }
}

std::optional<platform::PixelImage> Panel::Pixels(uint32_t number) const {
  const QImage picture = resources_.Picture(number, 1).toImage().convertToFormat(QImage::Format_ARGB32);
  if (picture.isNull()) return std::nullopt;
  platform::PixelImage image{.width = picture.width(), .height = picture.height(), .pixels = {}};
  for (int y = 0; y < picture.height(); ++y) {
    const auto* const line = reinterpret_cast<const uint32_t*>(picture.constScanLine(y));
    image.pixels.insert(image.pixels.end(), line, line + picture.width());
  }
  return image;
}

std::vector<platform::FontFamily> Panel::FontFamilies() const {
  std::vector<platform::FontFamily> families = InstalledFamilies();
  std::erase_if(families, [](const auto& family) { return !QFontDatabase::isSmoothlyScalable(ToQt(family.name)); });
  return families;
}

void Panel::SetTimer(uint32_t milliseconds) {
  if (timer_ == nullptr) {
    timer_ = new QTimer(this);
    connect(timer_, &QTimer::timeout, this, [this] {
      if (initialised_) Ask([](platform::DialogLogic& logic) { logic.TimerFired(); });
    });
  }
  milliseconds == 0 ? timer_->stop() : timer_->start(static_cast<int>(milliseconds));
}

int Panel::RunDialog(uint16_t dialog, platform::DialogLogic* logic) {
  const platform::DialogTemplate* const plan = resources_.Template(dialog);
  if (plan == nullptr || logic == nullptr) return -1;
  return ModalWindow(window(), resources_, *plan, *logic).Run();
}

void Panel::End(int result) {
  if (calls_ == 0) return frame_.End(result);
  result_ = result;
}

uint16_t Panel::PopupMenu(ControlId below, std::span<const platform::MenuItem> items) {
  const FormControl* const control = Find(below);
  return control == nullptr || control->widget == nullptr ? uint16_t{0} : RunMenu(control->widget, items, resources_);
}

std::optional<std::u16string> Panel::AskFileName(const platform::FileQuestion& question) {
  return RunFileQuestion(window(), question);
}

std::optional<std::u16string> Panel::AskFolder(std::u16string_view title, std::u16string_view folder) {
  return RunFolderQuestion(window(), title, folder);
}

std::u16string Panel::ClipboardText() const {
  QString text = QApplication::clipboard()->text();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  return FromQt(text.replace(u'\r', u'\n'));
}

bool Panel::RunBusy(const platform::BusyWork& busy) {
  return RunBusyWork(window(), busy);
}

/// Once for all that is refused at one go, as of a pasted text.
void Panel::Beep() {
  if (std::exchange(beeped_, true)) return;
  QApplication::beep();
  QTimer::singleShot(0, this, [this] { beeped_ = false; });
}

void Panel::ShowHelp(uint32_t topic, ControlId id) {
  const DialogHelp* const help = resources_.Help(plan_.number);
  const FormControl* const control = Find(id);
  if (help == nullptr || control == nullptr || control->widget == nullptr) return TellHelp(window(), help, topic);
  const HelpEntry* const entry = EntryOf(*help, plan_, id);
  QWidget* const widget = control->widget;
  const QString& text = entry == nullptr ? help->topic : entry->text;
  widget->setWhatsThis(Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
  QWhatsThis::showText(widget->mapToGlobal(widget->rect().bottomLeft()), widget->whatsThis(), widget);
}

}  // namespace heron::desk

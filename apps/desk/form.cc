// Lays out a dialog's widgets by its template (form.h).

#include "form.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <span>

#include "form_widgets.h"
#include "text.h"
#include "widgets.h"

namespace heron::desk {
namespace {

using Kind = platform::ControlKind;
using platform::Area;
using platform::ControlTemplate;
using platform::DialogTemplate;
using platform::SizeClass;

/// Whether a line holds nothing but labels with texts, of which none names another.
bool AreHeadings(std::span<const FormControl> line) {
  const auto is_heading = [&](const FormControl& control) {
    const ControlTemplate& plan = *control.plan;
    const bool names = plan.buddy != 0 && std::ranges::any_of(line, [&](const FormControl& other) {
                         return other.plan->id == plan.buddy;
                       });
    return plan.kind == Kind::kLabel && !plan.label.empty() && !names;
  };
  return line.size() > 1 && std::ranges::all_of(line, is_heading);
}

/// A scroll bar at the edge of a place, laid out together with it.
bool StandsAtPlace(const ControlTemplate& plan) {
  return plan.kind == Kind::kScrollBar && plan.buddy != 0;
}

/// Lays controls out line by line; a group's lines go into its own grid.
class Layouter {
 public:
  Layouter(QWidget* parent, const DialogTemplate& plan, std::vector<FormControl>& controls)
      : parent_(parent), plan_(plan), controls_(controls), grids_(controls.size()) {}

  void Run();

 private:
  struct Grid {
    QGridLayout* layout = nullptr;
    int row = 0;
  };

  void Place(size_t first, size_t end);
  Grid& GridFor(const ControlTemplate& control);
  QVBoxLayout* ColumnFor(const ControlTemplate& control);
  void PlaceButton(const FormControl& control);
  void PlaceGroup(const FormControl& control, Grid& grid);
  void PlaceWithBars(const FormControl& place, Grid& grid);
  QBoxLayout* LineOf(size_t first, size_t end);
  void AlignLabels();
  void Finish();

  QWidget* parent_;
  const DialogTemplate& plan_;
  std::vector<FormControl>& controls_;
  std::vector<Grid> grids_;  ///< of groups, by their index
  std::vector<QVBoxLayout*> columns_;
  std::vector<Grid> loose_;  ///< of the controls of a column outside of groups
  QVBoxLayout* pane_ = nullptr;
  Grid pane_grid_;
  QDialogButtonBox* buttons_ = nullptr;
};

/// Whether the first control of a line is in the left part, with the rest to its right.
bool LeadsLine(const ControlTemplate& plan) {
  return plan.kind == Kind::kLabel || plan.kind == Kind::kCheck || (plan.kind == Kind::kRadio && plan.buddy != 0);
}

void Layouter::Run() {
  for (size_t first = 0; first < controls_.size();) {
    size_t end = first + 1;
    while (end < controls_.size() && controls_[end].plan->beside) ++end;
    Place(first, end);
    first = end;
  }
  AlignLabels();
  Finish();
}

QVBoxLayout* Layouter::ColumnFor(const ControlTemplate& control) {
  const auto column = static_cast<size_t>(control.column);
  while (columns_.size() <= column) {
    columns_.push_back(new QVBoxLayout());
    loose_.emplace_back();
  }
  return columns_[column];
}

Layouter::Grid& Layouter::GridFor(const ControlTemplate& control) {
  if (control.group >= 0) return grids_[static_cast<size_t>(control.group)];
  Grid* grid = &pane_grid_;
  QVBoxLayout* column = nullptr;
  if (control.area == Area::kPane) {
    if (pane_ == nullptr) pane_ = new QVBoxLayout();
    column = pane_;
  } else {
    column = ColumnFor(control);
    grid = &loose_[static_cast<size_t>(control.column)];
  }
  if (grid->layout == nullptr) {
    grid->layout = new QGridLayout();
    column->addLayout(grid->layout);
  }
  return *grid;
}

void Layouter::PlaceGroup(const FormControl& control, Grid& grid) {
  auto* const layout = new QGridLayout(control.widget);
  layout->setColumnStretch(1, 1);
  grids_[static_cast<size_t>(&control - controls_.data())].layout = layout;
  if (control.plan->group >= 0) {
    grid.layout->addWidget(control.widget, grid.row++, 0, 1, 2);
    return;
  }
  ColumnFor(*control.plan)->addWidget(control.widget);
}

/// A place in the middle of its line, with the scroll bars that belong to it along its edges.
void Layouter::PlaceWithBars(const FormControl& place, Grid& grid) {
  auto* const frame = new QGridLayout();
  frame->setSpacing(1);
  frame->addWidget(place.widget, 0, 0);
  for (const FormControl& control : controls_) {
    if (!StandsAtPlace(*control.plan) || control.plan->buddy != place.plan->id) continue;
    const bool beside = control.plan->vertical;
    const auto along = QSizePolicy::Ignored;  // as long as the place
    control.widget->setSizePolicy(beside ? QSizePolicy::Fixed : along, beside ? along : QSizePolicy::Fixed);
    frame->addWidget(control.widget, beside ? 0 : 1, beside ? 1 : 0);
  }
  const auto* const widget = dynamic_cast<const desk::Place*>(place.widget);
  const bool grows = widget != nullptr && widget->Grows();
  if (grows) grid.layout->setRowStretch(grid.row, static_cast<int>(place.plan->height));
  grid.layout->addLayout(frame, grid.row++, 0, 1, 2, grows ? Qt::Alignment() : Qt::AlignHCenter);
}

/// The controls from `first` on side by side; a field that grows takes the room that is left.
QBoxLayout* Layouter::LineOf(size_t first, size_t end) {
  auto* const line = new QHBoxLayout();
  const bool headings = AreHeadings({&controls_[first], end - first});
  if (headings) line->setSpacing(0);
  bool grows = false;
  for (size_t at = first; at < end; ++at) {
    const FormControl& control = controls_[at];
    if (control.widget == nullptr || control.plan->kind == Kind::kSpin) continue;
    const bool wide = headings || (GrowsWide(*control.plan) && control.pair == nullptr);
    line->addWidget(control.widget, wide ? 1 : 0);
    grows = grows || wide;
  }
  if (!grows) line->addStretch(1);
  return line;
}

void Layouter::PlaceButton(const FormControl& control) {
  if (buttons_ == nullptr) buttons_ = new QDialogButtonBox(parent_);
  auto* const button = qobject_cast<QPushButton*>(control.widget);
  if (button == nullptr) return;
  auto role = QDialogButtonBox::HelpRole;
  if (control.plan->id == platform::kOkButton) role = QDialogButtonBox::AcceptRole;
  if (control.plan->id == platform::kCancelButton) role = QDialogButtonBox::RejectRole;
  if (control.plan->kind == Kind::kDefaults) role = QDialogButtonBox::ResetRole;
  buttons_->addButton(button, role);
  button->setDefault(control.plan->id == platform::kOkButton);
}

void Layouter::Place(size_t first, size_t end) {
  const FormControl& control = controls_[first];
  const ControlTemplate& plan = *control.plan;
  if (control.widget == nullptr || StandsAtPlace(plan)) return;
  if (plan.area == Area::kButtons) return PlaceButton(control);
  if (plan.kind == Kind::kGroup && plan.group < 0) return PlaceGroup(control, pane_grid_);
  Grid& grid = GridFor(plan);
  if (plan.kind == Kind::kGroup) return PlaceGroup(control, grid);
  if (end - first == 1 && plan.kind == Kind::kPlace) return PlaceWithBars(control, grid);
  if (end - first > 1 && LeadsLine(plan) && !AreHeadings({&controls_[first], end - first})) {
    grid.layout->addWidget(control.widget, grid.row, 0);
    grid.layout->addLayout(LineOf(first + 1, end), grid.row, 1);
  } else if (end - first == 1 && (GrowsWide(plan) || plan.kind == Kind::kLabel || plan.area == Area::kPane)) {
    grid.layout->addWidget(control.widget, grid.row, 0, 1, 2);
  } else {
    grid.layout->addLayout(LineOf(first, end), grid.row, 0, 1, 2);
  }
  if (auto* const label = qobject_cast<QLabel*>(control.widget);
      label != nullptr && plan.buddy == 0 && end - first == 1) {
    label->setWordWrap(true);  // a sentence of its own
    // What a dialog writes there later may need a second line.
    if (plan.label.empty()) label->setMinimumHeight(2 * label->fontMetrics().lineSpacing());
  }
  if (GrowsHigh(plan)) grid.layout->setRowStretch(grid.row, 1);
  ++grid.row;
}

/// The left parts of the groups in one column are equally wide, so that fields are aligned.
void Layouter::AlignLabels() {
  std::vector<int> widest(columns_.size());
  const auto top_group = [&](const FormControl& control) {
    return control.plan->kind == Kind::kGroup && control.plan->group < 0 && control.plan->area == Area::kColumns;
  };
  for (const bool measures : {true, false}) {
    for (size_t at = 0; at < controls_.size(); ++at) {
      if (!top_group(controls_[at])) continue;
      QGridLayout* const grid = grids_[at].layout;
      int& width = widest[static_cast<size_t>(controls_[at].plan->column)];
      if (!measures) grid->setColumnMinimumWidth(0, width);
      for (int row = 0; measures && row < grids_[at].row; ++row) {
        const QLayoutItem* const left = grid->itemAtPosition(row, 0);
        if (left != nullptr && left != grid->itemAtPosition(row, 1)) width = std::max(width, left->sizeHint().width());
      }
    }
  }
}

/// How wide and high a dialog of each size is at least, in letters and lines.
QSize LeastSize(const QWidget& widget, SizeClass size) {
  constexpr QSize kLetters[] = {{118, 33}, {44, 0}, {60, 0}, {96, 0}};  // by SizeClass
  const QSize letters = kLetters[static_cast<size_t>(size)];
  const QFontMetrics metrics = widget.fontMetrics();
  return {letters.width() * metrics.averageCharWidth(), letters.height() * metrics.lineSpacing()};
}

void Layouter::Finish() {
  auto* const area = new QHBoxLayout();
  for (QVBoxLayout* const column : columns_) {
    bool grows = false;
    for (const FormControl& control : controls_) {
      if (control.plan->area != Area::kColumns || !GrowsHigh(*control.plan)) continue;
      if (columns_[static_cast<size_t>(control.plan->column)] != column) continue;
      grows = true;
      const int group = control.plan->group;
      if (group >= 0) column->setStretchFactor(controls_[static_cast<size_t>(group)].widget, 1);
    }
    if (!grows) column->addStretch(1);
    area->addLayout(column, 1);
  }
  if (pane_ != nullptr) {
    // The previews share what a larger window has with the columns; without previews the pane keeps its width.
    const bool grows = std::ranges::any_of(controls_, [](const FormControl& control) {
      return control.plan->area == Area::kPane && GrowsHigh(*control.plan);
    });
    if (!grows) pane_->addStretch(1);
    area->addLayout(pane_, grows ? 1 : 0);
  }
  auto* const outer = new QVBoxLayout(parent_);
  outer->addLayout(area, 1);
  if (buttons_ != nullptr) outer->addWidget(buttons_);
  const QSize least = LeastSize(*parent_, plan_.size);
  outer->addStrut(least.width());
  area->addStrut(least.height());
}

/// For the Alt key, and for assistive tools where the template hasn't a name for them.
void Name(const FormControl& label, const FormControl& named) {
  if (auto* const widget = qobject_cast<QLabel*>(label.widget)) widget->setBuddy(named.widget);
  if (named.plan->name.empty()) named.widget->setAccessibleName(Spoken(ToQt(label.plan->label)));
}

/// A spin is a part of its field's widget.
void JoinSpin(FormControl& spin, const FormControl& field) {
  spin.widget = field.widget;
  spin.pair = field.pair;
  if (spin.pair != nullptr) spin.pair->wraps = spin.plan->wraps;
}

void JoinBuddies(std::vector<FormControl>& controls) {
  for (FormControl& control : controls) {
    const platform::ControlId id = control.plan->buddy;
    const auto buddy = std::ranges::find_if(controls, [id](const FormControl& other) { return other.plan->id == id; });
    if (id == 0 || buddy == controls.end() || StandsAtPlace(*control.plan)) continue;
    control.plan->kind == Kind::kSpin ? JoinSpin(control, *buddy) : Name(control, *buddy);
  }
}

}  // namespace

void NameByLabel(const std::vector<FormControl>& controls, const FormControl& shown) {
  auto at = controls.begin() + (&shown - controls.data());
  while (at != controls.begin() && at->plan->beside) --at;
  auto* const label = qobject_cast<QLabel*>(at->widget);
  if (label != nullptr && label->buddy() != nullptr && label->buddy()->isHidden()) Name(*at, shown);
}

std::vector<FormControl> BuildForm(QWidget* parent, const DialogTemplate& plan, const Resources& resources) {
  FormParts parts{.parent = parent, .resources = resources, .plan = plan, .sets = {}};
  std::vector<FormControl> controls;
  controls.reserve(plan.controls.size());
  for (const ControlTemplate& control : plan.controls) controls.push_back(MakeControl(parts, control));
  JoinBuddies(controls);
  Layouter(parent, plan, controls).Run();
  return controls;
}

}  // namespace heron::desk

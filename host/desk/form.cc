#include "form.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>

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

/// Lays controls out line by line; a group's lines go into its own grid.
class Layouter {
 public:
  Layouter(QWidget* parent, const DialogTemplate& spec, std::vector<FormControl>& controls)
      : parent_(parent), spec_(spec), controls_(controls), grids_(controls.size()) {}

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
  QBoxLayout* LineOf(size_t first, size_t end);
  void AlignLabels();
  void Finish();

  QWidget* parent_;
  const DialogTemplate& spec_;
  std::vector<FormControl>& controls_;
  std::vector<Grid> grids_;  ///< of groups, by their index
  std::vector<QVBoxLayout*> columns_;
  std::vector<Grid> loose_;  ///< of what stands in a column outside of groups
  QVBoxLayout* pane_ = nullptr;
  Grid pane_grid_;
  QDialogButtonBox* buttons_ = nullptr;
};

/// Whether the first control of a line stands in the left part, with the rest to the right of it.
bool LeadsLine(const ControlTemplate& spec) {
  return spec.kind == Kind::kLabel || spec.kind == Kind::kCheck || (spec.kind == Kind::kRadio && spec.buddy != 0);
}

void Layouter::Run() {
  for (size_t first = 0; first < controls_.size();) {
    size_t end = first + 1;
    while (end < controls_.size() && controls_[end].spec->beside) ++end;
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
  if (control.spec->group >= 0) {
    grid.layout->addWidget(control.widget, grid.row++, 0, 1, 2);
    return;
  }
  ColumnFor(*control.spec)->addWidget(control.widget);
}

/// The controls from `first` on side by side; a field that grows takes the room that is left.
QBoxLayout* Layouter::LineOf(size_t first, size_t end) {
  auto* const line = new QHBoxLayout();
  bool grows = false;
  for (size_t at = first; at < end; ++at) {
    const FormControl& control = controls_[at];
    if (control.widget == nullptr || control.spec->kind == Kind::kSpin) continue;
    const bool wide = GrowsWide(control.spec->kind) && control.pair == nullptr;
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
  if (control.spec->id == platform::kOkButton) role = QDialogButtonBox::AcceptRole;
  if (control.spec->id == platform::kCancelButton) role = QDialogButtonBox::RejectRole;
  if (control.spec->kind == Kind::kDefaults) role = QDialogButtonBox::ResetRole;
  buttons_->addButton(button, role);
  button->setDefault(control.spec->id == platform::kOkButton);
}

void Layouter::Place(size_t first, size_t end) {
  const FormControl& control = controls_[first];
  const ControlTemplate& spec = *control.spec;
  if (control.widget == nullptr) return;
  if (spec.area == Area::kButtons) return PlaceButton(control);
  if (spec.kind == Kind::kGroup && spec.group < 0) return PlaceGroup(control, pane_grid_);
  Grid& grid = GridFor(spec);
  if (spec.kind == Kind::kGroup) return PlaceGroup(control, grid);
  if (end - first > 1 && LeadsLine(spec)) {
    grid.layout->addWidget(control.widget, grid.row, 0);
    grid.layout->addLayout(LineOf(first + 1, end), grid.row, 1);
  } else if (end - first == 1 && (GrowsWide(spec.kind) || spec.kind == Kind::kLabel || spec.area == Area::kPane)) {
    grid.layout->addWidget(control.widget, grid.row, 0, 1, 2,
                           spec.kind == Kind::kPlace ? Qt::AlignHCenter : Qt::Alignment());
  } else {
    grid.layout->addLayout(LineOf(first, end), grid.row, 0, 1, 2);
  }
  if (GrowsHigh(spec.kind)) grid.layout->setRowStretch(grid.row, 1);
  ++grid.row;
}

/// The left parts of the groups in one column are equally wide, so that fields stand below each other.
void Layouter::AlignLabels() {
  std::vector<int> widest(columns_.size());
  const auto top_group = [&](const FormControl& control) {
    return control.spec->kind == Kind::kGroup && control.spec->group < 0 && control.spec->area == Area::kColumns;
  };
  for (const bool measures : {true, false}) {
    for (size_t at = 0; at < controls_.size(); ++at) {
      if (!top_group(controls_[at])) continue;
      QGridLayout* const grid = grids_[at].layout;
      int& width = widest[static_cast<size_t>(controls_[at].spec->column)];
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
  constexpr QSize kLetters[] = {{118, 33}, {36, 0}, {56, 0}, {90, 0}};  // by SizeClass
  const QSize letters = kLetters[static_cast<size_t>(size)];
  const QFontMetrics metrics = widget.fontMetrics();
  return {letters.width() * metrics.averageCharWidth(), letters.height() * metrics.lineSpacing()};
}

void Layouter::Finish() {
  auto* const area = new QHBoxLayout();
  for (QVBoxLayout* const column : columns_) {
    bool grows = false;
    for (const FormControl& control : controls_) {
      if (!GrowsHigh(control.spec->kind) || columns_[static_cast<size_t>(control.spec->column)] != column) continue;
      grows = true;
      const int group = control.spec->group;
      if (group >= 0) column->setStretchFactor(controls_[static_cast<size_t>(group)].widget, 1);
    }
    if (!grows) column->addStretch(1);
    area->addLayout(column, 1);
  }
  if (pane_ != nullptr) {
    pane_->addStretch(1);
    area->addLayout(pane_);
  }
  auto* const outer = new QVBoxLayout(parent_);
  outer->addLayout(area, 1);
  if (buttons_ != nullptr) outer->addWidget(buttons_);
  const QSize least = LeastSize(*parent_, spec_.size);
  outer->addStrut(least.width());
  area->addStrut(least.height());
}

/// Labels and checks name their fields, for the Alt key and for assistive tools.
void JoinBuddies(std::vector<FormControl>& controls) {
  const auto find = [&](platform::ControlId id) {
    return std::ranges::find_if(controls, [&](const FormControl& control) { return control.spec->id == id; });
  };
  for (FormControl& control : controls) {
    const ControlTemplate& spec = *control.spec;
    if (spec.buddy == 0) continue;
    const auto buddy = find(spec.buddy);
    if (buddy == controls.end()) continue;
    if (spec.kind == Kind::kSpin) {
      control.widget = buddy->widget;
      control.pair = buddy->pair;
      if (control.pair != nullptr) control.pair->wraps = spec.wraps;
      continue;
    }
    if (auto* const label = qobject_cast<QLabel*>(control.widget)) label->setBuddy(buddy->widget);
    if (buddy->spec->name.empty()) buddy->widget->setAccessibleName(Spoken(ToQt(spec.label)));
  }
}

}  // namespace

std::vector<FormControl> BuildForm(QWidget* parent, const DialogTemplate& spec, const Resources& resources) {
  FormParts parts{.parent = parent, .resources = resources, .spec = spec, .sets = {}};
  std::vector<FormControl> controls;
  controls.reserve(spec.controls.size());
  for (const ControlTemplate& control : spec.controls) controls.push_back(MakeControl(parts, control));
  JoinBuddies(controls);
  Layouter(parent, spec, controls).Run();
  return controls;
}

}  // namespace heron::desk

// The widgets of a dialog, laid out by its template. Nothing here has a fixed position: lines of a group form a grid
// whose left part holds the labels, groups form columns, and everything grows with fonts and texts.
#pragma once

#include <QWidget>
#include <vector>

#include "resources.h"

class QButtonGroup;
class QLineEdit;

namespace heron::desk {

class SpinField;
class RowModel;

/// A control with its widget. A spin shares the widget of its field.
struct FormControl {
  const platform::ControlTemplate* plan = nullptr;
  QWidget* widget = nullptr;
  QLineEdit* field = nullptr;   ///< where text is typed on one line
  SpinField* pair = nullptr;    ///< of a field with a spin, and of the spin
  RowModel* rows = nullptr;     ///< of lists and views
  QButtonGroup* set = nullptr;  ///< of a radio
};

/// Fills `parent` with the controls of `plan`, which must outlive it, in the template's order.
std::vector<FormControl> BuildForm(QWidget* parent, const platform::DialogTemplate& plan, const Resources& resources);

/// Fields that take turns at one place share a label: it names `shown` from now on, if what it named is hidden.
void NameByLabel(const std::vector<FormControl>& controls, const FormControl& shown);

}  // namespace heron::desk

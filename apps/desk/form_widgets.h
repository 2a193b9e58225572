// One widget for each kind of control.
#pragma once

#include <map>

#include "form.h"

namespace heron::desk {

/// What controls of one dialog have in common while they are made.
struct FormParts {
  QWidget* parent;
  const Resources& resources;
  const platform::DialogTemplate& plan;
  std::map<std::string, QButtonGroup*> sets;
};

/// The control `plan` on parts.parent; without a widget for a spin.
FormControl MakeControl(FormParts& parts, const platform::ControlTemplate& plan);

/// Whether it takes what room there is, to the side and downwards.
bool GrowsWide(const platform::ControlTemplate& plan);
bool GrowsHigh(const platform::ControlTemplate& plan);

}  // namespace heron::desk

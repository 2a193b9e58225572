// One widget for each kind of control.
#pragma once

#include <map>

#include "form.h"

namespace heron::desk {

/// What controls of one dialog have in common while they are made.
struct FormParts {
  QWidget* parent;
  const Resources& resources;
  const platform::DialogTemplate& spec;
  std::map<std::string, QButtonGroup*> sets;
};

/// The control `spec` on parts.parent; without a widget for a spin.
FormControl MakeControl(FormParts& parts, const platform::ControlTemplate& spec);

/// Whether it takes what room there is, to the side and downwards.
bool GrowsWide(platform::ControlKind kind);
bool GrowsHigh(platform::ControlKind kind);

}  // namespace heron::desk

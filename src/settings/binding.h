// Which side a job is bound on, and the duplex mode that follows.
#pragma once

#include <cstdint>

#include "settings/driver_env.h"

namespace heron {

/// What decides on the side of the binding, of a record or of working settings.
struct BindingChoice {
  uint16_t position;     ///< `lpBindPosit`
  uint16_t paper;        ///< the one that is printed on
  uint16_t orientation;  ///< of the pages
  uint16_t printType;    ///< `lpPRNType`
  uint16_t layout;       ///< `lpLayout`, 0 without `Nup_Check`
  uint16_t fold;         ///< `lpFold`, 0 without `Fold_Check`
  bool onePerSheet;
  bool adhesive;
};

/// The orientation of the sheet: that of the pages, flipped by a layout of 5 or 8 and again by one page a sheet.
int16_t SheetOrientation(const BindingChoice& choice);

/// The side of the binding: 2 left, 3 right, 4 top; 1 if it is automatic and the paper's feed class is unknown.
uint8_t BindingSide(const BindingChoice& choice);
uint8_t ComputeBindingSide(const DriverEnv& env);

/// The edge of the binding margin: 1 left, 2 right, 3 top.
uint8_t ComputeBindMarginSide(const DriverEnv& env);

/// Portrait (1) and landscape (2) swapped; anything else unchanged.
constexpr int16_t FlipOrientation(int16_t orientation) {
  return orientation == 1 ? int16_t{2} : orientation == 2 ? int16_t{1} : orientation;
}

int16_t SheetOrientation(const DriverEnv& env);

/// The dmDuplex (2 or 3) that binds a sheet of this orientation on `binding_side`.
constexpr int16_t DuplexForBinding(int16_t orientation, uint8_t binding_side) {
  const bool flips_on_short_edge = orientation == 2 ? binding_side == 2 || binding_side == 3 : binding_side == 4;
  return flips_on_short_edge ? int16_t{3} : int16_t{2};
}

}  // namespace heron

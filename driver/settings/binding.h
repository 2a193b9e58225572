// Which side a job is bound on, and the duplex mode that follows.
#pragma once

#include <cstdint>

#include "catalog/other_values.h"
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

/// Whether the layout turns its pages against the sheet: two and six pages a sheet do.
constexpr bool LayoutTurnsPages(uint16_t layout) {
  return layout == value::lpLayout::kTwoPages || layout == value::lpLayout::kSixPages;
}

/// The orientation of the sheet: that of the pages, flipped by such a layout and again by one page a sheet.
int16_t SheetOrientation(const BindingChoice& choice);

/// The side of the binding, a value of `lpBindPosit`; kAuto if it is automatic and the paper's feed class is unknown.
uint8_t BindingSide(const BindingChoice& choice);
uint8_t ComputeBindingSide(const DriverEnv& env);

/// The edge of the binding margin, a value of `lpBindMargin`.
uint8_t ComputeBindMarginSide(const DriverEnv& env);

/// Portrait and landscape swapped; anything else unchanged.
constexpr int16_t FlipOrientation(int16_t orientation) {
  namespace side = value::lpOrientation;
  return orientation == side::kPortrait    ? int16_t{side::kLandscape}
         : orientation == side::kLandscape ? int16_t{side::kPortrait}
                                           : orientation;
}

int16_t SheetOrientation(const DriverEnv& env);

/// The dmDuplex of two sides that binds a sheet of this orientation on `binding_side`.
constexpr int16_t DuplexForBinding(int16_t orientation, uint8_t binding_side) {
  namespace bind = value::lpBindPosit;
  const bool beside = binding_side == bind::kLeft || binding_side == bind::kRight;
  const bool flips_on_short_edge =
      orientation == value::lpOrientation::kLandscape ? beside : binding_side == bind::kTop;
  return flips_on_short_edge ? value::dmDuplex::kShortEdge : value::dmDuplex::kLongEdge;
}

}  // namespace heron

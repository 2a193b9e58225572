// The working values of a UiState by the key of their setting: Setting<u"Zoom">(ui) = 100.
//
// The one way to a working value whose key is known. Committed<> (uistate/ui_state.h) gives what was last confirmed,
// SlotAs<> the slots without such a value: scalars, texts and lists' items; FieldsOf a row that a walk has at hand.
#pragma once

#include <cstdint>

#include "uistate/ui_state.h"

namespace heron::engine {

/// The value of a setting of kind L, R, C or N. Written through a const state as all its blocks are.
template <ParamKey kKey>
uint16_t& Setting(const UiState& ui) {
  constexpr uint16_t kIndex = ParamNamed<kKey>();
  static_assert(kParamRows[kIndex].HasBlock());
  return *FieldsOf(ui, kIndex).value;
}

/// Whether a switch is exactly 1.
template <ParamKey kKey>
bool IsOn(const UiState& ui) {
  return Setting<kKey>(ui) == 1;
}

/// Bounds of a number that has a range of the catalogue, beside its value.
template <ParamKey kKey>
const NumericBlock& RangeOf(const UiState& ui) {
  constexpr uint16_t kIndex = ParamNamed<kKey>();
  static_assert(kParamRows[kIndex].kind == ParamKind::kNumber);
  return *reinterpret_cast<const NumericBlock*>(SlotOf(ui, kIndex));
}

}  // namespace heron::engine

// Zoom that follows from papers and margins.
#pragma once

#include <cstdint>

#include "settings/driver_env.h"

namespace heron {

/// A printable rectangle, as the record holds it four u32 long.
struct Rect {
  uint32_t left, top, right, bottom;
  int64_t Width() const { return static_cast<int32_t>(right - left); }
  int64_t Height() const { return static_cast<int32_t>(bottom - top); }
};

template <FieldName kName>
Rect GetRect(const DriverEnv& env) {
  return {Get<kName>(env, 0), Get<kName>(env, 1), Get<kName>(env, 2), Get<kName>(env, 3)};
}
template <FieldName kName>
void SetRect(DriverEnv& env, const Rect& rect) {
  Set<kName>(env, rect.left, 0);
  Set<kName>(env, rect.top, 1);
  Set<kName>(env, rect.right, 2);
  Set<kName>(env, rect.bottom, 3);
}

/// The percentage at which `paper` fits into `output`; 100 if `paper` has no width or height.
int64_t ComputeFitZoom(const Rect& paper, const Rect& output);

/// The percentage at which the document's printable area fits beside the binding margin; 100 if it has no width or
/// height.
int64_t ComputeMarginZoom(const DriverEnv& env);

}  // namespace heron

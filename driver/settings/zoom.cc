#include "settings/zoom.h"

#include <algorithm>
#include <utility>

#include "catalog/other_values.h"
#include "settings/binding.h"

namespace heron {
namespace {

namespace margin = value::lpBindMargin;

int64_t FitPercent(int64_t width, int64_t height, int64_t out_width, int64_t out_height) {
  if (width == 0 || height == 0) return 100;
  return std::min(out_width * 100 / width, out_height * 100 / height);
}

/// Orientation of the pages on the sheet: two or six pages a sheet turn them.
int16_t MarginOrientation(const DriverEnv& env) {
  const bool layout = IsOn<"Layout_Check2">(env) && IsOn<"Nup_Check">(env);
  const bool pod_layout = IsOn<"POD_Check">(env) && IsOn<"POD_Nup_Check">(env);
  const int16_t orientation = Get<"dmOrientation">(env);
  return (layout || pod_layout) && LayoutTurnsPages(Get<"lpLayout">(env)) ? FlipOrientation(orientation) : orientation;
}

/// The binding margin that counts, hundredths of a millimetre: the larger of both sides on two-sided jobs.
int64_t BindingMargin(const DriverEnv& env) {
  const uint8_t type = Get<"lpPRNType">(env);
  const bool two_sided = Get<"dmDuplex">(env) != value::dmDuplex::kOneSided || type == value::lpPRNType::kTwoSided ||
                         type == value::lpPRNType::kBooklet;
  const uint8_t front = Get<"fMargin">(env);
  const uint8_t back = Get<"bMargin">(env);
  return int64_t{two_sided && front < back ? back : front} * 100;
}

}  // namespace

int64_t ComputeFitZoom(const Rect& paper, const Rect& output) {
  return FitPercent(paper.Width(), paper.Height(), output.Width(), output.Height());
}

int64_t ComputeMarginZoom(const DriverEnv& env) {
  const Rect paper = GetRect<"paperMargins">(env);
  const Rect output = GetRect<"outputMargins">(env);
  int64_t width = paper.Width();
  int64_t height = paper.Height();
  int64_t out_width = output.Width();
  int64_t out_height = output.Height();
  if (MarginOrientation(env) == value::lpOrientation::kLandscape) {
    std::swap(width, height);
    std::swap(out_width, out_height);
  }
  switch (Get<"lpBindMargin">(env)) {
    case margin::kLeft:
    case margin::kRight:
      out_width -= BindingMargin(env);
      break;
    case margin::kTop:
    case margin::kBottom:
      out_height -= BindingMargin(env);
      break;
    default:
      break;
  }
  return FitPercent(width, height, out_width, out_height);
}

}  // namespace heron

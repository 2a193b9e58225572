#include "settings/zoom.h"

#include <algorithm>
#include <utility>

#include "settings/binding.h"

namespace heron {
namespace {

int64_t FitPercent(int64_t width, int64_t height, int64_t out_width, int64_t out_height) {
  if (width == 0 || height == 0) return 100;
  return std::min(out_width * 100 / width, out_height * 100 / height);
}

/// Orientation of the pages on the sheet: two or six pages a sheet turn them.
int16_t MarginOrientation(const DriverEnv& env) {
  const bool layout = Get<"Layout_Check2">(env) == 1 && Get<"Nup_Check">(env) == 1;
  const bool pod_layout = Get<"POD_Check">(env) == 1 && Get<"POD_Nup_Check">(env) == 1;
  const uint8_t pages = Get<"lpLayout">(env);
  const int16_t orientation = Get<"dmOrientation">(env);
  return (layout || pod_layout) && (pages == 5 || pages == 8) ? FlipOrientation(orientation) : orientation;
}

/// The binding margin that counts, hundredths of a millimetre: the larger of both sides on two-sided jobs.
int64_t BindingMargin(const DriverEnv& env) {
  const uint8_t type = Get<"lpPRNType">(env);
  const bool two_sided = Get<"dmDuplex">(env) != 1 || type == 2 || type == 3;
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
  if (MarginOrientation(env) == 2) {
    std::swap(width, height);
    std::swap(out_width, out_height);
  }
  switch (Get<"lpBindMargin">(env)) {
    case 1:
    case 2:
      out_width -= BindingMargin(env);
      break;
    case 3:
    case 4:
      out_height -= BindingMargin(env);
      break;
    default:
      break;
  }
  return FitPercent(width, height, out_width, out_height);
}

}  // namespace heron

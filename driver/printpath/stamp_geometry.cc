#include "printpath/stamp_geometry.h"

#include <algorithm>
#include <array>
#include <numbers>
#include <utility>

namespace heron {
namespace {

using platform::LONG;
using platform::POINT;
using platform::RECT;

constexpr int32_t kScale = 16384;
constexpr int32_t kRightAngle = 900;
constexpr int64_t kLargestSide = int64_t{1} << 24;

constexpr double SineSeries(double x) {
  double term = x;
  double sum = x;
  for (int n = 1; n < 12; ++n) {
    term *= -x * x / ((2 * n) * (2 * n + 1));
    sum += term;
  }
  return sum;
}

/// Of 0 to 90 degrees, and once more 90 for the last interval.
constexpr auto kSines = [] {
  std::array<int32_t, 92> sines{};
  for (size_t degree = 0; degree <= 90; ++degree) {
    sines[degree] =
        static_cast<int32_t>(SineSeries(static_cast<double>(degree) * std::numbers::pi / 180) * kScale + 0.5);
  }
  sines[91] = sines[90];
  return sines;
}();
static_assert(kSines[0] == 0 && kSines[30] == kScale / 2 && kSines[90] == kScale);

/// Half the height along one direction.
LONG HalfHeight(int32_t sine, LONG height) {
  return static_cast<LONG>((int64_t{sine} * 10000 / kScale * (height / 2)) / 10000);
}

int64_t Offset(int32_t tenths_of_mm, int32_t dpi, int32_t zoom) {
  return int64_t{tenths_of_mm} * dpi / 254 * 100 / std::max(zoom, 1);
}

LONG Side(int64_t value) {
  return static_cast<LONG>(std::clamp<int64_t>(value, 0, kLargestSide));
}

}  // namespace

int32_t SineOf(int32_t tenths) {
  int32_t angle = tenths % (4 * kRightAngle);
  if (angle < 0) angle += 4 * kRightAngle;
  const bool negative = angle >= 2 * kRightAngle;
  if (negative) angle -= 2 * kRightAngle;
  if (angle > kRightAngle) angle = 2 * kRightAngle - angle;
  const auto degree = static_cast<size_t>(angle / 10);
  const int32_t sine = kSines[degree] + (kSines[degree + 1] - kSines[degree]) * (angle % 10) / 10;
  return negative ? -sine : sine;
}

int32_t CosineOf(int32_t tenths) {
  return SineOf(tenths % (4 * kRightAngle) + kRightAngle);
}

POINT BelowMiddle(int32_t angle, LONG height) {
  return {HalfHeight(SineOf(angle), height), HalfHeight(CosineOf(angle), height)};
}

POINT StampPosition(const StampPage& page, int32_t center_x, int32_t center_y, int32_t angle, LONG height) {
  const RECT& area = page.area;
  const int64_t x = area.left + (area.right - area.left) / 2 + Offset(center_x, page.dpiX, page.zoom);
  const int64_t y = area.top + (area.bottom - area.top) / 2 + Offset(center_y, page.dpiY, page.zoom);
  const POINT below = BelowMiddle(angle, height);
  return {static_cast<LONG>(std::clamp<int64_t>(x, area.left, area.right)) + below.x,
          static_cast<LONG>(std::clamp<int64_t>(y, area.top, area.bottom)) + below.y};
}

RECT PageArea(const PageSides& sides, bool exchanged, int32_t zoom) {
  const int64_t divisor = std::max(zoom, 1);
  const auto scaled = [divisor](int64_t side) { return Side(Side(side) * int64_t{100} / divisor); };
  LONG left = scaled(sides.left);
  LONG top = scaled(sides.top);
  LONG width = scaled(int64_t{sides.right} - sides.left);
  LONG height = scaled(int64_t{sides.bottom} - sides.top);
  if (exchanged) {
    std::swap(left, top);
    std::swap(width, height);
  }
  return {left, top, left + width, top + height};
}

}  // namespace heron

#include "preview/geometry.h"

#include <algorithm>
#include <cmath>

#include "preview/machine_view.h"
#include "preview/paper_view.h"

namespace heron::preview {

using platform::LONG;
using platform::POINT;
using platform::RECT;

namespace {

constexpr LONG kBorder = 2;  // the frame's, on every side

RECT Shrunk(const RECT& area) {
  return {area.left + kBorder, area.top + kBorder, area.right - kBorder, area.bottom - kBorder};
}

}  // namespace

Viewport::Viewport(const RECT& place, platform::SIZE usual) : place_(place) {
  const double width = std::max<LONG>(1, place.right - place.left);
  const double height = std::max<LONG>(1, place.bottom - place.top);
  scale_ = std::min(width / usual.cx, height / usual.cy);
  area_ = {0, 0, static_cast<LONG>(std::lround(width / scale_)), static_cast<LONG>(std::lround(height / scale_))};
}

LONG Viewport::MapLength(double length) const {
  return static_cast<LONG>(std::lround(length * scale_));
}

RECT Viewport::Map(const RECT& at) const {
  return {place_.left + MapLength(at.left), place_.top + MapLength(at.top), place_.left + MapLength(at.right),
          place_.top + MapLength(at.bottom)};
}

PaperGeometry PaperGeometryOf(const RECT& area) {
  constexpr LONG kArrowWidth = 19;  // of the sign and a blank behind it
  const RECT inner = Shrunk(area);
  const LONG inner_height = inner.bottom - inner.top;
  const RECT picture = {inner.left + 2, inner.top + inner_height * 17 / 100, inner.right,
                        inner.top + inner_height * 77 / 100};
  const RECT header = {inner.left + 2, inner.top + 2, inner.right, picture.top};
  const LONG width = inner.right - inner.left - 2;
  const LONG below = inner.bottom - picture.bottom;
  const LONG row = below / 3;
  const LONG centre_x = (picture.left + picture.right) / 2;
  const LONG centre_y = picture.top + 12 + (picture.bottom - picture.top + 12) / 2;

  PaperGeometry geometry{.sheet = {centre_x - kSheetArea / 2, centre_y - 2 - kSheetArea / 2}, .labels = {}};
  const auto at = [&](LabelPlace place) -> RECT& { return geometry.labels[static_cast<size_t>(place)]; };
  const LONG middle = header.left + width / 2;
  at(LabelPlace::kOriginalName) = {header.left, header.top, middle, header.top + row};
  at(LabelPlace::kOriginalSize) = {header.left, header.top + row, middle, header.top + 2 * row};
  at(LabelPlace::kOutputName) = {middle + 1, header.top, header.right, header.top + row};
  at(LabelPlace::kOutputSize) = {middle, header.top + row, inner.right, header.top + 2 * row};
  at(LabelPlace::kArrow) = {middle - kArrowWidth, header.top, middle, header.top + row};
  // Low enough to keep clear of the size above it.
  at(LabelPlace::kZoom) = {inner.left + 3 * width / 4, picture.top, inner.right, picture.top + row + 5};
  at(LabelPlace::kCopies) = {inner.left + 3 * width / 4, picture.bottom + 24 - row, inner.right, picture.bottom + 24};
  return geometry;
}

POINT MachineOrigin(const RECT& area) {
  constexpr LONG kTall = 121, kLower = 8;
  const RECT inner = Shrunk(area);
  const LONG x = inner.left - 3 + (inner.right - inner.left) / 2;
  const LONG y = inner.top + (inner.bottom - inner.top) / 2 + (area.bottom >= kTall ? kLower : 0);
  return {x - kMachineWidth / 2, y - kMachineHeight / 2};
}

}  // namespace heron::preview

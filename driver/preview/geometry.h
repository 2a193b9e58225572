// Layout of the three places that show previews, and how they scale.
//
// A place is divided in pixels at scale 1. A place of the usual size has scale 1; a larger or smaller one is scaled as
// a whole by what fits, and what is left over in one direction is room for the parts.
#pragma once

#include "platform/api/canvas.h"
#include "preview/labels.h"

namespace heron::preview {

/// The sizes that have scale 1.
inline constexpr platform::SIZE kUpperSize = {200, 150};
inline constexpr platform::SIZE kStatusSize = {200, 84};

/// A place of a window or a picture, and the scale that its contents are drawn in.
class Viewport {
 public:
  /// An empty place is one pixel wide and high.
  Viewport(const platform::RECT& place, platform::SIZE usual);

  /// The place's own size at scale 1, its left upper corner at 0, 0.
  const platform::RECT& area() const { return area_; }
  double scale() const { return scale_; }
  /// From scale 1 to the canvas.
  platform::RECT Map(const platform::RECT& at) const;
  platform::LONG MapLength(double length) const;

 private:
  platform::RECT place_;
  double scale_;
  platform::RECT area_;
};

/// The paper view in `area`.
struct PaperGeometry {
  platform::POINT sheet;                ///< upper left corner of the stack
  platform::RECT labels[kLabelPlaces];  ///< by place
};
PaperGeometry PaperGeometryOf(const platform::RECT& area);

/// Upper left corner of the machine in `area`.
platform::POINT MachineOrigin(const platform::RECT& area);

}  // namespace heron::preview

// Position of a line of text on a page so that its middle is where the user put it: integer arithmetic, in this order.
#pragma once

#include <cstdint>

#include "platform/api/canvas.h"

namespace heron {

/// Sine x 16384 of an angle in tenths of a degree: a table of whole degrees, between them a straight line.
int32_t SineOf(int32_t tenths);
int32_t CosineOf(int32_t tenths);

/// Way from the middle of a line of this height to the point below it that a text aligned to centre and bottom is drawn
/// at, the line turned by `angle` tenths of a degree counter-clockwise.
platform::POINT BelowMiddle(int32_t angle, platform::LONG height);

/// The page that a stamp is put on, in pixels.
struct StampPage {
  platform::RECT area;  ///< what is drawn in; the stamp's centre counts from its middle
  int32_t dpiX;         ///< for the centre's offsets
  int32_t dpiY;
  int32_t zoom;  ///< percent that the offsets are divided by; at least 1
};

/// Where the text of height `height` is drawn whose middle is to lie (`center_x`, `center_y`) tenths of a millimetre
/// from the middle of the page. A middle that would lie off the page is pulled back to its edge.
platform::POINT StampPosition(const StampPage& page, int32_t center_x, int32_t center_y, int32_t angle,
                              platform::LONG height);

/// A page's sides as the printing side reports them.
struct PageSides {
  uint32_t left, top, right, bottom;  ///< pixels
};

/// The rectangle of these sides, kept to what a page can have: none beyond 2^24 pixels, none negative. `exchanged`:
/// width and height change places. `zoom`, percent: the size is divided by it.
platform::RECT PageArea(const PageSides& sides, bool exchanged, int32_t zoom);

}  // namespace heron

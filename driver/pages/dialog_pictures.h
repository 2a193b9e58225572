// The pictures that dialogs draw themselves: the binding margin on its sheet (2300), a custom paper in its proportions
// (2200), the sheet of a row of the per-page list (2400).
#pragma once

#include "platform/api/canvas.h"
#include "uistate/ui_state.h"

namespace heron::pages {

/// What the picture of the binding margin shows.
struct MarginPicture {
  bool landscape;       ///< the sheet
  uint8_t layoutClass;  ///< 0 one page, 1 to 5 for 2, 4, 6, 9 and 16; 8 more where two sheets' pages share one
  bool marginOn;
  uint16_t marginMode;  ///< `lpMarginMode`: 1 the page moves, 2 it is reduced
  uint8_t marginEdge;   ///< 1 left, 2 right, 3 top, 4 bottom, 0 without margin
  bool booklet;
  uint8_t bookletEdge;  ///< the fold: 2 left, 3 right, 4 top

  bool operator==(const MarginPicture&) const = default;
};

MarginPicture DescribeMargin(const UiState& ui);

/// The sheet that the layers are drawn on, a picture of kMarginPictureSize pixels each way.
uint32_t MarginFrame(const MarginPicture& picture);
inline constexpr platform::LONG kMarginPictureSize = 140;

/// Draws the pages, the margin and the fold on the frame, which fills `place`.
void DrawMargin(const MarginPicture& picture, platform::Canvas& canvas, const platform::RECT& place);

/// Draws a sheet of these proportions as large as fits, with a measure along two sides. Nothing without a size.
void DrawPaper(uint32_t width, uint32_t length, platform::Canvas& canvas, const platform::RECT& place);

enum class SheetSide : uint8_t { kFront, kBack };

/// Draws a side of a sheet that a row of the per-page list of this print type prints, blank where it prints nothing.
void DrawRowSide(uint16_t type, SheetSide side, platform::Canvas& canvas, const platform::RECT& place);

}  // namespace heron::pages

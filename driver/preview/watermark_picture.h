// The picture of a watermark on its paper: what the watermark page and its editor show, scaled to their places.
//
// Two steps, as for every preview: settings to a descriptor, descriptor to a drawing. The descriptor needs a canvas,
// since the stamp's middle depends on the height of its letters. All of it is integer arithmetic in a fixed order, so
// that window, command and test agree to the pixel.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/api/canvas.h"
#include "uistate/ui_state.h"

namespace heron::preview {

/// What the place of the watermark page has for its picture at scale 1.
inline constexpr platform::SIZE kWatermarkPictureSize = {120, 160};

enum class WatermarkView : uint8_t {
  kPage,    ///< the stamp shows while watermarks are in use
  kEditor,  ///< the stamp shows always
};

/// A paper on a square place, without a stamp. Lengths are pixels, sizes of papers hundredths of a millimetre.
struct PaperFrame {
  platform::RECT control;  ///< the place
  platform::RECT square;   ///< the largest square in its middle
  platform::LONG halfW, halfH;
  int32_t width, height;  ///< of the paper, turned with the page; at least 1
  int32_t largest;        ///< longest side that the square has room for
  platform::LONG insetX, insetY;
  platform::RECT paper;
  platform::RECT clip;  ///< the paper less its frame

  platform::POINT Middle() const { return {square.left + halfW, square.top + halfH}; }
  platform::LONG PaperWidth() const { return paper.right - paper.left; }
  platform::LONG PaperHeight() const { return paper.bottom - paper.top; }
};
PaperFrame FramePaper(const UiState& ui, const platform::RECT& control);

struct WatermarkPicture {
  PaperFrame frame;
  std::u16string string;  ///< the stamp's text
  platform::LOGFONTW font;
  platform::COLORREF color;      ///< of the stamp
  platform::COLORREF textColor;  ///< of its letters here: white while no watermark is in use
  platform::LONG offX, offY;     ///< of the stamp's middle from the paper's
  platform::LONG textHeight;
  platform::LONG dx, dy;                 ///< from the stamp's middle to the point below it that the text is drawn at
  std::optional<platform::POINT> text;   ///< where the text is drawn, centred and above; nothing if it isn't
  std::optional<platform::POINT> cross;  ///< the stamp's middle; nothing if it isn't marked
};

/// The picture of `entry` in the place `control`. `families` are the installed fonts.
WatermarkPicture DescribeWatermark(const UiState& ui, const WatermarkEntry& entry, WatermarkView view,
                                   const platform::RECT& control, std::span<const platform::FontFamily> families,
                                   platform::Canvas& canvas);
/// The entry of the settings: the current one, as long as the list has it, else one without a text.
WatermarkEntry CurrentWatermark(const UiState& ui);

/// Draws paper, stamp and cross; around the paper nothing.
void DrawWatermarkPicture(const WatermarkPicture& picture, platform::Canvas& canvas);

/// How far the stamp's middle may go from the paper's each way so that it stays on the paper, tenths of a millimetre.
platform::POINT CenterLimits(const PaperFrame& frame);
/// The stamp's middle for a point of the place, tenths of a millimetre from the paper's middle, y downwards.
platform::POINT CenterAt(const PaperFrame& frame, platform::POINT point);

/// "DRAFT, 72 pt, turned by 45 degrees", or that there is none.
std::u16string SayWatermark(const UiState& ui);

}  // namespace heron::preview

#include "screen_canvas.h"

#include <QPaintDevice>

#include "painting.h"

namespace heron::desk {

int ScreenCanvas::DeviceCap(platform::DeviceCap number) {
  switch (number) {
    case platform::DeviceCap::kHorzRes:
      return width_;
    case platform::DeviceCap::kVertRes:
      return height_;
    case platform::DeviceCap::kLogPixelsX:
      return painter_.device()->logicalDpiX();
    case platform::DeviceCap::kLogPixelsY:
      return painter_.device()->logicalDpiY();
  }
  return 0;
}

platform::SIZE ScreenCanvas::MeasureText(const platform::LOGFONTW& font, std::u16string_view text) {
  return MeasureLine(font, text);
}

std::vector<platform::FontFamily> ScreenCanvas::FontFamilies() {
  return InstalledFamilies();
}

void ScreenCanvas::DrawLine(const platform::TextDrawing& drawing, const std::optional<platform::RECT>& clip) {
  PaintLine(painter_, drawing, clip);
}

void ScreenCanvas::FillRect(const platform::RECT& area, platform::COLORREF color,
                            const std::optional<platform::RECT>& clip) {
  PaintRect(painter_, area, color, clip);
}

void ScreenCanvas::DrawPicture(const platform::RECT& target, const platform::Picture& picture,
                               const std::optional<platform::RECT>& clip) {
  PaintPicture(painter_, target, picture, clip);
}

}  // namespace heron::desk

// The canvas of a place on a dialog (screen_canvas.h).

#include "screen_canvas.h"

#include <QPaintDevice>
#include <QPalette>

#include "painting.h"
#include "picture_cache.h"

namespace heron::desk {

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

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

void ScreenCanvas::DrawBitmap(const platform::RECT& target, std::span<const uint8_t> file,
                              const std::optional<platform::RECT>& clip) {
  if (const QImage image = ReadBitmap(file); !image.isNull()) PaintImage(painter_, target, image, clip);
}

void ScreenCanvas::DrawResource(uint32_t number, const platform::RECT& target,
                                const std::optional<platform::RECT>& clip) {
  if (pictures_ == nullptr) return;
  painter_.save();
  if (clip) {
    painter_.setClipRect(QRect(QPoint(clip->left, clip->top), QPoint(clip->right - 1, clip->bottom - 1)),
                         Qt::IntersectClip);
  }
  pictures_->Paint(painter_, number, target);
  painter_.restore();
}

std::optional<platform::SIZE> ScreenCanvas::ResourceSize(uint32_t number) {
  if (pictures_ == nullptr) return std::nullopt;
  const QSize size = pictures_->SizeOf(number);
  return size.isEmpty() ? std::nullopt : std::optional(platform::SIZE{size.width(), size.height()});
}

}  // namespace heron::desk

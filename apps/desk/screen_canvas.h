// The canvas of a place on the screen, on which pages draw.
#pragma once

#include "platform/api/canvas.h"

class QPainter;
class QPalette;

namespace heron::desk {

class PictureCache;

/// Whether windows of these colours have light letters on a dark ground.
bool IsDark(const QPalette& palette);

/// Draws with `painter` and the pictures of `pictures` (none if null), which must outlive it, inside of an area of the
/// given size. Escapes fail here.
class ScreenCanvas final : public platform::Canvas {
 public:
  ScreenCanvas(QPainter& painter, int width, int height, PictureCache* pictures = nullptr, bool dark = false)
      : painter_(painter), pictures_(pictures), width_(width), height_(height), dark_(dark) {}

  int Escape(uint32_t, std::span<const uint8_t>, std::span<uint8_t>) override { return 0; }
  int DeviceCap(platform::DeviceCap number) override;
  platform::SIZE MeasureText(const platform::LOGFONTW& font, std::u16string_view text) override;
  std::vector<platform::FontFamily> FontFamilies() override;
  void DrawLine(const platform::TextDrawing& drawing, const std::optional<platform::RECT>& clip) override;
  void FillRect(const platform::RECT& area, platform::COLORREF color,
                const std::optional<platform::RECT>& clip) override;
  void DrawPicture(const platform::RECT& target, const platform::Picture& picture,
                   const std::optional<platform::RECT>& clip) override;
  void DrawBitmap(const platform::RECT& target, std::span<const uint8_t> file,
                  const std::optional<platform::RECT>& clip) override;
  void DrawResource(uint32_t number, const platform::RECT& target, const std::optional<platform::RECT>& clip) override;
  std::optional<platform::SIZE> ResourceSize(uint32_t number) override;
  bool HasDarkGround() const override { return dark_; }
  bool StartPage() override { return false; }
  bool EndPage() override { return false; }

 private:
  QPainter& painter_;
  PictureCache* pictures_;
  int width_;
  int height_;
  bool dark_;
};

}  // namespace heron::desk

// What pages draw on: a place on the screen.
#pragma once

#include "platform/canvas.h"

class QPainter;

namespace heron::desk {

/// Draws with `painter`, which must outlive it, inside of an area of the given size. Nobody answers escapes here.
class ScreenCanvas final : public platform::Canvas {
 public:
  ScreenCanvas(QPainter& painter, int width, int height) : painter_(painter), width_(width), height_(height) {}

  int Escape(uint32_t, std::span<const uint8_t>, std::span<uint8_t>) override { return 0; }
  int DeviceCap(platform::DeviceCap number) override;
  platform::SIZE MeasureText(const platform::LOGFONTW& font, std::u16string_view text) override;
  std::vector<platform::FontFamily> FontFamilies() override;
  void DrawLine(const platform::TextDrawing& drawing, const std::optional<platform::RECT>& clip) override;
  void FillRect(const platform::RECT& area, platform::COLORREF color,
                const std::optional<platform::RECT>& clip) override;
  void DrawPicture(const platform::RECT& target, const platform::Picture& picture,
                   const std::optional<platform::RECT>& clip) override;
  bool StartPage() override { return false; }
  bool EndPage() override { return false; }

 private:
  QPainter& painter_;
  int width_;
  int height_;
};

}  // namespace heron::desk

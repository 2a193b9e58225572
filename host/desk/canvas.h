// Stands in for painting on a screen until a Canvas over QPainter exists: nothing is drawn.
#pragma once

#include "platform/canvas.h"

class QPainter;

namespace heron::desk {

class ScreenCanvas final : public platform::Canvas {
 public:
  explicit ScreenCanvas(QPainter&) {}
  int Escape(uint32_t, std::span<const uint8_t>, std::span<uint8_t>) override { return 0; }
  int DeviceCap(platform::DeviceCap) override { return 0; }
  platform::SIZE MeasureText(const platform::LOGFONTW&, std::u16string_view) override { return {}; }
  std::vector<platform::FontFamily> FontFamilies() override { return {}; }
  void DrawLine(const platform::TextDrawing&, const std::optional<platform::RECT>&) override {}
  void FillRect(const platform::RECT&, platform::COLORREF, const std::optional<platform::RECT>&) override {}
  void DrawPicture(const platform::RECT&, const platform::Picture&, const std::optional<platform::RECT>&) override {}
  bool StartPage() override { return false; }
  bool EndPage() override { return false; }
};

}  // namespace heron::desk

// Pixels of pictures, and pictures at their own size (canvas.h).
#include "platform/api/canvas.h"

namespace heron::platform {
namespace {

constexpr uint32_t kWhite = 255;

struct Channels {
  uint32_t alpha, red, green, blue;
};

constexpr Channels Split(uint32_t pixel) {
  return {pixel >> 24, pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255};
}

/// A colour as it shows on white, rounded.
constexpr uint32_t OnWhite(uint32_t colour, uint32_t alpha) {
  return (colour * alpha + kWhite * (255 - alpha) + 127) / 255;
}

}  // namespace

std::vector<uint8_t> GreyLevels(const PixelImage& image) {
  std::vector<uint8_t> levels;
  levels.reserve(image.pixels.size());
  for (const uint32_t pixel : image.pixels) {
    const auto [alpha, red, green, blue] = Split(pixel);
    const uint32_t grey = 30 * OnWhite(red, alpha) + 59 * OnWhite(green, alpha) + 11 * OnWhite(blue, alpha);
    levels.push_back(static_cast<uint8_t>(grey / 100));
  }
  return levels;
}

PixelImage FromGreyLevels(int width, int height, std::span<const uint8_t> levels) {
  PixelImage image{.width = width, .height = height, .pixels = {}};
  image.pixels.reserve(levels.size());
  for (const uint8_t level : levels) image.pixels.push_back(0xFF000000 | uint32_t{level} * 0x010101);
  return image;
}

bool DrawResourceAt(Canvas& canvas, uint32_t number, POINT at, const std::optional<RECT>& clip) {
  const std::optional<SIZE> size = canvas.ResourceSize(number);
  if (!size) return false;
  canvas.DrawResource(number, {at.x, at.y, at.x + size->cx, at.y + size->cy}, clip);
  return true;
}

}  // namespace heron::platform

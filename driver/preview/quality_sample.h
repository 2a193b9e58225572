// The sample picture of the quality page: what the settings do to the pixels of a job, computed on grey levels.
//
// Pure arithmetic on pictures in memory; who calls it loads and shows them. A picture is rows of bytes, 0 black to 255
// white, from the upper left corner.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "uistate/ui_state.h"

namespace heron::preview {

enum class Halftone : int32_t { kNone = 0, kScreen = 1, kErrorDiffusion = 2 };

/// What decides on the sample.
struct QualitySample {
  int32_t density = 0;       ///< -5 light to 1 dark; 0 leaves the levels alone, as any other number does
  int32_t halftoneMode = 0;  ///< of the photo, as Halftone; text and lines always have the screen
  int32_t screen = 0;        ///< 3 the fine screen of 4 by 4 dots, any other the one of 3 by 3
  int32_t saveToner = 0;     ///< 1 lightens every second dot

  bool operator==(const QualitySample&) const = default;
};

QualitySample DescribeQuality(const UiState& ui);

/// Numbers of the pictures that the sample is made of.
struct QualitySources {
  uint32_t source, mask;
};
QualitySources QualitySourcesOf(const UiState& ui);

struct GreyPicture {
  size_t width = 0;
  size_t height = 0;
  std::vector<uint8_t> levels;  ///< width times height
};

/// The grey level of a colour.
constexpr uint8_t GreyOf(uint8_t red, uint8_t green, uint8_t blue) {
  return static_cast<uint8_t>((30 * red + 59 * green + 11 * blue) / 100);
}

/// The table of a density from -5 to 1 other than 0; null for any other.
const std::array<uint8_t, 256>* ToneTable(int32_t density);

/// Computes the sample of `source`, whose photo is where `mask` is black. False, with `source` untouched, if the two
/// differ in size. `mask` becomes the photo part as it was processed.
bool RenderQualitySample(GreyPicture& source, GreyPicture& mask, const QualitySample& sample);

/// The settings of the quality page in words, "Print in black: On; ...". The texts are in use.
std::u16string SayQuality(const UiState& ui);

}  // namespace heron::preview

#include "preview/quality_sample.h"

#include <algorithm>
#include <utility>

#include "catalog/strings.h"
#include "engine/engine.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "rules/control_tables.h"

namespace heron::preview {

using engine::IsOn;
using engine::Setting;

namespace {

constexpr uint8_t kWhite = 255;

// -- tone

constexpr std::array<int, 5> kLevels = {0, 64, 128, 192, 255};

/// Where a density's curve takes each of kLevels.
struct ToneEntries {
  int32_t density;
  std::array<int, 5> out;
};
constexpr ToneEntries kToneEntries[] = {
    {1, {0, 37, 102, 183, 255}},    {-1, {45, 98, 152, 201, 255}},  {-2, {75, 123, 168, 204, 255}},
    {-3, {34, 144, 182, 210, 255}}, {-4, {58, 165, 197, 218, 255}}, {-5, {110, 191, 210, 221, 255}},
};

using Tones = std::array<uint8_t, 256>;

/// A cubic through the entries that never turns back: slopes at the entries are harmonic means of the neighbours'.
constexpr Tones CurveThrough(const std::array<int, 5>& out) {
  std::array<double, 4> rise{};
  for (size_t i = 0; i < 4; ++i) rise[i] = double(out[i + 1] - out[i]) / (kLevels[i + 1] - kLevels[i]);
  std::array<double, 5> slope{rise[0], 0, 0, 0, rise[3]};
  for (size_t i = 1; i < 4; ++i) slope[i] = 2 * rise[i - 1] * rise[i] / (rise[i - 1] + rise[i]);
  Tones tones{};
  for (size_t i = 0; i < 4; ++i) {
    const double width = kLevels[i + 1] - kLevels[i];
    for (int level = kLevels[i]; level <= kLevels[i + 1]; ++level) {
      const double t = (level - kLevels[i]) / width;
      const double u = 1 - t;
      const double value = out[i] * u * u * (1 + 2 * t) + out[i + 1] * t * t * (1 + 2 * u) +
                           width * t * u * (slope[i] * u - slope[i + 1] * t);
      tones[static_cast<size_t>(level)] = static_cast<uint8_t>(value + 0.5);
    }
  }
  return tones;
}

constexpr auto kToneTables = [] {
  std::array<Tones, std::size(kToneEntries)> tables{};
  for (size_t i = 0; i < tables.size(); ++i) tables[i] = CurveThrough(kToneEntries[i].out);
  return tables;
}();

void ApplyTones(GreyPicture& picture, const Tones& tones) {
  for (uint8_t& level : picture.levels) level = tones[level];
}

// -- halftone

constexpr uint8_t LightOf(int level) {
  return static_cast<uint8_t>((level * 7 + 5) / 10);
}
constexpr uint8_t DarkOf(int level) {
  return static_cast<uint8_t>(std::min((level * 13 + 5) / 10, int{kWhite}));
}

constexpr int32_t kFineScreen = 3;
constexpr int kFine[4][4] = {{15, 11, 4, 2}, {5, 9, 8, 12}, {3, 10, 7, 14}, {16, 4, 13, 1}};  // 4 twice, 6 never
constexpr int kCoarse[3][3] = {{8, 5, 2}, {3, 4, 6}, {1, 7, 9}};

/// Both results of every level, and how its place in the screen's steps compares with an entry.
template <size_t N, typename Step>
void ApplyScreen(GreyPicture& picture, const int (&matrix)[N][N], Step step) {
  std::array<uint8_t, 256> steps, light, dark;
  for (int level = 0; level <= kWhite; ++level) {
    steps[static_cast<size_t>(level)] = static_cast<uint8_t>(step(level));
    light[static_cast<size_t>(level)] = LightOf(level);
    dark[static_cast<size_t>(level)] = DarkOf(level);
  }
  uint8_t* pixel = picture.levels.data();
  for (size_t y = 0; y < picture.height; ++y) {
    for (size_t x = 0; x < picture.width; ++x, ++pixel)
      *pixel = steps[*pixel] < matrix[y % N][x % N] ? light[*pixel] : dark[*pixel];
  }
}

constexpr int ShareOf(int error, int weight) {
  return (error * weight + 8) / 16;  // truncates towards zero
}

/// Shares that would leave the row are dropped. The rows of error have two places more at each end, which take them.
void DiffuseErrors(GreyPicture& picture) {
  constexpr size_t kBefore = 2, kAround = 4;
  constexpr int kThreshold = 129;
  std::vector<int> here(picture.width + kAround), below(picture.width + kAround);
  uint8_t* pixel = picture.levels.data();
  for (size_t y = 0; y < picture.height; ++y) {
    for (size_t x = 0; x < picture.width; ++x, ++pixel) {
      const size_t at = x + kBefore;
      const int value = *pixel + here[at];
      *pixel = value < kThreshold ? LightOf(*pixel) : DarkOf(*pixel);
      const int error = value - *pixel;
      const int two = ShareOf(error, 2), four = ShareOf(error, 4);
      here[at + 1] += four;
      here[at + 2] += two;
      below[at - 2] += two;
      below[at - 1] += two;
      below[at] += four;
      below[at + 1] += two;
    }
    here.swap(below);
    std::ranges::fill(below, 0);
  }
}

void ApplyHalftone(GreyPicture& picture, Halftone mode, int32_t screen) {
  if (mode == Halftone::kErrorDiffusion) return DiffuseErrors(picture);
  if (mode != Halftone::kScreen) return;
  if (screen == kFineScreen) return ApplyScreen(picture, kFine, [](int level) { return level * 16 / 255; });
  ApplyScreen(picture, kCoarse, [](int level) { return (level * 9 + 128) / 255; });
}

// -- toner

void SaveToner(GreyPicture& picture) {
  constexpr int kLighter = 100;
  for (size_t y = 0; y < picture.height; ++y) {
    for (size_t x = y % 2; x < picture.width; x += 2) {
      uint8_t& level = picture.levels[y * picture.width + x];
      level = static_cast<uint8_t>(std::min(level + kLighter, int{kWhite}));
    }
  }
}

void Process(GreyPicture& picture, const QualitySample& sample, Halftone mode) {
  if (const Tones* tones = ToneTable(sample.density)) ApplyTones(picture, *tones);
  ApplyHalftone(picture, mode, sample.screen);
  if (sample.saveToner == 1) SaveToner(picture);
}

}  // namespace

const std::array<uint8_t, 256>* ToneTable(int32_t density) {
  const auto row = std::ranges::find(kToneEntries, density, &ToneEntries::density);
  return row == std::end(kToneEntries) ? nullptr : &kToneTables[static_cast<size_t>(row - kToneEntries)];
}

QualitySample DescribeQuality(const UiState& ui) {
  const bool saves = IsOn<u"EngSaveToner_Check">(ui) || IsOn<u"DraftPrint">(ui);
  const uint16_t dither_type = Setting<u"lpDitherType">(ui);
  const uint16_t dither = Setting<u"lpDither">(ui);
  QualitySample sample;
  sample.density = saves ? 0 : static_cast<int16_t>(Setting<u"Density">(ui));
  sample.halftoneMode = dither_type <= 1 ? dither_type + 1 : 0;
  sample.screen = Setting<u"lpGraphicsMode">(ui) == value::lpGraphicsMode::kRaster ? 2
                  : dither >= 2 && dither <= 4                                     ? dither - 1
                                                                                   : 0;
  sample.saveToner = IsOn<u"SaveToner">(ui) ? 1 : 0;
  return sample;
}

QualitySources QualitySourcesOf(const UiState& ui) {
  constexpr uint32_t kInGreys = 11202, kTextInBlack = 11203, kAllBlack = 11204, kMask = 11205;
  if (!IsOn<u"PrintCAD_Check">(ui)) return {kInGreys, kMask};
  const bool text_only = Setting<u"lpPrintCADMode">(ui) == value::lpPrintCADMode::kTextAndGraphics;
  return {text_only ? kTextInBlack : kAllBlack, kMask};
}

std::u16string SayQuality(const UiState& ui) {
  constexpr engine::ControlIndex kTold[] = {
      engine::Control(u"PrintCAD_Check"),    engine::Control(u"lpPrintCADMode.TextAndGraphics"),
      engine::Control(u"lpBrushPtPit.Fine"), engine::Control(u"EngSaveToner_Check"),
      engine::Control(u"DraftPrint"),        engine::Control(u"lpSmoothing")};
  std::u16string text;
  for (const engine::ControlIndex control : kTold) {
    const engine::ControlRow& row = engine::kControls[control];
    const uint16_t value = *FieldsOf(ui, engine::ParamIndexOfControl(control)).value;
    const char16_t* const label = engine::GetValueLabel(row.id, value);
    const bool told = label != nullptr &&
                      (row.id != engine::ControlId(u"lpPrintCADMode.TextAndGraphics") || IsOn<u"PrintCAD_Check">(ui));
    if (told) text += platform::ExpandText(text.empty() ? u"%s: %s" : u"; %s: %s", {GetUiString(row.label), label});
  }
  return text;
}

bool RenderQualitySample(GreyPicture& source, GreyPicture& mask, const QualitySample& sample) {
  if (source.width != mask.width || source.height != mask.height || source.levels.size() != mask.levels.size())
    return false;
  for (size_t i = 0; i < source.levels.size(); ++i) {
    if (mask.levels[i] == 0) mask.levels[i] = std::exchange(source.levels[i], kWhite);
  }
  Process(source, sample, Halftone::kScreen);
  Process(mask, sample, static_cast<Halftone>(sample.halftoneMode));
  for (size_t i = 0; i < source.levels.size(); ++i) {
    if (mask.levels[i] != kWhite) source.levels[i] = mask.levels[i];
  }
  return true;
}

}  // namespace heron::preview

// The quality sample against a second computation that follows the definition pixel by pixel, and against laws.
#include "preview/quality_sample.h"

#include <gtest/gtest.h>

#include <random>

namespace heron::preview {
namespace {

GreyPicture RandomPicture(std::mt19937& dice, size_t width, size_t height, bool mask) {
  GreyPicture picture{width, height, {}};
  for (size_t i = 0; i < width * height; ++i)
    picture.levels.push_back(static_cast<uint8_t>(mask && dice() % 3 != 0 ? (dice() % 2) * 255 : dice() % 256));
  return picture;
}

int Light(int p) {
  return (p * 7 + 5) / 10;
}
int Dark(int p) {
  return std::min(255, (p * 13 + 5) / 10);
}

void Screen(std::vector<std::vector<int>>& rows, int screen) {
  const std::vector<std::vector<int>> fine = {{15, 11, 4, 2}, {5, 9, 8, 12}, {3, 10, 7, 14}, {16, 4, 13, 1}};
  const std::vector<std::vector<int>> coarse = {{8, 5, 2}, {3, 4, 6}, {1, 7, 9}};
  for (size_t y = 0; y < rows.size(); ++y) {
    for (size_t x = 0; x < rows[y].size(); ++x) {
      int& p = rows[y][x];
      const bool light = screen == 3 ? p * 16 / 255 < fine[y % 4][x % 4] : (p * 9 + 128) / 255 < coarse[y % 3][x % 3];
      p = light ? Light(p) : Dark(p);
    }
  }
}

void Diffuse(std::vector<std::vector<int>>& rows) {
  if (rows.empty()) return;
  const int width = static_cast<int>(rows[0].size());
  std::vector<std::vector<int>> errors(rows.size() + 1, std::vector<int>(rows[0].size()));
  for (size_t y = 0; y < rows.size(); ++y) {
    for (int x = 0; x < width; ++x) {
      int& p = rows[y][static_cast<size_t>(x)];
      const int v = p + errors[y][static_cast<size_t>(x)];
      p = v < 129 ? Light(p) : Dark(p);
      const int e = v - p;
      const auto give = [&](size_t line, int to, int weight) {
        if (to >= 0 && to < width) errors[line][static_cast<size_t>(to)] += (e * weight + 8) / 16;
      };
      give(y, x + 1, 4);
      give(y, x + 2, 2);
      give(y + 1, x - 2, 2);
      give(y + 1, x - 1, 2);
      give(y + 1, x, 4);
      give(y + 1, x + 1, 2);
    }
  }
}

std::vector<std::vector<int>> Processed(std::vector<std::vector<int>> rows, const QualitySample& sample, int mode) {
  for (auto& row : rows) {
    for (int& p : row) {
      if (const auto* tones = ToneTable(sample.density)) p = (*tones)[static_cast<size_t>(p)];
    }
  }
  if (mode == 1) Screen(rows, sample.screen);
  if (mode == 2) Diffuse(rows);
  for (size_t y = 0; y < rows.size() && sample.saveToner == 1; ++y) {
    for (size_t x = 0; x < rows[y].size(); ++x) {
      if ((x + y) % 2 == 0) rows[y][x] = std::min(255, rows[y][x] + 100);
    }
  }
  return rows;
}

std::vector<uint8_t> Expected(const GreyPicture& source, const GreyPicture& mask, const QualitySample& sample) {
  std::vector<std::vector<int>> text(source.height, std::vector<int>(source.width)), photo = text;
  for (size_t y = 0; y < source.height; ++y) {
    for (size_t x = 0; x < source.width; ++x) {
      const int s = source.levels[y * source.width + x], m = mask.levels[y * source.width + x];
      text[y][x] = m == 0 ? 255 : s;
      photo[y][x] = m == 0 ? s : m;
    }
  }
  text = Processed(text, sample, 1);
  photo = Processed(photo, sample, sample.halftoneMode);
  std::vector<uint8_t> levels;
  for (size_t y = 0; y < source.height; ++y) {
    for (size_t x = 0; x < source.width; ++x)
      levels.push_back(static_cast<uint8_t>(photo[y][x] != 255 ? photo[y][x] : text[y][x]));
  }
  return levels;
}

TEST(QualitySample, AgreesWithItsDefinition) {
  std::mt19937 dice(3);
  for (int i = 0; i < 400; ++i) {
    const size_t width = dice() % 17, height = dice() % 13;
    GreyPicture source = RandomPicture(dice, width, height, false), mask = RandomPicture(dice, width, height, true);
    const QualitySample sample{static_cast<int32_t>(dice() % 8) - 5, static_cast<int32_t>(dice() % 3),
                               static_cast<int32_t>(dice() % 4), static_cast<int32_t>(dice() % 2)};
    const std::vector<uint8_t> expected = Expected(source, mask, sample);
    ASSERT_TRUE(RenderQualitySample(source, mask, sample));
    ASSERT_EQ(source.levels, expected) << width << "x" << height << " density " << sample.density << " mode "
                                       << sample.halftoneMode << " screen " << sample.screen;
  }
}

TEST(QualitySample, Laws) {
  std::mt19937 dice(5);
  for (int32_t density = -5; density <= 1; ++density) {
    for (int32_t mode = 0; mode <= 2; ++mode) {
      for (int32_t screen = 0; screen <= 3; ++screen) {
        GreyPicture white{12, 12, std::vector<uint8_t>(144, 255)};
        GreyPicture mask = RandomPicture(dice, 12, 12, true);
        for (uint8_t& level : mask.levels) level = level < 128 ? 0 : 255;
        ASSERT_TRUE(RenderQualitySample(white, mask, {density, mode, screen, 1}));
        EXPECT_EQ(white.levels, std::vector<uint8_t>(144, 255)) << density << mode << screen;
      }
    }
  }
  // One pixel a row: an error goes down only, a quarter of it.
  GreyPicture column{1, 2, {100, 100}}, photo{1, 2, {0, 0}};
  ASSERT_TRUE(RenderQualitySample(column, photo, {0, 2, 0, 0}));
  EXPECT_EQ(column.levels, (std::vector<uint8_t>{70, 70}));
  GreyPicture small{1, 1, {7}};
  GreyPicture other{2, 1, {0, 0}};
  EXPECT_FALSE(RenderQualitySample(small, other, {}));
  EXPECT_EQ(small.levels[0], 7);
}

TEST(QualitySample, ToneTables) {
  const std::pair<int32_t, std::array<int, 5>> entries[] = {
      {1, {0, 37, 102, 183, 255}},    {-1, {45, 98, 152, 201, 255}},  {-2, {75, 123, 168, 204, 255}},
      {-3, {34, 144, 182, 210, 255}}, {-4, {58, 165, 197, 218, 255}}, {-5, {110, 191, 210, 221, 255}}};
  for (const auto& [density, out] : entries) {
    const auto& tones = *ToneTable(density);
    EXPECT_TRUE(std::ranges::is_sorted(tones)) << density;
    const int in[] = {0, 64, 128, 192, 255};
    for (size_t i = 0; i < 5; ++i) EXPECT_EQ(tones[static_cast<size_t>(in[i])], out[i]) << density << " at " << in[i];
  }
  EXPECT_EQ(ToneTable(0), nullptr);
  EXPECT_EQ(ToneTable(2), nullptr);
}

}  // namespace
}  // namespace heron::preview

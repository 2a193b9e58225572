// The sheet that holds two pages of a paper.
//
// Reader: paper_rule_tables.cc, which repeats the rows for the families below by adding a family's bits to both codes.
// A paper without a row stays as it is. Not the halves of settings/paper_feed_tables.h, which differ for 332, 334 and
// their twins. Papers that exist only as such a sheet are the substituted ones of settings/papers.h (PaperSubstitute).
#pragma once

#include <array>
#include <cstdint>

namespace heron::engine {

struct DoubledSheet {
  uint16_t paper;
  uint16_t doubled;
};

// clang-format off
inline constexpr auto kPlainDoubling = std::to_array<DoubledSheet>({
    {9, 8},       {2057, 8},    {11, 9},      {2059, 9},    {70, 11},     {13, 12},
    {2061, 12},   {88, 13},     {1, 3},       {2049, 3},    {6, 1},       {2054, 1},
    {361, 360},   {2409, 360},  {333, 5},     {2381, 5},    {334, 2054},  {2382, 2054},
});
inline constexpr std::array<uint16_t, 3> kDoublingFamilies = {0, 0x1000, 0x2000};
// clang-format on

}  // namespace heron::engine

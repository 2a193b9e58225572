// How papers lie in the device: feed class, halves and rotated pairs. Read by binding.cc.
//
// Codes are those of the plain family; callers clear the family's bits first.
#pragma once

#include <array>
#include <cstdint>

namespace heron {

/// A paper and its feed class: 1 long edge first, 2 short edge first.
struct PaperFeed {
  uint16_t paper;
  uint8_t feedClass;
};

/// A paper and the code of the size twice as large.
struct HalfSize {
  uint16_t paper;
  uint16_t doubled;
};

/// A rotated code and its plain code.
struct RotatedPair {
  uint16_t rotated;
  uint16_t plain;
};

// clang-format off
inline constexpr auto kPaperFeedTable = std::to_array<PaperFeed>({
    {9, 1},    {2057, 1}, {13, 1},   {2061, 1}, {1, 1},    {2049, 1}, {7, 1},    {2055, 1}, {332, 1},  {2380, 1}, {333, 1},
    {2381, 1}, {334, 1},  {2382, 1}, {361, 1},  {2409, 1}, {34, 1},   {2082, 1}, {28, 1},   {2076, 1}, {1033, 1}, {1025, 1},
    {8, 2},    {2059, 2}, {70, 2},   {12, 2},   {88, 2},   {42, 2},   {320, 2},  {330, 2},  {331, 2},  {3, 2},    {5, 2},
    {2054, 2}, {360, 2},  {340, 2},  {14, 2},   {341, 2},  {342, 2},  {343, 2},  {370, 2},  {371, 2},  {91, 2},   {372, 2},
    {31, 2},   {27, 2},   {37, 2},   {19, 2},   {20, 2},   {38, 2},   {43, 2},   {390, 2},
    {512, 2},  {513, 2},  {514, 2},  {515, 2},  {516, 2},  {517, 2},  {518, 2},  {519, 2},  {520, 2},  {521, 2},  {256, 2},
});
static_assert(kPaperFeedTable.size() == 63);

inline constexpr auto kHalfSizeTable = std::to_array<HalfSize>({
    {9, 8},    {2057, 8},   {11, 9},   {2059, 9},   {70, 11}, {13, 12}, {2061, 12}, {88, 13}, {1, 3},   {2049, 3},
    {6, 1},    {2054, 1},   {361, 360}, {2409, 360}, {332, 330}, {2380, 330}, {333, 5}, {2381, 5}, {334, 6}, {2382, 6},
});
static_assert(kHalfSizeTable.size() == 20);

inline constexpr auto kRotatedPairTable = std::to_array<RotatedPair>({
    {2057, 9}, {2061, 13}, {2049, 1}, {2055, 7}, {2082, 34}, {2076, 28}, {2409, 361}, {2380, 332}, {2381, 333}, {2382, 334},
});
static_assert(kRotatedPairTable.size() == 10);
// clang-format on

}  // namespace heron

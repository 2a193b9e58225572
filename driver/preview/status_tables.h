// The symbols of the status panel: the number of each, and the settings that show it.
//
// Reader: status_view.cc. A row of pictures is a run of codes of one group; image and mask count on from the first
// code, a mask of kOneMask serves all of them. A feature's number is what the icon order lists. To add a symbol: its
// row here, its file in resources/pictures.
#pragma once

#include <algorithm>
#include <cstdint>

#include "preview/layer.h"

namespace heron::preview {

/// The symbols of the second row in the order in which they are looked at; never renumbered.
enum Feature : uint8_t {
  kTransparency = 1,
  kImageShift = 2,
  kChapter = 3,
  kFold = 4,
  kAuthentication = 5,
  kPile = 6,
  kPartition = 7,
  kBookBinding = 8,
  kExposure = 9,
  kStampMode = 10,
  kPerfectBinding = 11,
};
inline constexpr uint8_t kFeatureCount = 11;

enum class Group : uint8_t { kJob, kSheet, kOverlay, kStamp, kDepartment, kFeature };

enum class SymbolMask : uint8_t { kByCode, kOne };

struct SymbolRow {
  Group group;
  uint8_t feature;      ///< of Group::kFeature, else 0
  uint8_t first, last;  ///< codes
  uint16_t image, mask;
  uint16_t words;  ///< text of the first code; what is usual has none
  SymbolMask maskRun = SymbolMask::kByCode;
};

// clang-format off
inline constexpr SymbolRow kSymbols[] = {
    // group             feature         codes    image  mask   words
    {Group::kJob,        0,               0,  8,  15590, 15599, 32200},
    {Group::kJob,        0,               9,  9,  15610, 15611, 32209},
    {Group::kJob,        0,              10, 10,  15620, 15621, 32210},
    {Group::kJob,        0,              11, 11,  15622, 15623, 32211},
    {Group::kSheet,      0,               1,  9,  15570, 15580, 32212},
    {Group::kSheet,      0,               0,  0,  15579, 15589, 32221},
    {Group::kSheet,      0,              10, 12,  15612, 15615, 32222},
    {Group::kOverlay,    0,               1,  3,  15510, 15513, 32225},
    {Group::kOverlay,    0,               4,  4,  15839, 15840, 32228},
    {Group::kStamp,      0,               0,  2,  15500, 15503, 32229},
    {Group::kDepartment, 0,               1,  1,  15644, 15643, 32232},
    {Group::kFeature,    kTransparency,   0,  2,  15520, 15523, 32233},
    {Group::kFeature,    kImageShift,     1,  1,  15530, 15531, 32236},
    {Group::kFeature,    kChapter,        1,  1,  15540, 15541, 32237},
    {Group::kFeature,    kFold,           1,  5,  15550, 15565, 32238},
    {Group::kFeature,    kFold,           6, 15,  15555, 15630, 32243},
    {Group::kFeature,    kAuthentication, 1,  1,  15642, 15641, 32253},
    {Group::kFeature,    kPile,           1,  1,  15646, 15645, 32254},
    {Group::kFeature,    kPartition,      1,  1,  15650, 15648, 32255},
    {Group::kFeature,    kBookBinding,    1,  5,  16245, 16240, 32256},
    {Group::kFeature,    kExposure,       1,  5,  16260, 16265, 32261, SymbolMask::kOne},
    {Group::kFeature,    kStampMode,      1,  1,  15656, 15655, 32266},
    {Group::kFeature,    kPerfectBinding, 1,  1,  15660, 15661, 32267},
};
// clang-format on

constexpr const SymbolRow* FindSymbol(Group group, uint8_t feature, uint8_t code) {
  const auto* const row = std::ranges::find_if(kSymbols, [&](const SymbolRow& r) {
    return r.group == group && r.feature == feature && code >= r.first && code <= r.last;
  });
  return row == std::end(kSymbols) ? nullptr : row;
}

namespace status_tables_internal {
consteval int CountPictures() {
  int count = 0;
  for (const SymbolRow& row : kSymbols) {
    const int codes = row.last - row.first + 1;
    count += codes + (row.maskRun == SymbolMask::kOne ? 1 : codes);
  }
  return count;
}
static_assert(CountPictures() == 132);
}  // namespace status_tables_internal

/// The fold symbol of a value of `lpFold`; the value 121 has another one for booklets.
struct FoldRow {
  uint16_t first, last;
  uint8_t code;  ///< of the first value
  bool counts;   ///< each further value has the next code, otherwise the same
};
inline constexpr uint8_t kBookletFold = 15;
// clang-format off
inline constexpr FoldRow kFolds[] = {
    { 11,  11,  1, false},
    { 12,  12,  2, false},
    { 20,  22,  3, false},
    { 31,  34,  4, true},
    { 41,  41,  8, false},
    { 42,  42,  9, false},
    { 51,  51, 10, false},
    { 52,  52, 11, false},
    {111, 111, 12, false},
    {112, 112, 13, false},
    {121, 121, 14, false},
};
// clang-format on

/// What an output method lays over the job symbol.
struct MethodRow {
  uint16_t method;
  uint8_t symbol;
};
inline constexpr MethodRow kMethodSymbols[] = {{2, 4}, {3, 6}, {4, 6}, {5, 9}, {6, 5}, {7, 11}};

/// The place of a symbol: `fifths` of the panel's width and a few pixels.
struct SymbolPlace {
  Group group;
  uint8_t fifths;
  int16_t dx, y;
};
inline constexpr SymbolPlace kFirstRow[] = {
    {Group::kJob, 0, 3, 2},   {Group::kSheet, 1, 2, 3},      {Group::kOverlay, 2, 1, 2},
    {Group::kStamp, 3, 0, 2}, {Group::kDepartment, 4, 0, 3},
};
inline constexpr int16_t kFirstRowHeight = 40;
inline constexpr int16_t kSymbolWidth = 34;
inline constexpr int16_t kSecondRowHeight = 34;
inline constexpr int16_t kSecondRowY = 44;
/// By slot: what is added to so many steps.
inline constexpr int16_t kSlotOffsets[] = {3, 2, 1, 0, 0, 0};

}  // namespace heron::preview

// The pictures of the machine view: which units show which pictures, and what is lit.
//
// Reader: machine_view.cc. Of each table the first row that matches applies; 0 ends a row's pictures. A set of values
// is written as a mask of bits, Values(...). To add a unit: its rows here, its files in resources/pictures.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "preview/layer.h"

namespace heron::preview {

/// A set of values of a setting, each below 64.
constexpr uint64_t Values(std::initializer_list<uint16_t> values) {
  uint64_t set = 0;
  for (const uint16_t value : values) set |= uint64_t{1} << value;
  return set;
}
inline constexpr uint64_t kAnyValue = ~uint64_t{0};
constexpr bool Holds(uint64_t set, uint16_t value) {
  return set == kAnyValue || (value < 64 && (set >> value & 1) != 0);
}

enum class Need : uint8_t { kAny, kInstalled };

struct BodyRow {
  uint16_t sourceUnit;
  uint16_t pictures[2];
};

struct OutputRow {
  Need mailBins, saddle;
  uint64_t outputUnits;
  uint16_t pictures[2];
};

struct SourceRow {
  uint16_t mediaSource;
  uint64_t sourceUnits;
  uint16_t picture;
};

struct TrayRow {
  uint16_t outputTray;
  Need mailBins, saddle;
  bool withoutFold;  ///< only with FoldStaple_Check off
  uint64_t outputUnits;
  uint16_t below;  ///< laid by XOR before the picture, 0 for none
  uint16_t picture;
};

// clang-format off
inline constexpr BodyRow kBodies[] = {
    {1, {19000, 0}},
    {2, {19011, 0}},
    {3, {19012, 0}},
    {4, {19011, 19009}},
    {5, {19012, 19009}},
};

inline constexpr OutputRow kOutputUnits[] = {
    // mail bins        saddle            output units          pictures
    {Need::kAny,       Need::kAny,       Values({1}),          {19010, 0}},
    {Need::kInstalled, Need::kAny,       Values({2}),          {19013, 19002}},
    {Need::kInstalled, Need::kAny,       Values({3}),          {19013, 19006}},
    {Need::kInstalled, Need::kAny,       kAnyValue,            {0, 0}},
    {Need::kAny,       Need::kInstalled, Values({2}),          {19013, 19004}},
    {Need::kAny,       Need::kInstalled, Values({3}),          {19013, 19007}},
    {Need::kAny,       Need::kInstalled, kAnyValue,            {0, 0}},
    {Need::kAny,       Need::kAny,       Values({2}),          {19013, 19001}},
    {Need::kAny,       Need::kAny,       Values({3}),          {19013, 19003}},
    {Need::kAny,       Need::kAny,       Values({5}),          {19008, 0}},
    {Need::kAny,       Need::kAny,       Values({41, 42, 43}), {19013, 19005}},
};

inline constexpr SourceRow kLitSources[] = {
    {  1, kAnyValue,      19046},
    {  2, kAnyValue,      19047},
    {  4, kAnyValue,      19044},
    {258, Values({2, 4}), 19048},
    {258, Values({3, 5}), 19049},
    {259, Values({2, 4}), 19050},
    {270, Values({4, 5}), 19039},
};

inline constexpr TrayRow kLitTrays[] = {
    // tray  mail bins          saddle            no fold  output units          below  picture
    { 11,    Need::kInstalled, Need::kAny,       false,   Values({2, 3}),           0, 19036},
    { 11,    Need::kAny,       Need::kInstalled, false,   Values({2, 3}),           0, 19034},
    { 11,    Need::kAny,       Need::kAny,       false,   Values({2, 3}),           0, 19030},
    { 11,    Need::kAny,       Need::kAny,       false,   Values({5}),          19051, 19037},
    { 11,    Need::kAny,       Need::kAny,       false,   Values({41, 42, 43}),     0, 19032},
    { 21,    Need::kInstalled, Need::kAny,       false,   Values({2, 3}),           0, 19036},
    { 31,    Need::kAny,       Need::kAny,       false,   Values({2}),              0, 19031},
    { 31,    Need::kAny,       Need::kAny,       false,   Values({3}),              0, 19045},
    { 31,    Need::kAny,       Need::kAny,       false,   Values({5}),          19052, 19038},
    { 31,    Need::kAny,       Need::kAny,       false,   Values({41, 42, 43}),     0, 19033},
    { 41,    Need::kInstalled, Need::kAny,       false,   Values({3}),              0, 19045},
    { 51,    Need::kAny,       Need::kAny,       true,    Values({3}),              0, 19031},
    {101,    Need::kInstalled, Need::kAny,       false,   Values({2, 3}),           0, 19043},
    {102,    Need::kInstalled, Need::kAny,       false,   Values({2, 3}),           0, 19042},
    {103,    Need::kInstalled, Need::kAny,       false,   Values({2, 3}),           0, 19041},
    {104,    Need::kInstalled, Need::kAny,       false,   Values({2, 3}),           0, 19040},
};
// clang-format on

static_assert(std::size(kBodies) == 5 && std::size(kOutputUnits) == 11 && std::size(kLitSources) == 7 &&
              std::size(kLitTrays) == 16);

/// The saddle unit lights for folded sheets that go to none of the trays.
inline constexpr uint16_t kLitSaddle = 19035;
inline constexpr uint64_t kSaddleOutputUnits = Values({2, 3});
inline constexpr uint64_t kTraysBesideSaddle = Values({11, 31, 51});

}  // namespace heron::preview

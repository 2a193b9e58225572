// The pictures of the paper view: the number of each, and its place on the sheet.
//
// Reader: paper_stack.cc. A row is a run of codes of one element. Masks run like the images unless the codes share one.
// The boxes are those of the first page; what moves (second page, margin, holes) is added by the reader. They follow
// the pictures: to add one, draw it in modules/texts/pictures and write its row here.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "preview/layer.h"

namespace heron::preview {

enum class Element : uint8_t {
  kBackground,         ///< code 0
  kBookletBackground,  ///< bookletSide
  kBlockBackground,    ///< adhesiveEdge
  kForeground,         ///< code 0
  kBookletForeground,  ///< bookletSide
  kPages,              ///< layoutClass
  kOtherPages,         ///< layoutClass; one of two sheets' pages in the other order
  kReducedPage,        ///< layoutClass
  kReducedMargin,      ///< marginEdge, 3 more for two pages
  kSolidBorder,        ///< layoutClass
  kDottedBorder,       ///< layoutClass
  kBindMark,           ///< bindMark
  kMargin,             ///< marginEdge
  kOrder,              ///< OrderCode
  kOnePerSheet,        ///< onePerSheet
  kStapleShadow,       ///< stapleMark
  kHole,               ///< code 0
  kStaple,             ///< stapleMark
  kDuplex,             ///< DuplexCode
  kZoomArrow,          ///< zoomMark
  kBlockZoomArrow,     ///< zoomMark
};

enum class MaskRun : uint8_t { kNone, kByCode, kCommon };

struct PictureRow {
  Element element;
  uint8_t first, last;  ///< codes
  uint16_t image;
  uint8_t step;    ///< from the picture of a code to that of the next
  int16_t turned;  ///< from the picture of a portrait sheet to that of a landscape one
  MaskRun maskRun;
  uint16_t mask;
  Box portrait, landscape;
};

/// What the sheet fills of the stack's frame.
inline constexpr Box kPortraitSheet = {16, 2, 68, 90};
inline constexpr Box kLandscapeSheet = {2, 16, 90, 68};

inline constexpr int16_t kSecondPage = 45;   ///< from the first of two pages to the second
inline constexpr int16_t kMarginShift = 4;   ///< of pages away from a margin
inline constexpr int16_t kReducedShift = 3;  ///< of a reduced page
inline constexpr int16_t kHoleInset = 8;     ///< from the edge to the middle of a hole
inline constexpr int16_t kHoleDistance = 6;  ///< from the middle of the edge to that of one of two holes

// Codes that join several fields.

/// Orders 1 and 2 belong to the layout of two pages (class 1), 3 to 6 to the others (2 to 5).
inline constexpr uint8_t kNoCode = 255;
inline constexpr uint8_t kOrdersPerSheet = 2 + 4 * 4;
constexpr uint8_t OrderCode(uint8_t layout_class, uint8_t order) {
  const uint8_t layout = layout_class % 8;
  const uint8_t sheets = layout_class >= 8 ? kOrdersPerSheet : uint8_t{0};
  if (layout == 1 && (order == 1 || order == 2)) return static_cast<uint8_t>(sheets + order - 1);
  if (layout >= 2 && layout <= 5 && order >= 3 && order <= 6)
    return static_cast<uint8_t>(sheets + 2 + (layout - 2) * 4 + order - 3);
  return kNoCode;
}

constexpr uint8_t DuplexCode(uint8_t edge, uint8_t flip) {
  const bool known = edge >= 1 && edge <= 3 && (flip == 4 || flip == 5);
  return known ? static_cast<uint8_t>((edge - 1) * 2 + flip - 4) : kNoCode;
}

// clang-format off
inline constexpr PictureRow kPaperPictures[] = {
    // element                   codes   image step turned  mask                     portrait           landscape
    {Element::kBackground,          0,  0, 15000, 1,   1, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kBookletBackground,   1,  1, 15002, 1,   0, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kBookletBackground,   0,  0, 15003, 1,   0, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kBookletBackground,   2,  2, 15004, 1,   0, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kBlockBackground,     1,  3, 16030, 1,   0, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kForeground,          0,  0, 15070, 1,   1, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kBookletForeground,   0,  2, 15072, 1,   0, MaskRun::kNone,       0, { 0,  0, 100, 100}, { 0,  0, 100, 100}},
    {Element::kPages,               0,  5, 15080, 2,   1, MaskRun::kNone,       0, {18,  5,  64,  84}, { 5, 18,  84,  64}},
    {Element::kPages,               8, 13, 15092, 2,   1, MaskRun::kNone,       0, {20,  3,  60,  42}, { 3, 20,  42,  60}},
    {Element::kOtherPages,          8, 13, 15984, 2,   1, MaskRun::kNone,       0, {20,  3,  60,  42}, { 3, 20,  42,  60}},
    {Element::kReducedPage,         0,  0, 15110, 1,   1, MaskRun::kNone,       0, {22, 10,  56,  74}, {10, 22,  74,  56}},
    {Element::kReducedPage,         8,  8, 15113, 1,  -1, MaskRun::kNone,       0, {24,  6,  52,  36}, { 6, 24,  36,  52}},
    {Element::kReducedMargin,       1,  3, 15250, 1,   4, MaskRun::kNone,       0, {22, 10,  56,  74}, {10, 22,  74,  56}},
    {Element::kReducedMargin,       4,  6, 15258, 1,   4, MaskRun::kNone,       0, {24,  6,  52,  36}, { 6, 24,  36,  52}},
    {Element::kSolidBorder,         1,  5, 15200, 2,   1, MaskRun::kCommon, 15240, {18,  5,  64,  84}, { 5, 18,  84,  64}},
    {Element::kSolidBorder,         9, 13, 15210, 2,   1, MaskRun::kCommon, 15242, {20,  3,  60,  42}, { 3, 20,  42,  60}},
    {Element::kDottedBorder,        1,  5, 15220, 2,   1, MaskRun::kCommon, 15240, {18,  5,  64,  84}, { 5, 18,  84,  64}},
    {Element::kDottedBorder,        9, 13, 15230, 2,   1, MaskRun::kCommon, 15242, {20,  3,  60,  42}, { 3, 20,  42,  60}},
    {Element::kBindMark,            1,  1, 15400, 1,   4, MaskRun::kNone,       0, {16,  5,   8,  84}, { 2,  8,   8,  84}},
    {Element::kBindMark,            2,  2, 15401, 1,   4, MaskRun::kNone,       0, {76,  5,   8,  84}, {84,  8,   8,  84}},
    {Element::kBindMark,            3,  3, 15402, 1,   4, MaskRun::kNone,       0, { 8,  2,  84,   8}, { 5, 16,  84,   8}},
    {Element::kMargin,              1,  1, 15060, 1,   4, MaskRun::kNone,       0, {16,  5,  12,  84}, { 2,  8,  12,  84}},
    {Element::kMargin,              2,  2, 15061, 1,   4, MaskRun::kNone,       0, {72,  5,  12,  84}, {80,  8,  12,  84}},
    {Element::kMargin,              3,  3, 15062, 1,   4, MaskRun::kNone,       0, { 8,  2,  84,  12}, { 5, 16,  84,  12}},
    {Element::kOrder,               0, 17, 15120, 1,  18, MaskRun::kNone,       0, {18,  5,  64,  84}, { 5, 18,  84,  64}},
    {Element::kOrder,              18, 34, 15156, 1, 840, MaskRun::kNone,       0, {20,  3,  60,  42}, { 3, 20,  42,  60}},
    {Element::kOrder,              35, 35, 15173, 1, 839, MaskRun::kNone,       0, {20,  3,  60,  42}, { 3, 20,  42,  60}},
    {Element::kOnePerSheet,         1,  1, 15870, 1,   1, MaskRun::kByCode, 15872, {40, 37,  20,  20}, {37, 40,  20,  20}},
    {Element::kStapleShadow,        1,  1, 15040, 1,   0, MaskRun::kNone,       0, {16,  2,  24,  24}, { 2, 16,  24,  24}},
    {Element::kStapleShadow,        2,  2, 15041, 1,   0, MaskRun::kNone,       0, {60,  2,  24,  24}, {68, 16,  24,  24}},
    {Element::kStapleShadow,        3,  3, 15042, 1,   3, MaskRun::kNone,       0, {16, 35,  24,  24}, { 2, 38,  24,  24}},
    {Element::kStapleShadow,        4,  4, 15043, 1,   3, MaskRun::kNone,       0, {60, 35,  24,  24}, {68, 38,  24,  24}},
    {Element::kStapleShadow,        5,  5, 15044, 1,   3, MaskRun::kNone,       0, {38,  2,  24,  24}, {35, 16,  24,  24}},
    {Element::kHole,                0,  0, 15050, 1,   0, MaskRun::kByCode, 15051, { 0,  0,   7,   7}, { 0,  0,   7,   7}},
    {Element::kStaple,              1,  1, 15020, 1,   0, MaskRun::kByCode, 15030, {16,  2,  24,  24}, { 2, 16,  24,  24}},
    {Element::kStaple,              2,  2, 15021, 1,   0, MaskRun::kByCode, 15031, {60,  2,  24,  24}, {68, 16,  24,  24}},
    {Element::kStaple,              3,  3, 15022, 1,   3, MaskRun::kByCode, 15032, {16, 35,  24,  24}, { 2, 38,  24,  24}},
    {Element::kStaple,              4,  4, 15023, 1,   3, MaskRun::kByCode, 15033, {60, 35,  24,  24}, {68, 38,  24,  24}},
    {Element::kStaple,              5,  5, 15024, 1,   3, MaskRun::kByCode, 15034, {38,  2,  24,  24}, {35, 16,  24,  24}},
    {Element::kDuplex,              0,  1, 15180, 1,   6, MaskRun::kNone,       0, {56, 64,  28,  28}, {64, 56,  28,  28}},
    {Element::kDuplex,              2,  3, 15182, 1,   6, MaskRun::kNone,       0, {16, 64,  28,  28}, { 2, 56,  28,  28}},
    {Element::kDuplex,              4,  5, 15184, 1,   6, MaskRun::kNone,       0, {56, 64,  28,  28}, {64, 56,  28,  28}},
    {Element::kZoomArrow,           1,  2, 15010, 1,   2, MaskRun::kByCode, 15014, {26, 35,  48,  24}, {23, 38,  48,  24}},
    {Element::kBlockZoomArrow,      1,  2, 16033, 1,   2, MaskRun::kByCode, 16037, {26, 35,  48,  24}, {23, 38,  48,  24}},
};
// clang-format on

/// The row of a code, or null.
constexpr const PictureRow* FindPicture(Element element, uint8_t code) {
  const auto* const row = std::ranges::find_if(
      kPaperPictures, [&](const PictureRow& r) { return r.element == element && code >= r.first && code <= r.last; });
  return row == std::end(kPaperPictures) ? nullptr : row;
}

constexpr uint16_t ImageOf(const PictureRow& row, uint8_t code, bool landscape) {
  return static_cast<uint16_t>(row.image + (code - row.first) * row.step + (landscape ? row.turned : 0));
}

/// 0 if the picture has no mask.
constexpr uint16_t MaskOf(const PictureRow& row, uint8_t code, bool landscape) {
  if (row.maskRun == MaskRun::kNone) return 0;
  const int place = ImageOf(row, code, landscape) - row.image;
  return static_cast<uint16_t>(row.mask + (row.maskRun == MaskRun::kCommon ? (landscape ? 1 : 0) : place));
}

namespace paper_tables_internal {

inline constexpr uint16_t kFirstPaperPicture = 15000, kEndOfPaperPictures = 17000;

/// How many different pictures the rows name, masks included. A picture that two rows share counts once.
consteval size_t CountPictures() {
  std::array<bool, kEndOfPaperPictures - kFirstPaperPicture> named{};
  for (const PictureRow& row : kPaperPictures) {
    for (uint8_t code = row.first; code <= row.last; ++code) {
      for (const bool landscape : {false, true}) {
        named.at(ImageOf(row, code, landscape) - kFirstPaperPicture) = true;
        if (const uint16_t mask = MaskOf(row, code, landscape); mask != 0) named.at(mask - kFirstPaperPicture) = true;
      }
    }
  }
  return static_cast<size_t>(std::ranges::count(named, true));
}
static_assert(CountPictures() == 250);

}  // namespace paper_tables_internal

}  // namespace heron::preview

// Groups and units of a record's fields for display. Two tables, read by record_text.cc.
//
// kFieldGroups: fields from `offset` on, up to the next row, belong to `group`. kFieldUnits: what a field's number
// counts; a field that isn't listed is a plain number, a switch or a list option, which the record's own table and the
// catalogue say. Fields of Group::kInternal are the driver's own book-keeping and are shown only with --all.
#pragma once

#include <cstdint>
#include <string_view>

#include "generated/features.h"

namespace heron::cli {

enum class Group : uint8_t {
  kDocument,
  kPaper,
  kTrays,
  kLayout,
  kFinishing,
  kCovers,
  kPerPage,
  kShift,
  kOverlay,
  kStamps,
  kQuality,
  kColor,
  kJob,
  kSecurity,
  kFax,
  kDevice,
  kLibrary,
  kHeader,
  kInternal,
};

struct FieldGroup {
  uint16_t offset;
  Group group;
};

enum class Unit : uint8_t { kTenthMm, kHundredthMm, kMm, kPercent, kDpi, kDots, kHour, kMinute };

struct FieldUnit {
  std::string_view field;
  Unit unit;
};

// clang-format off
/// Titles in the order of Group, which is the order of showing.
inline constexpr std::string_view kGroupTitles[] = {
    "Document", "Paper and zoom", "Trays", "Layout", "Finishing", "Covers and inserts", "Per-page list", "Image shift",
    "Overlay and watermark", "Stamps", "Quality", "Colour", "Job", "Security", "Fax", "Device options", "Library options",
    "Header", "Internal",
};

inline constexpr FieldGroup kFieldGroups[] = {
    {0, Group::kHeader},
    {76, Group::kDocument},
    {220, Group::kInternal},    // mirror, signature
    {776, Group::kPaper},
    {778, Group::kQuality},     // lpGraphicsMode
    {779, Group::kInternal},
    {781, Group::kLayout},
    {784, Group::kInternal},    // render fields
    {791, Group::kPaper},       // paperMargins
    {807, Group::kInternal},    // the same in dots
    {873, Group::kPaper},
    {876, Group::kLayout},
    {879, Group::kOverlay},
    {1410, Group::kDevice},     // lpPDLType
    {1411, Group::kQuality},
    {1420, Group::kInternal},
    {1431, Group::kLayout},
    {1432, Group::kFinishing},
    {1434, Group::kLayout},
    {1439, Group::kFinishing},
    {1444, Group::kLayout},     // booklets
    {1448, Group::kFinishing},  // binding margin
    {1450, Group::kInternal},   // lpBindMargin, computed
    {1451, Group::kFinishing},
    {1454, Group::kJob},
    {1458, Group::kSecurity},
    {1937, Group::kInternal},
    {1939, Group::kJob},
    {1942, Group::kPaper},
    {1945, Group::kJob},        // lpOutputTray
    {1947, Group::kInternal},   // sizes computed of the papers
    {1955, Group::kPaper},
    {1956, Group::kInternal},
    {1960, Group::kPaper},
    {1961, Group::kJob},
    {1962, Group::kCovers},
    {1964, Group::kPaper},
    {1968, Group::kJob},
    {1969, Group::kFinishing},
    {1971, Group::kInternal},   // bindingSide, computed
    {1972, Group::kFinishing},
    {1979, Group::kCovers},
    {1985, Group::kPaper},      // lpMediaType
    {1986, Group::kCovers},
    {1988, Group::kTrays},
    {1991, Group::kCovers},
    {2002, Group::kPerPage},
    {2508, Group::kLayout},     // page production
    {2516, Group::kFinishing},
    {2521, Group::kJob},
    {2524, Group::kShift},
    {2547, Group::kFinishing},
    {2562, Group::kOverlay},
    {2563, Group::kStamps},
    {2597, Group::kQuality},
    {2611, Group::kColor},
    {2614, Group::kQuality},
    {2617, Group::kFax},
    {2774, Group::kDevice},
    {2827, Group::kInternal},
    {2877, Group::kPaper},      // QXOutputPaperSize
    {2879, Group::kSecurity},   // owner
    {3016, Group::kInternal},
    {3025, Group::kLibrary},
    {3032, Group::kPaper},      // LongPaper_Check
    {3033, Group::kInternal},
    {3039, Group::kDevice},
    {3169, Group::kCovers},     // OHPInterLeave_Check
    {3172, Group::kTrays},
    {3234, Group::kSecurity},
    {3237, Group::kColor},
    {3293, Group::kInternal},
};

inline constexpr FieldUnit kFieldUnits[] = {
    {"dmPaperLength", Unit::kTenthMm},      {"dmPaperWidth", Unit::kTenthMm},       {"dmScale", Unit::kPercent},
    {"dmPrintQuality", Unit::kDpi},         {"dmYResolution", Unit::kDpi},          {"Zoom", Unit::kPercent},
    {"paperMargins", Unit::kHundredthMm},   {"outputMargins", Unit::kHundredthMm},  {"paperMarginsDots", Unit::kDots},
    {"outputMarginsDots", Unit::kDots},     {"paperSizeDots", Unit::kDots},         {"outputSizeDots", Unit::kDots},
    {"paperMarginsDotsCopy", Unit::kDots},  {"outputPaperWidth", Unit::kTenthMm},   {"outputPaperLength", Unit::kTenthMm},
    {"UDPaperWidth", Unit::kTenthMm},       {"UDPaperLength", Unit::kTenthMm},      {"UDMediaWidth", Unit::kTenthMm},
    {"UDMediaLength", Unit::kTenthMm},      {"fMargin", Unit::kMm},                 {"bMargin", Unit::kMm},
    {"lpQuality", Unit::kDpi},              {"lpResolution", Unit::kDpi},           {"timerHour", Unit::kHour},
    {"timerMinute", Unit::kMinute},         {"bTimeH", Unit::kHour},                {"bTimeM", Unit::kMinute},
};

/// Fields that are shown for every record, also at their default.
inline constexpr std::string_view kMainFields[] = {
    "dmOrientation", "dmPaperSize", "dmPaperLength", "dmPaperWidth", "dmCopies", "dmDefaultSource", "dmPrintQuality", "dmDuplex",
    "paperMargins",
};

/// Fields that take their options from a feature, though their default doesn't come from it.
struct FieldFeature {
  std::string_view field;
  uint16_t feature;
};
inline constexpr FieldFeature kFieldFeatures[] = {
    {"lpFrontCover", feature::lpFrontCover},
    {"lpBackCover", feature::lpBackCover},
    {"lpInterSheetListStaple", feature::lpStaple},
    {"lpInterSheetListPunch", feature::lpPunch},
    {"lpInterSheetListBindPosit", feature::lpBindPosit},
    {"lpInterSheetListMediaType", feature::lpInterSheetListMediaType},
    {"lpBorder", feature::lpBorder},
};
// clang-format on

}  // namespace heron::cli

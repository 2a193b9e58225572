// Values that a setting or a field of the record may hold though the catalogue has no option for them: they come from
// other models of the family, from older records, from rows of the per-page list, or are only written for the printing
// side. Names of the options' own values: generated/values.h.
#pragma once

#include <cstdint>

#include "generated/values.h"

namespace heron::value {

/// Of the public part of the record: simplex, vertical, horizontal.
namespace dmDuplex {
inline constexpr int16_t kOneSided = 1;
inline constexpr int16_t kLongEdge = 2;
inline constexpr int16_t kShortEdge = 3;
}  // namespace dmDuplex

namespace dmColor {
inline constexpr int16_t kMonochrome = 1;
}

namespace dmTTOption {
inline constexpr int16_t kDownload = 2;
}

namespace lpBackCover {
inline constexpr uint16_t kNoCover = 1;  ///< in a record; in the settings Back_Check is off
}

namespace lpFrontCover {
inline constexpr uint16_t kNoCover = 1;  ///< in a record; in the settings Front_Check is off
}

/// The edge of the binding margin; computed from lpBindPosit.
namespace lpBindMargin {
inline constexpr uint16_t kLeft = 1;
inline constexpr uint16_t kRight = 2;
inline constexpr uint16_t kTop = 3;
inline constexpr uint16_t kBottom = 4;
}  // namespace lpBindMargin

/// A record holds this switch plus one.
namespace EnableBPPChange_Check {
inline constexpr uint16_t kOffInRecord = 1;
inline constexpr uint16_t kOnInRecord = 2;
}  // namespace EnableBPPChange_Check

/// What a query of the device stores.
namespace lpEngine {
inline constexpr uint16_t kModel70 = 1;
inline constexpr uint16_t kModel36 = 2;
}  // namespace lpEngine

namespace lpFold {
inline constexpr uint16_t kCenterInside = 12;
inline constexpr uint16_t kTurnsBack = 21;  ///< feeds the plain twin of a rotated paper
inline constexpr uint16_t kTurns = 22;      ///< feeds the rotated twin
inline constexpr uint16_t kOfBooklets = 121;
/// Folds that restrict the paper.
inline constexpr uint16_t kRestricted[] = {kCenter, kCenterInside, 31,  32,         33, 34, 41, 42, 51,
                                           52,      111,           112, kOfBooklets};
}  // namespace lpFold

namespace lpInterSheetListPRNType {
inline constexpr uint16_t kLastPrinted = 5;  ///< kOneSided to this one print their pages in a way of their own
}

namespace lpInterSheetListPunch {
inline constexpr uint16_t kNone = 11;
inline constexpr uint16_t kAsPage = 100;
}  // namespace lpInterSheetListPunch

namespace lpInterSheetListStaple {
inline constexpr uint16_t kNone = 11;
inline constexpr uint16_t kAsPage = 100;
}  // namespace lpInterSheetListStaple

namespace lpInterSheetListTray {
inline constexpr uint16_t kAsDocument = 0x1000;
}

namespace lpLayout {
inline constexpr uint16_t kOlderTwoPages = 1;  ///< read as kTwoPages
inline constexpr uint16_t kOlderLayout2 = 2;   ///< read as kTwoPages too
inline constexpr uint16_t kTurned3 = 3;        ///< its pages are turned on the sheet, as those of two and six pages
inline constexpr uint16_t kTurned9 = 9;        ///< the same
}  // namespace lpLayout

namespace lpMediaType {
inline constexpr uint16_t kTabStock = 6;  ///< can't be finished along some edges
/// The types that come as long as a long custom paper, the first for want of another.
inline constexpr uint8_t kLong[] = {kThick, 31, 32, 45, 46, 47};
}  // namespace lpMediaType

namespace lpOutputMethod {
inline constexpr uint16_t kWithoutDialog6 = 6;  ///< of other models; opens no dialog, as kProof
}

namespace lpOverlay {
inline constexpr uint16_t kPrintWithFormAsking = 4;  ///< in a record: print with form, and ask before
}

/// A field for the printing side, which follows from lpGraphicsMode.
namespace renderMode {
inline constexpr uint16_t kVector = 2;
inline constexpr uint16_t kRaster = 3;
}  // namespace renderMode

/// Style of a font in tab texts and watermarks.
namespace fontStyle {
inline constexpr int kRegular = 1;
inline constexpr int kBold = 2;
inline constexpr int kItalic = 3;
inline constexpr int kBoldItalic = 4;
constexpr bool IsBold(int style) {
  return style == kBold || style == kBoldItalic;
}
constexpr bool IsItalic(int style) {
  return style == kItalic || style == kBoldItalic;
}
}  // namespace fontStyle

/// Direction of a tab's text (PageEntry::tabTextOrient) and where (PageEntry::tabTextAlign).
namespace tabText {
inline constexpr int16_t kUpwards = 1;
inline constexpr int16_t kTurned = 2;
inline constexpr int16_t kTurnedLetters = 3;
inline constexpr int16_t kAtFirst = 1;
inline constexpr int16_t kAtLast = 3;
}  // namespace tabText

}  // namespace heron::value

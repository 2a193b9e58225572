// Which papers go with a control's value.
//
// Reader: paper_rule_tables.cc, at compile time.
//   set        letter | paper codes; custom papers count as 256, and 511 matches none
//   rule       group | value | conditions | number | paper set: a control of the group that holds the value takes only
//              papers of the set; with conditions the rule is there once for each of them and counts while it holds.
//              Several rules of one value must all be met
//   group      number | controls
//   condition  number | control=value, which holds while the control is available and has the value: the installed
//              paper feed unit and output unit
// What is done about a control whose paper isn't in the set is in paper_checks_table.h. To add a paper, add it to the
// sets of whatever can feed or finish it.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kPaperSetText = uR"(
A | 8 9 2059 12 13 88 3 5 1 2054 2381 2382 14 341 342 343 360 361 370 371 91 372 28 31 27 19 20 38 43 256 511
B | 8 9 2059 12 13 3 5 1 2054 2381 2382 14 341 342 343 360 361 511
C | 9 1 511
D | 8 9 2059 12 13 88 3 5 1 2054 2381 2382 14 341 342 343 360 361 28 256 511
E | 8 9 12 13 3 5 1 2381 14 341 342 343 360 361 256 511
F | 9 2059 13 1 2054 2382 361 256 511
G | 370 371 91 372 28 31 27 19 20 38 511
H | 8 9 12 13 3 5 1 2381 14 341 342 343 360 361 28 511
I | 8 9 12 13 3 5 1 2381 14 341 342 343 360 361 511
J | 8 9 2059 12 13 88 3 5 1 2054 2049 14 341 342 343 360 361 370 371 91 372 28 31 27 19 20 38 43 256 511
K | 8 9 2059 12 13 3 5 1 2054 14 341 342 343 360 361 511
L | 9 2059 13 1 2054 2049 333 334 2381 2382 361 511
M | 9 2059 13 88 1 2054 2382 361 511
N | 8 9 2059 12 13 88 3 5 1 2054 14 341 342 343 360 361 43 511
O | 1
)";

inline constexpr std::u16string_view kPaperRuleText = uR"(
  1 | Auto          | -              |  10 | A
  1 | Tray1         | -              |  11 | B
  2 | Tray1         | -              |  61 | B
  1 | Tray2         | -              |  21 | B
  2 | Tray2         | -              |  71 | B
  1 | Tray3         | 11 13          |  31 | B
  2 | Tray3         | 11 13          |  81 | B
  1 | Tray3         | 12 14          |  31 | C
  2 | Tray3         | 12 14          |  81 | C
  1 | Tray4         | 11 13          |  41 | B
  2 | Tray4         | 11 13          |  91 | B
  1 | Large         | 13 14          |  51 | C
  2 | Large         | 13 14          | 101 | C
  3 | Auto          | -              | 111 | A
  3 | Tray1         | 21 22 23 24 25 | 112 | A
  3 | Tray1         | 26             | 112 | D
  3 | 21            | 21 22          | 113 | A
  3 | Tray2         | 21 22 26       | 114 | A
  3 | Tray2         | 23 24 25       | 114 | E
  3 | 41            | 21 22          | 115 | A
  3 | Tray3         | 21 22          | 116 | A
  3 | MailBin1      | -              | 117 | F
  3 | MailBin2      | -              | 118 | F
  3 | MailBin3      | -              | 119 | F
  3 | MailBin4      | -              | 120 | F
 12 | Envelope      | -              | 300 | G
 13 | Envelope      | -              | 350 | G
 10 | On            | 21 22          | 221 | H
 10 | On            | 23 24 25       | 221 | I
  6 | OneSided      | -              | 210 | J
  7 | TwoSided      | -              | 211 | K
  8 | Booklet       | -              | 212 | L
 11 | TwoPages      | -              | 231 | M
 11 | SamePageTwice | -              | 231 | M
 14 | On            | -              | 401 | N
 15 | On            | -              |  15 | N
 16 | On            | -              | 411 | N
 21 | On            | -              | 431 | N
 22 | Fax           | -              | 441 | N
 19 | TwoSided      | -              | 414 | K
 20 | On            | -              | 421 | O
)";

inline constexpr std::u16string_view kPaperGroupText = uR"(
  1 | lpMediaSource lpFrontCoverTray lpBackCoverTray lpOIPaperTray
  2 | lpInterSheetListTray
  3 | lpOutputTray
  6 | lpPRNType
  7 | lpPRNType
  8 | lpPRNType
 10 | Collate_Check
 11 | lpPOD_OnePerSheet
 12 | trayMediaType.page trayMediaType.frontCover trayMediaType.backCover
 13 | lpMediaType.dialog
 14 | Front_Check Back_Check
 15 | InterSheet_Check
 16 | OHPInterLeave_Check
 19 | lpInterSheetListPRNType
 20 | OHPInterLeave_Check
 21 | ImageShift_Check
 22 | lpOutput.Fax
)";

inline constexpr std::u16string_view kPaperConditionText = uR"(
 10 | lpSourceUnit=NotInstalled
 11 | lpSourceUnit=Tray3And4
 12 | lpSourceUnit=Tray3
 13 | lpSourceUnit=Tray3And4AndLarge
 14 | lpSourceUnit=Tray3AndLarge
 20 | lpOutputUnit=NotInstalled
 21 | lpOutputUnit=Bin
 22 | lpOutputUnit=BinAndExit2
 23 | lpOutputUnit=Floor2
 24 | lpOutputUnit=Floor2And3
 25 | lpOutputUnit=Floor4
 26 | lpOutputUnit=Separator
)";
// clang-format on

}  // namespace heron::engine

// Which papers go with a control's value.
//
// Reader: paper_rule_tables.cc, at compile time.
//   set        letter | paper codes; custom papers count as 256, and 511 matches none
//   rule       group | value | conditions | number | paper set: a control of the group that holds the value takes only
//              papers of the set; with conditions the rule stands once for each of them and counts while it holds.
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
  1 |   7 | -              |  10 | A
  1 |   1 | -              |  11 | B
  2 |   1 | -              |  61 | B
  1 |   2 | -              |  21 | B
  2 |   2 | -              |  71 | B
  1 | 258 | 11 13          |  31 | B
  2 | 258 | 11 13          |  81 | B
  1 | 258 | 12 14          |  31 | C
  2 | 258 | 12 14          |  81 | C
  1 | 259 | 11 13          |  41 | B
  2 | 259 | 11 13          |  91 | B
  1 | 270 | 13 14          |  51 | C
  2 | 270 | 13 14          | 101 | C
  3 |   1 | -              | 111 | A
  3 |  11 | 21 22 23 24 25 | 112 | A
  3 |  11 | 26             | 112 | D
  3 |  21 | 21 22          | 113 | A
  3 |  31 | 21 22 26       | 114 | A
  3 |  31 | 23 24 25       | 114 | E
  3 |  41 | 21 22          | 115 | A
  3 |  51 | 21 22          | 116 | A
  3 | 101 | -              | 117 | F
  3 | 102 | -              | 118 | F
  3 | 103 | -              | 119 | F
  3 | 104 | -              | 120 | F
 12 |   8 | -              | 300 | G
 13 |   8 | -              | 350 | G
 10 |   1 | 21 22          | 221 | H
 10 |   1 | 23 24 25       | 221 | I
  6 |   1 | -              | 210 | J
  7 |   2 | -              | 211 | K
  8 |   3 | -              | 212 | L
 11 |   1 | -              | 231 | M
 11 |   2 | -              | 231 | M
 14 |   1 | -              | 401 | N
 15 |   1 | -              |  15 | N
 16 |   1 | -              | 411 | N
 21 |   1 | -              | 431 | N
 22 |   1 | -              | 441 | N
 19 |   3 | -              | 414 | K
 20 |   1 | -              | 421 | O
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
 12 | trayMediaType.3310 trayMediaType.3330 trayMediaType.3350
 13 | lpMediaType.2921
 14 | Front_Check Back_Check
 15 | InterSheet_Check
 16 | OHPInterLeave_Check
 19 | lpInterSheetListPRNType
 20 | OHPInterLeave_Check
 21 | ImageShift_Check
 22 | lpOutput.902
)";

inline constexpr std::u16string_view kPaperConditionText = uR"(
 10 | lpSourceUnit=1
 11 | lpSourceUnit=2
 12 | lpSourceUnit=3
 13 | lpSourceUnit=4
 14 | lpSourceUnit=5
 20 | lpOutputUnit=1
 21 | lpOutputUnit=2
 22 | lpOutputUnit=3
 23 | lpOutputUnit=41
 24 | lpOutputUnit=42
 25 | lpOutputUnit=43
 26 | lpOutputUnit=5
)";
// clang-format on

}  // namespace heron::engine

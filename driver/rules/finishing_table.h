// What can be stapled, punched and folded of each paper.
//
// Reader: finishing_tables.cc, at compile time. A line is: papers | codes | condition. It is a row for each of the
// papers; with a condition the row counts only while the control holds the value, braces mean a row for each of the
// values. The first row that counts gives a paper's code; a paper without one has code 0, no restriction.
//   staple  one code: 0 every position works, 1 two staples don't work along the binding edge, 3 impossible
//   punch   codes for 2, 3 and 4 holes: 0 allowed, 1 not along the binding edge, 3 not together with stapling,
//           4 impossible
//   fold    a code for lpFoldStaple 1 and 2, and one for lpFoldStaple 3 and lpFold 11 and 12, other folds have none:
//           0 allowed, 1 only if nothing makes two pages of a sheet (booklet, combination), 2 only if one of them does,
//           3 impossible
// Pairs of a paper and its rotated twin are in settings/papers.h (RotatedTwin, PlainTwin).
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kStapleCapabilityText = uR"(
8 2057 12 2061 3 5 2049 360 2409 14 341 342 343 | 1
9 13 1 361                                      | 0
88 370 371 91 372 28 2076 31 27 19 20 38 43 256 | 3
2059 2054                                       | 3 | lpOutputUnit={Bin,BinAndExit2,Floor2,Floor2And3,Floor4}
)";

inline constexpr std::u16string_view kPunchCapabilityText = uR"(
8 12 3 360                                   | 1 1 1
9 13 1 361                                   | 0 1 1
2057 2061 2409                               | 1 4 4
2059 88 2054                                 | 3 4 3
5 2049 14 341 342 343                        | 1 4 1
370 371 91 372 28 2076 31 27 19 20 38 43 256 | 4 4 4
)";

inline constexpr std::u16string_view kFoldCapabilityText = uR"(
8 12 3 5 360                                      | 1 1
9 2057 13 2061 1 2049 361 2409 14 341 342 343 256 | 0 0
2059 88 2381                                      | 2 2
2054                                              | 0 0 | lpSaddleUnit=NotInstalled
2382                                              | 2 2 | lpSaddleUnit=NotInstalled
2054                                              | 2 2 | lpSaddleUnit=Installed
2382                                              | 3 3 | lpSaddleUnit=Installed
370 371 91 372 28 2076 31 27 19 20 38 43          | 3 3
)";
// clang-format on

}  // namespace heron::engine

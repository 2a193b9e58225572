// The features that hold a number of a range.
//
// Reader: tables.cc, at compile time. A row is: feature | name | smallest | largest | default. The step is always 1 and
// the default holds for every destination. Features ascend.
#pragma once

#include <string_view>

namespace heron::catalog {

// clang-format off
inline constexpr std::u16string_view kRangeOptionText = uR"(
   2 | Copies                |    1 |  999 |    1
  26 | Zoom                  |   25 |  400 |  100
  56 | Intensity             |   -2 |    2 |    0
 164 | UDPaper Width         |    0 | 5000 | 2100
 165 | UDPaper Length        |    0 | 5000 | 2100
 166 | UDPaper Top           |    0 |  500 |    0
 167 | UDPaper Bottom        |    0 |  500 |    0
 168 | UDPaper Left          |    0 |  500 |    0
 169 | UDPaper Right         |    0 |  500 |    0
 170 | Density               |   -5 |    1 |    0
 171 | FBindMargin           |    0 |   50 |   10
 172 | BBindMargin           |    0 |   50 |   10
 173 | ImgShiftValueLRF      |    0 | 2500 |    0
 174 | ImgShiftValueUDF      |    0 | 2500 |    0
 175 | ImgShiftPageIntervalF |    0 | 2500 |    0
 176 | ImgShiftValueLRB      |    0 | 2500 |    0
 177 | ImgShiftValueUDB      |    0 | 2500 |    0
 178 | ImgShiftPageIntervalB |    0 | 2500 |    0
 203 | TimerSet_Hour         |    0 |   23 |    0
 204 | TimerSet_Minute       |    0 |   59 |    0
 279 | copy number start     |    0 | 9999 |    1
)";
// clang-format on

}  // namespace heron::catalog

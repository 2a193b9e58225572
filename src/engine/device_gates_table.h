// Which controls need an installed device option.
//
// Reader: dependency_tables.cc, at compile time. A line is: control : alternatives, separated by bars. An alternative
// holds when all its tests hold; braces mean one alternative for each of the values. To gate a control, add its line.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kDeviceGateText = uR"(
Staple_Check       : lpOutputUnit={2,3,41,42,43}
Punch_Check        : lpOutputUnit={41,42,43} | lpOutputUnit={2,3} & lpPunchKit={21,22,23}
FoldStaple_Check   : lpSaddleUnit=2
Collate_Check      : lpOutputUnit={2,3,41,42,43}
)";
// clang-format on

}  // namespace heron::engine

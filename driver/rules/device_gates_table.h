// Which controls need an installed device option.
//
// Reader: dependency_tables.cc, at compile time. A line is: control : alternatives, separated by bars. An alternative
// holds when all its tests hold; braces mean one alternative for each of the values. To gate a control, add its line.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kDeviceGateText = uR"(
Staple_Check       : lpOutputUnit={Bin,BinAndExit2,Floor2,Floor2And3,Floor4}
Punch_Check        : lpOutputUnit={Floor2,Floor2And3,Floor4} | lpOutputUnit={Bin,BinAndExit2} & lpPunchKit={TwoHoles,TwoAndThreeHoles,FourHoles}
FoldStaple_Check   : lpSaddleUnit=Installed
Collate_Check      : lpOutputUnit={Bin,BinAndExit2,Floor2,Floor2And3,Floor4}
)";
// clang-format on

}  // namespace heron::engine

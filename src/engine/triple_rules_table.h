// Values of three controls that don't go together, and which control gives way.
//
// Reader: combination_tables.cc, at compile time. The notation is that of pair_rules_table.h with one operand more; M
// isn't used here. To add a conflict, add its rule under each of the three controls that can be the one just changed.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kTripleRuleText = uR"(
Staple_Check=1 & lpOutputTray=11 & lpOutputUnit={41,42,43} -> lpOutputTray:=1
lpOutputTray=11 & Staple_Check=1 & lpOutputUnit={41,42,43} -> Staple_Check:=0
lpOutputTray=11 & Collate_Check=1 & lpOutputUnit={41,42,43} -> Collate_Check:=0
lpOutputTray=11 & lpOutputUnit=5 & trayMediaType.3310={2,3,4,8,30} -> lpOutputTray:=1
lpOutputTray=11 & lpOutputUnit=5 & lpMediaType.2921={2,3,4,8,30} -> lpOutputTray:=1
lpOutputTray=31 & trayMediaType.3310={2,3,4,8} & lpOutputUnit={41,42,43} -> lpOutputTray:=1
lpOutputTray=31 & trayMediaType.3330={2,3,4,8} & lpOutputUnit={41,42,43} -> lpOutputTray:=1
lpOutputTray=31 & trayMediaType.3350={2,3,4,8} & lpOutputUnit={41,42,43} -> lpOutputTray:=1
lpOutputUnit={41,42,43} & lpOutputTray=11 & Staple_Check=1 -> Staple_Check:=0
lpOutputUnit={2,3} & Punch_Check=1 & lpPunchKit=1 -> Punch_Check:=0
lpOutputUnit={41,42,43} & lpOutputTray=11 & Collate_Check=1 -> Collate_Check:=0
lpOutputUnit={41,42,43} & trayMediaType.3310={2,3,4} & Collate_Check=1 -> Collate_Check:=0
lpOutputUnit={41,42,43} & lpMediaType.2921={2,3,4} & Collate_Check=1 -> Collate_Check:=0
lpOutputUnit=5 & trayMediaType.3310={2,3,4,8,30} & lpOutputTray=11 -> lpOutputUnit:=1
lpOutputUnit=5 & lpMediaType.2921={2,3,4,8,30} & lpOutputTray=11 -> lpOutputUnit:=1
lpOutputUnit=1 & Collate_Check=1 & trayMediaType.3310={2,3,4} -> Collate_Check:=0
lpOutputUnit={41,42,43} & lpOutputTray=31 & trayMediaType.3310={2,3,4,8} -> lpOutputTray:=1
lpOutputUnit=1 & Collate_Check=1 & trayMediaType.3330={2,3,4} -> Collate_Check:=0
lpOutputUnit={41,42,43} & lpOutputTray=31 & trayMediaType.3330={2,3,4,8} -> lpOutputTray:=1
lpOutputUnit=1 & Collate_Check=1 & trayMediaType.3350={2,3,4} -> Collate_Check:=0
lpOutputUnit={41,42,43} & lpOutputTray=31 & trayMediaType.3350={2,3,4,8} -> lpOutputTray:=1
Punch_Check=1 & lpOutputUnit={2,3} & lpPunchKit=1 -> Punch_Check:=0
lpPunchKit=1 & lpOutputUnit={2,3} & Punch_Check=1 -> Punch_Check:=0
Collate_Check=1 & lpOutputTray=11 & lpOutputUnit={41,42,43} -> lpOutputTray:=1
Collate_Check=1 & lpOutputUnit={41,42,43} & trayMediaType.3310={2,3,4} -> Collate_Check:=0
Collate_Check=1 & lpOutputUnit={41,42,43} & lpMediaType.2921={2,3,4} -> Collate_Check:=0
Collate_Check=1 & trayMediaType.3310={2,3,4} & lpOutputUnit=1 -> Collate_Check:=0
Collate_Check=1 & trayMediaType.3330={2,3,4} & lpOutputUnit=1 -> Collate_Check:=0
Collate_Check=1 & trayMediaType.3350={2,3,4} & lpOutputUnit=1 -> Collate_Check:=0
trayMediaType.3310={2,3,4} & Collate_Check=1 & lpOutputUnit={1,41,42,43} -> Collate_Check:=0
trayMediaType.3310={2,3,4,8} & lpOutputTray=31 & lpOutputUnit={41,42,43} -> lpOutputTray:=1
trayMediaType.3310={2,3,4,8,30} & lpOutputTray=11 & lpOutputUnit=5 -> lpOutputTray:=1
lpMediaType.2921={2,3,4} & Collate_Check=1 & lpOutputUnit={1,41,42,43} -> Collate_Check:=0
lpMediaType.2921={2,3,4,8} & lpOutputTray=31 & lpOutputUnit={41,42,43} -> lpOutputTray:=1
lpMediaType.2921={2,3,4,8,30} & lpOutputTray=11 & lpOutputUnit=5 -> lpOutputTray:=1
BindMargin_Check=1 & lpMarginMode.2302=2 & Nup_Check=1 -> lpMarginMode.2301:=1
lpMarginMode.2302=2 & BindMargin_Check=1 & Nup_Check=1 -> Nup_Check:=0
Nup_Check=1 & lpMarginMode.2302=2 & BindMargin_Check=1 -> lpMarginMode.2301:=1
lpPDLType.844=1 & lpOverlay.402=2 & parameter234=1 -> lpOverlay.401:=1
lpPDLType.844=1 & lpOverlay.403=3 & parameter234=1 -> lpOverlay.401:=1
lpPDLType.845={2,3,4} & lpOverlay.402=2 & parameter234=1 -> lpOverlay.401:=1
lpPDLType.845={2,3,4} & lpOverlay.403=3 & parameter234=1 -> lpOverlay.401:=1
trayMediaType.3330={2,3,4} & Collate_Check=1 & lpOutputUnit=1 -> Collate_Check:=0
trayMediaType.3330={2,3,4,8} & lpOutputTray=31 & lpOutputUnit={41,42,43} -> lpOutputTray:=1
trayMediaType.3350={2,3,4} & Collate_Check=1 & lpOutputUnit=1 -> Collate_Check:=0
trayMediaType.3350={2,3,4,8} & lpOutputTray=31 & lpOutputUnit={41,42,43} -> lpOutputTray:=1
)";
// clang-format on

}  // namespace heron::engine

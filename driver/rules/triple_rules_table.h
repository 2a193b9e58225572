// Values of three controls that don't go together, and which control gives way.
//
// Reader: combination_tables.cc, at compile time. The notation is that of pair_rules_table.h with one operand more; M
// isn't used here. To add a conflict, add its rule under each of the three controls that can be the one just changed.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kTripleRuleText = uR"(
Staple_Check=On & lpOutputTray=Tray1 & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
lpOutputTray=Tray1 & Staple_Check=On & lpOutputUnit={Floor2,Floor2And3,Floor4} -> Staple_Check:=Off
lpOutputTray=Tray1 & Collate_Check=On & lpOutputUnit={Floor2,Floor2And3,Floor4} -> Collate_Check:=Off
lpOutputTray=Tray1 & lpOutputUnit=Separator & trayMediaType.page={Transparency,Special2,Heavy,Envelope,Thick} -> lpOutputTray:=Auto
lpOutputTray=Tray1 & lpOutputUnit=Separator & lpMediaType.dialog={Transparency,Special2,Heavy,Envelope,Thick} -> lpOutputTray:=Auto
lpOutputTray=Tray2 & trayMediaType.page={Transparency,Special2,Heavy,Envelope} & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
lpOutputTray=Tray2 & trayMediaType.frontCover={Transparency,Special2,Heavy,Envelope} & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
lpOutputTray=Tray2 & trayMediaType.backCover={Transparency,Special2,Heavy,Envelope} & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
lpOutputUnit={Floor2,Floor2And3,Floor4} & lpOutputTray=Tray1 & Staple_Check=On -> Staple_Check:=Off
lpOutputUnit={Bin,BinAndExit2} & Punch_Check=On & lpPunchKit=NotInstalled -> Punch_Check:=Off
lpOutputUnit={Floor2,Floor2And3,Floor4} & lpOutputTray=Tray1 & Collate_Check=On -> Collate_Check:=Off
lpOutputUnit={Floor2,Floor2And3,Floor4} & trayMediaType.page={Transparency,Special2,Heavy} & Collate_Check=On -> Collate_Check:=Off
lpOutputUnit={Floor2,Floor2And3,Floor4} & lpMediaType.dialog={Transparency,Special2,Heavy} & Collate_Check=On -> Collate_Check:=Off
lpOutputUnit=Separator & trayMediaType.page={Transparency,Special2,Heavy,Envelope,Thick} & lpOutputTray=Tray1 -> lpOutputUnit:=NotInstalled
lpOutputUnit=Separator & lpMediaType.dialog={Transparency,Special2,Heavy,Envelope,Thick} & lpOutputTray=Tray1 -> lpOutputUnit:=NotInstalled
lpOutputUnit=NotInstalled & Collate_Check=On & trayMediaType.page={Transparency,Special2,Heavy} -> Collate_Check:=Off
lpOutputUnit={Floor2,Floor2And3,Floor4} & lpOutputTray=Tray2 & trayMediaType.page={Transparency,Special2,Heavy,Envelope} -> lpOutputTray:=Auto
lpOutputUnit=NotInstalled & Collate_Check=On & trayMediaType.frontCover={Transparency,Special2,Heavy} -> Collate_Check:=Off
lpOutputUnit={Floor2,Floor2And3,Floor4} & lpOutputTray=Tray2 & trayMediaType.frontCover={Transparency,Special2,Heavy,Envelope} -> lpOutputTray:=Auto
lpOutputUnit=NotInstalled & Collate_Check=On & trayMediaType.backCover={Transparency,Special2,Heavy} -> Collate_Check:=Off
lpOutputUnit={Floor2,Floor2And3,Floor4} & lpOutputTray=Tray2 & trayMediaType.backCover={Transparency,Special2,Heavy,Envelope} -> lpOutputTray:=Auto
Punch_Check=On & lpOutputUnit={Bin,BinAndExit2} & lpPunchKit=NotInstalled -> Punch_Check:=Off
lpPunchKit=NotInstalled & lpOutputUnit={Bin,BinAndExit2} & Punch_Check=On -> Punch_Check:=Off
Collate_Check=On & lpOutputTray=Tray1 & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
Collate_Check=On & lpOutputUnit={Floor2,Floor2And3,Floor4} & trayMediaType.page={Transparency,Special2,Heavy} -> Collate_Check:=Off
Collate_Check=On & lpOutputUnit={Floor2,Floor2And3,Floor4} & lpMediaType.dialog={Transparency,Special2,Heavy} -> Collate_Check:=Off
Collate_Check=On & trayMediaType.page={Transparency,Special2,Heavy} & lpOutputUnit=NotInstalled -> Collate_Check:=Off
Collate_Check=On & trayMediaType.frontCover={Transparency,Special2,Heavy} & lpOutputUnit=NotInstalled -> Collate_Check:=Off
Collate_Check=On & trayMediaType.backCover={Transparency,Special2,Heavy} & lpOutputUnit=NotInstalled -> Collate_Check:=Off
trayMediaType.page={Transparency,Special2,Heavy} & Collate_Check=On & lpOutputUnit={NotInstalled,Floor2,Floor2And3,Floor4} -> Collate_Check:=Off
trayMediaType.page={Transparency,Special2,Heavy,Envelope} & lpOutputTray=Tray2 & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
trayMediaType.page={Transparency,Special2,Heavy,Envelope,Thick} & lpOutputTray=Tray1 & lpOutputUnit=Separator -> lpOutputTray:=Auto
lpMediaType.dialog={Transparency,Special2,Heavy} & Collate_Check=On & lpOutputUnit={NotInstalled,Floor2,Floor2And3,Floor4} -> Collate_Check:=Off
lpMediaType.dialog={Transparency,Special2,Heavy,Envelope} & lpOutputTray=Tray2 & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
lpMediaType.dialog={Transparency,Special2,Heavy,Envelope,Thick} & lpOutputTray=Tray1 & lpOutputUnit=Separator -> lpOutputTray:=Auto
BindMargin_Check=On & lpMarginMode.Reduce=Reduce & Nup_Check=On -> lpMarginMode.Shift:=Shift
lpMarginMode.Reduce=Reduce & BindMargin_Check=On & Nup_Check=On -> Nup_Check:=Off
Nup_Check=On & lpMarginMode.Reduce=Reduce & BindMargin_Check=On -> lpMarginMode.Shift:=Shift
lpPDLType.Pcl5=Pcl5 & lpOverlay.CreateForm=CreateForm & parameter234=On -> lpOverlay.NoOverlay:=NoOverlay
lpPDLType.Pcl5=Pcl5 & lpOverlay.PrintWithForm=PrintWithForm & parameter234=On -> lpOverlay.NoOverlay:=NoOverlay
lpPDLType.PclXl={PclXl,PclXlMode3,PclXlMode4} & lpOverlay.CreateForm=CreateForm & parameter234=On -> lpOverlay.NoOverlay:=NoOverlay
lpPDLType.PclXl={PclXl,PclXlMode3,PclXlMode4} & lpOverlay.PrintWithForm=PrintWithForm & parameter234=On -> lpOverlay.NoOverlay:=NoOverlay
trayMediaType.frontCover={Transparency,Special2,Heavy} & Collate_Check=On & lpOutputUnit=NotInstalled -> Collate_Check:=Off
trayMediaType.frontCover={Transparency,Special2,Heavy,Envelope} & lpOutputTray=Tray2 & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
trayMediaType.backCover={Transparency,Special2,Heavy} & Collate_Check=On & lpOutputUnit=NotInstalled -> Collate_Check:=Off
trayMediaType.backCover={Transparency,Special2,Heavy,Envelope} & lpOutputTray=Tray2 & lpOutputUnit={Floor2,Floor2And3,Floor4} -> lpOutputTray:=Auto
)";
// clang-format on

}  // namespace heron::engine

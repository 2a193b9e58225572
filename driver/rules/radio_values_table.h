// The value that each member of a radio group stands for.
//
// Reader: control_tables.cc, at compile time. An entry is: control=value; a bare number is a radio button of a template
// that has no row in controls.table. The engine reads a pressed button of the first table by itself; the buttons of
// the second belong to dialogs and pages that store their setting themselves, and the engine knows no value for them,
// while pages and the command line do. To add a radio button, add it to the table of its reader.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kRadioValueText = uR"(
lpOrientation.Portrait=Portrait  lpOrientation.Landscape=Landscape  lpFrontCover.Blank=Blank
lpFrontCover.Printed=Printed  lpBackCover.Blank=Blank  lpBackCover.Printed=Printed  603=0  604=1  lpDither.Fine=Fine
lpDither.Medium=Medium  lpDither.Coarse=Coarse  611=2  612=1  lpOverlay.NoOverlay=NoOverlay
lpOverlay.CreateForm=CreateForm  lpOverlay.PrintWithForm=PrintWithForm  lpWatermarkOrder.Overprint=Overprint
lpWatermarkOrder.Transparent=Transparent  lpPrintCADMode.TextAndGraphics=TextAndGraphics
lpPrintCADMode.Everything=Everything  lpBrushPtPit.Fine=Fine  lpBrushPtPit.Coarse=Coarse  lpMarginMode.Shift=Shift
lpMarginMode.Reduce=Reduce  lpOhpIntlvType.Blank=1  lpOhpIntlvType.Printed=2  lpPDLType.Pcl5=Pcl5
lpPDLType.PclXl=PclXlMode4  previewMode.Paper=Paper  previewMode.Machine=Machine
)";

inline constexpr std::u16string_view kPageRadioValueText = uR"(
lpImgShiftMode.Driver=0  lpImgShiftMode.Printer=1  lpImgShiftDirectLRF.Left=Left  lpImgShiftDirectLRF.Right=Right
lpImgShiftDirectUDF.Up=Up  lpImgShiftDirectUDF.Down=Down  lpImgShiftDirectLRB.Left=Left
lpImgShiftDirectLRB.Right=Right  lpImgShiftDirectUDB.Up=Up  lpImgShiftDirectUDB.Down=Down
lpWidePaperPos.LeadingEdge=LeadingEdge  lpWidePaperPos.Center=Center  lpWidePaperPos.TrailingEdge=TrailingEdge
lpOutput.Fax=Fax  lpOutput.Printer=Printer  lpAuthUserMode.Shared=Shared  lpAuthUserMode.LoggedIn=LoggedIn
)";
// clang-format on

}  // namespace heron::engine

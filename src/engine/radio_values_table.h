// The value that each member of a radio group stands for.
//
// Reader: control_tables.cc, at compile time. An entry is: control=value; a bare number is a radio button of a template
// that has no row in controls_table.h. The engine reads a pressed button of the first table by itself; the buttons of
// the second belong to dialogs and pages that store their setting themselves, and the engine knows no value for them,
// while pages and the command line do. To add a radio button, add it to the table of whoever reads it.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kRadioValueText = uR"(
lpOrientation.106=1  lpOrientation.107=2  lpFrontCover.202=2  lpFrontCover.203=3  lpBackCover.206=2
lpBackCover.207=3  603=0  604=1  lpDither.605=2  lpDither.606=3  lpDither.607=4  611=2  612=1  lpOverlay.401=1
lpOverlay.402=2  lpOverlay.403=3  lpWatermarkOrder.504=1  lpWatermarkOrder.505=2  lpPrintCADMode.638=1
lpPrintCADMode.639=2  lpBrushPtPit.671=1  lpBrushPtPit.672=2  lpMarginMode.2301=1  lpMarginMode.2302=2
lpOhpIntlvType.2021=1  lpOhpIntlvType.2022=2  lpPDLType.844=1  lpPDLType.845=4  previewMode.163=1
previewMode.164=2
)";

inline constexpr std::u16string_view kPageRadioValueText = uR"(
lpImgShiftMode.2350=0  lpImgShiftMode.2351=1  lpImgShiftDirectLRF.2321=0  lpImgShiftDirectLRF.2322=1
lpImgShiftDirectUDF.2325=0  lpImgShiftDirectUDF.2326=1  lpImgShiftDirectLRB.2332=0  lpImgShiftDirectLRB.2333=1
lpImgShiftDirectUDB.2336=0  lpImgShiftDirectUDB.2337=1  lpWidePaperPos.2357=0  lpWidePaperPos.2358=1
lpWidePaperPos.2359=2  lpOutput.902=1  lpOutput.903=2  lpAuthUserMode.2953=1  lpAuthUserMode.2954=2
)";
// clang-format on

}  // namespace heron::engine

// Which controls are available, by the value of another control.
//
// Reader: dependency_tables.cc, at compile time. A line "dialog D" begins the rules of controls of that dialog. A line
// is: condition : controls; a line without a condition goes on with the one above.
//   0             always available
//   1 P=v         available while control P holds v
//   2 P=v         the same, and only while P is available itself
//   ... or ...    two rows, one of which must hold; ... and ...: two rows that must both hold
//   ... also ...  a second value in a row of its own that continues the first
//   a name        a function decides
// A star marks a control that stays usable in rules whatever its availability. Bare numbers are controls without a
// setting: labels, buttons, spin buttons and fields that no rule reads. 137 is on no dialog and has no effect. 405
// is never available, since 611 has no value. Evaluation keeps the order of the lines. To add a rule, add its line
// under its dialog; a control that nothing else governs needs none.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kEnableRuleText = uR"(
dialog 100
  0                                                 : 119 lpMediaSource 182 trayMediaType.page trayWeight.page
                                                    : trayPaperColor.page trayPunched.page 149 Sort_Check Collate_Check
                                                    : lpOutputTray 138 171 lpOutputMethod 181
  1 Layout_Check2=On                                : 173 lpBindPosit 175 lpPRNType Nup_Check BindMargin_Check
                                                    : Staple_Check Punch_Check FoldStaple_Check
  2 Nup_Check=On                                    : lpLayout
  2 BindMargin_Check=On                             : 179
  2 Staple_Check=On                                 : lpStaple
  2 Punch_Check=On                                  : 137 lpPunchHoles
  2 FoldStaple_Check=On                             : lpFoldStaple
  CopiesRule                                        : Copies 104 101 102
dialog 200
  0                                                 : Front_Check Back_Check InterSheet_Check
  1 Front_Check=On                                  : lpFrontCover.Blank lpFrontCover.Printed 211 lpFrontCoverTray
                                                    : trayMediaType.frontCover trayWeight.frontCover
                                                    : trayPaperColor.frontCover trayPunched.frontCover
  1 Back_Check=On                                   : lpBackCover.Blank lpBackCover.Printed 213 lpBackCoverTray
                                                    : trayMediaType.backCover trayWeight.backCover
                                                    : trayPaperColor.backCover trayPunched.backCover
  1 lpPRNType=TwoSided or lpPRNType=Booklet         : Chapter_Check
  2 Chapter_Check=On                                : 316 315 391
  PerPageListRule                                   : 246 lpInterSheetList 248 249 250 251 252 253 254
dialog 300
  1 POD_Check=On                                    : 333 POD_OnePerSheet_Check ImageShift_Check
  2 POD_OnePerSheet_Check=On                        : lpPOD_OnePerSheet
  2 ImageShift_Check=On                             : 345
dialog 400
  0                                                 : lpOverlay.NoOverlay lpOverlay.PrintWithForm
  OverlayCreateRule                                 : lpOverlay.CreateForm*
  1 lpOverlay.CreateForm=CreateForm or lpOverlay.PrintWithForm=PrintWithForm : 412 410 409 407 407 417 411 406
  1 lpOverlay.PrintWithForm=PrintWithForm           : OverlayPrompt OverlayOrder_Check
  1 lpOverlay.PrintWithForm=PrintWithForm and 611=2 : 405
dialog 500
  0                                                 : CopyNo_Check
  1 Watermark_Use=On                                : 502 503 lpWatermarkOrder.Overprint lpWatermarkOrder.Transparent
                                                    : FirstPageOnly 528
  1 CopyNo_Check=1                                  : 523 CopyNo_WM_StartC 525 526 521 lpPrintPageC
dialog 600
  0                                                 : EngSaveToner_Check* DraftPrint*
  1 PrintCAD_Check=On                               : lpPrintCADMode.TextAndGraphics* lpPrintCADMode.Everything*
dialog 800
  1 lpOutputUnit=Bin also lpOutputUnit=BinAndExit2  : 827 lpPunchKit 841 lpSaddleUnit 885 lpMailBinKit
dialog 2020
  2 OHPInterLeave_Check=On                          : lpOIPaperTray
dialog 2440
  PerPageListRule                                   : 2444
dialog 2910
  OhpInterleaveRule                                 : OHPInterLeave_Check
  2 OHPInterLeave_Check=On                          : 2914
dialog 2950
  0                                                 : 2951 UserAuth_Check 2961 SecMana_Check
  1 UserAuth_Check=On                               : lpAuthUserMode.Shared lpAuthUserMode.LoggedIn
  1 SecMana_Check=On                                : 2963 2964 2965 2966 2967
  2 lpAuthUserMode.LoggedIn=LoggedIn                : 2955 2956 2957 2958 2959
)";
// clang-format on

}  // namespace heron::engine

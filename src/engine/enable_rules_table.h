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
// setting: labels, buttons, spin buttons and fields that no rule reads. 137 stands on no dialog and has no effect. 405
// is never available, since 611 has no value. Evaluation keeps the order of the lines. To add a rule, add its line
// under its dialog; a control that nothing else governs needs none.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kEnableRuleText = uR"(
dialog 100
  0                                          : 119 lpMediaSource 182 trayMediaType.3310 trayWeight.3311
                                             : trayPaperColor.3312 trayPunched.3313 149 Sort_Check Collate_Check
                                             : lpOutputTray 138 171 lpOutputMethod 181
  1 Layout_Check2=1                          : 173 lpBindPosit 175 lpPRNType Nup_Check BindMargin_Check Staple_Check
                                             : Punch_Check FoldStaple_Check
  2 Nup_Check=1                              : lpLayout.125
  2 BindMargin_Check=1                       : 179
  2 Staple_Check=1                           : lpStaple
  2 Punch_Check=1                            : 137 lpPunchHoles
  2 FoldStaple_Check=1                       : lpFoldStaple
  CopiesRule                                 : Copies 104 101 102
dialog 200
  0                                          : Front_Check Back_Check InterSheet_Check
  1 Front_Check=1                            : lpFrontCover.202 lpFrontCover.203 211 lpFrontCoverTray
                                             : trayMediaType.3330 trayWeight.3331 trayPaperColor.3332 trayPunched.3333
  1 Back_Check=1                             : lpBackCover.206 lpBackCover.207 213 lpBackCoverTray trayMediaType.3350
                                             : trayWeight.3351 trayPaperColor.3352 trayPunched.3353
  1 lpPRNType=2 or lpPRNType=3               : Chapter_Check
  2 Chapter_Check=1                          : 316 315 391
  PerPageListRule                            : 246 lpInterSheetList 248 249 250 251 252 253 254
dialog 300
  1 POD_Check=1                              : 333 POD_OnePerSheet_Check ImageShift_Check
  2 POD_OnePerSheet_Check=1                  : lpPOD_OnePerSheet
  2 ImageShift_Check=1                       : 345
dialog 400
  0                                          : lpOverlay.401 lpOverlay.403
  OverlayCreateRule                          : lpOverlay.402*
  1 lpOverlay.402=2 or lpOverlay.403=3       : 412 410 409 407 407 417 411 406
  1 lpOverlay.403=3                          : OverlayPrompt OverlayOrder_Check
  1 lpOverlay.403=3 and 611=2                : 405
dialog 500
  0                                          : CopyNo_Check
  1 Watermark_Use=1                          : 502 503 lpWatermarkOrder.504 lpWatermarkOrder.505 FirstPageOnly 528
  1 CopyNo_Check=1                           : 523 CopyNo_WM_StartC 525 526 521 lpPrintPageC
dialog 600
  0                                          : EngSaveToner_Check* DraftPrint*
  1 PrintCAD_Check=1                         : lpPrintCADMode.638* lpPrintCADMode.639*
dialog 800
  1 lpOutputUnit=2 also lpOutputUnit=3       : 827 lpPunchKit 841 lpSaddleUnit 885 lpMailBinKit
dialog 2020
  2 OHPInterLeave_Check=1                    : lpOIPaperTray
dialog 2440
  PerPageListRule                            : 2444
dialog 2910
  OhpInterleaveRule                          : OHPInterLeave_Check
  2 OHPInterLeave_Check=1                    : 2914
dialog 2950
  0                                          : 2951 UserAuth_Check 2961 SecMana_Check
  1 UserAuth_Check=1                         : lpAuthUserMode.2953 lpAuthUserMode.2954
  1 SecMana_Check=1                          : 2963 2964 2965 2966 2967
  2 lpAuthUserMode.2954=2                    : 2955 2956 2957 2958 2959
)";
// clang-format on

}  // namespace heron::engine

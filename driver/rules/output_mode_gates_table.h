// Which controls are available only while the output goes to the printer, not to fax.
//
// Reader: dependency_tables.cc, at compile time. A row is: control, and where it applies
//   reset   the control returns to its default when the user selects fax
//   label   the fax notice names it by its label
//   text N  the fax notice names it by text N
// Bare numbers are controls without a setting. The last two rows act on nothing: no enable rule belongs to them. The
// fax notice names controls in the order of the rows.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kOutputModeGateText = uR"(
  119                           label
  lpMediaSource           reset label
  182                           text 20011
  149                           label
  lpBindPosit             reset label
  173                           label
  lpPRNType               reset label
  175                           label
  Nup_Check               reset label
  lpLayout                  label
  BindMargin_Check        reset label
  179                           label
  Staple_Check            reset label
  lpStaple                      label
  Punch_Check             reset label
  lpPunchHoles                  label
  FoldStaple_Check        reset label
  lpFoldStaple                  label
  171                           label
  lpOutputMethod          reset label
  Copies                  reset label
  104                           label
  101                           label
  102                           label
  138                           label
  lpOutputTray            reset label
  Sort_Check              reset label
  Collate_Check           reset label
  OHPInterLeave_Check     reset
  trayMediaType.page
  trayWeight.page
  trayPaperColor.page
  trayPunched.page
  Front_Check             reset label
  lpFrontCover.Printed
  211
  lpFrontCoverTray
  Back_Check              reset label
  lpBackCover.Printed
  213
  lpBackCoverTray
  Chapter_Check           reset label
  316
  315
  391
  InterSheet_Check        reset label
  246
  lpInterSheetList
  248
  249
  250
  251
  252
  253
  254
  2444
  333
  POD_OnePerSheet_Check   reset label
  lpPOD_OnePerSheet             label
  ImageShift_Check        reset label
  345
  lpOverlay.PrintWithForm           reset text 20301
  lpOverlay.CreateForm           reset text 20300
  CopyNo_Check            reset label
  521
  lpPrintPageC
  523
  CopyNo_WM_StartC
  525
  526
  EngSaveToner_Check      reset label
  DraftPrint              reset label
  trayRowSource
  255
)";
// clang-format on

}  // namespace heron::engine

// The controls that take part in constraints, and the setting that each one shows.
//
// Reader: controls.h, at compile time. A line "dialog D mask M" begins the controls of the dialog template D; M is the
// page mask of its rows, the bits of the restore-defaults buttons that reach them. A row is: id, type, label, name, and
// where it applies "parameter N", "mask N", "fixed".
//   type   L list, R radio button, C check box, N numeric field, B restore-defaults button
//   label  text number of the label
//   name   the setting's key; ".id" follows where several controls show one setting. Small first letters: names of our
//          own, of controls whose setting has no key and is found by its parameter number
//   mask   instead of the dialog's
//   fixed  its items are never forbidden by combination rules
// The engine looks rows up, so their order carries nothing.
// Mask bits: 4 the button itself, 8 paper, 16 per page, 32 device, 64 special, 128 quality, 256 fax, 512 font,
// 1024 watermark. The view radios stand on six templates and carry the bits of five pages. The tray... and ...Mark rows
// stand on no template; they are there for rules to name. To add a control, add its line; ids are template item ids.
#pragma once

#include <string_view>

namespace heron::engine {

// clang-format off
inline constexpr std::u16string_view kControlText = uR"(
dialog 100 mask 8
   125 L 21420 lpLayout.125
   127 L 21426 lpOrder.127
   129 L 21435 lpBorder2.129
   106 R 20000 lpOrientation.106
   107 R 20000 lpOrientation.107
   111 L 20007 lpMediaSize
   114 L 20008 lpOutputPaper
   116 N 20006 Zoom
   120 L 20009 lpMediaSource
   122 L 20010 lpMediaType.122
   123 C 21200 Layout_Check2
   174 L 20038 lpBindPosit
   176 L 20039 lpPRNType
   124 C 21420 Nup_Check
   155 C 21480 BindMargin_Check
   103 N 20005 Copies
   139 L 20013 lpOutputTray
   172 L 20018 lpOutputMethod
   141 L 20014 lpOutputOrder
   142 C 20015 Sort_Check
   143 C 20016 Collate_Check
   157 C 20017 PaperLess_Check
   151 B 21206 restoreDefaults.151         mask 12
   163 R 21200 previewMode.163             parameter 100 mask 1240
   164 R 21200 previewMode.164             parameter 100 mask 1240
   130 C 21440 Staple_Check
   131 L 21440 lpStaple
   136 C 21470 Punch_Check
   186 L 21470 lpPunchHoles
   177 C 35051 Saddle_Check
   187 C 35050 FoldStaple_Check
   188 L 35050 lpFoldStaple
  3310 L 20010 trayMediaType.3310          parameter 510
  3311 L 21675 trayWeight.3311             parameter 511
  3312 L 21676 trayPaperColor.3312         parameter 512
  3313 C 21674 trayPunched.3313            parameter 513
  3600 L 21200 mediaSizeMark               parameter 581
  3601 L 21200 outputPaperMark             parameter 582
dialog 200 mask 16
   201 C 20100 Front_Check
   202 R 20102 lpFrontCover.202
   203 R 20103 lpFrontCover.203
   212 L 20110 lpFrontCoverTray
   205 C 20101 Back_Check
   206 R 20102 lpBackCover.206
   207 R 20103 lpBackCover.207
   214 L 20121 lpBackCoverTray
   237 B 21206 restoreDefaults.237         mask 20
   314 C 20210 Chapter_Check
   215 C 20156 InterSheet_Check
   247 L 21200 lpInterSheetList            mask 0
  3330 L 20010 trayMediaType.3330          parameter 530
  3331 L 21675 trayWeight.3331             parameter 531
  3332 L 21676 trayPaperColor.3332         parameter 532
  3333 C 21674 trayPunched.3333            parameter 533
  3350 L 20010 trayMediaType.3350          parameter 550
  3351 L 21675 trayWeight.3351             parameter 551
  3352 L 21676 trayPaperColor.3352         parameter 552
  3353 C 21674 trayPunched.3353            parameter 553
dialog 300 mask 64
   301 C 20200 POD_Check
   308 C 20206 POD_OnePerSheet_Check
   309 L 20206 lpPOD_OnePerSheet
   317 C 20256 Fold_Check
   318 L 20256 lpFold
   328 C 20232 ImageShift_Check
   338 B 21206 restoreDefaults.338         mask 68
dialog 400 mask 0
   401 R 20302 lpOverlay.401
   402 R 20302 lpOverlay.402
   403 R 20302 lpOverlay.403
   404 C 20303 OverlayPrompt
   418 C 35085 OverlayOrder_Check
dialog 500 mask 1024
   501 C 20400 Watermark_Use
   504 R 20401 lpWatermarkOrder.504
   505 R 20401 lpWatermarkOrder.505
   506 C 20402 FirstPageOnly
   536 B 21206 restoreDefaults.536         mask 1028
   522 L 21661 lpPrintPageC
   518 C 21664 CopyNo_Check
   524 N 21666 CopyNo_WM_StartC
dialog 600 mask 128
   605 R 20510 lpDither.605
   606 R 20510 lpDither.606
   607 R 20510 lpDither.607
   635 C 20501 EngSaveToner_Check
   649 C 20554 DraftPrint
   637 C 20502 PrintCAD_Check
   638 R 20502 lpPrintCADMode.638
   639 R 20502 lpPrintCADMode.639
   625 L 20528 lpResolution
   614 L 20532 lpSmoothing
   671 R 20510 lpBrushPtPit.671
   672 R 20510 lpBrushPtPit.672
   615 B 21206 restoreDefaults.615         mask 132
dialog 700 mask 512
   701 C 20600 FontUseFlg
   713 L 20601 lpDLFontFormat
   711 B 21206 restoreDefaults.711         mask 516
dialog 800 mask 32
   844 R 21200 lpPDLType.844
   845 R 21200 lpPDLType.845
   846 C 21200 parameter234                parameter 234
   815 B 21206 restoreDefaults.815         mask 36
   804 L 20820 lpOutputUnit
   802 L 20800 lpSourceUnit
   886 L 35074 lpMailBinKit                fixed
   828 L 20848 lpPunchKit
   842 L 35078 lpSaddleUnit                fixed
   808 L 20868 lpFAXUnit
   838 L 20870 lpCopierHardDisk
   883 L 20946 lpCopierPrnChg
   834 L 20950 lpEngine
   874 C 21850 Secur_Check
dialog 900 mask 256
   902 R 20700 lpOutput.902
   903 R 20700 lpOutput.903
dialog 2020 mask 8
  2021 R 20030 lpOhpIntlvType.2021
  2022 R 20030 lpOhpIntlvType.2022
  2024 L 20031 lpOIPaperTray
dialog 2300 mask 8
  2306 N 21112 fMargin
  2310 N 21113 bMargin
  2301 R 21484 lpMarginMode.2301
  2302 R 21484 lpMarginMode.2302
  2315 C 21485 MarginEqual_Check
dialog 2320 mask 64
  2350 R 20233 lpImgShiftMode.2350
  2351 R 20233 lpImgShiftMode.2351
  2321 R 21200 lpImgShiftDirectLRF.2321
  2322 R 21200 lpImgShiftDirectLRF.2322
  2325 R 21200 lpImgShiftDirectUDF.2325
  2326 R 21200 lpImgShiftDirectUDF.2326
  2332 R 21200 lpImgShiftDirectLRB.2332
  2333 R 21200 lpImgShiftDirectLRB.2333
  2336 R 21200 lpImgShiftDirectUDB.2336
  2337 R 21200 lpImgShiftDirectUDB.2337
  2323 N 21200 ImgShiftValueLRF
  2327 N 21200 ImgShiftValueUDF
  2330 N 21200 ImgShiftPageIntervalF
  2334 N 21200 ImgShiftValueLRB
  2338 N 21200 ImgShiftValueUDB
  2341 N 21200 ImgShiftPageIntervalB
  2354 C 20246 ImgShiftBackAuto_Check
dialog 2355 mask 8
  2357 R 35063 lpWidePaperPos.2357
  2358 R 35063 lpWidePaperPos.2358
  2359 R 35063 lpWidePaperPos.2359
dialog 2400 mask 0
  2405 L 20135 lpInterSheetListPRNType
  2407 L 20136 lpInterSheetListTray
  2413 L 20169 lpInterSheetListStaple
  2435 C 20170 InterSheetListStapleStop
  2415 L 20171 lpInterSheetListPunch
  2417 L 20010 lpInterSheetListMediaType
  2419 L 21675 lpInterSheetListPaperWeight
  2421 L 21676 lpInterSheetListPaperColor
  2423 L 21674 lpInterSheetListPaperHoles
  2425 C 20138 PrnTabIndex
  2429 L 21200 lpPrnTabIndexNo
dialog 2450 mask 0
  2453 L 21200 lpTabTextOrient
  2455 L 21200 lpTabTextAlign
dialog 2900 mask 8
  2902 L 21426 lpLayout.2902
  2904 L 21426 lpOrder.2904
  2906 L 21435 lpBorder2.2906
dialog 2910 mask 8
  2913 C 21716 OHPInterLeave_Check
  3300 L 20009 trayRowSource               parameter 500 mask 0
dialog 2920 mask 8
  2921 L 20010 lpMediaType.2921
  2923 L 21675 lpWeight
  2925 L 21676 lpPaperColor
  2927 C 21674 PaperPunch_Check
dialog 2950 mask 8
  2952 C 21719 UserAuth_Check
  2953 R 21200 lpAuthUserMode.2953
  2954 R 21200 lpAuthUserMode.2954
  2962 C 21717 SecMana_Check
)";
// clang-format on

}  // namespace heron::engine

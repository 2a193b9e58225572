// Every field of the settings record, once: offset, width, name, default.
//
// Readers: driver_env.h (typed access by name), defaults.cc (the default), merge.cc (device options), listings.
// A line is: offset, type, name, default, and where it applies xN+S and dev.
//   type     u8 u16 i16 u32, u32xN: N of them, wN: text of N characters, bN: N bytes
//   default  fN: the catalogue's default of feature N; a number; -: zero, or set by code that computes it
//   xN+S     the field stands N times, S bytes apart; a default f415.. then counts on from one to the next
//   dev      a device option: taken from the queue's saved record, never from an application's
// The lines tile the 3328 bytes without gap or overlap; what nothing reads is named "reserved". Offsets are shared with
// the printing side and never change; a new field takes its place from reserved bytes.
#pragma once

#include <string_view>

namespace heron {

// clang-format off
inline constexpr std::string_view kEnvFieldText = R"(
   0 w32    dmDeviceName                     -
  64 u16    dmSpecVersion                    -
  66 u16    dmDriverVersion                  -
  68 u16    dmSize                           -
  70 u16    dmDriverExtra                    -
  72 u32    dmFields                         -
  76 i16    dmOrientation                    f3
  78 i16    dmPaperSize                      f0
  80 i16    dmPaperLength                    -
  82 i16    dmPaperWidth                     -
  84 i16    dmScale                          -
  86 i16    dmCopies                         f2
  88 i16    dmDefaultSource                  f27
  90 i16    dmPrintQuality                   f5
  92 i16    dmColor                          1
  94 i16    dmDuplex                         -
  96 i16    dmYResolution                    f5
  98 i16    dmTTOption                       -
 100 i16    dmCollate                        -
 102 w32    dmFormName                       -
 166 b54    reserved                         -
 220 b220   publicMirror                     -
 440 w4     signature                        -
 448 b328   reserved                         -
 776 u16    lpOutputPaper                    f11
 778 u8     lpGraphicsMode                   f53
 779 u8     renderConstant                   5
 780 u8     renderMode                       -
 781 u8     Layout_Check                     f29
 782 u8     lpLayout                         f12
 783 u8     lpOrder                          f31
 784 u8     renderCopyA                      -
 785 u8     renderFlagA                      -
 786 u8     renderCopyB                      -
 787 u8     renderFlagB                      -
 788 u8     layoutFactor                     1
 789 u16    layoutFlag                       -
 791 u32x4  paperMargins                     -
 807 u32x4  paperMarginsDots                 -
 823 u32x4  outputMarginsDots                -
 839 u32x2  paperSizeDots                    -
 847 u32x2  outputSizeDots                   -
 855 b16    reserved                         -
 871 u16    maxCopies                        -
 873 u8     ZoomCheck                        f25
 874 i16    Zoom                             f26
 876 u16    lpBorder                         -
 878 u8     lpBooklet                        f32
 879 u8     lpOverlay                        f47
 880 u8     bOverlayIndex                    -
 881 u8     OverlayPrompt                    f48
 882 w260   overlayName                      -
1402 b4     reserved                         -
1406 u8     lpWatermarkOrder                 f51
1407 u8     Watermark_Use                    f49
1408 u8     watermarkIndex                   -
1409 u8     FirstPageOnly                    f50
1410 u8     lpPDLType                        f58            dev
1411 u8     FontUseFlg                       f59
1412 b4     reserved                         -
1416 u8     lpBrushPtPit                     f403
1417 u8     lpDLFontFormat                   f404
1418 u8     HairLineAd_Check                 f402
1419 u8     EnableBPPChange_Check            1
1420 u8     renderFlagC                      1
1421 b6     reserved                         -
1427 b4     extraGuard                       -
1431 u8     lpLayout_Select                  f30
1432 u8     Sort_Check                       f90
1433 u8     Collate_Check                    f36
1434 u8     Layout_Check2                    f96
1435 u8     Nup_Check                        f92
1436 u8     lpBorder2                        f133
1437 u8     Duplex_Check                     f95
1438 u8     lpDuplex                         f7
1439 u8     Staple_Check                     f94
1440 u8     lpStaple                         f34
1441 u8     Punch_Check                      f97
1442 u8     lpPunch                          f134
1443 u8     lpPunchHoles                     f132
1444 u8     Booklet_Check                    f93
1445 u8     EngBooklet_Check                 f184
1446 u8     lpEngBooklet                     f187
1447 u8     lpBooklet2                       f186
1448 u8     BindMargin_Check                 f98
1449 u8     fMargin                          f171
1450 u8     lpBindMargin                     f135
1451 u8     bMargin                          f172
1452 u8     MarginEqual_Check                f114
1453 u8     lpMarginMode                     f130
1454 u8     lpWaitMode                       f125
1455 u8     lpErrDiffMode                    f126
1456 u8     lpOhpIntlvType                   f129
1457 u8     previewMode                      f131
1458 u8     undisplayPassword                f112
1459 w11    secureCodeA                      -
1481 w11    securePassword                   -
1503 w11    secureCodeB                      -
1525 w10    boxNumber                        -
1545 w17    secureId                         -
1579 w31    boxFileName                      -
1641 w65    authUserName                     -
1771 w9     departmentName                   -
1789 w65    authPassword                     -
1919 w9     departmentPassword               -
1937 u16    documentPaperSnapshot            f0
1939 u8     PaperLess_Check                  f99
1940 u8     timerHour                        f203
1941 u8     timerMinute                      f204
1942 u8     lpWidePaperPos                   f163
1943 u16    lpMediaSource                    f27
1945 u16    lpOutputTray                     f28
1947 u16    outputPaperWidth                 -
1949 u16    outputPaperLength                -
1951 u16    UDPaperWidth                     f164
1953 u16    UDPaperLength                    f165
1955 u8     lpUDPaperUnit                    f88
1956 u16    UDMediaWidth                     f164
1958 u16    UDMediaLength                    f165
1960 u8     lpUDMediaUnit                    f88
1961 u8     lpOutputOrder                    f150
1962 u16    lpOIPaperTray                    f151
1964 u16    lpUDPaperType                    f152
1966 u16    lpUDMediaType                    f153
1968 u8     lpOutputMethod                   f189
1969 u8     Set_CenterFinish_Check           f106
1970 u8     lpBindPosit                      f231
1971 u8     bindingSide                      -
1972 u8     lpPRNType                        f232
1973 u8     Saddle_Check                     f233
1974 u8     FoldStaple_Check                 f234
1975 u8     Trim_Check                       f236
1976 u8     RePrint_Check                    f237
1977 u8     lpFoldStaple                     f235
1978 u8     CenterErase_Check                f238
1979 u8     lpFrontCover                     1
1980 u16    lpFrontCoverTray                 f140
1982 u8     lpBackCover                      1
1983 u16    lpBackCoverTray                  f140
1985 u8     lpMediaType                      f39
1986 u16    lpCoverSource                    f140
1988 u8     tandemCheck2                     f1000
1989 u16    tandemTray2                      f1001
1991 u8     InterSheet_Check                 f100
1992 u8     FrontCoverSheet_Check            f101
1993 u16    lpFrontPITray                    f141
1995 u8     FrontMaisu                       f497
1996 u8     BackCoverSheet_Check             f101
1997 u16    lpBackPITray                     f141
1999 u8     BackMaisu                        f498
2000 u8     Mixplex_Check                    f124
2001 u8     lpCoverSheetTray                 f145           dev
2002 b488   pagenumStr                       -
2490 u8     lpInterSheetList                 f136
2491 u8     lpInterSheetListPRNType          f137
2492 u16    lpInterSheetListTray             f139
2494 u8     lpInterSheetListBinding          -
2495 u8     lpInterSheetListBindPosit        -
2496 u8     lpInterSheetListStaple           -
2497 u8     InterSheetListStapleStop         -
2498 u8     lpInterSheetListPunch            -
2499 u8     lpInterSheetListMediaType        -
2500 u8     lpInterSheetListPaperWeight      -
2501 u8     lpInterSheetListPaperColor       -
2502 u8     lpInterSheetListPaperHoles       -
2503 u8     PrnTabIndex                      f123
2504 u8     lpPrnTabIndexNo                  -
2505 u8     lpTabTextOrient                  f216
2506 u8     lpTabTextAlign                   f217
2507 u8     ISMAISU                          f496
2508 u8     POD_Check                        f102
2509 u8     POD_Nup_Check                    f92
2510 u8     POD_OnePerSheet_Check            f103
2511 u8     lpPOD_OnePerSheet                f142
2512 u8     POD_Duplex_Check                 f95
2513 u8     POD_Booklet_Check                f104
2514 u8     lpPOD_Booklet                    f143
2515 u8     Chapter_Check                    f105
2516 u8     POD_BindMargin_Check             f98
2517 u8     Fold_Check                       f106
2518 u8     lpFold                           f144
2519 u8     POD_Staple_Check                 f94
2520 u8     POD_Punch_Check                  f97
2521 u8     WaitMode_Check                   f107
2522 u8     TandemMode_Check                 f1004
2523 u8     lpTandemMode                     f1003
2524 u8     ImageShift_Check                 f109
2525 u8     lpImgShiftMode                   f157
2526 u8     lpImgShiftDirectLRF              f158
2527 u8     lpImgShiftDirectUDF              f159
2528 u16    ImgShiftValueLRF                 f173
2530 u16    ImgShiftValueUDF                 f174
2532 u16    ImgShiftPageIntervalF            f175
2534 u16    ImgShiftOutOffsetF               f704
2536 u8     lpImgShiftDirectLRB              f160
2537 u8     lpImgShiftDirectUDB              f161
2538 u16    ImgShiftValueLRB                 f176
2540 u16    ImgShiftValueUDB                 f177
2542 u16    ImgShiftOutOffsetB               f705
2544 u16    ImgShiftPageIntervalB            f178
2546 u8     ImgShiftBackAuto_Check           f162
2547 u8     JobPartition_Check               f451
2548 u16    CyclePage                        f454
2550 u8     AdhesiveBind_Check               f452
2551 u8     PilePermit_Check                 f453
2552 u8     PerfectBind_Check                f486
2553 u8     lpPbCoverPrintMode               f487
2554 u8     PbCoverDuplex_Check              f488
2555 u8     lpPbCoverTray                    f489
2556 u8     PbCoverTrim_Check                f490
2557 u16    PbBackCoverWidth                 f491
2559 u8     TabIShift_Check                  f492
2560 u16    TabIShiftSize                    f493
2562 u8     OverlayOrder_Check               f91
2563 u8     Date_Time_Check                  f271
2564 u8     lpPrintPageD                     f272
2565 u8     PageNo_Check                     f273
2566 u8     lpPrintPageP                     f274
2567 u16    PageNo_WM_StartP                 f275
2569 u16    PageNo_WM_PrintStartP            f280
2571 u8     CopyNo_Check                     f276
2572 u8     lpType                           f277
2573 u8     lpPrintPageC                     f278
2574 u16    CopyNo_WM_StartC                 f279
2576 u8     lpWMarkColor                     f281
2577 u8     lpWMNumDensity                   f282
2578 u8     JimonMode_Check                  f470
2579 u8     JimonStamp_Check                 f471
2580 u8     lpJimonStamp                     f472
2581 u8     lpJimonComStamp                  f473
2582 u8     lpJimonRegStamp                  f474
2583 u8     JimonDateTime_Check              f475
2584 u8     lpJimonDate                      f476
2585 u8     lpJimonTime                      f477
2586 u8     JimonSrNo_Check                  f478
2587 u8     lpJimonColor                     f479
2588 u16    JimonDensity                     f480
2590 u8     lpJimonPattern                   f481
2591 u16    JimonPtContrast                  f482
2593 u8     lpJimonPtSize                    f483
2594 u8     lpJimonPtOverWrite               f484
2595 u16    lpJimonAngle                     f485
2597 u8     lpDither                         f55
2598 u8     SaveToner                        f52
2599 u16    Intensity                        f56
2601 u8     lpSmoothing                      f57
2602 u8     EngSaveToner_Check               f110
2603 u8     DraftPrint                       f309
2604 u8     lpHalftoneType                   f406
2605 u8     PrintCAD_Check                   f111
2606 u8     lpPrintCADMode                   f127
2607 u8     f1Plane1Bit_Check                f115
2608 u8     Density_Check                    f315
2609 u16    Density                          f170
2611 u8     lpColorMode                      f401
2612 u8     lp2Color                         f411
2613 u8     lpExposureType                   f412
2614 u8     GlossMode_Check                  f413
2615 u8     lpAdjustMode                     f414
2616 u8     reserved                         -
2617 u8     lpOutput                         f66
2618 u16    lpQuality                        f67
2620 u8     CoverSheet                       f68
2621 u8     filePrintFlag                    f71
2622 u8     sendTimeFlag                     f72
2623 w7     sendDate                         -
2637 b22    reserved                         -
2659 u16    faxAddressCount                  -
2661 u32    faxAddressFileId                 -
2665 u8     EcmTab                           f69
2666 u8     IntlComTab                       f70
2667 u8     FaxV34_CheckTab                  f183
2668 u8     SubAddress                       f211
2669 w21    szSubAddress                     -
2711 u8     SenderID                         f212
2712 w21    szSenderID                       -
2754 u8     bTimeH                           -
2755 u8     bTimeM                           -
2756 u8     FaxCover_Subject                 f190
2757 u8     FaxCover_ReceiveName             f191
2758 u8     FaxCover_ReceiveCompany1         f192
2759 u8     FaxCover_ReceiveCompany2         f193
2760 u8     lpFaxCover_ReceiveSetup          f210
2761 u8     lpFaxCover_ReceivePersonal       f195
2762 u8     FaxCover_ReceiveFaxnum           f194
2763 u8     FaxCover_SenderName              f196
2764 u8     FaxCover_SenderCompany1          f197
2765 u8     FaxCover_SenderCompany2          f198
2766 u8     FaxCover_SenderTelnum            f199
2767 u8     FaxCover_SenderFaxnum            f200
2768 u8     FaxCover_SenderEmail             f201
2769 u8     FaxCover_Date                    f206
2770 u8     FaxCover_Pagenum                 f207
2771 u8     FaxCover_Image                   f208
2772 u8     FaxCover_Zoom                    f209
2773 u8     FaxCover_A4PFix                  f202
2774 u8     lpSourceUnit                     f60            dev
2775 u8     lpOutputUnit                     f61            dev
2776 u8     lpHardDisk                       f62            dev
2777 u8     lpFAXUnit                        f63            dev
2778 u8     lpMemory                         f64            dev
2779 u8     lpNetworkCard                    f65            dev
2780 u8     lpCopierHardDisk                 f148           dev
2781 u8     lpFoldUnit                       f181           dev
2782 u8     lpAutoDuplexUnit                 f205           dev
2783 u8     lpSaddleUnit                     f214           dev
2784 u8     lpTandem                         f1002          dev
2785 u8     lpEngine                         f149           dev
2786 u8     lpFinisher                       f1005          dev
2787 u8     lpTrimmer                        f146           dev
2788 u8     lpLargeCapacityTray              f188           dev
2789 u8     lpPunchKit                       f180           dev
2790 u8     lpPunchZFold                     f147           dev
2791 u8     lpMailBinKit                     f317           dev
2792 u8     lpCopierPrnChg                   f316           dev
2793 u8     lpPerfectBindUnit                f494           dev
2794 w16    deviceInfoText                   -              dev
2826 u8     Secur_Check                      f450           dev
2827 u32x4  paperMarginsDotsCopy             -
2843 b18    reserved                         -
2861 u32x4  outputMargins                    -
2877 u16    QXOutputPaperSize                f11
2879 w66    ownerUserName                    -
3011 u32    ownerNameSum                     -
3015 u8     ownerNameLength                  -
3016 u8     uiZoomMode                       f156
3017 u16    lpResolution                     f5
3019 b6     pageMemo                         -
3025 u8     usetPaper                        f116
3026 u8     usetUDPaper                      f117
3027 u8     usetTrybyPg                      f118
3028 u8     usetWMark                        f119
3029 u8     usetFaxcover                     f120
3030 u8     usetForm                         f121
3031 u8     usetMediaTypeList                f122
3032 u8     LongPaper_Check                  -
3033 u8     parameter234                     f213
3034 u8     savedPDLType                     f58
3035 u8     parameter238                     f215
3036 u8     savedCopierHardDisk              f148
3037 u8     parameter304                     f293
3038 u8     parameter305                     f294
3039 u8     lpPIPunchFoldUnit                f300           dev
3040 u8     lpLCStackerUnit                  f301           dev
3041 w64    szDevIPAddress                   -              dev
3169 u8     OHPInterLeave_Check              f295
3170 u16    reserved                         -
3172 u16    trayTableIndex                   -
3174 u16    trayTable.lpMediaSource          f27     x10+6
3176 u8     trayTable.lpMediaType            f39     x10+6
3177 u8     trayTable.lpWeight               f291    x10+6
3178 u8     trayTable.lpPaperColor           f292    x10+6
3179 u8     trayTable.PaperPunch_Check       f290    x10+6
3234 u8     UserAuth_Check                   f313
3235 u8     lpAuthUserMode                   f312
3236 u8     SecMana_Check                    f311
3237 u8     colorGroup.Matching              f415..  x3+18
3238 u8     colorGroup.Screen                f418..  x3+18
3239 u8     colorGroup.Smoothing             f421..  x3+18
3240 u8     colorGroup.PureBlack             f424..  x3+18
3241 u16    colorGroup.Bright                f427..  x3+18
3243 u16    colorGroup.Contrast              f430..  x3+18
3245 u16    colorGroup.Saturation            f433..  x3+18
3247 u16    colorGroup.Cyan                  f436..  x3+18
3249 u16    colorGroup.Mgenta                f439..  x3+18
3251 u16    colorGroup.Yellow                f442..  x3+18
3253 u16    colorGroup.Black                 f445..  x3+18
3291 u8     GraphColor                       f448
3292 u8     GraphScreen                      f449
3293 b28    modelTag                         -
3321 b3     reserved                         -
3324 b4     endGuard                         -
)";
// clang-format on

}  // namespace heron

// The keys of a settings file, in the order in which they stand there.
//
// Reader: file_keys.h, at compile time; the settings library walks the result. A line is: id | recall group | name |
// range. A name in brackets opens a section, a name without them is a key of the section above it. `lo..hi` is the
// range of the name's %d; a number behind it is the id of the key that holds the count of a list.
//
// Recall groups: 0 never copied, 1 ordinary settings, 2 document size and copies, 3 user papers, 4 watermarks, 5
// per-page lists, 6 fax cover sheet, 7 form list, 8 the page description language. Ids are named by parameters and
// never change; a new key takes a number above all others.
#pragma once

#include <string_view>

namespace heron {

// clang-format off
inline constexpr std::u16string_view kFileKeyText = uR"(
 1000 | 2 | [IP_SETTING LIBRARY UIPARAM]
 1001 | 2 |  lpOrientation
 1002 | 2 |  lpMediaSize
 1003 | 1 |  lpOutputPaper
 1004 | 1 |  QXOutputPaperSize
 1005 | 1 |  ZoomCheck
 1006 | 1 |  Zoom
 1007 | 1 |  lpMediaSource
 1008 | 1 |  lpBindPosit
 1009 | 1 |  lpPRNType
 1010 | 1 |  Nup_Check
 1011 | 1 |  Layout_Check
 1012 | 1 |  Layout_Check2
 1013 | 1 |  lpLayout_Select
 1014 | 1 |  lpLayout
 1015 | 1 |  Booklet_Check
 1016 | 1 |  EngBooklet_Check
 1017 | 1 |  lpBooklet
 1018 | 1 |  lpBooklet2
 1019 | 1 |  lpEngBooklet
 1020 | 1 |  Duplex_Check
 1021 | 1 |  lpDuplex
 1022 | 1 |  BindMargin_Check
 1023 | 1 |  Staple_Check
 1024 | 1 |  lpStaple
 1025 | 1 |  Punch_Check
 1026 | 1 |  lpPunch
 1027 | 1 |  lpPunchHoles
 1028 | 1 |  Saddle_Check
 1029 | 1 |  FoldStaple_Check
 1030 | 1 |  Trim_Check
 1031 | 1 |  Set_CenterFinish_Check
 1032 | 1 |  RePrint_Check
 1033 | 1 |  lpOutputMethod
 1034 | 2 |  Copies
 1035 | 1 |  lpOutputTray
 1036 | 1 |  lpOutputOrder
 1037 | 1 |  Sort_Check
 1038 | 1 |  Collate_Check
 1039 | 1 |  PaperLess_Check
 1040 | 3 |  lpUDPaperType
 1041 | 3 |  UDPaperWidth
 1042 | 3 |  UDPaperLength
 1043 | 3 |  lpUDPaperUnit
 1044 | 3 |  lpUDMediaType
 1045 | 3 |  UDMediaWidth
 1046 | 3 |  UDMediaLength
 1047 | 3 |  lpUDMediaUnit
 1048 | 3 |  LongPaper_Check
 1049 | 1 |  lpWidePaperPos
 1050 | 1 |  OHPInterLeave_Check
 1051 | 1 |  lpMediaType
 1052 | 1 |  lpWeight
 1053 | 1 |  lpPaperColor
 1054 | 1 |  PaperPunch_Check
 1055 | 1 |  lpOhpIntlvType
 1056 | 1 |  lpOIPaperTray
 1057 | 1 |  lpOrder
 1058 | 1 |  lpBorder2
 1059 | 1 |  lpBorder
 1060 | 1 |  fMargin
 1061 | 1 |  bMargin
 1062 | 1 |  lpMarginMode
 1063 | 1 |  MarginEqual_Check
 1064 | 1 |  lpBindMargin
 1065 | 1 |  lpFoldStaple
 1066 | 1 |  CenterErase_Check
 1067 | 1 |  Front_Check
 1068 | 1 |  lpFrontCover
 1069 | 1 |  lpFrontCoverTray
 1070 | 1 |  Back_Check
 1071 | 1 |  lpBackCover
 1072 | 1 |  lpBackCoverTray
 1073 | 1 |  FrontCoverSheet_Check
 1074 | 1 |  lpFrontPITray
 1075 | 1 |  FrontMaisu
 1076 | 1 |  BackCoverSheet_Check
 1077 | 1 |  lpBackPITray
 1078 | 1 |  BackMaisu
 1079 | 1 |  InterSheet_Check
 1080 | 5 |  lpInterSheetList
 1081 | 1 |  lpCoverSource
 1082 | 5 |  InterSheetListData_nCurrent
 1083 | 5 |  InterSheetListData_PageListNum
 1084 | 5 |  lpInterSheetListPRNType
 1085 | 5 |  lpInterSheetListTray
 1086 | 5 |  ISMAISU
 1087 | 5 |  lpInterSheetListBinding
 1088 | 5 |  lpInterSheetListBindPosit
 1089 | 5 |  lpInterSheetListStaple
 1090 | 5 |  InterSheetListStapleStop
 1091 | 5 |  lpInterSheetListPunch
 1092 | 5 |  lpInterSheetListMediaType
 1093 | 5 |  lpInterSheetListPaperWeight
 1094 | 5 |  lpInterSheetListPaperColor
 1095 | 5 |  lpInterSheetListPaperHoles
 1096 | 5 |  PrnTabIndex
 1097 | 5 |  lpPrnTabIndexNo
 1098 | 5 |  lpTabTextOrient
 1099 | 5 |  lpTabTextAlign
 1100 | 5 |  TabTextFontName
 1101 | 5 |  lpTabTextFontStyle
 1102 | 5 |  TabTextFontSize
 1103 | 5 |  Mixplex_Check
 1104 | 5 |  InterSheetListData_Mixplex
 1105 | 5 |  lpTabPaperSize
 1106 | 5 |  lpTabIndexNum
 1107 | 5 |  TabTopMargin
 1108 | 5 |  TabBottomMargin
 1109 | 5 |  TabIndexSpace
 1110 | 5 |  TabTextPosition
 1111 | 1 |  POD_OnePerSheet_Check
 1112 | 1 |  lpPOD_OnePerSheet
 1113 | 1 |  Fold_Check
 1114 | 1 |  lpFold
 1115 | 1 |  ImageShift_Check
 1116 | 1 |  JobPartition_Check
 1117 | 1 |  CyclePage
 1118 | 1 |  AdhesiveBind_Check
 1119 | 1 |  PilePermit_Check
 1120 | 1 |  POD_Check
 1121 | 1 |  POD_Nup_Check
 1122 | 1 |  POD_Duplex_Check
 1123 | 1 |  POD_Booklet_Check
 1124 | 1 |  lpPOD_Booklet
 1125 | 1 |  Chapter_Check
 1126 | 1 |  POD_BindMargin_Check
 1127 | 1 |  POD_Staple_Check
 1128 | 1 |  POD_Punch_Check
 1129 | 1 |  WaitMode_Check
 1130 | 1 |  lpWaitMode
 1131 | 1 |  TandemMode_Check
 1132 | 1 |  lpTandemMode
 1133 | 1 |  PerfectBind_Check
 1134 | 1 |  TabIShift_Check
 1135 | 1 |  TabIShiftSize
 1136 | 1 |  lpImgShiftMode
 1137 | 1 |  lpImgShiftDirectLRF
 1138 | 1 |  lpImgShiftDirectUDF
 1139 | 1 |  ImgShiftValueLRF
 1140 | 1 |  ImgShiftValueUDF
 1141 | 1 |  ImgShiftPageIntervalF
 1142 | 1 |  ImgShiftOutOffsetF
 1143 | 1 |  lpImgShiftDirectLRB
 1144 | 1 |  lpImgShiftDirectUDB
 1145 | 1 |  ImgShiftValueLRB
 1146 | 1 |  ImgShiftValueUDB
 1147 | 1 |  ImgShiftPageIntervalB
 1148 | 1 |  ImgShiftOutOffsetB
 1149 | 1 |  ImgShiftBackAuto_Check
 1150 | 1 |  lpPbCoverPrintMode
 1151 | 1 |  PbCoverDuplex_Check
 1152 | 1 |  PbCoverTrim_Check
 1153 | 1 |  lpPbCoverTray
 1154 | 1 |  PbBackCoverWidth
 1155 | 1 |  lpOverlay
 1156 | 1 |  OverlayPrompt
 1157 | 7 |  bOverlayIndex
 1158 | 1 |  OverlayOrder_Check
 1159 | 1 |  Watermark_Use
 1160 | 4 |  bWatermarkCurrent
 1161 | 4 |  bWatermarkDefault
 1162 | 4 |  bWatermarkFixed
 1163 | 1 |  lpWatermarkOrder
 1164 | 1 |  FirstPageOnly
 1165 | 1 |  Date_Time_Check
 1166 | 1 |  lpPrintPageD
 1167 | 1 |  PageNo_Check
 1168 | 1 |  lpPrintPageP
 1169 | 1 |  PageNo_WM_StartP
 1170 | 1 |  PageNo_WM_PrintStartP
 1171 | 1 |  lpType
 1172 | 1 |  CopyNo_Check
 1173 | 1 |  lpPrintPageC
 1174 | 1 |  CopyNo_WM_StartC
 1175 | 1 |  lpWMarkColor
 1176 | 1 |  lpWMNumDensity
 1177 | 1 |  JimonMode_Check
 1178 | 1 |  JimonStamp_Check
 1179 | 1 |  lpJimonStamp
 1180 | 1 |  lpJimonComStamp
 1181 | 1 |  lpJimonRegStamp
 1182 | 1 |  JimonDateTime_Check
 1183 | 1 |  lpJimonDate
 1184 | 1 |  lpJimonTime
 1185 | 1 |  JimonSrNo_Check
 1186 | 1 |  lpJimonColor
 1187 | 1 |  JimonDensity
 1188 | 1 |  lpJimonPattern
 1189 | 1 |  JimonPtContrast
 1190 | 1 |  lpJimonPtSize
 1191 | 1 |  lpJimonPtOverWrite
 1192 | 1 |  lpJimonAngle
 1193 | 1 |  PrintCAD_Check
 1194 | 1 |  lpPrintCADMode
 1195 | 1 |  lpDither
 1196 | 1 |  lpDitherType
 1197 | 1 |  Intensity
 1198 | 1 |  Density_Check
 1199 | 1 |  Density
 1200 | 1 |  SaveToner
 1201 | 1 |  DraftPrint
 1202 | 1 |  lpSmoothing
 1203 | 1 |  lpExposureType
 1204 | 1 |  lpColorMode
 1205 | 1 |  lp2Color
 1206 | 1 |  lpAdjustMode
 1207 | 1 |  GlossMode_Check
 1208 | 1 |  HairLineAd_Check
 1209 | 1 |  lpBrushPtPit
 1210 | 1 |  EnableBPPChange_Check
 1211 | 1 |  lpHalftoneType
 1212 | 1 |  lpGraphicsMode
 1213 | 1 |  EngSaveToner_Check
 1214 | 1 |  f1Plane1Bit_Check
 1215 | 1 |  lpErrDiffMode
 1216 | 8 |  lpPDLType
 1217 | 1 |  lpResolution
 1218 | 1 |  FontUseFlg
 1219 | 1 |  lpDLFontFormat
 1220 | 1 |  lpOutput
 1221 | 0 |  lpQuality
 1222 | 0 |  CoverSheet
 1223 | 0 |  EcmTab
 1224 | 0 |  IntlComTab
 1225 | 0 |  FaxV34_CheckTab
 1226 | 0 |  SenderID
 1227 | 0 |  szSenderID
 1228 | 0 |  SubAddress
 1229 | 0 |  szSubAddress
 1230 | 0 |  bTimeH
 1231 | 0 |  bTimeM
 1232 | 6 |  FaxCover_Subject
 1233 | 6 |  FaxCover_ReceiveName
 1234 | 6 |  FaxCover_ReceiveCompany1
 1235 | 6 |  FaxCover_ReceiveCompany2
 1236 | 6 |  lpFaxCover_ReceiveSetup
 1237 | 6 |  lpFaxCover_ReceivePersonal
 1238 | 6 |  FaxCover_ReceiveFaxnum
 1239 | 6 |  FaxCover_SenderName
 1240 | 6 |  FaxCover_SenderCompany1
 1241 | 6 |  FaxCover_SenderCompany2
 1242 | 6 |  FaxCover_SenderTelnum
 1243 | 6 |  FaxCover_SenderFaxnum
 1244 | 6 |  FaxCover_SenderEmail
 1245 | 6 |  FaxCover_Date
 1246 | 6 |  FaxCover_Pagenum
 1247 | 6 |  FaxCover_Image
 1248 | 6 |  FaxCover_Zoom
 1249 | 6 |  FaxCover_A4PFix
 1250 | 0 |  lpSourceUnit
 1251 | 0 |  lpOutputUnit
 1252 | 0 |  lpSaddleUnit
 1253 | 0 |  lpPIPunchFoldUnit
 1254 | 0 |  lpLCStackerUnit
 1255 | 0 |  lpMailBinKit
 1256 | 0 |  lpHardDisk
 1257 | 0 |  lpFAXUnit
 1258 | 0 |  lpMemory
 1259 | 0 |  lpNetworkCard
 1260 | 0 |  lpFinisher
 1261 | 0 |  lpLargeCapacityTray
 1262 | 0 |  lpCoverSheetTray
 1263 | 0 |  lpTrimmer
 1264 | 0 |  lpPunchKit
 1265 | 0 |  lpPunchZFold
 1266 | 0 |  lpFoldUnit
 1267 | 0 |  lpEngine
 1268 | 0 |  lpCopierHardDisk
 1269 | 0 |  lpAutoDuplexUnit
 1270 | 0 |  lpTandem
 1271 | 0 |  lpCopierPrnChg
 1272 | 0 |  szDevIPAddress
 1273 | 0 |  Secur_Check
 1274 | 0 |  lpPerfectBindUnit
 1275 | 0 |  SecMana_Check
 1276 | 0 |  UserAuth_Check
 1277 | 0 |  lpAuthUserMode
  206 | 6 | [Faxcoversheet Subject]
  207 | 6 |  0
  208 | 6 | [Faxcoversheet Fixedform]
  209 | 6 |  0
  210 | 6 | [Faxcoversheet Pagenum]
  211 | 6 |  0
  212 | 6 | [Faxcoversheet Style]
  213 | 6 |  0
  214 | 6 | [Faxcoversheet A4PFix]
  215 | 6 |  0
  216 | 6 | [Faxcoversheet Filename]
  217 | 6 |  0
  218 | 6 | [Faxcoversheet Xposition]
  219 | 6 |  0
  220 | 6 | [Faxcoversheet Yposition]
  221 | 6 |  0
  222 | 6 | [Faxcoversheet Zoom]
  223 | 6 |  0
  224 | 0 | [Faxcover ReceiptCompany1]
  225 | 0 |  0
  226 | 0 | [Faxcover ReceiptCompany2]
  227 | 0 |  0
  228 | 0 | [Faxcover ReceiptName]
  229 | 0 |  0
  230 | 0 | [Faxcover ReceiptFaxnum]
  231 | 0 |  0
  232 | 6 | [Faxcover SenderCompany1]
  233 | 6 |  0
  234 | 6 | [Faxcover SenderCompany2]
  235 | 6 |  0
  236 | 6 | [Faxcover SenderName]
  237 | 6 |  0
  238 | 6 | [Faxcover SenderTelnum]
  239 | 6 |  0
  240 | 6 | [Faxcover SenderFaxnum]
  241 | 6 |  0
  242 | 6 | [Faxcover SenderEmail]
  243 | 6 |  0
  244 | 6 | [Faxcoversheet Comment]
  245 | 6 |  999
  246 | 6 |  %d
  247 | 3 | [User Defined Name]
  248 | 3 |  %d                                   | 1..10
  249 | 3 | [User Defined Width]
  250 | 3 |  %d                                   | 1..10
  251 | 3 | [User Defined Length]
  252 | 3 |  %d                                   | 1..10
  253 | 3 | [User Defined Unit]
  254 | 3 |  %d                                   | 1..10
  466 | 3 | [User Defined Longpaper]
  467 | 3 |  %d                                   | 1..10
  255 | 5 | [ISListName]
  256 | 5 |  Name%d                               | 1..10
  257 | 5 | [ISListData %d]                       | 1..10
  258 | 5 |  ISListNum
  259 | 5 |  Mixplex
  260 | 5 |  Page%d                               | 0..29 258
  261 | 5 |  Tray%d                               | 0..29 258
  262 | 5 |  Type%d                               | 0..29 258
  263 | 5 |  Stat%d                               | 0..29 258
  264 | 5 |  Binding%d                            | 0..29 258
  363 | 5 |  BindPosit%d                          | 0..29 258
  364 | 5 |  Staple%d                             | 0..29 258
  374 | 5 |  StapleStop%d                         | 0..29 258
  365 | 5 |  Punch%d                              | 0..29 258
  366 | 5 |  MediaType%d                          | 0..29 258
  367 | 5 |  PaperWeight%d                        | 0..29 258
  368 | 5 |  PaperColor%d                         | 0..29 258
  369 | 5 |  PunchHoles%d                         | 0..29 258
  265 | 5 |  PrnTabIndex%d                        | 0..29 258
  266 | 5 |  TabText%d                            | 0..29 258
  267 | 5 |  PrnTabIndexNo%d                      | 0..29 258
  268 | 5 |  TabIndexAutoNo%d                     | 0..29 258
  269 | 5 |  TabTextOrient%d                      | 0..29 258
  270 | 5 |  TabTextAlign%d                       | 0..29 258
  271 | 5 |  TabTextFontName%d                    | 0..29 258
  272 | 5 |  TabTextFontStyle%d                   | 0..29 258
  273 | 5 |  TabTextFontSize%d                    | 0..29 258
 1278 | 5 | [TabSettingData%d]                    | 1..10
  274 | 5 |  TabPaperSize
  275 | 5 |  TabIndexNum
  276 | 5 |  TabTopMargin
  277 | 5 |  TabBottomMargin
  278 | 5 |  TabIndexSpace
  279 | 5 |  TabTextPosition
  280 | 5 | [TabTextDtlDlgLastSetting %d]         | 1..10
  281 | 5 |  TabTextOrient
  282 | 5 |  TabTextAlign
  283 | 5 |  TabTextFontName
  284 | 5 |  TabTextFontStyle
  285 | 5 |  TabTextFontSize
  286 | 7 | [Overlays]
  287 | 7 |  FileName
  288 | 7 |  CreateFileName
  289 | 7 |  PrintFileName
  290 | 7 | [Overlay File]
  291 | 7 |  FormListNum
  292 | 7 |  %d                                   | 0..100 291
  293 | 4 | [Watermark]
  294 | 4 |  WMarkListNum
  295 | 4 | [Watermark String]
  296 | 4 |  %d                                   | 0..51 294
  297 | 4 | [Watermark Font]
  298 | 4 |  %d                                   | 0..51 294
  299 | 4 | [Watermark Size]
  300 | 4 |  %d                                   | 0..51 294
  301 | 4 | [Watermark Angle]
  302 | 4 |  %d                                   | 0..51 294
  303 | 4 | [Watermark Style]
  304 | 4 |  %d                                   | 0..51 294
  316 | 4 | [Watermark SelectColor]
  317 | 4 |  %d                                   | 0..51 294
  305 | 4 | [Watermark Color(Thickness)]
  306 | 4 |  %d                                   | 0..51 294
  307 | 4 | [Watermark Center(X)]
  308 | 4 |  %d                                   | 0..51 294
  309 | 4 | [Watermark Center(Y)]
  310 | 4 |  %d                                   | 0..51 294
 1279 | 1 | [Simple Data]
 1280 | 1 |  Matching
 1281 | 1 |  Bright
 1282 | 1 |  Contrast
 1283 | 1 |  Saturation
 1284 | 1 |  PureBlack
 1285 | 1 |  Cyan
 1286 | 1 |  Mgenta
 1287 | 1 |  Yellow
 1288 | 1 |  Black
 1289 | 1 |  Screen
 1290 | 1 |  Smoothing
 1291 | 1 | [Text Data]
 1292 | 1 |  Matching
 1293 | 1 |  Bright
 1294 | 1 |  Contrast
 1295 | 1 |  Saturation
 1296 | 1 |  PureBlack
 1297 | 1 |  Cyan
 1298 | 1 |  Mgenta
 1299 | 1 |  Yellow
 1300 | 1 |  Black
 1301 | 1 |  Screen
 1302 | 1 |  Smoothing
 1303 | 1 | [Photo Data]
 1304 | 1 |  Matching
 1305 | 1 |  Bright
 1306 | 1 |  Contrast
 1307 | 1 |  Saturation
 1308 | 1 |  PureBlack
 1309 | 1 |  Cyan
 1310 | 1 |  Mgenta
 1311 | 1 |  Yellow
 1312 | 1 |  Black
 1313 | 1 |  Screen
 1314 | 1 |  Smoothing
 1315 | 1 | [Graph Data]
 1316 | 1 |  GraphColor
 1317 | 1 |  GraphScreen
)";
// clang-format on

}  // namespace heron

// Every setting, once: the catalogue feature, the record's field, the value in the working store and the key in
// settings files that belong together.
//
// Readers: params.h, at compile time. A line of the first table is: id | kind feature | key | section | value.
//   kind     L list, R radio, C check, N number, T and B text, S scalar, G block, I internal: no value of its own
//   section  the section of a settings file in which the key stands; = is the one of plain settings; nothing: not
//   stored value    where a fresh value comes from and what writing back does with it:
//     field F [n]   the record's field F (= the key's name), the n-th of a repeated one
//     default       the catalogue's default; nothing goes back
//     zero          0; nothing goes back
//     none          left alone: the rows of the three trays, which the pages fill
//     own T         no field of the record: a place of type T in the working store alone
//     isCovered F   1 if the cover field F isn't 1, else 0; nothing goes back
//     cover F       as field, but a 1 (no cover) is first made 2 in the record that is read
//     layout F      as field, but a 1 or 2 of an older record is first made 8
//     userWidth F, userLength F   as field, but read from dmPaperWidth or dmPaperLength while the paper is a user paper
//     plusOne F     a check that the record holds plus one
// A line of the second table is: id, row of list_store_table.h, key of file_key_table.h; 0 for none. They are fields of
// list stores and have no value of their own.
//
// Ids are known to settings files and pages and never change. To add a setting: its field in env_fields.h, its feature
// in the catalogue, its key in file_key_table.h, then its line here; the line's place is the order of all walks.
#pragma once

#include <string_view>

namespace heron {

// clang-format off
inline constexpr std::u16string_view kParamText = uR"(
    1 | N f2    | Copies                        | =           | field dmCopies
    2 | R f3    | lpOrientation                 | =           | field dmOrientation
    3 | L f0    | lpMediaSize                   | =           | field dmPaperSize
    4 | L f11   | lpOutputPaper                 | =           | field =
    5 | C f25   | ZoomCheck                     | =           | field =
    6 | N f26   | Zoom                          | =           | field =
    7 | L f27   | lpMediaSource                 | =           | field =
    8 | C f29   | Layout_Check                  | =           | field =
    9 | R f30   | lpLayout_Select               | =           | field =
   10 | L f31   | lpOrder                       | =           | field =
   11 | L f12   | lpLayout                      | =           | layout =
   12 | R f32   | lpBooklet                     | =           | field =
   13 | R f33   | lpBorder                      | =           | field =
   14 | L f34   | lpStaple                      | =           | field =
   15 | L f7    | lpDuplex                      | =           | field =
   16 | L f28   | lpOutputTray                  | =           | field =
   17 | C f90   | Sort_Check                    | =           | field =
   18 | C f36   | Collate_Check                 | =           | field =
  290 | C f290  | PaperPunch_Check              | =           | zero
  291 | L f291  | lpWeight                      | =           | zero
  292 | L f292  | lpPaperColor                  | =           | zero
  340 | C f295  | OHPInterLeave_Check           | =           | field =
   20 | C f41   | Front_Check                   | =           | isCovered lpFrontCover
   21 | R f42   | lpFrontCover                  | =           | cover =
   22 | C f43   | Back_Check                    | =           | isCovered lpBackCover
   23 | R f44   | lpBackCover                   | =           | cover =
   24 | L f140  | lpCoverSource                 | =           | field =
   26 | L f39   | lpMediaType                   | =           | field =
   27 | C f1000 |                               |             | field tandemCheck2
   28 | L f1001 |                               |             | field tandemTray2
   29 | R f54   | lpDitherType                  | =           | default
   30 | R f55   | lpDither                      | =           | field =
   31 | C f52   | SaveToner                     | =           | field =
10086 | C f309  | DraftPrint                    | =           | field =
   32 | N f56   | Intensity                     | =           | field =
   33 | R f53   | lpGraphicsMode                | =           | field =
   34 | L f57   | lpSmoothing                   | =           | field =
   35 | R f47   | lpOverlay                     | =           | field =
   36 | C f48   | OverlayPrompt                 | =           | field =
   37 | C f49   | Watermark_Use                 | =           | field =
   38 | C f50   | FirstPageOnly                 | =           | field =
   39 | R f51   | lpWatermarkOrder              | =           | field =
   40 | L f60   | lpSourceUnit                  | =           | field =
   41 | L f61   | lpOutputUnit                  | =           | field =
   42 | L f62   | lpHardDisk                    | =           | field =
   43 | L f63   | lpFAXUnit                     | =           | field =
   44 | L f64   | lpMemory                      | =           | field =
   45 | L f65   | lpNetworkCard                 | =           | field =
   46 | R f66   | lpOutput                      | =           | field =
   47 | L f67   | lpQuality                     | =           | field =
   48 | C f69   | EcmTab                        | =           | field =
   49 | C f70   | IntlComTab                    | =           | field =
   50 | C f183  | FaxV34_CheckTab               | =           | field =
   51 | C f68   | CoverSheet                    | =           | field =
   52 | C f71   | FilePrint                     |             | field filePrintFlag
   53 | C f72   | SendTime                      |             | field sendTimeFlag
   54 | C f211  | SubAddress                    | =           | field =
   55 | C f212  | SenderID                      | =           | field =
   56 | C f92   | Nup_Check                     | =           | field =
   57 | C f93   | Booklet_Check                 | =           | field =
   58 | C f184  | EngBooklet_Check              | =           | field =
   59 | C f94   | Staple_Check                  | =           | field =
   60 | C f95   | Duplex_Check                  | =           | field =
   61 | C f96   | Layout_Check2                 | =           | field =
   62 | C f97   | Punch_Check                   | =           | field =
   63 | C f98   | BindMargin_Check              | =           | field =
   64 | C f99   | PaperLess_Check               | =           | field =
   65 | C f106  | Set_CenterFinish_Check        | =           | field =
   66 | C f100  | InterSheet_Check              | =           | field =
   67 | C f101  | FrontCoverSheet_Check         | =           | field =
   68 | C f101  | BackCoverSheet_Check          | =           | field =
   70 | C f102  | POD_Check                     | =           | field =
   71 | C f92   | POD_Nup_Check                 | =           | field =
   72 | C f103  | POD_OnePerSheet_Check         | =           | field =
   73 | C f98   | POD_BindMargin_Check          | =           | field =
   74 | C f95   | POD_Duplex_Check              | =           | field =
   75 | C f104  | POD_Booklet_Check             | =           | field =
   76 | C f105  | Chapter_Check                 | =           | field =
   77 | C f106  | Fold_Check                    | =           | field =
   78 | C f94   | POD_Staple_Check              | =           | field =
   79 | C f97   | POD_Punch_Check               | =           | field =
   80 | C f107  | WaitMode_Check                | =           | field =
   82 | C f109  | ImageShift_Check              | =           | field =
   83 | C f1004 | TandemMode_Check              | =           | field =
   84 | C f110  | EngSaveToner_Check            | =           | field =
   85 | C f111  | PrintCAD_Check                | =           | field =
  241 | C f402  | HairLineAd_Check              | =           | field =
  560 | C f405  | EnableBPPChange_Check         | =           | plusOne =
  561 | L f406  | lpHalftoneType                | =           | field =
  353 | C f413  | GlossMode_Check               | =           | field =
   86 | C f91   | OverlayOrder_Check            | =           | field =
   87 | C f112  | UnDisplayPW                   |             | field undisplayPassword
   89 | C f114  | MarginEqual_Check             | =           | field =
   90 | C f115  | f1Plane1Bit_Check             | =           | field =
   91 | C f123  | PrnTabIndex                   | =           | field =
   92 | C f124  | Mixplex_Check                 | =           | field =
   93 | R f125  | lpWaitMode                    | =           | field =
   94 | R f126  | lpErrDiffMode                 | =           | field =
   96 | R f129  | lpOhpIntlvType                | =           | field =
   97 | R f127  | lpPrintCADMode                | =           | field =
  240 | R f401  | lpColorMode                   | =           | field =
  354 | R f414  | lpAdjustMode                  | =           | field =
   98 | R f58   | lpPDLType                     | =           | field =
   99 | R f130  | lpMarginMode                  | =           | field =
  100 | R f131  | PreviewMode Sel               |             | field previewMode
  102 | L f132  | lpPunchHoles                  | =           | field =
  103 | L f133  | lpBorder2                     | =           | field =
  104 | L f186  | lpBooklet2                    | =           | field =
  105 | L f187  | lpEngBooklet                  | =           | field =
  106 | L f134  | lpPunch                       | =           | field =
  107 | L f150  | lpOutputOrder                 | =           | field =
  108 | L f135  | lpBindMargin                  | =           | field =
  109 | L f140  | lpFrontCoverTray              | =           | field =
  110 | L f140  | lpBackCoverTray               | =           | field =
  111 | L f141  | lpFrontPITray                 | =           | field =
  112 | L f141  | lpBackPITray                  | =           | field =
  325 | N f497  | FrontMaisu                    | =           | field =
  326 | N f498  | BackMaisu                     | =           | field =
  114 | L f136  | lpInterSheetList              | =           | field =
  115 | L f142  | lpPOD_OnePerSheet             | =           | field =
  116 | L f143  | lpPOD_Booklet                 | =           | field =
  117 | L f144  | lpFold                        | =           | field =
  118 | L f1003 | lpTandemMode                  | =           | field =
  242 | R f403  | lpBrushPtPit                  | =           | field =
  351 | L f411  | lp2Color                      | =           | field =
  352 | L f412  | lpExposureType                | =           | field =
  243 | L f404  | lpDLFontFormat                | =           | field =
  119 | L f1005 | lpFinisher                    | =           | field =
  120 | L f188  | lpLargeCapacityTray           | =           | field =
  121 | L f145  | lpCoverSheetTray              | =           | field =
  122 | L f146  | lpTrimmer                     | =           | field =
  123 | L f180  | lpPunchKit                    | =           | field =
  124 | L f147  | lpPunchZFold                  | =           | field =
  125 | L f181  | lpFoldUnit                    | =           | field =
  126 | L f149  | lpEngine                      | =           | field =
  127 | L f148  | lpCopierHardDisk              | =           | field =
  128 | L f205  | lpAutoDuplexUnit              | =           | field =
  129 | L f214  | lpSaddleUnit                  | =           | field =
  130 | L f5    | lpResolution                  | =           | field =
  131 | L f1002 | lpTandem                      | =           | field =
  323 | L f316  | lpCopierPrnChg                | =           | field =
  562 | L f317  | lpMailBinKit                  | =           | field =
  310 | L f300  | lpPIPunchFoldUnit             | =           | field =
  311 | L f301  | lpLCStackerUnit               | =           | field =
  312 | T       | szDevIPAddress                | =           | field =
  132 | L f151  | lpOIPaperTray                 | =           | field =
  133 | L f137  | lpInterSheetListPRNType       | =           | field =
  134 | L f138  | lpInterSheetListBinding       | =           | field =
  135 | L f139  | lpInterSheetListTray          | =           | field =
  313 | L f302  | lpInterSheetListBindPosit     | =           | field =
  314 | L f303  | lpInterSheetListStaple        | =           | field =
  320 | C f310  | InterSheetListStapleStop      | =           | field =
  315 | L f304  | lpInterSheetListPunch         | =           | field =
  316 | L f305  | lpInterSheetListMediaType     | =           | field =
  317 | L f306  | lpInterSheetListPaperWeight   | =           | field =
  318 | L f307  | lpInterSheetListPaperColor    | =           | field =
  319 | L f308  | lpInterSheetListPaperHoles    | =           | field =
  321 | N f496  | ISMAISU                       | =           | field =
  136 | L f216  | lpTabTextOrient               | =           | field =
  137 | L f217  | lpTabTextAlign                | =           | field =
  138 | B       | TabTextFontName               | =           | own w32
  139 | L f218  | lpTabTextFontStyle            | =           | default
  140 | L f152  | lpUDPaperType                 | =           | field =
  141 | L f153  | lpUDMediaType                 | =           | field =
  142 | L f152  | UDPaperType                   |             | default
  143 | R f163  | lpWidePaperPos                | =           | field =
  144 | L f189  | lpOutputMethod                | =           | field =
  555 | C f315  | Density_Check                 | =           | field =
  145 | N f170  | Density                       | =           | field =
  146 | N f171  | fMargin                       | =           | field =
  147 | N f172  | bMargin                       | =           | field =
  148 | N f203  | TimerSet_Hour                 |             | field timerHour
  149 | N f204  | TimerSet_Minute               |             | field timerMinute
  150 | N f219  | TabTextFontSize               | =           | default
  244 | L f231  | lpBindPosit                   | =           | field =
  245 | L f232  | lpPRNType                     | =           | field =
  246 | C f233  | Saddle_Check                  | =           | field =
  247 | C f234  | FoldStaple_Check              | =           | field =
  248 | L f235  | lpFoldStaple                  | =           | field =
  249 | C f236  | Trim_Check                    | =           | field =
  250 | C f237  | RePrint_Check                 | =           | field =
  251 | C f238  | CenterErase_Check             | =           | field =
  564 | C f470  | JimonMode_Check               | =           | field =
  565 | C f471  | JimonStamp_Check              | =           | field =
  566 | R f472  | lpJimonStamp                  | =           | field =
  567 | L f473  | lpJimonComStamp               | =           | field =
  568 | L f474  | lpJimonRegStamp               | =           | field =
  569 | C f475  | JimonDateTime_Check           | =           | field =
  570 | L f476  | lpJimonDate                   | =           | field =
  571 | L f477  | lpJimonTime                   | =           | field =
  572 | C f478  | JimonSrNo_Check               | =           | field =
  573 | L f479  | lpJimonColor                  | =           | field =
  574 | N f480  | JimonDensity                  | =           | field =
  575 | L f481  | lpJimonPattern                | =           | field =
  576 | N f482  | JimonPtContrast               | =           | field =
  577 | L f483  | lpJimonPtSize                 | =           | field =
  578 | L f484  | lpJimonPtOverWrite            | =           | field =
  579 | L f485  | lpJimonAngle                  | =           | field =
  600 | C f486  | PerfectBind_Check             | =           | field =
  601 | L f487  | lpPbCoverPrintMode            | =           | field =
  602 | C f488  | PbCoverDuplex_Check           | =           | field =
  604 | C f490  | PbCoverTrim_Check             | =           | field =
  603 | L f489  | lpPbCoverTray                 | =           | field =
  605 | N f491  | PbBackCoverWidth              | =           | field =
  610 | C f492  | TabIShift_Check               | =           | field =
  611 | N f493  | TabIShiftSize                 | =           | field =
  606 | L f494  | lpPerfectBindUnit             | =           | field =
  151 | N f164  | UDPaperWidth                  | =           | userWidth =
  152 | N f165  | UDPaperLength                 | =           | userLength =
  153 | N f164  | UDMediaWidth                  | =           | field =
  154 | N f165  | UDMediaLength                 | =           | field =
  155 | N f164  | UDPaper Width                 |             | default
  156 | N f165  | UDPaper Length                |             | default
  157 | R f88   | lpUDPaperUnit                 | =           | field =
  158 | R f89   | lpUDMediaUnit                 | =           | field =
  580 | C f706  | LongPaper_Check               | =           | field =
  581 | L f707  |                               |             | zero
  582 | L f708  |                               |             | zero
  159 | C f190  | FaxCover_Subject              | =           | field =
  160 | C f191  | FaxCover_ReceiveName          | =           | field =
  161 | C f192  | FaxCover_ReceiveCompany1      | =           | field =
  162 | C f193  | FaxCover_ReceiveCompany2      | =           | field =
  163 | R f210  | lpFaxCover_ReceiveSetup       | =           | field =
  164 | R f195  | lpFaxCover_ReceivePersonal    | =           | field =
  165 | C f194  | FaxCover_ReceiveFaxnum        | =           | field =
  166 | C f196  | FaxCover_SenderName           | =           | field =
  167 | C f197  | FaxCover_SenderCompany1       | =           | field =
  168 | C f198  | FaxCover_SenderCompany2       | =           | field =
  169 | C f199  | FaxCover_SenderTelnum         | =           | field =
  170 | C f200  | FaxCover_SenderFaxnum         | =           | field =
  171 | C f201  | FaxCover_SenderEmail          | =           | field =
  172 | C f206  | FaxCover_Date                 | =           | field =
  173 | C f207  | FaxCover_Pagenum              | =           | field =
  174 | C f208  | FaxCover_Image                | =           | field =
  175 | C f209  | FaxCover_Zoom                 | =           | field =
  176 | C f202  | FaxCover_A4PFix               | =           | field =
  177 | C f116  | UsetPaperChk                  |             | field usetPaper
  178 | C f117  | UsetUDPaperChk                |             | field usetUDPaper
  179 | C f118  | UsetTrybyPgChk                |             | field usetTrybyPg
  180 | C f119  | UsetWMarkChk                  |             | field usetWMark
  181 | C f120  | UsetFaxcoverChk               |             | field usetFaxcover
  182 | C f121  | UsetFormChk                   |             | field usetForm
  183 | C f122  | UsetMediaTypeListChk          |             | field usetMediaTypeList
  184 | L f154  | lpTabPaperSize                | =           | default
  185 | L f155  | lpTabIndexNum                 | =           | default
  186 | L       | lpPrnTabIndexNo               | =           | field =
  187 | N f220  | TabTopMargin                  | =           | default
  188 | N f221  | TabBottomMargin               | =           | default
  189 | N f222  | TabIndexSpace                 | =           | default
  190 | N f223  | TabTextPosition               | =           | default
  191 | R f179  | lpImgShiftMode                | =           | field =
  192 | R f158  | lpImgShiftDirectLRF           | =           | field =
  193 | R f159  | lpImgShiftDirectUDF           | =           | field =
  194 | R f160  | lpImgShiftDirectLRB           | =           | field =
  195 | R f161  | lpImgShiftDirectUDB           | =           | field =
  196 | N f173  | ImgShiftValueLRF              | =           | field =
  197 | N f174  | ImgShiftValueUDF              | =           | field =
  198 | N f175  | ImgShiftPageIntervalF         | =           | field =
10088 | N f704  | ImgShiftOutOffsetF            | =           | field =
  199 | N f176  | ImgShiftValueLRB              | =           | field =
  200 | N f177  | ImgShiftValueUDB              | =           | field =
  201 | N f178  | ImgShiftPageIntervalB         | =           | field =
10089 | N f705  | ImgShiftOutOffsetB            | =           | field =
  202 | C f162  | ImgShiftBackAuto_Check        | =           | field =
  203 | C f59   | FontUseFlg                    | =           | field =
  204 | I       |                               |             |
  205 | I       |                               |             |
  206 | I       |                               |             |
  207 | S       | InterSheetListData_nCurrent   | =           | own u16
  208 | S       | InterSheetListData_PageListNum | =           | own u16
  209 | S       | InterSheetListData_Mixplex    | =           | own u16
  210 | T       |                               |             | field secureCodeA
  211 | T       |                               |             | field securePassword
  212 | S       | bOverlayIndex                 | =           | field =
  213 | T       |                               |             | field deviceInfoText
  214 | S       | bWatermarkCurrent             | =           | field watermarkIndex
  215 | S       | bWatermarkFixed               | =           | own u8
  216 | S       | bWatermarkDefault             | =           | own u8
  217 | S       | bTimeH                        | =           | field =
  218 | S       | bTimeM                        | =           | field =
  219 | T       | szSubAddress                  | =           | field =
  220 | T       | szSenderID                    | =           | field =
  221 | T       |                               |             | field secureCodeB
  222 | T       |                               |             | field boxNumber
  223 | G       | pagenumStr                    |             | field =
  225 | S       |                               |             | field ownerNameSum
  226 | S       |                               |             | field ownerNameSum
  227 | S       |                               |             | field ownerNameLength
  228 | S       |                               |             | field ownerNameLength
  229 | B       |                               |             | field ownerUserName
  230 | S       | QXOutputPaperSize             | =           | field =
  232 | S       |                               |             | field uiZoomMode
  233 | I       |                               |             |
  234 | C f213  |                               |             | field parameter234
  235 | S       |                               |             | field savedPDLType
  238 | C f215  |                               |             | field parameter238
  239 | S       |                               |             | field savedCopierHardDisk
  281 | C f271  | Date_Time_Check               | =           | field =
  282 | L f272  | lpPrintPageD                  | =           | field =
  283 | C f273  | PageNo_Check                  | =           | field =
  284 | L f274  | lpPrintPageP                  | =           | field =
  285 | N f275  | PageNo_WM_StartP              | =           | field =
  286 | C f276  | CopyNo_Check                  | =           | field =
  287 | L f277  | lpType                        | =           | field =
  288 | L f278  | lpPrintPageC                  | =           | field =
  289 | N f279  | CopyNo_WM_StartC              | =           | field =
  330 | N f280  | PageNo_WM_PrintStartP         | =           | field =
  554 | L f281  | lpWMarkColor                  | =           | field =
  563 | L f282  | lpWMNumDensity                | =           | field =
  293 | T       |                               |             | field secureId
  294 | T       |                               |             | field boxFileName
  300 | T       |                               |             | field authUserName
  301 | T       |                               |             | field departmentName
  302 | T       |                               |             | field authPassword
  303 | T       |                               |             | field departmentPassword
  304 | C f293  |                               |             | field parameter304
  305 | C f294  |                               |             | field parameter305
  341 | C f311  | SecMana_Check                 | =           | field =
  342 | R f312  | lpAuthUserMode                | =           | field =
  343 | C f313  | UserAuth_Check                | =           | field =
  344 | C f450  | Secur_Check                   | =           | field =
  345 | C f451  | JobPartition_Check            | =           | field =
  346 | C f452  | AdhesiveBind_Check            | =           | field =
  347 | C f453  | PilePermit_Check              | =           | field =
  348 | N f454  | CyclePage                     | =           | field =
  500 | L f27   | Media Source                  |             | none
  510 | L f39   | MediaType                     |             | none
  511 | L f291  |                               |             | none
  512 | L f292  |                               |             | none
  513 | C f290  |                               |             | none
  530 | L f39   | MediaType                     |             | none
  531 | L f291  |                               |             | none
  532 | L f292  |                               |             | none
  533 | C f290  |                               |             | none
  550 | L f39   | MediaType                     |             | none
  551 | L f291  |                               |             | none
  552 | L f292  |                               |             | none
  553 | C f290  |                               |             | none
  355 | L f415  | Matching                      | Simple Data | field colorGroup.Matching 0
  356 | L f416  | Matching                      | Text Data   | field colorGroup.Matching 1
  357 | L f417  | Matching                      | Photo Data  | field colorGroup.Matching 2
  358 | L f418  | Screen                        | Simple Data | field colorGroup.Screen 0
  359 | L f419  | Screen                        | Text Data   | field colorGroup.Screen 1
  360 | L f420  | Screen                        | Photo Data  | field colorGroup.Screen 2
  361 | L f421  | Smoothing                     | Simple Data | field colorGroup.Smoothing 0
  362 | L f422  | Smoothing                     | Text Data   | field colorGroup.Smoothing 1
  363 | L f423  | Smoothing                     | Photo Data  | field colorGroup.Smoothing 2
  364 | L f424  | PureBlack                     | Simple Data | field colorGroup.PureBlack 0
  365 | L f425  | PureBlack                     | Text Data   | field colorGroup.PureBlack 1
  366 | L f426  | PureBlack                     | Photo Data  | field colorGroup.PureBlack 2
  367 | N f427  | Bright                        | Simple Data | field colorGroup.Bright 0
  368 | N f428  | Bright                        | Text Data   | field colorGroup.Bright 1
  369 | N f429  | Bright                        | Photo Data  | field colorGroup.Bright 2
  370 | N f430  | Contrast                      | Simple Data | field colorGroup.Contrast 0
  381 | N f431  | Contrast                      | Text Data   | field colorGroup.Contrast 1
  382 | N f432  | Contrast                      | Photo Data  | field colorGroup.Contrast 2
  383 | N f433  | Saturation                    | Simple Data | field colorGroup.Saturation 0
  384 | N f434  | Saturation                    | Text Data   | field colorGroup.Saturation 1
  385 | N f435  | Saturation                    | Photo Data  | field colorGroup.Saturation 2
  386 | N f436  | Cyan                          | Simple Data | field colorGroup.Cyan 0
  387 | N f437  | Cyan                          | Text Data   | field colorGroup.Cyan 1
  388 | N f438  | Cyan                          | Photo Data  | field colorGroup.Cyan 2
  389 | N f439  | Mgenta                        | Simple Data | field colorGroup.Mgenta 0
  390 | N f440  | Mgenta                        | Text Data   | field colorGroup.Mgenta 1
  391 | N f441  | Mgenta                        | Photo Data  | field colorGroup.Mgenta 2
  392 | N f442  | Yellow                        | Simple Data | field colorGroup.Yellow 0
  393 | N f443  | Yellow                        | Text Data   | field colorGroup.Yellow 1
  394 | N f444  | Yellow                        | Photo Data  | field colorGroup.Yellow 2
  395 | N f445  | Black                         | Simple Data | field colorGroup.Black 0
  396 | N f446  | Black                         | Text Data   | field colorGroup.Black 1
  397 | N f447  | Black                         | Photo Data  | field colorGroup.Black 2
  398 | L f448  | GraphColor                    | Graph Data  | field =
  399 | L f449  | GraphScreen                   | Graph Data  | field =
)";

inline constexpr std::u16string_view kStoreParamText = uR"(
 10000   37    0
 10001   38    0
 10002   39  256
 10003   40  258
 10004   41  259
 10005   42    0
 10006   43  260
 10007   44  261
 10008   45  262
 10009   46  263
 10010   47  264
 10079  100  363
 10080  101  364
 10087  107  374
 10081  102  365
 10082  103  366
 10083  104  367
 10084  105  368
 10085  106  369
 10011   48  265
 10012   49  266
 10013   50  267
 10014   51  268
 10015   52  269
 10016   53  270
 10017   54  271
 10018   55  272
 10019   56  273
 10020   57    0
 10021   58  281
 10022   59  282
 10023   60  283
 10024   61  284
 10025   62  285
 10026   63    0
 10027   64  274
 10028   65  275
 10029   66  276
 10030   67  277
 10031   68  278
 10032   69  279
 10033    1    0
 10034    3  288
 10035    4  289
 10036    8    0
 10037    9  291
 10038   10  292
 10039   11    0
 10040   12  294
 10041   13    0
 10042   15  296
 10043   17  298
 10044   19  304
 10045   21  300
 10046   23  302
 10078   99  317
 10047   25  306
 10048   27  308
 10049   29  310
 10050   70    0
 10051   71  207
 10052   72  209
 10053   73  225
 10054   74  227
 10055   75  229
 10056   76  231
 10057   77  233
 10058   78  235
 10059   79  237
 10060   81  239
 10061   80  241
 10062   82  243
 10063   83  211
 10064   84  213
 10065   85  215
 10066   86  217
 10067   87  223
 10068   88  219
 10069   89  221
 10070   90    0
 10071   91  245
 10072   92  246
 10073   93    0
 10074   94  250
 10075   95  252
 10076   96  254
 10077   97  248
 10090  108  467
)";
// clang-format on

}  // namespace heron

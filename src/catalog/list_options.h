// The options of every list feature: what a setting may hold, what each value is called, which one is the default.
//
// Reader: tables.cc, at compile time. A row is: feature | name | options in display order. A line without a feature
// goes on with the row above. An option is value/label, the label a text number of resources/texts.tsv, and may carry a
// mark:
//   *    default for every destination
//   *U   default for destination 0xFF
//   *W   default for destinations 0xFF00 and 0x10000
// Of several marked options the last one counts; with none it is the first option. Values are stored in records and
// files: never renumber one. A switch is labelled 21204 (off) and 21203 (on). Features ascend.
#pragma once

#include <string_view>

namespace heron::catalog {

// clang-format off
inline constexpr std::u16string_view kListOptionText = uR"(
   0 | Paper Size                | 8/48010 9/48011*W 2059/48014 12/48016 13/48017 88/48019 3/48022 5/48023 1/48020*U
     |                           | 343/48033 14/48028 341/48031 342/48032 333/48055 2054/48025 2382/48058 360/48035
     |                           | 361/48036 370/48049 91/48050 372/48051 28/48040 31/48052 27/48042 19/48053 20/48044
     |                           | 38/48054 43/48045 513/21550 514/21551 515/21552 516/21553 517/21554 518/21555
     |                           | 519/21556 520/21557 521/21558 256/21559 512/48001
   3 | Orientation               | 1/40004* 2/40005
   5 | Resolution                | 600/40006*
  11 | Media Size                | 257/48000* 8/48010 9/48011 2059/48014 12/48016 13/48017 88/48019 3/48022 5/48023
     |                           | 333/48055 1/48020 343/48033 14/48028 341/48031 342/48032 2054/48025 2382/48058
     |                           | 360/48035 361/48036 370/48049 91/48050 372/48051 28/48040 31/48052 27/48042
     |                           | 19/48053 20/48044 38/48054 43/48045 513/21550 514/21551 515/21552 516/21553
     |                           | 517/21554 518/21555 519/21556 520/21557 521/21558 256/21559 512/48001
  12 | Layout                    | 8/40007* 10/40008 5/40009 6/40010 7/40011 20/40012
  25 | ZoomCheck                 | 0/21204* 1/21203
  27 | Media Source              | 7/21530* 1/21531 2/21532 258/21533 259/21534 270/21541 4/21537
  28 | Media Dest                | 1/40013* 11/40014 31/40015 51/40016 101/40017 102/40018 103/40019 104/40020
  29 | Layout Check              | 0/21204* 1/21203
  30 | Layout Select             | 1/40021* 2/40022
  31 | Order                     | 1/21427* 2/21428 1/21429 2/21430 3/21431 4/21432 5/21433 6/21434
  32 | Booklet LtoR              | 1/40023* 0/40024
  33 | Border                    | 0/40025* 1/40026 2/40027
  34 | Staple                    | 1/21446* 2/21441 3/21442 4/21447
  35 | Copy Check                | 0/21204* 1/21203
  36 | Collate Check             | 0/21204* 1/21203
  39 | MediaType                 | 1/40028* 50/40029 4/40030 30/40031 35/40032 8/40033 2/40034 3/40035 62/40036
     |                           | 9/40037 7/40038
  41 | Front Check               | 0/21204* 1/21203
  42 | Front Cover               | 2/20102* 3/20103
  43 | Back Check                | 0/21204* 1/21203
  44 | Back Cover                | 2/20102* 3/20103
  47 | Overlay                   | 1/40039* 2/20300 3/20301
  48 | Overlay Prompt            | 0/21204* 1/21203
  49 | Watermark Use             | 0/21204* 1/21203
  50 | First Page Only           | 0/21204* 1/21203
  51 | WatermarkMode             | 1/26415* 2/26416
  52 | Save Toner                | 0/21204* 1/21203
  53 | Graphics Mode             | 1/40040 2/40041*
  54 | DitherType                | 0/40042* 1/40043
  55 | Halftone                  | 2/40044 3/40045* 4/40046
  57 | Smoothing                 | 1/20533* 2/26405 3/26406 4/26407
  58 | PDLType                   | 0/40047 1/40048 2/40049 3/40050 4/40051*
  59 | UsePrinterFont            | 0/21204 1/21203*
  60 | Source Unit               | 1/40052* 2/40053 3/40054 4/40055 5/40056
  61 | Output Unit               | 1/40057* 2/40058 3/40059 41/40060 42/40061 43/40062 5/40063
  63 | FAX Unit                  | 1/40000* 2/40001
  66 | Output                    | 2/40064* 1/40065
  67 | Quality                   | 200/40066* 400/40067 600/40068
  68 | Cover Check               | 0/21204* 1/21203
  69 | Ecm                       | 1/21203* 0/21204
  70 | IntlCom                   | 0/21204* 1/21203
  71 | FilePrint                 | 0/21204* 1/21203
  72 | SendTime                  | 0/21204* 1/21203
  85 | TT Mode                   | 1/40069* 2/40070
  87 | Color                     | 1/40071* 2/40072
  88 | UDPaperUnit               | 1/40002* 2/40003
  89 | UDMediaUnit               | 1/40002* 2/40003
  90 | Sort Check                | 1/21203* 0/21204
  91 | OverlayOrder              | 1/21203 0/21204*
  92 | Nup_Check                 | 0/21204* 1/21203
  94 | Staple_Check              | 0/21204* 1/21203
  96 | Layout_Check2             | 0/21204 1/21203*
  97 | Punch_Check               | 0/21204* 1/21203
  98 | BindMargin_Chk            | 0/21204* 1/21203
  99 | PaperLess Check           | 0/21204* 1/21203
 100 | InterSheet_Chk            | 0/21204* 1/21203
 102 | PodCheck                  | 0/21204 1/21203*
 103 | OnePerSheet_Chk           | 0/21204* 1/21203
 105 | Chapter_Chk               | 0/21204* 1/21203
 106 | Fold_Chk                  | 0/21204* 1/21203
 109 | ImageShift_Chk            | 0/21204* 1/21203
 110 | EngSaveToner              | 0/21204* 1/21203
 111 | PrintCAD_Chk              | 0/21204* 1/21203
 112 | UnDisplayPW               | 0/21204 1/21203*
 114 | MarginEqualChk            | 1/21203* 0/21204
 115 | 1Plane1Bit_Chk            | 0/21204* 1/21203
 116 | UsetPaperChk              | 0/21204* 1/21203
 117 | UsetUDPaperChk            | 1/21203* 0/21204
 118 | UsetTrybyPgChk            | 1/21203* 0/21204
 119 | UsetWMarkChk              | 1/21203* 0/21204
 120 | UsetFaxcoverChk           | 1/21203* 0/21204
 121 | UsetFormChk               | 0/21204* 1/21203
 122 | UsetMediaTypeListChk      | 0/21204* 1/21203
 124 | Mixplex_Chk               | 0/21204* 1/21203
 127 | PrintCADMode              | 1/40073* 2/40074
 129 | OhpIntlvType              | 0/40075* 1/40076
 130 | Margin Sel                | 1/40077* 2/40078
 131 | PreviewMode Sel           | 1/40079* 2/40080
 132 | PunchHoles                | 2/40081* 3/40082 4/40083
 133 | Border2                   | 0/40025* 1/40026 2/40027
 134 | Punch                     | 1/40084* 2/40085 3/40086
 136 | InterSheetList            | 1/28587* 2/28588 3/28589 4/28590 5/28591 6/28592 7/28593 8/28594 9/28595 10/28596
 137 | ISListPRNType             | 0/20122* 2/20123 3/20124
 139 | ISListTray                | 1/21531* 2/21532 258/21533 259/21534 270/21541 4/21537
 140 | CoverTray                 | 1/21531 2/21532 258/21533 259/21534 270/21541 4/21537
 142 | POD_OnePerSheet           | 1/20204* 2/20205
 144 | Fold                      | 11/40087*
 148 | CopierHDD                 | 1/40000* 2/40001
 149 | Engine                    | 0/40088*
 151 | OIPaperTray               | 1/21531* 2/21532 258/21533 259/21534 270/21541
 152 | UDPaperType               | 1/21550* 2/21551 3/21552 4/21553 5/21554 6/21555 7/21556 8/21557 9/21558 10/21559
 153 | UDMediaType               | 1/21550* 2/21551 3/21552 4/21553 5/21554 6/21555 7/21556 8/21557 9/21558 10/21559
 156 | UIZoomMode                | 0/21204* 1/21203
 157 | ImgShftMode               | 0/40089* 1/40090
 158 | ImgShftDirLRF             | 1/40091* 0/40092
 159 | ImgShftDirUDF             | 1/40093* 0/40094
 160 | ImgShftDirLRB             | 0/40092* 1/40091
 161 | ImgShftDirUDB             | 1/40093* 0/40094
 162 | ImgSftBkAutoChk           | 1/21203* 0/21204
 163 | WidePaperPos              | 0/40095* 1/40096 2/40097
 180 | PunchKit                  | 1/40098* 21/40099 22/40100 23/40101
 183 | V34                       | 1/21203* 0/21204
 186 | Booklet2                  | 3/40102*
 189 | OutputMethod              | 1/40103* 2/40104 3/40105 4/40106 7/40107
 190 | FcsSubjectChk             | 1/21203* 0/21204
 191 | FcsRecNameChk             | 1/21203* 0/21204
 192 | FcsRecCmpny1Chk           | 1/21203* 0/21204
 193 | FcsRecCmpny2Chk           | 1/21203* 0/21204
 194 | FcsRecFaxnumChk           | 1/21203* 0/21204
 195 | FcsRecPersonal            | 0/26204* 1/26205 2/26206
 196 | FcsSndNameChk             | 1/21203* 0/21204
 197 | FcsSndCmpny1Chk           | 1/21203* 0/21204
 198 | FcsSndCmpny2Chk           | 1/21203* 0/21204
 199 | FcsSndTelnumChk           | 1/21203* 0/21204
 200 | FcsSndFaxnumChk           | 1/21203* 0/21204
 201 | FcsSndEmailChk            | 1/21203* 0/21204
 202 | FcsA4PFixChk              | 0/21204* 1/21203
 206 | FcsDateChk                | 0/21204* 1/21203
 207 | FcsPageNumChk             | 0/21204* 1/21203
 208 | FcsImageChk               | 0/21204* 1/21203
 209 | FcsZoomChk                | 0/21204* 1/21203
 210 | FcsRecSetupChk            | 0/26203* 1/26207
 211 | SubAddress                | 0/21204* 1/21203
 212 | SenderID                  | 0/21204* 1/21203
 213 |                           | 0/21204* 1/21203
 214 | lpSaddleUnit              | 1/40000* 2/40001
 231 | lpBindPosit               | 1/21591* 2/21592 3/21593 4/21594
 232 | lpPRNType                 | 1/21595* 2/21596 3/21597
 234 | FoldStaple_Check          | 0/21204* 1/21203
 235 | lpFoldStaple              | 1/40108* 3/40109
 237 | RePrint_Check             | 0/21204* 1/21203
 277 | lpType                    | 1/40110* 2/40111
 278 | lpPrintPageC              | 1/40112* 2/40113
 293 |                           | 0/21204 1/21203*
 294 |                           | 0/21204 1/21203*
 295 | OHPInterLeave_Check       | 0/21204* 1/21203
 305 | lpInterSheetListMediaType | 100/40114* 1/40028 50/40029 4/40030 30/40031 35/40032 8/40033 2/40034 3/40035
     |                           | 62/40036 9/40037 7/40038
 309 | Draft Print               | 0/21204* 1/21203
 311 | SecMana_Check             | 0/21204* 1/21203
 312 | lpAuthUserMode            | 1/40115* 2/40116
 313 | UserAuth_Check            | 0/21204* 1/21203
 315 | Density_Check             | 0/21204* 1/21203
 317 | lpMailBinKit              | 1/40000* 2/40001
 401 | lpColorMode               | 1/40117 2/40118* 3/40119
 402 | HairLineAd_Check          | 0/21204* 1/21203
 403 | lpBrushPtPit              | 1/40120 2/40121*
 404 | lpDLFontFormat            | 2/20603* 1/20602
 405 | EnableBPPChange_Check     | 0/21204* 1/21203
 406 | lpHalftoneType            | 1/40122 2/40123*
 450 | Secur_Check               | 0/21204* 1/21203
 706 | LongPaper_Check           | 0/21204* 1/21203
 707 |                           | 0/21204* 1/21203
 708 |                           | 0/21204* 1/21203
)";
// clang-format on

}  // namespace heron::catalog

// Under which key or value each field of a list store is kept, and which text feature holds its default.
//
// Readers: walk_store.cc (rows of flags kKeyRow and kValueRow), list_stores_rows.cc (all rows), the settings library.
// A row is: id, flags, level, name, and for a name with %d its first and last number and the id of the row that holds
// the count, if one does. A level 3 name hangs below the nearest earlier row of level 2, that one below the nearest
// earlier row of level 1; the topmost below the user's key of the queue. Rows of flags kFileRow are in settings files
// only. Ids are named by parameters and settings files and never change. To add a field, add its row here and in
// list_stores_fields.h.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace heron {

enum StoreRowFlags : uint8_t {
  kFileRow = 0,
  kValueRow = 0x13,
  kKeyRow = 0x20,
};

struct ListStoreRow {
  uint16_t id;
  StoreRowFlags flags;
  uint8_t level;
  std::u16string_view name;  ///< zero-terminated
  uint16_t lo = 0;
  uint16_t hi = 0;
  uint16_t link = 0;
};

// clang-format off
inline constexpr auto kPageListStoreRows = std::to_array<ListStoreRow>({
    {37,  kKeyRow,   1, u"InterSheet"},
    {38,  kKeyRow,   2, u"InterSheetList%d",         1, 10},
    {39,  kValueRow, 3, u"InterSheetListName"},
    {40,  kValueRow, 3, u"ISPageListNum"},
    {41,  kValueRow, 3, u"Mixplex"},
    {42,  kValueRow, 3, u"ISPageListData%d",         0, 29, 40},
    {43,  kFileRow,  3, u"Page%d",                   0, 29, 40},
    {44,  kFileRow,  3, u"Tray%d",                   0, 29, 40},
    {45,  kFileRow,  3, u"Type%d",                   0, 29, 40},
    {46,  kFileRow,  3, u"Stat%d",                   0, 29, 40},
    {47,  kFileRow,  3, u"Binding%d",                0, 29, 40},
    {100, kFileRow,  3, u"BindPosit%d",              0, 29, 40},
    {101, kFileRow,  3, u"Staple%d",                 0, 29, 40},
    {107, kFileRow,  3, u"StapleStop%d",             0, 29, 40},
    {102, kFileRow,  3, u"Punch%d",                  0, 29, 40},
    {103, kFileRow,  3, u"MediaType%d",              0, 29, 40},
    {104, kFileRow,  3, u"PaperWeight%d",            0, 29, 40},
    {105, kFileRow,  3, u"PaperColor%d",             0, 29, 40},
    {106, kFileRow,  3, u"PunchHoles%d",             0, 29, 40},
    {48,  kFileRow,  3, u"PrnTabIndex%d",            0, 29, 40},
    {49,  kFileRow,  3, u"TabText%d",                0, 29, 40},
    {50,  kFileRow,  3, u"PrnTabIndexNo%d",          0, 29, 40},
    {51,  kFileRow,  3, u"TabIndexAutoNo%d",         0, 29, 40},
    {52,  kFileRow,  3, u"TabTextOrient%d",          0, 29, 40},
    {53,  kFileRow,  3, u"TabTextAlign%d",           0, 29, 40},
    {54,  kFileRow,  3, u"TabTextFontName%d",        0, 29, 40},
    {55,  kFileRow,  3, u"TabTextFontStyle%d",       0, 29, 40},
    {56,  kFileRow,  3, u"TabTextFontSize%d",        0, 29, 40},
    {57,  kValueRow, 3, u"TabTextDtlDlgLastSetting"},
    {58,  kFileRow,  3, u"TabTextOrient"},
    {59,  kFileRow,  3, u"TabTextAlign"},
    {60,  kFileRow,  3, u"TabTextFontName"},
    {61,  kFileRow,  3, u"TabTextFontStyle"},
    {62,  kFileRow,  3, u"TabTextFontSize"},
    {63,  kValueRow, 3, u"TabSettingData"},
    {64,  kFileRow,  3, u"TabPaperSize"},
    {65,  kFileRow,  3, u"TabIndexNum"},
    {66,  kFileRow,  3, u"TabTopMargin"},
    {67,  kFileRow,  3, u"TabBottomMargin"},
    {68,  kFileRow,  3, u"TabIndexSpace"},
    {69,  kFileRow,  3, u"TabTextPosition"},
});
static_assert(kPageListStoreRows.size() == 41);

inline constexpr auto kOverlayRows = std::to_array<ListStoreRow>({
    {1,  kKeyRow,   1, u"Form"},
    {2,  kKeyRow,   2, u"Overlays"},
    {3,  kValueRow, 3, u"CreateFileName"},
    {4,  kValueRow, 3, u"PrintFileName"},
    {5,  kValueRow, 3, u"Caption%d", 2, 3},
    {6,  kValueRow, 3, u"Message%d", 1, 3},
    {7,  kValueRow, 3, u"Style%d",   1, 3},
    {8,  kKeyRow,   2, u"Overlay File"},
    {9,  kValueRow, 3, u"FormListNum"},
    {10, kValueRow, 3, u"%d",        0, 99, 9},
});
static_assert(kOverlayRows.size() == 10);

inline constexpr auto kWatermarkRows = std::to_array<ListStoreRow>({
    {11, kKeyRow,   1, u"WaterMark"},
    {12, kValueRow, 2, u"WMarkListNum"},
    {13, kKeyRow,   2, u"WMarkListData%d", 0, 50, 12},
    {15, kValueRow, 3, u"Watermark String"},
    {17, kValueRow, 3, u"Watermark Font"},
    {19, kValueRow, 3, u"Watermark Style"},
    {21, kValueRow, 3, u"Watermark Size"},
    {23, kValueRow, 3, u"Watermark Angle"},
    {99, kValueRow, 3, u"Watermark SelectColor"},
    {25, kValueRow, 3, u"Watermark Color(Thickness)"},
    {27, kValueRow, 3, u"Watermark Center(X)"},
    {29, kValueRow, 3, u"Watermark Center(Y)"},
});
static_assert(kWatermarkRows.size() == 12);

inline constexpr auto kFontSubstRows = std::to_array<ListStoreRow>({
    {30, kKeyRow,   1, u"FontSubTbl"},
    {31, kValueRow, 2, u"FontSubTblNum"},
    {32, kValueRow, 2, u"Index"},
    {33, kKeyRow,   2, u"TTFont List"},
    {34, kValueRow, 3, u"TTFaceName%d",  0, 499, 31},
    {35, kKeyRow,   2, u"DevFont List"},
    {36, kValueRow, 3, u"DevFaceName%d", 0, 499, 31},
});
static_assert(kFontSubstRows.size() == 7);

inline constexpr auto kFaxCoverRows = std::to_array<ListStoreRow>({
    {70, kKeyRow,   1, u"Fax Cover Sheet"},
    {71, kValueRow, 2, u"Subject"},
    {72, kValueRow, 2, u"Fixedform"},
    {73, kValueRow, 2, u"Receipt Company1"},
    {74, kValueRow, 2, u"Receipt Company2"},
    {75, kValueRow, 2, u"Receipt Name"},
    {76, kValueRow, 2, u"Receipt Faxnum"},
    {77, kValueRow, 2, u"Sender Company1"},
    {78, kValueRow, 2, u"Sender Company2"},
    {79, kValueRow, 2, u"Sender Name"},
    {81, kValueRow, 2, u"Sender Telnum"},
    {80, kValueRow, 2, u"Sender Faxnum"},
    {82, kValueRow, 2, u"Sender Email"},
    {83, kValueRow, 2, u"Pagenum"},
    {84, kValueRow, 2, u"Style"},
    {85, kValueRow, 2, u"FCSPaper"},
    {86, kValueRow, 2, u"Filename"},
    {87, kValueRow, 2, u"Zoom"},
    {88, kValueRow, 2, u"X position"},
    {89, kValueRow, 2, u"Y position"},
    {90, kKeyRow,   2, u"Comment"},
    {91, kValueRow, 3, u"LineNum"},
    {92, kValueRow, 3, u"Text"},
});
static_assert(kFaxCoverRows.size() == 23);

// User papers are printer data; these rows join parameters and settings files.
inline constexpr auto kUserPaperRows = std::to_array<ListStoreRow>({
    {93,  kFileRow, 1, u"UDPaper%d", 1, 10},
    {94,  kFileRow, 2, u"Width"},
    {95,  kFileRow, 2, u"Length"},
    {96,  kFileRow, 2, u"Unit"},
    {97,  kFileRow, 2, u"Name"},
    {108, kFileRow, 2, u"Longpaper"},
});
static_assert(kUserPaperRows.size() == 6);

/// The text feature whose default is the field's default in the list snapshot. Row 90 is a key and has no field: its pair is
/// skipped in a snapshot.
struct ListSnapshotPair {
  uint16_t rowId;
  uint16_t feature;
};
inline constexpr auto kListSnapshotPairs = std::to_array<ListSnapshotPair>({
    {39, 500}, {40, 501}, {41, 502}, {43, 503}, {44, 504}, {45, 505}, {46, 506}, {47, 507},
    {100, 508}, {101, 509}, {107, 510}, {102, 511}, {103, 512}, {104, 513}, {105, 514}, {106, 515},
    {48, 516}, {49, 517}, {50, 518}, {51, 519}, {52, 520}, {53, 521}, {54, 522}, {55, 523}, {56, 524},
    {58, 525}, {59, 526}, {60, 527}, {61, 528}, {62, 529},
    {64, 530}, {65, 531}, {66, 532}, {67, 533}, {68, 534}, {69, 535},
    {3, 560}, {4, 561}, {5, 562}, {6, 563}, {7, 564}, {9, 565}, {10, 566},
    {12, 580}, {15, 581}, {17, 582}, {19, 583}, {21, 584}, {23, 585}, {99, 586}, {25, 587}, {27, 588}, {29, 589},
    {31, 600}, {32, 601}, {34, 602}, {36, 603},
    {71, 620}, {72, 621}, {73, 622}, {74, 623}, {75, 624}, {76, 625}, {77, 626}, {78, 627}, {79, 628},
    {81, 629}, {80, 630}, {82, 631}, {83, 632}, {84, 633}, {85, 634}, {86, 635}, {87, 636}, {88, 637}, {89, 638},
    {90, 639}, {91, 640}, {92, 641},
    {94, 650}, {95, 651}, {96, 652}, {97, 653}, {108, 654},
});
static_assert(kListSnapshotPairs.size() == 84);
// clang-format on

}  // namespace heron

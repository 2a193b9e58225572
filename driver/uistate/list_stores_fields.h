// Where each field of a list store lies in memory: one row a field.
//
// Reader: list_stores.cc. A row is: the id of its row in list_store_table.h, its group, and the member. A
// group gives the store, the first byte, and how lists and items repeat; `lists` or `items` 0: the number isn't looked
// at. To add a field, add a row here and one in list_store_table.h; offset, size and type code follow from the member.
#pragma once

#include <type_traits>

#include "uistate/list_stores.h"
#include "uistate/transfer_value.h"

namespace heron {

struct StoreGroup {
  ListStoreId store;
  uint32_t base = 0;
  int lists = 0;  ///< numbers 1 to `lists`
  uint32_t listStride = 0;
  int firstItem = 0;
  int items = 0;  ///< numbers `firstItem` and on
  uint32_t itemStride = 0;
};

struct StoreFieldRow {
  uint16_t id;
  const StoreGroup* group;
  uint32_t offset;  ///< inside the group's item
  uint32_t size;
  uint16_t type;
};

/// Type code of a member: a number by its width and sign, an array of characters as text, anything else as bytes.
template <typename T>
consteval uint16_t StoreTypeCode() {
  if (std::is_same_v<T, uint8_t>) return kTypeU8;
  if (std::is_same_v<T, uint16_t>) return kTypeU16;
  if (std::is_same_v<T, int16_t>) return kTypeI16;
  if (std::is_same_v<T, int32_t>) return kTypeI32;
  if (std::is_same_v<T, uint32_t>) return kTypeU32;
  return std::is_same_v<std::remove_extent_t<T>, char16_t> ? kTypeText : kTypeBytes;
}

// clang-format off
inline constexpr StoreGroup kListGroup = {
    .store = ListStoreId::kPageLists, .lists = kPageListCount, .listStride = sizeof(PageList)};
inline constexpr StoreGroup kPageGroup = {
    .store = ListStoreId::kPageLists, .base = offsetof(PageList, pages), .lists = kPageListCount,
    .listStride = sizeof(PageList), .items = kPagesPerList, .itemStride = sizeof(PageEntry)};
inline constexpr StoreGroup kTabDialogGroup = {
    .store = ListStoreId::kPageLists, .base = offsetof(PageList, tabDialog), .lists = kPageListCount,
    .listStride = sizeof(PageList)};
inline constexpr StoreGroup kTabSettingsGroup = {
    .store = ListStoreId::kPageLists, .base = offsetof(PageList, tabSettings), .lists = kPageListCount,
    .listStride = sizeof(PageList)};
inline constexpr StoreGroup kOverlayGroup = {.store = ListStoreId::kOverlays};
inline constexpr StoreGroup kMessageGroup = {
    .store = ListStoreId::kOverlays, .base = offsetof(OverlayStore, messages), .firstItem = 1,
    .items = kOverlayMessageCount, .itemStride = sizeof(OverlayMessage)};
inline constexpr StoreGroup kFormGroup = {
    .store = ListStoreId::kOverlays, .items = kFormCount, .itemStride = sizeof(OverlayStore::forms[0])};
inline constexpr StoreGroup kWatermarkGroup = {.store = ListStoreId::kWatermarks};
inline constexpr StoreGroup kMarkGroup = {
    .store = ListStoreId::kWatermarks, .base = offsetof(WatermarkStore, entries), .items = kWatermarkCount,
    .itemStride = sizeof(WatermarkEntry)};
inline constexpr StoreGroup kFontGroup = {.store = ListStoreId::kFontSubst};
inline constexpr StoreGroup kFontPairGroup = {
    .store = ListStoreId::kFontSubst, .base = offsetof(FontSubstStore, pairs), .items = kFontPairCount,
    .itemStride = sizeof(FontPair)};
inline constexpr StoreGroup kFaxGroup = {.store = ListStoreId::kFaxCover};
inline constexpr StoreGroup kUserPaperGroup = {
    .store = ListStoreId::kUserPapers, .firstItem = 1, .items = kUserPaperCount,
    .itemStride = sizeof(CustomPaperEntry)};

// Offset, size and type code of a member; offsetof is a macro, so this must be one.
#define HERON_FIELD(type, member) offsetof(type, member), sizeof(type::member), StoreTypeCode<decltype(type::member)>()

inline constexpr StoreFieldRow kStoreFields[] = {
    {39,  &kListGroup,        HERON_FIELD(PageList, name)},
    {40,  &kListGroup,        HERON_FIELD(PageList, pageCount)},
    {41,  &kListGroup,        HERON_FIELD(PageList, mixplex)},
    {42,  &kPageGroup,        0, sizeof(PageEntry), kTypeBytes},
    {43,  &kPageGroup,        HERON_FIELD(PageEntry, page)},
    {44,  &kPageGroup,        HERON_FIELD(PageEntry, tray)},
    {45,  &kPageGroup,        HERON_FIELD(PageEntry, type)},
    {46,  &kPageGroup,        HERON_FIELD(PageEntry, stat)},
    {47,  &kPageGroup,        HERON_FIELD(PageEntry, binding)},
    {100, &kPageGroup,        HERON_FIELD(PageEntry, bindPosit)},
    {101, &kPageGroup,        HERON_FIELD(PageEntry, staple)},
    {107, &kPageGroup,        HERON_FIELD(PageEntry, stapleStop)},
    {102, &kPageGroup,        HERON_FIELD(PageEntry, punch)},
    {103, &kPageGroup,        HERON_FIELD(PageEntry, mediaType)},
    {104, &kPageGroup,        HERON_FIELD(PageEntry, paperWeight)},
    {105, &kPageGroup,        HERON_FIELD(PageEntry, paperColor)},
    {106, &kPageGroup,        HERON_FIELD(PageEntry, punchHoles)},
    {48,  &kPageGroup,        HERON_FIELD(PageEntry, prnTabIndex)},
    {49,  &kPageGroup,        HERON_FIELD(PageEntry, tabText)},
    {50,  &kPageGroup,        HERON_FIELD(PageEntry, prnTabIndexNo)},
    {51,  &kPageGroup,        HERON_FIELD(PageEntry, tabIndexAutoNo)},
    {52,  &kPageGroup,        HERON_FIELD(PageEntry, tabTextOrient)},
    {53,  &kPageGroup,        HERON_FIELD(PageEntry, tabTextAlign)},
    {54,  &kPageGroup,        HERON_FIELD(PageEntry, tabTextFontName)},
    {55,  &kPageGroup,        HERON_FIELD(PageEntry, tabTextFontStyle)},
    {56,  &kPageGroup,        HERON_FIELD(PageEntry, tabTextFontSize)},
    {57,  &kTabDialogGroup,   0, sizeof(TabDialogBlock), kTypeBytes},
    {58,  &kTabDialogGroup,   HERON_FIELD(TabDialogBlock, tabTextOrient)},
    {59,  &kTabDialogGroup,   HERON_FIELD(TabDialogBlock, tabTextAlign)},
    {60,  &kTabDialogGroup,   HERON_FIELD(TabDialogBlock, tabTextFontName)},
    {61,  &kTabDialogGroup,   HERON_FIELD(TabDialogBlock, tabTextFontStyle)},
    {62,  &kTabDialogGroup,   HERON_FIELD(TabDialogBlock, tabTextFontSize)},
    {63,  &kTabSettingsGroup, 0, sizeof(TabSettings), kTypeBytes},
    {64,  &kTabSettingsGroup, HERON_FIELD(TabSettings, tabPaperSize)},
    {65,  &kTabSettingsGroup, HERON_FIELD(TabSettings, tabIndexNum)},
    {66,  &kTabSettingsGroup, HERON_FIELD(TabSettings, tabTopMargin)},
    {67,  &kTabSettingsGroup, HERON_FIELD(TabSettings, tabBottomMargin)},
    {68,  &kTabSettingsGroup, HERON_FIELD(TabSettings, tabIndexSpace)},
    {69,  &kTabSettingsGroup, HERON_FIELD(TabSettings, tabTextPosition)},

    {3,   &kOverlayGroup,     HERON_FIELD(OverlayStore, createFileName)},
    {4,   &kOverlayGroup,     HERON_FIELD(OverlayStore, printFileName)},
    {5,   &kMessageGroup,     HERON_FIELD(OverlayMessage, caption)},
    {6,   &kMessageGroup,     HERON_FIELD(OverlayMessage, message)},
    {7,   &kMessageGroup,     HERON_FIELD(OverlayMessage, style)},
    {9,   &kOverlayGroup,     HERON_FIELD(OverlayStore, formListNum)},
    {10,  &kFormGroup,        offsetof(OverlayStore, forms), sizeof(OverlayStore::forms[0]), kTypeText},

    {12,  &kWatermarkGroup,   HERON_FIELD(WatermarkStore, wMarkListNum)},
    {15,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, text)},
    {17,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, font)},
    {19,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, style)},
    {21,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, size)},
    {23,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, angle)},
    {99,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, selectColor)},
    {25,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, color)},
    {27,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, centerX)},
    {29,  &kMarkGroup,        HERON_FIELD(WatermarkEntry, centerY)},

    {31,  &kFontGroup,        HERON_FIELD(FontSubstStore, fontSubTblNum)},
    {32,  &kFontGroup,        HERON_FIELD(FontSubstStore, index)},
    {34,  &kFontPairGroup,    HERON_FIELD(FontPair, trueTypeFont)},
    {36,  &kFontPairGroup,    HERON_FIELD(FontPair, deviceFont)},

    {71,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, subject)},
    {72,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, fixedform)},
    {73,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, receiptCompany1)},
    {74,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, receiptCompany2)},
    {75,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, receiptName)},
    {76,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, receiptFaxnum)},
    {77,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, senderCompany1)},
    {78,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, senderCompany2)},
    {79,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, senderName)},
    {81,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, senderTelnum)},
    {80,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, senderFaxnum)},
    {82,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, senderEmail)},
    {83,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, pagenum)},
    {84,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, style)},
    {85,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, fcsPaper)},
    {86,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, filename)},
    {87,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, zoom)},
    {88,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, xPosition)},
    {89,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, yPosition)},
    {91,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, lineNum)},
    {92,  &kFaxGroup,         HERON_FIELD(FaxCoverStore, text)},

    {94,  &kUserPaperGroup,   HERON_FIELD(CustomPaperEntry, width)},
    {95,  &kUserPaperGroup,   HERON_FIELD(CustomPaperEntry, height)},
    {96,  &kUserPaperGroup,   HERON_FIELD(CustomPaperEntry, unit)},
    {97,  &kUserPaperGroup,   HERON_FIELD(CustomPaperEntry, name)},
    {108, &kUserPaperGroup,   HERON_FIELD(CustomPaperEntry, longFlag)},
};

#undef HERON_FIELD
// clang-format on

}  // namespace heron

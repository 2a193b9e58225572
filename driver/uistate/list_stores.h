// The list stores: what a user makes that doesn't fit a settings record. Per-page lists, forms, watermarks, font
// substitutions, the fax cover sheet, user papers.
//
// Each store is one plain block without pointers, so that copying a set is six block copies. What lies where in a
// store, and under which key or value a field is kept, is in two tables: list_stores_fields.h and
// list_store_table.h. Structures with an asserted size are byte formats: their bytes go to the registry or to the
// printing side as they are.
//
// Texts are zero-terminated and zero-filled. A set owns its stores; a store that couldn't be allocated is null, and
// every operation on a null store gives false (0) without effect.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "settings/papers.h"

namespace heron {

/// Store ids, in the order of ListStoreSet and of the row tables. The numbers are shared with the catalogue's
/// facilities.
enum class ListStoreId : uint16_t {
  kPageLists = 4097,
  kOverlays = 4098,
  kWatermarks = 4099,
  kFontSubst = 4100,
  kFaxCover = 4101,
  kUserPapers = 8198,
};

/// The five stores that live in the user's registry tree; user papers live in printer data.
inline constexpr std::array kRegistryStores = {ListStoreId::kPageLists, ListStoreId::kOverlays,
                                               ListStoreId::kWatermarks, ListStoreId::kFontSubst,
                                               ListStoreId::kFaxCover};

inline constexpr int kPageListCount = 10;
inline constexpr int kPagesPerList = 30;
inline constexpr int kFormCount = 100;
inline constexpr int kOverlayMessageCount = 3;
inline constexpr int kWatermarkCount = 51;  ///< entry 0 means no watermark
inline constexpr int kFontPairCount = 500;

// Equality is that of the fields, bytes behind a text's terminator included; what lies between fields doesn't count.

/// One per-page exception.
struct PageEntry {
  char16_t page[21];  ///< page range text
  int16_t type;
  int16_t tray;
  uint16_t stat;
  int16_t binding;
  int16_t bindPosit;
  int16_t staple;
  int16_t stapleStop;
  int16_t punch;
  int16_t mediaType;
  int16_t paperWeight;
  int16_t paperColor;
  int16_t punchHoles;
  int16_t prnTabIndex;
  char16_t tabText[65];
  int16_t prnTabIndexNo;
  int32_t tabIndexAutoNo;
  int16_t tabTextOrient;
  int16_t tabTextAlign;
  char16_t tabTextFontName[32];
  int16_t tabTextFontStyle;
  int16_t tabTextFontSize;
  uint32_t reserved;

  bool operator==(const PageEntry&) const = default;
};
static_assert(offsetof(PageEntry, type) == 42 && offsetof(PageEntry, tray) == 44 && offsetof(PageEntry, stat) == 46);
static_assert(offsetof(PageEntry, bindPosit) == 50 && offsetof(PageEntry, mediaType) == 58);
static_assert(offsetof(PageEntry, tabText) == 68 && offsetof(PageEntry, prnTabIndexNo) == 198);
static_assert(offsetof(PageEntry, tabIndexAutoNo) == 200 && offsetof(PageEntry, tabTextFontName) == 208);
static_assert(offsetof(PageEntry, tabTextFontSize) == 274 && sizeof(PageEntry) == 280);

/// What the tab text dialog showed last.
struct TabDialogBlock {
  int16_t tabTextOrient;
  int16_t tabTextAlign;
  char16_t tabTextFontName[32];
  int16_t tabTextFontStyle;
  int16_t tabTextFontSize;

  bool operator==(const TabDialogBlock&) const = default;
};
static_assert(offsetof(TabDialogBlock, tabTextFontStyle) == 68 && sizeof(TabDialogBlock) == 72);

struct TabSettings {
  uint16_t tabPaperSize;
  uint8_t tabIndexNum;
  uint8_t tabTopMargin;
  uint8_t tabBottomMargin;
  uint8_t tabIndexSpace;
  int16_t tabTextPosition;

  bool operator==(const TabSettings&) const = default;
};
static_assert(offsetof(TabSettings, tabTextPosition) == 6 && sizeof(TabSettings) == 8);

struct PageList {
  char16_t name[17];
  uint16_t pageCount;  ///< 0 to 30
  uint16_t mixplex;
  TabSettings tabSettings;
  TabDialogBlock tabDialog;
  uint8_t head[332];  ///< working memory of the pages; never stored
  PageEntry pages[kPagesPerList];
};

struct PageListStore {
  PageList lists[kPageListCount];  ///< list number n is lists[n - 1]
};

/// Texts of the prompt for a form; the first has no caption.
struct OverlayMessage {
  char16_t caption[300];
  char16_t message[300];
  uint32_t style;

  bool operator==(const OverlayMessage&) const = default;
};
static_assert(sizeof(OverlayMessage) == 1204);

struct OverlayStore {
  char16_t createFileName[260];
  char16_t printFileName[260];
  uint16_t formListNum;  ///< 0 to 100
  char16_t forms[kFormCount][260];
  OverlayMessage messages[kOverlayMessageCount];  ///< message number n is messages[n - 1]

  bool operator==(const OverlayStore&) const = default;
};

struct WatermarkEntry {
  char16_t text[33];
  char16_t font[32];
  uint32_t style;
  uint32_t size;  ///< points
  int32_t angle;  ///< tenths of a degree
  uint32_t selectColor;
  uint32_t color;
  uint32_t centerX;  ///< low 16 bits, signed: tenths of a millimetre from the middle
  uint32_t centerY;

  bool operator==(const WatermarkEntry&) const = default;
};
static_assert(offsetof(WatermarkEntry, font) == 66 && offsetof(WatermarkEntry, style) == 132);
static_assert(offsetof(WatermarkEntry, angle) == 140 && offsetof(WatermarkEntry, centerY) == 156);
static_assert(sizeof(WatermarkEntry) == 160);

struct WatermarkStore {
  uint16_t wMarkListNum;  ///< 0 to 51
  WatermarkEntry entries[kWatermarkCount];
  WatermarkEntry current;  ///< template for new entries; never stored
};

struct FontPair {
  char16_t trueTypeFont[32];
  char16_t deviceFont[32];

  bool operator==(const FontPair&) const = default;
};
static_assert(sizeof(FontPair) == 128);

struct FontSubstStore {
  uint16_t fontSubTblNum;  ///< 0 to 500
  uint16_t index;
  FontPair pairs[kFontPairCount];

  bool operator==(const FontSubstStore&) const = default;
};

struct FaxCoverStore {
  char16_t subject[65];
  char16_t fixedform[41];
  char16_t receiptCompany1[41];
  char16_t receiptCompany2[41];
  char16_t receiptName[41];
  char16_t receiptFaxnum[41];
  char16_t senderCompany1[41];
  char16_t senderCompany2[41];
  char16_t senderName[41];
  char16_t senderTelnum[41];
  char16_t senderFaxnum[41];
  char16_t senderEmail[41];
  uint32_t pagenum;
  uint32_t style;
  uint32_t fcsPaper;
  char16_t filename[260];
  uint32_t zoom;  ///< percent
  uint32_t xPosition;
  uint32_t yPosition;
  uint32_t lineNum;  ///< line feeds in `text`
  char16_t text[641];

  bool operator==(const FaxCoverStore&) const = default;
};
static_assert(offsetof(FaxCoverStore, fixedform) == 130 && offsetof(FaxCoverStore, senderName) == 704);
static_assert(offsetof(FaxCoverStore, senderEmail) == 950 && offsetof(FaxCoverStore, pagenum) == 1032);
static_assert(offsetof(FaxCoverStore, filename) == 1044 && offsetof(FaxCoverStore, zoom) == 1564);
static_assert(offsetof(FaxCoverStore, text) == 1580 && sizeof(FaxCoverStore) == 2864);

struct ListStoreSet {
  std::unique_ptr<PageListStore> pageLists;
  std::unique_ptr<OverlayStore> overlays;
  std::unique_ptr<WatermarkStore> watermarks;
  std::unique_ptr<FontSubstStore> fontSubst;
  std::unique_ptr<FaxCoverStore> faxCover;
  std::unique_ptr<UserPaperStore> userPapers;
};

/// All six stores, zeroed, but for the watermark template, which has its fixed values. A store for which memory runs
/// out is null.
ListStoreSet CreateListStoreSet();
/// Frees the six stores.
void DestroyListStoreSet(ListStoreSet& set);
/// Copies each store in place: `target` keeps its own blocks. A store that is missing on either side is skipped.
void CopyListStoreSet(ListStoreSet& target, const ListStoreSet& source);

/// How a field is held; the numbers are those of TransferValue (transfer_value.h).
struct StoreField {
  uint8_t* data;  ///< into the store; valid as long as the store
  uint32_t size;  ///< bytes; a text's with its terminator
  uint16_t type;
};

/// Finds the field of row `row_id` in `set`. `list` is the number of a per-page list, 1 to 10; `item` the number that
/// the row's own name carries: page 0 to 29, form 0 to 99, message 1 to 3, watermark 0 to 50, font pair 0 to 499, user
/// paper 1 to 10. A number that the field hasn't got is ignored. False, with `field` untouched, for a row without a
/// field (a key), a null store or a number outside. `set` is const as the owner; the field can be written through.
bool GetStoreField(uint16_t row_id, const ListStoreSet& set, int list, int item, StoreField* field);

/// Reads that field as `type`, converted by TransferValue: its result, or -1 if there is no such field. `size_out` (may
/// be null) receives the field's size.
int32_t GetStoreValue(uint16_t row_id, const ListStoreSet& set, int list, int item, void* out, uint32_t size,
                      uint16_t type, uint32_t* size_out);

}  // namespace heron

// Defaults of the list stores. Per-page lists take theirs from the catalogue; the rest is told here, in tables.
#include "uistate/list_stores_seed.h"

#include <algorithm>
#include <memory>

#include "catalog/strings.h"
#include "platform/handles.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

// clang-format off
constexpr uint32_t kFirstListName = 28587;
constexpr uint32_t kFixedFormText = 20703;
constexpr uint32_t kMessageStyle = 4132;

/// Text numbers of a form prompt; caption 0: none.
struct MessageTexts { uint32_t caption, message; };
constexpr MessageTexts kMessageTexts[kOverlayMessageCount] = {{0, 29543}, {29541, 29544}, {29542, 29545}};

/// Text numbers of the first watermarks; 21200 is the empty text of the entry for no watermark.
constexpr uint32_t kMarkTexts[] = {21200, 30002, 30003, 30004, 30005, 30006, 30007, 30008, 30009, 30010, 30011, 30012};

/// TrueType font, device font.
constexpr FontPair kFontPairs[] = {
    {u"Albertus Extra Bold", u"Albertus Extra Bold"},
    {u"Albertus Medium", u"Albertus Medium"},
    {u"Antique Olive", u"Antique Olive"},
    {u"Arial", u"Arial"},
    {u"CG Omega", u"CG Omega"},
    {u"CG Times", u"CG Times"},
    {u"Clarendon Condensed", u"Clarendon Condensed"},
    {u"Courier New", u"Courier"},
    {u"CourierPS", u"CourierPS"},
    {u"Helvetica", u"Helvetica"},
    {u"Helvetica Narrow", u"Helvetica Narrow"},
    {u"ITC Avant Garde Gothic", u"ITC Avant Garde Gothic"},
    {u"ITC Bookman", u"ITC Bookman"},
    {u"ITC Zapf Chancery", u"ITC Zapf Chancery"},
    {u"ITC Zapf Dingbats", u"ITC Zapf Dingbats"},
    {u"Letter Gothic", u"Letter Gothic"},
    {u"Marigold", u"Marigold"},
    {u"New Century Schoolbook", u"New Century Schoolbook"},
    {u"Palatino", u"Palatino"},
    {u"Symbol", u"Symbol"},
    {u"SymbolPS", u"SymbolPS"},
    {u"Times", u"Times"},
    {u"Times New Roman", u"Times New Roman"},
    {u"Univers", u"Univers"},
    {u"Univers Condensed", u"Univers Condensed"},
    {u"Wingdings", u"Wingdings"},
};
static_assert(std::size(kFontPairs) == 26 && std::size(kMarkTexts) == 12);
// clang-format on

/// Features of the per-page lists' defaults.
enum : uint16_t {
  kMixplexFeature = 124,
  kTabPaperSizeFeature = 154,
  kTabIndexNumFeature = 155,
  kTabTopMarginFeature = 220,
  kTabBottomMarginFeature = 221,
  kTabIndexSpaceFeature = 222,
  kTabTextPositionFeature = 223,
};

/// Cuts a text to its field and fills the rest with zeros.
template <size_t N>
void SetText(char16_t (&field)[N], std::u16string_view text) {
  const size_t length = std::min(text.size(), N - 1);
  std::fill(std::copy_n(text.begin(), length, field), field + N, u'\0');
}

/// Features that this model hasn't got give 0, which is what a tab setting then stays.
void FillPageLists(PageListStore& store, const ResourceContext* resources) {
  const auto value = [resources](uint16_t feature) { return CatalogDefault(resources, feature); };
  for (uint32_t n = 0; n < kPageListCount; ++n) {
    PageList& list = store.lists[n];
    SetText(list.name, GetUiString(kFirstListName + n));
    list.mixplex = static_cast<uint16_t>(value(kMixplexFeature));
    list.pageCount = 0;
    list.tabSettings = {.tabPaperSize = static_cast<uint16_t>(value(kTabPaperSizeFeature)),
                        .tabIndexNum = static_cast<uint8_t>(value(kTabIndexNumFeature)),
                        .tabTopMargin = static_cast<uint8_t>(value(kTabTopMarginFeature)),
                        .tabBottomMargin = static_cast<uint8_t>(value(kTabBottomMarginFeature)),
                        .tabIndexSpace = static_cast<uint8_t>(value(kTabIndexSpaceFeature)),
                        .tabTextPosition = static_cast<int16_t>(value(kTabTextPositionFeature))};
  }
}

void FillOverlays(OverlayStore& store) {
  store.formListNum = 0;
  for (size_t n = 0; n < kOverlayMessageCount; ++n) {
    OverlayMessage& message = store.messages[n];
    if (kMessageTexts[n].caption != 0) SetText(message.caption, GetUiString(kMessageTexts[n].caption));
    SetText(message.message, GetUiString(kMessageTexts[n].message));
    message.style = kMessageStyle;
  }
}

/// The seeded watermarks differ from the template in their text alone.
void FillWatermarks(WatermarkStore& store) {
  store.wMarkListNum = static_cast<uint16_t>(std::size(kMarkTexts));
  for (size_t n = 0; n < std::size(kMarkTexts); ++n) {
    store.entries[n] = store.current;
    SetText(store.entries[n].text, GetUiString(kMarkTexts[n]));
  }
}

void FillFontSubst(FontSubstStore& store) {
  store.fontSubTblNum = static_cast<uint16_t>(std::size(kFontPairs));
  store.index = 0;
  std::copy(std::begin(kFontPairs), std::end(kFontPairs), store.pairs);
}

/// What isn't told here stays empty or 0: the sender writes it.
void FillFaxCover(FaxCoverStore& store) {
  SetText(store.fixedform, GetUiString(kFixedFormText));
  store.pagenum = 1;
  store.style = 1;
  store.fcsPaper = 5;
  store.zoom = 100;
  store.xPosition = 0;
  store.yPosition = 0;
}

}  // namespace

void FillListDefaults(ListStoreSet& set, const ResourceContext* resources) {
  const StringsInUse strings;
  if (set.pageLists != nullptr) FillPageLists(*set.pageLists, resources);
  if (set.overlays != nullptr) FillOverlays(*set.overlays);
  if (set.watermarks != nullptr) FillWatermarks(*set.watermarks);
  if (set.fontSubst != nullptr) FillFontSubst(*set.fontSubst);
  if (set.faxCover != nullptr) FillFaxCover(*set.faxCover);
}

bool SeedListStores(std::u16string_view printer_name) {
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) return false;
  ListStoreSet set = CreateListStoreSet();
  FillListDefaults(set, resources.get());
  platform::RegistryBatch batch(platform::HKEY_CURRENT_USER);
  if (!batch.open()) return false;
  for (const ListStoreId store : kRegistryStores) {
    if (!WalkStore(set, store, printer_name, WalkOp::kSeed)) return false;
  }
  return batch.Keep();
}

}  // namespace heron

// Defaults of the list stores. Per-page lists take theirs from the catalogue; the rest is in tables here.
#include "uistate/list_stores_seed.h"

#include <algorithm>
#include <memory>

#include "catalog/strings.h"
#include "generated/features.h"
#include "generated/texts.h"
#include "platform/api/handles.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

// clang-format off
constexpr uint32_t kMessageStyle = 4132;

/// Text numbers of a form prompt; caption 0: none.
struct MessageTexts { TextNumber caption, message; };
constexpr MessageTexts kMessageTexts[kOverlayMessageCount] = {
    {0, text::kAskToUseForm},
    {text::kCreateOverlayForm, text::kAskToMakeForm},
    {text::kPrintWithOverlayForm, text::kAskToPrintWithForm},
};

/// The seeded watermarks, behind the empty one of the entry for no watermark. Their texts have consecutive numbers.
constexpr size_t kSeededMarks = 12;
constexpr TextNumber MarkText(size_t n) {
  return n == 0 ? text::kEmpty : text::kFirstWatermark + static_cast<TextNumber>(n - 1);
}

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
static_assert(std::size(kFontPairs) == 26);
// clang-format on

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
    SetText(list.name, GetUiString(text::kFirstPageList + n));
    list.mixplex = static_cast<uint16_t>(value(feature::Mixplex_Check));
    list.pageCount = 0;
    list.tabSettings = {.tabPaperSize = static_cast<uint16_t>(value(feature::lpTabPaperSize)),
                        .tabIndexNum = static_cast<uint8_t>(value(feature::lpTabIndexNum)),
                        .tabTopMargin = static_cast<uint8_t>(value(feature::TabTopMargin)),
                        .tabBottomMargin = static_cast<uint8_t>(value(feature::TabBottomMargin)),
                        .tabIndexSpace = static_cast<uint8_t>(value(feature::TabIndexSpace)),
                        .tabTextPosition = static_cast<int16_t>(value(feature::TabTextPosition))};
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
  store.wMarkListNum = static_cast<uint16_t>(kSeededMarks);
  for (size_t n = 0; n < kSeededMarks; ++n) {
    store.entries[n] = store.current;
    SetText(store.entries[n].text, GetUiString(MarkText(n)));
  }
}

void FillFontSubst(FontSubstStore& store) {
  store.fontSubTblNum = static_cast<uint16_t>(std::size(kFontPairs));
  store.index = 0;
  std::copy(std::begin(kFontPairs), std::end(kFontPairs), store.pairs);
}

/// What isn't given here stays empty or 0: the sender writes it.
void FillFaxCover(FaxCoverStore& store) {
  SetText(store.fixedform, GetUiString(text::kFaxGreeting));
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

std::span<const FontPair> DefaultFontPairs() {
  return kFontPairs;
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

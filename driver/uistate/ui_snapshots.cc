// Stored defaults: what a setting without a feature, or a field of a list store, starts with. They come from the texts
// of the catalogue and are converted once, when a state is made.
#include <algorithm>
#include <array>
#include <cstring>

#include "uistate/list_stores_fields.h"
#include "uistate/ui_state.h"

namespace heron {
namespace {

/// Settings without a feature whose default is a text of the catalogue: id and text feature.
struct ValuePair {
  uint16_t id;
  uint16_t feature;
};
// clang-format off
constexpr ValuePair kValuePairs[] = {
    {204, 670}, {186, 671},
    {210, 672}, {211, 673}, {212, 674}, {213, 675}, {214, 676}, {215, 677}, {216, 678}, {217, 679}, {218, 680},
    {219, 681}, {220, 682}, {221, 683}, {222, 684},
    {225, 685}, {226, 686}, {227, 687}, {228, 688}, {229, 689}, {230, 690}, {232, 691}, {235, 692},
    {207, 693}, {208, 694}, {209, 695}, {138, 696}, {312, 697}, {293, 698}, {294, 699},
    {300, 700}, {301, 701}, {302, 702}, {303, 703},
};
// clang-format on
static_assert(std::size(kValuePairs) == 34);

constexpr uint32_t kTextRoom = 512;  ///< bytes of a default text

uint16_t ListFeatureOf(uint16_t row_id) {
  const auto pair = std::ranges::find(kListSnapshotPairs, row_id, &ListSnapshotPair::rowId);
  return pair == kListSnapshotPairs.end() ? kNoFeature : pair->feature;
}

/// The field's row, or null for a key.
const StoreFieldRow* FieldRowOf(uint16_t row_id) {
  const auto row = std::ranges::find(kStoreFields, row_id, &StoreFieldRow::id);
  return row == std::end(kStoreFields) ? nullptr : row;
}

/// Digits up to the first other character, with a sign before them.
int32_t ParseNumber(const char16_t* text) {
  const bool negative = *text == u'-';
  if (negative) ++text;
  uint32_t value = 0;
  for (; *text >= u'0' && *text <= u'9'; ++text) value = value * 10 + static_cast<uint32_t>(*text - u'0');
  return static_cast<int32_t>(negative ? 0 - value : value);
}

/// Writes the feature's default into `slot` as a value of `type`; the slot is zeroed already.
void PutDefault(const ResourceContext* resources, uint16_t feature, uint8_t* slot, uint32_t size, uint16_t type) {
  std::array<char16_t, kTextRoom / sizeof(char16_t)> text{};
  CatalogQuery(resources, feature, kDefaultLabel, text.data(), 0, kTextRoom);
  if (type == kTypeText) {
    const size_t room = std::min<size_t>(size, kTextRoom) / sizeof(char16_t) - 1;
    std::memcpy(slot, text.data(), std::min(room, std::u16string_view(text.data()).size()) * sizeof(char16_t));
  } else if (type != kTypeBytes) {
    const int32_t number = ParseNumber(text.data());
    std::memcpy(slot, &number, std::min<size_t>(size, sizeof number));  // the low bytes come first
  }
}

}  // namespace

uint16_t ValueFeatureOf(uint16_t id) {
  const auto pair = std::ranges::find(kValuePairs, id, &ValuePair::id);
  return pair == std::end(kValuePairs) ? kNoFeature : pair->feature;
}

void PlaceSnapshots(ParamTables& tables) {
  for (WorkingParam& param : tables.params) {
    if (param.row->feature != kNoFeature || ValueFeatureOf(param.row->id) == kNoFeature) continue;
    param.inSnapshot = true;
    param.snapshotOffset = tables.valueSnapshotSize;
    tables.valueSnapshotSize += (param.slotSize + 3) & ~3u;
  }
  for (WorkingStoreRow& store : tables.stores.rows) {
    const StoreFieldRow* field = FieldRowOf(store.id());
    if (field == nullptr || ListFeatureOf(store.id()) == kNoFeature) continue;
    store.inSnapshot = true;
    store.dataOffset = tables.listSnapshotSize;
    tables.listSnapshotSize += (field->size + 3) & ~3u;
  }
}

UiSnapshots TakeSnapshots(const ResourceContext* resources) {
  const ParamTables& tables = Params();
  UiSnapshots snapshots{.values = std::vector<uint8_t>(tables.valueSnapshotSize),
                        .lists = std::vector<uint8_t>(tables.listSnapshotSize)};
  for (const WorkingParam& param : tables.params) {
    if (!param.inSnapshot) continue;
    uint8_t* slot = snapshots.values.data() + param.snapshotOffset;
    PutDefault(resources, ValueFeatureOf(param.row->id), slot, param.slotSize, param.slotType);
  }
  for (const WorkingStoreRow& store : tables.stores.rows) {
    const StoreFieldRow* field = FieldRowOf(store.id());
    if (!store.inSnapshot || field == nullptr) continue;
    uint8_t* slot = snapshots.lists.data() + store.dataOffset;
    PutDefault(resources, ListFeatureOf(store.id()), slot, field->size, field->type);
  }
  return snapshots;
}

bool GetRowDefault(uint16_t row_index, const UiSnapshots& snapshots, const uint8_t** out) {
  const auto& params = Params().params;
  if (row_index >= params.size() || !params[row_index].inSnapshot) return false;
  *out = snapshots.values.data() + params[row_index].snapshotOffset;
  return true;
}

bool GetStoreRowDefault(uint16_t row_index, const UiSnapshots& snapshots, const uint8_t** out) {
  const auto& rows = Params().stores.rows;
  if (row_index >= rows.size() || !rows[row_index].inSnapshot) return false;
  *out = snapshots.lists.data() + rows[row_index].dataOffset;
  return true;
}

}  // namespace heron

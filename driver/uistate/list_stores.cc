// Making, copying and addressing list stores.
//
// Fields are found through list_stores_fields.h alone: a number that comes from outside is checked against the group's
// bounds before it becomes an address.
#include "uistate/list_stores.h"

#include <new>

#include "uistate/list_stores_fields.h"
#include "uistate/transfer_value.h"

namespace heron {
namespace {

/// A zeroed store, or null if memory runs out: the caller goes on with the stores it got.
template <typename Store>
std::unique_ptr<Store> NewStore() {
  return std::unique_ptr<Store>(new (std::nothrow) Store{});
}

template <typename Store>
void CopyStore(std::unique_ptr<Store>& target, const std::unique_ptr<Store>& source) {
  static_assert(std::is_trivially_copyable_v<Store>);
  if (target != nullptr && source != nullptr) *target = *source;
}

/// What a new watermark starts as, and what every seeded one is but for its text.
constexpr WatermarkEntry kWatermarkTemplate = {.text = {},
                                               .font = u"宋体",
                                               .style = 1,
                                               .size = 72,
                                               .angle = 0,
                                               .selectColor = 0,
                                               .color = 126,
                                               .centerX = 0,
                                               .centerY = 0};

/// Null for a row without a field. Some eighty rows: a scan costs less than what is done with the field.
const StoreFieldRow* FindFieldRow(uint16_t row_id) {
  for (const StoreFieldRow& row : kStoreFields) {
    if (row.id == row_id) return &row;
  }
  return nullptr;
}

/// First byte of a store; null if the set hasn't got it.
uint8_t* StoreBytes(const ListStoreSet& set, ListStoreId store) {
  const auto bytes = [](auto* block) { return reinterpret_cast<uint8_t*>(block); };
  switch (store) {
    case ListStoreId::kPageLists:
      return bytes(set.pageLists.get());
    case ListStoreId::kOverlays:
      return bytes(set.overlays.get());
    case ListStoreId::kWatermarks:
      return bytes(set.watermarks.get());
    case ListStoreId::kFontSubst:
      return bytes(set.fontSubst.get());
    case ListStoreId::kFaxCover:
      return bytes(set.faxCover.get());
    case ListStoreId::kUserPapers:
      return bytes(set.userPapers.get());
  }
  return nullptr;
}

}  // namespace

ListStoreSet CreateListStoreSet() {
  ListStoreSet set = {NewStore<PageListStore>(),  NewStore<OverlayStore>(),  NewStore<WatermarkStore>(),
                      NewStore<FontSubstStore>(), NewStore<FaxCoverStore>(), NewStore<UserPaperStore>()};
  if (set.watermarks != nullptr) set.watermarks->current = kWatermarkTemplate;
  return set;
}

void DestroyListStoreSet(ListStoreSet& set) {
  set = ListStoreSet{};
}

void CopyListStoreSet(ListStoreSet& target, const ListStoreSet& source) {
  CopyStore(target.pageLists, source.pageLists);
  CopyStore(target.overlays, source.overlays);
  CopyStore(target.watermarks, source.watermarks);
  CopyStore(target.fontSubst, source.fontSubst);
  CopyStore(target.faxCover, source.faxCover);
  CopyStore(target.userPapers, source.userPapers);
}

bool GetStoreField(uint16_t row_id, const ListStoreSet& set, int list, int item, StoreField* field) {
  const StoreFieldRow* row = FindFieldRow(row_id);
  if (row == nullptr) return false;
  const StoreGroup& group = *row->group;
  uint8_t* store = StoreBytes(set, group.store);
  if (store == nullptr) return false;
  size_t offset = group.base + row->offset;
  if (group.lists != 0) {
    if (list < 1 || list > group.lists) return false;
    offset += static_cast<size_t>(list - 1) * group.listStride;
  }
  if (group.items != 0) {
    if (item < group.firstItem || item - group.firstItem >= group.items) return false;
    offset += static_cast<size_t>(item - group.firstItem) * group.itemStride;
  }
  *field = {store + offset, row->size, row->type};
  return true;
}

int32_t GetStoreValue(uint16_t row_id, const ListStoreSet& set, int list, int item, void* out, uint32_t size,
                      uint16_t type, uint32_t* size_out) {
  StoreField field;
  if (!GetStoreField(row_id, set, list, item, &field)) return -1;
  return TransferValue(TransferDirection::kRead, {out, size, type}, {field.data, field.size, field.type}, size_out);
}

}  // namespace heron

// The rows of list_store_table.h by store, and the working form that the parameter table and the settings files join.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "uistate/list_store_table.h"
#include "uistate/list_stores.h"

namespace heron {

struct ListStoreRows {
  ListStoreId store;
  std::span<const ListStoreRow> rows;
};

/// The six row tables, in the order of ListStoreSet.
inline constexpr std::array<ListStoreRows, 6> kListStoreRows = {{
    {ListStoreId::kPageLists, kPageListStoreRows},
    {ListStoreId::kOverlays, kOverlayRows},
    {ListStoreId::kWatermarks, kWatermarkRows},
    {ListStoreId::kFontSubst, kFontSubstRows},
    {ListStoreId::kFaxCover, kFaxCoverRows},
    {ListStoreId::kUserPapers, kUserPaperRows},
}};

/// Rows of one store.
std::span<const ListStoreRow> RowsOf(ListStoreId store);

/// Whether another row of the store takes its number of items from this one.
bool IsCountRow(std::span<const ListStoreRow> rows, const ListStoreRow& row);

/// Room of the list that the row counts: one more than the highest number of the rows linked to it.
uint16_t RoomOfList(uint16_t count_row);

/// The number of items in a count's field, which anybody may have written: at most the list's room. Every count is a
/// u16.
uint16_t CountIn(const StoreField& field, uint16_t room);
/// The only way in for a count that comes from elsewhere.
void StoreCount(const StoreField& field, uint32_t count, uint16_t room);

inline constexpr uint16_t kNoIndex = 0xFFFF;

/// A row at run time, with its places in the tables that it is joined with; kNoIndex until it is.
struct WorkingStoreRow {
  const ListStoreRow* row = nullptr;  ///< null in the closing row
  ListStoreId store{};
  bool isCount = false;
  uint32_t dataOffset = 0;  ///< place in the list snapshot, if inSnapshot
  bool inSnapshot = false;
  uint16_t paramIndex = kNoIndex;
  uint16_t selfIndex = kNoIndex;
  uint16_t fileKeyIndex = kNoIndex;

  uint16_t id() const { return row == nullptr ? uint16_t{0} : row->id; }
};

/// All rows in table order and a closing row, with each store's part of them.
struct ListStoreTable {
  struct Part {
    ListStoreId store;
    uint16_t firstRow;
    uint16_t rowCount;
  };
  std::vector<WorkingStoreRow> rows;
  std::array<Part, kListStoreRows.size()> parts;

  /// Index of the first row with this id, or kNoIndex; 0 finds nothing.
  uint16_t IndexOf(uint16_t id) const;
};

ListStoreTable BuildListStoreTable();

}  // namespace heron

// Row look-ups of the list stores. All facts of a row are in list_store_table.h; what depends on other
// tables is filled in where they are joined.
#include "uistate/list_stores_rows.h"

#include <algorithm>
#include <cstring>

namespace heron {

std::span<const ListStoreRow> RowsOf(ListStoreId store) {
  for (const ListStoreRows& rows : kListStoreRows) {
    if (rows.store == store) return rows.rows;
  }
  return {};
}

bool IsCountRow(std::span<const ListStoreRow> rows, const ListStoreRow& row) {
  return std::any_of(rows.begin(), rows.end(), [&](const ListStoreRow& other) { return other.link == row.id; });
}

uint16_t RoomOfList(uint16_t count_row) {
  uint16_t room = 0;
  for (const ListStoreRows& store : kListStoreRows) {
    for (const ListStoreRow& row : store.rows) {
      if (row.link == count_row) room = std::max<uint16_t>(room, static_cast<uint16_t>(row.hi + 1));
    }
  }
  return room;
}

uint16_t CountIn(const StoreField& field, uint16_t room) {
  uint16_t count;
  std::memcpy(&count, field.data, sizeof count);
  return std::min(count, room);
}

void StoreCount(const StoreField& field, uint32_t count, uint16_t room) {
  const auto clamped = static_cast<uint16_t>(std::min<uint32_t>(count, room));
  std::memcpy(field.data, &clamped, sizeof clamped);
}

uint16_t ListStoreTable::IndexOf(uint16_t id) const {
  if (id == 0) return kNoIndex;
  const auto row = std::find_if(rows.begin(), rows.end(), [id](const WorkingStoreRow& r) { return r.id() == id; });
  return row == rows.end() ? kNoIndex : static_cast<uint16_t>(row - rows.begin());
}

ListStoreTable BuildListStoreTable() {
  ListStoreTable table{};
  for (size_t part = 0; part < kListStoreRows.size(); ++part) {
    const auto& [store, rows] = kListStoreRows[part];
    table.parts[part] = {store, static_cast<uint16_t>(table.rows.size()), static_cast<uint16_t>(rows.size())};
    for (const ListStoreRow& row : rows) {
      WorkingStoreRow working;
      working.row = &row;
      working.store = store;
      working.isCount = IsCountRow(rows, row);
      working.selfIndex = static_cast<uint16_t>(table.rows.size());
      table.rows.push_back(working);
    }
  }
  table.rows.emplace_back();  // id 0: for scans that stop at it
  return table;
}

}  // namespace heron

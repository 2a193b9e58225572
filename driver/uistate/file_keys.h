// The rows of file_keys.table in the form that joins and walks use.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "uistate/list_stores_rows.h"

namespace heron {

struct FileKeyRow {
  uint16_t id = 0;                   ///< 0 ends the table
  std::u16string_view section = {};  ///< empty on a row that continues the section above it; may hold one %d
  std::u16string_view key = {};      ///< empty on a row that only opens a section; may hold one %d
  uint16_t lo = 1;
  uint16_t hi = 1;
  uint16_t link = 0;    ///< id of the row that holds the list's count, or 0
  uint16_t domain = 1;  ///< feature area; every area exists on this model
  uint16_t group = 0;   ///< recall group
};

/// All rows in file order and the closing row of id 0.
inline constexpr auto kFileKeyRows = std::to_array<FileKeyRow>({
#include "generated/file_keys.inc"
    {},
});
static_assert(kFileKeyRows.size() == 436 && kFileKeyRows.back().id == 0);

/// Id of the key `key` in the section `section`, or 0.
constexpr uint16_t FileKeyId(std::u16string_view section, std::u16string_view key) {
  bool inside = false;
  for (const FileKeyRow& row : kFileKeyRows) {
    if (!row.section.empty()) inside = row.section == section;
    if (inside && !row.key.empty() && row.key == key) return row.id;
  }
  return 0;
}

/// A row at run time with its places in the tables that it is joined with; kNoIndex where it is joined with none.
struct WorkingFileKey {
  const FileKeyRow* row = nullptr;
  bool isCount = false;  ///< some other row's link names it
  uint16_t selfIndex = kNoIndex;
  uint16_t paramIndex = kNoIndex;  ///< the first parameter that names it; a row without one is never written or read
  uint16_t storeIndex = kNoIndex;  ///< that parameter's row of the list stores
};

}  // namespace heron

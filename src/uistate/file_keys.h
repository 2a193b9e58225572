// The rows of file_key_table.h in the form that joins and walks use.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "catalog/table_text.h"
#include "uistate/file_key_table.h"
#include "uistate/list_stores_rows.h"

namespace heron {

struct FileKeyRow {
  uint16_t id = 0;              ///< 0 ends the table
  std::u16string_view section;  ///< empty on a row that continues the section above it; may hold one %d
  std::u16string_view key;      ///< empty on a row that only opens a section; may hold one %d
  uint16_t lo = 1;
  uint16_t hi = 1;
  uint16_t link = 0;    ///< id of the row that holds the list's count, or 0
  uint16_t domain = 1;  ///< feature area; every area exists on this model
  uint16_t group = 0;   ///< recall group
};

namespace param_internal {

constexpr size_t CountLines(std::u16string_view text) {
  size_t lines = 0;
  catalog::ForEachLine(text, [&](std::u16string_view) { ++lines; });
  return lines;
}

constexpr FileKeyRow ParseFileKey(std::u16string_view line) {
  FileKeyRow row;
  row.id = catalog::Unsigned(catalog::Cut(line, u'|'));
  row.group = catalog::Unsigned(catalog::Cut(line, u'|'));
  const std::u16string_view name = catalog::Cut(line, u'|');
  if (name.starts_with(u'['))
    row.section = name.substr(1, name.size() - 2);
  else
    row.key = name;
  if (std::u16string_view range = catalog::CutWord(line); !range.empty()) {
    row.lo = catalog::Unsigned(catalog::Cut(range, u'.'));
    row.hi = catalog::Unsigned(range.substr(1));
  }
  if (const std::u16string_view link = catalog::CutWord(line); !link.empty()) row.link = catalog::Unsigned(link);
  return row;
}

consteval auto ParseFileKeys() {
  std::array<FileKeyRow, CountLines(kFileKeyText) + 1> rows;
  size_t next = 0;
  catalog::ForEachLine(kFileKeyText, [&](std::u16string_view line) { rows[next++] = ParseFileKey(line); });
  return rows;
}

}  // namespace param_internal

/// All rows in file order and the closing row of id 0.
inline constexpr auto kFileKeyRows = param_internal::ParseFileKeys();
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

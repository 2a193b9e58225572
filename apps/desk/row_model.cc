// Rows of a list as a Qt model (row_model.h).

#include "row_model.h"

#include <algorithm>

#include "text.h"

namespace heron::desk {

using platform::ListRow;

bool RowModel::SetRows(std::span<const ListRow> rows) {
  const auto same = [](const ListRow& one, const ListRow& other) {
    return one.text == other.text && one.cells == other.cells && one.picture == other.picture;
  };
  if (std::ranges::equal(rows_, rows, same)) return false;
  beginResetModel();
  rows_.assign(rows.begin(), rows.end());
  endResetModel();
  return true;
}

int RowModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(1, static_cast<int>(headings_.size()));
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const ListRow& row = rows_[static_cast<size_t>(index.row())];
  if (role == Qt::DecorationRole && index.column() == 0 && row.picture != 0) return picture_(row.picture);
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  if (index.column() == 0) return ToQt(row.text);
  const size_t cell = static_cast<size_t>(index.column()) - 1;
  return cell < row.cells.size() ? ToQt(row.cells[cell]) : QString();
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return headings_.value(section);
}

}  // namespace heron::desk

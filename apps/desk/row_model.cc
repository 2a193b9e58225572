// Rows of a list as a Qt model (row_model.h).

#include "row_model.h"

#include <QFont>
#include <QPalette>
#include <algorithm>

#include "painting.h"
#include "text.h"

namespace heron::desk {

using platform::ListRow;

bool RowModel::SetRows(std::span<const ListRow> rows) {
  if (std::ranges::equal(rows_, rows)) return false;
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

/// Font and colour of the letters. A view paints a selected row in the colours of its selection all the same.
QVariant RowModel::Look(const ListRow& row, int role) const {
  if (role == Qt::FontRole && !row.font.empty()) {
    QFont font = list_->font();
    font.setFamily(ToQt(row.font));
    return font;
  }
  if (role != Qt::ForegroundRole) return {};
  if (row.grey) return list_->palette().brush(QPalette::Disabled, QPalette::Text);
  return row.color ? QVariant(QBrush(ColorOf(*row.color))) : QVariant();
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const ListRow& row = rows_[static_cast<size_t>(index.row())];
  if (role == Qt::DecorationRole && index.column() == 0 && row.picture != 0) return picture_(row.picture);
  if (role != Qt::DisplayRole && role != Qt::EditRole) return Look(row, role);
  if (index.column() == 0) return ToQt(row.text);
  const size_t cell = static_cast<size_t>(index.column()) - 1;
  return cell < row.cells.size() ? ToQt(row.cells[cell]) : QString();
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return headings_.value(section);
}

}  // namespace heron::desk

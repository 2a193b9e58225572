// Rows of drop-downs, list boxes and list views, as the logic gives them.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

#include "platform/dialog/dialog.h"

namespace heron::desk {

class RowModel final : public QAbstractTableModel {
 public:
  using PictureSource = std::function<QVariant(uint32_t number)>;

  /// `list` shows the rows; its font and palette are theirs where a row says nothing else.
  RowModel(QWidget* list, PictureSource picture)
      : QAbstractTableModel(list), list_(list), picture_(std::move(picture)) {}

  /// False if the rows are what they were; nothing happens then.
  bool SetRows(std::span<const platform::ListRow> rows);
  void SetHeadings(const QStringList& headings) { headings_ = headings; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QVariant Look(const platform::ListRow& row, int role) const;

  QWidget* list_;
  std::vector<platform::ListRow> rows_;
  QStringList headings_;
  PictureSource picture_;
};

}  // namespace heron::desk

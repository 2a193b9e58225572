// Rows of drop-downs, list boxes and list views, as the logic gives them.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/dialog/dialog.h"

namespace heron::desk {

class RowModel final : public QAbstractTableModel {
 public:
  using PictureSource = std::function<QVariant(uint32_t number)>;

  RowModel(QObject* parent, PictureSource picture) : QAbstractTableModel(parent), picture_(std::move(picture)) {}

  /// False if the rows are what they were; nothing happens then.
  bool SetRows(std::span<const platform::ListRow> rows);
  void SetHeadings(const QStringList& headings) { headings_ = headings; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<platform::ListRow> rows_;
  QStringList headings_;
  PictureSource picture_;
};

}  // namespace heron::desk

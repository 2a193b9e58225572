// Page 200: covers, the pages at which chapters start, and the list of pages with settings of their own.
//
// The list view has one row above the list's own rows: row 0 stands for all other pages, shows what they get, and can't
// be selected, edited or moved. View row n is row n - 1 of the working list (pages/page_rows.h).
#pragma once

#include <optional>

#include "pages/page.h"
#include "pages/page_rows.h"

namespace heron::pages {

class PerPagePage : public Page {
 public:
  PerPagePage(SheetContext& sheet, const PageRow& row);

  void RefreshPerPageList() override;
  void EnableControl(uint16_t id, bool available) override;
  bool PerPageRowSelected() const override;

 protected:
  void OnInitialise() override;
  void OnActivate() override;
  bool OnDeactivate() override;
  bool OnApply() override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnGroupShown(uint8_t group) override;
  void OnDefaultsRestored(const engine::ResolveOutcome& outcome) override;
  void OnTextChanged(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;
  void OnRowSelected(ControlId id) override;
  void OnRowClicked(ControlId id, int row) override;
  void OnRowActivated(ControlId id) override;
  void OnRowMoved(ControlId id, int from, int to) override;
  void OnHeadingClicked(ControlId id, int column) override;
  bool OnListKey(ControlId id, platform::ListKey key) override;

 private:
  bool ValidateChapters();
  bool RefuseChapters(const std::u16string& text);

  void ShowRows();
  void RestSelection();
  void UpdateRowButtons();
  void SelectAgain(int view_row);
  void FinishEdit(int view_row);

  void AddRow();
  void EditRow();
  void RunRowDialog(RowNumber row);
  void RemoveSelected();
  void MoveSelected(int step);
  void MoveTo(int view_row, int target);
  void SortBy(size_t column);
  void Undo();
  void Rename();

  int lastRow_ = platform::kNoRow;     ///< the view row that was selected last, above row 0
  bool leavesUpwards_ = false;         ///< a key is about to move the selection to view row 0
  bool descending_[kRowColumns] = {};  ///< what the next click on a heading does
  std::optional<KeptRows> undo_;       ///< the rows before the last edit since Apply
};

}  // namespace heron::pages

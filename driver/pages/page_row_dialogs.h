// Dialogs 2400, one row of the per-page list, and 2440, the name of the list.
#pragma once

#include <string>

#include "pages/page_rows.h"
#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

/// Edits the row in the row settings. After OK the caller stores the row with pages().
class PageRowDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kPerPageRow;
  /// `row` is open already (OpenRow), with `repaired` changed.
  PageRowDialog(SheetContext& sheet, RowNumber row, uint8_t repaired);

  const std::u16string& pages() const { return pages_; }
  /// What the rules changed, as PerPageRowCheck::Fields, and the user didn't choose anew.
  uint8_t repaired() const { return repaired_; }

 protected:
  void OnInitialise() override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnHelp(ControlId id) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;

 private:
  enum class Check : uint8_t { kLeaving, kConfirming };
  bool Validate(Check check);

  RowNumber row_;
  uint8_t repaired_;
  std::u16string pages_;
};

class ListNameDialog : public LogicBase {
 public:
  static constexpr uint16_t kNumber = dialog::kPerPageListName;
  explicit ListNameDialog(SheetContext& sheet) : sheet_(sheet) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;

 private:
  bool Confirm();

  SheetContext& sheet_;
};

}  // namespace heron::pages

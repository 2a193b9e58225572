// The paper in the trays: the list of the trays (2910), the paper type of one (2920), and the tray of the sheets
// between transparencies (2020). Each works on a copy of the settings that its caller made.
#pragma once

#include "pages/settings_view.h"
#include "rules/dialogs.h"

namespace heron::pages {

class PaperTypeDialog : public SettingsView {
 public:
  static constexpr uint16_t kNumber = dialog::kPaperTypes;
  explicit PaperTypeDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnChanged(ControlId id) override;
  void OnRowSelected(ControlId id) override;
  void OnRowActivated(ControlId id) override;
  void OnButton(ControlId id) override;

 private:
  void FillTrays();
  void EditTray();
  void EditInterleave();
  void DropIdleInterleave();
  bool HasTransparencyTray() const;

  std::vector<uint16_t> trays_;  ///< sources by row
};

/// A dialog with one list that stores its value at once.
class OneListDialog : public SettingsView {
 protected:
  OneListDialog(SheetContext& sheet, uint16_t number, std::span<const ShownControl> list)
      : SettingsView(sheet, number, list) {}
  void OnInitialise() override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
};

class PaperTypeEditDialog : public OneListDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kPaperTypeEdit;
  explicit PaperTypeEditDialog(SheetContext& sheet);
};

class InterleaveDialog : public OneListDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kInterleave;
  explicit InterleaveDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnButton(ControlId id) override;

 private:
  uint16_t typeBefore_ = 0;
  uint16_t trayBefore_ = 0;
};

}  // namespace heron::pages

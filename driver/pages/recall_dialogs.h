// Dialog 2520: recalls saved settings; 2540: what a recall brings besides the ordinary settings.
#pragma once

#include <array>

#include "pages/library_dialog.h"
#include "rules/dialogs.h"

namespace heron::pages {

/// The settings' choice of what a recall brings.
using RecallFlags = std::array<uint16_t, 7>;
RecallFlags ReadRecallFlags(const UiState& ui);
void StoreRecallFlags(const UiState& ui, const RecallFlags& flags);

class RecallOptionsDialog : public LogicBase {
 public:
  static constexpr uint16_t kNumber = dialog::kRecallOptions;
  explicit RecallOptionsDialog(SheetContext& sheet) : sheet_(sheet) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;

 private:
  void Show(const RecallFlags& flags);

  SheetContext& sheet_;
};

/// OK takes the settings over, with their consequences; the page shows them.
class RecallDialog : public LibraryDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kRecallSettings;
  explicit RecallDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnButton(ControlId id) override;
  void OnRowActivated(ControlId id) override;
  void OnEntryShown(const LibraryEntry* entry) override;

 private:
  void Recall();

  RecallFlags flags_{};  ///< as they were
};

}  // namespace heron::pages

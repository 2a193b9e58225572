// Dialog 2500: saves the current settings in the library.
#pragma once

#include "pages/library_dialog.h"
#include "rules/dialogs.h"

namespace heron::pages {

class SaveDialog : public LibraryDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kSaveSettings;
  explicit SaveDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnDestroy() override;
  void OnButton(ControlId id) override;

 private:
  void Browse();
  bool MayBeNamed(const FileLocation& file);
  void Save();

  UiStatePtr prepared_;  ///< the current settings without what is meant for one job
};

/// The folder that the user chose last for this, else his documents folder, else the system's.
std::u16string ProposedFolder(const SettingsLibrary& library, LastFolder which);

}  // namespace heron::pages

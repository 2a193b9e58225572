// Dialog 2560: order, names, comments, removal, registering and export of saved settings.
//
// Every change is stored at once, on the library as it is then; name and comment when the user goes on to something
// else.
#pragma once

#include "pages/library_dialog.h"
#include "rules/dialogs.h"

namespace heron::pages {

class OrganizeDialog : public LibraryDialog {
 public:
  static constexpr uint16_t kNumber = dialog::kOrganizeSettings;
  explicit OrganizeDialog(SheetContext& sheet);

 protected:
  void OnInitialise() override;
  void OnButton(ControlId id) override;
  bool MayLeave(ControlId id, ControlId to) override;
  bool MayLeaveEntry() override { return StoreName() && StoreComment(); }
  void OnEntryShown(const LibraryEntry* entry) override;
  void OnRowMoved(ControlId id, int from, int to) override;

 private:
  bool StoreName();
  bool StoreComment();
  /// Shows the library as it is now; the settings of this file stay selected if they are still there.
  void ShowLibrary(const FileLocation& selected);
  void Move(LibraryDirection direction);
  void Remove();
  void Register();
  void Export();
  void Close();
};

}  // namespace heron::pages

// What the dialogs of the settings library have in common: the summary of one set of settings, tab by tab, its two
// pictures, and the list of saved settings with its search.
//
// A dialog opens the library when it starts and closes it when it ends. Another program may change it meanwhile; the
// list shows what is there after every change that the dialog makes.
#pragma once

#include <string>
#include <vector>

#include "engine/view.h"
#include "pages/logic_base.h"
#include "pages/sheet_context.h"
#include "pages/summary.h"
#include "presets/preset_library.h"

namespace heron::pages {

/// The numbers of one dialog's controls; 0 where it has none.
struct LibraryControls {
  ControlId tabs, rows, upper, lower;
  ControlId list = 0;
  ControlId find = 0;
  ControlId kind = 0;         ///< what the selected settings are: their file, or why they can't be changed
  ControlId differences = 0;  ///< check: only rows that differ from the current settings
};

class LibraryDialog : public LogicBase, public engine::EngineView {
 public:
  // EngineView: reports are shown over the dialog; the page behind it is shown anew when it closes.
  uint16_t ReadControl(uint16_t) override { return 0; }
  bool Show(const engine::Report& report) override;
  void EnableControl(uint16_t, bool) override {}
  bool PerPageRowSelected() const override { return false; }

 protected:
  LibraryDialog(SheetContext& sheet, const LibraryControls& controls) : sheet_(sheet), controls_(controls) {}

  void OnDestroy() override;
  void OnClicked(ControlId id) override;
  void OnRowSelected(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;

  /// A click on anything but the check of the differences.
  virtual void OnButton(ControlId) {}
  /// The user goes on to other settings. False: the present ones stay selected, and the user has been told.
  virtual bool MayLeaveEntry() { return true; }
  /// Settings are shown; null if there are none.
  virtual void OnEntryShown(const LibraryEntry*) {}
  virtual void OnText(ControlId) {}

  SheetContext& sheet() const { return sheet_; }
  SettingsLibrary& library() const { return *library_; }
  bool OpenLibrary(LibraryLoad load);

  /// Inserts the tabs and shows the first.
  void SetUpTabs();
  /// Shows these settings in list and pictures; null: nothing. They stay valid until the next call.
  void ShowSettings(UiState* settings);

  /// Fills the list with what the search finds and selects the settings with this file, else the first ones.
  void FillEntries(const FileLocation* selected);
  /// Place of the selected settings in the library, -1 without any.
  int SelectedPlace() const { return PlaceOfRow(row_); }
  LibraryEntry* SelectedEntry() const { return EntryOfRow(row_); }
  int PlaceOfRow(int row) const;
  /// Whether the list shows less than all.
  bool IsFiltered() const;

 private:
  LibraryEntry* EntryOfRow(int row) const;
  void ShowEntry();
  void ShowTab();
  bool Mentions(const LibraryEntry& entry, std::u16string_view wanted) const;
  std::u16string KindText(const LibraryEntry& entry) const;

  SheetContext& sheet_;
  LibraryControls controls_;
  SettingsLibraryPtr library_;
  UiState* shown_ = nullptr;
  std::vector<int> places_;  ///< of the rows of the list
  int row_ = platform::kNoRow;
};

}  // namespace heron::pages

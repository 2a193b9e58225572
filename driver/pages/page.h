// A page of the property sheet: what all pages have in common, from initialisation to destruction.
//
// A page is rebuilt when it comes to the front and isn't kept in step while it is hidden. What it shares with the other
// pages: the right-hand pane, the tail of Apply, the first-paint control, the help.
#pragma once

#include <functional>
#include <optional>

#include "pages/settings_view.h"
#include "presets/preset_entry.h"
#include "preview/painter.h"
#include "preview/status_view.h"
#include "uistate/keep_lists.h"

namespace heron::pages {

/// A row of the page table. 0: the page has no such control.
struct PageRow {
  uint16_t number;  ///< of the template, and ActiveDialogId while the page is in front
  uint16_t helpTopic;
  ControlId defaults;
  ControlId library;
  ControlId firstPaint;
};

// clang-format off
inline constexpr PageRow kDocumentPages[] = {
    // number  help  defaults  library  first paint
    {     100, 2002,      151,     170,         154},
    {     200, 2003,      237,     256,         239},
    {     300, 2004,      338,     347,         344},
    {     400, 2005,        0,     416,         415},
    {     500, 2006,      536,     531,         530},
    {     600, 2008,      615,     648,         636},
    {     700, 2009,      711,       0,         714},
    {     900, 2012,        0,       0,         934},
    {    1000, 2011,        0,       0,        1007},
};
inline constexpr PageRow kDevicePages[] = {
    {     800, 2010,      815,       0,         848},
};
// clang-format on

class Page : public SettingsView {
 public:
  void RepaintPictures() override;

 protected:
  Page(SheetContext& sheet, const PageRow& row, std::span<const ShownControl> controls)
      : SettingsView(sheet, row.number, controls), row_(row) {}

  void OnInitialise() override;
  void OnActivate() override;
  bool OnApply() override;
  void OnHelp(ControlId id) override { dialog().ShowHelp(row_.helpTopic, id); }
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;

  /// Before the defaults button restores the settings: what no control shows.
  virtual void ResetUnshown() {}
  /// After it: what came of it. Where it wasn't applied, everything is as before the button, ResetUnshown included.
  virtual void OnDefaultsRestored(const engine::ResolveOutcome&) {}
  void OnStored(ControlId) override { MarkChanged(); }

  /// Resolves a change of the control and informs the sheet. True if it was applied.
  bool Change(ControlId id);
  void MarkChanged();
  /// Reports that rows of the per-page list have come into conflict, if any has.
  void TellNewConflicts();

 private:
  /// The sheet hears of a change; the pictures are up to date.
  void TellChange();
  void RestoreDefaults();
  void OpenLibraryMenu();
  void RunLibraryDialog(uint16_t command);
  void Recall(const FileLocation& chosen);
  void ShowRecalled();
  void SelectView(ControlId id);
  void RepaintUpper();
  void RepaintLower();

  /// As last drawn; nothing before the first drawing.
  std::optional<preview::PaintedUpper> upper_;
  std::optional<preview::StatusPicture> lower_;
  std::optional<preview::Stack> device_;
  platform::RECT upper_place_{};
  PageRow row_;
};

/// The buttons and icon of the question in StoreSheet.
inline constexpr platform::DWORD kListsQuestion =
    platform::MB_YESNO | platform::MB_ICONEXCLAMATION | platform::MB_DEFBUTTON2;
/// Answers whether to go on without the lists that `question` names.
using AgreesTo = std::function<bool(const std::u16string& question)>;

/// Stores the lists of the committed settings and keeps the settings for the sheet's result. True if the lists are
/// stored, or the user agrees to do without: what he changed isn't dropped silently. He is asked once until he changes
/// something. False, with the result of before, if he doesn't or memory runs out.
bool StoreSheet(SheetContext& sheet, const AgreesTo& agrees);

/// The page of a row; null for one that there is no page for.
std::unique_ptr<platform::DialogLogic> MakePage(SheetContext& sheet, const PageRow& row);

}  // namespace heron::pages

// Pages without settings of their own: the version, and pages that aren't built yet.
#pragma once

#include "pages/page.h"

namespace heron::pages {

/// Shows the settings of the page and their values. None of them can be changed.
class UnbuiltPage : public Page {
 public:
  UnbuiltPage(SheetContext& sheet, const PageRow& row);

  void EnableControl(uint16_t, bool) override {}

 protected:
  void OnInitialise() override;
  void OnActivate() override;
};

class VersionPage : public Page {
 public:
  VersionPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, {}) {}

 protected:
  void OnInitialise() override;
  void OnActivate() override { SetActiveDialog(number()); }
  bool OnApply() override { return true; }
  void OnButton(ControlId) override {}
};

}  // namespace heron::pages

// Pages without settings of their own: the version, and pages that aren't built yet.
#pragma once

#include "pages/page.h"

namespace heron::pages {

/// Shows which settings will stand on the page, and how they stand. None of them can be used.
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

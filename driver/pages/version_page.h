// The page of the version, which has no settings.
#pragma once

#include "pages/page.h"

namespace heron::pages {

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

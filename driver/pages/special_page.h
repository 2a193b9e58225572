// Page 300: combination of two pages on one sheet, and image shift.
#pragma once

#include "pages/page.h"

namespace heron::pages {

class SpecialPage : public Page {
 public:
  SpecialPage(SheetContext& sheet, const PageRow& row);

 protected:
  void OnInitialise() override;
  void OnButton(ControlId id) override;
};

}  // namespace heron::pages

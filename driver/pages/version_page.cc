// The page of the version (version_page.h).

#include "pages/version_page.h"

#include "changes/reports.h"

namespace heron::pages {
void VersionPage::OnInitialise() {
  Page::OnInitialise();
  constexpr ControlId kProduct = 1001;
  constexpr ControlId kVersion = 1003;
  dialog().SetText(kProduct, engine::ModelCaption());
  dialog().SetText(kVersion, u"Version : 02.00.00.00");  // the notice lines 1004 and 1005 are empty and stay
}

}  // namespace heron::pages

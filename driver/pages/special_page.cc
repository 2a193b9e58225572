#include "pages/special_page.h"

#include "pages/image_shift_dialog.h"

namespace heron::pages {
namespace {

constexpr ControlId kShiftButton = 345;

enum Group : uint8_t { kCombination, kShift, kView };
constexpr ShownControl kControls[] = {
    {engine::ControlId(u"POD_OnePerSheet_Check"), kCombination},
    {engine::ControlId(u"lpPOD_OnePerSheet"), kCombination},
    {engine::ControlId(u"ImageShift_Check"), kShift},
    {engine::ControlId(u"previewMode.Paper"), kView},
    {engine::ControlId(u"previewMode.Machine"), kView},
};

}  // namespace

SpecialPage::SpecialPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

/// The switch of all that the page shows has no control. KeepSwitchesOn turned it on before the rules ran.
void SpecialPage::OnInitialise() {
  const ValueFields special = FieldsOf(*engine().ui, ParamNamed<u"POD_Check">());
  *special.value = *special.committed = 1;
  Page::OnInitialise();
}

void SpecialPage::OnButton(ControlId id) {
  if (id != kShiftButton) return Page::OnButton(id);
  ImageShiftDialog shift(sheet());
  if (RunOwned(ImageShiftDialog::kNumber, shift) != platform::IDOK) return;
  Rebuild();
  MarkChanged();
}

}  // namespace heron::pages

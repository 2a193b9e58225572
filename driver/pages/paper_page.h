// Page 100: orientation, papers and zoom, paper source, print type and layout, finishing, output method, copies.
//
// Most of its controls follow the common sequences of their kind; here is the rest: the paper lists with
// custom papers and print position, zoom and copies, the output methods with their dialogs, and the dialogs behind its
// buttons.
#pragma once

#include "pages/custom_size_dialog.h"
#include "pages/page.h"
#include "uistate/tray_media.h"

namespace heron::pages {

class PaperPage : public Page {
 public:
  PaperPage(SheetContext& sheet, const PageRow& row);

 protected:
  void OnInitialise() override;
  void OnActivate() override;
  bool OnDeactivate() override { return !Editable() || CheckZoom(); }
  void OnReset() override { closing_ = true; }
  void OnChanged(ControlId id) override;
  void OnNumber(ControlId id, uint16_t number) override;
  void OnButton(ControlId id) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;
  bool Offers(ControlId list, size_t item) override;
  std::u16string RowText(ControlId list, const ListItem& item) override;
  uint32_t RowPicture(ControlId list, size_t item) override;
  void OnGroupShown(uint8_t group) override;
  void ResetUnshown() override { ResetTrayMedia(ui()); }

 private:
  void ChoosePaper(ControlId list);
  void ChooseCustomPaper(ControlId list);
  bool AskPrintPosition();
  void WarnCustomPaperLimits();

  uint16_t Highest(ControlId field) const;
  void Clamp(ControlId field);
  bool CheckZoom();

  void ChooseLayout();
  void ChooseOutputMethod();
  bool RunMethodDialog(uint16_t method);
  void EditBindingMargin();
  void EditAuthentication();
  void EditPaperTypes();

  bool closing_ = false;  ///< the sheet was cancelled: the zoom is of no interest any more
};

}  // namespace heron::pages

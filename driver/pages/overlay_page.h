// Page 400: no overlay, a form to make, or a form of the list to print with.
//
// The fields name one form: the selected one, or the one to make. They are checked when the page is left.
#pragma once

#include <array>

#include "forms/form_list.h"
#include "pages/page.h"

namespace heron::pages {

class OverlayPage : public Page {
 public:
  OverlayPage(SheetContext& sheet, const PageRow& row);

 protected:
  void OnInitialise() override;
  void OnRowSelected(ControlId id) override;
  void OnHeadingClicked(ControlId id, int column) override;
  void OnTextChanged(ControlId id) override;
  void OnChanged(ControlId id) override;
  void OnButton(ControlId id) override;
  bool OnDeactivate() override;

 private:
  bool Makes() const;
  bool Prints() const;
  OverlayStore& store() const { return *ui().stores.overlays; }
  FormName Named() const;
  void ShowName(const FormName& name);

  void TakeLeftName();
  void FillList(std::optional<size_t> selected);
  void SelectForm(size_t place);
  void Browse();
  void AddToList(const std::u16string& path);
  void DeleteForm();
  bool LeaveMaking();
  bool LeavePrinting();
  bool RefuseName(TextNumber text, TextNumber caption, const FormName& name);
  int Ask(TextNumber text, TextNumber caption, const std::u16string& path);

  std::vector<FormRow> rows_;        ///< of the list view, in its order
  std::array<bool, 4> ascending_{};  ///< of the last sort by each column
  std::u16string chosen_;            ///< the file to make, once the user has agreed to it
};

}  // namespace heron::pages

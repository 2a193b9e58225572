// Page 900: output to fax or printer, recipients, cover sheet.
//
// The recipients are edited in rows of the page's own; the settings take them on Apply, their number at once, since the
// rules of the cover sheet follow it. A change of the output isn't tried as other changes are (changes/fax_mode.h).
#pragma once

#include <array>
#include <memory>

#include "pages/page.h"
#include "pages/recipient_list.h"

namespace heron::pages {

class FaxPage : public Page {
 public:
  FaxPage(SheetContext& sheet, const PageRow& row);

  void EnableControl(uint16_t id, bool available) override;

 protected:
  void OnInitialise() override;
  void OnActivate() override;
  bool OnApply() override;
  void OnChanged(ControlId id) override;
  void OnStored(ControlId id) override;
  void OnButton(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnHeadingClicked(ControlId id, int column) override;
  bool OnListKey(ControlId id, platform::ListKey key) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;

 private:
  enum class Cause : uint8_t { kShown, kEdited };

  void ChangeOutput();
  /// Brings the controls and the cover sheet in line with settings and rows; shows no notice where nothing was edited.
  void Refresh(Cause cause);
  void EnableControls();
  void ShowRows(int selected);
  void Changed();

  void Add();
  void TellRefusal(Added why, const std::u16string& number);
  void AddLines(const std::u16string& text);
  void Remove();
  void OpenDetails();
  void OpenCover();
  void OpenPhoneBook();

  std::unique_ptr<RecipientTable> rows_;
  std::array<bool, kRecipientFields> ascending_{};
};

}  // namespace heron::pages

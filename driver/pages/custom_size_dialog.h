// Dialog 2200: names, sizes and units of the ten custom papers. Works on a copy of the settings.
#pragma once

#include "pages/custom_papers.h"
#include "pages/sheet_context.h"
#include "rules/dialogs.h"

namespace heron::pages {

/// Whose custom paper is edited: the output's or the document's.
enum class PaperTarget : uint8_t { kOutput = 0, kOriginal = 1 };

class CustomSizeDialog : public LogicBase {
 public:
  static constexpr uint16_t kNumber = dialog::kCustomSize;

  CustomSizeDialog(SheetContext& sheet, PaperTarget target) : sheet_(sheet), target_(target) {}

 protected:
  void OnInitialise() override;
  void OnClicked(ControlId id) override;
  void OnRowSelected(ControlId id) override;
  void OnTextChanged(ControlId id) override;
  void OnPositionChanged(ControlId id) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  bool MayLeave(ControlId id, ControlId to) override;

 private:
  /// Width or length: its controls, and its shown value with the limits of the paper source.
  struct Side {
    ControlId field, spin, range;
    uint32_t CustomPaperEntry::*size;
    uint32_t value = 0;
    uint32_t minimum = 0, maximum = 0;
  };

  UiState& ui() const { return *sheet_.engine().ui; }
  uint16_t& Number() const;  ///< of the target's entry, 1 to 10
  CustomPaperEntry& Entry() const;
  int Unit() const;
  Side* SideOf(ControlId control);

  void LoadEntry();
  void ShowEntry();
  void ShowSide(const Side& side);
  void ShowList();
  void Lock();
  bool CanWritePrinterData() const;
  void SetSize(Side& side, uint32_t value);
  void ChangeUnit(int unit);
  void StoreName();

  bool CheckSize(Side& side);
  bool CheckName();
  void Confirm();

  SheetContext& sheet_;
  PaperTarget target_;
  Side width_{2204, 2205, 2211, &CustomPaperEntry::width};
  Side length_{2207, 2208, 2210, &CustomPaperEntry::height};
};

}  // namespace heron::pages

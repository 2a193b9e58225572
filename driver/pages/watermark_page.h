// Page 500: the watermark in use, how it is laid over the page, and the numbering of copies.
#pragma once

#include "pages/page.h"

namespace heron::pages {

class WatermarkPage : public Page {
 public:
  WatermarkPage(SheetContext& sheet, const PageRow& row);

  void RepaintPictures() override;

 protected:
  void OnInitialise() override;
  void OnRowSelected(ControlId id) override;
  void OnNumber(ControlId id, uint16_t number) override;
  void OnButton(ControlId id) override;
  void OnGroupShown(uint8_t group) override;
  void OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) override;
  bool AcceptsKey(ControlId id, const platform::TypedKey& key) override;
  void ResetUnshown() override;
  void OnDefaultsRestored(const engine::ResolveOutcome& outcome) override;

 private:
  void FillList();
  void OpenEditor();

  std::vector<platform::FontFamily> families_;  ///< installed while the page is open
};

}  // namespace heron::pages

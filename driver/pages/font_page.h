// Page 700: whether printer fonts are used, and which of them stands for which TrueType font of this computer.
//
// The page stays outside of the rules: it stores its two settings itself. The rows are the page's until Apply, which
// writes them to the list store: pairs of fonts that aren't installed any more are dropped then.
#pragma once

#include <vector>

#include "pages/font_rows.h"
#include "pages/page.h"

namespace heron::pages {

class FontPage : public Page {
 public:
  FontPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, {}) {}

 protected:
  void OnInitialise() override;
  void OnActivate() override;
  bool OnApply() override;
  void OnButton(ControlId id) override;
  void OnRowSelected(ControlId id) override;

 private:
  FontSubstStore* Store() const { return ui().stores.fontSubst.get(); }
  size_t Current() const;

  void FillFormats();
  void FillFonts(std::span<const FontPair> pairs);
  void ShowFonts();
  void ShowCurrent();
  void EnableParts();

  void UseFonts(bool uses);
  void SelectFont();
  void ReplaceFont();
  void ChooseFormat();
  void RestoreAll();

  std::vector<std::u16string> names_;         ///< of the fonts of this computer
  std::vector<std::u16string> printerFonts_;  ///< as the list offers them, behind "not replaced"
  std::vector<FontRow> rows_;
  std::vector<uint16_t> formats_;  ///< values of the download formats, in their order
};

}  // namespace heron::pages

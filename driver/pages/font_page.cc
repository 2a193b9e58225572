#include "pages/font_page.h"

#include <algorithm>

#include "engine/setting.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "uistate/list_stores_seed.h"

namespace heron::pages {

using engine::IsOn;
using engine::Setting;
using platform::kNoRow;

namespace {

constexpr ControlId kUses = engine::ControlId(u"FontUseFlg"), kFonts = 705, kPrinterFont = 709, kTrueType = 710;
constexpr ControlId kFormat = engine::ControlId(u"lpDLFontFormat"), kDefaults = 711, kFormatLabel = 712;
constexpr ControlId kFirstFontControl = 702, kLastFontControl = 710;

bool PrintsPictures(const UiState& ui) {
  return Setting<u"lpGraphicsMode">(ui) == value::lpGraphicsMode::kRaster;
}

std::u16string RowLine(const FontRow& row) {
  const std::u16string not_replaced = TextOf(text::kFontNotReplaced);
  const std::u16string_view printer = row.printerFont.empty() ? std::u16string_view(not_replaced) : row.printerFont;
  return platform::ExpandText(u"%s\t%s", {std::u16string_view(row.trueType), printer});
}

}  // namespace

// -- life

void FontPage::OnInitialise() {
  Page::OnInitialise();
  if (Store() == nullptr) return;
  FillFormats();
  std::vector<std::u16string> names;
  for (platform::FontFamily& family : dialog().FontFamilies()) names.push_back(std::move(family.name));
  names_ = ListedFonts(std::move(names));
  printerFonts_ = PrinterFonts();
  std::vector<platform::ListRow> offered = {{.text = TextOf(text::kFontNotReplaced), .cells = {}}};
  for (const std::u16string& font : printerFonts_) offered.push_back({.text = font, .cells = {}});
  dialog().SetRows(kPrinterFont, offered);
  FillFonts(PairsOf(*Store()));
  EnableParts();
}

void FontPage::OnActivate() {
  Page::OnActivate();
  if (Store() != nullptr) EnableParts();
}

bool FontPage::OnApply() {
  if (Store() != nullptr && Editable()) StorePairs(*Store(), rows_);
  return Page::OnApply();
}

// -- showing

void FontPage::FillFormats() {
  ListBlock& block = SlotAs<u"lpDLFontFormat", ListBlock>(ui());
  std::vector<platform::ListRow> rows;
  formats_.clear();
  for (const ListItem& item : block.Items()) {
    const std::u16string_view label(item.label, kLabelLength);
    rows.push_back({.text = std::u16string(label.substr(0, label.find(u'\0'))), .cells = {}});
    formats_.push_back(item.value);
  }
  dialog().SetRows(kFormat, rows);
  const auto format = std::ranges::find(formats_, block.value);
  dialog().SelectRow(kFormat, format == formats_.end() ? kNoRow : static_cast<int>(format - formats_.begin()));
}

void FontPage::FillFonts(std::span<const FontPair> pairs) {
  rows_ = RowsOfFonts(names_, pairs);
  ShowFonts();
}

void FontPage::ShowFonts() {
  std::vector<platform::ListRow> rows;
  rows.reserve(rows_.size());
  for (const FontRow& row : rows_) rows.push_back({.text = RowLine(row), .cells = {}});
  dialog().SetRows(kFonts, rows);
}

/// The row that the store remembers; beyond all rows if it has none of that number.
size_t FontPage::Current() const {
  return Store()->index;
}

void FontPage::ShowCurrent() {
  if (Current() >= rows_.size()) return;
  const FontRow& row = rows_[Current()];
  dialog().SelectRow(kFonts, static_cast<int>(Current()));
  dialog().SetText(kTrueType, row.trueType);
  const auto font = std::ranges::find(printerFonts_, row.printerFont);
  const auto place = font == printerFonts_.end() ? 0 : font - printerFonts_.begin() + 1;
  dialog().SelectRow(kPrinterFont, static_cast<int>(place));
}

/// Pages that are sent as pictures have no fonts: the setting stays, and shows as off.
void FontPage::EnableParts() {
  const bool pictures = PrintsPictures(ui());
  const bool uses = !pictures && IsOn<u"FontUseFlg">(ui());
  EnableControl(kUses, !pictures);
  for (const ControlId id : {kFormatLabel, kFormat}) EnableControl(id, !pictures);
  for (ControlId id = kFirstFontControl; id <= kLastFontControl; ++id) EnableControl(id, uses);
  dialog().SetChecked(kUses, uses);
  if (uses) return ShowCurrent();
  dialog().SelectRow(kFonts, kNoRow);
}

// -- changes

void FontPage::OnButton(ControlId id) {
  if (Store() == nullptr || !Editable()) return;
  if (id == kUses) UseFonts(dialog().IsChecked(kUses));
  if (id == kDefaults) RestoreAll();
}

void FontPage::UseFonts(bool uses) {
  Setting<u"FontUseFlg">(ui()) = uses ? value::FontUseFlg::kOn : value::FontUseFlg::kOff;
  EnableParts();
  MarkChanged();
}

void FontPage::OnRowSelected(ControlId id) {
  SetActiveDialog(number());
  if (Store() == nullptr) return;
  if (id == kFonts) SelectFont();
  if (id == kPrinterFont) ReplaceFont();
  if (id == kFormat) ChooseFormat();
}

void FontPage::SelectFont() {
  const int row = dialog().SelectedRow(kFonts);
  if (row < 0 || static_cast<size_t>(row) >= rows_.size()) return;
  Store()->index = static_cast<uint16_t>(row);
  ShowCurrent();
  MarkChanged();
}

void FontPage::ReplaceFont() {
  const int chosen = dialog().SelectedRow(kPrinterFont);
  if (chosen < 0 || static_cast<size_t>(chosen) > printerFonts_.size() || Current() >= rows_.size()) return;
  const auto font = static_cast<size_t>(chosen);
  rows_[Current()].printerFont = font == 0 ? std::u16string() : printerFonts_[font - 1];
  ShowFonts();
  ShowCurrent();
  MarkChanged();
}

void FontPage::ChooseFormat() {
  const int row = dialog().SelectedRow(kFormat);
  if (row < 0 || static_cast<size_t>(row) >= formats_.size()) return;
  Setting<u"lpDLFontFormat">(ui()) = formats_[static_cast<size_t>(row)];
  EnableParts();
  MarkChanged();
}

/// The fonts of this computer that the default table names get its printer fonts, all others none.
void FontPage::RestoreAll() {
  for (const uint16_t param : {ParamNamed<u"FontUseFlg">(), ParamNamed<u"lpDLFontFormat">()}) {
    const ValueFields fields = FieldsOf(ui(), param);
    *fields.value = *fields.defaultValue;
  }
  FillFormats();
  FillFonts(DefaultFontPairs());
  EnableParts();
  MarkChanged();
}

}  // namespace heron::pages

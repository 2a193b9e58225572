#include "pages/page_row_dialogs.h"

#include "catalog/strings.h"
#include "changes/reports.h"
#include "engine/page_list.h"
#include "generated/texts.h"
#include "pages/dialog_pictures.h"
#include "pages/page_text.h"

namespace heron::pages {

using engine::PageTextError;
using engine::PageTextField;
using engine::PerPageRowCheck;
using engine::Setting;
using platform::kCancelButton;
using platform::kOkButton;

namespace {

constexpr ControlId kFrame = 2401, kPages = 2403, kFrontPicture = 2431, kBackPicture = 2432, kHelp = 2433;
constexpr ControlId kType = engine::ControlId(u"lpInterSheetListPRNType");
constexpr ControlId kTray = engine::ControlId(u"lpInterSheetListTray");
constexpr uint32_t kHelpTopic = 3108;
constexpr ShownControl kControls[] = {{kType}, {kTray}};

constexpr ControlId kHeading = 2441, kName = 2443;

/// "Per-page list: " with the name of the working list.
std::u16string ListTitle(const UiState& ui) {
  const PageList* list = ListNumbered(ui, engine::WorkingList(ui));
  return TextOf(text::kPerPageListPrefix) + (list == nullptr ? std::u16string() : NameOfList(*list));
}

}  // namespace

// -- a row

PageRowDialog::PageRowDialog(SheetContext& sheet, RowNumber row, uint8_t repaired)
    : SettingsView(sheet, kNumber, kControls), row_(row), repaired_(repaired) {}

void PageRowDialog::OnInitialise() {
  SettingsView::OnInitialise();
  dialog().SetTextLimit(kPages, kRowTextLength);
  dialog().SetText(kFrame, ListTitle(ui()));
  if (row_) dialog().SetText(kPages, PagesOfRow(WorkingRows(ui())[*row_]));
  EvaluateAndApply();
}

void PageRowDialog::OnChanged(ControlId id) {
  Store(id);
  const auto chosen = id == kTray ? PerPageRowCheck::kTray : PerPageRowCheck::kType;
  if (id == kTray) repaired_ = static_cast<uint8_t>(repaired_ | RepairRow(engine()));
  repaired_ = static_cast<uint8_t>(repaired_ & ~chosen);
  ShowAll();
  EvaluateAndApply();
  for (const ControlId picture : {kFrontPicture, kBackPicture}) dialog().Repaint(picture);
}

void PageRowDialog::OnButton(ControlId id) {
  if (id == kHelp) OnHelp(0);
  if (id == kCancelButton) dialog().End(id);
  if (id == kOkButton && Validate(Check::kConfirming)) dialog().End(id);
}

void PageRowDialog::OnHelp(ControlId id) {
  dialog().ShowHelp(kHelpTopic, id);
}

void PageRowDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  const uint16_t type = Setting<u"lpInterSheetListPRNType">(ui());
  if (id == kFrontPicture) DrawRowSide(type, SheetSide::kFront, canvas, place);
  if (id == kBackPicture) DrawRowSide(type, SheetSide::kBack, canvas, place);
}

bool PageRowDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  return id != kPages || AcceptsPageKey(key, kRowTextLength);
}

bool PageRowDialog::MayLeave(ControlId id, ControlId to) {
  return id != kPages || to == kCancelButton || to == 0 || Validate(Check::kLeaving);
}

/// An empty field and pages of other rows are refused by OK alone.
bool PageRowDialog::Validate(Check check) {
  const std::u16string text = dialog().Text(kPages).substr(0, kRowTextLength);
  const bool confirms = check == Check::kConfirming;
  RowPages checked = CheckRowPages(ui(), text, row_, Setting<u"lpInterSheetListPRNType">(ui()));
  if (text.empty() && confirms) checked.error = PageTextError::kCharacter;
  if (checked.error != PageTextError::kNone) {
    dialog().Beep();
    return Refuse(kPages, engine::PageTextErrorText(checked.error, PageTextField::kRow),
                  TextOf(text::kPerPageSettings));
  }
  if (confirms && !checked.repeated.empty())
    return Refuse(kPages, engine::DuplicatePagesText(checked.repeated), TextOf(text::kPerPageSettings));
  pages_ = std::move(checked.text);
  return true;
}

// -- the list's name

void ListNameDialog::OnInitialise() {
  const UiState& ui = sheet_.ui();
  dialog().SetText(kHeading, ListTitle(ui));
  dialog().SetTextLimit(kName, kListNameLength);
  if (const PageList* list = ListNumbered(ui, engine::WorkingList(ui))) dialog().SetText(kName, NameOfList(*list));
  dialog().Focus(kName);
  dialog().SelectText(kName, 0, std::u16string::npos);
}

void ListNameDialog::OnClicked(ControlId id) {
  if (id == kCancelButton || (id == kOkButton && Confirm())) dialog().End(id);
}

bool ListNameDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  const size_t start = std::min(key.selection_start, key.selection_end);
  return id != kName || key.character != u' ' || start > 0;
}

bool ListNameDialog::Confirm() {
  const uint16_t number = engine::WorkingList(sheet_.ui());
  const std::u16string name = dialog().Text(kName);
  const NameFault fault = FindNameFault(sheet_.ui(), number, name);
  if (fault == NameFault::kNone) {
    RenameList(sheet_.ui(), number, name);
    return true;
  }
  const auto reason = fault == NameFault::kTaken ? text::kListNameTaken : text::kEnterListName;
  return Refuse(kName, TextOf(reason), TextOf(text::kListName));
}

}  // namespace heron::pages

#include "pages/cover_parts_dialogs.h"

#include <algorithm>
#include <memory>

#include "generated/texts.h"
#include "generated/values.h"
#include "pages/cover_preview.h"
#include "pages/recipient_list.h"

namespace heron::pages {
namespace {

using engine::Setting;
using platform::kCancelButton;
using platform::kOkButton;
using platform::PointerAction;

using CoverField = char16_t[41];
constexpr size_t kFieldLength = 40;

/// A field with the text of the store that it shows.
struct StoreField {
  ControlId field;
  CoverField FaxCoverStore::*text;
};
constexpr StoreField kSenderFields[] = {{1239, &FaxCoverStore::senderCompany1}, {1240, &FaxCoverStore::senderCompany2},
                                        {1243, &FaxCoverStore::senderName},     {1241, &FaxCoverStore::senderTelnum},
                                        {1242, &FaxCoverStore::senderFaxnum},   {1244, &FaxCoverStore::senderEmail}};
constexpr StoreField kReceiptFields[] = {{1294, &FaxCoverStore::receiptCompany1},
                                         {1296, &FaxCoverStore::receiptCompany2},
                                         {1298, &FaxCoverStore::receiptName},
                                         {1207, &FaxCoverStore::receiptFaxnum}};
constexpr ControlId kRecipientLabels[] = {1293, 1295, 1297, 1299};
constexpr ControlId kTakeFirst = 1208;
constexpr ControlId kAllOnOne = 1290, kOneEach = 1291, kTyped = 1292;
constexpr ControlId kLargePreview = 1246, kXText = 1834, kYText = 1836;

enum Group : uint8_t { kKinds };
constexpr ShownControl kRecipientControls[] = {
    {.id = kAllOnOne, .group = kKinds, .param = ParamNamed<u"lpFaxCover_ReceivePersonal">(), .value = 0},
    {.id = kOneEach, .group = kKinds, .param = ParamNamed<u"lpFaxCover_ReceivePersonal">(), .value = 1},
    {.id = kTyped, .group = kKinds, .param = ParamNamed<u"lpFaxCover_ReceivePersonal">(), .value = 2},
};

void Put(CoverField& field, std::u16string_view text) {
  std::ranges::fill(field, u'\0');
  text.substr(0, kFieldLength).copy(field, kFieldLength);
}

void ShowFields(platform::Dialog& dialog, const UiState& ui, std::span<const StoreField> fields) {
  for (const StoreField& row : fields) {
    dialog.SetTextLimit(row.field, kFieldLength);
    dialog.SetText(row.field, CoverText((*ui.stores.faxCover).*row.text));
  }
}

void StoreFields(const platform::Dialog& dialog, const UiState& ui, std::span<const StoreField> fields) {
  for (const StoreField& row : fields) Put((*ui.stores.faxCover).*row.text, dialog.Text(row.field));
}

}  // namespace

bool TakeCoverPointer(const UiState& ui, platform::Dialog& dialog, ControlId id, const platform::PointerEvent& event) {
  const platform::RECT sheet = CoverSheetIn(ui, dialog.PlaceArea(id));
  const bool inside =
      event.at.x >= sheet.left && event.at.x < sheet.right && event.at.y >= sheet.top && event.at.y < sheet.bottom;
  const bool shown = Setting<u"FaxCover_Image">(ui) == 1;
  const bool drags = shown && event.held && event.action != PointerAction::kRelease;
  dialog.SetCursor(id, drags && inside   ? platform::kDragCursor
                       : shown && inside ? platform::kAimCursor
                                         : platform::kArrowCursor);
  if (!drags || (event.action == PointerAction::kPress && !inside)) return false;
  DragCoverPicture(ui, sheet, event.at);
  return true;
}

// -- sender

void SenderDialog::OnInitialise() {
  ShowFields(dialog(), ui_, kSenderFields);
}

void SenderDialog::OnClicked(ControlId id) {
  if (id != kOkButton && id != kCancelButton) return;
  if (id == kOkButton) StoreFields(dialog(), ui_, kSenderFields);
  dialog().End(id);
}

// -- position

void PositionDialog::ShowPosition() {
  dialog().SetText(kXText, NumberText(CoverPercent(ui_.stores.faxCover->xPosition)));
  dialog().SetText(kYText, NumberText(CoverPercent(ui_.stores.faxCover->yPosition)));
}

void PositionDialog::OnClicked(ControlId id) {
  if (id == kOkButton || id == kCancelButton) dialog().End(id);
}

void PositionDialog::OnPointer(ControlId id, const platform::PointerEvent& event) {
  if (id != kLargePreview || !TakeCoverPointer(ui_, dialog(), kLargePreview, event)) return;
  ShowPosition();
  dialog().Repaint(kLargePreview);
}

void PositionDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id == kLargePreview) DrawCoverPreview(ui_, canvas, place);
}

// -- recipient

CoverRecipientDialog::CoverRecipientDialog(SheetContext& sheet)
    : SettingsView(sheet, dialog::kCoverRecipient, kRecipientControls) {}

void CoverRecipientDialog::OnInitialise() {
  const UiState& settings = *engine().ui;
  namespace personal = value::lpFaxCover_ReceivePersonal;
  const uint16_t count = settings.head().faxRowCount;
  const bool detailed = Setting<u"lpFaxCover_ReceiveSetup">(settings) == value::lpFaxCover_ReceiveSetup::kDetailed;
  uint16_t& kind = Setting<u"lpFaxCover_ReceivePersonal">(settings);
  const auto tell = [this](CoverNotice notice) {
    Tell(CoverNoticeText(notice), CoverCaption(), platform::MB_OK | platform::MB_ICONINFORMATION);
  };
  if (count == 0 && kind == personal::kTyped && detailed) {
    tell(CoverNotice::kNoneToName);
    kind = personal::kAllOnOneSheet;
  }
  if (count > kMostDetailed && kind != personal::kTyped && detailed) {
    tell(CoverNotice::kTooMany);
    kind = personal::kTyped;
  }
  SettingsView::OnInitialise();
  ShowFields(dialog(), settings, kReceiptFields);
  dialog().Enable(kAllOnOne, count <= kMostDetailed);
  dialog().Enable(kOneEach, count <= kMostDetailed);
  dialog().Enable(kTyped, count > 0);
  EnableFields();
}

void CoverRecipientDialog::EnableFields() {
  const bool typed = Setting<u"lpFaxCover_ReceivePersonal">(ui()) == value::lpFaxCover_ReceivePersonal::kTyped;
  for (const StoreField& row : kReceiptFields) dialog().Enable(row.field, typed);
  for (const ControlId id : kRecipientLabels) dialog().Enable(id, typed);
  dialog().Enable(kTakeFirst, typed && ui().head().faxRowCount > 0);
}

void CoverRecipientDialog::TakeFirst() {
  const bool filled =
      std::ranges::any_of(kReceiptFields, [this](const StoreField& row) { return !dialog().Text(row.field).empty(); });
  constexpr platform::DWORD kQuestion = platform::MB_YESNO | platform::MB_ICONQUESTION;
  if (filled &&
      Tell(TextOf(text::kAskToTakeFirstRecipient), TextOf(text::kFirstRecipientCaption), kQuestion) != platform::IDYES)
    return;
  const auto table = std::make_unique<RecipientTable>();
  LoadRecipients(ui(), table.get());
  const RecipientRow& first = table->rows[0];
  const auto show = [this](ControlId field, std::u16string text) {
    dialog().SetText(field, std::u16string_view(text).substr(0, kFieldLength));
  };
  show(1294, CellText(first, RecipientField::kCompany));
  show(1296, CellText(first, RecipientField::kDepartment));
  show(1298, CellText(first, RecipientField::kName));
  show(1207, CellText(first, RecipientField::kNumber));
}

void CoverRecipientDialog::OnButton(ControlId id) {
  if (id == kTakeFirst) return TakeFirst();
  if (id != kOkButton && id != kCancelButton) return;
  if (id == kOkButton) StoreFields(dialog(), ui(), kReceiptFields);
  dialog().End(id);
}

}  // namespace heron::pages

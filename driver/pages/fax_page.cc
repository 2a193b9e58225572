#include "pages/fax_page.h"

#include <algorithm>

#include "catalog/strings.h"
#include "changes/fax_mode.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "pages/cover_dialog.h"
#include "pages/fax_details_dialog.h"
#include "pages/phone_book.h"
#include "platform/api/text.h"
#include "uistate/tray_media.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using engine::Setting;
using platform::ListRow;

constexpr ControlId kFax = engine::ControlId(u"lpOutput.Fax"), kPrinter = engine::ControlId(u"lpOutput.Printer");
constexpr ControlId kTransmission = 904, kQualityLabel = 905, kQuality = 906, kDetails = 907;
constexpr ControlId kCoverGroup = 908, kCoverCheck = 909, kCoverButton = 910;
constexpr ControlId kNewGroup = 911, kNewHint = 912, kNameLabel = 913, kName = 914, kNumberLabel = 915, kNumber = 916;
constexpr ControlId kEcm = 917, kOverseas = 918, kAdd = 919, kV34 = 928;
constexpr ControlId kListGroup = 920, kPhoneBook = 921, kListLabel = 922, kList = 923, kDelete = 924;
constexpr ControlId kCountLabel = 926, kCount = 927;
constexpr ControlId kOutputPicture = 925, kCoverPicture = 933, kListPicture = 2370, kBookPicture = 2371;

enum Group : uint8_t { kOutputGroup, kQualityGroup, kSwitches };
constexpr ShownControl kControls[] = {
    {kFax, kOutputGroup},
    {kPrinter, kOutputGroup},
    {.id = kQuality, .group = kQualityGroup, .param = ParamNamed<u"lpQuality">()},
    {.id = kCoverCheck, .group = kSwitches, .param = ParamNamed<u"CoverSheet">()},
    {.id = kEcm, .group = kSwitches, .param = ParamNamed<u"EcmTab">()},
    {.id = kOverseas, .group = kSwitches, .param = ParamNamed<u"IntlComTab">()},
    {.id = kV34, .group = kSwitches, .param = ParamNamed<u"FaxV34_CheckTab">()},
};

/// What only a fax uses.
constexpr ControlId kFaxControls[] = {kTransmission, kQualityLabel, kQuality,   kDetails,   kCoverGroup,  kCoverCheck,
                                      kNewGroup,     kNewHint,      kNameLabel, kName,      kNumberLabel, kNumber,
                                      kEcm,          kOverseas,     kListGroup, kPhoneBook, kListLabel,   kList,
                                      kCountLabel,   kCount,        kV34};
/// What enters recipients.
constexpr ControlId kRecipientControls[] = {kNewGroup,  kNewHint,  kNameLabel, kName,          kNumberLabel, kNumber,
                                            kEcm,       kOverseas, kV34,       kAdd,           kListGroup,   kPhoneBook,
                                            kListLabel, kList,     kDelete,    kOutputPicture, kCoverPicture};

/// Text of a message box without a choice.
constexpr platform::DWORD kWarning = platform::MB_OK | platform::MB_ICONEXCLAMATION;
constexpr platform::DWORD kInformation = platform::MB_OK | platform::MB_ICONINFORMATION;

bool IsFax(const UiState& ui) {
  return Setting<u"lpOutput">(ui) == value::lpOutput::kFax;
}

bool HasFaxUnit(const UiState& ui) {
  return Setting<u"lpFAXUnit">(ui) != value::lpFAXUnit::kNotInstalled;
}

/// Why pasted lines weren't added, one line each.
std::u16string RefusedText(const std::vector<RefusedLine>& refused) {
  constexpr size_t kMostNamed = 10;
  std::u16string lines;
  for (size_t i = 0; i < std::min(refused.size(), kMostNamed); ++i) {
    const RefusedLine& line = refused[i];
    const std::u16string why =
        line.why == Added::kFull ? TextOf(text::kRecipientListFull)
        : line.why == Added::kRepeated
            ? platform::ExpandText(GetUiString(text::kRecipientRepeated), {std::u16string_view(line.number)})
            : line.number + u": " + TextOf(text::kBadCharacter);
    lines += platform::ExpandText(u"%d. %s\n", {static_cast<int64_t>(line.line), std::u16string_view(why)});
  }
  return refused.size() > kMostNamed ? lines + u"..." : lines;
}

}  // namespace

FaxPage::FaxPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

/// Whether there is a fax unit isn't a rule's matter: the radio stays off without.
void FaxPage::EnableControl(uint16_t id, bool available) {
  Page::EnableControl(id, available && (id != kFax || HasFaxUnit(ui())));
}

void FaxPage::OnInitialise() {
  rows_ = std::make_unique<RecipientTable>();
  const UiState& settings = sheet().ui();
  LoadRecipients(settings, rows_.get());
  if (!HasFaxUnit(settings) && IsFax(settings)) Setting<u"lpOutput">(settings) = value::lpOutput::kPrinter;
  Page::OnInitialise();
  dialog().SetTextLimit(kName, kTypedName);
  dialog().SetTextLimit(kNumber, kTypedNumber);
  ShowRows(platform::kNoRow);
  Refresh(Cause::kShown);
  if (!Editable()) DisableAll();
}

void FaxPage::OnActivate() {
  Page::OnActivate();
  if (Editable()) Refresh(Cause::kShown);
}

bool FaxPage::OnApply() {
  StoreRecipients(ui(), *rows_, sheet().resources.get());
  const bool applied = Page::OnApply();
  if (Editable()) Refresh(Cause::kShown);  // the commit may have gone back to the printer
  return applied;
}

void FaxPage::OnChanged(ControlId id) {
  if (id != kFax && id != kPrinter) return Page::OnChanged(id);
  Store(id);
  ChangeOutput();
  MarkChanged();
}

void FaxPage::ChangeOutput() {
  if (!engine::ChangeOutputMode(engine(), this)) return ShowAll();
  ShowAll();
  Refresh(Cause::kEdited);
}

void FaxPage::OnStored(ControlId id) {
  if (id == kV34 && IsOn<u"FaxV34_CheckTab">(ui())) {
    Setting<u"EcmTab">(ui()) = 1;
    dialog().SetChecked(kEcm, true);
  }
  Changed();
}

void FaxPage::Changed() {
  Refresh(Cause::kEdited);
  MarkChanged();
}

void FaxPage::OnButton(ControlId id) {
  switch (id) {
    case kDetails:
      return OpenDetails();
    case kCoverButton:
      return OpenCover();
    case kAdd:
      return Add();
    case kPhoneBook:
      return OpenPhoneBook();
    case kDelete:
      return Remove();
    default:
      return Page::OnButton(id);
  }
}

void FaxPage::OnTextChanged(ControlId id) {
  Page::OnTextChanged(id);
  if (id == kName || id == kNumber) Changed();
}

void FaxPage::Refresh(Cause cause) {
  UiState& settings = ui();
  if (cause == Cause::kShown && IsFax(settings)) engine::ResetForFax(engine());
  if (cause == Cause::kShown) LoadAllTrayMirrors(settings);
  settings.head().faxRowCount = static_cast<uint16_t>(rows_->count);
  EnableControls();
  for (const CoverNotice notice : AlignCover(settings)) Tell(CoverNoticeText(notice), CoverCaption(), kInformation);
  engine::EvaluateRules(engine(), this);
  for (const ControlId place : {kOutputPicture, kCoverPicture, kListPicture, kBookPicture}) dialog().Repaint(place);
}

void FaxPage::EnableControls() {
  const UiState& settings = ui();
  const bool fax = IsFax(settings) && Editable();
  for (const ControlId id : kFaxControls) dialog().Enable(id, fax);
  dialog().Enable(kFax, Editable() && HasFaxUnit(settings));
  dialog().Enable(kPrinter, Editable());
  dialog().Enable(kCoverButton, fax && IsOn<u"CoverSheet">(settings));
  dialog().Enable(kAdd, fax && !dialog().Text(kNumber).empty());
  dialog().Enable(kDelete, fax && rows_->count > 0);
  dialog().Enable(kEcm, fax && !IsOn<u"FaxV34_CheckTab">(settings));
  if (settings.head().printerDataLocked != 0 || !fax) return;
  for (const ControlId id : kRecipientControls) dialog().Enable(id, false);
}

void FaxPage::ShowRows(int selected) {
  std::vector<ListRow> rows;
  for (uint32_t i = 0; i < rows_->count; ++i) {
    ListRow row;
    row.text = CellText(rows_->rows[i], RecipientField::kName);
    for (size_t field = 1; field < kRecipientFields; ++field)
      row.cells.push_back(CellText(rows_->rows[i], static_cast<RecipientField>(field)));
    rows.push_back(std::move(row));
  }
  dialog().SetRows(kList, rows);
  dialog().SelectRow(kList, selected);
  dialog().SetText(kCount, platform::ExpandText(u"%d/100", {int64_t{rows_->count}}));
}

void FaxPage::Add() {
  const NewRecipient recipient{.name = dialog().Text(kName),
                               .number = dialog().Text(kNumber),
                               .company = {},
                               .department = {},
                               .ecm = dialog().IsChecked(kEcm),
                               .overseas = dialog().IsChecked(kOverseas),
                               .v34 = dialog().IsChecked(kV34)};
  const Added result = AddRecipient(*rows_, recipient);
  if (result != Added::kDone) return TellRefusal(result, recipient.number);
  ShowRows(static_cast<int>(rows_->count) - 1);
  Changed();
}

void FaxPage::TellRefusal(Added why, const std::u16string& number) {
  if (why == Added::kFull) {
    Tell(TextOf(text::kRecipientListFull), TextOf(text::kRecipientsCaption), kWarning);
  } else if (why == Added::kRepeated) {
    Tell(platform::ExpandText(GetUiString(text::kRecipientRepeated), {std::u16string_view(number)}),
         TextOf(text::kRepeatedCaption), kWarning);
    dialog().Focus(kNumber);
    dialog().SelectText(kNumber, 0, std::u16string::npos);
  } else {
    RefuseCleared(kNumber, TextOf(text::kBadCharacter) + TextOf(text::kUseFaxNumberSigns), TextOf(text::kFaxNumber));
    EnableControls();
  }
}

void FaxPage::Remove() {
  const int row = dialog().SelectedRow(kList);
  if (row < 0) return;
  RemoveRecipient(*rows_, static_cast<uint32_t>(row));
  const int last = static_cast<int>(rows_->count) - 1;
  ShowRows(rows_->count == 0 ? platform::kNoRow : std::min(row, last));
  if (rows_->count > 0) dialog().Focus(kList);
  Changed();
}

void FaxPage::OpenDetails() {
  FaxDetailsDialog details(sheet());
  if (RunOwned(FaxDetailsDialog::kNumber, details) != platform::IDOK) return;
  SetActiveDialog(number());
  Changed();
}

/// The dialogs see the rows of the page; the recipients of the settings don't change by this way.
void FaxPage::OpenCover() {
  const auto kept = std::make_unique<RecipientTable>();
  LoadRecipients(ui(), kept.get());
  StoreRecipients(ui(), *rows_, sheet().resources.get());
  CoverDialog cover(sheet());
  const int result = RunOnClone(CoverDialog::kNumber, cover);
  StoreRecipients(ui(), *kept, sheet().resources.get());
  ui().head().faxRowCount = static_cast<uint16_t>(rows_->count);
  if (result != platform::IDOK) return;
  Changed();
}

void FaxPage::OpenPhoneBook() {
  CallPhoneBook(ui().head().phoneBookPath, rows_.get());
  ShowRows(rows_->count == 0 ? platform::kNoRow : 0);
  Changed();
}

void FaxPage::OnHeadingClicked(ControlId id, int column) {
  if (id != kList || rows_->count < 2 || column < 0 || column >= static_cast<int>(kRecipientFields)) return;
  bool& ascending = ascending_[static_cast<size_t>(column)];
  ascending = !ascending;
  SortRecipients(*rows_, static_cast<RecipientField>(column), ascending);
  ShowRows(platform::kNoRow);
  MarkChanged();
}

/// Rows of a table that was copied elsewhere: name and number.
bool FaxPage::OnListKey(ControlId id, platform::ListKey key) {
  if (id != kList || !dialog().IsEnabled(kList)) return false;
  if (key == platform::ListKey::kDelete) {
    if (dialog().IsEnabled(kDelete)) Remove();
    return true;
  }
  if (key != platform::ListKey::kPaste) return false;
  AddLines(dialog().ClipboardText());
  return true;
}

void FaxPage::AddLines(const std::u16string& text) {
  const NewRecipient flags{.name = {},
                           .number = {},
                           .company = {},
                           .department = {},
                           .ecm = dialog().IsChecked(kEcm),
                           .overseas = dialog().IsChecked(kOverseas),
                           .v34 = dialog().IsChecked(kV34)};
  const std::vector<RefusedLine> refused = AddRecipientLines(*rows_, text, flags);
  if (!refused.empty()) {
    Tell(RefusedText(refused), TextOf(text::kRecipientsCaption), kWarning);
    return;
  }
  ShowRows(rows_->count == 0 ? platform::kNoRow : static_cast<int>(rows_->count) - 1);
  Changed();
}

bool FaxPage::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  constexpr char16_t kFirstPrintable = 32;
  constexpr size_t kSigns = 30;
  if (id != kNumber || key.character < kFirstPrintable) return Page::AcceptsKey(id, key);
  const std::u16string_view signs = GetUiString(text::kFaxNumberSigns);
  return signs.substr(0, kSigns).find(key.character) != std::u16string_view::npos;
}

/// The pictures of the page say what goes out: to whom, and with a cover sheet or without.
void FaxPage::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  constexpr uint32_t kToPrinter = 17030, kToFax = 17031, kCoverOff = 17032, kCoverOn = 17033, kSender = 17034,
                     kReceiver = 17035;
  const bool fax = IsFax(ui());
  if (id == kOutputPicture) return canvas.DrawResource(fax ? kToFax : kToPrinter, place, {});
  if (id == kCoverPicture)
    return canvas.DrawResource(fax && IsOn<u"CoverSheet">(ui()) ? kCoverOn : kCoverOff, place, {});
  if (id == kListPicture || id == kBookPicture) {
    if (fax) canvas.DrawResource(id == kListPicture ? kSender : kReceiver, place, {});
    return;
  }
  Page::OnDraw(id, canvas, place);
}

}  // namespace heron::pages

#include "pages/cover_dialog.h"

#include <algorithm>
#include <array>
#include <span>

#include "catalog/strings.h"
#include "forms/cover_tables.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "pages/cover_parts_dialogs.h"
#include "pages/cover_preview.h"
#include "pages/recipient_list.h"
#include "platform/api/text.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using engine::Setting;
using platform::kCancelButton;
using platform::kOkButton;
using platform::ListRow;

constexpr ControlId kSubject = 1200, kPages = 1201, kPagesSpin = 1249, kComment = 1202, kFile = 1203, kZoom = 1204,
                    kZoomSpin = 1227, kZoomRange = 1280;
constexpr ControlId kX = 1205, kXSpin = 1228, kY = 1206, kYSpin = 1229, kXRange = 1247, kYRange = 1248;
constexpr ControlId kStyle = 1226, kPaper = 1301, kTemplate = 1288, kPreview = 1245;
constexpr ControlId kSenderButton = 1230, kPositionButton = 1231, kDefaults = 1232, kBrowse = 1233,
                    kRecipientButton = 1234;
constexpr ControlId kUseTemplate = 1287, kUseDetails = 1289, kPictureCheck = 1224, kZoomCheck = 1225,
                    kPositionLabel = 1254, kXLabel = 1252, kYLabel = 1253;
constexpr ControlId kSubjectCheck = 1210, kPagesCheck = 1223;
constexpr int kWholePercent = 100;

enum Group : uint8_t { kAll };
constexpr ShownControl kControls[] = {
    {.id = kSubjectCheck, .group = kAll, .param = ParamNamed<u"FaxCover_Subject">()},
    {.id = 1211, .group = kAll, .param = ParamNamed<u"FaxCover_ReceiveName">()},
    {.id = 1212, .group = kAll, .param = ParamNamed<u"FaxCover_ReceiveFaxnum">()},
    {.id = 1213, .group = kAll, .param = ParamNamed<u"FaxCover_ReceiveCompany1">()},
    {.id = 1214, .group = kAll, .param = ParamNamed<u"FaxCover_ReceiveCompany2">()},
    {.id = kUseTemplate, .group = kAll, .param = ParamNamed<u"lpFaxCover_ReceiveSetup">(), .value = 0},
    {.id = kUseDetails, .group = kAll, .param = ParamNamed<u"lpFaxCover_ReceiveSetup">(), .value = 1},
    {.id = 1216, .group = kAll, .param = ParamNamed<u"FaxCover_SenderName">()},
    {.id = 1217, .group = kAll, .param = ParamNamed<u"FaxCover_SenderCompany1">()},
    {.id = 1218, .group = kAll, .param = ParamNamed<u"FaxCover_SenderCompany2">()},
    {.id = 1219, .group = kAll, .param = ParamNamed<u"FaxCover_SenderTelnum">()},
    {.id = 1220, .group = kAll, .param = ParamNamed<u"FaxCover_SenderFaxnum">()},
    {.id = 1221, .group = kAll, .param = ParamNamed<u"FaxCover_SenderEmail">()},
    {.id = 1222, .group = kAll, .param = ParamNamed<u"FaxCover_Date">()},
    {.id = kPagesCheck, .group = kAll, .param = ParamNamed<u"FaxCover_Pagenum">()},
    {.id = kPictureCheck, .group = kAll, .param = ParamNamed<u"FaxCover_Image">()},
    {.id = kZoomCheck, .group = kAll, .param = ParamNamed<u"FaxCover_Zoom">()},
};

constexpr TextNumber kStyles[] = {text::kCoverStandard, text::kCoverBusiness, text::kCoverBold,
                                  text::kCoverInternational};
constexpr TextNumber kTemplates[] = {text::kFaxGreeting, text::kFaxDearSir, text::kFaxToAllRecipients,
                                     text::kFaxToCustomers};

/// A field with the number that it shows.
struct NumberField {
  ControlId field, spin;
  uint32_t FaxCoverStore::*number;
  uint32_t minimum, maximum;
  TextNumber name;
};
constexpr std::array<NumberField, 2> kNumbers = {{
    {kPages, kPagesSpin, &FaxCoverStore::pagenum, 1, kMostCoverPages, text::kNumberOfPages},
    {kZoom, kZoomSpin, &FaxCoverStore::zoom, kMinCoverZoom, kMaxCoverZoom, text::kZoom},
}};

bool IsNumber(ControlId id) {
  return std::ranges::any_of(kNumbers, [id](const auto& row) { return row.field == id || row.spin == id; });
}
/// Of a number's field or spin.
const NumberField& NumberOf(ControlId id) {
  return kNumbers[id == kPages || id == kPagesSpin ? 0 : 1];
}

template <size_t N>
void Put(char16_t (&field)[N], std::u16string_view text) {
  std::ranges::fill(field, u'\0');
  text.substr(0, N - 1).copy(field, N - 1);
}

std::vector<ListRow> Rows(std::span<const TextNumber> texts) {
  std::vector<ListRow> rows;
  for (const TextNumber text : texts) rows.push_back({.text = TextOf(text), .cells = {}});
  return rows;
}

}  // namespace

CoverDialog::CoverDialog(SheetContext& sheet) : SettingsView(sheet, kNumber, kControls) {}

void CoverDialog::OnInitialise() {
  const UiState& settings = *engine().ui;
  if (settings.stores.faxCover == nullptr) throw std::bad_alloc();
  ClampCover(*settings.stores.faxCover);
  FollowCoverPaper(settings);
  namespace personal = value::lpFaxCover_ReceivePersonal;
  if (settings.head().faxRowCount > kMostDetailed) {
    uint16_t& setup = Setting<u"lpFaxCover_ReceiveSetup">(settings);
    if (Setting<u"lpFaxCover_ReceivePersonal">(settings) != personal::kTyped && setup == 1)
      Tell(CoverNoticeText(CoverNotice::kTooMany), CoverCaption(), platform::MB_OK | platform::MB_ICONINFORMATION);
    setup = 0;
  }
  SettingsView::OnInitialise();
  dialog().SetRange(kZoomSpin, kMinCoverZoom, kMaxCoverZoom);
  dialog().SetRange(kXSpin, 0, kWholePercent);
  dialog().SetRange(kYSpin, 0, kWholePercent);
  dialog().SetRange(kPagesSpin, 1, kMostCoverPages);
  const std::u16string range = platform::ExpandText(u"(0-%03d)", {int64_t{kWholePercent}});
  dialog().SetText(kXRange, range);
  dialog().SetText(kYRange, range);
  ShowFields();
}

void CoverDialog::ShowFields() {
  std::vector<TextNumber> papers;
  for (const CoverPaper& paper : kCoverPapers) papers.push_back(paper.name);
  papers.push_back(text::kCoverPaperAsDocument);
  dialog().SetRows(kStyle, Rows(kStyles));
  dialog().SelectRow(kStyle, static_cast<int>(store().style) - 1);
  dialog().SetRows(kPaper, Rows(papers));
  dialog().SelectRow(kPaper, static_cast<int>(store().fcsPaper));
  dialog().SetRows(kTemplate, Rows(kTemplates));
  dialog().SetText(kTemplate, CoverText(store().fixedform));
  dialog().SetText(kSubject, CoverText(store().subject));
  dialog().SetText(kComment, CoverText(store().text));
  dialog().SetText(kFile, CoverText(store().filename));
  for (const NumberField& row : kNumbers) {
    dialog().SetText(row.field, NumberText(store().*row.number));
    dialog().SetPosition(row.spin, static_cast<int>(store().*row.number));
  }
  ShowPositions();
  ShowRest();
}

void CoverDialog::ShowPositions() {
  dialog().SetText(kX, NumberText(CoverPercent(store().xPosition)));
  dialog().SetText(kY, NumberText(CoverPercent(store().yPosition)));
  dialog().SetPosition(kXSpin, CoverPercent(store().xPosition));
  dialog().SetPosition(kYSpin, CoverPercent(store().yPosition));
}

void CoverDialog::ShowRest() {
  EnableFields();
  Repaint();
}

void CoverDialog::Repaint() {
  dialog().Repaint(kPreview);
}

void CoverDialog::EnableFields() {
  const bool details = Setting<u"lpFaxCover_ReceiveSetup">(ui()) != 0;
  const bool picture = IsOn<u"FaxCover_Image">(ui());
  const bool pages = IsOn<u"FaxCover_Pagenum">(ui());
  dialog().Enable(kUseDetails, ui().head().faxRowCount <= kMostDetailed);
  dialog().Enable(kTemplate, !details);
  for (const ControlId id : {ControlId{1211}, ControlId{1212}, ControlId{1213}, ControlId{1214}, kRecipientButton})
    dialog().Enable(id, details);
  dialog().Enable(kSubject, IsOn<u"FaxCover_Subject">(ui()));
  dialog().Enable(kPages, pages);
  dialog().Enable(kPagesSpin, pages);
  for (const ControlId id : {kZoomCheck, kPositionLabel, kFile, kBrowse, kX, kY, kXSpin, kYSpin, kXRange, kYRange,
                             kXLabel, kYLabel, kPositionButton})
    dialog().Enable(id, picture);
  for (const ControlId id : {kZoom, kZoomSpin, kZoomRange})
    dialog().Enable(id, picture && IsOn<u"FaxCover_Zoom">(ui()));
}

void CoverDialog::OnStored(ControlId id) {
  ShowGroup(kAll);
  ShowRest();
  if (!dialog().IsChecked(id)) return;
  if (id == kSubjectCheck) dialog().Focus(kSubject);
  if (id == kPagesCheck) dialog().Focus(kPages);
  if (id == kZoomCheck) dialog().Focus(kZoom);
}

void CoverDialog::OnButton(ControlId id) {
  switch (id) {
    case kSenderButton:
      return RunSender();
    case kRecipientButton:
      return RunRecipient();
    case kPositionButton:
      return RunPosition();
    case kDefaults:
      return RestoreDefaults();
    case kBrowse:
      return Browse();
    case kOkButton:
      return Confirm();
    case kCancelButton:
      return dialog().End(id);
    default:
      return;
  }
}

void CoverDialog::OnRowSelected(ControlId id) {
  SettingsView::OnRowSelected(id);
  const int row = dialog().SelectedRow(id);
  if (row < 0) return;
  if (id == kStyle) store().style = static_cast<uint32_t>(row) + 1;
  if (id == kPaper) {
    store().fcsPaper = static_cast<uint32_t>(row);
    FollowCoverPaper(ui());
  }
  if (id == kTemplate) {
    Put(store().fixedform, GetUiString(kTemplates[static_cast<size_t>(row)]));
    dialog().SetText(kTemplate, CoverText(store().fixedform));
  }
  Repaint();
}

void CoverDialog::OnTextChanged(ControlId id) {
  const std::u16string typed = dialog().Text(id);
  if (id == kSubject) Put(store().subject, typed);
  if (id == kComment) {
    Put(store().text, StoredComment(typed));
    store().lineNum = CountCommentLines(CoverText(store().text));
  }
  if (id == kTemplate) Put(store().fixedform, typed.empty() ? GetUiString(text::kFaxGreeting) : typed);
  if (IsNumber(id)) TakeNumber(id, ParseNumber(typed));
  if (id == kX || id == kY) TakePosition(id);
  Repaint();
}

/// A number outside its range isn't stored; the field is checked when it is left.
void CoverDialog::TakeNumber(ControlId field, uint32_t number) {
  const NumberField& row = NumberOf(field);
  if (number < row.minimum || number > row.maximum) return;
  store().*row.number = number;
  dialog().SetPosition(row.spin, static_cast<int>(number));
}

void CoverDialog::TakePosition(ControlId field) {
  constexpr uint32_t kHundredths = 100;
  const int typed = ParseNumber(dialog().Text(field));
  const int percent = std::min(typed, kWholePercent);
  if (percent != typed) dialog().SetText(field, NumberText(percent));
  uint32_t& position = field == kX ? store().xPosition : store().yPosition;
  if (percent != CoverPercent(position)) position = static_cast<uint32_t>(percent) * kHundredths;
  dialog().SetPosition(field == kX ? kXSpin : kYSpin, percent);
}

void CoverDialog::OnPositionChanged(ControlId id) {
  const int position = std::max(dialog().Position(id), 0);
  if (IsNumber(id)) {
    dialog().SetText(NumberOf(id).field, NumberText(position));
    TakeNumber(NumberOf(id).field, static_cast<uint32_t>(position));
  }
  if (id == kXSpin || id == kYSpin) {
    const ControlId field = id == kXSpin ? kX : kY;
    dialog().SetText(field, NumberText(position));
    TakePosition(field);
  }
  Repaint();
}

void CoverDialog::OnPointer(ControlId id, const platform::PointerEvent& event) {
  if (id != kPreview) return;
  if (!TakeCoverPointer(ui(), dialog(), kPreview, event)) return;
  ShowPositions();
  Repaint();
}

void CoverDialog::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id == kPreview) DrawCoverPreview(ui(), canvas, place);
}

bool CoverDialog::AcceptsKey(ControlId id, const platform::TypedKey& key) {
  constexpr char16_t kFirstPrintable = 32;
  const bool number = id == kPages || id == kZoom || id == kX || id == kY;
  if (!number || key.character < kFirstPrintable) return true;
  if (key.character < u'0' || key.character > u'9') return false;
  const size_t kept = key.text.size() - (std::max(key.selection_end, key.selection_start) -
                                         std::min(key.selection_end, key.selection_start));
  constexpr size_t kMostDigits = 3;
  if (kept >= kMostDigits) return false;
  const bool leads = std::min(key.selection_end, key.selection_start) == 0;
  return key.character != u'0' || !leads || id == kX || id == kY;
}

bool CoverDialog::CheckNumber(ControlId field) {
  const NumberField& row = NumberOf(field);
  const uint32_t typed = ParseNumber(dialog().Text(field));
  if (typed >= row.minimum && typed <= row.maximum) return true;
  const uint32_t limit = typed < row.minimum ? row.minimum : row.maximum;
  dialog().SetText(field, NumberText(limit));
  TakeNumber(field, limit);
  Repaint();
  return Refuse(field, RangeText(row.name, row.minimum, row.maximum), TextOf(row.name));
}

void CoverDialog::CheckTemplateText() {
  if (!dialog().Text(kTemplate).empty()) return;
  Tell(TextOf(text::kTemplateTextEmpty), TextOf(text::kTemplateTextCaption),
       platform::MB_OK | platform::MB_ICONINFORMATION);
  Put(store().fixedform, GetUiString(text::kFaxGreeting));
  dialog().SetText(kTemplate, CoverText(store().fixedform));
}

bool CoverDialog::CheckFile() {
  if (!IsOn<u"FaxCover_Image">(ui())) return true;
  std::u16string path = dialog().Text(kFile);
  if (path.empty()) {
    Put(store().filename, {});
    return true;
  }
  const CoverImageFault fault = ValidateCoverImage(&path);
  if (fault == CoverImageFault::kNone) {
    Put(store().filename, path);
    dialog().SetText(kFile, path);
    Repaint();
    return true;
  }
  if (!CoverImageOpens(std::u16string(CoverText(store().filename)))) Put(store().filename, {});
  const std::u16string message = CoverImageText(path, fault);
  dialog().SetText(kFile, CoverText(store().filename));
  return Refuse(kFile, message, TextOf(text::kCoverPictureCaption));
}

bool CoverDialog::MayLeave(ControlId id, ControlId to) {
  if (checking_ || to == kCancelButton || to == kDefaults) return true;
  if (IsNumber(id) && dialog().IsEnabled(id)) return CheckNumber(id);
  if (id == kTemplate) CheckTemplateText();
  return id != kFile || to == kBrowse || CheckFile();
}

void CoverDialog::Browse() {
  const std::u16string title = TextOf(text::kCoverPictureCaption), filter = TextOf(text::kBitmapFilter);
  const auto chosen =
      dialog().AskFileName({.saves = false, .title = title, .folder = {}, .name = u"*.bmp", .filter = filter});
  if (!chosen) return;
  std::u16string path = *chosen;
  const CoverImageFault fault = ValidateCoverImage(&path);
  if (fault != CoverImageFault::kNone) {
    Refuse(kFile, CoverImageText(path, fault), TextOf(text::kCoverPictureCaption));
    return;
  }
  Put(store().filename, path);
  dialog().SetText(kFile, path);
  dialog().Focus(kFile);
  dialog().SelectText(kFile, 0, std::u16string::npos);
  Repaint();
}

void CoverDialog::RunSender() {
  const FaxCoverStore kept = store();
  SenderDialog sender(ui());
  if (dialog().RunDialog(dialog::kCoverSender, &sender) != kOkButton) store() = kept;
  Repaint();
}

void CoverDialog::RunRecipient() {
  const FaxCoverStore kept = store();
  CoverRecipientDialog recipient(sheet());
  const uint16_t before = Setting<u"lpFaxCover_ReceivePersonal">(ui());
  if (RunOwned(dialog::kCoverRecipient, recipient) != kOkButton) {
    store() = kept;
    Setting<u"lpFaxCover_ReceivePersonal">(ui()) = before;
  }
  Repaint();
}

void CoverDialog::RunPosition() {
  const FaxCoverStore kept = store();
  PositionDialog position(ui());
  if (dialog().RunDialog(dialog::kCoverPosition, &position) != kOkButton) store() = kept;
  ShowPositions();
  Repaint();
}

void CoverDialog::RestoreDefaults() {
  ResetCoverFlags(ui());
  ResetCoverStore(kResetByButton, ui());
  FollowCoverPaper(ui());
  if (ui().head().faxRowCount > kMostDetailed) Setting<u"lpFaxCover_ReceiveSetup">(ui()) = 0;
  ShowGroup(kAll);
  ShowFields();
}

void CoverDialog::Confirm() {
  checking_ = true;
  const bool zoom_ok = !dialog().IsEnabled(kZoom) || CheckNumber(kZoom);
  const bool passes = zoom_ok && (!dialog().IsEnabled(kPages) || CheckNumber(kPages)) && CheckFile();
  checking_ = false;
  Repaint();
  if (passes) dialog().End(kOkButton);
}

}  // namespace heron::pages

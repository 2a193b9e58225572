// Rows of the fax cover sheet (summary_builders.h).
#include <algorithm>

#include "engine/setting.h"
#include "generated/values.h"
#include "pages/summary_builders.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using engine::Setting;
using platform::ExpandText;

constexpr std::u16string_view kPart = u"  ";
constexpr std::u16string_view kDeepPart = u"    ";

/// A setting of the sheet: the field is shown while it is on.
void AddField(std::u16string_view indent, TextNumber label, bool on, std::u16string_view field, SummaryWriter& rows) {
  rows.Row(indent, label, SwitchText(on), on ? field : std::u16string_view());
}

const FaxCoverStore* StoreOf(const SummaryInput& input) {
  return input.ui.stores.faxCover.get();
}

/// A place on the sheet in percent, from its hundredths; -1 is none.
void AddPlace(std::u16string_view format, uint32_t place, SummaryWriter& rows) {
  const auto hundredths = static_cast<int32_t>(place);
  if (hundredths == -1) return;
  rows.Row(ExpandText(format, {std::u16string_view(GetUiString(text::kPosition))}),
           ExpandText(u"%d  (0-100)", {(int64_t{hundredths} + 50) / 100}));
}

/// The recipient field by field; the texts of the first three are the sheet's own only for a recipient typed in.
void AddRecipientFields(const UiState& ui, const FaxCoverStore& cover, SummaryWriter& rows) {
  const uint16_t personal = Setting<u"lpFaxCover_ReceivePersonal">(ui);
  const bool typed = personal == value::lpFaxCover_ReceivePersonal::kTyped;
  const auto own = [typed](std::u16string_view field) { return typed ? field : std::u16string_view(); };
  rows.Row(kDeepPart, text::kDetailedRecipient,
           TextAt({text::kAllOnOneSheet, text::kSheetForEach, text::kRecipientTyped}, personal, 0));
  AddField(kDeepPart, text::kCompany, IsOn<u"FaxCover_ReceiveCompany1">(ui), own(FieldText(cover.receiptCompany1)),
           rows);
  AddField(kDeepPart, text::kDepartment, IsOn<u"FaxCover_ReceiveCompany2">(ui), own(FieldText(cover.receiptCompany2)),
           rows);
  AddField(kDeepPart, text::kName, IsOn<u"FaxCover_ReceiveName">(ui), own(FieldText(cover.receiptName)), rows);
  AddField(kDeepPart, text::kFaxNumber, IsOn<u"FaxCover_ReceiveFaxnum">(ui), FieldText(cover.receiptFaxnum), rows);
}

}  // namespace

void AddFaxSubject(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  rows.Row({}, text::kFaxCoverSheet);
  AddField(kPart, text::kSubject, IsOn<u"FaxCover_Subject">(input.ui), FieldText(cover->subject), rows);
}

void AddFaxStyle(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  rows.Row(kPart, text::kCoverStyle,
           TextAt({text::kCoverStandard, text::kCoverBusiness, text::kCoverBold, text::kCoverInternational},
                  cover->style, 1));
}

void AddFaxRecipient(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  rows.Row(kPart, text::kRecipient);
  if (Setting<u"lpFaxCover_ReceiveSetup">(input.ui) == value::lpFaxCover_ReceiveSetup::kTemplate)
    return rows.Row(kDeepPart, text::kTemplateText, FieldText(cover->fixedform));
  AddRecipientFields(input.ui, *cover, rows);
}

void AddFaxSender(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  const UiState& ui = input.ui;
  const auto add = [&rows](TextNumber label, bool on, std::u16string_view field) {
    AddField(kDeepPart, label, on, field, rows);
  };
  rows.Row(kPart, text::kSender);
  add(text::kCompany, IsOn<u"FaxCover_SenderCompany1">(ui), FieldText(cover->senderCompany1));
  add(text::kDepartment, IsOn<u"FaxCover_SenderCompany2">(ui), FieldText(cover->senderCompany2));
  add(text::kName, IsOn<u"FaxCover_SenderName">(ui), FieldText(cover->senderName));
  add(text::kTelephoneNumber, IsOn<u"FaxCover_SenderTelnum">(ui), FieldText(cover->senderTelnum));
  add(text::kFaxNumber, IsOn<u"FaxCover_SenderFaxnum">(ui), FieldText(cover->senderFaxnum));
  add(text::kEmailAddress, IsOn<u"FaxCover_SenderEmail">(ui), FieldText(cover->senderEmail));
}

void AddFaxDate(const SummaryInput& input, SummaryWriter& rows) {
  if (StoreOf(input) != nullptr) rows.Row(kPart, text::kDate, SwitchText(IsOn<u"FaxCover_Date">(input.ui)));
}

void AddFaxPageNumber(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  AddField(kPart, text::kNumberOfPages, IsOn<u"FaxCover_Pagenum">(input.ui),
           ExpandText(u"%ld %s", {int64_t{static_cast<int32_t>(cover->pagenum)},
                                  std::u16string_view(GetUiString(text::kPagesUnit))}),
           rows);
}

void AddFaxPaper(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  rows.Row(kPart, text::kCoverPaper,
           TextAt({text::kCoverPaperA4, text::kCoverPaperA5, text::kCoverPaperB4, text::kCoverPaperB5,
                   text::kCoverPaperLetter, text::kCoverPaperAsDocument},
                  cover->fcsPaper, 0));
}

void AddFaxPicture(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  const bool on = IsOn<u"FaxCover_Image">(input.ui);
  rows.Row(kPart, text::kCoverPicture, SwitchText(on));
  if (!on) return;
  rows.Row(kDeepPart, text::kCoverPictureFile, FieldText(cover->filename));
  AddPlace(u"    %s X", cover->xPosition, rows);
  AddPlace(u"    %s Y", cover->yPosition, rows);
  AddField(kDeepPart, text::kZoomRow, IsOn<u"FaxCover_Zoom">(input.ui),
           ExpandText(u"%d  %%", {int64_t{static_cast<int32_t>(cover->zoom)}}), rows);
}

/// A CR is no sign of its own, and a line end at the end begins no line.
void AddFaxComment(const SummaryInput& input, SummaryWriter& rows) {
  const FaxCoverStore* cover = StoreOf(input);
  if (cover == nullptr) return;
  rows.Row(std::u16string_view());
  rows.Row(kPart, text::kCoverComment);
  rows.Separator();
  std::u16string comment(FieldText(cover->text).substr(0, std::size(cover->text) - 1));
  std::erase(comment, u'\r');
  for (size_t at = 0; at < comment.size();) {
    const size_t end = std::min(comment.find(u'\n', at), comment.size());
    rows.Row(std::u16string_view(comment).substr(at, end - at));
    at = end + 1;
  }
}

}  // namespace heron::pages

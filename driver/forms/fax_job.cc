// A fax job from the start of its document to the end of its temporary files.
#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "catalog/strings.h"
#include "escapes/job_dialogue.h"
#include "forms/cover_sheets.h"
#include "forms/fax_transmission.h"
#include "forms/handlers.h"
#include "forms/temp_files.h"
#include "generated/texts.h"
#include "platform/api/document_events.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using namespace platform;

constexpr size_t kPathLength = 260;
constexpr size_t kCoverNameLength = 30;

/// The DOCINFOW's name, if the event brings one.
std::u16string DocumentName(const DocumentEvent& event) {
  const DOCINFOW* info = nullptr;
  if (event.in != nullptr && event.inSize == sizeof info) std::memcpy(&info, event.in, sizeof info);
  if (info == nullptr || info->lpszDocName == nullptr) return u"DocName None";
  return std::u16string(std::u16string_view(info->lpszDocName).substr(0, kPathLength));
}

int StartDocument(const DocumentEvent& event) {
  DeleteRecordedFiles(PrinterName(event.printer));
  const auto status = FetchFaxState(event.hdc);
  if (!status.has_value()) return kStop;
  if (!status->fax || !status->coverSheets) return kGoOn;
  const bool sent = SendEscape<"EscSetDocName">(event.hdc, WideText<kPathLength>(DocumentName(event))) &&
                    SendEscape<"EscSetUserName">(event.hdc, LogonName());
  return sent ? kGoOn : kStop;
}

/// When and to whom, as the user is asked; false if an escape fails.
bool MakeQuestion(HDC hdc, const FaxState& status, std::u16string* question) {
  std::array<uint16_t, 5> time;
  std::array<char16_t, 44> recipient;
  if (!AskEscape<"EscGetFaxTime">(hdc, &time) || !AskEscape<"EscGetFaxRecipient">(hdc, &recipient)) return false;
  const bool scheduled = status.timeSet && std::ranges::any_of(time, [](uint16_t part) { return part != 0; });
  *question =
      scheduled ? ExpandText(GetUiString(text::kSentAtTime),
                             {int64_t{time[0]}, int64_t{time[1]}, int64_t{time[2]}, int64_t{time[3]}, int64_t{time[4]}})
                : std::u16string(GetUiString(text::kSentAtOnce));
  const std::u16string_view name(recipient.begin(), std::ranges::find(recipient, u'\0'));
  *question += status.recipients == 1
                   ? ExpandText(GetUiString(text::kAskToSendToOne), {name})
                   : ExpandText(GetUiString(text::kAskToSendToMany), {name, int64_t{status.recipients}});
  return true;
}

/// The user's word on a fax; without recipients there is nothing to be asked.
bool Confirm(HDC hdc, const FaxState& status) {
  if (!status.fax) return true;
  if (status.recipients == 0) {
    ShowMessage(GetUiString(text::kNoRecipientsNotSent), GetUiString(text::kSendFax), MB_OK | MB_ICONINFORMATION);
    return SendEscape<"EscFaxCancel">(hdc);
  }
  std::u16string question;
  if (!MakeQuestion(hdc, status, &question)) return false;
  const int answer = ShowMessage(question, GetUiString(text::kSendFax), MB_OKCANCEL | MB_ICONQUESTION);
  return answer == IDOK || SendEscape<"EscFaxCancel">(hdc);
}

/// The recipients of the one transmission; false if an escape fails.
bool SendRange(HDC hdc, const FaxState& status) {
  const auto count = std::min<uint32_t>(status.recipients, JobStateBlock::kMaxRecipients);
  return SendEscape<"EscFaxRangeFirst">(hdc, uint32_t{0}) && SendEscape<"EscFaxRangeEnd">(hdc, count);
}

/// Before the first page. The status is asked for again after each step, since each may change it.
int StartFirstPage(const DocumentEvent& event) {
  const HDC hdc = event.hdc;
  auto status = FetchFaxState(hdc);
  if (!status.has_value()) return kStop;
  if (status->pageDone) return kGoOn;
  if (!TransferAddressFile(hdc)) return kStop;
  if (status->fax && status->timeSet && !SetScheduledTime(hdc, status->hour, status->minute)) return kStop;
  const StringsInUse texts;
  status = FetchFaxState(hdc);
  if (!status.has_value() || !Confirm(hdc, *status)) return kStop;
  status = FetchFaxState(hdc);
  if (!status.has_value()) return kStop;
  if (!status->fax || status->recipients == 0) return kGoOn;
  const bool sent = status->coverSheets ? BuildCoverSheets(PrinterName(event.printer), hdc) : SendRange(hdc, *status);
  return sent ? kGoOn : kFailed;
}

/// Deletes the cover files that the state names, telling of each, and adds them to `deleted`.
bool DeleteCoverFiles(HDC hdc, const JobState& state, std::vector<std::u16string>* deleted) {
  constexpr uint32_t kRoom = (JobStateBlock::kSize - JobStateBlock::kCoverFile) / JobStateBlock::kCoverFileSize;
  const std::u16string folder = ReadTextAt(state, JobStateBlock::kCoverFolder, kPathLength);
  const auto remove = [&](size_t offset) {
    deleted->push_back(folder + ReadTextAt(state, offset, kCoverNameLength));
    DeleteTempFile(deleted->back());
  };
  const uint32_t count = std::min(ReadAt<uint32_t>(state, JobStateBlock::kCoverFiles), kRoom);
  for (uint32_t i = 0; i < count; ++i) {
    remove(JobStateBlock::kCoverFile + i * JobStateBlock::kCoverFileSize);
    if (!SendEscape<"EscFaxCoverDeleted">(hdc, static_cast<uint16_t>(i))) return false;
  }
  remove(JobStateBlock::kLastCoverFile);
  return SendEscape<"EscFaxCoverFileDeleted">(hdc);
}

int EndDocumentPost(const DocumentEvent& event) {
  const auto status = FetchFaxState(event.hdc);
  if (!status.has_value()) return kStop;
  if (!status->fax || !status->coverSheets) return kGoOn;
  const auto state = FetchJobState(event.hdc);
  std::vector<std::u16string> deleted;
  if (state == nullptr || !DeleteCoverFiles(event.hdc, *state, &deleted)) return kStop;
  ForgetTempFiles(PrinterName(event.printer), deleted);
  return kGoOn;
}

}  // namespace

int OnFaxJob(const DocumentEvent& event) {
  switch (event.event) {
    case DOCUMENTEVENT_STARTDOC:
      return StartDocument(event);
    case DOCUMENTEVENT_STARTPAGE:
      return StartFirstPage(event);
    case DOCUMENTEVENT_ENDDOC:
      return SendEscape<"EscFaxEndDoc">(event.hdc) ? kGoOn : kStop;
    case DOCUMENTEVENT_ENDDOCPOST:
      return EndDocumentPost(event);
    case DOCUMENTEVENT_ABORTDOC:
      DeleteRecordedFiles(PrinterName(event.printer));
      return kGoOn;
    default:
      return kGoOn;
  }
}

}  // namespace heron

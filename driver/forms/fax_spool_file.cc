// A spool file of the job's own, if its state asks for one.
#include "forms/handlers.h"
#include "forms/temp_files.h"
#include "platform/api/document_events.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

constexpr size_t kPathLength = 260;

int MakeSpoolFile(const DocumentEvent& event) {
  const std::u16string path = MakeTempFile(kSpoolPrefix);
  if (path.empty()) return kStop;
  const bool sent = SendEscape<"EscSetSpoolFile">(event.hdc, WideText<kPathLength>(path)) &&
                    RecordTempFile(PrinterName(event.printer), kSpoolFileNumber, path);
  if (sent) return kGoOn;
  DeleteTempFile(path);
  return kStop;
}

int RemoveSpoolFile(const DocumentEvent& event, const JobState& state) {
  const std::u16string path = ReadTextAt(state, JobStateBlock::kSpoolFile, kPathLength);
  DeleteTempFile(path);
  if (!SendEscape<"EscSpoolFileDone">(event.hdc)) return kStop;
  ForgetTempFiles(PrinterName(event.printer), {&path, 1});
  return kGoOn;
}

}  // namespace

int OnFaxSpoolFile(const DocumentEvent& event) {
  if (event.event == platform::DOCUMENTEVENT_ABORTDOC) {
    DeleteRecordedFiles(PrinterName(event.printer));
    return kGoOn;
  }
  const bool begins = event.event == platform::DOCUMENTEVENT_STARTDOCPOST;
  if (!begins && event.event != platform::DOCUMENTEVENT_ENDDOCPOST) return kGoOn;
  const auto state = FetchJobState(event.hdc);
  if (state == nullptr) return kStop;
  if (ReadAt<uint8_t>(*state, JobStateBlock::kSpoolFileUsed) == 0) return kGoOn;
  return begins ? MakeSpoolFile(event) : RemoveSpoolFile(event, *state);
}

}  // namespace heron

// A spreadsheet program hands back records without the changes that its user made in the sheet, and resets the device
// in the middle of a job. What BookMode knows of the user's choice is put into such records.
#include <cstring>

#include "generated/values.h"
#include "platform/api/document_events.h"
#include "printpath/handlers.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using namespace platform;

/// The pointer at `data`; null if `size` hasn't the room of one.
void* PointerAt(const void* data, uint32_t size, size_t index = 0) {
  void* pointer = nullptr;
  if (data != nullptr && size >= (index + 1) * sizeof pointer) {
    std::memcpy(&pointer, static_cast<const uint8_t*>(data) + index * sizeof pointer, sizeof pointer);
  }
  return pointer;
}

/// The record that the program hands in, to be changed in place; null if there is none or it isn't ours.
DriverEnv* RecordOf(const DocumentEvent& event) {
  constexpr size_t kRecordOfCreate = 2;
  static_assert(offsetof(DOCEVENT_CREATEDCPRE, pdm) == kRecordOfCreate * sizeof(void*));
  const size_t index = event.event == DOCUMENTEVENT_CREATEDCPRE ? kRecordOfCreate : 0;
  void* const record = PointerAt(event.in, event.inSize, index);
  return IsOwnEnv(record) ? static_cast<DriverEnv*>(record) : nullptr;
}

/// Fax or print as the user last confirmed it, unless somebody replaces the record anyway.
void RestoreOutput(const DocumentEvent& event, DriverEnv& record) {
  const bool has_room = event.out != nullptr && event.outSize >= sizeof(void*);
  if (!has_room || PointerAt(event.out, event.outSize) != nullptr) return;
  const std::u16string printer_name = PrinterName(event.printer);
  if (BookModeStatus(printer_name) == kBookModeFax) {
    Set<"lpOutput">(record, value::lpOutput::kFax);
    Set<"lpQuality">(record, BookModeResolution(printer_name));
  } else {
    Set<"lpOutput">(record, value::lpOutput::kPrinter);
  }
}

void RestoreDevice(const DocumentEvent& event, DriverEnv& record) {
  const BookModeJob job = ReadBookModeJob(PrinterName(event.printer));
  if (job.gfxMode != 0) Set<"lpGraphicsMode">(record, job.gfxMode);
  if (job.pdlType != 0) Set<"lpPDLType">(record, job.pdlType);
  if (job.enableBppChange != 0) Set<"EnableBPPChange_Check">(record, job.enableBppChange);
}

int StoreDevice(const DocumentEvent& event) {
  const std::u16string printer_name = PrinterName(event.printer);
  if (printer_name.empty()) return kFailed;
  BookModeJob job;
  if (event.event == DOCUMENTEVENT_STARTDOC && InExcel()) {
    const auto record = FetchJobRecord(event.hdc);
    if (record == nullptr) return kFailed;
    job = {.gfxMode = Get<"lpGraphicsMode">(*record),
           .pdlType = Get<"lpPDLType">(*record),
           .enableBppChange = Get<"EnableBPPChange_Check">(*record)};
  }
  WriteBookModeJob(printer_name, job);
  return kGoOn;
}

}  // namespace

int OnAppWorkarounds(const DocumentEvent& event) {
  switch (event.event) {
    case DOCUMENTEVENT_CREATEDCPRE:
    case DOCUMENTEVENT_RESETDCPRE: {
      DriverEnv* const record = RecordOf(event);
      if (record == nullptr) return kGoOn;
      if (InExcel()) RestoreOutput(event, *record);
      const bool bare = event.event == DOCUMENTEVENT_RESETDCPRE && event.inSize == sizeof(void*);
      if (bare) RestoreDevice(event, *record);
      return kGoOn;
    }
    case DOCUMENTEVENT_STARTDOC:
    case DOCUMENTEVENT_ABORTDOC:
    case DOCUMENTEVENT_ENDDOCPOST:
      return StoreDevice(event);
    default:
      return kGoOn;
  }
}

}  // namespace heron

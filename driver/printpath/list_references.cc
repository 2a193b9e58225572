// The user's lists that a job refers to: brought to this driver's version before anything of them is printed.
#include <cstring>

#include "platform/api/document_events.h"
#include "printpath/handlers.h"
#include "settings/printer_data.h"
#include "uistate/user_stores.h"

namespace heron {

int OnListReferences(const DocumentEvent& event) {
  const auto record = FetchJobRecord(event.hdc);
  if (record == nullptr) return kFailed;
  const std::u16string printer_name = PrinterName(event.printer);
  if (printer_name.empty()) return kGoOn;
  // Whose lists, and of which version, is for this side to say: a reply must not have somebody's lists replaced.
  SetText<"dmDeviceName">(*record, printer_name);
  Set<"dmDriverVersion">(*record, kDriverVersion);
  std::memcpy(FieldBytes<"publicMirror">(*record), record->bytes.data(), kPublicSize);
  // The repaired references live in this copy alone; who prints from a list bounds the record's reference itself.
  RefreshUserStores(*record);
  return kGoOn;
}

}  // namespace heron

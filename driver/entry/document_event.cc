#include "entry/document_event.h"

#include "catalog/strings.h"
#include "forms/handlers.h"
#include "printpath/handlers.h"

namespace heron {
namespace {

/// The texts come from the driver directory of the job's queue.
int FetchDriverDirectory(const DocumentEvent& event) {
  RefreshDriverDirectory(event.printer);
  return kGoOn;
}

/// In this order: who prints, and that nothing is cancelled, must be known before anybody may cancel; and a job that is
/// cancelled is so before anything is drawn.
constexpr int (*kHandlers[])(const DocumentEvent& event) = {
    FetchDriverDirectory, OnUserIdentity, OnAppWorkarounds, OnFaxJob,         OnFaxSpoolFile, OnPerPageLists,
    OnOutputConfirmation, OnOverlayCheck, OnJobIdentity,    OnListReferences, OnPageDrawing,
};

}  // namespace

int HandleDocumentEvent(const DocumentEvent& event) {
  for (const auto handler : kHandlers) {
    if (const int result = handler(event); result != kGoOn) return result;
  }
  return kGoOn;
}

}  // namespace heron

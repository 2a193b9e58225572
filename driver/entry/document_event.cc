// The chain of handlers (document_event.h).
#include "entry/document_event.h"

#include <cstdint>
#include <initializer_list>

#include "catalog/strings.h"
#include "forms/handlers.h"
#include "platform/api/document_events.h"
#include "printpath/handlers.h"

namespace heron {
namespace {

using namespace platform;

/// A set of events, a bit for each number.
using EventSet = uint32_t;

consteval EventSet Events(std::initializer_list<int> numbers) {
  EventSet set = 0;
  for (const int number : numbers) set |= EventSet{1} << number;
  return set;
}

constexpr bool Holds(EventSet set, int number) {
  return number >= 0 && number < 32 && (set >> number & 1) != 0;
}

struct Link {
  int (*handle)(const DocumentEvent& event);
  EventSet events;  ///< that it takes
};

/// In this order: who prints, and that nothing is cancelled, must be known before anybody may cancel; and a job that is
/// cancelled is so before anything is drawn.
constexpr Link kChain[] = {
    {OnUserIdentity, Events({DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_STARTPAGE})},
    {OnAppWorkarounds, Events({DOCUMENTEVENT_CREATEDCPRE, DOCUMENTEVENT_RESETDCPRE, DOCUMENTEVENT_STARTDOC,
                               DOCUMENTEVENT_ABORTDOC, DOCUMENTEVENT_ENDDOCPOST})},
    {OnFaxJob, Events({DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_STARTPAGE, DOCUMENTEVENT_ENDDOC, DOCUMENTEVENT_ENDDOCPOST,
                       DOCUMENTEVENT_ABORTDOC})},
    {OnFaxSpoolFile, Events({DOCUMENTEVENT_STARTDOCPOST, DOCUMENTEVENT_ENDDOCPOST, DOCUMENTEVENT_ABORTDOC})},
    {OnPerPageLists, Events({DOCUMENTEVENT_STARTPAGE})},
    {OnOutputConfirmation, Events({DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_STARTDOCPOST})},
    {OnOverlayCheck, Events({DOCUMENTEVENT_STARTDOC})},
    {OnJobIdentity, Events({DOCUMENTEVENT_STARTDOCPOST})},
    {OnListReferences, Events({DOCUMENTEVENT_STARTDOC})},
    {OnPageDrawing, Events({DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_STARTPAGE, DOCUMENTEVENT_ENDPAGE})},
};

}  // namespace

int HandleDocumentEvent(const DocumentEvent& event) {
  RefreshDriverDirectory(event.printer);  // the texts come from the driver directory of the job's queue
  for (const Link& link : kChain) {
    if (!Holds(link.events, event.event)) continue;
    if (const int result = link.handle(event); result != kGoOn) return result;
  }
  return kGoOn;
}

}  // namespace heron

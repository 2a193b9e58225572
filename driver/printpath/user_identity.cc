// Who prints, and on what papers of the user's own.
#include <array>

#include "generated/values.h"
#include "platform/api/document_events.h"
#include "printpath/handlers.h"
#include "settings/papers.h"

namespace heron {
namespace {

struct PaperEntry {
  uint32_t width;
  uint32_t length;
  uint32_t unit;
};

/// Millimetre sizes go out as tenths of a millimetre, rounded; inch sizes as they are stored.
uint32_t SizeFor(const CustomPaperEntry& paper, uint32_t thou) {
  return paper.unit == value::lpUDPaperUnit::kMillimetre ? static_cast<uint16_t>((uint64_t{thou} * 254 + 500) / 1000)
                                                         : thou;
}

int SendUserPapers(const DocumentEvent& event) {
  UserPaperStore store;
  LoadUserPapers(&store, event.printer);
  std::array<PaperEntry, kUserPaperCount> papers;
  for (size_t i = 0; i < papers.size(); ++i) {
    const CustomPaperEntry& paper = store[i];
    papers[i] = {SizeFor(paper, paper.width), SizeFor(paper, paper.height), static_cast<uint16_t>(paper.unit)};
  }
  return SendEscape<"EscSetUserPapers">(event.hdc, papers) ? kGoOn : kFailed;
}

}  // namespace

int OnUserIdentity(const DocumentEvent& event) {
  if (event.event == platform::DOCUMENTEVENT_STARTDOC) {
    const bool sent = SendEscape<"EscSetUserName">(event.hdc, LogonName()) &&
                      SendEscape<"EscSetCancelFlag">(event.hdc, uint8_t{0}) && SendEscape<"EscDocStarted">(event.hdc);
    return sent ? kGoOn : kFailed;
  }
  return event.event == platform::DOCUMENTEVENT_STARTPAGE ? SendUserPapers(event) : kGoOn;
}

}  // namespace heron

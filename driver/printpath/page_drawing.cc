// What is done on the application's device context page by page: form, font map, watermark. The escapes of this part
// aren't checked: what can't be had is zero, and the page prints without it.
#include "platform/api/document_events.h"
#include "printpath/font_map.h"
#include "printpath/handlers.h"
#include "printpath/overlay_step.h"
#include "printpath/page_state.h"
#include "printpath/watermark_stamp.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using namespace platform;

/// Passes path 488 the program that prints.
void TellApplication(HDC hdc) {
  if (AskDrawPath(hdc) != DrawPath::k488) return;
  PageState state(hdc, DrawPath::k488);
  state.Put(PageState488::kAppFlags, static_cast<uint8_t>(ProcessIs(u"MSARN11J.EXE") ? 1 : 0));
  state.Put(PageState488::kAppFlags + 1, uint8_t{1});
  state.PutBack();
}

void SendFontMap(HDC hdc, const DriverEnv& record) {
  if (Get<"FontUseFlg">(record) == 0 || CallEscape<"EscGetPageNumber">(hdc) != 0) return;
  const std::vector<FontMapEntry> map = BuildFontMap(record);
  if (map.empty()) return;
  const bool brief = AskDrawPath(hdc) == DrawPath::k556;
  SendEscapeBytes<"EscSetFontMap">(hdc, PackFontMap(map, brief));
}

}  // namespace

int OnPageDrawing(const DocumentEvent& event) {
  switch (event.event) {
    case DOCUMENTEVENT_STARTDOC:
      TellApplication(event.hdc);
      break;
    case DOCUMENTEVENT_STARTPAGE: {
      const auto record = FetchRecord(event.hdc);
      SendOverlay(event, *record);
      SendFontMap(event.hdc, *record);
      break;
    }
    case DOCUMENTEVENT_ENDPAGE: {
      const auto record = FetchRecord(event.hdc);
      if (Get<"Watermark_Use">(*record) != 0) DrawWatermark(event.hdc, *record, PrinterName(event.printer));
      break;
    }
    default:
      break;
  }
  return kGoOn;
}

}  // namespace heron

// A job whose form can't be made or used is cancelled before anything of it is printed.
#include "catalog/strings.h"
#include "escapes/job_dialogue.h"
#include "forms/form_check.h"
#include "forms/handlers.h"
#include "platform/document_events.h"
#include "platform/text.h"

namespace heron {
namespace {

using namespace platform;

enum : uint8_t { kMakeForm = 2, kUseForm = 3 };  ///< values of lpOverlay
constexpr uint8_t kPclJob = 1;                   ///< of lpPDLType
constexpr uint8_t kRasterMode = 2;               ///< of lpGraphicsMode

enum TextId : uint32_t {
  kPrintCaption = 29510,
  kMakeCaption = 29511,
  kBadForm = 29521,
  kColorForm = 29522,
  kCantMake = 29546,
};

int Refuse(HDC hdc, std::u16string_view text, TextId caption, DWORD icon) {
  ShowMessage(text, GetUiString(caption), MB_OK | icon);
  return CancelJob(hdc) ? kGoOn : kFailed;
}

}  // namespace

int OnOverlayCheck(const DocumentEvent& event) {
  if (event.event != DOCUMENTEVENT_STARTDOC) return kGoOn;
  const auto record = FetchJobRecord(event.hdc);
  if (record == nullptr) return kFailed;
  const StringsInUse texts;
  const uint8_t overlay = Get<"lpOverlay">(*record);
  if (overlay == kMakeForm && Get<"lpPDLType">(*record) == kPclJob && Get<"lpGraphicsMode">(*record) == kRasterMode) {
    return Refuse(event.hdc, GetUiString(kCantMake), kMakeCaption, MB_ICONINFORMATION);
  }
  if (overlay != kUseForm) return kGoOn;
  const std::u16string path = GetText<"overlayName">(*record);
  FormCheckTable table;
  FormExpectFromJob(table, *record);
  const FormFit fit = FormReadDescription(table, path) ? FormCompare(table) : FormFit::kNone;
  if (fit == FormFit::kFits) return kGoOn;
  const std::u16string name = ShortFormName(path);
  const TextId text = fit == FormFit::kNone ? kBadForm : kColorForm;
  return Refuse(event.hdc, ExpandText(GetUiString(text), {name}), kPrintCaption, MB_ICONEXCLAMATION);
}

}  // namespace heron

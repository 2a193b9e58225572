// A job whose form can't be made or used is cancelled before anything of it is printed.
#include "catalog/strings.h"
#include "escapes/job_dialogue.h"
#include "forms/form_check.h"
#include "forms/handlers.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/document_events.h"
#include "platform/api/text.h"

namespace heron {
namespace {

using namespace platform;

int Refuse(HDC hdc, std::u16string_view text, TextNumber caption, DWORD icon) {
  ShowMessage(text, GetUiString(caption), MB_OK | icon);
  return CancelJob(hdc) ? kGoOn : kFailed;
}

}  // namespace

int OnOverlayCheck(const DocumentEvent& event) {
  const auto record = FetchJobRecord(event.hdc);
  if (record == nullptr) return kFailed;
  const StringsInUse texts;
  const uint8_t overlay = Get<"lpOverlay">(*record);
  const bool vector_pcl = Get<"lpPDLType">(*record) == value::lpPDLType::kPcl5 &&
                          Get<"lpGraphicsMode">(*record) == value::lpGraphicsMode::kVector;
  if (overlay == value::lpOverlay::kCreateForm && vector_pcl) {
    return Refuse(event.hdc, GetUiString(text::kFormModeUnsupported), text::kCreateForm, MB_ICONINFORMATION);
  }
  if (overlay != value::lpOverlay::kPrintWithForm) return kGoOn;
  const std::u16string path = GetText<"overlayName">(*record);
  FormCheckTable table;
  FormExpectFromJob(table, *record);
  const FormFit fit = FormReadDescription(table, path) ? FormCompare(table) : FormFit::kNone;
  if (fit == FormFit::kFits) return kGoOn;
  const std::u16string name = ShortPath(path);
  const TextNumber text = fit == FormFit::kNone ? text::kFormUnusable : text::kFormInColor;
  return Refuse(event.hdc, ExpandText(GetUiString(text), {name}), text::kPrintWithForm, MB_ICONEXCLAMATION);
}

}  // namespace heron

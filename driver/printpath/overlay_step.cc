#include "printpath/overlay_step.h"

#include "catalog/other_values.h"
#include "escapes/job_dialogue.h"
#include "platform/api/files.h"
#include "platform/api/text.h"
#include "printpath/page_state.h"
#include "settings/printer_data.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

using namespace platform;

namespace overlay = value::lpOverlay;  // of the modes of the form block too

/// The job's form, and what the user is to be asked about it.
struct Form {
  uint8_t mode;
  std::u16string path;
  std::u16string caption;
  std::u16string prompt;
  uint32_t style;
};

template <size_t kRoom>
std::u16string_view TextOf(const char16_t (&text)[kRoom]) {
  return {text, std::find(text, text + kRoom - 1, u'\0')};
}

Form ReadForm(const DocumentEvent& event, const DriverEnv& record) {
  Form form{.mode = Get<"lpOverlay">(record),
            .path = GetText<"overlayName">(record),
            .caption = {},
            .prompt = {},
            .style = MB_YESNO};
  ListStoreSet set;
  set.overlays = std::make_unique<OverlayStore>();
  if (!WalkStore(set, ListStoreId::kOverlays, PrinterName(event.printer), WalkOp::kRead)) return form;
  const size_t number = std::min<size_t>(form.mode, kOverlayMessageCount);
  const OverlayMessage& message = set.overlays->messages[number - 1];
  const std::u16string_view path = form.path;
  const size_t name = path.find_last_of(kPathSeparator) + 1;  // 0 if there is no folder
  form.caption = TextOf(message.caption);
  form.prompt = ExpandText(TextOf(message.message), {path.substr(name)});
  form.style = message.style;
  return form;
}

bool UserWants(const Form& form) {
  const int answer = ShowMessage(form.prompt, form.caption, form.style);
  return answer == IDYES || answer == IDOK;
}

bool AsksFirst(const DriverEnv& record, uint8_t state_flag) {
  return Get<"OverlayPrompt">(record) != 0 || state_flag != 0;
}

void SendForm556(HDC hdc, const DriverEnv& record, const Form& form) {
  PageState state(hdc, DrawPath::k556);
  const bool refused = AsksFirst(record, state.At<uint8_t>(PageState556::kOverlayPrompt)) && !UserWants(form);
  if (refused) {
    state.Put(PageState556::kOverlaySkipped, uint8_t{1});
  } else {
    SendEscape<"EscSetFormPath">(hdc, WideText<kMaxPath>(form.path));
  }
  state.PutBack();
}

/// Size of the form's file; 0 if it can't be opened.
uint32_t FormSize(const std::u16string& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return 0;
  const uint32_t size = GetFileSize(file);
  CloseHandle(file);
  return size == INVALID_FILE_SIZE ? 0 : size;
}

void SendForm488(HDC hdc, const DriverEnv& record, const Form& form) {
  const PageState state(hdc, DrawPath::k488);
  uint8_t mode = form.mode;
  const uint32_t size = mode == overlay::kCreateForm ? 0 : FormSize(form.path);
  if (mode != overlay::kCreateForm && size == 0) mode = overlay::kNoOverlay;
  const bool asks = mode != overlay::kNoOverlay && AsksFirst(record, state.At<uint8_t>(PageState488::kOverlayPrompt));
  if (asks && !UserWants(form)) mode = overlay::kNoOverlay;
  std::array<uint8_t, FormBlock::kSize> block{};
  block[FormBlock::kMode] = mode;
  WriteTextAt(block, FormBlock::kPath, kMaxPath, form.path);
  WriteAt(std::span(block), FormBlock::kFileSize, size);
  SendEscape<"EscSetFormBlock">(hdc, block);
}

}  // namespace

void SendOverlay(const DocumentEvent& event, const DriverEnv& record) {
  const uint8_t mode = Get<"lpOverlay">(record);
  if (mode < overlay::kCreateForm || mode > overlay::kPrintWithFormAsking) return;
  if (CallEscape<"EscGetPageNumber">(event.hdc) != 0) return;
  const Form form = ReadForm(event, record);
  if (AskDrawPath(event.hdc) == DrawPath::k556) {
    SendForm556(event.hdc, record, form);
  } else {
    SendForm488(event.hdc, record, form);
  }
}

}  // namespace heron

#include "escapes/job_dialogue.h"

#include "escapes/send_escape.h"

namespace heron {

bool CancelJob(platform::HDC hdc) {
  return SendEscape<"EscSetCancelFlag">(hdc, uint8_t{1}) && SendEscape<"EscCancelJob">(hdc);
}

int ShowMessage(std::u16string_view text, std::u16string_view caption, platform::DWORD flags) {
  // Owner is the active window of the process, which the desk that shows the box knows.
  return platform::MessageBoxW(nullptr, std::u16string(text).c_str(), std::u16string(caption).c_str(), flags);
}

}  // namespace heron

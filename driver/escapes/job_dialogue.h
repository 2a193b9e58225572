// Asking the person in front of a job, and giving the job up.
#pragma once

#include <string>
#include <string_view>

#include "platform/api/message_box.h"
#include "platform/api/types.h"

namespace heron {

/// Informs the printing side that the user cancelled: the flag first, then the cancel. False if an escape failed.
bool CancelJob(platform::HDC hdc);

/// Shows the text `text` under the caption `caption` and returns the answer; 0 if no user can be asked.
int ShowMessage(std::u16string_view text, std::u16string_view caption, platform::DWORD flags);

}  // namespace heron

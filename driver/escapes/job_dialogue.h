// Asking the person in front of a job, and giving the job up.
#pragma once

#include <string>
#include <string_view>

#include "platform/api/message_box.h"
#include "platform/api/types.h"

namespace heron {

/// Tells the printing side that the user gave up: the flag first, then the cancel. False if an escape failed.
bool CancelJob(platform::HDC hdc);

/// Shows the text `text` under the caption `caption` and gives the answer; 0 if nobody can be asked.
int ShowMessage(std::u16string_view text, std::u16string_view caption, platform::DWORD flags);

}  // namespace heron

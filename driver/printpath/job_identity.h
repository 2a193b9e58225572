// The identifier that a job's device and its user's notifications have in common.
#pragma once

#include <string>
#include <string_view>

#include "platform/api/types.h"

namespace heron {

/// Machine part (12 digits) and time part (14 digits), upper-case hexadecimal: the first network adapter's address, or
/// "ACDE48" and a random number; month, day, hour, minute, second, milliseconds of the local time. Empty if the time
/// can't be had. Two jobs of one machine in one millisecond share it. Never longer than 31 characters.
std::u16string MakeJobId();

/// Hands the pair to the notification module of the driver directory, in the system's code page. What the module
/// returns; 0 if it wasn't called: there is none, or a text is empty.
int NotifyJob(platform::HANDLE printer, std::u16string_view job_id, std::u16string_view printer_name);

}  // namespace heron

// A fax on its way: the recipients' file to the printing side, and the time.
#pragma once

#include <cstdint>

#include "platform/api/types.h"

namespace heron {

/// Hands over the recipients of the file that the job names, and deletes it. Without such a number nothing is to be
/// done; a file that is gone cancels the fax. False if an escape fails or the file is cut short.
bool TransferAddressFile(platform::HDC hdc);

/// Sends the next moment at which it is `hour`:`minute`: today, the present minute included, or tomorrow. False if the
/// time can't be had or the escape fails.
bool SetScheduledTime(platform::HDC hdc, uint8_t hour, uint8_t minute);

}  // namespace heron

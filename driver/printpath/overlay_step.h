// The form of a job, handed over before its first page.
#pragma once

#include "escapes/job_blocks.h"

namespace heron {

/// Sends the form of the record, unless it has none, the job has begun, or the user, if asked, doesn't want it.
void SendOverlay(const DocumentEvent& event, const DriverEnv& record);

}  // namespace heron

// The work of DrvDocumentEvent.
#pragma once

#include "escapes/job_blocks.h"

namespace heron {

/// Runs the handlers that take the event, in their fixed order; the result of the first that doesn't say to go on.
/// May throw std::bad_alloc.
int HandleDocumentEvent(const DocumentEvent& event);

}  // namespace heron

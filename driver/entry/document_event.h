// The work of DrvDocumentEvent.
#pragma once

#include "escapes/job_blocks.h"

namespace heron {

/// Runs the chain of handlers for one event; the result of the first that doesn't say to go on, else that of the last.
/// May throw std::bad_alloc.
int HandleDocumentEvent(const DocumentEvent& event);

}  // namespace heron

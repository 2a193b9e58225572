// The handlers of a document's events that belong to forms and fax; entry/document_event.cc calls them in their fixed
// order. What printpath/handlers.h says of handlers holds for them.
#pragma once

#include "escapes/job_blocks.h"

namespace heron {

/// STARTDOC: the document's name for a fax. STARTPAGE, once: recipients, time, confirmation. Later events: the end of
/// the document, and the job's temporary files.
int OnFaxJob(const DocumentEvent& event);

/// STARTDOCPOST: a spool file, if the job wants one. ENDDOCPOST: its end.
int OnFaxSpoolFile(const DocumentEvent& event);

/// STARTDOC: a job that makes or uses an impossible form shows a message and is cancelled.
int OnOverlayCheck(const DocumentEvent& event);

}  // namespace heron

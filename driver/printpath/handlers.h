// The handlers of a document's events that print; entry/document_event.cc calls them in their fixed order.
//
// Each gets the events of its row there, and gives kGoOn, or the result that ends the event. None keeps anything
// between events: what it needs it asks of the printing side, and what a job has done already is known there. A user's
// Cancel is no failure.
#pragma once

#include "escapes/job_blocks.h"

namespace heron {

/// STARTDOC: the user's name, the cancel flag cleared, the start reported. STARTPAGE: the sizes of the user papers.
int OnUserIdentity(const DocumentEvent& event);

/// Keeps the choices of a spreadsheet program's user through the records that the program hands back.
int OnAppWorkarounds(const DocumentEvent& event);

/// STARTPAGE: the per-page list of the record and the texts of its tab sheets, once.
int OnPerPageLists(const DocumentEvent& event);

/// STARTDOC: the start of output reported. STARTDOCPOST: secure print and box are confirmed by the user if the job
/// wants it.
int OnOutputConfirmation(const DocumentEvent& event);

/// STARTDOCPOST: the job's identifier, for the printing side and the notification module.
int OnJobIdentity(const DocumentEvent& event);

/// STARTDOC: the user's lists are brought to this version, as the record refers to them.
int OnListReferences(const DocumentEvent& event);

/// Form and font map before the first page, the watermark at the end of a page. Never fails.
int OnPageDrawing(const DocumentEvent& event);

}  // namespace heron

// Prints one document like an application: sends the driver every document event; the printing half keeps the job.
#pragma once

#include <optional>
#include <string>

#include "common/command.h"
#include "common/record_file.h"
#include "renderdriver/job.h"
#include "terminal_desk.h"
#include "uistate/recipients.h"

namespace heron::spool {

struct PrintRequest {
  std::string printer;
  cli::Bytes record;     ///< the application's input; at least the public part
  std::string document;  ///< path, or "-"
  std::string folder;
  std::optional<AddressBlock> recipients;  ///< of a fax, in place of those in the file that the record names
  renderdriver::DrawPath path = renderdriver::DrawPath::k488;
};

/// What became of it.
struct PrintedJob {
  int pages = 0;
  size_t refused = 0;  ///< escapes that the printing side refused
  std::string id;
  std::string overlay;     ///< file in the folder, empty for none
  std::string fax;         ///< likewise
  bool merged = false;     ///< the form lies under the pages
  bool lacksForm = false;  ///< the driver left the record's form out, and nobody had declined it
  std::string form;        ///< the file of the form that was made instead of printed pages, empty for none
};

/// Prints and leaves the job's folder. Throws a Failure, and then leaves nothing: 3 for a job that was cancelled, 1 for
/// a document that can't be read or a driver that gave up, EndIfInterrupted's for one that was interrupted.
PrintedJob Print(const PrintRequest& request, const TerminalDesk& desk, Progress& progress);

}  // namespace heron::spool

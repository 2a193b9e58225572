// One document printed as an application prints it: the driver is told of every step, the printing side keeps the job.
#pragma once

#include <string>

#include "cli/command.h"
#include "cli/record_file.h"
#include "renderdriver/job.h"
#include "spool/terminal_desk.h"

namespace heron::spool {

struct PrintRequest {
  std::string printer;
  cli::Bytes record;     ///< as the application hands it in; at least the public part
  std::string document;  ///< path, or "-"
  std::string folder;
  renderdriver::DrawPath path = renderdriver::DrawPath::k488;
};

/// What became of it.
struct PrintedJob {
  int pages = 0;
  size_t refused = 0;  ///< escapes that the printing side refused
  std::string id;
  std::string overlay;  ///< file in the folder, empty for none
};

/// Prints and leaves the job's folder. Throws a Failure, and then leaves nothing: 3 for a job that was cancelled, 1 for
/// a document that can't be read or a driver that gave up.
PrintedJob Print(const PrintRequest& request, const TerminalDesk& desk);

/// What an interrupt's handler calls: the job ends before its next step.
void Interrupt();

}  // namespace heron::spool

// The job's ticket: what the job is, every setting by name, and every escape in order, as one JSON text.
//
// Secrets never reach it: the record's secret fields are written as "***", and no escape's contents hold any.
#pragma once

#include <string>

#include "renderdriver/job.h"

namespace heron::renderdriver {

/// What the job's folder holds: names of files, empty for none.
struct TicketFiles {
  std::string pages = {};
  std::string overlay = {};
  std::string fax = {};
  bool isMerged = false;  ///< the overlay lies under the pages
};

/// One line for each escape.
std::string Ticket(const Job& job, const TicketFiles& files);

}  // namespace heron::renderdriver

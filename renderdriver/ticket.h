// The job's ticket: what the job is, every setting by name, and every escape in order, as one JSON text.
//
// Secrets never reach it: the record's secret fields are written as "***", and no escape's contents hold any.
#pragma once

#include <string>

#include "renderdriver/job.h"

namespace heron::renderdriver {

/// One line for each escape. `pages_file` and `overlay_file` are names in the job's folder, empty for none.
std::string Ticket(const Job& job, const std::string& pages_file, const std::string& overlay_file);

}  // namespace heron::renderdriver

// The job's ticket: what the job is, every setting by name, and every escape in order, as one JSON text.
//
// Secrets never reach it: the record's secret fields are written as "***", and no escape's contents hold any.
#pragma once

#include <string>

#include "renderdriver/job.h"

namespace heron::renderdriver {

/// Names of the files in the job's folder, empty for none.
struct JobFiles {
  std::string pages;
  std::string overlay;
  std::string fax;
};

/// One line for each escape.
std::string Ticket(const Job& job, const JobFiles& files);

}  // namespace heron::renderdriver

// What an escape carried, for the ticket: the contents decoded so that a person can follow. `bytes` has the size of
// the escape's row. Nothing secret travels in what is told here: the job's record, which holds the secrets, is told
// once, masked (ticket.h).
#pragma once

#include <span>

#include "renderdriver/job.h"

namespace heron::renderdriver {

Json TellText(std::span<const uint8_t> bytes);
Json TellNumber(std::span<const uint8_t> bytes);     ///< of as many bytes as there are
Json TellNumbers32(std::span<const uint8_t> bytes);  ///< one after another
Json TellSize(std::span<const uint8_t> bytes);       ///< of what is opaque
Json TellUserPapers(std::span<const uint8_t> bytes);
Json TellPageList(std::span<const uint8_t> bytes);
Json TellAddresses(std::span<const uint8_t> bytes);
Json TellFaxTime(std::span<const uint8_t> bytes);
Json TellFaxStatus(std::span<const uint8_t> bytes);
Json TellCoverFile(std::span<const uint8_t> bytes);
Json TellFormBlock(std::span<const uint8_t> bytes);
Json TellJobState(std::span<const uint8_t> bytes);
/// The stamp's fields of either page state.
Json TellPageState(std::span<const uint8_t> bytes);

}  // namespace heron::renderdriver

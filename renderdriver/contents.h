// The contents of an escape, decoded for the ticket. `bytes` has the size of the escape's row. These contents hold no
// secrets: the job's record, which does, is written once, masked (ticket.h).
#pragma once

#include <span>

#include "renderdriver/job.h"

namespace heron::renderdriver {

Json DescribeText(std::span<const uint8_t> bytes);
Json DescribeNumber(std::span<const uint8_t> bytes);     ///< of as many bytes as there are
Json DescribeNumbers32(std::span<const uint8_t> bytes);  ///< one after another
Json DescribeSize(std::span<const uint8_t> bytes);       ///< of what is opaque
Json DescribeUserPapers(std::span<const uint8_t> bytes);
Json DescribePageList(std::span<const uint8_t> bytes);
Json DescribeAddresses(std::span<const uint8_t> bytes);
Json DescribeFaxTime(std::span<const uint8_t> bytes);
Json DescribeFaxStatus(std::span<const uint8_t> bytes);
Json DescribeCoverFile(std::span<const uint8_t> bytes);
Json DescribeFormBlock(std::span<const uint8_t> bytes);
Json DescribeJobState(std::span<const uint8_t> bytes);
/// The stamp's fields of either page state.
Json DescribePageState(std::span<const uint8_t> bytes);

}  // namespace heron::renderdriver

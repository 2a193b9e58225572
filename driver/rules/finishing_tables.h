// What can be stapled, punched and folded of each paper, and which papers run short edge first.
//
// Constant, made at compile time.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "rules/controls.h"

namespace heron::engine {

struct FinishCapabilityRow {
  uint16_t paper = 0;
  std::array<uint8_t, 3> codes{};  ///< staple uses one, punch one for 2, 3 and 4 holes, fold two
  RuleTerm condition;              ///< control kNoControl if the row always counts
};

/// Every row in the order of the table; the first row of a paper whose condition holds gives its code.
std::span<const FinishCapabilityRow> StapleCapabilities();
std::span<const FinishCapabilityRow> PunchCapabilities();
std::span<const FinishCapabilityRow> FoldCapabilities();

/// Whether the paper runs through the machine short edge first.
bool IsRotatedFeed(uint16_t paper);

/// The codes for which it does; for listings and checks.
std::span<const uint16_t> RotatedFeedPapers();

}  // namespace heron::engine

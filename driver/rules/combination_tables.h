// The pair and triple rules, sorted and indexed by what has just changed.
//
// Constant, made at compile time, shared by all threads; there is nothing to build when a UiState is opened.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "rules/controls.h"

namespace heron::engine {

/// When every operand holds, the control of `target` must take its value. The first operand is the control just
/// changed.
template <size_t kOperands>
struct CombinationRule {
  std::array<RuleTerm, kOperands> when;
  RuleTerm target;
};
using PairRule = CombinationRule<2>;
using TripleRule = CombinationRule<3>;

/// The rules whose first operand is this control with this value, in the order of the table; empty if there are none.
std::span<const PairRule> PairRulesOf(ControlIndex control, int32_t value);
std::span<const TripleRule> TripleRulesOf(ControlIndex control, int32_t value);

/// Every rule, by first control and first value; for listings and checks.
std::span<const PairRule> AllPairRules();
std::span<const TripleRule> AllTripleRules();

}  // namespace heron::engine

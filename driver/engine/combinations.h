// What a change and a list have in common when they ask the pair and triple rules.
//
// No rule names a paper as one of its other operands, so those are read as they are; the first operand is read through
// EffectiveRuleValue.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "engine/engine.h"
#include "rules/combination_tables.h"
#include "rules/dialogs.h"

namespace heron::engine {

/// What a rule sees of the value of a control: a paper counts as the sheet that is really printed, and every custom
/// paper as 256.
uint16_t EffectiveRuleValue(const Engine& engine, ControlIndex control, uint16_t value);

inline bool IsDevice(ControlIndex control) {
  return kControls[control].dialog == dialog::kDevicePage;
}

/// The operands of a rule but for the first, which is the control that was changed or whose list is checked.
template <size_t kOperands>
std::span<const RuleTerm> OthersOf(const CombinationRule<kOperands>& rule) {
  return std::span(rule.when).subspan(1);
}

inline bool OthersHold(const Engine& engine, std::span<const RuleTerm> others) {
  return std::ranges::all_of(others, [&](const RuleTerm& term) { return engine.Holds(term); });
}

inline bool OperandsUsable(const Engine& engine, const TripleRule& rule) {
  return std::ranges::all_of(rule.when, [&](const RuleTerm& term) { return engine.Usable(term.control); });
}

}  // namespace heron::engine

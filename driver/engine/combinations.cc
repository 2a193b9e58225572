// The pair and triple rules as a list sees them (item_checks.h).
#include "engine/combinations.h"

#include <algorithm>

#include "engine/item_checks.h"
#include "engine/paper_in_force.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");

bool IsParent(ControlIndex control, ControlIndex child) {
  return GetRuleParent(kControls[child].id) == kControls[control].id;
}

}  // namespace

uint16_t EffectiveRuleValue(const Engine& engine, ControlIndex control, uint16_t value) {
  if (control != kOutputPaper && control != kMediaSize) return value;
  const bool printed = control == kOutputPaper || engine.Holds(kOutputPaper, kSameAsDocument);
  const bool combined = engine.IsOn(Control(u"POD_Check")) && engine.IsOn(Control(u"POD_OnePerSheet_Check"));
  if (printed && (combined || engine.Holds(Control(u"lpPRNType"), value::lpPRNType::kBooklet)))
    value = DoubledPaper(value);
  return NormalisedPaper(value);
}

bool ForbiddenByPairs(const Engine& engine, ControlIndex control, uint16_t value) {
  const auto rules = PairRulesOf(control, static_cast<int16_t>(EffectiveRuleValue(engine, control, value)));
  if (rules.empty() || kControls[control].fixed || !engine.Usable(control)) return false;
  return std::ranges::any_of(rules, [&](const PairRule& rule) {
    if (!engine.Holds(rule.when[1])) return false;
    const ControlIndex second = rule.when[1].control;
    if (!engine.Usable(second)) return IsDevice(second);
    return !IsDevice(control) || (IsDevice(second) && !IsParent(control, second));
  });
}

bool ForbiddenByTriples(const Engine& engine, ControlIndex control, uint16_t value) {
  const auto rules = TripleRulesOf(control, static_cast<int16_t>(EffectiveRuleValue(engine, control, value)));
  if (rules.empty() || kControls[control].fixed) return false;
  return std::ranges::any_of(rules, [&](const TripleRule& rule) {
    const auto others = OthersOf(rule);
    if (!OthersHold(engine, others) || !OperandsUsable(engine, rule)) return false;
    return !IsDevice(control) || std::ranges::all_of(others, [&](const RuleTerm& other) {
      return IsDevice(other.control) && !IsParent(control, other.control);
    });
  });
}

}  // namespace heron::engine

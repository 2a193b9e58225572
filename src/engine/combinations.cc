// The pair and triple rules, as a change sees them and as a list does; and the checks at the start of a pass.
//
// No rule names a paper as one of its other operands, so that those are read as they are; the first operand is read
// through EffectiveRuleValue.
#include <algorithm>

#include "engine/change.h"
#include "engine/combination_tables.h"
#include "engine/item_checks.h"
#include "engine/paper_in_force.h"
#include "engine/paper_rule_tables.h"

namespace heron::engine {
namespace {

constexpr uint16_t kDeviceDialog = 800;
constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");

bool IsDevice(ControlIndex control) {
  return kControls[control].dialog == kDeviceDialog;
}

template <size_t kOperands>
std::span<const RuleTerm> OthersOf(const CombinationRule<kOperands>& rule) {
  return std::span(rule.when).subspan(1);
}

bool OthersHold(const Engine& engine, std::span<const RuleTerm> others) {
  return std::ranges::all_of(others, [&](const RuleTerm& term) { return engine.Holds(term); });
}

enum class Standing { kSkip, kDevice, kPlain };

/// A device option that has just changed also rules controls whose gate it has closed, but no list below a parent.
Standing StandingOf(const Engine& engine, ControlIndex changed, ControlIndex target) {
  const uint16_t id = kControls[target].id;
  if (IsDevice(target) || !IsDevice(changed) || IsDeviceGateOpen(engine, id)) return Standing::kPlain;
  const bool list_below = GetRuleParent(id) != 0 && kControls[target].type == ControlType::kList;
  return list_below ? Standing::kSkip : Standing::kDevice;
}

/// Device options needn't be usable to rule the others.
bool OperandsUsable(const Engine& engine, const PairRule& rule) {
  const ControlIndex first = rule.when[0].control;
  const ControlIndex second = rule.when[1].control;
  if (!IsDevice(second) && !engine.Usable(second)) return false;
  const bool first_counts = !IsDevice(first) || IsDevice(second);
  return !first_counts || engine.Usable(first);
}

bool OperandsUsable(const Engine& engine, const TripleRule& rule) {
  return std::ranges::all_of(rule.when, [&](const RuleTerm& term) { return engine.Usable(term.control); });
}

/// The rule would take back what the user has just set: what else it rests on stands in the way.
void Oppose(const Engine& engine, const ChangeRequest& request, RuleTerm target, std::span<const RuleTerm> others,
            ChangeLog& log) {
  for (const RequestRow& row : request.UserRows()) {
    if (row.control != target.control || row.oldValue != static_cast<uint16_t>(target.value)) continue;
    for (const RuleTerm& other : others) {
      if (!IsDevice(other.control) && !IsUserRow(request, other.control))
        AddOpposition(log, other.control, engine.Value(other.control));
    }
  }
}

template <typename Rule>
void ApplyRule(const Engine& engine, const ChangeRequest& request, const Rule& rule, Reason reason, ChangeLog& log) {
  if (!OthersHold(engine, OthersOf(rule))) return;
  const Standing standing = StandingOf(engine, rule.when[0].control, rule.target.control);
  if (standing == Standing::kSkip) return;
  if (standing == Standing::kPlain && !OperandsUsable(engine, rule)) return;
  AddEntry(engine, log, rule.target.control, static_cast<uint16_t>(rule.target.value),
           standing == Standing::kDevice ? Reason::kDevice : reason);
  Oppose(engine, request, rule.target, OthersOf(rule), log);
}

int32_t RuleValue(const Engine& engine, const RequestRow& row) {
  return static_cast<int16_t>(EffectiveRuleValue(engine, row.control, row.newValue));
}

bool IsParent(ControlIndex control, ControlIndex child) {
  return GetRuleParent(kControls[child].id) == kControls[control].id;
}

}  // namespace

uint16_t EffectiveRuleValue(const Engine& engine, ControlIndex control, uint16_t value) {
  if (control != kOutputPaper && control != kMediaSize) return value;
  const bool printed = control == kOutputPaper || engine.Holds(kOutputPaper, kSameAsDocument);
  const bool combined = engine.Holds(Control(u"POD_Check"), 1) && engine.Holds(Control(u"POD_OnePerSheet_Check"), 1);
  if (printed && (combined || engine.Holds(Control(u"lpPRNType"), 3))) value = DoubledPaper(value);
  return NormalisedPaper(value);
}

void ApplyPairRules(const Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  for (const RequestRow& row : request.Rows()) {
    for (const PairRule& rule : PairRulesOf(row.control, RuleValue(engine, row)))
      ApplyRule(engine, request, rule, Reason::kPair, log);
  }
}

void ApplyTripleRules(const Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  for (const RequestRow& row : request.Rows()) {
    for (const TripleRule& rule : TripleRulesOf(row.control, RuleValue(engine, row)))
      ApplyRule(engine, request, rule, Reason::kTriple, log);
  }
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

bool VerifyChapter(const Engine& engine, ChangeLog& log) {
  constexpr ControlIndex kChapter = Control(u"Chapter_Check");
  if (engine.Available(kChapter) || !engine.Holds(Control(u"lpPRNType"), 1) || !engine.Holds(kChapter, 1)) return false;
  return AddEntry(engine, log, kChapter, 0, Reason::kChapter);
}

bool CheckDoubleOnlyPaper(const Engine& engine, ChangeLog& log) {
  const int32_t replacement = PaperSubstitute(PaperInForce(engine));
  if (SheetHoldsTwoPages(engine) || replacement < 0) return false;
  return AddEntry(engine, log, kOutputPaper, static_cast<uint16_t>(replacement), Reason::kDoubleOnly);
}

void AddPaperToRequest(const Engine& engine, ChangeRequest& request) {
  const bool undoubled = std::ranges::any_of(request.UserRows(), [&](const RequestRow& row) {
    if (row.control == Control(u"POD_OnePerSheet_Check")) return row.newValue == 0;
    if (row.control == Control(u"POD_Check"))
      return row.newValue == 0 && engine.Holds(Control(u"POD_OnePerSheet_Check"), 1);
    return row.control == Control(u"lpPRNType") && row.newValue != 3;
  });
  if (!undoubled || FindRow(request, kMediaSize) != nullptr || FindRow(request, kOutputPaper) != nullptr) return;
  const ControlIndex paper = engine.Holds(kOutputPaper, kSameAsDocument) ? kMediaSize : kOutputPaper;
  AppendRow(request, paper, engine.Value(paper), engine.Value(paper));
}

}  // namespace heron::engine

// The pair and triple rules as a change sees them, and the checks at the start of a pass.
#include <algorithm>

#include "changes/change.h"
#include "engine/combinations.h"
#include "engine/paper_in_force.h"
#include "generated/values.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");

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

/// The rule would take back what the user has just set: what else it depends on opposes the change.
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

}  // namespace

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

bool VerifyChapter(const Engine& engine, ChangeLog& log) {
  constexpr ControlIndex kChapter = Control(u"Chapter_Check");
  if (engine.Available(kChapter) || !engine.Holds(Control(u"lpPRNType"), value::lpPRNType::kOneSided) ||
      !engine.IsOn(kChapter))
    return false;
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
      return row.newValue == 0 && engine.IsOn(Control(u"POD_OnePerSheet_Check"));
    return row.control == Control(u"lpPRNType") && row.newValue != value::lpPRNType::kBooklet;
  });
  if (!undoubled || FindRow(request, kMediaSize) != nullptr || FindRow(request, kOutputPaper) != nullptr) return;
  const ControlIndex paper = engine.Holds(kOutputPaper, kSameAsDocument) ? kMediaSize : kOutputPaper;
  AppendRow(request, paper, engine.Value(paper), engine.Value(paper));
}

}  // namespace heron::engine

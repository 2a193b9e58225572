// The paper rules, as a change sees them and as a list does.
#include <algorithm>

#include "engine/change.h"
#include "engine/item_checks.h"
#include "engine/paper_in_force.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kCopies = Control(u"Copies");
constexpr ControlIndex kPrintType = Control(u"lpPRNType");

bool HasPaper(std::span<const uint16_t> papers, uint16_t paper) {
  return std::ranges::find(papers, paper) != papers.end();
}

uint16_t Flipped(uint16_t orientation) {
  return orientation == 1 ? 2 : 1;
}

/// One run of the groups for a change: what was asked for, and what is found.
struct PaperRun {
  Engine& engine;
  const ChangeRequest& request;
  ChangeLog& log;
};

bool IsFlagged(const Engine& engine, const PaperChange& group, ControlIndex control, uint16_t paper) {
  if (!engine.Available(control) && group.extra != PaperExtra::kFreeControl) return false;
  return std::ranges::any_of(PaperRules(), [&](const PaperRule& rule) {
    return rule.group == group.group && engine.Holds(control, rule.value) && RuleCounts(engine, rule) &&
           !HasPaper(rule.papers, paper);
  });
}

void OpposePaper(const PaperRun& run) {
  const Engine& engine = run.engine;
  if (engine.Holds(kOutputPaper, kSameAsDocument)) AddOpposition(run.log, kMediaSize, engine.Value(kMediaSize));
  AddOpposition(run.log, kOutputPaper, engine.Value(kOutputPaper));
}

void SetToDefault(const PaperRun& run, ControlIndex control) {
  AddEntry(run.engine, run.log, control, run.engine.Default(control), Reason::kPaperOrFinishing);
}

void GiveWay(const PaperRun& run, const PaperChange& group, ControlIndex control) {
  const Engine& engine = run.engine;
  if (group.opposes == Opposes::kAlways) {
    OpposePaper(run);
    AddOpposition(run.log, control, engine.Value(control));
  } else if (group.opposes == Opposes::kFirstChanged && run.request.First() == control) {
    OpposePaper(run);
  }
  if (group.extra == PaperExtra::kSwitchOff)
    AddEntry(engine, run.log, Control(u"POD_OnePerSheet_Check"), 0, Reason::kPaperOrFinishing);
  else if (group.extra == PaperExtra::kResetTray && engine.mode != ResolveMode::kSingle)
    SetToDefault(run, SourceOfMirror(control));
  else
    SetToDefault(run, control);
}

/// More than one copy and such a control exclude each other; the one that was just changed loses.
void CheckAgainstCopies(const PaperRun& run, const PaperChange& group) {
  const Engine& engine = run.engine;
  for (const ControlIndex control : PaperGroupControls(group.group)) {
    const bool named = std::ranges::any_of(PaperRules(), [&](const PaperRule& rule) {
      return rule.group == group.group && engine.Holds(control, rule.value);
    });
    if (!named || !engine.Available(control) || engine.Holds(kCopies, 1)) continue;
    const bool copies_lose = run.request.First() == kCopies;
    const ControlIndex loser = copies_lose ? kCopies : control;
    const ControlIndex winner = copies_lose ? control : kCopies;
    AddOpposition(run.log, winner, engine.Value(winner));
    SetToDefault(run, loser);
  }
}

void CheckGroup(const PaperRun& run, const PaperChange& group) {
  const uint16_t plain = PaperInForce(run.engine);
  const uint16_t paper = group.doubled && SheetHoldsTwoPages(run.engine) ? DoubledPaper(plain) : plain;
  for (const ControlIndex control : PaperGroupControls(group.group)) {
    if (IsFlagged(run.engine, group, control, paper)) GiveWay(run, group, control);
  }
}

}  // namespace

bool RuleCounts(const Engine& engine, const PaperRule& rule) {
  const ControlIndex control = rule.condition.control;
  return control == kNoControl || (engine.Available(control) && engine.Holds(rule.condition));
}

EdgeFinding FindEdge(const Engine& engine, EdgeRule rule, ControlIndex list, uint16_t item) {
  const auto edge = std::ranges::find(kEdgeCorrections, rule, &EdgeCorrection::rule);
  if (edge == kEdgeCorrections.end()) return {};
  const uint16_t value = edge->control == list ? item : engine.Value(edge->control);
  const bool on1 = std::ranges::count(edge->edge1, value) != 0;
  const bool on2 = std::ranges::count(edge->edge2, value) != 0;
  bool applies = false;
  if (rule == EdgeRule::kBooklet) applies = engine.Holds(kPrintType, 3);
  if (rule == EdgeRule::kAdhesive) applies = *FieldsOf(*engine.ui, ParamNamed<u"AdhesiveBind_Check">()).value == 1;
  if (rule == EdgeRule::kCombination) applies = engine.Holds(Control(u"POD_OnePerSheet_Check"), 1);
  if (!applies || (!on1 && !on2)) return {};

  uint16_t orientation = engine.Value(Control(u"lpOrientation.106"));
  const uint16_t layout = engine.Value(Control(u"lpLayout.125"));
  if (engine.Available(Control(u"lpLayout.125")) && (layout == 5 || layout == 8)) orientation = Flipped(orientation);
  orientation = Flipped(orientation);
  if (orientation == 1 && on1) return {edge->control, static_cast<uint16_t>(edge->instead1)};
  if (orientation == 2 && on2) return {edge->control, static_cast<uint16_t>(edge->instead2)};
  return {};
}

void ApplyPaperRules(Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  const PaperRun run = {engine, request, log};
  for (const PaperChange& group : kPaperChanges) {
    if (group.extra == PaperExtra::kAgainstCopies)
      CheckAgainstCopies(run, group);
    else
      CheckGroup(run, group);
    const EdgeFinding edge = FindEdge(engine, group.edge);
    if (edge.control != kNoControl) AddEntry(engine, log, edge.control, edge.instead, Reason::kPaperOrFinishing);
  }
}

ItemPaperCheck::ItemPaperCheck(const Engine& engine, ControlIndex list)
    : engine_(engine), list_(list), two_pages_(SheetHoldsTwoPages(engine)) {
  for (const PaperItem& group : kPaperItems) {
    const bool for_all = group.lists == kAllLists;
    if (for_all || std::ranges::count(group.lists, list) != 0) AddGroup(group);
  }
  edges_ = std::ranges::count(kEdgeCorrections, list, &EdgeCorrection::control) != 0;
}

bool ItemPaperCheck::IsPaperList() const {
  return list_ == kMediaSize || list_ == kOutputPaper;
}

/// A list of papers is checked against every control of the group, any other list against its own values.
void ItemPaperCheck::AddGroup(const PaperItem& group) {
  const auto controls = PaperGroupControls(group.group);
  if (IsPaperList()) {
    for (const ControlIndex control : controls) AddControl(group, control);
  } else if (group.forbidsOwn && std::ranges::count(controls, list_) != 0) {
    AddControl(group, list_);
  }
}

void ItemPaperCheck::AddControl(const PaperItem& group, ControlIndex control) {
  constexpr uint8_t kPrintTypeGroup = 6;  // counts as available
  if (!engine_.Available(control) && group.group != kPrintTypeGroup) return;
  for (const PaperRule& rule : PaperRules()) {
    if (rule.group != group.group || !RuleCounts(engine_, rule)) continue;
    if (IsPaperList() && !engine_.Holds(control, rule.value)) continue;
    sets_.at(count_++) = {rule.value, group.doubled, rule.papers};
  }
}

uint16_t ItemPaperCheck::PaperFor(uint16_t value) const {
  return PaperOf(list_ == kOutputPaper ? value : engine_.Value(kOutputPaper),
                 list_ == kMediaSize ? value : engine_.Value(kMediaSize));
}

bool ItemPaperCheck::Forbids(uint16_t value) const {
  if (count_ != 0) {
    const uint16_t plain = PaperFor(value);
    const uint16_t doubled = two_pages_ ? DoubledPaper(plain) : plain;
    for (const PaperSet& set : std::span(sets_).first(count_)) {
      const bool counts = IsPaperList() || set.value == static_cast<int16_t>(value);
      if (counts && !HasPaper(set.papers, set.doubled ? doubled : plain)) return true;
    }
  }
  return edges_ && std::ranges::any_of(kPaperItems, [&](const PaperItem& group) {
           return FindEdge(engine_, group.edge, list_, value).control == list_;
         });
}

}  // namespace heron::engine

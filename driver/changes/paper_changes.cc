// The paper rules as a change sees them: which settings give way to a paper.
#include <algorithm>

#include "changes/change.h"
#include "engine/item_checks.h"
#include "engine/paper_in_force.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kCopies = Control(u"Copies");

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

}  // namespace heron::engine

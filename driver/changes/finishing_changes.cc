// Finishing as a change sees it: what must give way to the geometry.
#include <algorithm>

#include "changes/change.h"
#include "engine/finishing.h"
#include "generated/values.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kStapleCheck = Control(u"Staple_Check");
constexpr ControlIndex kStaple = Control(u"lpStaple");
constexpr ControlIndex kPunchCheck = Control(u"Punch_Check");
constexpr ControlIndex kBindPosit = Control(u"lpBindPosit");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kCombination = Control(u"POD_OnePerSheet_Check");

void Log(const Engine& engine, ChangeLog& log, ControlIndex control, uint16_t value) {
  AddEntry(engine, log, control, value, Reason::kPaperOrFinishing);
}

void OpposePaper(const Engine& engine, ChangeLog& log) {
  if (engine.Holds(kOutputPaper, kSameAsDocument)) AddOpposition(log, kMediaSize, engine.Value(kMediaSize));
  AddOpposition(log, kOutputPaper, engine.Value(kOutputPaper));
}

void OpposeBinding(const Engine& engine, ChangeLog& log) {
  AddOpposition(log, kBindPosit, engine.Value(kBindPosit));
}

bool IsEdge(uint8_t verdict) {
  return verdict == kEdge1 || verdict == kEdge2;
}

void FollowStapleVerdict(const Engine& engine, const ChangeRequest& request, FinishContext& context, ChangeLog& log) {
  const Verdicts& verdicts = context.staples;
  const ControlIndex first = request.First();
  if (HasEdgeConflict(context, verdicts) || verdicts[1] == kNever) {
    if (IsEdge(verdicts[0]) || IsEdge(verdicts[1])) {
      context.stapleInstead = StapleForEdge(context);
      return Log(engine, log, kStaple, context.stapleInstead);
    }
    if (first == kStapleCheck) OpposeBinding(engine, log);
    Log(engine, log, kStapleCheck, 0);
  } else if (verdicts[0] == kImpossible) {
    Log(engine, log, kStapleCheck, 0);
    if (first == kStapleCheck || (request.userCount == 2 && first == kStaple)) OpposePaper(engine, log);
  }
}

/// Carries out a fold's verdict. `fold` is the check box of the fold, which gives way where what it asks of the others
/// would take back the user's own change.
void FollowFoldVerdict(const Engine& engine, const ChangeRequest& request, FoldVerdict verdict, ControlIndex fold,
                       ChangeLog& log) {
  if (verdict == FoldVerdict::kNone) return;
  const bool fold_available = engine.Available(fold);
  RuleTerm target = {kNoControl, 0};
  if (verdict == FoldVerdict::kPrintType) target = {Control(u"lpPRNType"), value::lpPRNType::kOneSided};
  if (verdict == FoldVerdict::kCombination && engine.Available(kCombination)) target = {kCombination, 0};
  if (verdict == FoldVerdict::kFold && fold_available) target = {fold, 0};
  if (target.control == kNoControl) return;
  if (IsUserRow(request, target.control)) {
    if (verdict == FoldVerdict::kFold)
      OpposePaper(engine, log);
    else if (fold_available)
      target = {fold, 0};
  }
  Log(engine, log, target.control, static_cast<uint16_t>(target.value));
}

}  // namespace

void ResolveStaple(const Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  FinishContext context = MakeFinishContext(engine);
  if (!IsLooseSheets(context)) return;
  StaplePrecheck(context);
  if (engine.Available(kStapleCheck) && engine.Available(kStaple)) {
    ApplyPaperGeometry(engine, context);
    StapleVerdict(engine, context);
    FollowStapleVerdict(engine, request, context, log);
  }
  if (context.staples[0] == kPosition) Log(engine, log, kStaple, context.stapleInstead);
}

void ResolvePunch(const Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  FinishContext context = MakeFinishContext(engine);
  if (!IsLooseSheets(context) || !context.punching) return;
  ApplyPaperGeometry(engine, context);
  PunchVerdict(engine, context);
  const Verdicts& verdicts = context.punches;
  const bool asked = request.First() == kPunchCheck;
  if (verdicts[0] == kNever || verdicts[0] == kImpossible) {
    if (asked) OpposePaper(engine, log);
    Log(engine, log, kPunchCheck, 0);
  } else if (HasEdgeConflict(context, verdicts) || verdicts[1] == kNever) {
    if (asked) OpposeBinding(engine, log);
    Log(engine, log, kPunchCheck, 0);
  }
}

void ResolveFoldStaple(const Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  FollowFoldVerdict(engine, request, JudgeFoldStaple(engine, MakeFinishContext(engine)), Control(u"FoldStaple_Check"),
                    log);
}

void ResolveFold(const Engine& engine, const ChangeRequest& request, ChangeLog& log) {
  FollowFoldVerdict(engine, request, JudgeFold(engine, MakeFinishContext(engine)), Control(u"Fold_Check"), log);
}

}  // namespace heron::engine

// Finishing and trays as a list sees them.
#include "engine/item_checks.h"
#include "generated/values.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kPerPageStaple = Control(u"lpInterSheetListStaple");
constexpr ControlIndex kPerPagePunch = Control(u"lpInterSheetListPunch");
constexpr ControlIndex kInterleaveTray = Control(u"lpOIPaperTray");

}  // namespace

ItemFinishCheck::ItemFinishCheck(const Engine& engine, ControlIndex list)
    : engine_(engine),
      list_(list),
      of_paper_(list == Control(u"lpMediaSize") || list == Control(u"lpOutputPaper")),
      of_staple_(list == Control(u"lpStaple") || list == kPerPageStaple),
      of_punch_(list == Control(u"lpPunchHoles") || list == kPerPagePunch),
      of_fold_staple_(list == Control(u"lpFoldStaple")),
      of_fold_(list == Control(u"lpFold")),
      active_(of_paper_ || of_staple_ || of_punch_ || of_fold_staple_ || of_fold_) {}

bool ItemFinishCheck::Forbids(uint16_t value) const {
  if (list_ == kInterleaveTray)
    return engine_.Available(list_) && MediaOfTray(engine_, value).mediaType == value::lpMediaType::kTransparency;
  if (!active_) return false;
  const FinishContext context = MakeFinishContext(engine_, list_, value);
  return ((of_paper_ || of_staple_) && StapleForbids(context)) || ((of_paper_ || of_punch_) && PunchForbids(context)) ||
         ((of_paper_ || of_fold_staple_) && JudgeFoldStaple(engine_, context) != FoldVerdict::kNone) ||
         ((of_paper_ || of_fold_) && JudgeFold(engine_, context) != FoldVerdict::kNone);
}

bool ItemFinishCheck::StapleForbids(FinishContext context) const {
  if (!IsLooseSheets(context)) return false;
  StaplePrecheck(context);
  if (of_staple_ && context.staples[0] == kPosition) return true;
  const bool page_staples = engine_.Available(Control(u"Staple_Check")) && engine_.Available(Control(u"lpStaple"));
  if (!(list_ == kPerPageStaple ? context.stapling : page_staples)) return false;
  ApplyPaperGeometry(engine_, context);
  StapleVerdict(engine_, context);
  const Verdicts& verdicts = context.staples;
  if (!HasEdgeConflict(context, verdicts) && verdicts[1] != kNever) return of_paper_ && verdicts[0] == kImpossible;
  const auto is_edge = [](uint8_t verdict) { return verdict == kEdge1 || verdict == kEdge2; };
  return of_staple_ && (is_edge(verdicts[0]) || is_edge(verdicts[1]));
}

bool ItemFinishCheck::PunchForbids(FinishContext context) const {
  if (!IsLooseSheets(context) || !context.punching) return false;
  ApplyPaperGeometry(engine_, context);
  PunchVerdict(engine_, context);
  const Verdicts& verdicts = context.punches;
  if (verdicts[0] == kNever || verdicts[0] == kImpossible) return of_paper_;
  return of_punch_ && (HasEdgeConflict(context, verdicts) || verdicts[1] == kNever);
}

}  // namespace heron::engine

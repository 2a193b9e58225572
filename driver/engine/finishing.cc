// The geometry of finishing.
#include "engine/finishing.h"

#include <algorithm>
#include <span>

#include "catalog/other_values.h"
#include "engine/paper_in_force.h"
#include "rules/dialogs.h"
#include "rules/finishing_tables.h"
#include "rules/paper_rule_tables.h"
#include "settings/binding.h"

namespace heron::engine {
namespace {

namespace bind = value::lpBindPosit;
namespace orientation = value::lpOrientation;
namespace print_type = value::lpPRNType;
namespace row_punch = value::lpInterSheetListPunch;
namespace row_staple = value::lpInterSheetListStaple;
namespace staple = value::lpStaple;

constexpr ControlIndex kPerPageStaple = Control(u"lpInterSheetListStaple");
constexpr ControlIndex kPerPagePunch = Control(u"lpInterSheetListPunch");
constexpr ControlIndex kPunch = Control(u"Punch_Check");
/// Codes of the tables of capabilities. A code means another thing in each.
namespace staple_code {
constexpr uint16_t kAnywhereUnfolded = 0, kNotTwoAlongEdge = 1, kNever = 3;
}
namespace punch_code {
constexpr uint16_t kNotAlongEdge = 1, kNotWithStaples = 3, kNever = 4;
}
namespace fold_code {
constexpr uint16_t kSinglePages = 1, kTwoPages = 2, kNever = 3;
}

uint16_t CodeOf(const Engine& engine, std::span<const FinishCapabilityRow> rows, uint16_t paper, size_t column) {
  const auto row = std::ranges::find_if(rows, [&](const FinishCapabilityRow& r) {
    return r.paper == paper && (r.condition.control == kNoControl || engine.Holds(r.condition));
  });
  return row == rows.end() || column >= row->codes.size() ? uint16_t{0} : row->codes[column];
}

/// In the check of a per-page row its own values replace the page's.
void TakeRow(const Engine& engine, FinishContext& context, ControlIndex control, uint16_t value) {
  const uint16_t staple = control == kPerPageStaple ? value : engine.Value(kPerPageStaple);
  const uint16_t punch = control == kPerPagePunch ? value : engine.Value(kPerPagePunch);
  if (staple != row_staple::kAsPage) context.stapling = staple != row_staple::kNone;
  if (staple != row_staple::kAsPage && context.stapling) context.staple = staple;
  if (punch != row_punch::kAsPage) context.punching = punch != row_punch::kNone;
  if (punch != row_punch::kAsPage && context.punching) context.punchHoles = punch;
}

/// Media that can't be finished along an edge, whichever tray they come from.
bool HasTabStock(const FinishContext& context) {
  return std::ranges::count(context.media, value::lpMediaType::kTabStock) != 0;
}

uint8_t EdgeOf(uint16_t position) {
  if (position == bind::kLeft || position == bind::kRight) return kEdge1;
  return position == bind::kTop ? kEdge2 : kNoVerdict;
}

uint16_t Flipped(uint16_t side) {
  return side == orientation::kPortrait ? orientation::kLandscape : orientation::kPortrait;
}

/// A fold that turns the sheet feeds its twin, if there is one (-1: none).
void TurnPaper(FinishContext& context, int32_t twin, bool rotated) {
  if (twin < 0) return;
  context.paper = static_cast<uint16_t>(twin);
  context.rotated = rotated;
}

/// A code of the fold table against what makes two pages of a sheet.
FoldVerdict JudgeCode(const Engine& engine, const FinishContext& context, uint16_t code) {
  constexpr ControlIndex kCombination = Control(u"POD_OnePerSheet_Check");
  const bool booklet = context.printType == print_type::kBooklet;
  const bool combined = engine.Available(kCombination) && engine.IsOn(kCombination);
  if (code == fold_code::kSinglePages && booklet) return FoldVerdict::kPrintType;
  if (code == fold_code::kSinglePages && combined) return FoldVerdict::kCombination;
  if (code == fold_code::kNever || (code == fold_code::kTwoPages && !booklet && !combined)) return FoldVerdict::kFold;
  return FoldVerdict::kNone;
}

}  // namespace

FinishContext MakeFinishContext(const Engine& engine) {
  return MakeFinishContext(engine, kNoControl, 0);
}

FinishContext MakeFinishContext(const Engine& engine, ControlIndex control, uint16_t value) {
  const auto value_of = [&](ControlIndex c) { return c == control ? value : engine.Value(c); };
  const bool per_page = control != kNoControl && kControls[control].dialog == dialog::kPerPageRow;
  const auto tray_media = [&](ControlIndex c) { return per_page ? engine.Default(c) : value_of(c); };
  constexpr ControlIndex kRowMedia = Control(u"lpInterSheetListMediaType");
  FinishContext context;
  context.orientation = value_of(Control(u"lpOrientation.Portrait"));
  context.paper = PaperOf(value_of(Control(u"lpOutputPaper")), value_of(Control(u"lpMediaSize")));
  context.staple = value_of(Control(u"lpStaple"));
  context.punchHoles = value_of(Control(u"lpPunchHoles"));
  context.printType = value_of(Control(u"lpPRNType"));
  context.bind = value_of(Control(u"lpBindPosit"));
  context.layout = value_of(Control(u"lpLayout"));
  context.fold = value_of(Control(u"lpFold"));
  context.foldStaple = value_of(Control(u"lpFoldStaple"));
  context.media = {tray_media(Control(u"trayMediaType.page")), tray_media(Control(u"trayMediaType.frontCover")),
                   tray_media(Control(u"trayMediaType.backCover")),
                   per_page ? value_of(kRowMedia) : engine.Default(kRowMedia)};
  context.stapling = engine.Available(Control(u"lpStaple"));
  context.punching = engine.Available(kPunch) && engine.IsOn(kPunch);
  if (control == kPerPageStaple || control == kPerPagePunch) TakeRow(engine, context, control, value);
  return context;
}

void StaplePrecheck(FinishContext& context) {
  const bool top = context.bind == bind::kTop;
  const bool side = context.bind == bind::kAuto || context.bind == bind::kLeft || context.bind == bind::kRight;
  if (side && (context.staple == staple::kUpperLeft || context.staple == staple::kUpperRight))
    context.stapleInstead = staple::kCorner;
  else if (top && context.staple == staple::kCorner)
    context.stapleInstead = staple::kUpperLeft;
  else
    return;
  context.staples[0] = kPosition;
  context.staple = context.stapleInstead;
}

void ApplyPaperGeometry(const Engine& engine, FinishContext& context) {
  const bool combined = engine.Available(Control(u"lpPOD_OnePerSheet"));
  if (combined) context.paper = DoubledPaper(context.paper);
  context.rotated = IsRotatedFeed(context.paper);
  if (engine.Available(Control(u"Fold_Check")) && engine.Available(Control(u"lpFold"))) {
    context.folded = context.fold == value::lpFold::kTurnsBack || context.fold == value::lpFold::kTurns;
    if (context.fold == value::lpFold::kTurnsBack && context.rotated)
      TurnPaper(context, PlainTwin(context.paper), false);
    if (context.fold == value::lpFold::kTurns && !context.rotated) TurnPaper(context, RotatedTwin(context.paper), true);
  }
  if (LayoutTurnsPages(context.layout) && engine.Available(Control(u"lpLayout")))
    context.orientation = Flipped(context.orientation);
  if (combined) context.orientation = Flipped(context.orientation);
}

void StapleVerdict(const Engine& engine, FinishContext& context) {
  const uint16_t code = CodeOf(engine, StapleCapabilities(), context.paper, 0);
  const uint8_t edge = EdgeOf(context.bind);
  const bool against_edge =
      code == staple_code::kNotTwoAlongEdge || (code == staple_code::kAnywhereUnfolded && context.folded);
  if (against_edge && context.staple == staple::kTwoStaples && edge != kNoVerdict) context.staples[0] = edge;
  if (code == staple_code::kNever) context.staples[0] = kImpossible;
  if (!HasTabStock(context)) return;
  const bool two = context.staple == staple::kTwoStaples;
  if (context.bind == bind::kLeft && two) context.staples[1] = kEdge1;
  if (context.bind == bind::kTop && (context.staple == staple::kUpperRight || two)) context.staples[1] = kEdge2;
  if (context.bind == bind::kRight) context.staples[1] = kNever;
}

void PunchVerdict(const Engine& engine, FinishContext& context) {
  constexpr uint16_t kFewestHoles = value::lpPunchHoles::kTwoHoles;  // of the first column
  const size_t column = static_cast<size_t>(context.punchHoles) - kFewestHoles;
  const uint16_t code = CodeOf(engine, PunchCapabilities(), context.paper, column);
  const bool with_staples = context.stapling && context.punching;
  if (code == punch_code::kNever)
    context.punches[0] = kImpossible;
  else if (code == punch_code::kNotWithStaples && with_staples)
    context.punches[0] = kNever;
  else if (code == punch_code::kNotAlongEdge || code == punch_code::kNotWithStaples || context.folded)
    context.punches[0] = EdgeOf(context.bind);
  if (context.punches[0] == kNever || context.punches[0] == kImpossible || !HasTabStock(context)) return;
  if (context.bind == bind::kLeft) context.punches[1] = kEdge1;
  if (context.bind == bind::kTop) context.punches[1] = kEdge2;
  if (context.bind == bind::kRight) context.punches[1] = kNever;
}

bool HasEdgeConflict(const FinishContext& context, const Verdicts& verdicts) {
  if (context.orientation != orientation::kPortrait && context.orientation != orientation::kLandscape) return false;
  const bool first = (context.orientation == orientation::kPortrait) == context.rotated;
  return std::ranges::count(verdicts, first ? kEdge1 : kEdge2) != 0;
}

uint16_t StapleForEdge(const FinishContext& context) {
  const uint8_t edge = EdgeOf(context.bind);
  if (edge == kNoVerdict) return context.stapleInstead;
  return edge == kEdge1 ? staple::kCorner : staple::kUpperLeft;
}

FoldVerdict JudgeFoldStaple(const Engine& engine, const FinishContext& context) {
  constexpr ControlIndex kFoldStaple = Control(u"FoldStaple_Check");
  constexpr ControlIndex kSaddle = Control(u"Saddle_Check");
  const bool known =
      context.foldStaple >= value::lpFoldStaple::kFoldAndStaple && context.foldStaple <= value::lpFoldStaple::kFold;
  const bool folds = engine.Available(kFoldStaple) && engine.IsOn(kFoldStaple) && known;
  const bool saddles = engine.Available(kSaddle) && engine.IsOn(kSaddle);
  if ((!folds && !saddles) || !known) return FoldVerdict::kNone;
  return JudgeCode(
      engine, context,
      CodeOf(engine, FoldCapabilities(), context.paper, context.foldStaple == value::lpFoldStaple::kFold ? 1 : 0));
}

FoldVerdict JudgeFold(const Engine& engine, const FinishContext& context) {
  constexpr size_t kNoColumn = 9;  // folds without a column of their own have no restriction
  constexpr ControlIndex kFold = Control(u"Fold_Check");
  if (!engine.Available(kFold) || !engine.IsOn(kFold)) return FoldVerdict::kNone;
  // Folds 20 to 22 would give way to code 1, but their column holds nothing but 0.
  if (std::ranges::count(value::lpFold::kRestricted, context.fold) == 0) return FoldVerdict::kNone;
  const bool half = context.fold == value::lpFold::kCenter || context.fold == value::lpFold::kCenterInside;
  return JudgeCode(engine, context, CodeOf(engine, FoldCapabilities(), context.paper, half ? 1 : kNoColumn));
}

}  // namespace heron::engine

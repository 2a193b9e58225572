// The geometry of finishing.
#include "engine/finishing.h"

#include <algorithm>
#include <span>

#include "engine/finishing_tables.h"
#include "engine/paper_in_force.h"
#include "engine/paper_rule_tables.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kPerPageStaple = Control(u"lpInterSheetListStaple");
constexpr ControlIndex kPerPagePunch = Control(u"lpInterSheetListPunch");
constexpr ControlIndex kPunch = Control(u"Punch_Check");
constexpr uint16_t kPerPageDialog = 2400;
constexpr uint16_t kTwoStaples = 4;
constexpr uint16_t kTabStock = 6;  ///< a media type that can't be finished along some edges

/// Values of a per-page row's staple and punch that are no position.
constexpr uint16_t kRowHasNone = 11;
constexpr uint16_t kRowAsPage = 100;

constexpr uint16_t kFoldTurningBack = 21;
constexpr uint16_t kFoldTurning = 22;

uint16_t CodeOf(const Engine& engine, std::span<const FinishCapabilityRow> rows, uint16_t paper, size_t column) {
  const auto row = std::ranges::find_if(rows, [&](const FinishCapabilityRow& r) {
    return r.paper == paper && (r.condition.control == kNoControl || engine.Holds(r.condition));
  });
  return row == rows.end() || column >= row->codes.size() ? uint16_t{0} : row->codes[column];
}

/// In the check of a per-page row its own values stand in for the page's.
void TakeRow(const Engine& engine, FinishContext& context, ControlIndex control, uint16_t value) {
  const uint16_t staple = control == kPerPageStaple ? value : engine.Value(kPerPageStaple);
  const uint16_t punch = control == kPerPagePunch ? value : engine.Value(kPerPagePunch);
  if (staple != kRowAsPage) context.stapling = staple != kRowHasNone;
  if (staple != kRowAsPage && context.stapling) context.staple = staple;
  if (punch != kRowAsPage) context.punching = punch != kRowHasNone;
  if (punch != kRowAsPage && context.punching) context.punchHoles = punch;
}

/// Media that can't be finished along an edge, whichever tray they come from.
bool HasTabStock(const FinishContext& context) {
  return std::ranges::count(context.media, kTabStock) != 0;
}

uint8_t EdgeOf(uint16_t bind) {
  if (bind == 2 || bind == 3) return kEdge1;
  return bind == 4 ? kEdge2 : kNoVerdict;
}

uint16_t Flipped(uint16_t orientation) {
  return orientation == 1 ? 2 : 1;
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
  const bool booklet = context.printType == 3;
  const bool combined = engine.Available(kCombination) && engine.Holds(kCombination, 1);
  if (code == 1 && booklet) return FoldVerdict::kPrintType;
  if (code == 1 && combined) return FoldVerdict::kCombination;
  if (code == 3 || (code == 2 && !booklet && !combined)) return FoldVerdict::kFold;
  return FoldVerdict::kNone;
}

}  // namespace

FinishContext MakeFinishContext(const Engine& engine) {
  return MakeFinishContext(engine, kNoControl, 0);
}

FinishContext MakeFinishContext(const Engine& engine, ControlIndex control, uint16_t value) {
  const auto value_of = [&](ControlIndex c) { return c == control ? value : engine.Value(c); };
  const bool per_page = control != kNoControl && kControls[control].dialog == kPerPageDialog;
  const auto tray_media = [&](ControlIndex c) { return per_page ? engine.Default(c) : value_of(c); };
  constexpr ControlIndex kRowMedia = Control(u"lpInterSheetListMediaType");
  FinishContext context;
  context.orientation = value_of(Control(u"lpOrientation.106"));
  context.paper = PaperOf(value_of(Control(u"lpOutputPaper")), value_of(Control(u"lpMediaSize")));
  context.staple = value_of(Control(u"lpStaple"));
  context.punchHoles = value_of(Control(u"lpPunchHoles"));
  context.printType = value_of(Control(u"lpPRNType"));
  context.bind = value_of(Control(u"lpBindPosit"));
  context.layout = value_of(Control(u"lpLayout.125"));
  context.fold = value_of(Control(u"lpFold"));
  context.foldStaple = value_of(Control(u"lpFoldStaple"));
  context.media = {tray_media(Control(u"trayMediaType.3310")), tray_media(Control(u"trayMediaType.3330")),
                   tray_media(Control(u"trayMediaType.3350")),
                   per_page ? value_of(kRowMedia) : engine.Default(kRowMedia)};
  context.stapling = engine.Available(Control(u"lpStaple"));
  context.punching = engine.Available(kPunch) && engine.Holds(kPunch, 1);
  if (control == kPerPageStaple || control == kPerPagePunch) TakeRow(engine, context, control, value);
  return context;
}

void StaplePrecheck(FinishContext& context) {
  const bool side = context.bind >= 1 && context.bind <= 3;
  if (side && (context.staple == 2 || context.staple == 3))
    context.stapleInstead = 1;
  else if (context.bind == 4 && context.staple == 1)
    context.stapleInstead = 2;
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
    context.folded = context.fold == kFoldTurningBack || context.fold == kFoldTurning;
    if (context.fold == kFoldTurningBack && context.rotated) TurnPaper(context, PlainTwin(context.paper), false);
    if (context.fold == kFoldTurning && !context.rotated) TurnPaper(context, RotatedTwin(context.paper), true);
  }
  const bool turned = context.layout == 5 || context.layout == 8;
  if (turned && engine.Available(Control(u"lpLayout.125"))) context.orientation = Flipped(context.orientation);
  if (combined) context.orientation = Flipped(context.orientation);
}

void StapleVerdict(const Engine& engine, FinishContext& context) {
  const uint16_t code = CodeOf(engine, StapleCapabilities(), context.paper, 0);
  const uint8_t edge = EdgeOf(context.bind);
  const bool against_edge = code == 1 || (code == 0 && context.folded);
  if (against_edge && context.staple == kTwoStaples && edge != kNoVerdict) context.staples[0] = edge;
  if (code == 3) context.staples[0] = kImpossible;
  if (!HasTabStock(context)) return;
  if (context.bind == 2 && context.staple == kTwoStaples) context.staples[1] = kEdge1;
  if (context.bind == 4 && (context.staple == 3 || context.staple == kTwoStaples)) context.staples[1] = kEdge2;
  if (context.bind == 3) context.staples[1] = kNever;
}

void PunchVerdict(const Engine& engine, FinishContext& context) {
  constexpr uint16_t kFewestHoles = 2;  // of the first column
  const size_t column = static_cast<size_t>(context.punchHoles) - kFewestHoles;
  const uint16_t code = CodeOf(engine, PunchCapabilities(), context.paper, column);
  const bool with_staples = context.stapling && context.punching;
  if (code == 4)
    context.punches[0] = kImpossible;
  else if (code == 3 && with_staples)
    context.punches[0] = kNever;
  else if (code == 1 || code == 3 || context.folded)
    context.punches[0] = EdgeOf(context.bind);
  if (context.punches[0] == kNever || context.punches[0] == kImpossible || !HasTabStock(context)) return;
  if (context.bind == 2) context.punches[1] = kEdge1;
  if (context.bind == 4) context.punches[1] = kEdge2;
  if (context.bind == 3) context.punches[1] = kNever;
}

bool HasEdgeConflict(const FinishContext& context, const Verdicts& verdicts) {
  if (context.orientation != 1 && context.orientation != 2) return false;
  const bool first = (context.orientation == 1) == context.rotated;
  return std::ranges::count(verdicts, first ? kEdge1 : kEdge2) != 0;
}

uint16_t StapleForEdge(const FinishContext& context) {
  const uint8_t edge = EdgeOf(context.bind);
  if (edge == kNoVerdict) return context.stapleInstead;
  return edge == kEdge1 ? 1 : 2;
}

FoldVerdict JudgeFoldStaple(const Engine& engine, const FinishContext& context) {
  constexpr ControlIndex kFoldStaple = Control(u"FoldStaple_Check");
  constexpr ControlIndex kSaddle = Control(u"Saddle_Check");
  const bool known = context.foldStaple >= 1 && context.foldStaple <= 3;
  const bool folds = engine.Available(kFoldStaple) && engine.Holds(kFoldStaple, 1) && known;
  const bool saddles = engine.Available(kSaddle) && engine.Holds(kSaddle, 1);
  if ((!folds && !saddles) || !known) return FoldVerdict::kNone;
  return JudgeCode(engine, context, CodeOf(engine, FoldCapabilities(), context.paper, context.foldStaple == 3 ? 1 : 0));
}

FoldVerdict JudgeFold(const Engine& engine, const FinishContext& context) {
  constexpr std::array<uint16_t, 13> kFolds = {11, 12, 31, 32, 33, 34, 41, 42, 51, 52, 111, 112, 121};
  constexpr size_t kNoColumn = 9;  // folds without a column of their own have no restriction
  constexpr ControlIndex kFold = Control(u"Fold_Check");
  if (!engine.Available(kFold) || !engine.Holds(kFold, 1)) return FoldVerdict::kNone;
  // Folds 20 to 22 would give way to code 1, but their column holds nothing but 0.
  if (std::ranges::count(kFolds, context.fold) == 0) return FoldVerdict::kNone;
  const bool half = context.fold == 11 || context.fold == 12;
  return JudgeCode(engine, context, CodeOf(engine, FoldCapabilities(), context.paper, half ? 1 : kNoColumn));
}

}  // namespace heron::engine

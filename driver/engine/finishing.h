// How a sheet travels through the finisher, and what that means for stapling, punching and folding.
//
// A context is worked out for one check: from the current values, or with the value of a list's item in the place of
// its control's. Both forms of a decision, what else must change (change.h) and which items are forbidden
// (item_checks.h), come from the operations below, so that they agree.
#pragma once

#include <array>
#include <cstdint>

#include "engine/engine.h"
#include "generated/values.h"

namespace heron::engine {

/// What the geometry says against a finishing. Of two verdicts the first comes from the paper, the second from media.
enum Verdict : uint8_t {
  kNoVerdict = 0,
  kEdge1 = 1,  ///< not along an edge of the first direction
  kEdge2 = 2,  ///< not along one of the second
  kNever = 3,  ///< punch: not together with stapling; second verdict: not at all
  kImpossible = 4,
  kPosition = 5,  ///< the staple position contradicts the binding edge
};
using Verdicts = std::array<uint8_t, 2>;

struct FinishContext {
  uint16_t orientation = 0;
  uint16_t paper = 0;
  uint16_t staple = 0;
  uint16_t punchHoles = 0;
  uint16_t printType = 0;
  uint16_t bind = 0;
  uint16_t layout = 0;
  uint16_t fold = 0;
  uint16_t foldStaple = 0;
  std::array<uint16_t, 4> media{};  ///< of the three trays and of a per-page row
  bool stapling = false;
  bool punching = false;
  bool rotated = false;  ///< the paper runs short edge first
  bool folded = false;   ///< a fold turns it
  Verdicts staples{};
  Verdicts punches{};
  uint16_t stapleInstead = 0;  ///< the position that takes the place of the staple's, 0 if none
};

FinishContext MakeFinishContext(const Engine& engine);
/// The same for the item `value` of the list `control`.
FinishContext MakeFinishContext(const Engine& engine, ControlIndex control, uint16_t value);

/// First step for staples: moves a position that contradicts the binding edge.
void StaplePrecheck(FinishContext& context);
/// Second step: turns paper and orientation as layout, combination and fold do.
void ApplyPaperGeometry(const Engine& engine, FinishContext& context);
/// Third step.
void StapleVerdict(const Engine& engine, FinishContext& context);
void PunchVerdict(const Engine& engine, FinishContext& context);
/// Whether a verdict speaks against the edge that the sheet offers.
bool HasEdgeConflict(const FinishContext& context, const Verdicts& verdicts);

/// What must give way to a fold.
enum class FoldVerdict : uint8_t { kNone, kPrintType, kCombination, kFold };
FoldVerdict JudgeFoldStaple(const Engine& engine, const FinishContext& context);
FoldVerdict JudgeFold(const Engine& engine, const FinishContext& context);

/// Whether the check of staples and punches concerns this context at all.
inline bool IsLooseSheets(const FinishContext& context) {
  return context.printType == value::lpPRNType::kOneSided || context.printType == value::lpPRNType::kTwoSided;
}
/// The position that suits a binding edge, or what it was.
uint16_t StapleForEdge(const FinishContext& context);

}  // namespace heron::engine

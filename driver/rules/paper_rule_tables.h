// Which papers go with which values, and the sheet that holds two pages of a paper.
//
// Constant, made at compile time. How the groups are checked, and what comes of it, is in paper_checks_table.h.
#pragma once

#include <cstdint>
#include <span>

#include "rules/controls.h"

namespace heron::engine {

/// A control of `group` that holds `value` takes only these papers, while the condition holds.
struct PaperRule {
  uint16_t number = 0;  ///< not unique: the same for each condition of one rule
  uint8_t group = 0;
  int16_t value = 0;
  uint16_t conditionNumber = 0;  ///< 0 if the rule always counts
  RuleTerm condition;            ///< control kNoControl if the rule always counts; the control must also be available
  std::span<const uint16_t> papers;
};

/// Every rule, in the order of the table.
std::span<const PaperRule> PaperRules();

/// The controls that a group checks, in order; empty for a group that checks nothing.
std::span<const ControlIndex> PaperGroupControls(uint8_t group);

inline constexpr uint8_t kPaperGroupLimit = 23;  ///< groups lie below this number

/// The code of the sheet that holds two pages of `paper`; `paper` itself if it has none.
uint16_t DoubledPaper(uint16_t paper);

/// Papers and such sheets, of all families; for listings and checks.
struct DoubledSheet;
std::span<const DoubledSheet> SheetDoubling();

}  // namespace heron::engine

// The paper that rules test, and what makes two pages of one sheet.
//
// There are three tests for doubling and they differ: one for values seen by combination rules (EffectiveRuleValue),
// one for paper rules (here), one for the geometry of finishing, which asks whether the combination list is available.
#pragma once

#include <cstdint>

#include "catalog/paper_codes.h"
#include "engine/engine.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "settings/papers.h"

namespace heron::engine {

/// Every custom paper counts as the last one.
inline uint16_t NormalisedPaper(uint16_t paper) {
  return (paper & paper::kCustom) != 0 ? uint16_t{kLastUserPaper} : paper;
}

/// The output paper, or the media size where the output is to be the same as the document.
inline uint16_t PaperOf(uint16_t output_paper, uint16_t media_size) {
  return NormalisedPaper(output_paper == kSameAsDocument ? media_size : output_paper);
}
inline uint16_t PaperInForce(const Engine& engine) {
  return PaperOf(engine.Value(Control(u"lpOutputPaper")), engine.Value(Control(u"lpMediaSize")));
}

/// Whether paper rules test the sheet that holds two pages instead of the page.
inline bool SheetHoldsTwoPages(const Engine& engine) {
  return engine.IsOn(Control(u"POD_OnePerSheet_Check")) ||
         engine.Holds(Control(u"lpPRNType"), value::lpPRNType::kBooklet) || IsOn<u"AdhesiveBind_Check">(*engine.ui);
}

}  // namespace heron::engine

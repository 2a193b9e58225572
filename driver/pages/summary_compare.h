// Two summaries side by side, and the search in one: what saved settings would change, and what mentions a word.
#pragma once

#include <string_view>
#include <vector>

#include "pages/summary.h"

namespace heron::pages {

enum class RowOf : uint8_t { kBoth, kShown, kNow };

/// A row of the shown settings and what the current ones have in its place.
struct ComparedRow {
  SummaryRow shown;  ///< with the label alone where only the current settings have the row
  SummaryRow now;    ///< the same the other way round
  RowOf in = RowOf::kBoth;

  bool Differs() const { return in != RowOf::kBoth || shown != now; }
};

/// Every row of both, in the order of the shown ones. Rows belong together by their label; a row that only one of them
/// has differs.
std::vector<ComparedRow> CompareSummaries(const SummaryRows& shown, const SummaryRows& now);

/// Whether a text of any tab contains `part`, the case of letters aside.
bool SummaryMentions(UiState& ui, std::u16string_view part);

}  // namespace heron::pages

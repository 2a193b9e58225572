// The summary of settings as text and as JSON.
#pragma once

#include <optional>
#include <string>

#include "common/command.h"
#include "pages/summary.h"

namespace heron::cli {

/// The tab of a name ("per-page"), title or number; throws exit code 2 for another word.
pages::SummaryTab TabNamed(const std::string& word);

/// "tabs": the rows of one tab, or of all.
Json SummaryJson(UiState& ui, std::optional<pages::SummaryTab> tab);
Json RowJson(const pages::SummaryRow& row);
void PrintSummary(UiState& ui, std::optional<pages::SummaryTab> tab);

}  // namespace heron::cli

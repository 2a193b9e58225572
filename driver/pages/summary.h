// What a set of settings contains, as rows of texts: the lists of the library dialogs, `heron summary`, `heron library
// show`.
//
// A tab has the settings of one page. A row appears only while its control is available for the given settings, so that
// saved settings show what they do on their own, whatever the open sheet does.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "uistate/ui_state.h"

namespace heron::pages {

enum class SummaryTab : uint8_t { kPaper, kPerPage, kSpecial, kOverlay, kWatermark, kQuality, kFont, kFax };

/// In the order of the tab control; the number of a tab is its place.
inline constexpr std::array kSummaryTitles = {text::kPaperTab,   text::kPerPageTab,   text::kSpecialTab,
                                              text::kOverlayTab, text::kWatermarkTab, text::kQualityTab,
                                              text::kFontTab,    text::kFaxTab};
inline constexpr size_t kSummaryTabCount = kSummaryTitles.size();

inline constexpr size_t kSummaryColumns = 3;
/// Label, value, second value; empty texts for empty cells.
using SummaryRow = std::array<std::u16string, kSummaryColumns>;
using SummaryRows = std::vector<SummaryRow>;

/// The rows of a tab for the working settings `ui`, which stay as they are. A row for which memory runs out is left
/// out. The texts are in use.
SummaryRows BuildSummary(UiState& ui, SummaryTab tab);

/// Shows the user papers of other settings in the process's paper table for a scope: sizes, names and rules then follow
/// those settings.
class ShownPapers {
 public:
  ShownPapers(const UiState& shown, const UiState& before);
  ~ShownPapers();
  ShownPapers(const ShownPapers&) = delete;
  ShownPapers& operator=(const ShownPapers&) = delete;

 private:
  const UiState& before_;
};

}  // namespace heron::pages

// Custom paper sizes as the paper page and its dialog speak of them.
#pragma once

#include "pages/logic_base.h"
#include "settings/papers.h"
#include "uistate/ui_state.h"

namespace heron::pages {

enum class CustomName : uint8_t { kName, kNameWithSize };

/// Name of entry `number` (1 to 10), and its size in its own unit behind it: "Postcard(100.0 x 148.0mm)". An entry
/// without a name has its size alone in either form. Empty for another number.
std::u16string FormatCustomName(const UiState& ui, int number, CustomName form);

std::u16string_view CustomPaperName(const CustomPaperEntry& entry);
/// kMillimetre or kInch; the first for whatever else may be stored.
int UnitOf(const CustomPaperEntry& entry);

/// The entry in the state's own list; null for another number or without a list.
CustomPaperEntry* CustomEntry(const UiState& ui, int number);

/// Text and caption of the warning that the printed paper, a custom one, doesn't fit the paper source; empty if it
/// does. The setting stays.
struct Warning {
  std::u16string text;
  std::u16string caption;
};
Warning CustomPaperWarning(const UiState& ui);

}  // namespace heron::pages

// The working settings as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "common/command.h"
#include "labels.h"
#include "uistate/ui_state.h"

namespace heron::cli {

/// One thing that a setting can be.
struct Choice {
  int32_t value;
  std::string label;
};

/// One setting with what it is and can be.
struct Setting {
  uint16_t parameter = 0;
  std::string key;  ///< empty if the setting has none; then `parameter` names it
  std::string page;
  bool inner = false;  ///< follows from other choices
  std::string label;
  int32_t value = 0;
  int32_t defaultValue = 0;
  bool hasRange = false;
  int32_t min = 0, max = 0;     ///< if it has a range
  std::vector<Choice> choices;  ///< if it has options; a value can occur twice with two labels
  int current = -1;             ///< the choice that counts now; -1 if the value is none of them
  int tray = -1;                ///< the paper source whose paper this is

  /// "Portrait", "on", "210"; an unknown value as its number.
  std::string ValueText(int32_t of) const;
};

/// Every setting of the model, page by page; with them the watermark in use and what lies in the trays.
std::vector<Setting> SettingsOf(const UiState& ui, const Catalogue& catalogue);

/// Page by page, each setting with what it can be.
void PrintAll(const std::vector<Setting>& settings);
/// Page by page, those that differ from `fresh`, the settings that the printer starts with.
void PrintChanged(const std::vector<Setting>& settings, const std::vector<Setting>& fresh);
/// Page by page, those that differ from what they are `now`. False if none does.
bool PrintDifferences(const std::vector<Setting>& settings, const std::vector<Setting>& now);
Json SettingsJson(const std::vector<Setting>& settings);

}  // namespace heron::cli

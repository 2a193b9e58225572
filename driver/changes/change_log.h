// What becomes of a log behind the rules: which entries of a pass count, and in which order the rest is reported.
//
// Adding to a request, a log and an opposition list is declared with them in change.h.
#pragma once

#include "changes/change.h"

namespace heron::engine {

/// Two controls of one setting hold one value: members of a radio group, or controls of several dialogs.
constexpr bool SameSetting(ControlIndex a, ControlIndex b) {
  return kControls[a].firstOfSetting == kControls[b].firstOfSetting;
}

/// If pending entries are for POD_OnePerSheet_Check or lpPRNType, drops the other pending ones: these two decide what
/// the paper is, so that the next pass works out the rest anew.
void KeepPriorityEntries(ChangeLog& log);

/// Leaves one entry for each control, its last value in the place of its first, and drops those whose value the control
/// holds: they come to nothing.
void CollapseLog(const Engine& engine, ChangeLog& log);

/// Sorts entries and opposition by control id and leaves the last of each control.
void SortLog(ChangeLog& log);

/// The same after a single change of `control` to `value`: entries from before the rules set the control back are
/// dropped, and marks of custom papers in the opposition become the papers.
void OrderLog(const Engine& engine, ControlIndex control, uint16_t value, ChangeLog& log);

}  // namespace heron::engine

// The working per-page list: swapped with the other nine, and checked against the settings.
//
// Its rows, head and counts are in the state's variable block; the list stores keep all ten.
#pragma once

#include <cstdint>

#include "engine/engine.h"

namespace heron::engine {

/// Number of the list that the rows in the state belong to, 1 to 10.
uint16_t WorkingList(const UiState& ui);

/// Stores the working rows in their list. Nothing happens without a store.
void StoreWorkingList(UiState& ui);
/// Makes the rows of list `number` (clamped to 1..10) the working ones; the old ones are not stored.
void LoadWorkingList(UiState& ui, uint16_t number);
/// Both, if `lpInterSheetList` names another list than the working one. True if it did.
bool FollowListChoice(Engine& engine);

/// Makes the names of the lists the texts of the setting that chooses among them.
void ShowPageListNames(const UiState& ui);

/// The list of pages with settings of their own, on page 200. It holds no value.
inline constexpr uint16_t kPerPageListControl = 249;

inline constexpr uint16_t kRowValid = 1;
inline constexpr uint16_t kRowInConflict = 4;

enum class Conflicts : uint8_t { kAll, kNew };

/// Marks each row of the working list (PageEntry::stat) and returns how many are in conflict, or how many more than
/// before. 0, with nothing marked, without a store, rows, or the list's control available.
int ValidatePerPageList(Engine& engine, Conflicts which);

/// What a row asks for, in the settings of dialog 2400, and which of it the other settings forbid.
struct PerPageRowCheck {
  enum Fields : uint8_t { kTray = 1, kType = 2, kStaple = 4, kStapleStop = 8, kPunch = 16 };
  uint8_t failed = 0;  ///< with repair: what was changed
};

/// Tests the row in the row settings: the first failure alone, or, with `repair`, every one, each brought to a value
/// that the rules allow. All else is put back but for the row's media settings.
PerPageRowCheck CheckPerPageRow(Engine& engine, bool repair);

}  // namespace heron::engine

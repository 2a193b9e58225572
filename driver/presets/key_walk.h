// The walk over the keys of a settings file: the same for a file that is read, a file that is written, and settings
// that are copied from one state to another.
#pragma once

#include "presets/key_plan.h"

namespace heron {

inline constexpr int kAllGroups = -1;

/// What is done with one value.
class KeyTransfer {
 public:
  virtual ~KeyTransfer() = default;

  /// `value` is the key's place in the walked state, null where the list has no room for it. False ends the list that
  /// the key belongs to; for other keys it means nothing.
  virtual bool Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) = 0;
};

enum class WalkKind : uint8_t {
  kInto,   ///< values come into the state: counts first, then what they bound; a list without a count gives its own
  kOutOf,  ///< values leave it, in file order
};

/// Walks the keys of `group` (kAllGroups: all). False if no value at all was transferred.
bool WalkKeys(const UiState& ui, WalkKind kind, int group, KeyTransfer& transfer);

}  // namespace heron

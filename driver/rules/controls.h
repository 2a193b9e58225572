// The controls that rules speak of: rows, look-up by id and by name.
//
// A control is known outside by its id, a template's item number, and inside the engine by its index in kControls, so
// that whatever is kept for each control is a dense array of kControlCount. Everything here is constant; the values
// belong to a UiState. A name in code is Control(u"Staple_Check"), which is resolved, and refused if unknown, by the
// compiler.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace heron::engine {

using ControlIndex = uint8_t;
inline constexpr ControlIndex kNoControl = 0xFF;
inline constexpr size_t kControlCount = 164;

enum class ControlType : uint8_t { kList = 1, kRadio = 2, kCheck = 4, kNumber = 8, kButton = 32 };

/// The bit of a page mask that marks a restore-defaults button; a button reaches the rows that share another bit with
/// it.
inline constexpr uint16_t kButtonMask = 4;

struct ControlRow {
  uint16_t id = 0;
  uint16_t label = 0;   ///< text number
  uint16_t dialog = 0;  ///< the template that owns the control
  uint16_t pageMask = 0;
  uint16_t parameter = 0;  ///< number of the setting's parameter, 0 where `key` names the setting
  ControlType type = ControlType::kList;
  bool fixed = false;                        ///< its items are never forbidden by combination rules
  ControlIndex firstOfSetting = kNoControl;  ///< the first control that shows the same setting, often itself
  std::u16string_view name = {};
  std::u16string_view key = {};  ///< the setting's key, or our own name for it; all buttons have the same

  /// 1 a single control, 2 a restore-defaults button.
  constexpr int Kind() const { return type == ControlType::kButton ? 2 : 1; }
};

/// "This control holds this value", as an operand or a target of a rule.
struct RuleTerm {
  ControlIndex control = kNoControl;
  int16_t value = 0;

  constexpr bool operator==(const RuleTerm&) const = default;
};

/// Every control, by ControlIndex.
inline constexpr auto kControls = std::to_array<ControlRow>({
#include "generated/controls.inc"
});
static_assert(kControls.size() == kControlCount);

namespace controls_internal {

inline constexpr size_t kIdLimit = 3602;  ///< ids lie below this number

consteval auto IndexIds() {
  std::array<ControlIndex, kIdLimit> indexes{};
  indexes.fill(kNoControl);
  for (size_t i = 0; i < kControls.size(); ++i) {
    ControlIndex& index = indexes.at(kControls[i].id);
    if (index != kNoControl) throw "an id is used twice";
    index = static_cast<ControlIndex>(i);
  }
  return indexes;
}

inline constexpr auto kIndexes = IndexIds();

constexpr uint32_t HashOf(std::u16string_view name) {
  uint32_t hash = 0;
  for (const char16_t c : name) hash = hash * 31 + c;
  return hash;
}

/// Tables name controls some thousand times, and comparing texts costs the compiler seconds; names have distinct
/// hashes.
struct NameHashes {
  uint32_t hash[kControlCount];
};

consteval NameHashes HashNames() {
  NameHashes names{};
  for (size_t i = 0; i < kControlCount; ++i) {
    names.hash[i] = HashOf(kControls[i].name);
    for (size_t j = 0; j < i; ++j) {
      if (names.hash[j] == names.hash[i]) throw "two names have one hash";
    }
  }
  return names;
}

inline constexpr NameHashes kNameHashes = HashNames();

}  // namespace controls_internal

/// Index of the control's row, or kNoControl.
constexpr ControlIndex IndexOf(uint16_t id) {
  return id < controls_internal::kIdLimit ? controls_internal::kIndexes[id] : kNoControl;
}

/// Index of the control of this name; for tables and constants, where an unknown name doesn't compile.
constexpr ControlIndex NamedIndex(std::u16string_view name) {
  const uint32_t hash = controls_internal::HashOf(name);
  size_t i = 0;
  while (i < kControlCount && controls_internal::kNameHashes.hash[i] != hash) ++i;
  if (i == kControlCount || kControls[i].name != name) throw "no control has this name";
  return static_cast<ControlIndex>(i);
}

/// Index and id of a control whose name is written in code.
consteval ControlIndex Control(std::u16string_view name) {
  return NamedIndex(name);
}
consteval uint16_t ControlId(std::u16string_view name) {
  return kControls[NamedIndex(name)].id;
}

}  // namespace heron::engine

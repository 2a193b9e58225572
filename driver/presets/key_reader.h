// Values of a settings file on their way into a state.
#pragma once

#include "presets/key_walk.h"
#include "presets/section_index.h"

namespace heron {

/// Takes each value from the file. A key that isn't there leaves the stored default in its place, a number that is none
/// what was there; both are failures.
class KeyReader final : public KeyTransfer {
 public:
  KeyReader(const UiState& ui, SectionIndex& index) : ui_(ui), index_(index) {}
  bool Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) override;

 private:
  bool ReadNumber(size_t place, std::string_view name, const StoreField* value, bool* absent);
  bool ReadText(const KeyEntry& key, size_t place, std::string_view name, const StoreField* value);
  bool ReadLines(size_t place, const StoreField& value);

  const UiState& ui_;
  SectionIndex& index_;
};

/// The number that `text` is, wrapped to `type`'s width: a sign and digits, nothing else. kTypeI32Alone passes over the
/// sign. False, with `number` untouched, for anything else.
bool ParseNumber(std::string_view text, uint16_t type, uint32_t* number);

/// Puts `text` into a text field, cut to its room, and fills it up with zeros. What follows a zero isn't text.
void PutText(const StoreField& field, std::u16string_view text);

}  // namespace heron

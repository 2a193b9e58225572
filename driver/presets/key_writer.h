// Values of a state on their way into a settings file.
#pragma once

#include "platform/api/profile.h"
#include "presets/key_walk.h"

namespace heron {

/// Writes each value into `file`, as its section and key; what else is there stays.
class KeyWriter final : public KeyTransfer {
 public:
  explicit KeyWriter(platform::Profile& file);
  bool Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) override;

 private:
  /// Of a section that this writer has made; there every key is a new one.
  struct Section {
    platform::Profile::SectionId id = platform::Profile::kNone;
    bool own = false;
  };
  void Put(size_t place, const KeyEntry& key, int section_number, std::string_view name, std::string_view value);
  void WriteLines(size_t place, const KeyEntry& key, int section_number, std::u16string_view text);

  platform::Profile& file_;
  std::vector<Section> sections_;
  std::string value_;  ///< kept for its room
};

/// The lines of a text: split at LF, without the CR before it. A text without LF is one line.
std::vector<std::u16string_view> SplitLines(std::u16string_view text);

/// Appends `text` to `bytes` in the system's code page; every control character becomes a blank, so that no text can
/// make a line of its own.
void AppendLineText(std::u16string_view text, std::string* bytes);

}  // namespace heron

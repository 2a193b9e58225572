// A settings file as the walk reads it: the place of each section, and the value of a key as its bytes are.
//
// Unlike the profile calls, nothing is trimmed: a value runs from its "=" to the CR. An index lives for one read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/api/profile.h"

namespace heron {

inline constexpr size_t kValueRoom = 16384;  ///< characters of the line buffer, terminator included

class SectionIndex {
 public:
  /// Looks up all sections that the key table names. `file` outlives the index and doesn't change meanwhile.
  explicit SectionIndex(const platform::Profile& file);

  /// The value's bytes. False, with `value` untouched, if the key or its section is absent. `place` is the section's
  /// among all that a file can have (SectionEntry::PlaceOf). A key is asked for once. Valid as long as the file.
  bool FindValue(size_t place, std::string_view key, std::string_view* value);

 private:
  /// How far a section has been read. Files mostly hold their keys in the order in which they are asked for, so the
  /// line behind the last one is looked at first; that holds as long as every key was found there, because then no
  /// line before it can hold the key. After that the keys are gathered, the first of each name.
  struct Section {
    std::string_view body;
    size_t next = 0;
    bool inStep = true;
    std::unordered_map<std::string_view, std::string_view> values;
  };
  std::vector<Section> sections_;
};

/// The key's text, cut out of the file and out of the code page, in a buffer of `size` characters; `fallback` if the
/// key is absent or its value as long as the buffer or longer.
std::u16string ReadProfileKey(SectionIndex& index, size_t place, std::string_view key, std::u16string_view fallback,
                              size_t size);

/// Marks an absent key, and so is no value of any setting.
inline constexpr std::string_view kAbsent = "error";

}  // namespace heron

// Profiles: text files of sections and keys, in the layout of the Win32 profile calls. Conventions: types.h.
//
// A heading is a line "[name]" with CR LF and nothing else behind it; a line "key=value" below it is a key. Other lines
// end at LF or at the end of the file; a CR ends a key or a value. The case of letters counts, and of doubled sections
// or keys the first. A key that is written replaces its line or goes to the end of its section, a new section to the
// end of the file; nothing else changes. Bytes are of the system's code page. Files are replaced whole.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/api/types.h"

namespace heron::platform {

inline constexpr size_t kProfileLimit = size_t{1} << 20;  ///< bytes; a larger file can't be read

extern "C" {

/// Copies the key's value into `buffer`, cut to `size` - 1 characters, and returns its length; `fallback` (null: an
/// empty text) if there is no such key, section or readable file. Blanks around the value and one pair of quotation
/// marks are dropped. 0 without effect if `section`, `key`, `buffer` or `path` is null or `size` is 0.
HERON_PLATFORM_API DWORD GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                                  const char16_t* fallback, char16_t* buffer, DWORD size,
                                                  const char16_t* path);
/// The number that the key's value begins with, modulo 2^32, 0 if it begins with none; `fallback` if there is no such
/// key.
HERON_PLATFORM_API DWORD GetPrivateProfileIntW(const char16_t* section, const char16_t* key, int32_t fallback,
                                               const char16_t* path);
/// Writes a key; the file is made if it is missing. A null `value` removes the key, a null `key` the section. With
/// three nulls a cache would be flushed: writes are never held back, so nothing happens and the result is 0.
HERON_PLATFORM_API BOOL WritePrivateProfileStringW(const char16_t* section, const char16_t* key, const char16_t* value,
                                                   const char16_t* path);
}

/// A profile in memory, for many reads or writes of one file. Names, keys and values are bytes of the code page,
/// without line ends. Not for several threads at once.
class HERON_PLATFORM_API Profile {
 public:
  Profile() = default;
  /// Takes any bytes; what is neither a heading nor a key is kept as it is.
  explicit Profile(std::string_view bytes);

  /// A section by its place; valid until a section is removed.
  using SectionId = size_t;
  static constexpr SectionId kNone = static_cast<SectionId>(-1);

  SectionId Find(std::string_view section) const;  ///< the first of this name, or kNone
  SectionId Add(std::string_view section);         ///< at the end; there is none of this name
  void Remove(std::string_view section);           ///< all of this name

  /// The value without the blanks around it; false, with `value` untouched, if there is no such key. Valid until the
  /// section changes.
  bool Get(std::string_view section, std::string_view key, std::string_view* value) const;
  void Set(SectionId section, std::string_view key, std::string_view value);
  /// As Set, which makes the section if it is missing.
  void Set(std::string_view section, std::string_view key, std::string_view value);
  /// As Set, for a key that isn't there.
  void Append(SectionId section, std::string_view key, std::string_view value);
  bool RemoveKey(SectionId section, std::string_view key);  ///< false if there is no such key

  /// The lines below the heading, as long as no key of the section is set; empty for kNone.
  std::string_view Body(SectionId section) const;
  std::string Bytes() const;

 private:
  /// The lines of a section in which keys are replaced; a removed line is empty.
  struct Lines {
    std::vector<std::string> text;
    std::unordered_map<std::string, size_t> known;  ///< the first line of each key
    std::vector<size_t> later;                      ///< of a line: the next one of its key, or kNone
  };
  struct Section {
    std::string name;  ///< empty for lines that belong to no heading
    std::string text;  ///< heading included, as long as there are no `lines`
    size_t headingSize = 0;
    std::unique_ptr<Lines> lines;
  };

  static std::string* FindLine(Section& section, std::string_view key);

  std::vector<Section> sections_;
  std::unordered_map<std::string, SectionId> byName_;
};

/// Bytes of the file at `path`. kErrorFileNotFound also for an empty one, kErrorMoreData above kProfileLimit.
HERON_PLATFORM_API DWORD ReadProfileBytes(const char16_t* path, std::string* bytes);
/// Replaces the file's content by the profile's, as a whole.
HERON_PLATFORM_API DWORD SaveProfile(const char16_t* path, const Profile& profile);

/// Text to bytes of the system's code page and back; characters that can't be converted become '?' or U+FFFD.
HERON_PLATFORM_API void AppendAnsi(std::u16string_view text, std::string* bytes);
HERON_PLATFORM_API std::u16string FromAnsi(std::string_view bytes);
/// The number that `text` begins with, with a sign before it, modulo 2^32; 0 if it begins with none.
HERON_PLATFORM_API int32_t LeadingNumber(std::string_view text);

}  // namespace heron::platform

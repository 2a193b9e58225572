// Page numbers as a user writes them: "2,4,6-10".
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace heron::engine {

enum class PageTextError : uint8_t {
  kNone = 0,
  kCharacter = 1,  ///< not a number or a range of numbers, or too many digits
  kComma = 2,      ///< at a wrong place
  kZero = 3,
  kHyphen = 4,
  kTooMany = 5,  ///< found by callers of ParsePageText
};

inline constexpr size_t kPageDigits = 4;

/// The first error of a page text. A closing comma or hyphen, and an empty text, are right.
PageTextError CheckPageText(std::u16string_view text, size_t max_digits = kPageDigits);

/// Writes the page numbers of a right text into `numbers`, in the order of the text, repeated ones too. "10-6" counts
/// up; a range without an end is dropped. Returns how many, or -1 if they are more than `numbers` has room for.
int ParsePageText(std::u16string_view text, std::span<uint16_t> numbers);

/// The normal form of ascending numbers: consecutive ones as a range.
std::u16string FormatPageList(std::span<const uint16_t> numbers);

}  // namespace heron::engine

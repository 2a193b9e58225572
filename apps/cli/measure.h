// Numbers with a unit on the command line: "450", "45deg", "-12.5mm".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace heron::cli {

struct Unit {
  std::string_view name;    ///< of a number without a suffix, for messages
  std::string_view suffix;  ///< of a larger unit, empty for none
  int64_t factor;           ///< how many make up the larger unit
};

/// A whole number with an optional sign; nothing for any other text or a number of more than 18 digits.
std::optional<int64_t> WholeNumber(std::string_view text);

/// The text as a number of the unit: whole without the suffix, with it also with decimals, rounded half away from 0.
/// Nothing for any other text.
std::optional<int64_t> Measure(std::string_view text, const Unit& unit);

}  // namespace heron::cli

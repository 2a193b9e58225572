#include "measure.h"

#include <algorithm>

namespace heron::cli {
namespace {

constexpr size_t kMostDigits = 15;  // so that nothing overflows below

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

std::optional<int64_t> WholeNumber(std::string_view text) {
  constexpr size_t kDigitsOf64Bits = 18;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty() || text.size() > kDigitsOf64Bits || !std::ranges::all_of(text, IsDigit)) return std::nullopt;
  int64_t number = 0;
  for (const char c : text) number = number * 10 + (c - '0');
  return negative ? -number : number;
}

std::optional<int64_t> Measure(std::string_view text, const Unit& unit) {
  if (unit.suffix.empty() || !text.ends_with(unit.suffix)) return WholeNumber(text);
  text.remove_suffix(unit.suffix.size());
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  int64_t digits = 0, divisor = 1;
  bool fraction = false, any = false;
  if (text.size() > kMostDigits) return std::nullopt;
  for (const char c : text) {
    if (c == '.' && !fraction) {
      fraction = true;
      continue;
    }
    if (!IsDigit(c)) return std::nullopt;
    any = true;
    digits = digits * 10 + (c - '0');
    if (fraction) divisor *= 10;
  }
  if (!any) return std::nullopt;
  const int64_t number = (digits * unit.factor + divisor / 2) / divisor;
  return negative ? -number : number;
}

}  // namespace heron::cli

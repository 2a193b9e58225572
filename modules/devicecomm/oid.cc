// Object ids as text (oid.h).

#include "oid.h"

#include <charconv>
#include <system_error>

namespace heron::devicecomm {

Oid ParseOid(std::string_view text) {
  Oid oid;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (oid.size() < kLongestOid) {
    uint32_t arc = 0;
    const auto [behind, error] = std::from_chars(at, end, arc);
    if (error != std::errc()) return {};
    oid.push_back(arc);
    if (behind == end) return oid;
    if (*behind != '.') return {};
    at = behind + 1;
  }
  return {};
}

std::string OidText(std::span<const uint32_t> oid) {
  std::string text;
  for (const uint32_t arc : oid) text.append(text.empty() ? "" : ".").append(std::to_string(arc));
  return text;
}

}  // namespace heron::devicecomm

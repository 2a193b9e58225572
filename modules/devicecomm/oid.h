// Object ids of SNMP.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace heron::devicecomm {

/// Object id as arcs, at most kLongestOid.
using Oid = std::vector<uint32_t>;

inline constexpr size_t kLongestOid = 128;  ///< of the protocol

/// "1.3.6.1.2.1" as arcs; empty for what is none.
Oid ParseOid(std::string_view text);
std::string OidText(std::span<const uint32_t> oid);

}  // namespace heron::devicecomm

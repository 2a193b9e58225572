// The address of a device as people write it, and where that is.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace heron::devicecomm {

using Clock = std::chrono::steady_clock;

/// "host", "host:port", "[v6]:port", "[v6]" or "v6".
struct Address {
  std::string host;
  uint16_t port = 161;
  int family = 0;  ///< 4 or 6 if the host is numeric, else 0
};

/// Nothing for an empty host, a port outside 1 to 65535, and what no host name can hold.
std::optional<Address> ParseAddress(std::string_view text);

/// Whether a wait should end before its time.
using StopCheck = std::function<bool()>;

/// The numeric hosts of a name, at most four, as the SNMP library takes them: "udp:192.0.2.7:161". A name's look-up
/// ends at `deadline` at the latest. Empty if there is none.
std::vector<std::string> Resolve(const Address& address, Clock::time_point deadline, const StopCheck& stop);

}  // namespace heron::devicecomm

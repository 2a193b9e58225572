// Parses and resolves addresses (address.h).

#include "address.h"

#include <arpa/inet.h>
#include <netdb.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace heron::devicecomm {
namespace {

constexpr size_t kMostHosts = 4;
constexpr std::chrono::milliseconds kLookInterval{50};

int FamilyOf(const std::string& host) {
  std::array<unsigned char, sizeof(in6_addr)> bytes{};
  if (inet_pton(AF_INET, host.c_str(), bytes.data()) == 1) return 4;
  const std::string without_zone = host.substr(0, host.find('%'));
  return inet_pton(AF_INET6, without_zone.c_str(), bytes.data()) == 1 ? 6 : 0;
}

bool ParsePort(std::string_view text, uint16_t* port) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *port);
  return error == std::errc() && end == text.data() + text.size() && *port != 0;
}

/// What separates the parts of the library's addresses, or can't be in a name at all.
bool IsHostCharacter(char c) {
  constexpr std::string_view kOthers = ".-_:%";
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
         kOthers.find(c) != std::string_view::npos;
}

std::string PeerName(int family, std::string_view host, uint16_t port) {
  const std::string number = std::to_string(port);
  return family == 6 ? "udp6:[" + std::string(host) + "]:" + number : "udp:" + std::string(host) + ':' + number;
}

/// A look-up by the system can't be interrupted, so that it has a thread to itself, which may outlive who asked.
struct LookUp {
  std::mutex mutex;
  std::condition_variable done_changed;
  bool done = false;
  std::vector<std::pair<int, std::string>> hosts;
};

void Run(LookUp& look_up, const std::string& host) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_DGRAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0) found = nullptr;
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, freeaddrinfo);
  const std::lock_guard guard(look_up.mutex);
  for (const addrinfo* entry = found; entry != nullptr && look_up.hosts.size() < kMostHosts; entry = entry->ai_next) {
    std::array<char, NI_MAXHOST> text{};
    if (getnameinfo(entry->ai_addr, entry->ai_addrlen, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) == 0)
      look_up.hosts.emplace_back(entry->ai_family == AF_INET6 ? 6 : 4, text.data());
  }
  look_up.done = true;
  look_up.done_changed.notify_all();
}

}  // namespace

std::optional<Address> ParseAddress(std::string_view text) {
  Address address;
  std::string_view host = text, port;
  if (text.starts_with('[')) {
    const size_t end = text.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    host = text.substr(1, end - 1);
    port = text.substr(end + 1);
    if (FamilyOf(std::string(host)) != 6 || (!port.empty() && !port.starts_with(':'))) return std::nullopt;
    if (!port.empty() && !ParsePort(port.substr(1), &address.port)) return std::nullopt;
  } else if (std::ranges::count(text, ':') == 1) {
    host = text.substr(0, text.find(':'));
    if (!ParsePort(text.substr(host.size() + 1), &address.port)) return std::nullopt;
  }
  address.host = host;
  address.family = FamilyOf(address.host);
  const bool has_colon = host.find(':') != std::string_view::npos;
  if (host.empty() || !std::ranges::all_of(host, IsHostCharacter) || (has_colon && address.family != 6))
    return std::nullopt;
  return address;
}

std::vector<std::string> Resolve(const Address& address, Clock::time_point deadline, const StopCheck& stop) {
  if (address.family != 0) return {PeerName(address.family, address.host, address.port)};
  const auto look_up = std::make_shared<LookUp>();
  try {
    std::thread([look_up, host = address.host] {
      try {
        Run(*look_up, host);
      } catch (const std::bad_alloc&) {  // as if there were no such host
      }
    }).detach();
  } catch (const std::system_error&) {
    return {};
  }
  std::vector<std::string> peers;
  std::unique_lock lock(look_up->mutex);
  while (!look_up->done && Clock::now() < deadline && !stop())
    look_up->done_changed.wait_until(lock, std::min(deadline, Clock::now() + kLookInterval));
  if (!look_up->done) return {};
  for (const auto& [family, host] : look_up->hosts) peers.push_back(PeerName(family, host, address.port));
  return peers;
}

}  // namespace heron::devicecomm

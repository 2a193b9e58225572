// The machine's clock and network adapters (machine.h).

#include "platform/sqlite/machine.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>

namespace heron::store {
namespace {

namespace fs = std::filesystem;

constexpr int kEthernet = 1;

bool ReadAddress(const fs::path& adapter, platform::AdapterAddress* address) {
  int type = 0;
  std::ifstream(adapter / "type") >> type;
  std::string text;
  std::ifstream(adapter / "address") >> text;
  std::array<unsigned, 6> parts{};
  const int read = std::sscanf(text.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x", &parts[0], &parts[1], &parts[2], &parts[3],
                               &parts[4], &parts[5]);
  std::ranges::transform(parts, address->begin(), [](unsigned part) { return static_cast<uint8_t>(part); });
  return type == kEthernet && read == 6 && std::ranges::any_of(parts, [](unsigned part) { return part != 0; });
}

}  // namespace

bool ToLocalTime(const timespec& moment, platform::SYSTEMTIME* time) {
  tm local;
  if (localtime_r(&moment.tv_sec, &local) == nullptr) return false;
  const auto word = [](long value) { return static_cast<platform::WORD>(value); };
  *time = {.wYear = word(local.tm_year + 1900),
           .wMonth = word(local.tm_mon + 1),
           .wDayOfWeek = word(local.tm_wday),
           .wDay = word(local.tm_mday),
           .wHour = word(local.tm_hour),
           .wMinute = word(local.tm_min),
           .wSecond = word(local.tm_sec),
           .wMilliseconds = word(moment.tv_nsec / 1'000'000)};
  return true;
}

bool ReadLocalTime(platform::SYSTEMTIME* time) {
  timespec now;
  return clock_gettime(CLOCK_REALTIME, &now) == 0 && ToLocalTime(now, time);
}

std::vector<platform::AdapterAddress> ReadAdapters(const fs::path& folder) {
  std::vector<fs::path> adapters;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) adapters.push_back(entry.path());
  std::ranges::sort(adapters);
  std::vector<platform::AdapterAddress> addresses;
  for (const fs::path& adapter : adapters) {
    platform::AdapterAddress address;
    if (ReadAddress(adapter, &address)) addresses.push_back(address);
  }
  return addresses;
}

}  // namespace heron::store

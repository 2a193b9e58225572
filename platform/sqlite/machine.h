// The machine's clock and network adapters.
#pragma once

#include <ctime>
#include <filesystem>
#include <vector>

#include "platform/api/backend.h"

namespace heron::store {

/// Date and time in the user's time zone.
bool ReadLocalTime(platform::SYSTEMTIME* time);
/// The same of another moment.
bool ToLocalTime(const timespec& moment, platform::SYSTEMTIME* time);

/// Addresses of the Ethernet adapters that the system lists in `folder`, by their names; those without one are left
/// out.
std::vector<platform::AdapterAddress> ReadAdapters(const std::filesystem::path& folder);

}  // namespace heron::store

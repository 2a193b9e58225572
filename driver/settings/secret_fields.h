// Which fields of a record are secret: a password or an identity code, scrambled or plain.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace heron {

inline constexpr std::string_view kSecretFields[] = {
    "secureCodeA", "securePassword", "secureCodeB", "secureId", "authPassword", "departmentPassword",
};

/// Zeroes them in a record of ours, of whatever version; `record` holds at least 72 bytes and what it declares. Whether
/// any held something.
bool ClearSecrets(std::span<uint8_t> record);

}  // namespace heron

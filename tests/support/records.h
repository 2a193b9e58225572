// Caller records for tests: bytes of exactly the size they declare, so that a read beyond it is seen by the sanitizer.
#pragma once

#include <cstring>
#include <memory>
#include <vector>

#include "platform/api/devmode.h"
#include "settings/driver_env.h"

namespace heron::test {

class CallerRecord {
 public:
  /// A bare public part of `size` bytes with `extra` zero bytes behind it.
  explicit CallerRecord(uint16_t size = kPublicSize, uint16_t extra = 0, uint16_t spec_version = kSpecVersion)
      : bytes_(std::max<size_t>(size_t{size} + extra, 72)) {
    Set<"dmSpecVersion">(spec_version);
    Set<"dmSize">(size);
    Set<"dmDriverExtra">(extra);
  }
  /// A copy of a whole record.
  explicit CallerRecord(const DriverEnv& env) : bytes_(env.bytes.begin(), env.bytes.end()) {}

  /// Writes a public field that the record has room for.
  template <FieldName kName>
  CallerRecord& Set(FieldValue<kName> value) {
    constexpr uint32_t kOffset = FieldOf<kName>().offset;
    if (kOffset + sizeof value <= bytes_.size()) std::memcpy(bytes_.data() + kOffset, &value, sizeof value);
    return *this;
  }
  /// The same, and names it in dmFields.
  template <FieldName kName>
  CallerRecord& Ask(uint32_t bit, FieldValue<kName> value) {
    Set<"dmFields">(ForeignEnv(data()).Public<"dmFields">() | bit);
    return Set<kName>(value);
  }

  uint8_t* data() { return bytes_.data(); }
  size_t size() const { return bytes_.size(); }
  const std::vector<uint8_t>& bytes() const { return bytes_; }
  platform::DEVMODEW* devmode() { return reinterpret_cast<platform::DEVMODEW*>(bytes_.data()); }

 private:
  std::vector<uint8_t> bytes_;
};

/// Names of the fields in which two records differ, blanks between; the mirror and geometry included.
inline std::string Differences(const DriverEnv& a, const DriverEnv& b) {
  std::string names;
  for (const EnvField& field : kEnvFields) {
    for (size_t i = 0; i < field.count; ++i) {
      if (std::memcmp(a.bytes.data() + field.At(i), b.bytes.data() + field.At(i), field.Size()) == 0) continue;
      if (!names.empty()) names += ' ';
      names += field.name;
    }
  }
  return names;
}

}  // namespace heron::test

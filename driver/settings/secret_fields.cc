#include "settings/secret_fields.h"

#include <algorithm>
#include <cstring>

#include "settings/driver_env.h"

namespace heron {
namespace {

constexpr std::u16string_view kSignature = u"QDRV";

bool IsOfOurs(std::span<const uint8_t> record) {
  constexpr EnvField kField = FieldOf<"signature">();
  return record.size() >= kField.offset + kField.Size() &&
         std::memcmp(record.data() + kField.offset, kSignature.data(), kField.Size()) == 0;
}

}  // namespace

bool ClearSecrets(std::span<uint8_t> record) {
  if (!IsOfOurs(record)) return false;
  bool held = false;
  for (const std::string_view name : kSecretFields) {
    const EnvField* const field = FindEnvField(name);
    if (field == nullptr || field->offset >= record.size()) continue;
    const size_t size = std::min<size_t>(field->Size(), record.size() - field->offset);
    const std::span<uint8_t> bytes = record.subspan(field->offset, size);
    held = held || std::ranges::any_of(bytes, [](uint8_t byte) { return byte != 0; });
    std::ranges::fill(bytes, uint8_t{0});
  }
  return held;
}

}  // namespace heron

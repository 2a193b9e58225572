#include "settings/driver_env.h"

namespace heron {
namespace {

constexpr std::u16string_view kSignature = u"QDRV";
constexpr std::string_view kTag = "VORCHS6US";
constexpr EnvField kTagField = FieldOf<"modelTag">();

/// Every byte of the record belongs to exactly one field.
consteval bool FieldsTile() {
  std::array<bool, kEnvSize> taken{};
  for (const EnvField& field : kEnvFields) {
    for (size_t i = 0; i < field.count; ++i) {
      for (uint32_t byte = 0; byte < field.Size(); ++byte) {
        bool& seen = taken[field.At(i) + byte];
        if (seen) return false;
        seen = true;
      }
    }
  }
  return std::all_of(taken.begin(), taken.end(), [](bool seen) { return seen; });
}
static_assert(FieldsTile());
static_assert(FieldOf<"extraGuard">().offset == kPublicSize + kEnvBaseSize);
static_assert(FieldOf<"publicMirror">().Size() == kPublicSize);

bool SameVersion(uint16_t a, uint16_t b) {
  return ((a ^ b) & kVersionMask) == 0;
}

bool HasSignature(const ForeignEnv& record) {
  constexpr EnvField kField = FieldOf<"signature">();
  return record.Size() >= kField.offset + kField.Size() &&
         std::memcmp(record.data() + kField.offset, kSignature.data(), kField.Size()) == 0;
}

std::string_view Tag(const ForeignEnv& record) {
  const std::string_view field(reinterpret_cast<const char*>(record.data()) + kTagField.offset, kTagField.Size());
  return field.substr(0, field.find('\0'));
}

}  // namespace

bool IsOwnEnv(const void* record) {
  const ForeignEnv env(record);
  return env && env.Public<"dmSpecVersion">() == kSpecVersion && env.PublicSize() == kPublicSize &&
         env.PrivateSize() == kPrivateSize && SameVersion(env.Public<"dmDriverVersion">(), kDriverVersion) &&
         HasSignature(env) && Tag(env) == kTag;
}

bool IsSameEnvFormat(const void* a, const void* b) {
  const ForeignEnv first(a);
  const ForeignEnv second(b);
  if (!first || !second) return false;
  return first.Public<"dmSpecVersion">() == second.Public<"dmSpecVersion">() &&
         first.PublicSize() == second.PublicSize() && first.PrivateSize() == second.PrivateSize() &&
         SameVersion(first.Public<"dmDriverVersion">(), second.Public<"dmDriverVersion">()) && HasSignature(first) &&
         first.Size() >= kTagField.offset + kTagField.Size() && Tag(first) == Tag(second);
}

void StampEnvTag(DriverEnv& env) {
  uint8_t* field = FieldBytes<"modelTag">(env);
  std::memset(field, 0, kTagField.Size());
  std::memcpy(field, kTag.data(), kTag.size());
}

}  // namespace heron

#include "settings/convert.h"

#include <array>
#include <memory>

#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "platform/api/handles.h"
#include "platform/api/spooler.h"
#include "settings/defaults.h"
#include "settings/printer_data.h"

namespace heron {
namespace {

using namespace platform;

/// The part of a record's header that identifies its format.
struct Format {
  uint16_t specVersion;
  uint16_t driverVersion;
  uint16_t size;
  uint16_t extra;
  constexpr uint32_t Whole() const { return uint32_t{size} + extra; }
};

/// The record of the system before this one.
constexpr Format kLegacyFormat = {.specVersion = 0x320, .driverVersion = 0, .size = 188, .extra = 849};
static_assert(kLegacyFormat.Whole() == 1037);

Format FormatOf(const ForeignEnv& record) {
  return {record.Public<"dmSpecVersion">(), record.Public<"dmDriverVersion">(), record.Public<"dmSize">(),
          record.Public<"dmDriverExtra">()};
}

void StampFormat(uint8_t* record, const Format& format) {
  std::memcpy(record + FieldOf<"dmSpecVersion">().offset, &format, sizeof format);
}
static_assert(sizeof(Format) == 8 && FieldOf<"dmDriverExtra">().offset == FieldOf<"dmSpecVersion">().offset + 6);

/// The version that a public size means; 0 if unknown.
uint16_t VersionOf(const Format& format) {
  switch (format.size) {
    case 188:
      return 0x320;
    case 212:
      return 0x400;
    case 220:
      return kSpecVersion;
    default:
      return format.specVersion;
  }
}

/// Copies `source` into a record of `format` at `target`.
int32_t CopyInto(const ForeignEnv& source, uint8_t* target, Format format) {
  const Format from = FormatOf(source);
  format.specVersion = VersionOf(format);
  if (VersionOf(from) == 0 || format.specVersion == 0) return -1;
  const uint16_t size = std::min(from.size, format.size);
  const uint16_t extra = std::min(from.extra, format.extra);
  // Source and target may be one record: the private part moves only if the public sizes differ.
  if (format.size <= from.size) {
    std::memmove(target, source.data(), size);
    std::memmove(target + format.size, source.data() + from.size, extra);
  } else {
    std::memmove(target + format.size, source.data() + from.size, extra);
    std::memmove(target, source.data(), size);
  }
  StampFormat(target, format);
  return size + extra;
}

int32_t Fail(uint32_t error) {
  SetLastError(error);
  return 0;
}

int32_t ConvertToTarget(const ForeignEnv& input, uint8_t* output, uint32_t* needed) {
  if (!input || output == nullptr) return Fail(kErrorInvalidParameter);
  const uint32_t size = ForeignEnv(output).Size();
  if (*needed < size || ConvertEnv(input, output) <= 0) return Fail(kErrorInvalidParameter);
  *needed = size;
  return 1;
}

int32_t ConvertToLegacy(const ForeignEnv& input, uint8_t* output, uint32_t* needed) {
  const bool room = output != nullptr && *needed >= kLegacyFormat.Whole();
  *needed = room ? *needed : kLegacyFormat.Whole();
  if (!room) return Fail(kErrorInsufficientBuffer);
  if (!input || CopyInto(input, output, kLegacyFormat) <= 0) return Fail(kErrorInvalidParameter);
  *needed = kLegacyFormat.Whole();
  return 1;
}

int32_t DriverDefault(const char16_t* printer_name, uint8_t* output, uint32_t* needed) {
  const bool room = output != nullptr && *needed >= kEnvSize;
  *needed = kEnvSize;
  if (!room) return Fail(kErrorInsufficientBuffer);
  HANDLE handle = nullptr;
  if (OpenPrinterW(printer_name, &handle, nullptr) == 0) return 0;
  const UniquePrinter printer(handle);
  EnsureRenderDriverValue(handle);
  if (!RefreshDriverDirectory(handle)) return 0;
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(ReadLocaleCountry()));
  if (resources == nullptr) return 0;
  const auto env = std::make_unique<DriverEnv>();
  BuildDefaultEnv(resources.get(), env.get(), printer_name, handle);
  std::memcpy(output, env->bytes.data(), kEnvSize);
  return 1;
}

}  // namespace

int32_t ConvertEnv(const ForeignEnv& source, uint8_t* target) {
  return CopyInto(source, target, FormatOf(ForeignEnv(target)));
}

bool ConvertEnvOut(const DriverEnv& env, const ForeignEnv& input, uint8_t* output) {
  const ForeignEnv own(env.bytes.data());
  if (!input) {
    std::memcpy(output, own.data(), own.Size());
    return true;
  }
  Format format = FormatOf(own);
  const Format given = FormatOf(input);
  if (given.size < format.size) {
    format.size = given.size;
    format.specVersion = given.specVersion;
  }
  if (given.extra < format.extra) {
    format.extra = given.extra;
    format.driverVersion = given.driverVersion;
  }
  return CopyInto(own, output, format) > 0;
}

int32_t ConvertDevMode(const char16_t* printer_name, const uint8_t* input, uint8_t* output, uint32_t* needed,
                       uint32_t mode) {
  if (needed == nullptr) return Fail(kErrorInvalidParameter);
  switch (mode) {
    case CDM_CONVERT:
      return ConvertToTarget(ForeignEnv(input), output, needed);
    case CDM_CONVERT351:
      return ConvertToLegacy(ForeignEnv(input), output, needed);
    case CDM_DRIVER_DEFAULT:
      return DriverDefault(printer_name, output, needed);
    default:
      return 0;
  }
}

}  // namespace heron

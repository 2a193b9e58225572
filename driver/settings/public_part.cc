// The fields of the public part that no choice changes (public_part.h).
#include "settings/public_part.h"

#include <cstring>
#include <string>

#include "catalog/other_values.h"
#include "generated/features.h"
#include "settings/printer_data.h"

namespace heron {

using namespace platform;

namespace {

DWORD FieldsOf(const DriverEnv& env, const char16_t* printer_name) {
  constexpr DWORD kAlways = DM_ORIENTATION | DM_PAPERSIZE | DM_DEFAULTSOURCE;
  constexpr DWORD kJob = DM_COPIES | DM_DUPLEX;
  if (!InExcel()) return kAlways | kJob | DM_PRINTQUALITY | DM_YRESOLUTION;
  const std::u16string name = printer_name != nullptr ? printer_name : GetText<"dmDeviceName">(env);
  return BookModeStatus(name) == kBookModeFax ? kAlways : kAlways | kJob;
}

}  // namespace

void InitPublicPart(DriverEnv* env, const char16_t* printer_name) {
  Set<"dmSpecVersion">(*env, kSpecVersion);
  Set<"dmDriverVersion">(*env, kDriverVersion);
  Set<"dmSize">(*env, kPublicSize);
  Set<"dmDriverExtra">(*env, kPrivateSize);
  std::memcpy(FieldBytes<"signature">(*env), u"QDRV", FieldOf<"signature">().Size());
  Set<"dmFields">(*env, FieldsOf(*env, printer_name));
  Set<"dmScale">(*env, 100);
  Set<"dmCollate">(*env, 0);
  Set<"dmTTOption">(*env, value::dmTTOption::kDownload);
  if (printer_name != nullptr) SetText<"dmDeviceName">(*env, printer_name);
  constexpr uint32_t kFormName = FieldOf<"dmFormName">().offset;
  std::memset(env->bytes.data() + kFormName, 0, kPublicSize - kFormName);
  StampEnvTag(*env);
}

int16_t LegalCopies(const ResourceContext* resources, int16_t copies) {
  const auto max = static_cast<int16_t>(CatalogQuery(resources, feature::Copies, kMax, nullptr, 0, 0));
  if (copies > max) return max;
  const auto min = static_cast<int16_t>(CatalogQuery(resources, feature::Copies, kMin, nullptr, 0, 0));
  return copies < min ? static_cast<int16_t>(CatalogDefault(resources, feature::Copies)) : copies;
}

}  // namespace heron

#include "settings/defaults.h"

#include <string>

#include "catalog/other_values.h"
#include "generated/features.h"
#include "settings/binding.h"
#include "settings/papers.h"
#include "settings/printer_data.h"
#include "settings/public_part.h"

namespace heron {
namespace {

using namespace platform;

constexpr uint16_t kTraysInTable = FieldOf<"trayTable.lpMediaSource">().count;

/// Writes what the field table gives: catalogue defaults and constants.
void ApplyTableDefaults(const ResourceContext* resources, DriverEnv& env) {
  for (const EnvField& field : kEnvFields) {
    if (!field.fromFeature && field.value == 0) continue;
    for (uint16_t i = 0; i < field.count; ++i) {
      uint32_t value = field.value;
      if (field.fromFeature) {
        const int feature = field.value + (field.countsOn ? i : 0);
        value = CatalogDefault(resources, static_cast<uint16_t>(feature));
      }
      std::memcpy(env.bytes.data() + field.At(i), &value, field.ElementSize());
    }
  }
}

/// An output paper that follows the document takes its code and switches the zoom off.
void ResolveOutputPaper(DriverEnv& env) {
  if (Get<"lpOutputPaper">(env) != kSameAsDocument) return;
  Set<"lpOutputPaper">(env, Get<"dmPaperSize">(env));
  Set<"ZoomCheck">(env, value::ZoomCheck::kOff);
  Set<"Zoom">(env, 100);
}

void SetPaperSize(const ResourceContext* resources, DriverEnv& env) {
  uint32_t size[2] = {};
  CatalogQuery(resources, feature::lpMediaSize, kDefaultSize, size, 0, sizeof size);
  Set<"dmPaperWidth">(env, size[0] / 10);
  Set<"dmPaperLength">(env, size[1] / 10);
}

bool IsOnByDefault(const ResourceContext* resources, uint16_t feature) {
  return CatalogDefault(resources, feature) == 1;
}

void SetCovers(const ResourceContext* resources, DriverEnv& env) {
  if (IsOnByDefault(resources, feature::Front_Check))
    Set<"lpFrontCover">(env, CatalogDefault(resources, feature::lpFrontCover));
  if (IsOnByDefault(resources, feature::Back_Check))
    Set<"lpBackCover">(env, CatalogDefault(resources, feature::lpBackCover));
}

/// The first rows of the tray table name the model's trays; the others keep the default tray.
void SetTrays(const ResourceContext* resources, DriverEnv& env) {
  const uint32_t trays = CatalogQuery(resources, feature::lpMediaSource, kCount, nullptr, 0, 0);
  for (uint32_t i = 0; i < std::min<uint32_t>(trays, kTraysInTable); ++i) {
    Set<"trayTable.lpMediaSource">(env, CatalogQuery(resources, feature::lpMediaSource, kValue, nullptr, i, 0), i);
  }
}

void SetBinding(DriverEnv& env) {
  const uint8_t side = ComputeBindingSide(env);
  Set<"bindingSide">(env, side);
  const bool one_sided = Get<"lpPRNType">(env) == value::lpPRNType::kOneSided;
  Set<"dmDuplex">(env, one_sided ? value::dmDuplex::kOneSided : DuplexForBinding(Get<"dmOrientation">(env), side));
}

}  // namespace

void BuildDefaultEnv(const ResourceContext* resources, DriverEnv* env, const char16_t* printer_name, HANDLE printer) {
  std::u16string own_name;
  if (printer_name == nullptr) own_name = PrinterName(printer);
  env->bytes.fill(0);
  std::memcpy(FieldBytes<"extraGuard">(*env), "4321", FieldOf<"extraGuard">().Size());
  std::memcpy(FieldBytes<"endGuard">(*env), "1234", FieldOf<"endGuard">().Size());
  InitPublicPart(env, printer_name != nullptr ? printer_name : own_name.c_str());
  ApplyTableDefaults(resources, *env);
  SetPaperSize(resources, *env);
  ResolveOutputPaper(*env);
  SetCovers(resources, *env);
  const bool changes_depth = IsOnByDefault(resources, feature::EnableBPPChange_Check);
  Set<"EnableBPPChange_Check">(
      *env, changes_depth ? value::EnableBPPChange_Check::kOnInRecord : value::EnableBPPChange_Check::kOffInRecord);
  Set<"maxCopies">(*env, CatalogQuery(resources, feature::Copies, kMax, nullptr, 0, 0));
  SetTrays(resources, *env);
  SetBinding(*env);
}

}  // namespace heron

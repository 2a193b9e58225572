// What is legal, and what takes the place of what isn't (repair.h).
#include "presets/repair.h"

#include <algorithm>
#include <cstring>

#include "presets/key_walk.h"

namespace heron {
namespace {

constexpr int32_t kUnbounded = -1;

bool IsSigned(uint16_t type) {
  return type == kTypeI16 || type == kTypeI32 || type == kTypeI32Alone;
}

/// The value of a numeric slot in 64 bits, with the sign that its type has.
int64_t NumberIn(const uint8_t* data, uint32_t size, uint16_t type) {
  uint32_t bits = 0;
  std::memcpy(&bits, data, std::min<size_t>(size, sizeof bits));  // the low bytes come first
  if (type == kTypeI16) return static_cast<int16_t>(bits);
  return IsSigned(type) ? static_cast<int32_t>(bits) : int64_t{bits};
}

void RepairBounded(const UiState& ui, const KeyEntry& key, const ResourceContext* resources) {
  const uint16_t feature = ValueFeatureOf(key.param->row->id);
  StoreField value;
  if (feature == kNoFeature || !LocateValue(key, ui, 1, 1, &value) || value.type > kTypeI32Alone) return;
  const auto bound = [&](Selector selector) {
    return static_cast<int32_t>(CatalogQuery(resources, feature, selector, nullptr, 0, 0));
  };
  const int32_t min = bound(kMin);
  const int32_t max = bound(kMax);
  const int64_t number = NumberIn(value.data, value.size, value.type);
  if (min == kUnbounded || max == kUnbounded || (number >= min && number <= max)) return;
  if (const uint8_t* fallback = StoredDefault(key, ui)) std::memcpy(value.data, fallback, value.size);
}

}  // namespace

bool IsLegalValue(const ResourceContext* resources, uint16_t feature, uint16_t value) {
  const auto number = static_cast<int16_t>(value);
  const std::span<const ListOption> options = ListOptionsOf(feature);
  if (!options.empty()) return std::ranges::find(options, number, &ListOption::value) != options.end();
  if (KindOf(feature) != FeatureKind::kRange) return true;
  const auto min = static_cast<int32_t>(CatalogQuery(resources, feature, kMin, nullptr, 0, 0));
  const auto max = static_cast<int32_t>(CatalogQuery(resources, feature, kMax, nullptr, 0, 0));
  return number >= min && number <= max;
}

void RepairSettings(const UiState& ui, int group, const ResourceContext* resources) {
  for (const KeyEntry& key : Plan().keys) {
    if (key.field != nullptr || (group != kAllGroups && key.row->group != group)) continue;
    const ParamRow& row = *key.param->row;
    if (row.feature == kNoFeature) {
      RepairBounded(ui, key, resources);
    } else if (row.HasBlock()) {
      uint16_t* const value = FieldsOf(ui, key.param->selfIndex).value;
      if (!IsLegalValue(resources, row.feature, *value)) {
        *value = static_cast<uint16_t>(CatalogDefault(resources, row.feature));
      }
    }
  }
}

}  // namespace heron

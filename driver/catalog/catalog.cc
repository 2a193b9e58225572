// Queries of the option catalogue: a table of selectors by kind of feature, each cell a small function.
//
// A cell sees a feature that exists and, where its selector needs one, an output that isn't null. Outputs may be
// unaligned, so they are written through memcpy.
#include "catalog/catalog.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "catalog/source_units.h"
#include "catalog/tables.h"
#include "platform/api/modules.h"

namespace heron {
namespace {

using catalog::Feature;
using catalog::PaperGeometry;

struct Query {
  const ResourceContext& resources;
  const Feature& feature;
  void* out;
  uint32_t index;
  uint32_t size;
};

using Cell = uint32_t (*)(const Query&);

uint8_t* At(void* out, size_t offset) {
  return static_cast<uint8_t*>(out) + offset;
}

/// Result of a number: itself, and in the output if there is one. A negative number goes out as its 32 bits.
uint32_t Answer(const Query& query, int32_t number) {
  const auto value = static_cast<uint32_t>(number);
  if (query.out != nullptr) std::memcpy(query.out, &value, sizeof value);
  return value;
}

uint32_t DefaultOf(const Query& query) {
  return catalog::DefaultIndex(ListRows(query.feature), query.resources.destinationMask);
}

uint32_t Count(const Query& query) {
  return query.feature.count;
}

/// Writes the label into a slot of `room` characters, which is zeroed first, and returns its length.
uint32_t WriteLabel(const ResourceContext& resources, uint16_t label, void* slot, uint32_t room) {
  std::memset(slot, 0, size_t{room} * sizeof(char16_t));
  if (label == 0 || room == 0) return 0;
  const int bounded = static_cast<int>(std::min<uint32_t>(room, std::numeric_limits<int>::max()));
  const int length = platform::LoadStringW(resources.module, label, static_cast<char16_t*>(slot), bounded);
  return length > 0 ? static_cast<uint32_t>(length) : 0;
}

uint32_t ListLabels(const Query& query) {
  size_t offset = 0;
  for (const ListOption& option : ListRows(query.feature)) {
    WriteLabel(query.resources, option.label, At(query.out, offset), query.size);
    offset += size_t{query.size} * sizeof(char16_t);
  }
  return query.feature.count * query.size;
}

/// Label of row `row`. An index that doesn't exist zeroes the output all the same; so do the three functions below.
uint32_t LabelOfRow(const Query& query, uint32_t row) {
  const uint16_t label = query.index < query.feature.count ? ListRows(query.feature)[row].label : uint16_t{0};
  return WriteLabel(query.resources, label, query.out, query.size);
}

uint32_t ListLabel(const Query& query) {
  return LabelOfRow(query, query.index);
}

uint32_t ListDefaultLabel(const Query& query) {
  return LabelOfRow(query, DefaultOf(query));
}

/// A text goes out whole with its terminator or not at all; `size` is in bytes.
uint32_t TextOfRow(const Query& query, uint32_t row) {
  std::memset(query.out, 0, query.size);
  if (query.index >= query.feature.count) return 0;
  const std::u16string_view text = TextRows(query.feature)[row].text;
  if ((text.size() + 1) * sizeof(char16_t) > query.size) return 0;
  std::memcpy(query.out, text.data(), text.size() * sizeof(char16_t));
  return static_cast<uint32_t>(text.size());
}

uint32_t TextAt(const Query& query) {
  return TextOfRow(query, query.index);
}

uint32_t DefaultText(const Query& query) {
  return TextOfRow(query, catalog::DefaultIndex(TextRows(query.feature), query.resources.destinationMask));
}

uint32_t ListValues(const Query& query) {
  size_t offset = 0;
  for (const ListOption& option : ListRows(query.feature)) {
    const int32_t value = option.value;
    const size_t width = query.size == sizeof option.value ? sizeof option.value : sizeof value;
    std::memcpy(At(query.out, offset), &value, width);  // the low bytes come first
    offset += width;
  }
  return 0;
}

uint32_t ListValue(const Query& query) {
  if (query.index >= query.feature.count) return 0;
  return Answer(query, ListRows(query.feature)[query.index].value);
}

uint32_t ListDefaultValue(const Query& query) {
  if (query.index >= query.feature.count) return 0;
  return Answer(query, ListRows(query.feature)[DefaultOf(query)].value);
}

uint32_t RangeDefault(const Query& query) {
  if (query.index >= query.feature.count) return 0;
  return Answer(query, RangeRow(query.feature).defaultValue);
}

uint32_t RangeMin(const Query& query) {
  return Answer(query, RangeRow(query.feature).min);
}

uint32_t RangeMax(const Query& query) {
  return Answer(query, RangeRow(query.feature).max);
}

uint32_t RangeStep(const Query& query) {
  return Answer(query, RangeRow(query.feature).step);
}

uint32_t TextMin(const Query& query) {
  return Answer(query, static_cast<int32_t>(TextRows(query.feature)[0].min));
}

uint32_t TextMax(const Query& query) {
  return Answer(query, static_cast<int32_t>(TextRows(query.feature)[0].max));
}

/// Writes one part of a paper's geometry; a row that is no paper leaves its slot as it was.
template <auto kPart>
void WritePart(const ListOption& option, uint8_t* slot) {
  const PaperGeometry* geometry = catalog::GeometryOf(option.value);
  if (geometry != nullptr) std::memcpy(slot, &(geometry->*kPart), sizeof(geometry->*kPart));
}

template <auto kPart>
uint32_t PartOfAll(const Query& query) {
  size_t offset = 0;
  for (const ListOption& option : ListRows(query.feature)) {
    WritePart<kPart>(option, At(query.out, offset));
    offset += sizeof(std::declval<PaperGeometry>().*kPart);
  }
  return query.feature.count;
}

template <auto kPart>
uint32_t PartOfRow(const Query& query) {
  if (query.index >= query.feature.count) return 0;
  WritePart<kPart>(ListRows(query.feature)[query.index], At(query.out, 0));
  return query.index;
}

template <auto kPart>
uint32_t PartOfDefault(const Query& query) {
  if (query.index >= query.feature.count) return 0;
  const uint32_t index = DefaultOf(query);
  WritePart<kPart>(ListRows(query.feature)[index], At(query.out, 0));
  return index;
}

/// What a selector does with each kind of feature; null answers 0.
struct SelectorRow {
  uint32_t selector = 0;
  bool needsOut = true;
  Cell list = nullptr;
  Cell range = nullptr;
  Cell text = nullptr;
  Cell bounded = nullptr;
};

constexpr bool kOutIsOptional = false;
constexpr bool kNeedsOut = true;

constexpr auto kExtent = &PaperGeometry::size;
constexpr auto kPrintable = &PaperGeometry::printable;
constexpr auto kDotExtent = &PaperGeometry::dotSize;
constexpr auto kDotPrintable = &PaperGeometry::dotPrintable;

// clang-format off
constexpr SelectorRow kSelectors[] = {
    // selector          output          list                         range         text         bounded text
    {kCount,             kOutIsOptional, Count,                       Count,        Count,       Count},
    {kAllLabels,         kNeedsOut,      ListLabels},
    {kLabel,             kNeedsOut,      ListLabel,                   nullptr,      TextAt,      TextAt},
    {kDefaultLabel,      kNeedsOut,      ListDefaultLabel,            nullptr,      DefaultText, DefaultText},
    {kAllValues,         kNeedsOut,      ListValues},
    {kValue,             kOutIsOptional, ListValue,                   RangeDefault},
    {kDefaultValue,      kOutIsOptional, ListDefaultValue,            RangeDefault},
    {kMin,               kOutIsOptional, nullptr,                     RangeMin,     nullptr,     TextMin},
    {kMax,               kOutIsOptional, nullptr,                     RangeMax,     nullptr,     TextMax},
    {kStep,              kOutIsOptional, nullptr,                     RangeStep},
    {kSizes,             kNeedsOut,      PartOfAll<kExtent>},
    {kSize,              kNeedsOut,      PartOfRow<kExtent>},
    {kDefaultSize,       kNeedsOut,      PartOfDefault<kExtent>},
    {kMargins,           kNeedsOut,      PartOfAll<kPrintable>},
    {kMargin,            kNeedsOut,      PartOfRow<kPrintable>},
    {kDefaultMargin,     kNeedsOut,      PartOfDefault<kPrintable>},
    {kDotSizes,          kNeedsOut,      PartOfAll<kDotExtent>},
    {kDotSize,           kNeedsOut,      PartOfRow<kDotExtent>},
    {kDefaultDotSize,    kNeedsOut,      PartOfDefault<kDotExtent>},
    {kDotMargins,        kNeedsOut,      PartOfAll<kDotPrintable>},
    {kDotMargin,         kNeedsOut,      PartOfRow<kDotPrintable>},
    {kDefaultDotMargin,  kNeedsOut,      PartOfDefault<kDotPrintable>},
};
// clang-format on

Cell CellOf(const SelectorRow& row, FeatureKind kind) {
  switch (kind) {
    case FeatureKind::kList:
      return row.list;
    case FeatureKind::kRange:
      return row.range;
    case FeatureKind::kText:
      return row.text;
    case FeatureKind::kBoundedText:
      return row.bounded;
    case FeatureKind::kNone:
      break;
  }
  return nullptr;
}

bool IsHidden(int16_t tray, uint16_t source_unit) {
  return std::ranges::any_of(catalog::kHiddenTrays, [=](const catalog::HiddenTray& row) {
    return row.tray == tray && row.sourceUnit == source_unit;
  });
}

/// Hands the options of a list that the unit leaves to `visit`.
void ForEachKept(const Feature& feature, uint16_t source_unit, auto visit) {
  for (const ListOption& option : ListRows(feature)) {
    if (!IsHidden(option.value, source_unit)) visit(option);
  }
}

uint32_t CountKept(const Feature& feature, uint16_t source_unit) {
  uint32_t count = 0;
  ForEachKept(feature, source_unit, [&](const ListOption&) { ++count; });
  return count;
}

uint32_t LabelsKept(const Query& query, uint16_t source_unit) {
  uint32_t characters = 0;
  size_t offset = 0;
  ForEachKept(query.feature, source_unit, [&](const ListOption& option) {
    characters += WriteLabel(query.resources, option.label, At(query.out, offset), query.size);
    offset += size_t{query.size} * sizeof(char16_t);
  });
  return characters;
}

uint32_t ValuesKept(const Query& query, uint16_t source_unit) {
  size_t offset = 0;
  ForEachKept(query.feature, source_unit, [&](const ListOption& option) {
    std::memcpy(At(query.out, offset), &option.value, sizeof option.value);
    offset += sizeof option.value;
  });
  return 0;
}

}  // namespace

uint32_t CatalogQuery(const ResourceContext* resources, uint16_t feature, uint32_t selector, void* out, uint32_t index,
                      uint32_t size) {
  if (resources == nullptr) return 0;
  const auto row = std::ranges::find(kSelectors, selector, &SelectorRow::selector);
  if (row == std::end(kSelectors) || (row->needsOut && out == nullptr)) return 0;
  const Feature& rows = catalog::FeatureOf(feature);
  const Cell cell = CellOf(*row, rows.kind);
  return cell == nullptr ? 0 : cell({*resources, rows, out, index, size});
}

uint32_t CatalogDefault(const ResourceContext* resources, uint16_t feature) {
  return CatalogQuery(resources, feature, kDefaultValue, nullptr, 0, 0);
}

uint32_t CatalogQueryFiltered(const ResourceContext* resources, uint16_t feature, uint32_t selector, void* out,
                              uint32_t index, uint32_t size, uint16_t source_unit) {
  const Feature& rows = catalog::FeatureOf(feature);
  if (resources == nullptr || rows.kind != FeatureKind::kList) return 0;
  if (selector == kCount) return CountKept(rows, source_unit);
  if (out == nullptr) return 0;
  const Query query{*resources, rows, out, index, size};
  if (selector == kAllLabels) return LabelsKept(query, source_unit);
  if (selector == kAllValues) return ValuesKept(query, source_unit);
  return 0;
}

int CatalogIndexOf(uint16_t feature, int32_t value) {
  const std::span rows = ListOptionsOf(feature);
  const auto row = std::ranges::find(rows, value, &ListOption::value);
  return row == rows.end() ? -1 : static_cast<int>(row - rows.begin());
}

FeatureKind KindOf(uint16_t feature) {
  return catalog::FeatureOf(feature).kind;
}

std::u16string_view FeatureName(uint16_t feature) {
  return catalog::FeatureOf(feature).name;
}

std::span<const ListOption> ListOptionsOf(uint16_t feature) {
  const Feature& rows = catalog::FeatureOf(feature);
  return rows.kind == FeatureKind::kList ? ListRows(rows) : std::span<const ListOption>{};
}

}  // namespace heron

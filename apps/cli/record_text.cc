// Fields of a record as text and JSON (record_text.h).

#include "record_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "catalog/other_values.h"
#include "common/field_json.h"

namespace heron::cli {
namespace {

struct FieldBit {
  uint32_t bit;
  std::string_view name;
  std::string_view field;
};

// clang-format off
constexpr FieldBit kFieldBits[] = {
    {platform::DM_ORIENTATION, "DM_ORIENTATION", "dmOrientation"},
    {platform::DM_PAPERSIZE, "DM_PAPERSIZE", "dmPaperSize"},
    {platform::DM_PAPERLENGTH, "DM_PAPERLENGTH", "dmPaperLength"},
    {platform::DM_PAPERWIDTH, "DM_PAPERWIDTH", "dmPaperWidth"},
    {0x10, "DM_SCALE", "dmScale"},
    {platform::DM_COPIES, "DM_COPIES", "dmCopies"},
    {platform::DM_DEFAULTSOURCE, "DM_DEFAULTSOURCE", "dmDefaultSource"},
    {platform::DM_PRINTQUALITY, "DM_PRINTQUALITY", "dmPrintQuality"},
    {0x800, "DM_COLOR", "dmColor"},
    {platform::DM_DUPLEX, "DM_DUPLEX", "dmDuplex"},
    {platform::DM_YRESOLUTION, "DM_YRESOLUTION", "dmYResolution"},
    {0x4000, "DM_TTOPTION", "dmTTOption"},
    {0x8000, "DM_COLLATE", "dmCollate"},
    {0x10000, "DM_FORMNAME", "dmFormName"},
};
// clang-format on

/// Bytes for display: the first of them, and how many there are.
std::string BytesText(const Bytes& record, const EnvField& field) {
  constexpr size_t kShown = 32;
  if (record::IsFieldZero(record, field)) return "(empty)";
  const std::string hex = record::FieldHex(record, field);
  if (hex.size() <= 2 * kShown) return hex;
  return hex.substr(0, 2 * kShown) + "... (" + std::to_string(field.Size()) + " bytes)";
}

std::string Fraction(int64_t value, int places, const char* unit) {
  std::array<char, 48> text;
  std::snprintf(text.data(), text.size(), "%.*f%s", places, static_cast<double>(value) / (places == 1 ? 10 : 100),
                unit);
  return text.data();
}

std::string InUnit(Unit unit, int64_t value) {
  switch (unit) {
    case Unit::kTenthMm:
      return Fraction(value, 1, " mm");
    case Unit::kHundredthMm:
      return Fraction(value, 2, " mm");
    case Unit::kMm:
      return std::to_string(value) + " mm";
    case Unit::kPercent:
      return std::to_string(value) + " %";
    case Unit::kDpi:
      return std::to_string(value) + " dpi";
    case Unit::kDots:
      return std::to_string(value);
    case Unit::kHour:
      return std::to_string(value) + " h";
    case Unit::kMinute:
      return std::to_string(value) + " min";
  }
  return std::to_string(value);
}

/// The feature whose options the field takes, or -1.
int FeatureOf(const Slot& slot) {
  const EnvField& field = *slot.field;
  if (field.fromFeature) return field.value + (field.countsOn ? slot.index : 0);
  const auto row = std::find_if(std::begin(kFieldFeatures), std::end(kFieldFeatures),
                                [&](const FieldFeature& other) { return other.field == field.name; });
  return row == std::end(kFieldFeatures) ? -1 : row->feature;
}

std::string DuplexText(int64_t value) {
  constexpr const char* kWays[] = {"1 (one-sided)", "2 (two-sided, long edge)", "3 (two-sided, short edge)"};
  return value >= value::dmDuplex::kOneSided && value <= value::dmDuplex::kShortEdge ? kWays[value - 1]
                                                                                     : std::to_string(value);
}

/// Of a switch.
const char* OnOrOff(int64_t value) {
  return value == value::POD_Check::kOn ? "on" : "off";
}

std::string NumberText(const Slot& slot, int64_t value, const Catalogue& catalogue) {
  const std::string_view name = slot.field->name;
  if (name == "dmFields") return FieldBits(static_cast<uint32_t>(value));
  if (name == "dmDuplex") return DuplexText(value);
  namespace depth = value::EnableBPPChange_Check;
  // The only field that stores its switch plus one.
  if (name == "EnableBPPChange_Check" && (value == depth::kOffInRecord || value == depth::kOnInRecord))
    return value == depth::kOnInRecord ? "on" : "off";
  // By the naming rule of the fields. Larger values are shown as numbers: a record may hold anything.
  if (name.find("_Check") != std::string_view::npos && value <= value::POD_Check::kOn) return OnOrOff(value);
  for (const FieldUnit& row : kFieldUnits) {
    if (row.field == name) return InUnit(row.unit, value);
  }
  const int feature = FeatureOf(slot);
  if (feature < 0) return std::to_string(value);
  const std::string label = catalogue.LabelOfValue(static_cast<uint16_t>(feature), static_cast<int32_t>(value));
  if (!label.empty()) return std::to_string(value) + " (" + label + ')';
  if (IsSwitch(static_cast<uint16_t>(feature)) && value <= value::POD_Check::kOn) return OnOrOff(value);
  return std::to_string(value);
}

}  // namespace

std::vector<const EnvField*> FieldsOf(const Bytes& record) {
  // The private part of another driver's record has another meaning, so only public fields are named.
  const bool own = IsOwnEnv(record.data());
  const uint32_t end = own ? kEnvSize : std::min(ForeignEnv(record.data()).PublicSize(), kPublicSize);
  std::vector<const EnvField*> fields;
  for (const EnvField& field : kEnvFields) {
    if (field.name != "reserved" && field.offset + field.Size() <= end) fields.push_back(&field);
  }
  return fields;
}

std::vector<Slot> SlotsOf(const Bytes& record) {
  std::vector<Slot> slots;
  for (const EnvField* field : FieldsOf(record)) {
    for (uint16_t i = 0; i < field->count; ++i) {
      std::string name(field->name);
      if (field->count > 1) name += '[' + std::to_string(i) + ']';
      slots.push_back({field, i, std::move(name)});
    }
  }
  return slots;
}

bool SameBytes(const Bytes& a, const Bytes& b, const Slot& slot) {
  return std::memcmp(a.data() + slot.offset(), b.data() + slot.offset(), slot.field->Size()) == 0;
}

bool IsMainField(const EnvField& field) {
  return std::ranges::find(kMainFields, field.name) != std::end(kMainFields);
}

Group GroupOf(const EnvField& field) {
  const auto next = std::upper_bound(std::begin(kFieldGroups), std::end(kFieldGroups), field.offset,
                                     [](uint16_t offset, const FieldGroup& row) { return offset < row.offset; });
  return std::prev(next)->group;
}

std::string SlotText(const Bytes& record, const Slot& slot, const Catalogue& catalogue) {
  const EnvField& field = *slot.field;
  if (record::IsSecret(field)) return record::IsFieldZero(record, field) ? "(empty)" : "***";
  if (field.type == FieldType::kText) {
    const std::u16string text = record::FieldText(record, field);
    return text.empty() ? "(empty)" : '"' + Printable(text) + '"';
  }
  if (field.type == FieldType::kBytes) return BytesText(record, field);
  std::string text;
  for (uint16_t i = 0; i < field.length; ++i) {
    const uint32_t at = slot.offset() + i * field.ElementSize();
    text += (i > 0 ? ", " : "") + NumberText(slot, record::FieldNumber(record, field.type, at), catalogue);
  }
  return text;
}

std::string FieldBits(uint32_t bits) {
  std::string text;
  const auto add = [&text](std::string_view name) { text += (text.empty() ? "" : ", ") + std::string(name); };
  for (const FieldBit& row : kFieldBits) {
    if ((bits & row.bit) != 0) add(row.name);
    bits &= ~row.bit;
  }
  if (bits != 0) add(std::to_string(bits));
  return text.empty() ? "none" : text;
}

uint32_t BitOfField(const EnvField& field) {
  for (const FieldBit& row : kFieldBits) {
    if (row.field == field.name) return row.bit;
  }
  return 0;
}

}  // namespace heron::cli

// From MIB rows to records (records.h). README.md has the mapping as a table.

#include "records.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string_view>
#include <tuple>

#include "device_table.h"

namespace heron::devicecomm {
namespace {

// Columns by their MIB: SNMPv2-MIB, HOST-RESOURCES-MIB, Printer-MIB (RFC 3805), Finisher-MIB (RFC 3806).
const Oid kSysDescr = {1, 3, 6, 1, 2, 1, 1, 1};
const Oid kStorageType = {1, 3, 6, 1, 2, 1, 25, 2, 3, 1, 2};
const Oid kStorageUnits = {1, 3, 6, 1, 2, 1, 25, 2, 3, 1, 4};
const Oid kStorageSize = {1, 3, 6, 1, 2, 1, 25, 2, 3, 1, 5};
const Oid kDeviceType = {1, 3, 6, 1, 2, 1, 25, 3, 2, 1, 2};
const Oid kDeviceDescr = {1, 3, 6, 1, 2, 1, 25, 3, 2, 1, 3};
const Oid kPrinterStatus = {1, 3, 6, 1, 2, 1, 25, 3, 5, 1, 1};
const Oid kPrinterName = {1, 3, 6, 1, 2, 1, 43, 5, 1, 1, 16};
const Oid kInputEntry = {1, 3, 6, 1, 2, 1, 43, 8, 2, 1};
const Oid kOutputEntry = {1, 3, 6, 1, 2, 1, 43, 9, 2, 1};
const Oid kMediaPathType = {1, 3, 6, 1, 2, 1, 43, 13, 4, 1, 9};
const Oid kInterpreterDescription = {1, 3, 6, 1, 2, 1, 43, 15, 1, 1, 5};
const Oid kInterpreterVersion = {1, 3, 6, 1, 2, 1, 43, 15, 1, 1, 6};
const Oid kFinisherEntry = {1, 3, 6, 1, 2, 1, 43, 30, 1, 1};
const Oid kFinisherAttribute = {1, 3, 6, 1, 2, 1, 43, 33, 1, 1, 3};

constexpr std::string_view kPrinterDevice = "1.3.6.1.2.1.25.3.1.5";
constexpr uint32_t kFinisherType = 2, kFinisherPresence = 3, kFinisherDescription = 10;
constexpr int64_t kNotPresent = 5;
constexpr uint32_t kPunchPattern = 83;

struct MemoryType {
  std::string_view storage;  ///< hrStorageType
  uint32_t type;
};
constexpr MemoryType kMemoryTypes[] = {
    {"1.3.6.1.2.1.25.2.1.2", kBdcMemoryRam},
    {"1.3.6.1.2.1.25.2.1.4", kBdcMemoryDisk},
};

/// Values of the attribute punchPattern.
struct PunchPattern {
  int64_t pattern;
  uint32_t flag;
};
constexpr PunchPattern kPunchPatterns[] = {
    {4, kBdcPunchesTwoHoles},   {6, kBdcPunchesTwoHoles},  {10, kBdcPunchesTwoHoles},  {12, kBdcPunchesTwoHoles},
    {5, kBdcPunchesThreeHoles}, {7, kBdcPunchesFourHoles}, {11, kBdcPunchesFourHoles},
};

Oid ColumnOf(Oid entry, uint32_t column) {
  entry.push_back(column);
  return entry;
}

/// Cut to the field, which stays terminated.
template <size_t N>
void SetText(char (&field)[N], const std::string& text) {
  std::copy_n(text.begin(), std::min(text.size(), N - 1), field);
}

/// Numbers of a device may be negative (-1 other, -2 unknown, -3 some); records hold their bits.
uint32_t Bits(const Value& value) {
  return static_cast<uint32_t>(
      std::clamp<int64_t>(value.number, std::numeric_limits<int32_t>::min(), std::numeric_limits<uint32_t>::max()));
}

uint32_t LastArc(const Oid& row) {
  return row.empty() ? 0 : row.back();
}

uint32_t NextIndex(size_t count) {
  return static_cast<uint32_t>(count + 1);
}

std::set<Oid> ObjectsOf(RuleKind kind, RuleKind other) {
  std::set<Oid> objects;
  for (const Rule& rule : DeviceRules()) {
    if (rule.kind == kind || rule.kind == other) objects.insert(rule.object);
  }
  return objects;
}

/// What the first rule of the kind says that matches any row.
std::string NamedByRule(const Conversation& device, RuleKind kind) {
  for (const Rule& rule : DeviceRules()) {
    if (rule.kind != kind) continue;
    for (const auto& [row, value] : device.At(rule.object)) {
      if (rule.Matches(value)) return rule.NameOf(value);
    }
  }
  return {};
}

std::string FirstText(const Column& column) {
  return column.empty() ? std::string() : column.begin()->second.text;
}

/// The description of the device that is a printer.
std::string PrinterDescription(const Conversation& device) {
  for (const auto& [row, type] : device.At(kDeviceType)) {
    if (type.text == kPrinterDevice) return device.At(kDeviceDescr, row).text;
  }
  return {};
}

/// The first of the texts that says anything.
std::string FirstOf(std::initializer_list<std::string> texts) {
  const auto found = std::ranges::find_if(texts, [](const std::string& text) { return !text.empty(); });
  return found == texts.end() ? std::string() : *found;
}

bool IsPresent(const Conversation& device, const Oid& finisher) {
  return device.At(ColumnOf(kFinisherEntry, kFinisherPresence), finisher).number != kNotPresent;
}

/// One part of a device makes one record of a name, however many rules tell it by that name.
using Reported = std::set<std::tuple<Oid, Oid, std::string>>;

void AddOptions(const Conversation& device, const Rule& rule, Reported* reported, std::vector<BdcOption>* records) {
  const Oid entry(rule.object.begin(), rule.object.end() - 1);
  for (const auto& [row, value] : device.At(rule.object)) {
    if (!rule.Matches(value) || (entry == kFinisherEntry && !IsPresent(device, row))) continue;
    if (!reported->emplace(entry, row, rule.NameOf(value)).second) continue;
    BdcOption record{.index = NextIndex(records->size()), .type = rule.type, .name = {}};
    SetText(record.name, rule.NameOf(value));
    records->push_back(record);
  }
}

uint32_t PunchFlags(const Conversation& device, const Oid& finisher) {
  constexpr size_t kTypeAt = 2;  // behind the host's device and the finisher
  uint32_t flags = 0;
  for (const auto& [row, value] : device.At(kFinisherAttribute)) {
    if (row.size() <= kTypeAt || row[kTypeAt] != kPunchPattern ||
        !std::ranges::equal(std::span(row).first(kTypeAt), finisher))
      continue;
    const auto found = std::ranges::find(kPunchPatterns, value.number, &PunchPattern::pattern);
    if (found != std::end(kPunchPatterns)) flags |= found->flag;
  }
  return flags;
}

uint32_t KibiBytes(int64_t units, int64_t size) {
  constexpr int64_t kKibi = 1024;
  constexpr int64_t kMost = std::numeric_limits<uint32_t>::max();
  if (units <= 0 || size <= 0) return 0;
  const bool fits = size <= std::numeric_limits<int64_t>::max() / units;
  return static_cast<uint32_t>(fits ? std::min(kMost, (units * size + kKibi - 1) / kKibi) : kMost);
}

}  // namespace

bool FillName(Conversation& device, const BdcLink& link, BdcName* name) {
  std::set<Oid> columns = ObjectsOf(RuleKind::kModel, RuleKind::kFamily);
  columns.insert({kSysDescr, kDeviceType, kDeviceDescr, kPrinterName});
  if (!device.Know(columns, link)) return false;
  const std::string& description = FirstText(device.At(kSysDescr));
  SetText(name->model, FirstOf({NamedByRule(device, RuleKind::kModel), PrinterDescription(device), description}));
  SetText(name->family,
          FirstOf({NamedByRule(device, RuleKind::kFamily), FirstText(device.At(kPrinterName)), description}));
  return true;
}

bool FillStatus(Conversation& device, const BdcLink& link, uint32_t* status) {
  if (!device.Know({kPrinterStatus}, link)) return false;
  const Column& column = device.At(kPrinterStatus);
  *status = column.empty() ? 0 : Bits(column.begin()->second);
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcMemory>* records) {
  if (!device.Know({kStorageType, kStorageUnits, kStorageSize}, link)) return false;
  for (const auto& [row, storage] : device.At(kStorageType)) {
    const auto type = std::ranges::find(kMemoryTypes, storage.text, &MemoryType::storage);
    if (type == std::end(kMemoryTypes)) continue;
    records->push_back({.index = LastArc(row),
                        .size = KibiBytes(device.At(kStorageUnits, row).number, device.At(kStorageSize, row).number),
                        .type = type->type});
  }
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcFirmware>* records) {
  if (!device.Know({kInterpreterDescription, kInterpreterVersion}, link)) return false;
  for (const auto& [row, description] : device.At(kInterpreterDescription)) {
    BdcFirmware record{.index = LastArc(row), .name = {}, .version = {}};
    SetText(record.name, description.text);
    SetText(record.version, device.At(kInterpreterVersion, row).text);
    records->push_back(record);
  }
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcOption>* records) {
  std::set<Oid> columns = ObjectsOf(RuleKind::kOption, RuleKind::kOption);
  columns.insert(ColumnOf(kFinisherEntry, kFinisherPresence));
  if (!device.Know(columns, link)) return false;
  Reported reported;
  for (const Rule& rule : DeviceRules()) {
    if (rule.kind == RuleKind::kOption) AddOptions(device, rule, &reported, records);
  }
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcInputTray>* records) {
  enum : uint32_t { kType = 2, kUnit = 8, kCapacity = 9, kLevel = 10, kStatus = 11, kName = 13 };
  const auto column = [](uint32_t number) { return ColumnOf(kInputEntry, number); };
  if (!device.Know({column(kType), column(kUnit), column(kCapacity), column(kLevel), column(kStatus), column(kName)},
                   link))
    return false;
  for (const auto& [row, type] : device.At(column(kType))) {
    BdcInputTray record{.index = LastArc(row),
                        .type = Bits(type),
                        .unit = Bits(device.At(column(kUnit), row)),
                        .capacity = Bits(device.At(column(kCapacity), row)),
                        .level = Bits(device.At(column(kLevel), row)),
                        .status = Bits(device.At(column(kStatus), row)),
                        .name = {}};
    SetText(record.name, device.At(column(kName), row).text);
    records->push_back(record);
  }
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcOutputTray>* records) {
  enum : uint32_t { kType = 2, kCapacity = 4, kRemaining = 5, kName = 7, kModel = 9 };
  const auto column = [](uint32_t number) { return ColumnOf(kOutputEntry, number); };
  if (!device.Know({column(kType), column(kCapacity), column(kRemaining), column(kName), column(kModel)}, link))
    return false;
  for (const auto& [row, type] : device.At(column(kType))) {
    BdcOutputTray record{.index = LastArc(row),
                         .type = Bits(type),
                         .capacity = Bits(device.At(column(kCapacity), row)),
                         .remaining = Bits(device.At(column(kRemaining), row)),
                         .name = {},
                         .model = {}};
    SetText(record.name, device.At(column(kName), row).text);
    SetText(record.model, device.At(column(kModel), row).text);
    records->push_back(record);
  }
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcMediaPath>* records) {
  if (!device.Know({kMediaPathType}, link)) return false;
  for (const auto& [row, type] : device.At(kMediaPathType))
    records->push_back({.index = LastArc(row), .type = Bits(type)});
  return true;
}

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcFinisher>* records) {
  const auto column = [](uint32_t number) { return ColumnOf(kFinisherEntry, number); };
  if (!device.Know({column(kFinisherType), column(kFinisherPresence), column(kFinisherDescription), kFinisherAttribute},
                   link))
    return false;
  for (const auto& [row, type] : device.At(column(kFinisherType))) {
    if (!IsPresent(device, row)) continue;
    BdcFinisher record{.index = LastArc(row), .type = Bits(type), .name = {}, .flags = PunchFlags(device, row)};
    SetText(record.name, device.At(column(kFinisherDescription), row).text);
    records->push_back(record);
  }
  return true;
}

}  // namespace heron::devicecomm

// Maps a device's records to options (device_options.h).

#include "devicelink/device_options.h"

#include <algorithm>

#include "rules/control_tables.h"

namespace heron {
namespace {

/// Punched holes of any finisher.
uint32_t FinisherBits(const DeviceReport& report) {
  uint32_t bits = 0;
  for (const BdcFinisher& finisher : report.finishers) {
    for (const FinisherBitRow& row : kFinisherBits) {
      if ((finisher.flags & row.flag) != 0) bits |= row.bit;
    }
  }
  return bits;
}

uint32_t BitsOfName(const DeviceReport& report, std::string_view name) {
  uint32_t count = 0;
  uint32_t type = 0;  // of the last record: a name that comes with several types counts as that one
  for (const BdcOption& option : report.options) {
    if (BoundedText(option.name) != name) continue;
    ++count;
    type = option.type;
  }
  uint32_t bits = 0;
  for (const OptionBitRow& row : kOptionBits) {
    if (row.type == type && row.name == name && row.count == count) bits |= row.bit;
  }
  return bits;
}

uint32_t BitsOfNames(const DeviceReport& report, uint16_t control) {
  uint32_t bits = 0;
  for (const DeviceNameRow& row : kDeviceNames) {
    if (row.control == control) bits |= BitsOfName(report, row.name);
  }
  return (bits & kTakesFinisherBits) != 0 ? bits | FinisherBits(report) : bits;
}

uint32_t BitsOfDisk(const DeviceReport& report) {
  const auto is_disk = [](const BdcMemory& memory) { return memory.type == kBdcMemoryDisk && memory.size > 0; };
  return std::ranges::any_of(report.memory, is_disk) ? kDiskBit : kNoDiskBit;
}

uint32_t BitsOfModel(std::string_view model) {
  const auto row = std::ranges::find(kModelBits, model, &ModelBitRow::model);
  return row == kModelBits.end() ? 0 : row->bit;
}

uint32_t BitsOf(const DeviceReport& report, const DeviceOptionRow& row) {
  switch (row.source) {
    case OptionSource::kMemory:
      return BitsOfDisk(report);
    case OptionSource::kModel:
      return BitsOfModel(report.model);
    case OptionSource::kNames:
      return BitsOfNames(report, row.control);
  }
  return 0;
}

ValueFields FieldsOfControl(const UiState& ui, uint16_t control) {
  return FieldsOf(ui, engine::ParamIndexOfControl(engine::IndexOf(control)));
}

}  // namespace

std::string BoundedText(std::span<const char> field) {
  return {field.begin(), std::ranges::find(field, '\0')};
}

bool IsAcceptedModel(std::string_view model) {
  return BitsOfModel(model) != 0;
}

ReportedOptions MapDeviceOptions(const DeviceReport& report) {
  ReportedOptions options;
  std::ranges::transform(kDeviceOptions, options.begin(), [&](const DeviceOptionRow& row) {
    ReportedOption option{.control = row.control, .bits = BitsOf(report, row), .value = {}};
    const auto found = std::ranges::find(kValueBits, option.bits, &ValueBitsRow::bits);
    if (found != kValueBits.end()) option.value = found->value;
    return option;
  });
  return options;
}

uint16_t ValueOf(const UiState& ui, const ReportedOption& option) {
  return option.value.value_or(*FieldsOfControl(ui, option.control).defaultValue);
}

void StoreDeviceOptions(const UiState& ui, const ReportedOptions& options) {
  for (const ReportedOption& option : options) *FieldsOfControl(ui, option.control).value = ValueOf(ui, option);
}

}  // namespace heron

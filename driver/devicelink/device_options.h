// From a device's records to the values of its installed options: pure, over what was read.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "devicelink/device_tables.h"
#include "platform/api/device_module.h"
#include "uistate/ui_state.h"

namespace heron {

/// What a device reported about itself. A list that couldn't be read is empty.
struct DeviceReport {
  BdcVersion library{};
  BdcCommInfo communication{};
  std::string model;
  std::string family;
  std::vector<BdcFirmware> firmware;
  std::vector<BdcMemory> memory;
  std::vector<BdcOption> options;
  std::vector<BdcInputTray> inputTrays;
  std::vector<BdcOutputTray> outputTrays;
  std::vector<BdcMediaPath> mediaPaths;
  std::vector<BdcFinisher> finishers;
  bool complete = false;  ///< no call failed; a device without something of a kind is complete too
};

/// A text of a record up to its terminator or the end of its field.
std::string BoundedText(std::span<const char> field);

/// With regard to case.
bool IsAcceptedModel(std::string_view model);

struct ReportedOption {
  uint16_t control = 0;
  uint32_t bits = 0;
  std::optional<uint16_t> value;  ///< nothing: no value belongs to these bits, and the option takes its default
};
using ReportedOptions = std::array<ReportedOption, kDeviceOptionCount>;

/// The options in the order of kDeviceOptions.
ReportedOptions MapDeviceOptions(const DeviceReport& report);

/// The value that the option takes in these settings.
uint16_t ValueOf(const UiState& ui, const ReportedOption& option);
/// Gives every option its working value; no rule is run.
void StoreDeviceOptions(const UiState& ui, const ReportedOptions& options);

}  // namespace heron

// The query of the device at the address that the settings hold: probes, and reading the installed options.
//
// The steps that ask the device take a DeviceTarget, a copy of what they need of the settings, so that a window can run
// them on a thread of its own and stay alive.
#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>

#include "devicelink/device_options.h"
#include "uistate/ui_state.h"

namespace heron {

inline constexpr size_t kDeviceAddressLength = 63;  ///< characters

std::u16string DeviceAddress(const UiState& ui);
/// Keeps at most 63 characters.
void SetDeviceAddress(const UiState& ui, std::u16string_view address);

struct DeviceTarget {
  std::u16string address;
  std::u16string folder;  ///< of the driver, with its separator
};
DeviceTarget TargetOf(const UiState& ui);

enum class DeviceReply : uint8_t {
  kAccepted,
  kOtherModel,  ///< it answers and is no model of this driver
  kNoAnswer,    ///< nothing answers, or the module isn't there
};

struct DeviceProbe {
  DeviceReply reply = DeviceReply::kNoAnswer;
  std::string model;  ///< empty without an answer
  std::string family;
};

/// Asks for the device's name only.
DeviceProbe ProbeDevice(const DeviceTarget& target, std::stop_token stop = {});
/// Asks for everything; nothing if there is no module. Calls that fail leave their part of the report empty.
std::optional<DeviceReport> ReadDevice(const DeviceTarget& target, std::stop_token stop = {});

/// What keeps a query from asking at all, in this order: no address, no module, no network. The number of the message's
/// text; 0 if nothing does.
uint32_t WhyNotAsked(const DeviceTarget& target);

/// Whether the module can be loaded.
bool DeviceProbeLibrary(const UiState& ui);
/// Whether the system has a network.
bool DeviceProbeNetwork(const UiState& ui);
/// Whether a device answers at the settings' address and is an accepted model.
bool DeviceProbeModel(const UiState& ui);
/// Reads the device and stores its options as working values; those that the device doesn't tell become their
/// defaults. Without the module nothing is changed.
void DeviceQueryOptions(const UiState& ui);

/// What the options would change in these settings, a line for each ("Fax unit: Not installed -> Installed"), behind
/// the model's name; and whether the report has gaps. The texts are in use (catalog/strings.h).
std::u16string DescribeReport(const UiState& ui, const DeviceReport& report, const ReportedOptions& options);
/// The value of an option in words: the item's label, of the model its name.
std::u16string DeviceValueText(uint16_t control, uint16_t value);

/// Publishes in the queue's directory values what the committed options make possible. Failures are ignored.
void DeviceSaveToDirectory(const UiState& ui);

}  // namespace heron

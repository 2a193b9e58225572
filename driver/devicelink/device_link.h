// One conversation with a device through the communication module.
//
// A link has no tie to the settings and may be used on a thread of its own, all of it on the same one. What the module
// gives is believed only inside the sizes of its records: counts are bounded and texts end with their field.
#pragma once

#include <array>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

#include "devicelink/device_options.h"
#include "platform/api/device_module.h"
#include "platform/api/types.h"

namespace heron {

struct DeviceLink {
  DeviceLink() = default;
  ~DeviceLink();
  DeviceLink(const DeviceLink&) = delete;
  DeviceLink& operator=(const DeviceLink&) = delete;

  platform::HMODULE module = nullptr;
  std::array<void*, kBdcFunctionCount> functions{};  ///< by BdcFunction
  BdcLink block{};                                   ///< what the module's functions are given
  std::stop_token stop;
  int status = kBdcDone;  ///< of the last call
  DeviceReport report;    ///< what has been read
};

/// A link to the device at `address` (up to 63 bytes in the system's code page, `community` up to 31; longer ones are
/// cut) through the module in `folder`, which ends with a separator. Nothing without the module or one of its
/// functions. A `stop` that is requested makes the call in progress fail soon.
std::unique_ptr<DeviceLink> DeviceLinkOpen(std::u16string_view address, std::u16string_view community,
                                           std::u16string_view folder, std::stop_token stop = {});
void DeviceLinkClose(std::unique_ptr<DeviceLink> link);

/// Whether the module in `folder` can be loaded.
bool HasDeviceModule(std::u16string_view folder);

// Steps of a conversation, which fill the report. False after a failure; the report then lacks what failed.

bool ReadLibraryVersion(DeviceLink& link);
bool ReadCommunication(DeviceLink& link);
bool ReadName(DeviceLink& link);
/// The lists, in the module's order. A list that fails stays empty and doesn't stop the others.
bool ReadLists(DeviceLink& link);

}  // namespace heron

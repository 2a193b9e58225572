// Probes, query and publication of the installed options (device_query.h).

#include "devicelink/device_query.h"

#include <algorithm>
#include <utility>

#include "devicelink/device_link.h"
#include "engine/setting.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/modules.h"
#include "platform/api/spooler.h"

namespace heron {
namespace {

constexpr std::u16string_view kCommunity = u"kelvoz";
/// The network of the system, by the names under which programs load it.
constexpr const char16_t* kNetworkModules[] = {u"KERNEL32.DLL", u"WS2_32.DLL", u"WSOCK32.DLL"};

using AddressSlot = char16_t[kDeviceAddressLength + 1];

bool CanLoad(const char16_t* name) {
  const platform::HMODULE module = platform::LoadLibraryW(name);
  if (module == nullptr) return false;
  platform::FreeLibrary(module);
  return true;
}

bool HasNetwork() {
  return std::ranges::all_of(kNetworkModules, CanLoad);
}

/// A match of the model suffices; the family, which is compared only then, can't undo it.
DeviceReply ReplyOf(const DeviceReport& report) {
  return IsAcceptedModel(report.model) ? DeviceReply::kAccepted : DeviceReply::kOtherModel;
}

void Publish(const UiState& ui, const char16_t* name, uint8_t value) {
  platform::SetPrinterDataExW(ui.printer, u"DsDriver", name, platform::REG_BINARY, &value, sizeof value);
}

}  // namespace

std::u16string DeviceAddress(const UiState& ui) {
  const AddressSlot& slot = SlotAs<u"szDevIPAddress", AddressSlot>(ui);
  return {slot, std::find(slot, slot + kDeviceAddressLength, u'\0')};
}

void SetDeviceAddress(const UiState& ui, std::u16string_view address) {
  AddressSlot& slot = SlotAs<u"szDevIPAddress", AddressSlot>(ui);
  const std::u16string_view kept = address.substr(0, kDeviceAddressLength);
  std::fill(std::copy(kept.begin(), kept.end(), slot), std::end(slot), u'\0');
}

DeviceTarget TargetOf(const UiState& ui) {
  const std::span folder(ui.head().driverDirectory);
  return {.address = DeviceAddress(ui), .folder = {folder.begin(), std::ranges::find(folder, u'\0')}};
}

DeviceProbe ProbeDevice(const DeviceTarget& target, std::stop_token stop) {
  const auto link = DeviceLinkOpen(target.address, kCommunity, target.folder, std::move(stop));
  if (link == nullptr || !ReadLibraryVersion(*link) || !ReadCommunication(*link) || !ReadName(*link)) return {};
  const DeviceReport& report = link->report;
  return {.reply = ReplyOf(report), .model = report.model, .family = report.family};
}

std::optional<DeviceReport> ReadDevice(const DeviceTarget& target, std::stop_token stop) {
  auto link = DeviceLinkOpen(target.address, kCommunity, target.folder, std::move(stop));
  if (link == nullptr) return std::nullopt;
  bool complete = ReadLibraryVersion(*link);
  complete &= ReadCommunication(*link);
  complete &= ReadName(*link);
  complete &= ReadLists(*link);
  link->report.complete = complete;
  return std::move(link->report);
}

uint32_t WhyNotAsked(const DeviceTarget& target) {
  if (target.address.find_first_not_of(u' ') == std::u16string::npos) return text::kEnterDeviceAddress;
  if (!HasDeviceModule(target.folder)) return text::kNoDeviceModule;
  return HasNetwork() ? 0 : text::kNoNetwork;
}

bool DeviceProbeLibrary(const UiState& ui) {
  return HasDeviceModule(TargetOf(ui).folder);
}

bool DeviceProbeNetwork(const UiState&) {
  return HasNetwork();
}

bool DeviceProbeModel(const UiState& ui) {
  return ProbeDevice(TargetOf(ui)).reply == DeviceReply::kAccepted;
}

void DeviceQueryOptions(const UiState& ui) {
  const std::optional<DeviceReport> report = ReadDevice(TargetOf(ui));
  if (report) StoreDeviceOptions(ui, MapDeviceOptions(*report));
}

void DeviceSaveToDirectory(const UiState& ui) {
  const uint16_t unit = Committed<u"lpOutputUnit">(ui);
  const bool staples = unit != value::lpOutputUnit::kNotInstalled && unit != value::lpOutputUnit::kSeparator;
  Publish(ui, u"printStaplingSupported", staples ? 1 : 0);
  Publish(ui, u"printDuplexSupported", 1);
}

}  // namespace heron

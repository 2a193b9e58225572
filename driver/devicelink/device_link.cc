// Loads the communication module and calls it (device_link.h).

#include "devicelink/device_link.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "platform/api/characters.h"
#include "platform/api/modules.h"

namespace heron {
namespace {

constexpr std::u16string_view kModuleName = u"ETVORBD.DLL";

/// Beyond any device; what reports more isn't one.
constexpr uint32_t kMostRecords = 1024;
constexpr uint32_t kMostMediaPaths = 32;

template <typename Function>
Function FunctionOf(const DeviceLink& link, BdcFunction function) {
  return reinterpret_cast<Function>(link.functions[function]);
}

/// Remembers the status of a call. True if it brought something.
bool Keep(DeviceLink& link, int status) {
  link.status = status;
  return status == kBdcDone;
}

bool GoesOn(DeviceLink& link) {
  if (link.stop.stop_requested()) link.status = kBdcFailed;
  return !link.stop.stop_requested();
}

/// Records of a list into `room`; the number that was written. False if the call failed.
template <typename Record>
bool Fill(DeviceLink& link, BdcFunction function, std::span<Record> room, size_t* written) {
  auto count = static_cast<uint32_t>(room.size());
  *written = 0;
  if (Keep(link, FunctionOf<BdcListFunction>(link, function)(&link.block, &count, room.data()))) {
    *written = std::min<size_t>(count, room.size());
    return true;
  }
  return link.status == kBdcNoData;
}

template <typename Record>
bool ReadList(DeviceLink& link, BdcFunction function, std::vector<Record>* records) {
  records->clear();
  if (!GoesOn(link)) return false;
  uint32_t count = 0;
  if (!Keep(link, FunctionOf<BdcListFunction>(link, function)(&link.block, &count, nullptr)))
    return link.status == kBdcNoData;
  if (count == 0) return true;
  if (count > kMostRecords) return false;
  std::vector<Record> room(count);
  size_t written = 0;
  if (!Fill<Record>(link, function, room, &written)) return false;
  room.resize(written);
  *records = std::move(room);
  return true;
}

/// Their number isn't asked for; there are few.
bool ReadMediaPaths(DeviceLink& link) {
  std::array<BdcMediaPath, kMostMediaPaths> room{};
  size_t written = 0;
  const bool done = GoesOn(link) && Fill<BdcMediaPath>(link, kBdcGetDevMediaPathInfo, room, &written);
  link.report.mediaPaths.assign(room.begin(), room.begin() + static_cast<std::ptrdiff_t>(written));
  return done;
}

/// The text in the system's code page, cut at a whole character; the rest of the field stays zero.
template <size_t N>
void SetField(char (&field)[N], std::u16string_view text) {
  const std::string bytes = platform::AnsiWithin(text, N - 1);
  std::copy_n(bytes.begin(), std::min(bytes.size(), N - 1), field);
}

platform::HMODULE LoadDeviceModule(std::u16string_view folder) {
  return platform::LoadLibraryW(std::u16string(folder).append(kModuleName).c_str());
}

}  // namespace

DeviceLink::~DeviceLink() {
  if (module != nullptr) platform::FreeLibrary(module);
}

std::unique_ptr<DeviceLink> DeviceLinkOpen(std::u16string_view address, std::u16string_view community,
                                           std::u16string_view folder, std::stop_token stop) {
  auto link = std::make_unique<DeviceLink>();
  link->module = LoadDeviceModule(folder);
  if (link->module == nullptr) return nullptr;
  for (size_t i = 0; i < kBdcFunctionCount; ++i) {
    link->functions[i] = platform::GetProcAddress(link->module, kBdcFunctionNames[i]);
    if (link->functions[i] == nullptr) return nullptr;
  }
  link->stop = std::move(stop);
  BdcLink& block = link->block;
  std::ranges::fill(block.constants, 1U);
  SetField(block.address, address);
  SetField(block.community, community);
  block.stopContext = &link->stop;
  block.stopRequested = [](const void* context) {
    return static_cast<const std::stop_token*>(context)->stop_requested();
  };
  return link;
}

void DeviceLinkClose(std::unique_ptr<DeviceLink> link) {
  link.reset();
}

bool HasDeviceModule(std::u16string_view folder) {
  const platform::HMODULE module = LoadDeviceModule(folder);
  if (module == nullptr) return false;
  platform::FreeLibrary(module);
  return true;
}

bool ReadLibraryVersion(DeviceLink& link) {
  if (!GoesOn(link)) return false;
  BdcVersion version{};
  const auto read = FunctionOf<BdcVersionFunction>(link, kBdcGetLibVersion);
  if (!Keep(link, read(link.block.constants[0], &version))) return false;
  link.report.library = version;
  return true;
}

bool ReadCommunication(DeviceLink& link) {
  if (!GoesOn(link)) return false;
  BdcCommInfo info{};
  const auto read = FunctionOf<BdcCommInfoFunction>(link, kBdcGetDevCommInfo);
  if (!Keep(link, read(link.block.address, &info))) return false;
  link.report.communication = info;
  return true;
}

bool ReadName(DeviceLink& link) {
  if (!GoesOn(link)) return false;
  BdcName name{};
  if (!Keep(link, FunctionOf<BdcNameFunction>(link, kBdcGetDevName)(&link.block, &name))) return false;
  link.report.model = BoundedText(name.model);
  link.report.family = BoundedText(name.family);
  return true;
}

bool ReadLists(DeviceLink& link) {
  DeviceReport& report = link.report;
  bool done = ReadList(link, kBdcGetDevFirmwareVersion, &report.firmware);
  done &= ReadList(link, kBdcGetDevMemoryCapacity, &report.memory);
  done &= ReadList(link, kBdcGetDevOptionInfo, &report.options);
  done &= ReadList(link, kBdcGetDevInputTrayInfo, &report.inputTrays);
  done &= ReadList(link, kBdcGetDevOutputTrayInfo, &report.outputTrays);
  done &= ReadMediaPaths(link);
  done &= ReadList(link, kBdcGetDevFinisherInfo, &report.finishers);
  return done;
}

}  // namespace heron

// The exports of the device communication module (platform/api/device_module.h).

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "conversation.h"
#include "records.h"

namespace heron::devicecomm {
namespace {

/// Runs `work` with the conversation of the link's device; its result.
template <typename Work>
int With(const BdcLink* link, Work&& work) {
  if (link == nullptr) return kBdcFailed;
  try {
    Conversation* const device = ConversationOf(*link);
    return device == nullptr ? kBdcFailed : work(*device);
  } catch (const std::bad_alloc&) {
    return kBdcFailed;
  }
}

/// A list function, by the type of its records. A device may have more of them by the second call; only what fits is
/// written.
template <typename Record>
int List(const BdcLink* link, uint32_t* count, void* buffer) {
  if (count == nullptr) return kBdcFailed;
  return With(link, [&](Conversation& device) {
    std::vector<Record> records;
    if (!FillRecords(device, *link, &records)) return kBdcFailed;
    if (buffer != nullptr) {
      records.resize(std::min<size_t>(records.size(), *count));
      if (!records.empty()) std::memcpy(buffer, records.data(), records.size() * sizeof(Record));
    }
    *count = static_cast<uint32_t>(records.size());
    return records.empty() ? kBdcNoData : kBdcDone;
  });
}

}  // namespace
}  // namespace heron::devicecomm

using heron::devicecomm::Conversation;
using heron::devicecomm::List;
using heron::devicecomm::With;

#define BDC_EXPORT extern "C" __attribute__((visibility("default"))) int

BDC_EXPORT BdcGetLibVersion(uint32_t, BdcVersion* version) {
  if (version == nullptr) return kBdcFailed;
  *version = {.words = {1, 0, 0, 0}};
  return kBdcDone;
}

/// Begins a conversation; the device isn't asked yet.
BDC_EXPORT BdcGetDevCommInfo(const char* address, BdcCommInfo* info) {
  if (address == nullptr || info == nullptr) return kBdcFailed;
  try {
    const std::string text(address, strnlen(address, sizeof BdcLink::address));
    const Conversation* const device = heron::devicecomm::BeginConversation(text);
    if (device == nullptr) return kBdcFailed;
    const heron::devicecomm::Address& parsed = device->address();
    *info = {
        .family = static_cast<uint32_t>(parsed.family), .port = parsed.port, .reserved = {}, .address = {}, .host = {}};
    std::copy_n(parsed.host.begin(), std::min(parsed.host.size(), sizeof info->host - 1), info->host);
    if (parsed.family != 0)
      std::copy_n(parsed.host.begin(), std::min(parsed.host.size(), sizeof info->address - 1), info->address);
    return kBdcDone;
  } catch (const std::bad_alloc&) {
    return kBdcFailed;
  }
}

BDC_EXPORT BdcGetDevName(const BdcLink* link, BdcName* name) {
  if (name == nullptr) return kBdcFailed;
  return With(link, [&](Conversation& device) {
    BdcName read{};
    if (!FillName(device, *link, &read)) return kBdcFailed;
    *name = read;
    return kBdcDone;
  });
}

/// hrPrinterStatus: 1 other, 2 unknown, 3 idle, 4 printing, 5 warming up.
BDC_EXPORT BdcGetDevStatus(const BdcLink* link, uint32_t* status) {
  if (status == nullptr) return kBdcFailed;
  return With(link, [&](Conversation& device) {
    uint32_t read = 0;
    if (!FillStatus(device, *link, &read)) return kBdcFailed;
    if (read == 0) return kBdcNoData;
    *status = read;
    return kBdcDone;
  });
}

/// The host of the link's address, if it is a numeric one; `text` has 64 bytes.
BDC_EXPORT BdcGetDevIpAddress(const BdcLink* link, char* text) {
  if (text == nullptr) return kBdcFailed;
  return With(link, [&](Conversation& device) {
    const heron::devicecomm::Address& address = device.address();
    if (address.family == 0) return kBdcNoData;
    std::memcpy(text, address.host.c_str(), std::min(address.host.size() + 1, sizeof BdcLink::address));
    return kBdcDone;
  });
}

BDC_EXPORT BdcGetDevMemoryCapacity(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcMemory>(link, count, records);
}
BDC_EXPORT BdcGetDevFirmwareVersion(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcFirmware>(link, count, records);
}
BDC_EXPORT BdcGetDevOptionInfo(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcOption>(link, count, records);
}
BDC_EXPORT BdcGetDevInputTrayInfo(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcInputTray>(link, count, records);
}
BDC_EXPORT BdcGetDevOutputTrayInfo(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcOutputTray>(link, count, records);
}
BDC_EXPORT BdcGetDevMediaPathInfo(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcMediaPath>(link, count, records);
}
BDC_EXPORT BdcGetDevFinisherInfo(const BdcLink* link, uint32_t* count, void* records) {
  return List<BdcFinisher>(link, count, records);
}

// Events, jobs and received addresses: the device would have to call back, which this module doesn't offer.

BDC_EXPORT BdcBeginDevEventNotify() {
  return kBdcFailed;
}
BDC_EXPORT BdcEndDevEventNotify() {
  return kBdcFailed;
}
BDC_EXPORT BdcBeginNotifyPrint() {
  return kBdcFailed;
}
BDC_EXPORT BdcGetDevJobHistoryList() {
  return kBdcFailed;
}
BDC_EXPORT BdcEndNotifyPrint() {
  return kBdcFailed;
}
BDC_EXPORT BdcBeginNotifyJobCompletion() {
  return kBdcFailed;
}
BDC_EXPORT BdcGetReceiveAddress() {
  return kBdcFailed;
}
BDC_EXPORT BdcEndNotifyJobCompletion() {
  return kBdcFailed;
}

// A communication module of the tests: what it reports is set by fields, and it can lie in every way that a module can.
// Its records go into the caller's buffers as they are, so that a sanitizer sees code that believes too much.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/api/device_module.h"
#include "platform/memory/memory_backend.h"

namespace heron::test {

inline constexpr char16_t kDeviceModule[] = u"/driver/ETVORBD.DLL";

class FakeDevice {
 public:
  explicit FakeDevice(platform::MemoryBackend& backend) {
    current() = this;
    auto& functions = backend.functions[kDeviceModule];
    for (const char* each : kBdcFunctionNames) functions[each] = reinterpret_cast<void*>(+[] { return kBdcFailed; });
    const auto set = [&](BdcFunction which, auto function) {
      functions[kBdcFunctionNames[which]] = reinterpret_cast<void*>(+function);
    };
    set(kBdcGetLibVersion, [](uint32_t, BdcVersion* version) {
      return Call("version", version, BdcVersion{{1, 2, 3, 0}});
    });
    set(kBdcGetDevCommInfo, [](const char* given, BdcCommInfo* info) {
      current()->address = given;
      return Call("comm", info, BdcCommInfo{});
    });
    set(kBdcGetDevName, [](const BdcLink* link, BdcName* out) {
      current()->community = link->community;
      return Call("name", out, current()->name);
    });
    set(kBdcGetDevFirmwareVersion, [](const BdcLink*, uint32_t*, void*) { return Note("firmware"); });
    set(kBdcGetDevMemoryCapacity,
        [](const BdcLink*, uint32_t* c, void* b) { return Give("memory", current()->memory, c, b); });
    set(kBdcGetDevOptionInfo,
        [](const BdcLink*, uint32_t* c, void* b) { return Give("options", current()->options, c, b); });
    set(kBdcGetDevFinisherInfo,
        [](const BdcLink*, uint32_t* c, void* b) { return Give("finishers", current()->finishers, c, b); });
    set(kBdcGetDevInputTrayInfo, [](const BdcLink*, uint32_t*, void*) { return Note("inputs"); });
    set(kBdcGetDevOutputTrayInfo, [](const BdcLink*, uint32_t*, void*) { return Note("outputs"); });
    set(kBdcGetDevMediaPathInfo, [](const BdcLink*, uint32_t*, void*) { return Note("paths"); });
    for (const char16_t* system : {u"KERNEL32.DLL", u"WS2_32.DLL", u"WSOCK32.DLL"}) backend.functions[system] = {};
    SetModel("Varnell 70MX-2");
  }
  ~FakeDevice() { current() = nullptr; }

  void SetModel(const std::string& model) {
    name = {};
    std::copy_n(model.begin(), std::min(model.size(), sizeof name.model), name.model);
  }
  void AddOption(uint32_t type, const std::string& text) {
    BdcOption option{.index = 0, .type = type, .name = {}};
    std::copy_n(text.begin(), std::min(text.size(), sizeof option.name), option.name);
    options.push_back(option);
  }

  BdcName name{};
  std::vector<BdcMemory> memory;
  std::vector<BdcOption> options;
  std::vector<BdcFinisher> finishers;
  /// Of the functions that don't succeed.
  std::map<std::string, int> results = {
      {"firmware", kBdcNoData}, {"inputs", kBdcNoData}, {"outputs", kBdcNoData}, {"paths", kBdcNoData}};
  std::map<std::string, uint32_t> counts;   ///< what a list pretends in the place of its size: first call
  std::map<std::string, uint32_t> written;  ///< the same, second call
  std::string calls;                        ///< a word for each call, in order
  std::string address, community;           ///< as the last conversation was given them

 private:
  static FakeDevice*& current() {
    static FakeDevice* device = nullptr;
    return device;
  }
  static int Note(const std::string& call) {
    current()->calls += (current()->calls.empty() ? "" : " ") + call;
    const auto result = current()->results.find(call);
    return result == current()->results.end() ? kBdcDone : result->second;
  }
  template <typename Record>
  static int Call(const std::string& call, Record* out, const Record& record) {
    const int result = Note(call);
    if (result == kBdcDone) *out = record;
    return result;
  }
  template <typename Record>
  static int Give(const std::string& call, const std::vector<Record>& records, uint32_t* count, void* buffer) {
    const int result = Note(call);
    if (result != kBdcDone) return result;
    const auto& lies = buffer == nullptr ? current()->counts : current()->written;
    const auto lie = lies.find(call);
    const auto given =
        static_cast<uint32_t>(std::min<size_t>(records.size(), buffer == nullptr ? records.size() : *count));
    if (buffer != nullptr && given > 0) std::memcpy(buffer, records.data(), given * sizeof(Record));
    *count = lie != lies.end() ? lie->second : given;
    return kBdcDone;
  }
};

}  // namespace heron::test

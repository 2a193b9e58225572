// The conversation with the communication module, and with modules that lie.
#include "devicelink/device_link.h"

#include "devicelink/device_query.h"
#include "engine/setting.h"
#include "generated/values.h"
#include "platform/api/modules.h"
#include "platform/api/spooler.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/fake_device.h"

namespace heron::test {
namespace {

class DeviceLinkTest : public DriverTest {
 protected:
  DeviceTarget target{.address = u"printer:1161", .folder = kDriverFolder};
  FakeDevice device{backend};

  uint16_t SourceBits() { return static_cast<uint16_t>(MapDeviceOptions(ReadDevice(target).value())[0].bits); }
};

TEST_F(DeviceLinkTest, TheCallsComeInOrder) {
  device.AddOption(3, "Tray3");
  EXPECT_EQ(ProbeDevice(target).reply, DeviceReply::kAccepted);
  EXPECT_EQ(device.calls, "version comm name");
  device.calls.clear();
  const auto report = ReadDevice(target);
  ASSERT_TRUE(report);
  // A list of which there is nothing isn't asked for its records.
  EXPECT_EQ(device.calls, "version comm name firmware memory options options inputs outputs paths finishers");
  EXPECT_EQ(device.address, "printer:1161");
  EXPECT_EQ(device.community, "kelvoz");
  EXPECT_TRUE(report->complete);
  EXPECT_EQ(report->library.words[1], 2u);
  EXPECT_EQ(platform::GetModuleHandleW(kDeviceModule), nullptr) << "freed again";
}

TEST_F(DeviceLinkTest, AddressAndCommunityAreCutToTheirFields) {
  const auto link = DeviceLinkOpen(std::u16string(80, u'a'), std::u16string(40, u'c'), kDriverFolder);
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(std::string(link->block.address), std::string(63, 'a'));
  EXPECT_EQ(std::string(link->block.community), std::string(31, 'c'));
  EXPECT_EQ(link->block.secondAddress[0], '\0');
  EXPECT_EQ(link->block.constants[2], 1u);
}

TEST_F(DeviceLinkTest, WithoutAModuleOrOneOfItsFunctionsThereIsNoLink) {
  for (const char* name : kBdcFunctionNames) {
    const auto kept = backend.functions[kDeviceModule].extract(name);
    EXPECT_EQ(ReadDevice(target), std::nullopt) << name;
    EXPECT_EQ(ProbeDevice(target).reply, DeviceReply::kNoAnswer) << name;
    backend.functions[kDeviceModule][name] = kept.mapped();
  }
  EXPECT_EQ(device.calls, "");
  EXPECT_TRUE(HasDeviceModule(kDriverFolder));
  backend.functions.erase(kDeviceModule);
  EXPECT_FALSE(HasDeviceModule(kDriverFolder));
  EXPECT_EQ(ReadDevice(target), std::nullopt);
}

TEST_F(DeviceLinkTest, AProbeEndsAtTheFirstFailure) {
  for (const auto& [failing, calls] : std::map<std::string, std::string>{
           {"version", "version"}, {"comm", "version comm"}, {"name", "version comm name"}}) {
    device.calls.clear();
    device.results[failing] = kBdcFailed;
    EXPECT_EQ(ProbeDevice(target).reply, DeviceReply::kNoAnswer);
    EXPECT_EQ(device.calls, calls);
    device.results.erase(failing);
  }
  for (const auto& [model, reply] : std::map<std::string, DeviceReply>{{"Varnell 36MX-2", DeviceReply::kAccepted},
                                                                       {"varnell 36MX-2", DeviceReply::kOtherModel},
                                                                       {"", DeviceReply::kOtherModel}}) {
    device.SetModel(model);
    EXPECT_EQ(ProbeDevice(target).reply, reply) << model;
  }
}

TEST_F(DeviceLinkTest, AFailedListIsEmptyAndStopsNoOther) {
  device.AddOption(3, "Tray3");
  device.memory = {{.index = 1, .size = 7, .type = kBdcMemoryDisk}};
  device.results["memory"] = -5;
  const auto report = ReadDevice(target);
  EXPECT_FALSE(report->complete);
  EXPECT_TRUE(report->memory.empty());
  EXPECT_EQ(report->options.size(), 1u);
  device.results["memory"] = kBdcNoData;
  EXPECT_TRUE(ReadDevice(target)->complete) << "no data is no failure";
}

/// Counts of which the records don't exist; run under a sanitizer.
TEST_F(DeviceLinkTest, ALyingModuleIsBelievedInsideItsRecordsOnly) {
  device.AddOption(3, "Tray3");
  for (const uint32_t count : {0x80000000u, 0xFFFFFFFFu, 1025u}) {
    device.counts["options"] = count;
    EXPECT_EQ(SourceBits(), 0) << count << " records aren't asked for";
    EXPECT_FALSE(ReadDevice(target)->complete);
  }
  device.counts["options"] = 1024;  // fewer come than were promised
  EXPECT_EQ(SourceBits(), 2);
  device.counts.clear();
  for (const uint32_t written : {2u, 0x80000000u, 0xFFFFFFFFu}) {
    device.written["options"] = written;
    EXPECT_EQ(ReadDevice(target)->options.size(), 1u) << "more than the buffer holds";
  }
  device.written["options"] = 0;
  EXPECT_EQ(SourceBits(), 0);
  device.results["paths"] = kBdcDone;  // leaves its count at what fits, and writes nothing
  EXPECT_LE(ReadDevice(target)->mediaPaths.size(), 32u);
  device.written.clear();
  std::ranges::fill(device.name.model, 'M');  // no terminator anywhere
  std::ranges::fill(device.name.family, 'F');
  std::ranges::fill(device.options[0].name, 'T');
  const auto report = ReadDevice(target);
  EXPECT_EQ(report->model, std::string(256, 'M'));
  EXPECT_EQ(report->family, std::string(68, 'F'));
  EXPECT_EQ(MapDeviceOptions(*report)[0].bits, 0u);
}

TEST_F(DeviceLinkTest, AStopEndsTheConversationBetweenItsCalls) {
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(ProbeDevice(target, stop.get_token()).reply, DeviceReply::kNoAnswer);
  EXPECT_FALSE(ReadDevice(target, stop.get_token())->complete);
  EXPECT_EQ(device.calls, "");
}

class DeviceQueryTest : public DeviceLinkTest {
 protected:
  DeviceQueryTest() : ui(CreateUiState(resources.get(), DefaultEnv(), printer.get())) {
    SetDeviceAddress(*ui, u"printer");
  }
  ~DeviceQueryTest() override { DestroyUiState(ui); }
  DriverEnv DefaultEnv() {
    DriverEnv env;
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    return env;
  }

  UiStatePtr ui;
};

TEST_F(DeviceQueryTest, OptionsTakeTheirValuesOrTheirDefaults) {
  using engine::Setting;
  device.AddOption(3, "Tray3");
  device.AddOption(3, "Tray3");
  device.AddOption(5, "Job separator");
  Setting<u"lpSourceUnit">(*ui) = value::lpSourceUnit::kTray3And4;
  Setting<u"lpFAXUnit">(*ui) = value::lpFAXUnit::kInstalled;
  DeviceQueryOptions(*ui);
  EXPECT_EQ(Setting<u"lpSourceUnit">(*ui), value::lpSourceUnit::kNotInstalled);
  EXPECT_EQ(Setting<u"lpFAXUnit">(*ui), value::lpFAXUnit::kNotInstalled);
  EXPECT_EQ(Setting<u"lpOutputUnit">(*ui), value::lpOutputUnit::kSeparator);
  EXPECT_EQ(Setting<u"lpEngine">(*ui), value::lpEngine::kModel70);

  backend.functions.erase(kDeviceModule);
  Setting<u"lpFAXUnit">(*ui) = value::lpFAXUnit::kInstalled;
  DeviceQueryOptions(*ui);
  EXPECT_EQ(Setting<u"lpFAXUnit">(*ui), value::lpFAXUnit::kInstalled) << "without a module nothing is changed";
}

TEST_F(DeviceQueryTest, ProbesTellWhatIsMissing) {
  EXPECT_TRUE(DeviceProbeLibrary(*ui) && DeviceProbeNetwork(*ui) && DeviceProbeModel(*ui));
  EXPECT_EQ(device.address, "printer");
  for (const char16_t* name : {u"KERNEL32.DLL", u"WS2_32.DLL", u"WSOCK32.DLL"}) {
    backend.functions.erase(name);
    EXPECT_FALSE(DeviceProbeNetwork(*ui));
    backend.functions[name] = {};
  }
}

TEST_F(DeviceQueryTest, AnAddressHas63Characters) {
  SetDeviceAddress(*ui, std::u16string(70, u'x'));
  EXPECT_EQ(DeviceAddress(*ui), std::u16string(63, u'x'));
  SetDeviceAddress(*ui, u"y");
  EXPECT_EQ(DeviceAddress(*ui), u"y");
}

TEST_F(DeviceQueryTest, WhatStaplesIsPublished) {
  namespace unit = value::lpOutputUnit;
  const auto published = [&](const char16_t* wanted) {
    std::vector<uint8_t> buffer(4096);
    platform::DWORD needed = 0, count = 0;
    EXPECT_EQ(platform::EnumPrinterDataExW(printer.get(), u"DsDriver", buffer.data(), 4096, &needed, &count), 0u);
    for (const auto& row : std::span(reinterpret_cast<platform::PRINTER_ENUM_VALUESW*>(buffer.data()), count)) {
      if (row.pValueName == std::u16string_view(wanted))
        return std::pair(row.dwType, row.cbData == 1 ? *row.pData : 99);
    }
    return std::pair(platform::DWORD{0}, 99);
  };
  for (const auto& [value, staples] :
       std::map<uint16_t, int>{{unit::kNotInstalled, 0}, {unit::kBin, 1}, {unit::kSeparator, 0}, {unit::kFloor4, 1}}) {
    *FieldsOf(*ui, ParamNamed<u"lpOutputUnit">()).committed = value;
    DeviceSaveToDirectory(*ui);
    EXPECT_EQ(published(u"printStaplingSupported"), std::pair(platform::REG_BINARY, staples)) << value;
    EXPECT_EQ(published(u"printDuplexSupported"), std::pair(platform::REG_BINARY, 1));
  }
  backend.machineWritable = false;
  DeviceSaveToDirectory(*ui);  // a failure isn't reported
}

}  // namespace
}  // namespace heron::test

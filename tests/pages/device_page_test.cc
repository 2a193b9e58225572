// The device page: options and language, the address, the query with its refusals, and what Apply publishes.
#include "pages/device_page.h"

#include "generated/values.h"
#include "settings/printer_data.h"
#include "sheet_fixture.h"
#include "support/fake_device.h"

namespace heron::test {
namespace {

using namespace platform;

class DevicePageTest : public SheetTest {
 protected:
  DevicePageTest() {
    auto& texts = backend.modules[kResourceModule];
    texts[32180] = u"asking %s";
    texts[32181] = u"%s|%s";
    texts[32182] = u"%s:%s->%s ";
    texts[32183] = u"same %s";
    texts[32184] = u"with gaps";
  }

  /// The printer's sheet; `flags` may take the rights away.
  ScriptedDialog& OpenDevice(DWORD flags = 0) {
    sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), flags, true);
    EXPECT_EQ(sheet->Open(), 1);
    page = sheet->Show("device-settings");
    return *page;
  }
  std::string Query() {
    page->Click("getDeviceSettings");
    EXPECT_EQ(page->FocusedName(), "getDeviceSettings");
    return desk.Told();
  }
  std::string AgreedQuery() {
    desk.Answer(IDYES);
    std::string told = Query();
    const std::string question = "[20930]|[20931]? / ";
    EXPECT_TRUE(told.starts_with(question)) << told;
    return told.substr(std::min(told.size(), question.size()));
  }

  FakeDevice device{backend};
};

TEST_F(DevicePageTest, AQueryShowsWhatChangesAndIsKeptByApply) {
  device.AddOption(3, "Tray3");
  device.AddOption(5, "Bin-type finisher");
  OpenDevice();
  page->Type("networkAddress", u"printer:1161");
  EXPECT_EQ(page->changes, 12) << "typed key by key";
  EXPECT_EQ(
      AgreedQuery(),
      "[20930]|Varnell 70MX-2|[20800]:[40052]->[40054] [20820]:[40057]->[40058] [20950]:[40088]->Varnell 70MX-2 ");
  EXPECT_EQ(device.address, "printer:1161");
  EXPECT_EQ(Value("lpSourceUnit"), "Tray3");
  EXPECT_EQ(page->SelectedText("lpSourceUnit"), "[40054]");
  EXPECT_TRUE(page->IsEnabled("lpPunchKit")) << "what the finisher allows";
  EXPECT_EQ(AgreedQuery(), "[20930]|same Varnell 70MX-2");
  ASSERT_TRUE(sheet->Confirm());
  DriverEnv saved;
  ASSERT_TRUE(LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get()));
  EXPECT_EQ(Get<"lpSourceUnit">(saved), value::lpSourceUnit::kTray3);
  EXPECT_EQ(Get<"lpEngine">(saved), value::lpEngine::kModel70);
  EXPECT_EQ(GetText<"szDevIPAddress">(saved), u"printer:1161");
  EXPECT_NE(backend.Dump(Hive::kMachine).find("DsDriver|printStaplingSupported=3:01"), std::string::npos);
}

TEST_F(DevicePageTest, RefusalsComeInOrderAndChangeNothing) {
  OpenDevice();
  const std::vector<uint8_t> empty = Bytes();
  desk.Answer(IDNO);
  EXPECT_EQ(Query(), "[20930]|[20931]?");
  const auto network = backend.functions.extract(u"WS2_32.DLL");
  const auto module = backend.functions.extract(kDeviceModule);
  device.results["name"] = kBdcFailed;
  EXPECT_EQ(AgreedQuery(), "[20930]|[20932]");
  EXPECT_EQ(Bytes(), empty);
  page->Put("networkAddress", u"printer");
  const std::vector<uint8_t> before = Bytes();
  EXPECT_EQ(AgreedQuery(), "[20930]|[20933]");
  backend.functions[kDeviceModule] = module.mapped();
  EXPECT_EQ(AgreedQuery(), "[20930]|[20935]");
  backend.functions[u"WS2_32.DLL"] = network.mapped();
  EXPECT_EQ(AgreedQuery(), "[20930]|[20934]");
  device.results.erase("name");
  device.SetModel("Other 9000");
  EXPECT_EQ(AgreedQuery(), "[20930]|[20934]");
  EXPECT_EQ(Bytes(), before);
}

TEST_F(DevicePageTest, ACancelledQueryChangesNothing) {
  device.AddOption(3, "Tray3");
  OpenDevice();
  page->Put("networkAddress", u"printer");
  const std::vector<uint8_t> before = Bytes();
  desk.cancels_busy = true;
  desk.Answer(IDYES);
  EXPECT_EQ(Query(), "[20930]|[20931]?");
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(page->changes, 1);
}

TEST_F(DevicePageTest, GapsOfTheAnswerAreSaid) {
  device.results["options"] = kBdcFailed;
  OpenDevice();
  page->Put("networkAddress", u"printer");
  EXPECT_EQ(AgreedQuery(), "[20930]|Varnell 70MX-2|[20950]:[40088]->Varnell 70MX-2 with gaps");
}

TEST_F(DevicePageTest, WithoutModuleOrNetworkTheAddressIsClosed) {
  const auto module = backend.functions.extract(kDeviceModule);
  OpenDevice();
  for (const char* name : {"network", "networkAddress", "getDeviceSettings"})
    EXPECT_FALSE(page->IsEnabled(name)) << name;
  EXPECT_TRUE(page->IsEnabled("lpOutputUnit")) << "options can be set by hand";
  sheet.reset();
  backend.functions[kDeviceModule] = module.mapped();
  backend.functions.erase(u"KERNEL32.DLL");
  EXPECT_FALSE(OpenDevice().IsEnabled("networkAddress"));
}

TEST_F(DevicePageTest, WithoutRightsEverythingIsClosed) {
  OpenDevice(DPS_NOPERMISSION);
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << id;
  sheet->Confirm();
  EXPECT_EQ(backend.Dump(Hive::kMachine).find("DsDriver"), std::string::npos);
}

TEST_F(DevicePageTest, TheLanguageIsOneOfTwo) {
  OpenDevice();
  page->Press("lpPDLType.Pcl5");
  EXPECT_EQ(Value("lpPDLType"), "Pcl5");
  page->Press("lpPDLType.PclXl");
  EXPECT_EQ(Value("lpPDLType"), "PclXlMode4");
  for (const auto& [language, shown] : std::map<std::string, std::string>{
           {"0", "00"}, {"1", "10"}, {"2", "01"}, {"3", "01"}, {"4", "01"}, {"5", "00"}}) {
    Put("lpPDLType=" + language);
    page = sheet->Show("device-settings");
    const auto shows = [&](const char* name) { return (*page)[name].checked ? "1" : "0"; };
    EXPECT_EQ(std::string(shows("lpPDLType.Pcl5")) + shows("lpPDLType.PclXl"), shown) << language;
  }
}

TEST_F(DevicePageTest, TheAddressIsComparedAndBounded) {
  OpenDevice();
  EXPECT_EQ((*page)["networkAddress"].limit, 63u);
  page->Put("networkAddress", std::u16string(70, u'a'));
  EXPECT_EQ(DeviceAddress(ui()), std::u16string(63, u'a'));
  EXPECT_EQ(page->changes, 1);
  page->Put("networkAddress", std::u16string(63, u'a'));
  EXPECT_EQ(page->changes, 1) << "nothing new";
}

TEST_F(DevicePageTest, DefaultsReachTheOptionsAndLeaveTheAddress) {
  OpenDevice();
  page->Put("networkAddress", u"printer");
  Choose("lpOutputUnit", "Bin");
  Choose("lpPunchKit", "FourHoles");
  page->Check("Secur_Check", true);
  page->Click("restoreDefaults.device");
  EXPECT_EQ(Value("lpOutputUnit"), "NotInstalled");
  EXPECT_EQ(Value("lpPunchKit"), "NotInstalled");
  EXPECT_EQ(Value("Secur_Check"), "Off");
  EXPECT_EQ(DeviceAddress(ui()), u"printer");
  desk.Told();
}

}  // namespace
}  // namespace heron::test

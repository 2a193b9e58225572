// The saved record, the queue's other values, BookMode, and the user's key of a queue.
#include "settings/printer_data.h"

#include <cstring>

#include "generated/values.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"

namespace heron {
namespace {

using namespace platform;

constexpr char16_t kSaved[] = u"HERON NT";
constexpr std::u16string_view kBase = u"Software\\Varnell\\PCL\\Varnell 70/36MX-2CHSUS\\";

class PrinterDataTest : public test::DriverTest {
 protected:
  DriverEnv Default() {
    DriverEnv env;
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    return env;
  }
  bool IsSaved(const DriverEnv& env) const {
    const std::vector<uint8_t> data = PrinterData(kSaved);
    return data.size() == kEnvSize && std::memcmp(data.data(), env.bytes.data(), kEnvSize) == 0;
  }
  void SetNumber(std::u16string_view path, const char16_t* name, uint32_t value) {
    const UniqueKey key = CreateKey(HKEY_CURRENT_USER, std::u16string(path).c_str());
    RegSetValueExW(key.get(), name, REG_DWORD, reinterpret_cast<uint8_t*>(&value), sizeof value);
  }
  /// The number stored at a path of the user's tree; 99999 if there is none.
  uint32_t Number(std::u16string_view path, const char16_t* name) {
    const UniqueKey key = OpenKey(HKEY_CURRENT_USER, std::u16string(path).c_str(), KEY_READ);
    uint32_t value = 0;
    DWORD size = sizeof value;
    const DWORD status = RegQueryValueExW(key.get(), name, nullptr, reinterpret_cast<uint8_t*>(&value), &size);
    return status == kErrorSuccess ? value : 99999;
  }
};

TEST_F(PrinterDataTest, UserKeyCutsTheNameInTheSystemCodePage) {
  const std::u16string a29(29, u'a');
  const std::u16string a30(30, u'a');
  struct {
    DWORD codePage;
    std::u16string name, expected;
  } const kCases[] = {
      {65001, u"P1", u"P1"},
      {65001, u"\\\\server\\queue", u"server\\queue"},
      {65001, u"\\single", u"\\single"},
      {65001, a30 + u"bcd", a30 + u"b"},
      {65001, u"\\\\" + a30, a29},  // cut first, then the leading pair goes
      {65001, a29 + u"中", a29},    // three bytes, one of them beyond
      {20127, u"Büro", u"B?ro"},
      {12345, u"Büro", u"Büro"},  // an unknown code page
      {65001, u"", u""},
  };
  for (const auto& c : kCases) {
    backend.codePage = c.codePage;
    EXPECT_EQ(BuildUserKey(c.name), std::u16string(kBase) + c.expected) << c.codePage;
  }
}

TEST_F(PrinterDataTest, UserKeyTakesPartsBelowAndStaysBounded) {
  EXPECT_EQ(BuildUserKey(u"P1", u"Form", u"Overlays"), std::u16string(kBase) + u"P1\\Form\\Overlays");
  EXPECT_EQ(BuildUserKey(u"P1", {}, u"Overlays"), std::u16string(kBase) + u"P1");
  EXPECT_EQ(BuildUserKey(u"P1", std::u16string(300, u's')).size(), 260u);
}

TEST_F(PrinterDataTest, WhatIsNoRecordOfOursIsRebuiltAndSaved) {
  const DriverEnv expected = Default();
  DriverEnv changed = expected;
  Set<"lpSourceUnit">(changed, value::lpSourceUnit::kTray3);
  struct {
    const char* what;
    size_t size;  // 0: nothing stored
    size_t at;    // a byte that is changed by `with`
    uint8_t with;
  } const kCases[] = {
      {"nothing", 0, 0, 0},           {"one byte short", 3327, 0, 0},   {"one byte more", 3329, 0, 0},
      {"another tag", 3328, 3293, 1}, {"another version", 3328, 66, 1}, {"no signature", 3328, 440, 1},
  };
  for (const auto& c : kCases) {
    std::vector<uint8_t> stored(changed.bytes.begin(), changed.bytes.end());
    stored.resize(c.size);
    if (c.with != 0) stored[c.at] ^= c.with;
    DeletePrinterDataW(printer.get(), kSaved);
    if (c.size != 0) StorePrinterData(kSaved, REG_BINARY, stored.data(), stored.size());
    DriverEnv env = changed;
    EXPECT_TRUE(LoadPrinterEnv(printer.get(), &env, u"P1", resources.get())) << c.what;
    EXPECT_EQ(env.bytes, expected.bytes) << c.what;
    EXPECT_TRUE(IsSaved(expected)) << c.what;
  }
  EXPECT_FALSE(LoadPrinterEnv(printer.get(), nullptr, u"P1", resources.get()));
}

TEST_F(PrinterDataTest, SavedRecordComesBackUnderTheQueuesName) {
  DriverEnv saved = Default();
  Set<"lpSourceUnit">(saved, value::lpSourceUnit::kTray3);
  Set<"dmDriverVersion">(saved, 0xC200);  // the top two bits don't count
  SetText<"dmDeviceName">(saved, u"an older name");
  ASSERT_TRUE(SavePrinterEnv(printer.get(), saved));
  const std::string before = backend.Dump(Hive::kMachine);
  DriverEnv env;
  ASSERT_TRUE(LoadPrinterEnv(printer.get(), &env, nullptr, resources.get()));
  EXPECT_TRUE(TextIs<"dmDeviceName">(env, u"P1"));
  ASSERT_TRUE(LoadPrinterEnv(printer.get(), &env, std::u16string(40, u'n').c_str(), resources.get()));
  EXPECT_TRUE(TextIs<"dmDeviceName">(env, std::u16string(31, u'n')));
  SetText<"dmDeviceName">(env, u"an older name");
  EXPECT_EQ(env.bytes, saved.bytes);
  EXPECT_EQ(backend.Dump(Hive::kMachine), before);
}

TEST_F(PrinterDataTest, ARecordThatIsNoLongerTheOneReadIsNotReplaced) {
  SavedRecord seen;
  DriverEnv mine;
  ASSERT_TRUE(LoadPrinterEnv(printer.get(), &mine, u"P1", resources.get(), &seen));  // nothing was stored yet
  Set<"lpSourceUnit">(mine, value::lpSourceUnit::kTray3);
  ASSERT_EQ(ReplacePrinterEnv(printer.get(), seen, mine), Replaced::kDone);

  ASSERT_TRUE(LoadPrinterEnv(printer.get(), &mine, u"P1", resources.get(), &seen));
  DriverEnv theirs = mine;
  Set<"lpOutputUnit">(theirs, value::lpOutputUnit::kFloor2);
  ASSERT_TRUE(SavePrinterEnv(printer.get(), theirs));
  Set<"lpFAXUnit">(mine, value::lpFAXUnit::kInstalled);
  for (const bool outer : {false, true}) {
    if (outer) {
      ASSERT_EQ(BeginPrinterDataBatch(printer.get()), kErrorSuccess);
    }
    EXPECT_EQ(ReplacePrinterEnv(printer.get(), seen, mine), Replaced::kOvertaken);
    if (outer) {
      EXPECT_EQ(EndPrinterDataBatch(printer.get(), 1), kErrorSuccess) << "the batch around it goes on";
    }
    EXPECT_TRUE(IsSaved(theirs));
  }
  EXPECT_EQ(ReplacePrinterEnv(printer.get(), ReadSavedRecord(printer.get()), mine), Replaced::kDone);
  EXPECT_TRUE(IsSaved(mine));
  DeletePrinterDataW(printer.get(), kSaved);
  EXPECT_EQ(ReplacePrinterEnv(printer.get(), seen, mine), Replaced::kOvertaken);
  backend.machineWritable = false;
  EXPECT_EQ(ReplacePrinterEnv(printer.get(), {}, mine), Replaced::kUnwritten);
  EXPECT_EQ(GetLastError(), kErrorAccessDenied);
}

TEST_F(PrinterDataTest, RecordIsValidWhateverCallFails) {
  const DriverEnv expected = Default();
  DriverEnv env;
  for (uint64_t n = 1; n < 30; ++n) {
    backend.FailCall(n, kErrorWriteFault, true);
    ASSERT_TRUE(LoadPrinterEnv(printer.get(), &env, u"P1", resources.get()));
    backend.FailCall(0, 0);
    ASSERT_EQ(env.bytes, expected.bytes) << "call " << n;
    const bool saved = !PrinterData(kSaved).empty();
    ASSERT_TRUE(!saved || IsSaved(expected)) << "call " << n;
    DeletePrinterDataW(printer.get(), kSaved);
  }
  backend.machineWritable = false;
  EXPECT_TRUE(LoadPrinterEnv(printer.get(), &env, u"P1", resources.get()));
  EXPECT_EQ(env.bytes, expected.bytes);
  EXPECT_TRUE(LoadPrinterEnv(nullptr, &env, nullptr, nullptr));
  EXPECT_TRUE(IsOwnEnv(env.bytes.data()));
}

TEST_F(PrinterDataTest, CountryIsStoredOnceAndFollowedOnRequest) {
  backend.country = u"86";
  EXPECT_EQ(ReadStoredCountry(u"P1"), 86u);
  backend.country = u"49";
  EXPECT_EQ(ReadStoredCountry(u"P1"), 86u);
  UpdateStoredCountry(printer.get());
  EXPECT_EQ(ReadStoredCountry(u"P1"), 49u);
  StorePrinterData(u"CountryCode", REG_BINARY, "xyz", 3);
  EXPECT_EQ(ReadStoredCountry(u"P1"), 49u);
  EXPECT_EQ(PrinterData(u"CountryCode"), std::vector<uint8_t>({49, 0, 0, 0}));
  EXPECT_EQ(ReadStoredCountry(u"unknown"), 49u);
  EXPECT_EQ(ReadStoredCountry(nullptr), 49u);
  DeletePrinterDataW(printer.get(), u"CountryCode");
  backend.machineWritable = false;
  EXPECT_EQ(ReadStoredCountry(u"P1"), 49u);
}

TEST_F(PrinterDataTest, OnlyEventsOneAndThreeAreHandled) {
  const std::string before = backend.Dump(Hive::kMachine);
  backend.FailCall(0, 0);
  for (const int event : {0, 2, 4, 6}) EXPECT_EQ(HandlePrinterEvent(u"P1", event), 1);
  EXPECT_EQ(backend.Calls(), 0u);
  EXPECT_EQ(HandlePrinterEvent(u"unknown", 3), 1);
  EXPECT_EQ(HandlePrinterEvent(nullptr, 3), 1);
  EXPECT_EQ(backend.Dump(Hive::kMachine), before);

  EXPECT_EQ(HandlePrinterEvent(u"P1", 1), 1);
  std::vector<uint8_t> expected(128);
  std::memcpy(expected.data(), u"TVOR6F1.DLL", 22);
  EXPECT_EQ(PrinterData(u"SPLUserModePrinterDriver"), expected);
  EXPECT_TRUE(PrinterData(kSaved).empty());

  DriverEnv changed = Default();
  Set<"lpSourceUnit">(changed, value::lpSourceUnit::kTray3);
  SavePrinterEnv(printer.get(), changed);
  backend.country = u"86";
  EXPECT_EQ(HandlePrinterEvent(u"P1", 3), 1);
  Reopen(86);
  EXPECT_TRUE(IsSaved(Default()));
}

TEST_F(PrinterDataTest, RenderDriverIsNamedOnceByUsersWithTheRight) {
  constexpr char16_t kValue[] = u"SPLUserModePrinterDriver";
  backend.machineWritable = false;
  EnsureRenderDriverValue(printer.get());
  EXPECT_TRUE(PrinterData(kValue).empty());
  backend.machineWritable = true;
  for (const std::u16string other : {u"", u"TVOR6F1.DL", u"TVOR6F1.DLLX", u"tvor6f1.dll"}) {
    StorePrinterData(kValue, REG_SZ, other.c_str(), other.size() * 2 + 2);
    EnsureRenderDriverValue(printer.get());
    EXPECT_EQ(PrinterData(kValue).size(), 24u);
    EXPECT_EQ(std::memcmp(PrinterData(kValue).data(), u"TVOR6F1.DLL", 24), 0);
  }
  EXPECT_EQ(HandlePrinterEvent(u"P1", 1), 1);
  EnsureRenderDriverValue(printer.get());
  EXPECT_EQ(PrinterData(kValue).size(), 128u);  // the longer form says the same and stays

  AddQueue(u"\\\\server\\P1");
  printer = OpenPrinterFor(u"\\\\server\\P1", PRINTER_ALL_ACCESS);
  const std::string before = backend.Dump(Hive::kMachine);
  EnsureRenderDriverValue(printer.get());
  EXPECT_EQ(backend.Dump(Hive::kMachine), before);
}

TEST_F(PrinterDataTest, SpreadsheetProgramByTheEndOfItsName) {
  const std::pair<std::u16string, bool> kCases[] = {
      {u"EXCEL.EXE", true},        {u"/opt/office/excel.exe", true},
      {u"C:\\x\\Excel.Exe", true}, {u"XCEL.EXE", false},
      {u"EXCEL.EXE2", false},      {u"", false},
      {u"MYEXCEL.EXE", true},      {std::u16string(3000, u'd') + u"EXCEL.EXE", true},
  };
  for (const auto& [path, expected] : kCases) {
    backend.processFileName = path;
    EXPECT_EQ(InExcel(), expected) << path.size();
  }
}

TEST_F(PrinterDataTest, BookModeStartsAtNothingKnown) {
  const std::u16string key = std::u16string(kBase) + u"P1\\BookMode";
  EXPECT_EQ(BookModeStatus(u"P1"), 0u);
  EXPECT_EQ(Number(key, u"Resolution"), 600u);
  EXPECT_EQ(Number(key, u"Version"), 0x4200u);
  ASSERT_TRUE(SetBookModeStatus(Default(), 1));
  ASSERT_TRUE(SetBookModeResolution(u"P1", 200));
  EXPECT_EQ(BookModeStatus(u"P1"), 1u);
  EXPECT_EQ(BookModeResolution(u"P1"), 200u);
  EXPECT_EQ(BookModeStatus(u"P10"), 0u);

  const std::pair<uint32_t, uint32_t> kResolutions[] = {{400, 400}, {600, 600}, {300, 600}, {0, 600}, {1200, 600}};
  for (const auto& [stored, expected] : kResolutions) {
    SetNumber(key, u"Resolution", stored);
    EXPECT_EQ(BookModeResolution(u"P1"), expected);
  }
  SetNumber(key, u"Version", 0x4100);  // another one: all is forgotten
  EXPECT_EQ(BookModeResolution(u"P1"), 600u);
  EXPECT_EQ(Number(key, u"Status"), 0u);
  EXPECT_EQ(Number(key, u"Version"), 0x4200u);
}

TEST_F(PrinterDataTest, BookModeOfAnotherVersionOrHalfWrittenIsForgotten) {
  const std::u16string key = BuildUserKey(u"P1", u"BookMode");
  SetNumber(key, u"Status", 2);  // no version: a key that was never finished
  EXPECT_EQ(BookModeStatus(u"P1"), 0u);
  EXPECT_EQ(Number(key, u"Status"), 0u);
  SetNumber(key, u"Version", 0x4200 | 0x8000);
  SetNumber(key, u"Status", 2);
  EXPECT_EQ(BookModeStatus(u"P1"), 2u);
  SetNumber(key, u"Version", 0x4201);
  EXPECT_TRUE(SetBookModeResolution(u"P1", 400));  // renewed first, then written
  EXPECT_EQ(Number(key, u"Status"), 0u);
  EXPECT_EQ(Number(key, u"Resolution"), 400u);
  RegSetValueExW(OpenKey(HKEY_CURRENT_USER, key.c_str(), KEY_ALL_ACCESS).get(), u"Status", REG_BINARY,
                 reinterpret_cast<const uint8_t*>("x"), 1);
  EXPECT_EQ(BookModeStatus(u"P1"), 0u);
}

TEST_F(PrinterDataTest, BookModeThatCannotBeOpened) {
  backend.FailCall(1, kErrorAccessDenied, true);
  EXPECT_EQ(BookModeStatus(u"P1"), 0u);
  EXPECT_EQ(BookModeResolution(u"P1"), 600u);
  EXPECT_FALSE(SetBookModeStatus(DriverEnv{}, 1));
  EXPECT_FALSE(SetBookModeResolution(u"P1", 200));
}

TEST_F(PrinterDataTest, BusyStoreForgetsNothing) {
  ASSERT_TRUE(SetBookModeStatus(Default(), 2));
  SetNumber(BuildUserKey(u"P1"), u"DriverVersion", 0x4200);
  const std::string before = backend.Dump(Hive::kUser);
  for (uint64_t n = 1; n < 8; ++n) {
    backend.FailCall(n, kErrorBusy);  // this call alone: a rewrite after it would succeed
    BookModeStatus(u"P1");
    backend.FailCall(n, kErrorBusy);
    EXPECT_EQ(CompareDriverVersion(u"P1", 0x4200), 1) << "call " << n;
    backend.FailCall(0, 0);
    ASSERT_EQ(backend.Dump(Hive::kUser), before) << "call " << n;
  }
}

TEST_F(PrinterDataTest, VersionOfTheStores) {
  EXPECT_EQ(CompareDriverVersion(u"P1", 0x4200), 3);
  SetNumber(BuildUserKey(u"P10"), u"DriverVersion", 0x4200);
  EXPECT_EQ(CompareDriverVersion(u"P1", 0x4200), 3);
  SetNumber(BuildUserKey(u"P1", u"BookMode"), u"Version", 0x4200);  // the key exists, the value doesn't
  EXPECT_EQ(CompareDriverVersion(u"P1", 0x4200), 3);
  EXPECT_EQ(CompareDriverVersion(u"P10", 0x0200), 1);
  EXPECT_EQ(CompareDriverVersion(u"P10", 0x4201), 2);
}

}  // namespace
}  // namespace heron

// Queues and their data on the backend in memory: exact sizes, layouts, names, and what a failing store leaves.

#include "platform/api/spooler.h"

#include <gtest/gtest.h>

#include <cstring>
#include <span>
#include <vector>

#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/memory/memory_backend.h"

namespace heron::platform {
namespace {

/// A record of `size` bytes that declares them all.
std::vector<uint8_t> Record(size_t size) {
  std::vector<uint8_t> bytes(size, 0x33);
  bytes[68] = 72;
  bytes[69] = 0;
  bytes[70] = static_cast<uint8_t>(size - 72);
  bytes[71] = static_cast<uint8_t>((size - 72) >> 8);
  return bytes;
}

Queue Sample(std::u16string name) {
  return {.name = std::move(name),
          .server = u"",
          .port = u"FILE:",
          .driver = u"Driver",
          .dataFile = u"/d/data",
          .devMode = {}};
}

class SpoolerTest : public ::testing::Test {
 protected:
  SpoolerTest() {
    Queue queue = Sample(u"Qu\u00E9");
    queue.devMode = Record(101);  // odd, so that the texts behind must be aligned again
    EXPECT_EQ(AddQueue(queue), kErrorSuccess);
    printer = OpenPrinterFor(u"qu\u00E9", PRINTER_ALL_ACCESS);
  }

  MemoryBackend backend;
  UniquePrinter printer;
};

TEST_F(SpoolerTest, GetPrinterFillsExactlyWhatItAskedFor) {
  for (const DWORD level : {1u, 2u}) {
    DWORD needed = 0;
    EXPECT_EQ(GetPrinterW(printer.get(), level, nullptr, 0, &needed), 0);
    EXPECT_EQ(GetLastError(), kErrorInsufficientBuffer);
    std::vector<uint8_t> buffer(needed + 1, 0xEE);
    EXPECT_EQ(GetPrinterW(printer.get(), level, buffer.data(), needed - 1, &needed), 0);
    EXPECT_EQ(buffer, std::vector<uint8_t>(needed + 1, 0xEE));
    EXPECT_EQ(GetPrinterW(printer.get(), level, buffer.data(), needed, &needed), 1);
    EXPECT_EQ(buffer.back(), 0xEE);
  }
  DWORD needed = 9;
  EXPECT_EQ(GetPrinterW(printer.get(), 3, nullptr, 0, &needed), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidLevel);
}

TEST_F(SpoolerTest, TheStructuresPointIntoTheirBuffer) {
  alignas(16) uint8_t buffer[1024];
  DWORD needed = 0;
  ASSERT_EQ(GetPrinterW(printer.get(), 2, buffer, sizeof buffer, &needed), 1);
  PRINTER_INFO_2W info;
  std::memcpy(&info, buffer, sizeof info);
  EXPECT_EQ(std::u16string_view(info.pPrinterName), u"Qu\u00E9");  // as it was added, not as it was opened
  EXPECT_EQ(std::u16string_view(info.pPortName), u"FILE:");
  EXPECT_EQ(info.pServerName, nullptr);
  ASSERT_NE(info.pDevMode, nullptr);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(info.pDevMode) % 8, 0u);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(info.pPrinterName) % 2, 0u);
  EXPECT_EQ(std::memcmp(info.pDevMode, Record(101).data(), 101), 0);
  EXPECT_TRUE(reinterpret_cast<uint8_t*>(info.pParameters) < buffer + needed);

  ASSERT_EQ(GetPrinterDriverW(printer.get(), nullptr, 2, buffer, sizeof buffer, &needed), 1);
  DRIVER_INFO_2W driver;
  std::memcpy(&driver, buffer, sizeof driver);
  EXPECT_EQ(std::u16string_view(driver.pDataFile), u"/d/data");
  EXPECT_EQ(std::u16string_view(driver.pName), u"Driver");
}

TEST_F(SpoolerTest, AQueueIsReadAtOneLook) {
  uint8_t buffer[1024];
  DWORD needed = 0;
  backend.FailCall(0, 0);
  ASSERT_EQ(GetPrinterW(printer.get(), 2, buffer, sizeof buffer, &needed), 1);
  EXPECT_EQ(backend.Calls(), 1u);
  ASSERT_EQ(GetPrinterDriverW(printer.get(), nullptr, 2, buffer, sizeof buffer, &needed), 1);
  EXPECT_EQ(backend.Calls(), 2u);
}

TEST_F(SpoolerTest, ARecordShorterThanItDeclaresIsNeverHandedOut) {
  Queue queue = Sample(u"short");
  queue.devMode = Record(100);
  queue.devMode.pop_back();
  EXPECT_EQ(AddQueue(queue), kErrorInvalidParameter);
  queue.devMode.assign(71, 0);
  EXPECT_EQ(AddQueue(queue), kErrorInvalidParameter);
  // One that came into the store by another road.
  const UniqueKey key =
      OpenKey(HKEY_LOCAL_MACHINE, u"SYSTEM\\CurrentControlSet\\Control\\Print\\Printers\\Qu\u00E9", KEY_ALL_ACCESS);
  ASSERT_EQ(RegSetValueExW(key.get(), u"Default DevMode", REG_BINARY, Record(100).data(), 99), kErrorSuccess);
  ASSERT_EQ(RegSetValueExW(key.get(), u"Port", REG_SZ, reinterpret_cast<const uint8_t*>("C\0O"), 3), kErrorSuccess);
  alignas(8) uint8_t buffer[1024];
  DWORD needed = 0;
  ASSERT_EQ(GetPrinterW(printer.get(), 2, buffer, sizeof buffer, &needed), 1);
  PRINTER_INFO_2W info;
  std::memcpy(&info, buffer, sizeof info);
  EXPECT_EQ(info.pDevMode, nullptr);
  EXPECT_EQ(std::u16string_view(info.pPortName), u"C");  // cut off in a character, no terminator
}

TEST_F(SpoolerTest, NamesAreCheckedAndBackslashesKept) {
  for (const std::u16string& bad :
       {std::u16string(), std::u16string(220, u'x'), std::u16string(u"a,b"), std::u16string(u"a\nb")}) {
    EXPECT_EQ(AddQueue(Sample(bad)), kErrorInvalidPrinterName);
    HANDLE out = nullptr;
    EXPECT_EQ(OpenPrinterW(bad.c_str(), &out, nullptr), 0);
    EXPECT_EQ(GetLastError(), kErrorInvalidPrinterName);
  }
  const std::u16string longest(219, u'x');
  ASSERT_EQ(AddQueue(Sample(longest)), kErrorSuccess);
  ASSERT_EQ(AddQueue(Sample(u"\\\\server\\queue")), kErrorSuccess);
  EXPECT_EQ(FindQueue(u",,server,queue", nullptr), kErrorInvalidPrinterName);
  std::vector<std::u16string> names;
  EXPECT_EQ(ListQueues(&names), kErrorSuccess);
  EXPECT_EQ(names, (std::vector<std::u16string>{u"\\\\server\\queue", u"Qu\u00E9", longest}));
  Queue found;
  EXPECT_EQ(FindQueue(u"\\\\SERVER\\queue", &found), kErrorSuccess);
  EXPECT_EQ(found.dataFile, u"/d/data");
}

TEST_F(SpoolerTest, ARemovedQueueIsKnownByItsIdentityUntilItIsBack) {
  Queue queue;
  ASSERT_EQ(FindQueue(u"Qu\u00E9", &queue), kErrorSuccess);
  const std::u16string first = queue.identity;
  EXPECT_EQ(first.size(), 16u);
  ASSERT_EQ(AddQueue(Sample(u"Qu\u00E9")), kErrorSuccess);
  ASSERT_EQ(FindQueue(u"Qu\u00E9", &queue), kErrorSuccess);
  EXPECT_EQ(queue.identity, first) << "a replaced queue is the same one";
  EXPECT_FALSE(WasQueueRemoved(u"Qu\u00E9", first));
  ASSERT_EQ(RemoveQueue(u"Qu\u00E9"), kErrorSuccess);
  EXPECT_TRUE(WasQueueRemoved(u"Qu\u00E9", first));
  EXPECT_FALSE(WasQueueRemoved(u"Qu\u00E9", {}));
  ASSERT_EQ(AddQueue(Sample(u"Qu\u00E9")), kErrorSuccess);
  Queue fresh;
  ASSERT_EQ(FindQueue(u"Qu\u00E9", &fresh), kErrorSuccess);
  EXPECT_NE(fresh.identity, first);
  ASSERT_EQ(RemoveQueue(u"Qu\u00E9"), kErrorSuccess);
  ASSERT_EQ(AddQueue(queue), kErrorSuccess);  // with the identity that it had
  EXPECT_FALSE(WasQueueRemoved(u"Qu\u00E9", first));
}

TEST_F(SpoolerTest, OfTwoThatAddANewQueueOneDoes) {
  ASSERT_EQ(AddQueue(Sample(u"new"), AddMode::kNew), kErrorSuccess);
  const std::string before = backend.Dump(Hive::kMachine);
  Queue other = Sample(u"NEW");
  other.port = u"elsewhere";
  EXPECT_EQ(AddQueue(other, AddMode::kNew), kErrorPrinterAlreadyExists);
  EXPECT_EQ(backend.Dump(Hive::kMachine), before);
  EXPECT_EQ(AddQueue(other, AddMode::kReplace), kErrorSuccess);
  EXPECT_NE(backend.Dump(Hive::kMachine), before);
}

TEST_F(SpoolerTest, ARemovedQueueIsGoneForItsOpenHandleToo) {
  const uint8_t byte = 1;
  DWORD needed = 0;
  ASSERT_EQ(SetPrinterDataW(printer.get(), u"v", REG_BINARY, &byte, 1), kErrorSuccess);
  ASSERT_EQ(RemoveQueue(u"QU\u00E9"), kErrorSuccess);
  EXPECT_EQ(RemoveQueue(u"Qu\u00E9"), kErrorInvalidPrinterName);
  EXPECT_EQ(backend.Dump(Hive::kMachine).find("Print\\Printers"), std::string::npos);
  ASSERT_EQ(AddQueue(Sample(u"Qu\u00E9")), kErrorSuccess);
  EXPECT_EQ(GetPrinterDataW(printer.get(), u"v", nullptr, nullptr, 0, &needed), kErrorPrinterDeleted);
  EXPECT_EQ(SetPrinterDataW(printer.get(), u"v", REG_BINARY, &byte, 1), kErrorPrinterDeleted);
  EXPECT_EQ(GetPrinterW(printer.get(), 2, nullptr, 0, &needed), 0);
  EXPECT_EQ(GetLastError(), kErrorPrinterDeleted);
}

TEST_F(SpoolerTest, AllPrinterDataComeInOneLook) {
  const auto enumerate = [&](std::vector<uint8_t>& buffer, DWORD* needed, DWORD* count) {
    return EnumPrinterDataExW(printer.get(), u"PrinterDriverData", buffer.data(), static_cast<DWORD>(buffer.size()),
                              needed, count);
  };
  const uint8_t odd[] = {1, 2, 3};
  ASSERT_EQ(SetPrinterDataW(printer.get(), u"odd", REG_BINARY, odd, sizeof odd), kErrorSuccess);
  ASSERT_EQ(SetPrinterDataW(printer.get(), u"none", REG_BINARY, nullptr, 0), kErrorSuccess);
  std::vector<uint8_t> buffer;
  DWORD needed = 0;
  DWORD count = 77;
  EXPECT_EQ(enumerate(buffer, &needed, &count), kErrorMoreData);
  buffer.resize(needed - 1);
  EXPECT_EQ(enumerate(buffer, &needed, &count), kErrorMoreData);
  EXPECT_EQ(count, 77U);
  buffer.resize(needed);
  const uint64_t calls = backend.Calls();
  ASSERT_EQ(enumerate(buffer, &needed, &count), kErrorSuccess);
  EXPECT_EQ(backend.Calls(), calls + 1);
  ASSERT_EQ(count, 2U);
  const auto* values = reinterpret_cast<const PRINTER_ENUM_VALUESW*>(buffer.data());
  for (const PRINTER_ENUM_VALUESW& value : std::span(values, count)) {
    const std::u16string_view name(value.pValueName);
    EXPECT_EQ(value.cbValueName, (name.size() + 1) * 2);
    EXPECT_EQ(value.cbData, name == u"odd" ? 3U : 0U);
    EXPECT_EQ(value.dwType, REG_BINARY);
    EXPECT_TRUE(name != u"odd" || std::memcmp(value.pData, odd, sizeof odd) == 0);
  }
  EXPECT_EQ(EnumPrinterDataExW(printer.get(), u"Other", nullptr, 0, &needed, &count), kErrorFileNotFound);
  EXPECT_EQ(EnumPrinterDataExW(nullptr, u"PrinterDriverData", nullptr, 0, &needed, &count), kErrorInvalidHandle);
}

TEST_F(SpoolerTest, PublishedValuesAreApartAndGoWithTheQueue) {
  const uint8_t byte = 7;
  DWORD needed = 0, count = 0;
  const auto published = [&](HANDLE queue) {
    return EnumPrinterDataExW(queue, u"DsDriver", nullptr, 0, &needed, &count);
  };
  const auto publish = [&](HANDLE queue, const char16_t* key) {
    return SetPrinterDataExW(queue, key, u"v", REG_BINARY, &byte, 1);
  };
  EXPECT_EQ(published(printer.get()), kErrorFileNotFound) << "nothing was published yet";
  ASSERT_EQ(publish(printer.get(), u"DsDriver"), kErrorSuccess);
  EXPECT_EQ(published(printer.get()), kErrorMoreData);
  EXPECT_EQ(GetPrinterDataW(printer.get(), u"v", nullptr, nullptr, 0, &needed), kErrorFileNotFound);
  EXPECT_EQ(publish(printer.get(), u"PrinterDriverData"), kErrorSuccess);
  EXPECT_EQ(GetPrinterDataW(printer.get(), u"v", nullptr, nullptr, 0, &needed), kErrorMoreData);
  EXPECT_EQ(publish(printer.get(), u"Other"), kErrorInvalidParameter);
  backend.machineWritable = false;
  EXPECT_EQ(publish(printer.get(), u"DsDriver"), kErrorAccessDenied);
  EXPECT_EQ(published(printer.get()), kErrorMoreData) << "reading needs no right";
  backend.machineWritable = true;
  ASSERT_EQ(RemoveQueue(u"Qu\u00E9"), kErrorSuccess);
  ASSERT_EQ(AddQueue(Sample(u"Qu\u00E9")), kErrorSuccess);
  EXPECT_EQ(publish(printer.get(), u"DsDriver"), kErrorPrinterDeleted) << "the new queue isn't the old one";
  const UniquePrinter again = OpenPrinterFor(u"Qu\u00E9", PRINTER_ALL_ACCESS);
  EXPECT_EQ(published(again.get()), kErrorFileNotFound);
}

TEST_F(SpoolerTest, WithoutRightsPrinterDataIsReadOnly) {
  backend.machineWritable = false;
  EXPECT_EQ(OpenPrinterFor(u"Qu\u00E9", PRINTER_ALL_ACCESS), nullptr);
  EXPECT_EQ(GetLastError(), kErrorAccessDenied);
  const UniquePrinter user = OpenPrinterFor(u"Qu\u00E9", PRINTER_ACCESS_USE);
  ASSERT_NE(user, nullptr);
  const uint8_t byte = 1;
  EXPECT_EQ(SetPrinterDataW(user.get(), u"DUMMY", REG_BINARY, &byte, 1), kErrorAccessDenied);
  EXPECT_EQ(BeginPrinterDataBatch(user.get()), kErrorAccessDenied);
  EXPECT_EQ(AddQueue(Sample(u"other")), kErrorAccessDenied);
}

TEST_F(SpoolerTest, ABatchEndedThroughAClosedHandleIsWithdrawn) {
  const std::string before = backend.Dump(Hive::kMachine);
  const uint8_t byte = 1;
  ASSERT_EQ(BeginPrinterDataBatch(printer.get()), kErrorSuccess);
  ASSERT_EQ(SetPrinterDataW(printer.get(), u"v", REG_BINARY, &byte, 1), kErrorSuccess);
  const HANDLE stale = printer.get();
  printer.reset();
  EXPECT_EQ(EndPrinterDataBatch(stale, 1), kErrorInvalidHandle);
  EXPECT_EQ(backend.Dump(Hive::kMachine), before);
  EXPECT_EQ(RegEndBatch(HKEY_LOCAL_MACHINE, 1), kErrorInvalidParameter);
}

TEST_F(SpoolerTest, AFailureAnywhereLeavesTheQueuesAsTheyWere) {
  const std::string before = backend.Dump(Hive::kMachine);
  Queue changed = Sample(u"Qu\u00E9");
  changed.port = u"LPT1:";
  const auto sweep = [&](const char* what, auto&& act) {
    for (uint64_t n = 1;; ++n) {
      backend.FailCall(n, kErrorDiskFull);
      const DWORD status = act();
      const bool reached = backend.Calls() >= n;
      backend.FailCall(0, 0);
      if (!reached) {
        EXPECT_EQ(status, kErrorSuccess) << what;
        return;
      }
      EXPECT_EQ(status, kErrorDiskFull) << what << " failing call " << n;
      EXPECT_EQ(backend.Dump(Hive::kMachine), before) << what << " failing call " << n;
    }
  };
  std::vector<std::u16string> names;
  sweep("list", [&] { return ListQueues(&names); });
  sweep("find", [&] { return FindQueue(u"Qu\u00E9", &changed); });
  changed.port = u"LPT1:";
  sweep("replace", [&] { return AddQueue(changed); });
  const std::string replaced = backend.Dump(Hive::kMachine);
  EXPECT_NE(replaced, before);
  changed.port = u"FILE:";
  ASSERT_EQ(AddQueue(changed), kErrorSuccess);
  ASSERT_EQ(backend.Dump(Hive::kMachine), before);
  sweep("remove", [&] { return RemoveQueue(u"Qu\u00E9"); });
  EXPECT_EQ(backend.Dump(Hive::kMachine).find("Print\\Printers"), std::string::npos);
}

}  // namespace
}  // namespace heron::platform

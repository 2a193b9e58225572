// The registry's calls on the backend in memory: handles, rights, sizes and nested batches.

#include "platform/api/registry.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/api/text.h"
#include "platform/memory/memory_backend.h"

namespace heron::platform {
namespace {

class RegistryTest : public ::testing::Test {
 protected:
  static DWORD Set(HKEY key, const char16_t* name, uint8_t byte) {
    return RegSetValueExW(key, name, REG_BINARY, &byte, 1);
  }
  static bool Exists(const char16_t* path) { return OpenKey(HKEY_CURRENT_USER, path, KEY_READ) != nullptr; }

  MemoryBackend backend;
};

TEST_F(RegistryTest, PathsAreNormalisedAndBoundedBelowAnyKey) {
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, u"\\Software\\\\Test\\");
  EXPECT_TRUE(Exists(u"software\\TEST"));
  bool created = false;
  EXPECT_NE(CreateKey(key.get(), u"\\a\\\\b", &created), nullptr);
  EXPECT_TRUE(created);
  EXPECT_NE(CreateKey(HKEY_CURRENT_USER, u"Software\\Test\\a\\b", &created), nullptr);
  EXPECT_FALSE(created);
  EXPECT_NE(OpenKey(key.get(), nullptr, KEY_READ), nullptr);
  const std::u16string endless(5000, u'x');
  HKEY none = nullptr;
  EXPECT_EQ(RegCreateKeyExW(key.get(), endless.c_str(), KEY_READ, &none, nullptr), kErrorInvalidParameter);
}

TEST_F(RegistryTest, StaleAndUnknownHandlesAreRefused) {
  const HKEY stale = CreateKey(HKEY_CURRENT_USER, u"k").release();
  EXPECT_EQ(RegCloseKey(stale), kErrorSuccess);
  EXPECT_EQ(RegCloseKey(stale), kErrorInvalidHandle);
  ASSERT_EQ(AddQueue({.name = u"P", .server = u"", .port = u"", .driver = u"", .dataFile = u"", .devMode = {}}), 0u);
  const UniquePrinter printer = OpenPrinterFor(u"P", PRINTER_ACCESS_USE);
  int other = 0;
  for (const HKEY bad : {stale, printer.get(), static_cast<HKEY>(&other), static_cast<HKEY>(nullptr)}) {
    DWORD size = 0;
    HKEY out = bad;
    char16_t name[4];
    EXPECT_EQ(RegQueryValueExW(bad, u"v", nullptr, nullptr, &size), kErrorInvalidHandle);
    EXPECT_EQ(Set(bad, u"v", 1), kErrorInvalidHandle);
    EXPECT_EQ(RegOpenKeyExW(bad, u"k", 0, KEY_READ, &out), kErrorInvalidHandle);
    EXPECT_EQ(RegEnumKeyExW(bad, 0, name, &size), kErrorInvalidHandle);
    EXPECT_EQ(RegDeleteKeyW(bad, u"k"), kErrorInvalidHandle);
    EXPECT_EQ(RegCloseKey(bad), kErrorInvalidHandle);
  }
  const UniqueKey again = CreateKey(HKEY_CURRENT_USER, u"k");
  EXPECT_NE(again.get(), stale);
  EXPECT_EQ(ClosePrinter(again.get()), 0);
}

TEST_F(RegistryTest, RightsDecideOverWriting) {
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, u"k");
  const UniqueKey reader = OpenKey(HKEY_CURRENT_USER, u"k", KEY_READ);
  EXPECT_EQ(Set(reader.get(), u"v", 1), kErrorAccessDenied);
  EXPECT_EQ(RegDeleteValueW(reader.get(), u"v"), kErrorAccessDenied);
  backend.userWritable = false;
  HKEY out = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, u"k", 0, KEY_ALL_ACCESS, &out), kErrorAccessDenied);
  EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, u"k", KEY_ALL_ACCESS, &out, nullptr), kErrorAccessDenied);
  EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, u"new", KEY_READ, &out, nullptr), kErrorAccessDenied);
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, u"none", 0, KEY_ALL_ACCESS, &out), kErrorFileNotFound);
  EXPECT_EQ(out, nullptr);
  EXPECT_TRUE(Exists(u"k"));
}

TEST_F(RegistryTest, SizesOfValuesAndNamesAreAnsweredExactly) {
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, u"k\\abc");
  const UniqueKey parent = OpenKey(HKEY_CURRENT_USER, u"k", KEY_ALL_ACCESS);
  const std::vector<uint8_t> data{1, 2, 3, 4};
  ASSERT_EQ(RegSetValueExW(parent.get(), u"v", REG_DWORD, data.data(), 4), kErrorSuccess);
  std::vector<uint8_t> room(4, 0xEE);
  DWORD type = 77;
  DWORD size = 3;
  EXPECT_EQ(RegQueryValueExW(parent.get(), u"v", &type, room.data(), &size), kErrorMoreData);
  EXPECT_EQ(size, 4u);
  EXPECT_EQ(room, std::vector<uint8_t>(4, 0xEE));
  EXPECT_EQ(RegQueryValueExW(parent.get(), u"v", &type, room.data(), &size), kErrorSuccess);
  EXPECT_EQ(room, data);
  EXPECT_EQ(type, REG_DWORD);
  EXPECT_EQ(RegQueryValueExW(parent.get(), u"v", &type, room.data(), nullptr), kErrorInvalidParameter);
  EXPECT_EQ(RegQueryValueExW(parent.get(), u"w", &type, nullptr, &size), kErrorFileNotFound);
  char16_t name[4] = u"###";
  DWORD length = 3;
  EXPECT_EQ(RegEnumKeyExW(parent.get(), 0, name, &length), kErrorMoreData);
  EXPECT_EQ(name[0], u'#');
  length = 4;
  EXPECT_EQ(RegEnumKeyExW(parent.get(), 0, name, &length), kErrorSuccess);
  EXPECT_EQ(std::u16string_view(name, length), u"abc");
  EXPECT_EQ(RegEnumKeyExW(parent.get(), 1, name, &length), kErrorNoMoreItems);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, u"k"), kErrorAccessDenied);
  EXPECT_EQ(RegDeleteKeyW(parent.get(), u"ABC"), kErrorSuccess);
  EXPECT_EQ(RegQueryValueExW(key.get(), u"v", nullptr, nullptr, &size), kErrorKeyDeleted);
}

TEST_F(RegistryTest, OnlyTheOutermostBatchCountsAndAnyWithdrawalWithdrawsAll) {
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, u"k");
  ASSERT_EQ(Set(key.get(), u"v", 1), kErrorSuccess);
  const std::string before = backend.Dump(Hive::kUser);
  EXPECT_EQ(RegEndBatch(HKEY_CURRENT_USER, 1), kErrorInvalidParameter);
  EXPECT_EQ(RegBeginBatch(key.get()), kErrorInvalidHandle);

  {
    RegistryBatch outer(HKEY_CURRENT_USER);
    {
      const RegistryBatch inner(HKEY_CURRENT_USER);
      Set(key.get(), u"v", 2);
    }  // withdrawn
    Set(key.get(), u"v", 3);
    EXPECT_EQ(RegEndBatch(HKEY_CURRENT_USER, 1), kErrorOperationAborted);
    EXPECT_FALSE(outer.Keep());
  }
  EXPECT_EQ(backend.Dump(Hive::kUser), before);

  RegistryBatch outer(HKEY_CURRENT_USER);
  RegistryBatch inner(HKEY_CURRENT_USER);
  Set(key.get(), u"v", 4);
  EXPECT_TRUE(inner.Keep());
  EXPECT_TRUE(outer.Keep());
  EXPECT_EQ(backend.Dump(Hive::kUser), "k|v=3:04\n");
}

TEST_F(RegistryTest, ABatchThatCannotBeginOrCommitLeavesNothingOpen) {
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, u"k");
  const std::string before = backend.Dump(Hive::kUser);
  backend.FailCall(1, kErrorBusy);
  EXPECT_EQ(RegBeginBatch(HKEY_CURRENT_USER), kErrorBusy);
  ASSERT_EQ(RegBeginBatch(HKEY_CURRENT_USER), kErrorSuccess);
  Set(key.get(), u"v", 1);
  backend.FailCall(1, kErrorDiskFull);
  EXPECT_EQ(RegEndBatch(HKEY_CURRENT_USER, 1), kErrorDiskFull);
  EXPECT_EQ(backend.Dump(Hive::kUser), before);
  std::thread other([&] { EXPECT_EQ(Set(key.get(), u"v", 2), kErrorSuccess); });  // doesn't wait
  other.join();
}

TEST(RegistryWithoutBackend, CallsFailCleanlyAndHandlesDoNotSurviveTheirBackend) {
  HKEY key = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, u"", 0, KEY_READ, &key), kErrorGenFailure);
  EXPECT_EQ(GetACP(), 0u);
  {
    const MemoryBackend first;
    key = CreateKey(HKEY_CURRENT_USER, u"k").release();
    EXPECT_EQ(RegBeginBatch(HKEY_CURRENT_USER), kErrorSuccess);
  }
  const MemoryBackend second;
  EXPECT_NE(CreateKey(HKEY_CURRENT_USER, u"k"), nullptr);
  EXPECT_EQ(RegFlushKey(key), kErrorInvalidHandle);
  EXPECT_EQ(RegEndBatch(HKEY_CURRENT_USER, 1), kErrorInvalidParameter);
}

}  // namespace
}  // namespace heron::platform

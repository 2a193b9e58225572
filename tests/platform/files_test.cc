// The file calls: names, exclusive making, bounds of handles and of transfers.
#include "platform/api/files.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/memory/memory_backend.h"

namespace heron::platform {
namespace {

std::u16string TempName(DWORD unique, DWORD* number = nullptr) {
  char16_t folder[kMaxPath];
  char16_t name[kMaxPath] = {};
  EXPECT_NE(GetTempPathW(kMaxPath, folder), 0u);
  const DWORD given = GetTempFileNameW(folder, u"vpbxyz", unique, name);
  if (number != nullptr) *number = given;
  return given == 0 ? std::u16string() : name;
}

TEST(Files, TemporaryNamesAreUniqueAndTellTheirNumber) {
  MemoryBackend backend;
  char16_t small[3] = {};
  const DWORD needed = GetTempPathW(3, small);
  EXPECT_EQ(GetLastError(), kErrorInsufficientBuffer);
  std::u16string folder(needed, u'\0');
  EXPECT_EQ(GetTempPathW(needed, folder.data()), needed - 1);
  folder.pop_back();

  std::set<std::u16string> names;
  for (int i = 0; i < 300; ++i) {
    DWORD number = 0;
    const std::u16string name = TempName(0, &number);
    EXPECT_TRUE(names.insert(name).second);
    EXPECT_TRUE(backend.files.content.contains(name));
    EXPECT_EQ(TempName(number), name);
  }
  DWORD number = 0;
  EXPECT_EQ(TempName(0xABC12F0, &number), folder + u"vpb12f0.tmp") << "sixteen bits, three letters";
  EXPECT_EQ(number, 0x12F0u);
  EXPECT_FALSE(backend.files.content.contains(folder + u"vpb12f0.tmp")) << "a given number makes nothing";
  backend.files.writable = false;
  EXPECT_EQ(TempName(0), u"");
  char16_t name[kMaxPath];
  EXPECT_EQ(GetTempFileNameW(std::u16string(250, u'x').c_str(), u"vpb", 1, name), 0u);
}

TEST(Files, TransfersAndHandlesAreBounded) {
  MemoryBackend backend;
  const std::u16string name = TempName(0);
  const HANDLE file = CreateFileW(name.c_str(), GENERIC_WRITE, 0, CREATE_ALWAYS);
  DWORD done = 0;
  ASSERT_EQ(WriteFile(file, "abcdef", 6, &done), 1);
  EXPECT_EQ(done, 6u);
  EXPECT_EQ(CloseHandle(file), 1);
  EXPECT_EQ(CloseHandle(file), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidHandle);
  EXPECT_EQ(WriteFile(file, "x", 1, &done), 0);

  const HANDLE again = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  char bytes[8] = {};
  EXPECT_EQ(WriteFile(again, "x", 1, &done), 0) << "opened for reading";
  EXPECT_EQ(DeleteFileW(name.c_str()), 1);
  ASSERT_EQ(ReadFile(again, bytes, 4, &done), 1);
  EXPECT_EQ(done, 4u);
  ASSERT_EQ(ReadFile(again, bytes, 8, &done), 1);
  EXPECT_EQ(done, 2u);
  EXPECT_EQ(ReadFile(again, nullptr, 8, &done), 0);
  EXPECT_EQ(CloseHandle(again), 1);
  EXPECT_EQ(CreateFileW(name.c_str(), GENERIC_READ, 0, OPEN_EXISTING), INVALID_HANDLE_VALUE);
  EXPECT_EQ(GetLastError(), kErrorFileNotFound);
  EXPECT_EQ(CreateFileW(nullptr, GENERIC_READ, 0, OPEN_EXISTING), INVALID_HANDLE_VALUE);
  EXPECT_EQ(DeleteFileW(name.c_str()), 0);
}

}  // namespace
}  // namespace heron::platform

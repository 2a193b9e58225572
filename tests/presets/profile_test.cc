// Profiles: the facts that the settings files rely on, through the calls and on real files.
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "preset_fixture.h"
#include "sqlite/store_fixture.h"

namespace heron::test {
namespace {

using namespace platform;

class ProfileTest : public LibraryTest {
 protected:
  static std::u16string Text(const char16_t* section, const char16_t* key, DWORD size = 100) {
    char16_t buffer[100] = u"?";
    const DWORD length = GetPrivateProfileStringW(section, key, u"none", buffer, size, kFile);
    EXPECT_EQ(length, std::u16string_view(buffer).size());
    return buffer;
  }
  static bool Write(const char16_t* section, const char16_t* key, const char16_t* value) {
    return WritePrivateProfileStringW(section, key, value, kFile) != 0;
  }
};

TEST_F(ProfileTest, AWriteMakesReplacesAppendsAndRemoves) {
  EXPECT_TRUE(Write(u"a", u"x", u"1"));
  EXPECT_TRUE(Write(u"b", u"y", u"2"));
  EXPECT_TRUE(Write(u"a", u"z", u" 3 "));
  EXPECT_TRUE(Write(u"a", u"x", u"4\r\n[c]"));
  EXPECT_EQ(Bytes(), "[a]\r\nx=4  [c]\r\nz=3\r\n[b]\r\ny=2\r\n");
  EXPECT_TRUE(Write(u"a", u"x", nullptr));
  EXPECT_TRUE(Write(u"b", nullptr, nullptr));
  EXPECT_TRUE(Write(u"none", nullptr, nullptr));
  EXPECT_EQ(Bytes(), "[a]\r\nz=3\r\n");
  EXPECT_FALSE(Write(nullptr, nullptr, nullptr)) << "nothing is held back";
  EXPECT_EQ(Bytes(), "[a]\r\nz=3\r\n");
  SetBytes("[a]\r\nz=3\r\n\r\n\r\n[b]\r\ny=2");
  EXPECT_TRUE(Write(u"a", u"new", u"1"));
  EXPECT_TRUE(Write(u"b", u"new", u"1"));
  EXPECT_TRUE(Write(u"c", u"new", u"1"));
  EXPECT_EQ(Bytes(), "[a]\r\nz=3\r\nnew=1\r\n\r\n\r\n[b]\r\ny=2\r\nnew=1\r\n[c]\r\nnew=1\r\n");
}

TEST_F(ProfileTest, ManyEditsOfOneSectionAgreeWithSingleOnes) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::string bytes = "[a]\r\n";
    for (size_t n = random() % 6; n > 0; --n) bytes += std::string("k") + "0123"[random() % 4] + "=old\r\n\r\n";
    bytes += "[b]\r\n";
    Profile edited(bytes);
    SetBytes(bytes);
    for (int n = 0; n < 6; ++n) {
      const std::string key = std::string("k") + "012345"[random() % 6];
      const std::string value = std::to_string(n);
      if (random() % 3 == 0) {
        edited.RemoveKey(edited.Find("a"), key);
        Write(u"a", Wide(key).c_str(), nullptr);
      } else {
        edited.Set("a", key, value);
        Write(u"a", Wide(key).c_str(), Wide(value).c_str());
      }
      std::string_view found;
      const bool there = edited.Get("a", key, &found);
      ASSERT_EQ(Wide(there ? found : "none"), Text(u"a", Wide(key).c_str())) << bytes;
    }
  }
}

TEST_F(ProfileTest, AReadTrimsUnquotesCutsAndFallsBack) {
  SetBytes("[a]\r\nx = \"q r\" \r\nlong=abcdef\r\nn=-12z\r\nu=4294967295\r\nno\r\n[b]\r\nz=1\r\n");
  EXPECT_EQ(Text(u"a", u"x"), u"q r");
  EXPECT_EQ(Text(u"a", u"long", 4), u"abc");
  EXPECT_EQ(Text(u"a", u"no"), u"");
  EXPECT_EQ(Text(u"a", u"z"), u"none");
  EXPECT_EQ(Text(u"c", u"z"), u"none");
  EXPECT_EQ(static_cast<int32_t>(GetPrivateProfileIntW(u"a", u"n", 5, kFile)), -12);
  EXPECT_EQ(GetPrivateProfileIntW(u"a", u"u", 5, kFile), 4294967295u);
  EXPECT_EQ(GetPrivateProfileIntW(u"a", u"x", 5, kFile), 0u);
  EXPECT_EQ(GetPrivateProfileIntW(u"a", u"none", 5, kFile), 5u);
  backend.files.content.clear();
  EXPECT_EQ(Text(u"a", u"x"), u"none");
}

TEST(SettingsFileOnDisk, IsReplacedWholeAndOnlyARegularFileIsTouched) {
  const TempFolder folder;
  const auto store = InstallAt(folder.path / "home");
  const auto at = [&](const char* name) { return (folder.path / name).u16string(); };
  Profile file;
  file.Set("a", "x", "1");
  ASSERT_EQ(SaveProfile(at("new.vxs").c_str(), file), kErrorSuccess);
  struct stat info;
  ASSERT_EQ(stat((folder.path / "new.vxs").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);

  std::filesystem::create_directory(folder.path / "folder");
  std::filesystem::create_symlink("new.vxs", folder.path / "link");
  ASSERT_EQ(mkfifo((folder.path / "pipe").c_str(), 0600), 0);
  file.Set("a", "x", "2");
  for (const char* odd : {"folder", "link", "pipe", "missing/new.vxs", "new.vxs/new.vxs"}) {
    std::string bytes = "as it was";
    EXPECT_NE(SaveProfile(at(odd).c_str(), file), kErrorSuccess) << odd;
    EXPECT_NE(ReadProfileBytes(at(odd).c_str(), &bytes), kErrorSuccess) << odd;
    EXPECT_EQ(bytes, "as it was");
  }
  std::string bytes;
  ASSERT_EQ(ReadProfileBytes(at("new.vxs").c_str(), &bytes), kErrorSuccess);
  EXPECT_EQ(bytes, "[a]\r\nx=1\r\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path), {}), 4) << "nothing is left beside it";
  if (geteuid() != 0) {
    std::filesystem::permissions(folder.path / "new.vxs", std::filesystem::perms::owner_read);
    EXPECT_EQ(SaveProfile(at("new.vxs").c_str(), file), kErrorAccessDenied);
  }
  WriteFile(folder.path / "large.vxs", std::string(kProfileLimit + 1, ' '));
  EXPECT_EQ(ReadProfileBytes(at("large.vxs").c_str(), &bytes), kErrorMoreData);
  WriteFile(folder.path / "large.vxs", std::string(kProfileLimit, ' '));
  EXPECT_EQ(ReadProfileBytes(at("large.vxs").c_str(), &bytes), kErrorSuccess);
}

}  // namespace
}  // namespace heron::test

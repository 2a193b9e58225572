// The real backend's other halves: modules, code pages, the environment, and whole files.

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>

#include "platform/api/modules.h"
#include "platform/api/process.h"
#include "platform/api/text.h"
#include "platform/sqlite/countries.h"
#include "platform/sqlite/file_names.h"
#include "platform/sqlite/leftovers.h"
#include "store_fixture.h"

namespace heron::test {
namespace {

using namespace platform;
namespace fs = std::filesystem;

/// Sets variables of the environment for a test's time; an empty value unsets.
class Environment {
 public:
  explicit Environment(const std::vector<std::pair<const char*, std::string>>& variables) {
    for (const auto& [name, value] : variables) {
      const char* const old = std::getenv(name);
      before_.emplace_back(name, old == nullptr ? "" : old);
      Set(name, value);
    }
  }
  ~Environment() {
    for (const auto& [name, value] : before_) Set(name, value);
  }

 private:
  static void Set(const char* name, const std::string& value) {
    if (value.empty())
      unsetenv(name);
    else
      setenv(name, value.c_str(), 1);
  }
  std::vector<std::pair<const char*, std::string>> before_;
};

TEST(Modules, TextsAreFoundByNumberWhileTheModuleIsLoaded) {
  const TempFolder folder;
  const auto backend = InstallAt(folder.path);
  const std::u16string path = FromUtf8(SAMPLE_TEXTS);
  const HMODULE module = LoadLibraryW(path.c_str());
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(LoadLibraryW(path.c_str()), module);
  char16_t text[8];
  EXPECT_EQ(LoadStringW(module, 48011, text, 8), 4);
  EXPECT_EQ(std::u16string_view(text), u"A4\u00E9\u6587");
  EXPECT_EQ(LoadStringW(module, 48011, text, 3), 2);
  EXPECT_EQ(std::u16string_view(text), u"A4");
  for (const uint32_t missing : {0u, 2u, 7u, 48012u}) EXPECT_EQ(LoadStringW(module, missing, text, 8), 0) << missing;
  EXPECT_EQ(FreeLibrary(module), 1);
  EXPECT_EQ(LoadStringW(module, 1, text, 8), 3);  // loaded twice
  EXPECT_EQ(FreeLibrary(module), 1);
  EXPECT_EQ(LoadStringW(module, 1, text, 8), 0);
  EXPECT_EQ(FreeLibrary(module), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidHandle);
  int other = 0;
  EXPECT_EQ(FreeLibrary(&other), 0);
  for (const char16_t* bad : {u"libm.so.6", u"/nowhere/x.so", u"", u"/"}) {
    EXPECT_EQ(LoadLibraryW(bad), nullptr);
    EXPECT_EQ(GetLastError(), kErrorModNotFound);
  }
}

TEST(Modules, TheSystemsOwnAreFoundByTheirBareNames) {
  const TempFolder folder;
  const auto backend = InstallAt(folder.path);
  for (const char16_t* name : {u"KERNEL32.DLL", u"WS2_32.DLL", u"WSOCK32.DLL"}) {
    const HMODULE module = LoadLibraryW(name);
    EXPECT_NE(module, nullptr);
    EXPECT_EQ(FreeLibrary(module), 1);
  }
}

TEST(CodePages, AChineseNameIsCutAtAWholeCharacterAndMissingOnesAreMarked) {
  const TempFolder folder;
  store::StoreOptions options;
  options.home = folder.path;
  options.code_page = 936;
  const auto backend = store::InstallStoreBackend(options);
  char bytes[4] = {'#', '#', '#', '#'};
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, u"\u4E2D\u6587", -1, bytes, 4), 0);  // no room for the terminator
  EXPECT_EQ(std::string(bytes, 4), "\xD6\xD0\xCE\xC4");
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, u"\u4E2D\u6587", 2, bytes, 3), 0);
  EXPECT_EQ(GetLastError(), kErrorInsufficientBuffer);
  const char16_t odd[] = u"a\u0E01\U0001F600\xD800z";  // Thai, an emoji, half a character
  char out[16];
  const int length = WideCharToMultiByte(936, odd, -1, out, 16);
  EXPECT_EQ(std::string(out), "a???z");
  EXPECT_EQ(length, 6);
  char16_t wide[8];
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, "\xD6\xD0\xFF\xCE", 4, wide, 8), 3);
  EXPECT_EQ(std::u16string_view(wide, 3), u"\u4E2D\uFFFD\uFFFD");
  EXPECT_EQ(WideCharToMultiByte(64999, u"x", 1, out, 16), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidParameter);
  const std::u16string long_text(1000, u'\u4E2D');
  EXPECT_EQ(WideCharToMultiByte(936, long_text.c_str(), -1, nullptr, 0), 2001);
}

TEST(Surroundings, TheEnvironmentIsFollowedAndItsMistakesAreReported) {
  const Environment good({{"HERON_HOME", "/somewhere"},
                          {"HERON_USER", "anna"},
                          {"HERON_COUNTRY", "86"},
                          {"HERON_CODE_PAGE", "936"},
                          {"HERON_PROCESS", "C:/EXCEL.EXE"}});
  store::StoreOptions options = store::OptionsFromEnvironment();
  EXPECT_EQ(options.home, "/somewhere");
  EXPECT_EQ(store::DriverDirectoryPath(), "/somewhere/driver/");
  EXPECT_TRUE(options.user == "anna" && options.country == u"86" && options.code_page == 936 &&
              options.process == u"C:/EXCEL.EXE");
  store::TakeNotices();
  const Environment bad({{"HERON_HOME", ""},
                         {"XDG_DATA_HOME", "relative"},
                         {"HOME", "/h"},
                         {"HERON_USER", ""},
                         {"HERON_COUNTRY", "8a"},
                         {"HERON_CODE_PAGE", "64999"},
                         {"HERON_PROCESS", ""}});
  options = store::OptionsFromEnvironment();
  EXPECT_EQ(options.home, "/h/.local/share/heron");
  EXPECT_TRUE(!options.user.empty() && options.country.empty() && options.code_page == 65001);
  EXPECT_TRUE(options.process.ends_with(u"sqlite_tests"));
  EXPECT_EQ(store::TakeNotices().size(), 2u);
}

TEST(Surroundings, ALocalesTerritoryGivesTheCountry) {
  constexpr std::pair<const char*, uint32_t> kCases[] = {{"de_DE.UTF-8", 49},
                                                         {"en_US", 1},
                                                         {"fr_MC@euro", 33},
                                                         {"fa_IR", 981},
                                                         {"sr_RS.UTF-8@latin", 381},
                                                         {"ka_GE", 995},
                                                         {"C", 0},
                                                         {"C.UTF-8", 0},
                                                         {"de", 0},
                                                         {"xx_QQ", 0},
                                                         {"de_D", 0},
                                                         {"de_", 0},
                                                         {"", 0}};
  for (const auto& [locale, country] : kCases) {
    EXPECT_EQ(store::CountryOfLocale(locale), country) << locale;
  }
}

TEST(Surroundings, LongNamesStayApartInTheLengthOfAFile) {
  std::string name;
  for (int i = 0; i < 110; ++i) name += "\xE4\xB8\xAD";
  EXPECT_LE(store::FileNameOf(name + "1").size(), 220u);
  EXPECT_NE(store::FileNameOf(name + "1"), store::FileNameOf(name + "2"));
}

TEST(Surroundings, AUsersNameNeverLeavesItsFolder) {
  const TempFolder folder;
  store::StoreOptions options;
  options.home = folder.path / "home";
  options.user = "../../evil";
  const auto backend = store::InstallStoreBackend(options);
  KeyId key = 0;
  bool created = false;
  ASSERT_EQ(CurrentBackend()->trees->Create(Hive::kUser, u"k", &key, &created), kErrorSuccess);
  EXPECT_TRUE(fs::exists(options.home / "users" / "%2E.%2F..%2Fevil.db"));
  EXPECT_FALSE(fs::exists(folder.path / "evil.db"));
}

TEST(Files, AReadIsBoundedAndOfRegularFilesOnly) {
  const TempFolder folder;
  const fs::path path = folder.path / "f";
  std::vector<uint8_t> bytes{1};
  EXPECT_EQ(store::ReadFileBytes(path, 10, &bytes), ENOENT);
  WriteFile(path, std::string(70000, 'x'));
  EXPECT_EQ(store::ReadFileBytes(path, 69999, &bytes), EFBIG);
  EXPECT_EQ(store::ReadFileBytes(folder.path, 10, &bytes), EISDIR);
  const fs::path pipe = folder.path / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(store::ReadFileBytes(pipe, 10, &bytes), EINVAL);
  EXPECT_EQ(store::ReplaceFileBytes(pipe, bytes), EINVAL);
  EXPECT_EQ(bytes, (std::vector<uint8_t>{1}));
  EXPECT_EQ(store::ReadFileBytes(path, 70000, &bytes), 0);
  EXPECT_EQ(bytes.size(), 70000u);
  WriteFile(path, "");
  EXPECT_EQ(store::ReadFileBytes(path, 0, &bytes), 0);
  EXPECT_TRUE(bytes.empty());
}

TEST(Files, AReplacementIsPrivateWholeAndLeavesNothingBeside) {
  const TempFolder folder;
  const fs::path path = folder.path / "f";
  const std::vector<uint8_t> bytes(300000, 7);
  WriteFile(path, "old");
  fs::create_hard_link(path, folder.path / "witness");
  fs::create_symlink("f", folder.path / "link");
  EXPECT_EQ(store::ReplaceFileBytes(folder.path / "link", bytes), 0);
  std::vector<uint8_t> back;
  EXPECT_EQ(store::ReadFileBytes(path, bytes.size(), &back), 0);
  EXPECT_EQ(back, bytes);
  EXPECT_TRUE(fs::is_symlink(folder.path / "link"));
  EXPECT_EQ(fs::file_size(folder.path / "witness"), 3u);  // the old file wasn't written into
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(store::ReplaceFileBytes(folder.path / "missing" / "f", bytes), ENOENT);
  fs::create_directory(folder.path / "d");
  EXPECT_EQ(store::ReplaceFileBytes(folder.path / "d", bytes), EISDIR);
  // A full disk, as a limit on the size of files.
  const int failed_step = RunChild([&] {
    const rlimit limit{1000, 1000};
    signal(SIGXFSZ, SIG_IGN);
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
    return store::ReplaceFileBytes(path, bytes) == EFBIG ? 0 : 2;
  });
  EXPECT_EQ(failed_step, 0);
  EXPECT_EQ(fs::file_size(path), bytes.size());
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), fs::directory_iterator()), 4);
}

}  // namespace
}  // namespace heron::test

// What the environment says: the home, the user, the locale and the process (store.h). Read here and nowhere else.

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "platform/text.h"
#include "store/code_pages.h"
#include "store/file_names.h"
#include "store/notices.h"
#include "store/store.h"

namespace heron::store {
namespace {

namespace fs = std::filesystem;

/// A variable of the environment; unset and empty are the same.
std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

/// The account the process runs as, or the text `field` of it; empty if the system doesn't know it.
std::string Account(char* passwd::*field) {
  passwd entry;
  passwd* found = nullptr;
  std::vector<char> texts(16384);
  if (getpwuid_r(geteuid(), &entry, texts.data(), texts.size(), &found) != 0 || found == nullptr) return {};
  return found->*field == nullptr ? std::string() : found->*field;
}

fs::path Absolute(const fs::path& path) {
  std::error_code error;
  fs::path absolute = fs::absolute(path, error);
  return error ? path : absolute;
}

fs::path UserHome() {
  const std::string home = Variable("HOME");
  return home.empty() ? Account(&passwd::pw_dir) : home;
}

platform::DWORD CodePageFromEnvironment() {
  const std::string text = Variable("HERON_CODE_PAGE");
  if (text.empty()) return platform::CP_UTF8;
  platform::DWORD page = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), page);
  if (error == std::errc() && end == text.data() + text.size() && page != platform::CP_ACP && IsKnownCodePage(page)) {
    return page;
  }
  AddNotice("HERON_CODE_PAGE isn't the number of a code page that this system knows; 65001 is used");
  return platform::CP_UTF8;
}

std::u16string CountryFromEnvironment() {
  const std::string text = Variable("HERON_COUNTRY");
  if (std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; })) return platform::FromUtf8(text);
  AddNotice("HERON_COUNTRY isn't a country code in digits; it is ignored");
  return {};
}

std::u16string ProcessFromEnvironment() {
  const std::string text = Variable("HERON_PROCESS");
  if (!text.empty()) return platform::FromUtf8(text);
  std::error_code error;
  return platform::FromUtf8(fs::read_symlink("/proc/self/exe", error).native());
}

std::string UserFromEnvironment() {
  std::string name = Variable("HERON_USER");
  if (name.empty()) name = Account(&passwd::pw_name);
  return name.empty() ? std::to_string(geteuid()) : name;
}

}  // namespace

fs::path StoreHome() {
  if (const std::string home = Variable("HERON_HOME"); !home.empty()) return Absolute(home);
  // The XDG rules: a path that isn't absolute is ignored.
  if (const fs::path data = Variable("XDG_DATA_HOME"); data.is_absolute()) return data / "heron";
  return Absolute(UserHome() / ".local" / "share" / "heron");
}

fs::path DocumentsPath() {
  if (const fs::path documents = Variable("XDG_DOCUMENTS_DIR"); documents.is_absolute()) return documents;
  const fs::path documents = UserHome() / "Documents";
  std::error_code error;
  if (Variable("HERON_HOME").empty() && fs::is_directory(documents, error)) return documents;
  const StoreOptions options = OptionsFromEnvironment();
  return options.home / "users" / (FileNameOf(options.user) + ".settings");
}

fs::path DriverDirectoryPath() {
  return StoreHome() / "driver" / "";
}

fs::path WorkingRecordPath(const std::string& printer) {
  const StoreOptions options = OptionsFromEnvironment();
  return options.home / "users" / (FileNameOf(options.user) + ".records") / (FileNameOf(printer) + ".bin");
}

StoreOptions OptionsFromEnvironment() {
  StoreOptions options;
  options.home = StoreHome();
  options.user = UserFromEnvironment();
  options.country = CountryFromEnvironment();
  options.process = ProcessFromEnvironment();
  options.code_page = CodePageFromEnvironment();
  return options;
}

}  // namespace heron::store

// Settings from the environment: the home, the user, the locale and the process (store.h). Read here and nowhere else.

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "platform/api/queues.h"
#include "platform/api/text.h"
#include "platform/sqlite/code_pages.h"
#include "platform/sqlite/countries.h"
#include "platform/sqlite/file_names.h"
#include "platform/sqlite/leftovers.h"
#include "platform/sqlite/notices.h"
#include "platform/sqlite/posix_files.h"
#include "platform/sqlite/store.h"

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
  const bool digits = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  if (digits && !text.empty()) return platform::FromUtf8(text);
  if (!digits) AddNotice("HERON_COUNTRY isn't a country code in digits; it is ignored");
  // By the rules of locales LC_ALL overrules the rest. Where it names no territory, as the "C" of scripts, it says
  // nothing about the paper that lies in the printer.
  for (const char* name : {"LC_ALL", "LC_PAPER", "LANG"}) {
    const uint32_t country = CountryOfLocale(Variable(name));
    if (country != 0) return platform::FromUtf8(std::to_string(country));
  }
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

const std::string kRecordSuffix = ".bin";

/// What lies beside the user's tree under the user's name.
fs::path UserPath(const char* suffix) {
  return StoreHome() / "users" / (FileNameOf(UserFromEnvironment()) + suffix);
}

/// The identity in the name of a record of a queue with this stem: empty if it has none. False for other files.
bool IsRecordOf(std::string_view name, std::string_view stem, std::string* identity) {
  if (!name.starts_with(stem) || !name.ends_with(kRecordSuffix)) return false;
  const size_t length = name.size() - kRecordSuffix.size();
  if (length > stem.size() && name[stem.size()] != '.') return false;
  *identity = length > stem.size() ? name.substr(stem.size() + 1, length - stem.size() - 1) : "";
  return true;
}

/// Removes the records of queues of this name that were removed.
void SweepRecords(const fs::path& kept, std::string_view stem, const platform::Queue& queue) {
  std::error_code error;
  for (fs::directory_iterator entry(kept.parent_path(), error), end; !error && entry != end; entry.increment(error)) {
    std::string identity;
    const bool other = entry->path() != kept && IsRecordOf(entry->path().filename().native(), stem, &identity);
    std::error_code ignored;
    if (other && platform::WasQueueRemoved(queue.name, platform::FromUtf8(identity)))
      fs::remove(entry->path(), ignored);
  }
}

}  // namespace

fs::path StoreHome() {
  if (const std::string home = Variable("HERON_HOME"); !home.empty()) return Absolute(home);
  // The XDG rules: a path that isn't absolute is ignored.
  if (const fs::path data = Variable("XDG_DATA_HOME"); data.is_absolute()) return data / "heron";
  return Absolute(UserHome() / ".local" / "share" / "heron");
}

bool HasNamedHome() {
  return !Variable("HERON_HOME").empty();
}

fs::path MachineHome() {
  if (HasNamedHome()) return StoreHome();
  if (const fs::path home = Variable("HERON_MACHINE_HOME"); !home.empty()) return Absolute(home);
  std::error_code error;
  const bool shared = fs::is_directory(kSharedMachineHome, error) &&
                      faccessat(AT_FDCWD, kSharedMachineHome, R_OK | X_OK, AT_EACCESS) == 0;
  return shared ? kSharedMachineHome : StoreHome();
}

fs::path DocumentsPath() {
  if (const fs::path documents = Variable("XDG_DOCUMENTS_DIR"); documents.is_absolute()) return documents;
  const fs::path documents = UserHome() / "Documents";
  std::error_code error;
  if (!HasNamedHome() && fs::is_directory(documents, error)) return documents;
  return UserPath(".settings");
}

fs::path DriverDirectoryPath() {
  return MachineHome() / kDriverFolder / "";
}

fs::path WorkingRecordPath(const std::string& printer) {
  const fs::path folder = UserPath(".records");
  platform::Queue queue;
  const bool found = platform::FindQueue(platform::FromUtf8(printer), &queue) == platform::kErrorSuccess;
  const std::string stem = FileNameOf(found ? platform::ToUtf8(queue.name) : printer);
  const std::string identity = platform::ToUtf8(queue.identity);
  fs::path path = folder / (stem + (identity.empty() ? "" : '.' + identity) + kRecordSuffix);
  SweepUnfinishedOnce(folder);
  if (found) SweepRecords(path, stem, queue);
  return path;
}

StoreOptions OptionsFromEnvironment() {
  StoreOptions options;
  options.home = StoreHome();
  options.machine_home = MachineHome();
  options.documents = DocumentsPath();
  options.user = UserFromEnvironment();
  options.country = CountryFromEnvironment();
  options.process = ProcessFromEnvironment();
  options.code_page = CodePageFromEnvironment();
  return options;
}

}  // namespace heron::store

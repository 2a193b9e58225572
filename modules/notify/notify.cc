// The notification module: keeps a log of the jobs that a user sent, one line a job.
//
// Loaded by the driver from its directory, called once a job with the job's identifier and the printer's name. Nothing
// secret comes here, and nothing else is written.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <new>
#include <string>
#include <string_view>

#include "platform/api/files.h"
#include "platform/api/profile.h"
#include "platform/api/text.h"

namespace heron::notify {
namespace {

/// In the folder that belongs to the user alone; empty if it can't be had.
std::string LogPath() {
  std::array<char16_t, platform::kMaxPath> folder{};
  const platform::DWORD length = platform::GetSystemDirectoryW(folder.data(), platform::kMaxPath);
  if (length == 0 || length >= folder.size()) return {};
  return platform::ToUtf8({folder.data(), length}) + "/notifications.log";
}

/// The text in UTF-8, without what could make another line or column.
std::string Column(const char* ansi) {
  std::string text = platform::ToUtf8(platform::FromAnsi(ansi));
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, ' ');
  return text;
}

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
  std::array<char, 32> text{};
  if (gmtime_r(&now, &utc) != nullptr) std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc);
  return text.data();
}

/// One write, so that jobs of the same moment don't mix.
bool Append(const std::string& path, const std::string& line) {
  const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool written = write(file, line.data(), line.size()) == static_cast<ssize_t>(line.size());
  return close(file) == 0 && written;
}

}  // namespace
}  // namespace heron::notify

extern "C" {

/// Texts in the system's code page. 1 if the pair was logged, else 0.
__attribute__((visibility("default"))) int BdcSetNotifyPrint(const char* job_id, const char* printer_name) {
  using namespace heron::notify;
  if (job_id == nullptr || printer_name == nullptr) return 0;
  try {
    const std::string path = LogPath();
    if (path.empty()) return 0;
    std::string line = Now();
    line.append("\t").append(Column(job_id)).append("\t").append(Column(printer_name)).append("\n");
    return Append(path, line) ? 1 : 0;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}
}

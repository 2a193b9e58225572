// `heron fax`: recipients, cover sheet and phone book of the faxes that a printer sends.

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "fax_commands.h"
#include "platform/sqlite/store.h"

namespace heron::cli {

void AddFaxCommands(CLI::App& app) {
  CLI::App* group = AddCommand(app, "fax", "Manage recipients, cover sheet and phone book of faxes");
  group->require_subcommand(1);
  AddRecipientCommands(*group);
  AddCoverCommands(*group);
  AddPhoneBookCommands(*group);
}

std::string ReadTextFile(const std::string& path, size_t limit) {
  std::vector<uint8_t> bytes;
  if (path == "-") {
    bytes.resize(limit + 1);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stdin));
    if (bytes.size() > limit)
      throw Failure(kFailed, "standard input is longer than " + std::to_string(limit) + " bytes");
  } else if (const int failed = store::ReadFileBytes(path, limit, &bytes); failed != 0) {
    throw Failure(failed == ENOENT   ? kNotFound
                  : failed == EACCES ? kNotPermitted
                                     : kFailed,
                  "can't read \"" + Printable(path) + "\": " + std::strerror(failed));
  }
  const std::string text(bytes.begin(), bytes.end());
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

}  // namespace heron::cli

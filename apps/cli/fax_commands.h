// The groups below `heron fax`.
#pragma once

#include <string>

#include "common/command.h"
#include "pages/recipient_list.h"

namespace heron::cli {

/// Each adds its group of subcommands to `fax`.
void AddRecipientCommands(CLI::App& fax);
void AddCoverCommands(CLI::App& fax);
void AddPhoneBookCommands(CLI::App& fax);

/// A recipient of `NUMBER[=NAME]` for a single job.
pages::NewRecipient ParseRecipient(const std::string& text);
/// Adds a recipient; throws exit code 2 for a number that none can be, 4 for a full list, a repeated number and a text
/// that the system's code page can't hold in 44 bytes.
void AddOrThrow(RecipientTable& table, const pages::NewRecipient& recipient);

/// A UTF-8 text file of at most `limit` bytes ("-": standard input), without its byte order mark.
std::string ReadTextFile(const std::string& path, size_t limit);

}  // namespace heron::cli

// Finds the command that a command line names, and formats its --help.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace heron::cli {

struct CommandLine {
  CLI::App* command;               ///< the innermost command that the words name
  std::vector<std::string> words;  ///< for the parser: `help COMMAND` has become `COMMAND --help`
};

/// Takes the words apart as far as they name commands. Throws a Failure (kUsage) for a command that doesn't exist,
/// naming the nearest, and for a group of commands of which none is named, with or without --help behind it.
CommandLine ReadCommandLine(CLI::App& app, std::vector<std::string> words);

/// "heron library save"
std::string CommandPath(const CLI::App& command);

/// What --help says, at most 80 columns wide: usage, arguments, options or commands, examples.
std::string HelpOf(const CLI::App& command);

/// "did you mean ...? " for an option that the parser didn't expect, or the empty text.
std::string NearestOption(const CLI::App& command);

}  // namespace heron::cli

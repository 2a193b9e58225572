// Splits a command line into commands and words (command_line.h).

#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "command.h"

namespace heron::cli {
namespace {

std::vector<CLI::App*> CommandsOf(CLI::App& app) {
  return app.get_subcommands([](CLI::App*) { return true; });
}

std::vector<std::string> NamesOf(const std::vector<CLI::App*>& commands) {
  std::vector<std::string> names;
  for (const CLI::App* command : commands) names.push_back(command->get_name());
  return names;
}

std::string HowToAsk(const CLI::App& group) {
  return "`" + CommandPath(group) + " --help` lists them";
}

[[noreturn]] void FailUnknownCommand(CLI::App& group, const std::string& word) {
  const std::string hint = DidYouMean(word, NamesOf(CommandsOf(group)));
  throw Failure(kUsage, "`" + CommandPath(group) + "` has no command \"" + Printable(word) + "\"; " +
                            (hint.empty() ? "" : hint + " ") + HowToAsk(group));
}

[[noreturn]] void FailNoCommand(CLI::App& group) {
  std::string names;
  for (const std::string& name : NamesOf(CommandsOf(group))) names += (names.empty() ? "" : ", ") + name;
  throw Failure(kUsage, "`" + CommandPath(group) + "` needs a command: " + names + "; " + HowToAsk(group));
}

CLI::App* Named(const std::vector<CLI::App*>& commands, const std::string& name) {
  const auto found = std::ranges::find(commands, name, [](const CLI::App* command) { return command->get_name(); });
  return found == commands.end() ? nullptr : *found;
}

}  // namespace

CommandLine ReadCommandLine(CLI::App& app, std::vector<std::string> words) {
  CLI::App* command = &app;
  bool help = false;
  bool flags = false;
  size_t at = 0;
  // The parser's own handling of commands reports unknown words as extra arguments; here the nearest command is named.
  for (std::vector<CLI::App*> commands = CommandsOf(app); !commands.empty(); commands = CommandsOf(*command)) {
    if (at == words.size()) {
      if (!help && !flags) FailNoCommand(*command);
      break;
    }
    const std::string word = words[at];
    if (word == "help" && !help) {
      help = true;
      words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
    } else if (word.starts_with('-')) {
      // A group takes flags alone, so no word behind one is its value.
      if (command->get_option_no_throw(word) == nullptr)
        throw Failure(kUsage,
                      "`" + CommandPath(*command) + "` has no option " + Printable(word) + "; " + HowToAsk(*command));
      flags = true;
      ++at;
    } else {
      CLI::App* const next = Named(commands, word);
      if (next == nullptr) FailUnknownCommand(*command, word);
      command = next;
      ++at;
    }
  }
  if (help) words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), "--help");
  return {command, std::move(words)};
}

std::string CommandPath(const CLI::App& command) {
  const CLI::App* const parent = command.get_parent();
  return (parent == nullptr ? "" : CommandPath(*parent) + ' ') + command.get_name();
}

std::string NearestOption(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  for (const std::string& word : command.remaining()) {
    const std::string hint = word.starts_with("--") ? DidYouMean(word, names) : "";
    if (!hint.empty()) return hint + ' ';
  }
  return {};
}

}  // namespace heron::cli

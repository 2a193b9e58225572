// The program `heron`: one tool with subcommands. Each group of commands has its own file; this one runs them and turns
// whatever ends a command into an exit code.

#include <CLI/CLI.hpp>
#include <iostream>
#include <new>

#include "command.h"
#include "store/store.h"

namespace {

using heron::cli::kDone;
using heron::cli::kFailed;
using heron::cli::kUsage;

int Complain(const std::string& sentence, int code) {
  std::cerr << "heron: " << sentence << '\n';
  return code;
}

/// Parses the command line, which runs the command that it names.
int Run(int argc, char** argv) {
  CLI::App app("Settings of the printer driver: queues, records, capabilities and what the model offers.", "heron");
  app.set_help_flag("-h,--help", "Tell how the program is used");
  app.set_version_flag("--version", "heron " HERON_VERSION, "Tell the version");
  app.require_subcommand(1);
  heron::cli::AddPrinterCommands(app);
  heron::cli::AddRecordCommands(app);
  heron::cli::AddCapabilitiesCommand(app);
  heron::cli::AddCatalogCommand(app);
  heron::cli::AddSettingsCommand(app);
  heron::cli::AddControlsCommand(app);
  heron::cli::AddLibraryCommands(app);
  try {
    app.parse(argc, argv);
    return kDone;
  } catch (const CLI::Success& help) {
    return app.exit(help, std::cout, std::cerr);
  } catch (const CLI::ParseError& error) {
    return Complain(std::string(error.what()) + "; `heron --help`, or --help behind a command, tells how it is used",
                    kUsage);
  } catch (const heron::cli::Failure& failure) {
    return Complain(failure.what(), failure.code());
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  int code = kFailed;
  try {
    code = Run(argc, argv);
  } catch (const std::bad_alloc&) {
    code = Complain("there isn't enough memory", kFailed);
  } catch (const std::exception& error) {
    code = Complain(error.what(), kFailed);
  }
  for (const std::string& notice : heron::store::TakeNotices()) std::cerr << "heron: " << notice << '\n';
  std::cout.flush();
  if (!std::cout && code == kDone) code = Complain("the answer couldn't be written to standard output", kFailed);
  return code;
}

// The program `heron`: one tool with subcommands. Each group of commands has its own file; this one joins them.

#include <CLI/CLI.hpp>
#include <iostream>

#include "command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
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
  heron::cli::AddSheetCommand(app);
  heron::cli::AddLibraryCommands(app);
  heron::cli::AddPrintCommand(app);
  return heron::cli::RunApp(app, argc, argv);
}

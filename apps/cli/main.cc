// The program `heron`: one tool with subcommands. Each group of commands has its own file; this one joins them.

#include <CLI/CLI.hpp>
#include <iostream>

#include "common/command.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  CLI::App app("Sets up printers, changes their settings, and prints into a folder.", "heron");
  app.set_help_flag("-h,--help", "Show how the program is used");
  app.set_version_flag("--version", "heron " HERON_VERSION, "Show the version");
  // The order in which the help shows them: what most people need comes first.
  heron::cli::AddPrinterCommands(app);
  heron::cli::AddSettingsCommand(app);
  heron::cli::AddDeviceCommands(app);
  heron::cli::AddSheetCommand(app);
  heron::cli::AddLibraryCommands(app);
  heron::cli::AddSummaryCommand(app);
  heron::cli::AddPagesCommands(app);
  heron::cli::AddFontsCommands(app);
  heron::cli::AddWatermarkCommands(app);
  heron::cli::AddFormCommands(app);
  heron::cli::AddPrintCommand(app);
  heron::cli::AddFaxCommands(app);
  heron::cli::AddPictureCommand(app);
  heron::cli::AddControlsCommand(app);
  heron::cli::AddCatalogCommand(app);
  heron::cli::AddCapabilitiesCommand(app);
  heron::cli::AddRecordCommands(app);
  return heron::cli::RunApp(app, argc, argv);
}

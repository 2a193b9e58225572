// `heron fax`: recipients and cover sheet of the faxes that a printer sends.

#include <CLI/CLI.hpp>

#include "fax_commands.h"

namespace heron::cli {

void AddFaxCommands(CLI::App& app) {
  CLI::App* group = AddCommand(app, "fax", "Manage recipients and cover sheet of faxes");
  group->require_subcommand(1);
  AddRecipientCommands(*group);
  AddCoverCommands(*group);
}

}  // namespace heron::cli

// `heron sheet`: the settings in windows.
//
// The windows are the program heron-sheet beside this one, so that no other command waits for Qt to load.

#include <CLI/CLI.hpp>
#include <memory>

#include "common/command.h"

namespace heron::cli {
namespace {

struct SheetOptions {
  std::string printer;
  std::string in;
  std::string out;
  bool device = false;
};

void ShowSheet(const SheetOptions& options) {
  if (options.device && (!options.in.empty() || !options.out.empty())) {
    throw Failure(kUsage, "--device works on the printer's saved record; leave --in and --out out");
  }
  std::vector<std::string> words = {"--printer=" + options.printer};
  if (!options.in.empty()) words.push_back("--in=" + options.in);
  if (!options.out.empty()) words.push_back("--out=" + options.out);
  if (options.device) words.emplace_back("--device");
  BecomeProgram("heron-sheet", std::move(words));
}

}  // namespace

void AddSheetCommand(CLI::App& app) {
  const auto options = std::make_shared<SheetOptions>();
  CLI::App* command = AddCommand(app, "sheet", "Show the settings of a job or a printer in windows");
  command->add_option("-p,--printer", options->printer, "Printer whose settings to use")->required();
  command->add_flag("--device", options->device, "Show what is installed in the printer instead of a job's settings");
  command->add_option("--in", options->in,
                      "Record to start from instead of your own for this printer (- for standard input)");
  command->add_option("--out", options->out,
                      "File for the record after OK, instead of keeping it (- for standard output)");
  command->callback([options] { ShowSheet(*options); });
}

}  // namespace heron::cli

// `heron picture`: the pictures that the sheet shows of a job's settings, as a file or as what they are made of.
//
// Drawing is the program heron-picture beside this one, so that no other command waits for Qt to load.

#include <CLI/CLI.hpp>
#include <memory>

#include "picture_session.h"

namespace heron::cli {
namespace {

void ShowPicture(const PictureOptions& options) {
  if (options.NeedsDrawing()) BecomeProgram("heron-picture", options.Words());
  if (!options.json) throw Failure(kUsage, "name a file for the picture with --out, or use --json to list its parts");
  PictureSession session(options);
  PrintJson("picture", session.Answer());
}

}  // namespace

void AddPictureCommand(CLI::App& app) {
  const auto options = std::make_shared<PictureOptions>();
  CLI::App* command = AddCommand(app, "picture", "Draw the sheet, the machine, the status panel or the quality sample");
  options->AddTo(*command);
  command->callback([options] { ShowPicture(*options); });
}

}  // namespace heron::cli

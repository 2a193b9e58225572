// The program `heron-spool`: prints one document with a record. `heron print` runs it.

#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>

#include "common/command.h"
#include "common/page_states.h"
#include "common/record_file.h"
#include "interrupt.h"
#include "print_job.h"
#include "progress.h"

namespace heron::spool {
namespace {

struct Options {
  PrintRequest request;
  std::string record;
  std::string recipients;
  int path = cli::kPageStates.at("compact");
  bool yes = false;
  bool no = false;
  bool json = false;
};

void Answer(const Options& options, const PrintedJob& printed) {
  const std::string folder = cli::Printable(options.request.folder);
  if (printed.refused > 0) {
    std::cerr << "heron: the printing half refused " << printed.refused
              << " escapes of the driver; job.json gives the reasons\n";
  }
  if (printed.lacksForm)
    std::cerr << "heron: the form that the settings name isn't there or is empty; printed without it\n";
  if (!printed.overlay.empty() && !printed.merged && printed.form.empty()) {
    std::cerr << "heron: the form was made by another printing half and isn't merged into the pages; it is kept beside "
                 "them, in "
              << printed.overlay << '\n';
  }
  if (options.json) {
    return cli::PrintJson("print",
                          {{"folder", options.request.folder},
                           {"pages", printed.pages},
                           {"jobId", printed.id},
                           {"refused", printed.refused},
                           {"fax", printed.fax.empty() ? cli::Json(nullptr) : cli::Json(printed.fax)},
                           {"overlay", printed.overlay.empty() ? cli::Json(nullptr) : cli::Json(printed.overlay)},
                           {"merged", printed.merged},
                           {"form", printed.form.empty() ? cli::Json(nullptr) : cli::Json(printed.form)}});
  }
  if (!printed.form.empty()) {
    std::cout << "Made the form " << cli::Printable(printed.form) << " of the first page, and nothing was printed; "
              << folder << " has the ticket, job.json\n";
    return;
  }
  std::cout << "Printed " << printed.pages << (printed.pages == 1 ? " page" : " pages") << " to " << folder
            << (printed.fax.empty() ? ": pages.pdf, job.json\n" : ": pages.pdf, fax.tif, job.json\n");
}

/// Exactly the bytes of a block; its count is bounded.
AddressBlock ReadRecipients(const std::string& path) {
  AddressBlock block{};
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  const bool whole =
      file != nullptr && std::fread(&block, sizeof block, 1, file.get()) == 1 && std::fgetc(file.get()) == EOF;
  if (!whole || block.count > kRecipientCount)
    throw cli::Failure(cli::kFailed, '"' + cli::Printable(path) + "\" isn't a list of recipients");
  return block;
}

void Run(Options& options) {
  umask(077);  // a job may hold confidential pages and settings
  CatchInterrupts();
  options.request.record = cli::ReadRecord(options.record);
  if (!options.recipients.empty()) options.request.recipients = ReadRecipients(options.recipients);
  options.request.path = static_cast<renderdriver::DrawPath>(options.path);
  Progress progress;
  const TerminalDesk desk(options.yes  ? cli::Consent::kYes
                          : options.no ? cli::Consent::kNo
                                       : cli::Consent::kAsk,
                          progress);
  const PrintedJob printed = Print(options.request, desk, progress);
  progress.Clear();
  Answer(options, printed);
}

void AddOptions(CLI::App& app, Options& options) {
  app.set_help_flag("-h,--help", "Show how the program is used");
  app.set_version_flag("--version", "heron-spool " HERON_VERSION, "Show the version");
  app.add_option("-p,--printer", options.request.printer, "Printer to print on")->required();
  app.add_option("--record", options.record, "The job's record (- for standard input)")->required();
  app.add_option("--recipients", options.recipients,
                 "The recipients of a fax, in place of those that the record names");
  app.add_option("--out", options.request.folder, "Folder that receives the job")->required();
  app.add_option(
         "--path", options.path,
         "Page state of the printing half, compact or full (488 or 556 bytes); watermarks are drawn differently")
      ->transform(CLI::CheckedTransformer(cli::kPageStates));
  CLI::Option* yes = app.add_flag("--yes", options.yes, "Answer all questions with yes");
  app.add_flag("--no", options.no, "Answer all questions with no")->excludes(yes);
  app.add_flag("--json", options.json, "Answer as JSON");
  app.add_option("document", options.request.document, "Document to print (- for standard input)")->required();
}

int RunMain(int argc, char** argv) {
  CLI::App app("Prints a document with a settings record; `heron print` runs it.", "heron-spool");
  Options options;
  AddOptions(app, options);
  return cli::RunApp(app, argc, argv, [&] { Run(options); });
}

}  // namespace
}  // namespace heron::spool

int main(int argc, char** argv) {
  // Qt's messages about the missing display don't help the user.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  // Fonts and pictures need an application object, but no display.
  char name[] = "heron-spool";
  char platform[] = "-platform";
  char offscreen[] = "offscreen";
  char* qt_arguments[] = {name, platform, offscreen, nullptr};
  int qt_count = 3;
  const QGuiApplication application(qt_count, qt_arguments);
  return heron::spool::RunMain(argc, argv);
}

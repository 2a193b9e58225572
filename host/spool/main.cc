// The program `heron-spool`: prints one document with a record. `heron print` runs it.

#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <csignal>
#include <iostream>
#include <new>

#include "cli/command.h"
#include "cli/record_file.h"
#include "spool/print_job.h"

namespace heron::spool {
namespace {

struct Options {
  PrintRequest request;
  std::string record;
  int path = 488;
  bool yes = false;
  bool no = false;
  bool json = false;
};

void Answer(const Options& options, const PrintedJob& printed) {
  const std::string folder = cli::Printable(options.request.folder);
  if (printed.refused > 0) {
    std::cerr << "heron: the printing side refused " << printed.refused
              << " escapes of the driver; job.json tells why\n";
  }
  if (!printed.overlay.empty())
    std::cerr << "heron: the form is kept beside the pages, in " << printed.overlay << "; it isn't merged into them\n";
  if (options.json) {
    return cli::PrintJson("print",
                          {{"folder", options.request.folder},
                           {"pages", printed.pages},
                           {"jobId", printed.id},
                           {"refused", printed.refused},
                           {"overlay", printed.overlay.empty() ? cli::Json(nullptr) : cli::Json(printed.overlay)}});
  }
  std::cout << "Printed " << printed.pages << (printed.pages == 1 ? " page" : " pages") << " to " << folder
            << ": pages.pdf, job.json\n";
}

void CatchInterrupts() {
  struct sigaction action {};
  action.sa_handler = [](int) { Interrupt(); };  // without SA_RESTART, so that a question ends too
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

void Run(Options& options) {
  umask(077);
  CatchInterrupts();
  options.request.record = cli::ReadRecord(options.record);
  options.request.path = static_cast<renderdriver::DrawPath>(options.path);
  const TerminalDesk desk(options.yes ? cli::Consent::kYes : options.no ? cli::Consent::kNo : cli::Consent::kAsk);
  Answer(options, Print(options.request, desk));
}

void AddOptions(CLI::App& app, Options& options) {
  app.set_help_flag("-h,--help", "Tell how the program is used");
  app.set_version_flag("--version", "heron-spool " HERON_VERSION, "Tell the version");
  app.add_option("-p,--printer", options.request.printer, "Printer whose driver is called")->required();
  app.add_option("--record", options.record, "The job's record (- for standard input)")->required();
  app.add_option("--out", options.request.folder, "Folder that receives the job")->required();
  app.add_option("--path", options.path, "The printing side's way of drawing: 488 or 556")
      ->check(CLI::IsMember({488, 556}));
  CLI::Option* yes = app.add_flag("--yes", options.yes, "Agree to everything that is asked");
  app.add_flag("--no", options.no, "Agree to nothing")->excludes(yes);
  app.add_flag("--json", options.json, "Answer as JSON");
  app.add_option("document", options.request.document, "What to print (- for standard input)")->required();
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
  // What Qt has to say of its surroundings is of no use to who prints.
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

// The program `heron-sheet`: a queue's settings in windows. `heron sheet` runs it.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QElapsedTimer>
#include <cstdlib>
#include <iostream>
#include <optional>

#include "common/address_file.h"
#include "common/command.h"
#include "common/record_file.h"
#include "desk.h"
#include "entry/exports.h"
#include "message_window.h"
#include "platform/api/handles.h"
#include "property_sheet.h"

namespace heron::desk {
namespace {

using cli::Bytes;
using cli::Failure;

constexpr char kNoDisplay[] =
    "there is no display to show the settings on; `heron settings` shows and changes them here";

struct Options {
  std::string printer;
  std::string in;
  std::string out;
  bool device = false;
  bool measure = false;
};

bool MayHaveDisplay() {
  const auto set = [](const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
  };
  return set("DISPLAY") || set("WAYLAND_DISPLAY") || set("QT_QPA_PLATFORM");
}

/// A display that is named but can't be used ends Qt, and so the program.
void HandleMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg) {
    std::cerr << "heron: " << kNoDisplay << '\n';
    _exit(cli::kFailed);
  }
  if (type == QtCriticalMsg) std::cerr << "heron: " << text.toStdString() << '\n';
}

/// Full path of the resource module: it lies beside the driver's data file.
std::u16string ResourceModule(platform::HANDLE printer) {
  DWORD needed = 0;
  platform::GetPrinterDriverW(printer, nullptr, 2, nullptr, 0, &needed);
  Bytes buffer(needed);
  if (needed == 0 || platform::GetPrinterDriverW(printer, nullptr, 2, buffer.data(), needed, &needed) == 0) {
    cli::FailWith(platform::GetLastError(), "find the printer's driver");
  }
  const auto* const driver = reinterpret_cast<const platform::DRIVER_INFO_2W*>(buffer.data());
  const std::u16string file = driver->pDataFile == nullptr ? u"" : driver->pDataFile;
  return file.substr(0, file.rfind(platform::kPathSeparator) + 1) + u"TVOR6T1.DLL";
}

SheetEnd Show(SheetRequest request, const Options& options) {
  QElapsedTimer since;
  since.start();
  request.opened = [&](PropertySheet& sheet) {
    if (!options.measure) return;
    sheet.painted = [&] {
      std::cout << "First paint " << since.elapsed() << " ms after the driver was called\n";
      sheet.reject();
    };
  };
  return RunSheet(request);
}

void Finish(SheetEnd end) {
  if (end == SheetEnd::kRefused) {
    throw Failure(cli::kFailed,
                  "the driver can't open or keep its settings: the store can't be used now, or files are missing");
  }
  if (end == SheetEnd::kCancelled) throw Failure(cli::kConsent, "cancelled; nothing was changed");
}

void ShowDevice(cli::Printer& printer, const Options& options) {
  const bool may_write = platform::OpenPrinterFor(printer.name(), platform::PRINTER_ALL_ACCESS) != nullptr;
  platform::DEVICEPROPERTYHEADER header{.cbSize = sizeof(header),
                                        .Flags = may_write ? platform::WORD{0} : platform::DPS_NOPERMISSION,
                                        .hPrinter = printer.handle(),
                                        .pszPrinterName = printer.name()};
  Finish(Show({DrvDevicePropertySheets, &header, ResourceModule(printer.handle())}, options));
}

/// Modes of the sheet: an application's settings for a document, and a person's own for a printer, which alone may
/// change what belongs to the printer (custom sizes).
constexpr DWORD kDocumentMode = platform::DM_COPY | platform::DM_PROMPT | platform::DM_MODIFY;
constexpr DWORD kOwnMode = kDocumentMode | 64;

/// Another program has changed the record while the window was open.
bool AsksToReplace() {
  MessageWindow question(
      nullptr, QStringLiteral("Printer settings"),
      QStringLiteral("Another program has changed your settings of this printer while the window was "
                     "open.\n\nDo you want to replace them with what the window showed?"),
      platform::MB_YESNO | platform::MB_ICONEXCLAMATION | platform::MB_DEFBUTTON2);
  return question.Run() == platform::IDYES;
}

void ShowDocument(cli::Printer& printer, const Options& options) {
  Bytes in = options.in.empty() ? cli::OwnRecord(options.printer) : cli::ReadRecord(options.in);
  Bytes out(static_cast<size_t>(DrvDocumentProperties(nullptr, printer.handle(), nullptr, nullptr, nullptr, 0)));
  const Bytes read = in;
  // The driver rewrites the recipients' file before the record is compared with the stored one.
  std::optional<cli::SheetRecipients> recipients;
  if (options.in.empty()) recipients.emplace(in);
  const Bytes* const seen = options.in.empty() ? &read : nullptr;
  platform::DOCUMENTPROPERTYHEADER header{
      .cbSize = sizeof(header),
      .Reserved = 0,
      .hPrinter = printer.handle(),
      .pszPrinterName = printer.name(),
      .pdmIn = in.empty() ? nullptr : reinterpret_cast<platform::DEVMODEW*>(in.data()),
      .pdmOut = reinterpret_cast<platform::DEVMODEW*>(out.data()),
      .cbOut = static_cast<DWORD>(out.size()),
      .fMode = options.in.empty() ? kOwnMode : kDocumentMode};
  const auto keep = [&](bool touched) {
    if (!options.out.empty()) return cli::WriteRecord(options.out, out);
    if (!cli::KeepConfirmedRecord(options.printer, seen, out, touched, AsksToReplace))
      throw Failure(cli::kConsent, "What another program has set meanwhile stays.");
    if (recipients) recipients->Kept(cli::OwnRecord(options.printer));
  };
  Finish(Show({DrvDocumentPropertySheets, &header, ResourceModule(printer.handle()), {}, keep}, options));
}

void Run(const Options& options) {
  cli::Printer printer(options.printer);
  if (!MayHaveDisplay()) throw Failure(cli::kFailed, kNoDisplay);
  qInstallMessageHandler(HandleMessage);
  char name[] = "heron-sheet";
  char* arguments[] = {name, nullptr};
  int count = 1;
  const QApplication application(count, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  options.device ? ShowDevice(printer, options) : ShowDocument(printer, options);
}

int RunMain(int argc, char** argv) {
  CLI::App app("Shows a queue's settings in windows; `heron sheet` runs it.", "heron-sheet");
  Options options;
  app.set_help_flag("-h,--help", "Show how the program is used");
  app.set_version_flag("--version", "heron-sheet " HERON_VERSION, "Show the version");
  app.add_option("-p,--printer", options.printer, "Printer whose settings to use")->required();
  app.add_flag("--device", options.device, "Show what is installed in the printer instead of a job's settings");
  app.add_option("--in", options.in, "Record to start from instead of your own (- for standard input)");
  app.add_option("--out", options.out, "File for the record after OK (- for standard output)");
  app.add_flag("--measure", options.measure, "Close at the first paint and print how long it took");
  return cli::RunApp(app, argc, argv, [&] { Run(options); });
}

}  // namespace
}  // namespace heron::desk

int main(int argc, char** argv) {
  return heron::desk::RunMain(argc, argv);
}

// `heron printer`: adds, lists, shows and removes the queues of the store.
//
// Adding a queue installs the driver's files, writes the queue and tells the driver of it, which saves the queue's
// first record.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "command.h"
#include "entry/exports.h"
#include "platform/profile.h"
#include "platform/queues.h"
#include "platform/spooler.h"
#include "platform/text.h"
#include "record_file.h"
#include "store/store.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;
using platform::DWORD;
using platform::FromUtf8;

constexpr const char* kDriverName = "Varnell 70/36MX-2 PCL";
constexpr const char* kDataFile = "TVOR6T1.DLL";  ///< any file of the driver directory names that directory

struct PrinterOptions {
  std::string name;
  std::string server;
  std::string port = "FILE:";
  std::string driver = kDriverName;
  std::string data_file;
  std::string dev_mode;
  bool replace = false;
  bool json = false;
};

std::vector<uint8_t> ReadWhole(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file)
    throw Failure(kFailed, "can't read the driver's file \"" + path.string() + "\"; install the program again");
  return bytes;
}

[[noreturn]] void FailFolder(const fs::path& folder, const std::error_code& error) {
  const bool denied = error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
                      error == std::errc::read_only_file_system;
  throw Failure(denied ? kNotPermitted : kFailed,
                "can't use the driver directory \"" + folder.string() + "\": " + error.message());
}

/// Whether the file holds these bytes.
bool Holds(const fs::path& path, const std::vector<uint8_t>& bytes) {
  std::error_code error;
  return fs::is_regular_file(path, error) && fs::file_size(path, error) == bytes.size() && ReadWhole(path) == bytes;
}

/// UTF-8 in the system's code page, in which settings files are read.
std::vector<uint8_t> InCodePage(const std::vector<uint8_t>& utf8) {
  std::string bytes;
  platform::AppendAnsi(FromUtf8({reinterpret_cast<const char*>(utf8.data()), utf8.size()}), &bytes);
  return {bytes.begin(), bytes.end()};
}

/// Copies the driver's files into the store's driver directory, each whole and only if it changed. All users may read
/// them.
void InstallDriverFiles() {
  const fs::path source = ProgramDriverFolder();
  const fs::path target = store::DriverDirectoryPath();
  std::error_code error;
  if (!fs::is_directory(source, error)) {
    throw Failure(
        kFailed, "the driver's files aren't where they belong, in \"" + source.string() + "\"; build or install again");
  }
  fs::create_directories(target, error);
  if (error) FailFolder(target, error);
  for (const fs::directory_entry& entry : fs::directory_iterator(source)) {
    if (!entry.is_regular_file()) continue;
    const fs::path to = target / entry.path().filename();
    std::vector<uint8_t> bytes = ReadWhole(entry.path());
    if (to.extension() == ".vxs") bytes = InCodePage(bytes);
    if (!Holds(to, bytes)) ReplaceFile(to.string(), bytes);
    constexpr fs::perms kForAll = fs::perms::group_read | fs::perms::others_read;
    if ((fs::status(to).permissions() & kForAll) != kForAll) fs::permissions(to, kForAll, fs::perm_options::add, error);
    if (error) FailFolder(target, error);
  }
}

platform::Queue QueueFrom(const PrinterOptions& options) {
  platform::Queue queue;
  queue.name = FromUtf8(options.name);
  queue.server = FromUtf8(options.server);
  queue.port = FromUtf8(options.port);
  queue.driver = FromUtf8(options.driver);
  queue.dataFile = FromUtf8(options.data_file.empty() ? (store::DriverDirectoryPath() / kDataFile).string()
                                                      : fs::absolute(options.data_file).string());
  if (queue.dataFile.size() >= platform::kMaxPath) {
    throw Failure(kFailed,
                  "the data file's path is longer than 259 characters; choose a shorter one, or a shorter HERON_HOME");
  }
  if (!options.dev_mode.empty()) queue.devMode = ReadRecord(options.dev_mode);
  return queue;
}

void Add(const PrinterOptions& options) {
  platform::Queue queue = QueueFrom(options);
  const std::string shown = '"' + Printable(options.name) + '"';
  if (!options.replace && platform::FindQueue(queue.name, nullptr) == platform::kErrorSuccess) {
    throw Failure(kFailed, "there is a printer " + shown + " already; --replace changes it, its saved settings stay");
  }
  InstallDriverFiles();
  if (const DWORD status = platform::AddQueue(queue); status != platform::kErrorSuccess) {
    FailWith(status, "add the printer " + shown);
  }
  if (DrvPrinterEvent(queue.name.data(), platform::PRINTER_EVENT_INITIALIZE, 0, 0) != 1) {
    throw Failure(kFailed, "the printer " + shown +
                               " was added, but the driver couldn't prepare its settings; add it again with --replace");
  }
  if (options.json) return PrintJson("printer.add", {{"name", options.name}});
  std::cout << "Added printer " << shown << '\n';
}

Json QueueJson(const platform::Queue& queue) {
  return {{"name", platform::ToUtf8(queue.name)},         {"server", platform::ToUtf8(queue.server)},
          {"port", platform::ToUtf8(queue.port)},         {"driver", platform::ToUtf8(queue.driver)},
          {"dataFile", platform::ToUtf8(queue.dataFile)}, {"devModeSize", queue.devMode.size()}};
}

void List(const PrinterOptions& options) {
  std::vector<std::u16string> names;
  if (const DWORD status = platform::ListQueues(&names); status != platform::kErrorSuccess) {
    FailWith(status, "list the printers");
  }
  Json rows = Json::array();
  for (const std::u16string& name : names) {
    platform::Queue queue;
    if (platform::FindQueue(name, &queue) != platform::kErrorSuccess) continue;  // removed since
    rows.push_back(QueueJson(queue));
    if (!options.json) std::cout << Printable(name) << '\n';
  }
  if (options.json) PrintJson("printer.list", {{"printers", rows}});
}

/// Size in bytes of a value of printer data, 0 if there is none.
DWORD StoredSize(const Printer& printer, const char16_t* name) {
  DWORD needed = 0;
  const DWORD status = platform::GetPrinterDataW(printer.handle(), name, nullptr, nullptr, 0, &needed);
  return status == platform::kErrorSuccess || status == platform::kErrorMoreData ? needed : 0;
}

Json CountryJson(const Printer& printer) {
  DWORD country = 0, needed = 0;
  const DWORD status = platform::GetPrinterDataW(printer.handle(), u"CountryCode", nullptr,
                                                 reinterpret_cast<uint8_t*>(&country), sizeof country, &needed);
  return status == platform::kErrorSuccess && needed == sizeof country ? Json(country) : Json(nullptr);
}

void Show(const PrinterOptions& options) {
  platform::Queue queue;
  const Printer printer(options.name);
  if (platform::FindQueue(FromUtf8(options.name), &queue) != platform::kErrorSuccess) FailUnknownPrinter(options.name);
  Json answer = QueueJson(queue);
  answer["savedRecordSize"] = StoredSize(printer, u"HERON NT");
  answer["country"] = CountryJson(printer);
  if (options.json) return PrintJson("printer.show", answer);
  const auto line = [](const char* what, const std::string& value) {
    std::cout << "  " << Padded(what, 15) << (value.empty() ? "-" : value) << '\n';
  };
  const auto bytes = [](size_t size) { return size == 0 ? "none" : std::to_string(size) + " bytes"; };
  std::cout << Heading(Printable(queue.name)) << '\n';
  line("Server", Printable(queue.server));
  line("Port", Printable(queue.port));
  line("Driver", Printable(queue.driver));
  line("Data file", Printable(queue.dataFile));
  line("Queue's record", bytes(queue.devMode.size()));
  line("Saved settings", bytes(answer["savedRecordSize"].get<size_t>()));
  line("Country code", answer["country"].is_null() ? "" : answer["country"].dump());
}

void Remove(const PrinterOptions& options) {
  const DWORD status = platform::RemoveQueue(FromUtf8(options.name));
  if (status == platform::kErrorInvalidPrinterName) FailUnknownPrinter(options.name);
  if (status != platform::kErrorSuccess) FailWith(status, "remove the printer \"" + Printable(options.name) + '"');
  if (options.json) return PrintJson("printer.remove", {{"name", options.name}});
  std::cout << "Removed printer \"" << Printable(options.name) << "\"\n";
}

CLI::App* AddQueueCommand(CLI::App& group, const std::string& name, const std::string& description,
                          PrinterOptions& options) {
  CLI::App* command = AddCommand(group, name, description);
  command->add_flag("--json", options.json, "Answer as JSON");
  return command;
}

void AddName(CLI::App& command, PrinterOptions& options) {
  command.add_option("NAME,-p,--printer", options.name, "Name of the printer")->required()->type_name("NAME");
}

}  // namespace

void AddPrinterCommands(CLI::App& app) {
  const auto options = std::make_shared<PrinterOptions>();
  CLI::App* group = AddCommand(app, "printer", "Add, list, show and remove printers");
  group->require_subcommand(1);

  CLI::App* add = AddQueueCommand(*group, "add", "Add a printer to the store", *options);
  AddName(*add, *options);
  add->add_option("--server", options->server, "Server that shares it; a local printer if left out");
  add->add_option("--port", options->port, "Port, FILE: if left out");
  add->add_option("--driver", options->driver, "Name of its driver");
  add->add_option("--data-file", options->data_file, "The driver's data file, whose folder holds the driver's modules")
      ->type_name("FILE");
  add->add_option("--dev-mode", options->dev_mode, "Record that the queue gives to applications, - for standard input")
      ->type_name("FILE");
  add->add_flag("--replace", options->replace, "Change the printer if there is one of this name");
  add->callback([options] { Add(*options); });

  AddQueueCommand(*group, "list", "List the printers", *options)->callback([options] { List(*options); });

  CLI::App* show = AddQueueCommand(*group, "show", "Show what the store knows of a printer", *options);
  AddName(*show, *options);
  show->callback([options] { Show(*options); });

  CLI::App* remove = AddQueueCommand(*group, "remove", "Remove a printer and its saved settings", *options);
  AddName(*remove, *options);
  remove->callback([options] { Remove(*options); });
}

}  // namespace heron::cli

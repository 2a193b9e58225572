// `heron printer`: adds, lists, shows and removes the queues of the store.
//
// Adding a queue installs the driver's files, writes the queue and notifies the driver, which saves the queue's
// first record.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>

#include "common/command.h"
#include "common/record_file.h"
#include "entry/exports.h"
#include "library_session.h"
#include "platform/api/handles.h"
#include "platform/api/profile.h"
#include "platform/api/queues.h"
#include "platform/api/registry.h"
#include "platform/api/spooler.h"
#include "platform/api/text.h"
#include "platform/sqlite/store.h"
#include "printer_device.h"
#include "printer_list.h"
#include "settings/secret_fields.h"
#include "settings/user_tree.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;
using platform::DWORD;
using platform::FromUtf8;

constexpr const char* kDataFile = "TVOR6T1.DLL";  ///< any file of the driver directory names that directory

struct PrinterOptions {
  PrinterRow row;
  std::string from;  ///< a list of printers, instead of `row`
  std::string dev_mode;
  NewDevice device;
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
                "can't use the driver directory \"" + folder.string() + "\": " + error.message() +
                    (denied ? "; ask an administrator, or use a store of your own with HERON_HOME" : ""));
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
  constexpr fs::perms kEnter =
      fs::perms::group_exec | fs::perms::others_exec | fs::perms::group_read | fs::perms::others_read;
  if (!error) fs::permissions(target, kEnter, fs::perm_options::add, error);  // whatever the umask took away
  if (error) FailFolder(target, error);
  for (const fs::directory_entry& entry : fs::directory_iterator(source)) {
    if (!entry.is_regular_file()) continue;
    const fs::path to = target / entry.path().filename();
    std::vector<uint8_t> bytes = ReadWhole(entry.path());
    if (to.extension() == ".vxs") bytes = InCodePage(bytes);
    // Unchanged files aren't replaced: programs that have the module mapped keep sharing it.
    if (!Holds(to, bytes)) ReplaceFile(to.string(), bytes);
    constexpr fs::perms kForAll = fs::perms::group_read | fs::perms::others_read;
    if ((fs::status(to).permissions() & kForAll) != kForAll) fs::permissions(to, kForAll, fs::perm_options::add, error);
    if (error) FailFolder(target, error);
  }
}

/// The data file as the store keeps it: one of the store's own driver directory by its name alone, so that it is found
/// again when the store is moved.
std::u16string DataFileOf(const PrinterRow& row) {
  if (row.data_file.empty()) return FromUtf8(kDataFile);
  const fs::path path = fs::absolute(row.data_file).lexically_normal();
  std::error_code error;
  const bool own = path.parent_path() / "" == store::DriverDirectoryPath() ||
                   fs::equivalent(path.parent_path(), store::DriverDirectoryPath(), error);
  return FromUtf8(own ? path.filename().string() : path.string());
}

platform::Queue QueueFrom(const PrinterRow& row) {
  platform::Queue queue;
  queue.name = FromUtf8(row.name);
  queue.server = FromUtf8(row.server);
  queue.port = FromUtf8(row.port);
  queue.driver = FromUtf8(row.driver);
  queue.dataFile = DataFileOf(row);
  queue.identity = FromUtf8(row.identity);
  const std::u16string folder = FromUtf8(store::DriverDirectoryPath().string());
  if (std::max(queue.dataFile.size(), folder.size() + std::string_view(kDataFile).size()) >= platform::kMaxPath) {
    throw Failure(kFailed,
                  "the data file's path is longer than 259 characters; choose a shorter one, or a shorter HERON_HOME");
  }
  return queue;
}

std::string Quoted(const std::string& name) {
  return '"' + Printable(name) + '"';
}

/// Adds or replaces one queue inside the caller's batch and notifies the driver.
void AddOne(platform::Queue queue, bool replace) {
  const std::string shown = Quoted(platform::ToUtf8(queue.name));
  const bool exists = platform::FindQueue(queue.name, nullptr) == platform::kErrorSuccess;
  const DWORD status = platform::AddQueue(queue, replace ? platform::AddMode::kReplace : platform::AddMode::kNew);
  if (status == platform::kErrorPrinterAlreadyExists)
    throw Failure(kFailed, "there is a printer " + shown + " already; --replace changes it, its saved settings stay");
  if (status != platform::kErrorSuccess) FailWith(status, "add the printer " + shown);
  // A new queue's event saves its first record; of one that is there that would be the second, and the first one lost.
  const int event = exists ? platform::PRINTER_EVENT_ADD_CONNECTION : platform::PRINTER_EVENT_INITIALIZE;
  if (DrvPrinterEvent(queue.name.data(), event, 0, 0) != 1)
    throw Failure(kFailed, "the driver couldn't prepare the settings of the printer " + shown + ", which isn't added");
}

/// Adds all queues or none, with what `prepare` stores for them. The change begins before the driver's files are
/// copied, so that missing rights are known first.
void AddAll(const std::vector<platform::Queue>& queues, bool replace, const std::function<void()>& prepare = {}) {
  const std::string doing =
      queues.size() == 1 ? "add the printer " + Quoted(platform::ToUtf8(queues[0].name)) : "add the printers";
  platform::RegistryBatch batch(platform::HKEY_LOCAL_MACHINE);
  if (!batch.open()) FailStore(doing);
  InstallDriverFiles();
  for (const platform::Queue& queue : queues) AddOne(queue, replace);
  if (prepare) prepare();
  if (!batch.Keep()) FailStore(doing);
}

/// The names of the queues that aren't there yet.
std::vector<std::string> NewNames(const std::vector<platform::Queue>& queues) {
  std::vector<std::string> names;
  for (const platform::Queue& queue : queues) {
    if (platform::FindQueue(queue.name, nullptr) != platform::kErrorSuccess)
      names.push_back(platform::ToUtf8(queue.name));
  }
  return names;
}

/// The same, and the user's settings of new queues begin as he chose.
void AddAndStart(const std::vector<platform::Queue>& queues, bool replace, const std::function<void()>& prepare = {}) {
  const std::vector<std::string> fresh = NewNames(queues);
  AddAll(queues, replace, prepare);
  for (const std::string& name : fresh) StartFromDefault(name);
}

void TellOfHome() {
  if (geteuid() != 0 || store::HasNamedHome() || store::MachineHome() != store::StoreHome()) return;
  std::cerr << "heron: only you see your printers, as there is no folder " << store::kSharedMachineHome
            << "; printers that are added after you make it (mode 755) are for all users\n";
}

void AddList(const PrinterOptions& options) {
  std::vector<platform::Queue> queues;
  Json names = Json::array();
  for (const PrinterRow& row : ReadPrinterList(options.from)) {
    queues.push_back(QueueFrom(row));
    names.push_back(row.name);
  }
  AddAndStart(queues, options.replace);
  if (options.json) return PrintJson("printer.add", {{"names", names}});
  std::cout << "Added " << queues.size() << (queues.size() == 1 ? " printer\n" : " printers\n");
  TellOfHome();
}

void Add(const PrinterOptions& options) {
  if (!options.from.empty()) return AddList(options);
  if (options.row.name.empty()) FailWith(platform::kErrorInvalidPrinterName, "add the printer \"\"");
  platform::Queue queue = QueueFrom(options.row);
  bool held_secrets = false;
  // Secrets are cleared before anything is written: the machine's store is readable by all users.
  if (!options.dev_mode.empty()) {
    queue.devMode = ReadRecord(options.dev_mode);
    held_secrets = ClearSecrets(queue.devMode);
  }
  const AskedNewDevice device = AskNewDevice(options.device);
  AddAndStart({queue}, options.replace, [&] { StoreNewDevice(options.row.name, device); });
  if (held_secrets) {
    std::cerr << "heron: the passwords and identity codes in the record are left out, since all users can read a "
                 "printer's record\n";
  }
  if (options.json) return PrintJson("printer.add", {{"name", options.row.name}});
  std::cout << "Added printer " << Quoted(options.row.name) << '\n';
  TellOfHome();
}

Json QueueJson(const platform::Queue& queue) {
  return {{"name", platform::ToUtf8(queue.name)},         {"server", platform::ToUtf8(queue.server)},
          {"port", platform::ToUtf8(queue.port)},         {"driver", platform::ToUtf8(queue.driver)},
          {"dataFile", platform::ToUtf8(queue.dataFile)}, {"identity", platform::ToUtf8(queue.identity)},
          {"devModeSize", queue.devMode.size()}};
}

void List(const PrinterOptions& options) {
  std::vector<platform::Queue> queues;
  if (const DWORD status = platform::ReadQueues(&queues); status != platform::kErrorSuccess) {
    FailWith(status, "list the printers");
  }
  Json rows = Json::array();
  for (const platform::Queue& queue : queues) {
    if (options.json)
      rows.push_back(QueueJson(queue));
    else
      std::cout << Printable(queue.name) << '\n';
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
  const std::string& name = options.row.name;
  const Printer printer(name, Printer::Needs::kQueueAlone);  // shows also a queue whose driver files are missing
  if (platform::FindQueue(FromUtf8(name), &queue) != platform::kErrorSuccess) FailUnknownPrinter(name);
  Json answer = QueueJson(queue);
  answer["savedRecordSize"] = StoredSize(printer, u"HERON NT");
  answer["country"] = CountryJson(printer);
  answer["directory"] = DirectoryJson(printer);
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
  for (const auto& [value, content] : answer["directory"].items()) line("Published", value + " = " + content.dump());
}

/// The caller's settings are removed at once; those of other users when they next use a queue of this name.
void Remove(const PrinterOptions& options) {
  const std::string& name = options.row.name;
  // Before the removal: the path depends on the queue's identity.
  const fs::path record = store::WorkingRecordPath(name);
  const DWORD status = platform::RemoveQueue(FromUtf8(name));
  if (status == platform::kErrorInvalidPrinterName) FailUnknownPrinter(name);
  if (status != platform::kErrorSuccess) FailWith(status, "remove the printer " + Quoted(name));
  std::error_code ignored;
  fs::remove(record, ignored);
  DeleteUserTree(FromUtf8(name));
  if (options.json) return PrintJson("printer.remove", {{"name", name}});
  std::cout << "Removed printer " << Quoted(name) << '\n';
}

CLI::App* AddQueueCommand(CLI::App& group, const std::string& name, const std::string& description,
                          PrinterOptions& options) {
  CLI::App* command = AddCommand(group, name, description);
  command->add_flag("--json", options.json, "Answer as JSON");
  return command;
}

CLI::Option* AddName(CLI::App& command, PrinterOptions& options) {
  return command.add_option("NAME,-p,--printer", options.row.name, "Name of the printer")->type_name("NAME");
}

}  // namespace

void AddPrinterCommands(CLI::App& app) {
  const auto options = std::make_shared<PrinterOptions>();
  CLI::App* group = AddCommand(app, "printer", "Add, list, show and remove printers");
  group->require_subcommand(1);

  CLI::App* add = AddQueueCommand(*group, "add", "Add a printer to the store", *options);
  PrinterRow& row = options->row;
  CLI::Option* const name = AddName(*add, *options);
  CLI::Option* const of_one[] = {
      name,
      add->add_option("--server", row.server, "Server that shares the printer (default: none, a local printer)"),
      add->add_option("--port", row.port, "Port, FILE: if left out"),
      add->add_option("--driver", row.driver, "Name of its driver"),
      add->add_option("--data-file", row.data_file, "The driver's data file, whose folder holds the driver's modules")
          ->type_name("FILE"),
      add->add_option("--dev-mode", options->dev_mode,
                      "Record that the queue gives to applications, - for standard input; its passwords are left out")
          ->type_name("FILE"),
      add->add_option("--address", options->device.address, "Network address of the device"),
      add->add_flag("--query", options->device.query, "Ask the device which options are installed"),
  };
  CLI::Option* const from =
      add->add_option("--from", options->from, "Add all printers of this list, - for standard input")
          ->type_name("FILE");
  for (CLI::Option* option : of_one) from->excludes(option);
  add->footer(kPrinterListHelp);
  add->add_flag("--replace", options->replace, "Change the printer if there is one of this name");
  add->callback([options, name, from] {
    if (name->count() == 0 && from->count() == 0) throw CLI::RequiredError("NAME or --from");
    Add(*options);
  });

  AddQueueCommand(*group, "list", "List the printers", *options)->callback([options] { List(*options); });

  CLI::App* show = AddQueueCommand(*group, "show", "Show what is stored for a printer", *options);
  AddName(*show, *options)->required();
  show->callback([options] { Show(*options); });

  CLI::App* remove = AddQueueCommand(*group, "remove", "Remove a printer and its saved settings", *options);
  AddName(*remove, *options)->required();
  remove->callback([options] { Remove(*options); });
}

}  // namespace heron::cli

// `heron settings`: a record through the working settings and back, and what every setting is and can be.
//
// Without files the command works on the user's own working record of the printer, which begins as the printer's valid
// default.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "catalog/strings.h"
#include "command.h"
#include "record_file.h"
#include "resolved_record.h"
#include "settings/driver_env.h"
#include "settings_text.h"
#include "store/store.h"
#include "uistate/ui_state.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;

struct SettingsOptions {
  std::string printer;
  std::string in;
  std::string out;
  bool list = false;
  bool reset = false;
  bool json = false;
};

/// Working settings of a printer while a command runs.
class OpenSettings {
 public:
  OpenSettings(Printer& printer, const Bytes& record) : resources_(Open(printer)) {
    std::copy_n(record.begin(), kEnvSize, env_.bytes.begin());
    ui_ = CreateUiState(resources_.get(), env_, printer.handle());
    if (ui_ == nullptr) throw std::bad_alloc();
  }
  ~OpenSettings() { DestroyUiState(ui_); }
  OpenSettings(const OpenSettings&) = delete;
  OpenSettings& operator=(const OpenSettings&) = delete;

  const UiState& ui() const { return *ui_; }
  /// The record that a confirmed sheet would hand back.
  Bytes WriteBack() {
    WriteBackUiState(*ui_, env_, resources_.get());
    return {env_.bytes.begin(), env_.bytes.end()};
  }

 private:
  using Resources = std::unique_ptr<ResourceContext, CloseContext>;
  static Resources Open(Printer& printer) {
    RefreshDriverDirectory(printer.handle());
    Resources resources(OpenResourceContext(ReadLocaleCountry()));
    if (resources == nullptr) throw std::bad_alloc();
    return resources;
  }

  Resources resources_;
  DriverEnv env_;
  UiStatePtr ui_;
};

/// The record to work on: the given file's, the user's own, or none yet.
Bytes InputRecord(const SettingsOptions& options, const fs::path& own) {
  if (options.reset) return {};
  if (!options.in.empty()) return ReadRecord(options.in);
  std::error_code error;
  return fs::exists(own, error) ? ReadRecord(own.string()) : Bytes();
}

/// Where the result goes; only a command that changes something writes the user's own record.
void WriteResult(const SettingsOptions& options, const fs::path& own, const Bytes& record) {
  if (!options.out.empty()) return WriteRecord(options.out, record);
  if (!options.reset) return;
  std::error_code error;
  fs::create_directories(own.parent_path(), error);
  fs::permissions(own.parent_path(), fs::perms::owner_all, error);
  ReplaceFile(own.string(), record);
}

void Settings(const SettingsOptions& options) {
  if (options.reset && !options.in.empty()) throw Failure(kUsage, "--reset starts from the defaults; leave --in out");
  if (options.out == "-" && (options.json || options.list)) {
    throw Failure(kUsage, "the record goes to standard output; leave -l and --json out or name a file");
  }
  Printer printer(options.printer);
  const fs::path own = store::WorkingRecordPath(options.printer);
  OpenSettings open(printer, ResolvedRecord(printer, InputRecord(options, own)));
  const Catalogue catalogue(ReadLocaleCountry());
  const std::vector<Setting> settings = SettingsOf(open.ui(), catalogue);
  const bool writes = !options.out.empty() || options.reset;
  if (writes) WriteResult(options, own, open.WriteBack());
  if (options.json) {
    const std::string place = !options.out.empty() ? options.out : own.string();
    return PrintJson("settings", {{"applied", writes},
                                  {"record", writes ? Json(place) : Json(nullptr)},
                                  {"changes", Json::array()},
                                  {"settings", SettingsJson(settings)}});
  }
  if (options.reset && options.out.empty()) std::cout << "All settings of this printer are at their defaults again.\n";
  if (options.list) return PrintAll(settings);
  if (writes) return;
  const OpenSettings fresh(printer, ResolvedRecord(printer, {}));
  PrintChanged(settings, SettingsOf(fresh.ui(), catalogue));
}

}  // namespace

void AddSettingsCommand(CLI::App& app) {
  const auto options = std::make_shared<SettingsOptions>();
  CLI::App* command = AddCommand(app, "settings", "What a job is set to, and what each setting can be");
  command->add_option("-p,--printer", options->printer, "Printer whose settings are shown")->required();
  command->add_option("--in", options->in,
                      "Record to work on instead of your own of this printer (- for standard input)");
  command->add_option("--out", options->out, "Where the resulting record goes (- for standard output)");
  command->add_flag("-l,--list", options->list, "List every setting with what it can be");
  command->add_flag("--reset", options->reset, "Return your own settings of this printer to the defaults");
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Settings(*options); });
}

}  // namespace heron::cli

// Puts the real backend together (store.h).

#include "platform/sqlite/store.h"

#include <utility>

#include "platform/api/text.h"
#include "platform/sqlite/code_pages.h"
#include "platform/sqlite/machine.h"
#include "platform/sqlite/module_loader.h"
#include "platform/sqlite/posix_files.h"
#include "platform/sqlite/sqlite_trees.h"

namespace heron::store {
namespace {

const std::filesystem::path& MachineHomeOf(const StoreOptions& options) {
  return options.machine_home.empty() ? options.home : options.machine_home;
}

class ProcessOfOptions final : public platform::ProcessInfo {
 public:
  explicit ProcessOfOptions(const StoreOptions& options)
      : process_(options.process), country_(options.country), user_(platform::FromUtf8(options.user)) {}

  std::u16string FileName() override { return process_; }
  std::u16string LocaleCountry() override { return country_; }
  std::u16string UserName() override { return user_; }
  bool LocalTime(platform::SYSTEMTIME* time) override { return ReadLocalTime(time); }
  std::vector<platform::AdapterAddress> Adapters() override { return ReadAdapters("/sys/class/net"); }

 private:
  const std::u16string process_;
  const std::u16string country_;
  const std::u16string user_;
};

}  // namespace

struct StoreBackend::Parts {
  explicit Parts(const StoreOptions& options)
      : trees(MachineHomeOf(options), options.home, options.user, options.busy_limit),
        process(options),
        text(options.code_page),
        files(options.home, MachineHomeOf(options), options.documents),
        table{&trees, &modules, &process, &text, &files} {}

  SqliteTrees trees;
  DlModules modules;
  ProcessOfOptions process;
  IconvCodec text;
  PosixFiles files;
  platform::Backend table;
};

StoreBackend::StoreBackend(StoreOptions options) : parts_(std::make_unique<Parts>(options)) {}

StoreBackend::~StoreBackend() {
  // Tests install several one after another: only the current one takes itself away.
  if (platform::CurrentBackend() == &parts_->table) platform::InstallBackend(nullptr);
}

const platform::Backend& StoreBackend::Interface() const {
  return parts_->table;
}

void StoreBackend::CloseFiles() {
  parts_->trees.CloseFiles();
}

std::unique_ptr<StoreBackend> InstallStoreBackend(StoreOptions options) {
  auto backend = std::make_unique<StoreBackend>(std::move(options));
  platform::InstallBackend(&backend->Interface());
  return backend;
}

std::unique_ptr<StoreBackend> InstallStoreBackend(const std::filesystem::path& home) {
  StoreOptions options = OptionsFromEnvironment();
  options.home = home;
  options.machine_home.clear();
  return InstallStoreBackend(std::move(options));
}

}  // namespace heron::store

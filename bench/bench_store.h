// The real store in a folder of its own, with one queue "P1" and the built resource module, for as long as a benchmark
// runs.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>

#include "catalog/strings.h"
#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/sqlite/store.h"

namespace heron {

class BenchStore {
 public:
  BenchStore() : home_(MakeHome()), backend_(store::InstallStoreBackend(Options(home_))) {
    platform::Queue queue;
    queue.name = u"P1";
    queue.dataFile = std::filesystem::path(HERON_DRIVER_FILES).append("varnell.dat").u16string();
    platform::AddQueue(queue);
    printer_ = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
    RefreshDriverDirectory(printer_.get());
  }
  ~BenchStore() {
    printer_.reset();
    backend_.reset();
    std::filesystem::remove_all(home_);
  }
  BenchStore(const BenchStore&) = delete;
  BenchStore& operator=(const BenchStore&) = delete;

  platform::HANDLE printer() const { return printer_.get(); }
  const std::filesystem::path& home() const { return home_; }

 private:
  static std::filesystem::path MakeHome() {
    std::string name = (std::filesystem::temp_directory_path() / "heron-bench-XXXXXX").string();
    return mkdtemp(name.data()) != nullptr ? name : std::string();
  }
  static store::StoreOptions Options(const std::filesystem::path& home) {
    store::StoreOptions options;
    options.home = home;
    options.user = "bench";
    options.country = u"49";
    options.process = u"/usr/bin/bench";
    return options;
  }

  std::filesystem::path home_;
  std::unique_ptr<store::StoreBackend> backend_;
  platform::UniquePrinter printer_;
};

}  // namespace heron

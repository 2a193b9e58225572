// Fuzzes the reader of settings files: reads any bytes, writes the result, and reads and writes again. The third file
// must equal the second, since a state that was repaired once is written unchanged.
#include <cstdlib>
#include <memory>

#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/memory/memory_backend.h"
#include "presets/preset_file.h"
#include "settings/defaults.h"
#include "uistate/ui_state.h"

namespace heron {
namespace {

struct FuzzStage {
  FuzzStage() {
    platform::Queue queue;
    queue.name = u"P1";
    queue.dataFile = u"/driver/varnell.dat";
    platform::AddQueue(queue);
    printer = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
    RefreshDriverDirectory(printer.get());
    resources.reset(OpenResourceContext(1));
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    ui = CreateUiState(resources.get(), env, printer.get());
  }

  platform::MemoryBackend backend;
  platform::UniquePrinter printer;
  std::unique_ptr<ResourceContext, CloseContext> resources;
  DriverEnv env;
  UiStatePtr ui;
};

std::string Rewrite(FuzzStage& stage, std::string_view bytes) {
  LibraryReadSettings(*stage.ui, platform::Profile(bytes), stage.resources.get());
  platform::Profile file(bytes);
  LibraryWriteSettings(*stage.ui, file);
  return file.Bytes();
}

void ReadHead(std::string_view bytes) {
  const platform::Profile file(bytes);
  DriverIdentity identity;
  ReadDriverIdentity(file, &identity);
  if (ReadLibraryComment(file).size() > kLibraryCommentLength) std::abort();
  ReadLibraryName(file, u"/x/name.vxs");
}

}  // namespace
}  // namespace heron

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static heron::FuzzStage stage;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  heron::ReadHead(bytes);
  const std::string second = heron::Rewrite(stage, heron::Rewrite(stage, bytes));
  if (heron::Rewrite(stage, second) != second) std::abort();
  return 0;
}

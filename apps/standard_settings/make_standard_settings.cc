// Writes the standard settings file: what a queue starts with, as any entry of the settings library is written, and
// marked as the driver's own. Its text is UTF-8; the installation converts it into the system's code page.
//
//   make_standard_settings TVOR6T1.DLL TVOR610.vxs

#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <memory>

#include "catalog/strings.h"
#include "changes/opening.h"
#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/sqlite/store.h"
#include "presets/preset_entry.h"
#include "presets/preset_file.h"
#include "settings/defaults.h"

namespace heron {
namespace {

namespace fs = std::filesystem;

constexpr char16_t kQueue[] = u"Standard";
constexpr std::u16string_view kName = u"Standard settings";
constexpr uint32_t kCountry = 1;

/// A store that is gone afterwards, with one queue whose texts are those of `module`.
class Stage {
 public:
  explicit Stage(const fs::path& module) {
    std::string name = (fs::temp_directory_path() / "heron-standard-XXXXXX").native();
    if (mkdtemp(name.data()) == nullptr) return;
    store::StoreOptions options;
    options.home = home_ = name;
    options.user = "standard";
    options.country = u"1";
    backend_ = store::InstallStoreBackend(std::move(options));
    platform::Queue queue;
    queue.name = kQueue;
    queue.dataFile = module.u16string();
    platform::AddQueue(queue);
    printer_ = platform::OpenPrinterFor(kQueue, platform::PRINTER_ALL_ACCESS);
  }
  ~Stage() {
    printer_.reset();
    backend_.reset();
    std::error_code ignored;
    if (!home_.empty()) fs::remove_all(home_, ignored);
  }
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  platform::HANDLE printer() const { return printer_.get(); }

 private:
  fs::path home_;
  std::unique_ptr<store::StoreBackend> backend_;
  platform::UniquePrinter printer_;
};

/// Bytes of the file; empty if they couldn't be made.
std::string StandardSettings(const fs::path& module) {
  const Stage stage(module);
  if (stage.printer() == nullptr || !RefreshDriverDirectory(stage.printer())) return {};
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(kCountry));
  const StringsInUse strings;
  DriverEnv env;
  BuildDefaultEnv(resources.get(), &env, kQueue, stage.printer());
  const UiStatePtr ui = CreateUiState(resources.get(), env, stage.printer());
  if (ui == nullptr) return {};
  engine::Engine engine(*ui);
  engine::Resolver resolver(engine);
  engine::OpenSettings(resolver, nullptr, engine::OpeningPass::kSkip);  // the output paper as a sheet shows it
  platform::Profile file;
  WriteLibraryName(file, kName);
  WriteLibraryComment(file, {});
  WriteDriverIdentity(file, DriverIdentity());
  WriteFileAttributes(file, kStandardEntry);
  return LibraryWriteSettings(*ui, file) ? file.Bytes() : std::string();
}

}  // namespace
}  // namespace heron

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "make_standard_settings: give the resource module and the file to write\n";
    return 2;
  }
  const std::string bytes = heron::StandardSettings(std::filesystem::absolute(argv[1]));
  const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
  if (!bytes.empty() && heron::store::ReplaceFileBytes(argv[2], {data, bytes.size()}) == 0) {
    using std::filesystem::perms;  // a part of the program, which everybody may read
    std::error_code error;
    std::filesystem::permissions(argv[2], perms::group_read | perms::others_read, std::filesystem::perm_options::add,
                                 error);
    if (!error) return 0;
  }
  std::cerr << "make_standard_settings: can't write " << argv[2] << '\n';
  return 1;
}

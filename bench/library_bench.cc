// Settings files in memory: what reading, writing and copying cost without the disk, and a whole file with it.
// Wanted: a full file read in under 400 us and written in under 500 us, a typical one of 800 keys read in under 120 us,
// a library of 25 entries opened with their settings in under 40 ms.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench_store.h"
#include "bench_view.h"
#include "catalog/catalog.h"
#include "presets/preset_file.h"
#include "presets/preset_library.h"
#include "settings/defaults.h"
#include "uistate/ui_state.h"

namespace heron {
namespace {

struct LibraryStage {
  /// Lists with `pages` pages each, `forms` forms and `marks` watermarks.
  explicit LibraryStage(uint16_t pages, uint16_t forms, uint16_t marks) {
    BuildDefaultEnv(resources.get(), &env, u"P1", store.printer());
    ui = CreateUiState(resources.get(), env, store.printer());
    for (PageList& list : ui->stores.pageLists->lists) {
      list.pageCount = pages;
      for (PageEntry& page : list.pages) {
        std::copy_n(u"1-3,7", 6, page.page);
        std::copy_n(u"宋体", 3, page.tabTextFontName);
      }
    }
    ui->stores.overlays->formListNum = forms;
    for (auto& form : ui->stores.overlays->forms) std::copy_n(u"form.vxf", 9, form);
    ui->stores.watermarks->wMarkListNum = marks;
    platform::Profile file;
    LibraryWriteSettings(*ui, file);
    bytes = file.Bytes();
  }
  explicit LibraryStage(bool full) : LibraryStage(full ? 30 : 1, full ? 100 : 5, full ? 51 : 12) {}

  void Count(benchmark::State& state) const {
    state.counters["keys"] = static_cast<double>(std::ranges::count(bytes, '='));
    state.counters["bytes"] = static_cast<double>(bytes.size());
  }

  BenchStore store;
  std::unique_ptr<ResourceContext, CloseContext> resources{OpenResourceContext(49)};
  DriverEnv env;
  UiStatePtr ui;
  std::string bytes;
};

void BM_ReadSettings(benchmark::State& state) {
  LibraryStage stage(state.range(0) != 0);
  for ([[maybe_unused]] auto step : state) {
    const platform::Profile file(stage.bytes);
    LibraryReadSettings(*stage.ui, file, stage.resources.get());
  }
  stage.Count(state);
}
BENCHMARK(BM_ReadSettings)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void BM_WriteSettings(benchmark::State& state) {
  LibraryStage stage(state.range(0) != 0);
  for ([[maybe_unused]] auto step : state) {
    platform::Profile file;
    LibraryWriteSettings(*stage.ui, file);
    benchmark::DoNotOptimize(file.Bytes());
  }
  stage.Count(state);
}
BENCHMARK(BM_WriteSettings)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void BM_RewriteSettings(benchmark::State& state) {
  LibraryStage stage(state.range(0) != 0);
  for ([[maybe_unused]] auto step : state) {
    platform::Profile file(stage.bytes);
    LibraryWriteSettings(*stage.ui, file);
    benchmark::DoNotOptimize(file.Bytes());
  }
}
BENCHMARK(BM_RewriteSettings)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

/// From and to the disk, the flush included.
void BM_SettingsFileOnDisk(benchmark::State& state) {
  LibraryStage stage(true);
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "heron-bench.vxs";
  for ([[maybe_unused]] auto step : state) {
    LibraryWriteSettings(*stage.ui, file.u16string());
    LibraryReadSettings(*stage.ui, file.u16string(), stage.resources.get());
  }
  std::filesystem::remove(file);
}
BENCHMARK(BM_SettingsFileOnDisk)->Unit(benchmark::kMicrosecond);

void BM_CopyGroups(benchmark::State& state) {
  LibraryStage stage(true);
  const UiStatePtr target = CloneUiState(*stage.ui);
  for ([[maybe_unused]] auto step : state) {
    for (int group = 1; group <= 7; ++group) CopySettingsGroup(*target, *stage.ui, group, stage.resources.get());
  }
}
BENCHMARK(BM_CopyGroups)->Unit(benchmark::kMicrosecond);

/// A full library: heads only, as for the menu, and with every entry's settings.
void BM_OpenLibrary(benchmark::State& state) {
  LibraryStage stage(state.range(1) != 0);
  const StringsInUse strings;
  BenchView view;
  const std::u16string folder = (stage.store.home() / "saved").u16string();
  std::filesystem::create_directory(folder);
  SettingsLibraryPtr library = SettingsLibraryOpen(view, *stage.ui, stage.resources.get(), LibraryLoad::kHeads);
  for (char16_t n = u'a'; library->count < kLibraryCapacity; ++n) {
    if (!SaveSettingsAs(*library, *stage.ui, folder, std::u16string(1, n), {})) return state.SkipWithError("not saved");
  }
  const auto load = state.range(0) == 0 ? LibraryLoad::kHeads : LibraryLoad::kSettings;
  for ([[maybe_unused]] auto step : state) {
    library = SettingsLibraryOpen(view, *stage.ui, stage.resources.get(), load);
    benchmark::DoNotOptimize(library->count);
  }
  state.counters["entries"] = library->count;
}
BENCHMARK(BM_OpenLibrary)->Args({0, 1})->Args({1, 0})->Args({1, 1})->Unit(benchmark::kMillisecond);

/// The worst that a file of the largest size can hold: keys that are all gathered, none of them ours.
void BM_ReadHostile(benchmark::State& state) {
  LibraryStage stage(false);
  const std::string sections[] = {"[IP_SETTING LIBRARY UIPARAM]\r\n", "[Faxcoversheet Comment]\r\n", ""};
  const char* const lines[] = {"k", "", "[s"};
  const auto kind = static_cast<size_t>(state.range(0));
  std::string bytes = sections[kind];
  for (int n = 0; bytes.size() < platform::kProfileLimit - 20; ++n) {
    bytes += lines[kind] + std::to_string(n) + (kind == 2 ? "]\r\n" : "=*\r\n");
  }
  for ([[maybe_unused]] auto step : state) {
    const platform::Profile file(bytes);
    LibraryReadSettings(*stage.ui, file, stage.resources.get());
  }
}
BENCHMARK(BM_ReadHostile)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace heron

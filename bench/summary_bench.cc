// The summary of settings, and the dialog that shows it. Wanted: a tab of 60 rows built in under 1 ms, the recall
// dialog with 25 entries opened in under 30 ms.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench_store.h"
#include "engine/setting.h"
#include "pages/recall_dialogs.h"
#include "pages/summary.h"
#include "presets/preset_library.h"
#include "support/scripted_sheet.h"

namespace heron::test {
namespace {

class SummaryStage {
 public:
  SummaryStage() : sheet(desk, store.printer(), kMayChangePrinterData) {
    if (sheet.Open() == 1) page = sheet.Show(100);
  }
  UiState& ui() { return sheet.context().ui(); }

  BenchStore store;
  ScriptedDesk desk;
  ScriptedSheet sheet;
  ScriptedDialog* page = nullptr;
};

void BuildALongTab(benchmark::State& state) {
  SummaryStage stage;
  const StringsInUse strings;
  engine::Setting<u"InterSheet_Check">(stage.ui()) = 1;
  SlotAs<u"InterSheetListData_PageListNum", uint16_t>(stage.ui()) = 16;
  size_t rows = 0;
  for (auto _ : state) rows = pages::BuildSummary(stage.ui(), pages::SummaryTab::kPerPage).size();
  state.counters["rows"] = static_cast<double>(rows);
}
BENCHMARK(BuildALongTab)->Unit(benchmark::kMicrosecond);

void OpenTheRecallDialog(benchmark::State& state) {
  SummaryStage stage;
  auto& view = dynamic_cast<engine::EngineView&>(*stage.sheet.pages[0].logic);
  const ResourceContext* resources = stage.sheet.context().resources.get();
  const SettingsLibraryPtr library = SettingsLibraryOpen(view, stage.ui(), resources, LibraryLoad::kSettings);
  const std::u16string folder = (stage.store.home() / "saved").u16string();
  std::filesystem::create_directory(folder);
  for (char16_t name = u'a'; library->count < kLibraryCapacity; ++name)
    SaveSettingsAs(*library, stage.ui(), folder, std::u16string(1, name), {});
  for (auto _ : state) {
    pages::RecallDialog dialog(stage.sheet.context());
    stage.desk.Expect(pages::RecallDialog::kNumber,
                      [](ScriptedDialog& shown) { shown.Click(platform::kCancelButton); });
    stage.desk.Run(pages::RecallDialog::kNumber, &dialog);
  }
  state.counters["entries"] = library->count;
}
BENCHMARK(OpenTheRecallDialog)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace heron::test

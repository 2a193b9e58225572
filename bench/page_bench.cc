// The paper page on a desk without windows: what the logic takes from a user's act until everything is shown again.
#include <benchmark/benchmark.h>

#include "bench_store.h"
#include "support/scripted_sheet.h"

namespace heron::test {
namespace {

class PageStage {
 public:
  PageStage() : sheet(desk, store.printer(), kMayChangePrinterData) {
    if (sheet.Open() == 1) page = sheet.Show(100);
  }
  BenchStore store;
  ScriptedDesk desk;
  ScriptedSheet sheet;
  ScriptedDialog* page = nullptr;
};

void ChangeAList(benchmark::State& state) {
  PageStage stage;
  int row = 0;
  for (auto _ : state) stage.page->Select(176, row = 1 - row);
  if (!stage.desk.Told().empty()) state.SkipWithError("a report was shown");
}
BENCHMARK(ChangeAList)->Unit(benchmark::kMicrosecond);

void ActivateThePage(benchmark::State& state) {
  PageStage stage;
  for (auto _ : state) benchmark::DoNotOptimize(stage.sheet.Show(100));
}
BENCHMARK(ActivateThePage)->Unit(benchmark::kMicrosecond);

/// From the host's first call until the first page is filled.
void OpenTheSheet(benchmark::State& state) {
  PageStage stage;
  for (auto _ : state) {
    ScriptedSheet sheet(stage.desk, stage.store.printer(), kMayChangePrinterData);
    if (sheet.Open() == 1) benchmark::DoNotOptimize(sheet.Show(100));
  }
}
BENCHMARK(OpenTheSheet)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron::test

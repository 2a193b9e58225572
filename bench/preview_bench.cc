// Previews: settings to a descriptor, a descriptor to a stack and to words.
#include <benchmark/benchmark.h>

#include "bench_store.h"
#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "preview/watermark_picture.h"
#include "preview/words.h"
#include "settings/defaults.h"
#include "support/recording_canvas.h"

namespace heron::preview {
namespace {

struct Stage {
  Stage() {
    DriverEnv env;
    BuildDefaultEnv(resources.get(), &env, u"P1", store.printer());
    ui = CreateUiState(resources.get(), env, store.printer());
  }
  BenchStore store;
  std::unique_ptr<ResourceContext, CloseContext> resources{OpenResourceContext(49)};
  UiStatePtr ui;
};

void Describe(benchmark::State& state) {
  const Stage stage;
  for (auto _ : state) benchmark::DoNotOptimize(DescribePaper(*stage.ui));
}
BENCHMARK(Describe);

void DescribeTheStatus(benchmark::State& state) {
  const Stage stage;
  for (auto _ : state) benchmark::DoNotOptimize(DescribeStatus(*stage.ui, {0, 0, 200, 84}));
}
BENCHMARK(DescribeTheStatus);

/// Two-sided, stapled, punched, sixteen pages with frames and order.
constexpr PaperPicture kBusy{.landscape = 0,
                             .zoomMark = 2,
                             .layoutClass = 13,
                             .stapleMark = 3,
                             .punchEdge = 1,
                             .punchHoles = 4,
                             .bindMark = 1,
                             .duplexEdge = 1,
                             .duplexFlip = 5,
                             .order = 6,
                             .border = 1};

/// Without drawing: what a dragged stamp costs besides its letters.
void DescribeAWatermark(benchmark::State& state) {
  const Stage stage;
  test::RecordingCanvas canvas;
  const WatermarkEntry& entry = stage.ui->stores.watermarks->entries[1];
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        DescribeWatermark(*stage.ui, entry, WatermarkView::kEditor, {0, 0, 200, 200}, canvas.families, canvas));
  }
}
BENCHMARK(DescribeAWatermark);

void StackASheet(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(StackPaper(kBusy));
}
BENCHMARK(StackASheet);

void StackTheStatus(benchmark::State& state) {
  const Stage stage;
  const StatusPicture picture = DescribeStatus(*stage.ui, {0, 0, 200, 84});
  for (auto _ : state) benchmark::DoNotOptimize(StackStatus(picture));
}
BENCHMARK(StackTheStatus);

void SayASheet(benchmark::State& state) {
  const Stage stage;
  const StringsInUse strings;
  const PaperFacts facts = PaperFactsOf(*stage.ui);
  for (auto _ : state) benchmark::DoNotOptimize(SayPaper(kBusy, facts));
}
BENCHMARK(SayASheet);

}  // namespace
}  // namespace heron::preview

// Page 200 and the quality sample on a desk without windows.
#include <benchmark/benchmark.h>

#include "bench_store.h"
#include "engine/page_list.h"
#include "engine/setting.h"
#include "pages/font_rows.h"
#include "pages/page_rows.h"
#include "platform/api/text.h"
#include "preview/quality_sample.h"
#include "support/scripted_sheet.h"
#include "uistate/list_stores_seed.h"

namespace heron::test {
namespace {

class PerPageStage {
 public:
  PerPageStage() : sheet(desk, store.printer(), kMayChangePrinterData) {
    if (sheet.Open() != 1) return;
    engine::Engine& engine = sheet.context().engine();
    engine::Setting<u"InterSheet_Check">(sheet.context().ui()) = 1;
    engine::EvaluateRules(engine, nullptr);
    for (size_t row = 0; row < pages::kMostRows; ++row) pages::StoreRow(engine, {}, u"1-9");
    sheet.Show(200);
  }
  BenchStore store;
  ScriptedDesk desk;
  ScriptedSheet sheet;
};

void ValidateThirtyRows(benchmark::State& state) {
  PerPageStage stage;
  engine::Engine& engine = stage.sheet.context().engine();
  for (auto _ : state) benchmark::DoNotOptimize(engine::ValidatePerPageList(engine, engine::Conflicts::kNew));
}
BENCHMARK(ValidateThirtyRows)->Unit(benchmark::kMicrosecond);

void ActivateThePerPagePage(benchmark::State& state) {
  PerPageStage stage;
  for (auto _ : state) benchmark::DoNotOptimize(stage.sheet.Show(200));
}
BENCHMARK(ActivateThePerPagePage)->Unit(benchmark::kMicrosecond);

/// A picture with a photo over half of it; `range` is its side.
void RenderASample(benchmark::State& state) {
  const auto side = static_cast<size_t>(state.range(0));
  preview::GreyPicture source{side, side, {}}, mask{side, side, {}};
  for (size_t i = 0; i < side * side; ++i) {
    source.levels.push_back(static_cast<uint8_t>(i * 7));
    mask.levels.push_back(i % side < side / 2 ? 0 : 255);
  }
  for (auto _ : state) {
    preview::GreyPicture text = source, photo = mask;
    benchmark::DoNotOptimize(preview::RenderQualitySample(text, photo, {.density = -2, .halftoneMode = 2}));
  }
}
BENCHMARK(RenderASample)->Arg(200)->Arg(400)->Unit(benchmark::kMicrosecond);

void ListThreeThousandFonts(benchmark::State& state) {
  std::vector<std::u16string> names;
  for (int i = 0; i < 3000; ++i) names.push_back(platform::FromUtf8("Family " + std::to_string(i * 7919 % 3000)));
  for (auto _ : state) benchmark::DoNotOptimize(pages::RowsOfFonts(pages::ListedFonts(names), DefaultFontPairs()));
}
BENCHMARK(ListThreeThousandFonts)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron::test

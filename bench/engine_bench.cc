// The engine's evaluation: availability, and the statuses of all items of all lists.
#include <benchmark/benchmark.h>

#include <initializer_list>
#include <utility>

#include "bench_store.h"
#include "changes/change.h"
#include "settings/defaults.h"

namespace heron::engine {
namespace {

using Settings = std::initializer_list<std::pair<ControlIndex, uint16_t>>;

/// An engine on a default record with some settings changed.
class BenchSheet {
 public:
  explicit BenchSheet(Settings settings) : resources_(OpenResourceContext(49)) {
    DriverEnv env;
    BuildDefaultEnv(resources_.get(), &env, u"P1", store_.printer());
    ui_ = CreateUiState(resources_.get(), env, store_.printer());
    engine_ = std::make_unique<Engine>(*ui_);
    for (const auto& [control, value] : settings) engine_->Set(control, value);
    EvaluateRules(*engine_, nullptr);
  }
  Engine& engine() { return *engine_; }

 private:
  BenchStore store_;
  std::unique_ptr<ResourceContext, CloseContext> resources_;
  UiStatePtr ui_;
  std::unique_ptr<Engine> engine_;
};

/// The finisher with everything it can do switched on, and interleaved transparencies.
const Settings& Busy() {
  static const Settings kBusy = {
      {Control(u"lpOutputUnit"), 3}, {Control(u"lpSaddleUnit"), 2},       {Control(u"lpPunchKit"), 21},
      {Control(u"lpSourceUnit"), 4}, {Control(u"Layout_Check2"), 1},      {Control(u"Staple_Check"), 1},
      {Control(u"Punch_Check"), 1},  {Control(u"FoldStaple_Check"), 1},   {Control(u"Front_Check"), 1},
      {Control(u"Back_Check"), 1},   {Control(u"OHPInterLeave_Check"), 1}};
  return kBusy;
}

void Evaluate(benchmark::State& state) {
  BenchSheet sheet(state.range(0) != 0 ? Busy() : Settings{});
  Engine& engine = sheet.engine();
  if (state.range(0) != 0) StoreTrayMedia(engine, Control(u"trayMediaType.page"), 2);
  for (auto _ : state) {
    EvaluateRules(engine, nullptr);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Evaluate)->ArgName("busy")->Arg(0)->Arg(1);

void AllItems(benchmark::State& state) {
  BenchSheet sheet(state.range(0) != 0 ? Busy() : Settings{});
  for (auto _ : state) {
    ComputeAllItemStatus(sheet.engine());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(AllItems)->ArgName("busy")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

/// The rules of one pass over a request of one row.
void OnePass(benchmark::State& state) {
  BenchSheet sheet(Busy());
  Engine& engine = sheet.engine();
  ChangeRequest request;
  AppendRow(request, Control(u"Staple_Check"), 0, 1);
  request.userCount = 1;
  for (auto _ : state) {
    ChangeLog log;
    EvaluateRules(engine, nullptr);
    ApplyPairRules(engine, request, log);
    ApplyTripleRules(engine, request, log);
    EvaluateRules(engine, nullptr);
    ApplyPaperRules(engine, request, log);
    ResolveStaple(engine, request, log);
    ResolvePunch(engine, request, log);
    ResolveFoldStaple(engine, request, log);
    ResolveFold(engine, request, log);
    ResolveInterleave(engine, request, log);
    ResolveTrays(engine, log, nullptr);
    ResolveOutputTray(engine, log, nullptr);
    benchmark::DoNotOptimize(log.count);
  }
}
BENCHMARK(OnePass)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron::engine

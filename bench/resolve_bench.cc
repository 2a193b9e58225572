// Changes, each with its report and the refresh of all lists: every control with every option from three records. The
// counters give the median and the 99th percentile of single changes, microseconds of processor time.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

#include "bench_store.h"
#include "bench_view.h"
#include "catalog/strings.h"
#include "changes/opening.h"
#include "changes/resolve.h"
#include "settings/defaults.h"

namespace heron::engine {
namespace {

/// Processor time of this thread, so that a busy machine doesn't count.
double ThreadMicroseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

struct Start {
  ControlIndex control;
  uint16_t value;
};
constexpr Start kStarts[3][4] = {
    {{Control(u"Copies"), 1}, {Control(u"Copies"), 1}, {Control(u"Copies"), 1}, {Control(u"Copies"), 1}},
    {{Control(u"lpOutputUnit"), 2},
     {Control(u"lpMailBinKit"), 2},
     {Control(u"Staple_Check"), 1},
     {Control(u"lpPunchKit"), 21}},
    {{Control(u"lpOutputUnit"), 3},
     {Control(u"lpSaddleUnit"), 2},
     {Control(u"lpPRNType"), 3},
     {Control(u"lpSourceUnit"), 4}},
};

class BenchResolver {
 public:
  BenchResolver() : resources_(OpenResourceContext(49)) {
    DriverEnv env;
    BuildDefaultEnv(resources_.get(), &env, u"P1", store_.printer());
    ui_ = CreateUiState(resources_.get(), env, store_.printer());
    engine_ = std::make_unique<Engine>(*ui_);
    resolver_ = std::make_unique<Resolver>(*engine_);
  }
  void StartFrom(const Start (&settings)[4]) {
    for (const Start& start : settings) engine_->Set(start.control, start.value);
    OpenSettings(*resolver_, nullptr, OpeningPass::kRun);
    copy_.emplace_back(CloneUiState(*ui_));
  }
  /// Microseconds of one change.
  double Change(ControlIndex control, uint16_t value) {
    CopyUiState(*ui_, *copy_.back());
    EvaluateRules(*engine_, nullptr);
    view_.pending = value;
    const double start = ThreadMicroseconds();
    benchmark::DoNotOptimize(ResolveChange(*resolver_, &view_, kControls[control].id));
    return ThreadMicroseconds() - start;
  }
  Resolver& resolver() { return *resolver_; }

 private:
  BenchStore store_;
  std::unique_ptr<ResourceContext, CloseContext> resources_;
  StringsInUse strings_;
  UiStatePtr ui_;
  std::unique_ptr<Engine> engine_;
  std::unique_ptr<Resolver> resolver_;
  std::vector<UiStatePtr> copy_;
  BenchView view_;
};

void Changes(benchmark::State& state) {
  std::vector<double> times;
  for (auto _ : state) {
    for (const auto& start : kStarts) {
      BenchResolver sheet;
      sheet.StartFrom(start);
      for (size_t i = 0; i < kControlCount; ++i) {
        const auto control = static_cast<ControlIndex>(i);
        for (const ListOption& option : ValueLabels(control))
          times.push_back(sheet.Change(control, static_cast<uint16_t>(option.value)));
        if (kControls[i].type == ControlType::kButton) times.push_back(sheet.Change(control, 0));
      }
    }
  }
  std::ranges::sort(times);
  state.counters["median_us"] = times[times.size() / 2];
  state.counters["p99_us"] = times[times.size() * 99 / 100];
  state.counters["changes"] = static_cast<double>(times.size()) / static_cast<double>(state.iterations());
}
BENCHMARK(Changes)->Unit(benchmark::kMillisecond);

void Open(benchmark::State& state) {
  BenchResolver sheet;
  sheet.StartFrom(kStarts[1]);
  for (auto _ : state) ResolveOpen(sheet.resolver(), nullptr);
}
BENCHMARK(Open)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron::engine

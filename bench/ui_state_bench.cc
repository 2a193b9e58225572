// The working store over the real one: what opening, copying and confirming the pages costs.
#include <benchmark/benchmark.h>

#include "bench_store.h"
#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "settings/defaults.h"
#include "uistate/ui_state.h"
#include "uistate/user_stores.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

struct Stage {
  Stage() {
    BuildDefaultEnv(resources.get(), &env, u"P1", store.printer());
    ui = CreateUiState(resources.get(), env, store.printer());  // seeds the lists
  }

  BenchStore store;
  std::unique_ptr<ResourceContext, CloseContext> resources{OpenResourceContext(49)};
  DriverEnv env;
  UiStatePtr ui;
};

void CreateState(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) {
    benchmark::DoNotOptimize(CreateUiState(stage.resources.get(), stage.env, stage.store.printer()));
  }
}
BENCHMARK(CreateState)->Unit(benchmark::kMicrosecond);

/// The parts of a creation that are registry reads.
void ReadStores(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) {
    ListStoreSet set = CreateListStoreSet();
    benchmark::DoNotOptimize(ReadListStores(set, u"P1", stage.store.printer()));
  }
}
BENCHMARK(ReadStores)->Unit(benchmark::kMicrosecond);

void RefreshStores(benchmark::State& state) {
  Stage stage;
  DriverEnv env = stage.env;
  std::memcpy(FieldBytes<"publicMirror">(env), env.bytes.data(), kPublicSize);
  for (auto _ : state) benchmark::DoNotOptimize(RefreshUserStores(env));
}
BENCHMARK(RefreshStores)->Unit(benchmark::kMicrosecond);

void Snapshots(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) benchmark::DoNotOptimize(TakeSnapshots(stage.resources.get()));
}
BENCHMARK(Snapshots)->Unit(benchmark::kMicrosecond);

void FillState(benchmark::State& state) {
  Stage stage;
  const StringsInUse strings;
  if (SlotAs<u"lpMediaSize", ListBlock>(*stage.ui).Items()[0].label[0] == u'\0') state.SkipWithError("no labels");
  for (auto _ : state) FillUiState(*stage.ui, stage.env, stage.resources.get());
}
BENCHMARK(FillState)->Unit(benchmark::kMicrosecond);

void CloneState(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) benchmark::DoNotOptimize(CloneUiState(*stage.ui));
}
BENCHMARK(CloneState)->Unit(benchmark::kMicrosecond);

void CopyState(benchmark::State& state) {
  Stage stage;
  const UiStatePtr clone = CloneUiState(*stage.ui);
  for (auto _ : state) CopyUiState(*stage.ui, *clone);
}
BENCHMARK(CopyState)->Unit(benchmark::kMicrosecond);

void WriteBackState(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) WriteBackUiState(*stage.ui, stage.env, stage.resources.get());
}
BENCHMARK(WriteBackState)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron

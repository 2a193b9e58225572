// The road of a record on the real store: a whole call, and its two pure parts.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench_store.h"
#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "entry/exports.h"
#include "settings/defaults.h"
#include "settings/validate.h"

namespace heron {
namespace {

void DocumentProperties(benchmark::State& state) {
  BenchStore store;
  DriverEnv in;
  DriverEnv out;
  const auto mode = [](DriverEnv& env) { return reinterpret_cast<DEVMODEW*>(env.bytes.data()); };
  if (DrvDocumentProperties(nullptr, store.printer(), nullptr, mode(in), nullptr, platform::DM_COPY) != 1) {
    state.SkipWithError("the queue has no record");
    return;
  }
  for (auto _ : state) {
    const LONG done = DrvDocumentProperties(nullptr, store.printer(), nullptr, mode(out), mode(in), platform::DM_COPY);
    benchmark::DoNotOptimize(done);
  }
}
BENCHMARK(DocumentProperties)->Unit(benchmark::kMicrosecond);

void DefaultEnv(benchmark::State& state) {
  BenchStore store;
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(49));
  DriverEnv env;
  for (auto _ : state) {
    BuildDefaultEnv(resources.get(), &env, u"P1", store.printer());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(DefaultEnv)->Unit(benchmark::kMicrosecond);

void Validate(benchmark::State& state) {
  BenchStore store;
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(49));
  DriverEnv env;
  BuildDefaultEnv(resources.get(), &env, u"P1", store.printer());
  for (auto _ : state) {
    ValidateEnv(resources.get(), &env, store.printer());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Validate)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron

// A whole query of a device, who answers and what is installed, against a real agent on this machine: 100 ms. The agent
// is scripts/sample-device, whose rows come from a script; most of the time is the agent's.

#include <benchmark/benchmark.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>

#include "bench_store.h"
#include "devicelink/device_query.h"
#include "platform/api/text.h"

namespace heron {
namespace {

/// The sample device, as long as a benchmark runs.
class Agent {
 public:
  Agent() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      execl(HERON_SAMPLE_DEVICE, HERON_SAMPLE_DEVICE, nullptr);
      _exit(1);
    }
    close(ends[1]);
    for (char c = 0; read(ends[0], &c, 1) == 1 && c != '\n';) address_ += c;
    close(ends[0]);
  }
  ~Agent() {
    if (process_ <= 0) return;
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;

  std::u16string address() const { return platform::FromUtf8(address_); }

 private:
  pid_t process_ = -1;
  std::string address_;
};

void Query(benchmark::State& state) {
  const BenchStore store;
  const Agent agent;
  const DeviceTarget target{.address = agent.address(), .folder = DriverDirectory()};
  for (auto _ : state) {
    const bool answers = ProbeDevice(target).reply == DeviceReply::kAccepted;
    const auto report = ReadDevice(target);
    if (!answers || !report || !report->complete) return state.SkipWithError("the sample device doesn't answer");
    benchmark::DoNotOptimize(MapDeviceOptions(*report));
  }
}
BENCHMARK(Query)->Name("Device/query")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace heron

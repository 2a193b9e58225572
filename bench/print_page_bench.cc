// The driver's share of a page: both events of one page with a watermark, stores in memory, a canvas that records.
#include <benchmark/benchmark.h>

#include <memory>

#include "catalog/catalog.h"
#include "catalog/strings.h"
#include "entry/exports.h"
#include "escapes/escape_blocks.h"
#include "platform/api/document_events.h"
#include "platform/api/handles.h"
#include "platform/api/queues.h"
#include "platform/memory/memory_backend.h"
#include "settings/defaults.h"
#include "support/recording_canvas.h"
#include "uistate/user_stores.h"

namespace heron {
namespace {

void ServeRecord(test::RecordingCanvas& canvas, const DriverEnv& env) {
  auto& block = canvas.replies["EscGetJobRecord"].bytes;
  block.resize(JobRecordBlock::kSize);
  constexpr uint16_t kExtra = JobRecordBlock::kEnvBase + JobRecordBlock::kEnvBaseSize;
  std::memcpy(block.data() + JobRecordBlock::kExtraOffset, &kExtra, sizeof kExtra);
  std::memcpy(block.data() + JobRecordBlock::kEnvBase, env.bytes.data() + kPublicSize, kPrivateSize);
  canvas.replies["EscGetRecordSize"].bytes = {kEnvSize & 0xFF, kEnvSize >> 8, 0, 0};
  canvas.replies["EscGetRecord"].bytes.assign(env.bytes.begin(), env.bytes.end());
  canvas.replies["EscGetJobState"].bytes.assign(JobStateBlock::kSize, 0);
  canvas.replies["EscGetFaxStatus"].bytes.assign(FaxStatus::kSize, 0);
  canvas.replies["EscGetAddressFile"].bytes.assign(4, 0);
  canvas.replies["EscGetPageState"].bytes.assign(PageState488::kSize, 1);
  canvas.replies["EscTabsDone"].bytes = {1};
}

void PageWithWatermark(benchmark::State& state) {
  platform::MemoryBackend backend;
  platform::Queue queue;
  queue.name = u"P1";
  queue.dataFile = u"/driver/varnell.dat";
  platform::AddQueue(queue);
  const auto printer = platform::OpenPrinterFor(u"P1", platform::PRINTER_ALL_ACCESS);
  backend.modules[u"/driver/TVOR6T1.DLL"][30003] = u"DRAFT";
  RefreshDriverDirectory(printer.get());
  {
    const StringsInUse texts;
    SeedStores(u"P1", kDriverVersion);
  }
  const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(1));
  DriverEnv env;
  BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
  Set<"Watermark_Use">(env, 1);
  Set<"watermarkIndex">(env, 2);
  test::RecordingCanvas canvas;
  ServeRecord(canvas, env);
  const auto run = [&](int event) {
    return DrvDocumentEvent(printer.get(), canvas.hdc, event, 0, nullptr, 0, nullptr);
  };
  for (auto _ : state) {
    canvas.log.clear();
    canvas.drawings.clear();
    const bool done = run(platform::DOCUMENTEVENT_STARTPAGE) == 1 && run(platform::DOCUMENTEVENT_ENDPAGE) == 1;
    if (!done || canvas.drawings.size() != 1) {
      state.SkipWithError("the page has no watermark");
      break;
    }
  }
}
BENCHMARK(PageWithWatermark)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron

// A preview painted as a window paints it: the pictures of the resource module through the cache of the desk.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>

#include "apps/desk/picture_cache.h"
#include "apps/desk/screen_canvas.h"
#include "platform/api/text.h"
#include "preview/paper_view.h"

namespace heron::desk {
namespace {

constexpr preview::PaperPicture kFifteenLayers{.layoutClass = 1,
                                               .stapleMark = 3,
                                               .punchEdge = 1,
                                               .punchHoles = 4,
                                               .bindMark = 1,
                                               .marginEdge = 1,
                                               .duplexEdge = 1,
                                               .duplexFlip = 5,
                                               .order = 1,
                                               .border = 1};

void PaintASheet(benchmark::State& state) {
  const platform::HMODULE module = platform::LoadLibraryW(platform::FromUtf8(HERON_PICTURE_MODULE).c_str());
  if (module == nullptr) return state.SkipWithError("the resource module can't be loaded");
  {
    PictureCache pictures(module);
    QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
    const preview::Stack stack = preview::StackPaper(kFifteenLayers);
    int drawn = 0;
    for (auto _ : state) {
      QPainter painter(&image);
      ScreenCanvas canvas(painter, 200, 200, &pictures);
      drawn = 0;
      for (const preview::Layer& layer : stack) {
        if (layer.isMask) continue;
        const platform::RECT at = {2 * layer.x, 2 * layer.y, 2 * (layer.x + layer.width), 2 * (layer.y + layer.height)};
        canvas.DrawResource(layer.picture, at, platform::RECT{0, 0, 200, 200});
        ++drawn;
      }
    }
    state.counters["layers"] = drawn;
  }
  platform::FreeLibrary(module);
}
BENCHMARK(PaintASheet)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace heron::desk

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

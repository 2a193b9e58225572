#include "pages/quality_page.h"

#include "preview/quality_sample.h"

namespace heron::pages {
namespace {

constexpr ControlId kSample = 601;

enum Group : uint8_t { kBlack, kPattern, kToner, kDraft, kSmoothing, kView };
constexpr ShownControl kControls[] = {
    {engine::ControlId(u"PrintCAD_Check"), kBlack},
    {engine::ControlId(u"lpPrintCADMode.TextAndGraphics"), kBlack},
    {engine::ControlId(u"lpPrintCADMode.Everything"), kBlack},
    {engine::ControlId(u"lpBrushPtPit.Fine"), kPattern},
    {engine::ControlId(u"lpBrushPtPit.Coarse"), kPattern},
    {engine::ControlId(u"EngSaveToner_Check"), kToner},
    {engine::ControlId(u"DraftPrint"), kDraft},
    {engine::ControlId(u"lpSmoothing"), kSmoothing},
    {engine::ControlId(u"previewMode.Paper"), kView},
    {engine::ControlId(u"previewMode.Machine"), kView},
};

preview::GreyPicture GreyOfImage(const platform::PixelImage& image) {
  return {static_cast<size_t>(image.width), static_cast<size_t>(image.height), platform::GreyLevels(image)};
}

/// The picture with every pixel enlarged as it is, so that its dots stay dots.
platform::PixelImage Enlarged(const preview::GreyPicture& picture, int width, int height) {
  std::vector<uint8_t> levels;
  levels.reserve(static_cast<size_t>(width) * static_cast<size_t>(height));
  for (int y = 0; y < height; ++y) {
    const size_t line = static_cast<size_t>(y) * picture.height / static_cast<size_t>(height) * picture.width;
    for (int x = 0; x < width; ++x)
      levels.push_back(picture.levels[line + static_cast<size_t>(x) * picture.width / static_cast<size_t>(width)]);
  }
  return platform::FromGreyLevels(width, height, levels);
}

}  // namespace

QualityPage::QualityPage(SheetContext& sheet, const PageRow& row) : Page(sheet, row, kControls) {}

void QualityPage::RepaintPictures() {
  Page::RepaintPictures();
  dialog().SetDescription(kSample, preview::SayQuality(ui()));
  dialog().Repaint(kSample);
}

/// Computed anew for every drawing. Without its pictures the sample stays as it was.
void QualityPage::OnDraw(ControlId id, platform::Canvas& canvas, const platform::RECT& place) {
  if (id != kSample) return Page::OnDraw(id, canvas, place);
  const int width = place.right - place.left, height = place.bottom - place.top;
  if (width <= 0 || height <= 0) return;
  const preview::QualitySources sources = preview::QualitySourcesOf(ui());
  const auto source = dialog().Pixels(sources.source);
  const auto mask = dialog().Pixels(sources.mask);
  if (source && mask) {
    preview::GreyPicture picture = GreyOfImage(*source), photo = GreyOfImage(*mask);
    if (preview::RenderQualitySample(picture, photo, preview::DescribeQuality(ui())) && !picture.levels.empty())
      shown_ = Enlarged(picture, width, height);
  }
  if (!shown_.pixels.empty()) canvas.DrawPicture(place, shown_.View(), {});
}

}  // namespace heron::pages

// The program `heron-picture`: what the sheet shows of settings, drawn into a PNG or SVG file. `heron picture` runs it.

#include <CLI/CLI.hpp>
#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>
#include <cstdio>

#include "apps/cli/picture_session.h"
#include "apps/desk/picture_cache.h"
#include "apps/desk/screen_canvas.h"
#include "catalog/strings.h"
#include "pages/cover_preview.h"
#include "pages/dialog_pictures.h"
#include "preview/geometry.h"
#include "preview/painter.h"
#include "preview/quality_sample.h"
#include "preview/watermark_picture.h"

namespace heron::picture {
namespace {

using cli::Failure;
using cli::PictureKind;
using platform::RECT;

constexpr int kPixelsPerInch = 96;

platform::SIZE SizeOf(PictureKind kind, int scale) {
  constexpr platform::SIZE kMarginSize = {pages::kMarginPictureSize, pages::kMarginPictureSize};
  const auto [width, height] = kind == PictureKind::kStatus      ? preview::kStatusSize
                               : kind == PictureKind::kMargin    ? kMarginSize
                               : kind == PictureKind::kWatermark ? preview::kWatermarkPictureSize
                               : kind == PictureKind::kCover     ? pages::kCoverPictureSize
                                                                 : preview::kUpperSize;
  return {width * scale, height * scale};
}

void DrawKind(PictureKind kind, UiState& ui, platform::Canvas& canvas, const RECT& place) {
  switch (kind) {
    case PictureKind::kPaper:
      return preview::DrawPaperView(canvas, place, ui);
    case PictureKind::kMachine:
      preview::DrawMachineBase(canvas, place, ui);
      return preview::DrawMachineHighlights(canvas, place, ui);
    case PictureKind::kDevice:
      return preview::DrawMachineBase(canvas, place, ui);
    case PictureKind::kStatus:
      return preview::DrawStatusPanel(canvas, place, ui);
    case PictureKind::kQuality:
      return;  // has pixels of its own
    case PictureKind::kWatermark:
      return preview::DrawWatermarkPicture(
          preview::DescribeWatermark(ui, preview::CurrentWatermark(ui), preview::WatermarkView::kPage, place,
                                     canvas.FontFamilies(), canvas),
          canvas);
    case PictureKind::kCover: {
      const StringsInUse texts;
      return pages::DrawCoverPreview(ui, canvas, place);
    }
    case PictureKind::kMargin:
      const pages::MarginPicture picture = pages::DescribeMargin(ui);
      canvas.DrawResource(pages::MarginFrame(picture), place, {});
      return pages::DrawMargin(picture, canvas, place);
  }
}

/// Everything in its place in pixels, so that edges are one pixel wide at every scale.
void Draw(cli::PictureSession& session, const cli::PictureOptions& options, QPaintDevice& device) {
  const platform::SIZE size = SizeOf(session.kind(), options.scale);
  const platform::HMODULE module = LoadResourceModule();
  if (module == nullptr)
    throw Failure(cli::kFailed, "the driver's pictures can't be loaded; `heron printer add` installs them");
  {
    desk::PictureCache pictures(module);
    QPainter painter(&device);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    desk::ScreenCanvas canvas(painter, size.cx, size.cy, &pictures, options.dark);
    DrawKind(session.kind(), session.ui(), canvas, {0, 0, size.cx, size.cy});
  }
  platform::FreeLibrary(module);
}

/// The session's answer, with letters as they are drawn.
cli::Json MeasuredAnswer(cli::PictureSession& session, const cli::PictureOptions& options) {
  QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  desk::ScreenCanvas canvas(painter, 1, 1);
  return session.Answer(&canvas, options.scale);
}

// -- the quality sample, which is computed pixel by pixel

constexpr qint64 kLargestFile = qint64{64} << 20;

platform::PixelImage PixelsOf(const QImage& picture) {
  const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
  platform::PixelImage pixels{.width = image.width(), .height = image.height(), .pixels = {}};
  for (int y = 0; y < image.height(); ++y) {
    const auto* const line = reinterpret_cast<const uint32_t*>(image.constScanLine(y));
    pixels.pixels.insert(pixels.pixels.end(), line, line + image.width());
  }
  return pixels;
}

/// The picture in a user's file.
QImage ReadPicture(const std::string& path) {
  const QFileInfo file(QFile::decodeName(path.c_str()));
  if (!file.exists()) throw Failure(cli::kNotFound, "there is no file \"" + cli::Printable(path) + '"');
  if (!file.isFile() || file.size() > kLargestFile)
    throw Failure(cli::kFailed, '"' + cli::Printable(path) + "\" is no file of at most 64 MiB");
  QImageReader reader(file.filePath());
  reader.setDecideFormatFromContent(true);
  const QImage picture = reader.read();
  if (!picture.isNull()) return picture;
  throw Failure(cli::kFailed,
                "the picture \"" + cli::Printable(path) + "\" can't be read: " + reader.errorString().toStdString());
}

QImage ResourcePicture(uint32_t number) {
  const platform::HMODULE module = LoadResourceModule();
  if (module == nullptr)
    throw Failure(cli::kFailed, "the driver's pictures can't be loaded; `heron printer add` installs them");
  QImage picture;
  {
    desk::PictureCache pictures(module);
    picture = QImage(pictures.SizeOf(number), QImage::Format_ARGB32_Premultiplied);
    if (!picture.isNull()) {
      picture.fill(Qt::transparent);
      QPainter painter(&picture);
      pictures.Paint(painter, number, {0, 0, picture.width(), picture.height()});
    }
  }
  platform::FreeLibrary(module);
  return picture;
}

preview::GreyPicture GreyOf(const QImage& picture) {
  const platform::PixelImage pixels = PixelsOf(picture);
  return {static_cast<size_t>(pixels.width), static_cast<size_t>(pixels.height), platform::GreyLevels(pixels)};
}

/// The processed sample as greys, one byte a pixel; every pixel `scale` wide and high.
QImage QualityImage(cli::PictureSession& session, const cli::PictureOptions& options) {
  const preview::QualitySources numbers = preview::QualitySourcesOf(session.ui());
  const bool own = !options.sample.empty();
  preview::GreyPicture sample = GreyOf(own ? ReadPicture(options.sample) : ResourcePicture(numbers.source));
  preview::GreyPicture mask = GreyOf(own ? ReadPicture(options.mask) : ResourcePicture(numbers.mask));
  if (!preview::RenderQualitySample(sample, mask, preview::DescribeQuality(session.ui())))
    throw Failure(cli::kUsage, "the mask has another size than the sample; it needs a pixel for each of the sample's");
  QImage image(static_cast<int>(sample.width), static_cast<int>(sample.height), QImage::Format_Grayscale8);
  if (image.isNull()) throw std::bad_alloc();
  for (size_t y = 0; y < sample.height; ++y)
    std::copy_n(sample.levels.data() + y * sample.width, sample.width, image.scanLine(static_cast<int>(y)));
  if (options.scale == 1) return image;
  return image.scaled(image.width() * options.scale, image.height() * options.scale, Qt::IgnoreAspectRatio,
                      Qt::FastTransformation);
}

QByteArray BytesOf(const QImage& image) {
  QBuffer bytes;
  if (!image.save(&bytes, "PNG")) throw Failure(cli::kFailed, "the picture can't be written as PNG");
  return bytes.data();
}

QByteArray Png(cli::PictureSession& session, const cli::PictureOptions& options) {
  if (session.kind() == PictureKind::kQuality) return BytesOf(QualityImage(session, options));
  const platform::SIZE size = SizeOf(session.kind(), options.scale);
  QImage image(size.cx, size.cy, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) throw std::bad_alloc();
  image.fill(Qt::transparent);
  Draw(session, options, image);
  return BytesOf(image);
}

QByteArray Svg(cli::PictureSession& session, const cli::PictureOptions& options) {
  if (session.kind() == PictureKind::kQuality)
    throw Failure(cli::kUsage, "the quality sample consists of pixels; give it a name that ends with .png");
  const platform::SIZE size = SizeOf(session.kind(), options.scale);
  QBuffer bytes;
  QSvgGenerator generator;
  generator.setOutputDevice(&bytes);
  generator.setSize(QSize(size.cx, size.cy));
  generator.setViewBox(QRect(0, 0, size.cx, size.cy));
  generator.setResolution(kPixelsPerInch);
  generator.setTitle("heron picture " + QString::fromStdString(options.kind));
  generator.setDescription(QString::fromStdString(MeasuredAnswer(session, options).value("says", std::string())));
  Draw(session, options, generator);
  return bytes.data();
}

/// A file is there whole or not at all.
void Save(const QByteArray& bytes, const std::string& path) {
  if (path == "-") {
    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly) || output.write(bytes) != bytes.size() || !output.flush())
      throw Failure(cli::kFailed, "can't write the picture to standard output");
    return;
  }
  QSaveFile file(QFile::decodeName(path.c_str()));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    throw Failure(cli::kFailed, "can't write \"" + cli::Printable(path) + "\": " + file.errorString().toStdString());
  }
}

void Run(const cli::PictureOptions& options) {
  if (!options.NeedsDrawing()) throw Failure(cli::kUsage, "name a file for the picture with --out");
  const bool is_svg = options.out.ends_with(".svg");
  if (!options.out.empty() && options.out != "-" && !is_svg && !options.out.ends_with(".png"))
    throw Failure(cli::kUsage, "a picture is written as PNG or SVG; give \"" + cli::Printable(options.out) +
                                   "\" a name that ends with .png or .svg");
  if (options.out == "-" && options.json)
    throw Failure(cli::kUsage, "the picture goes to standard output; leave --json out or name a file");
  cli::PictureSession session(options);
  if (!options.out.empty()) Save(is_svg ? Svg(session, options) : Png(session, options), options.out);
  if (options.json) cli::PrintJson("picture", MeasuredAnswer(session, options));
}

int RunMain(int argc, char** argv) {
  CLI::App app("Draws what the sheet shows of settings; `heron picture` runs it.", "heron-picture");
  cli::PictureOptions options;
  app.set_help_flag("-h,--help", "Show how the program is used");
  app.set_version_flag("--version", "heron-picture " HERON_VERSION, "Show the version");
  options.AddTo(app);
  return cli::RunApp(app, argc, argv, [&] { Run(options); });
}

}  // namespace
}  // namespace heron::picture

int main(int argc, char** argv) {
  // Qt's messages about the missing display don't help the user.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  // Letters need an application object, but no display.
  char name[] = "heron-picture";
  char platform[] = "-platform";
  char offscreen[] = "offscreen";
  char* qt_arguments[] = {name, platform, offscreen, nullptr};
  int qt_count = 3;
  const QGuiApplication application(qt_count, qt_arguments);
  return heron::picture::RunMain(argc, argv);
}

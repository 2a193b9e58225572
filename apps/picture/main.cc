// The program `heron-picture`: what the sheet shows of settings, drawn into a PNG or SVG file. `heron picture` runs it.

#include <CLI/CLI.hpp>
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <cstdio>

#include "apps/cli/picture_session.h"
#include "apps/desk/picture_cache.h"
#include "apps/desk/screen_canvas.h"
#include "catalog/strings.h"
#include "pages/cover_preview.h"
#include "pages/dialog_pictures.h"
#include "preview/geometry.h"
#include "preview/painter.h"

namespace heron::picture {
namespace {

using cli::Failure;
using cli::PictureKind;
using platform::RECT;

constexpr int kPixelsPerInch = 96;

platform::SIZE SizeOf(PictureKind kind, int scale) {
  constexpr platform::SIZE kMarginSize = {pages::kMarginPictureSize, pages::kMarginPictureSize};
  const auto [width, height] = kind == PictureKind::kStatus   ? preview::kStatusSize
                               : kind == PictureKind::kMargin ? kMarginSize
                               : kind == PictureKind::kCover  ? pages::kCoverPictureSize
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

QByteArray Png(cli::PictureSession& session, const cli::PictureOptions& options) {
  const platform::SIZE size = SizeOf(session.kind(), options.scale);
  QImage image(size.cx, size.cy, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) throw std::bad_alloc();
  image.fill(Qt::transparent);
  Draw(session, options, image);
  QBuffer bytes;
  if (!image.save(&bytes, "PNG")) throw Failure(cli::kFailed, "the picture can't be written as PNG");
  return bytes.data();
}

QByteArray Svg(cli::PictureSession& session, const cli::PictureOptions& options) {
  const platform::SIZE size = SizeOf(session.kind(), options.scale);
  QBuffer bytes;
  QSvgGenerator generator;
  generator.setOutputDevice(&bytes);
  generator.setSize(QSize(size.cx, size.cy));
  generator.setViewBox(QRect(0, 0, size.cx, size.cy));
  generator.setResolution(kPixelsPerInch);
  generator.setTitle("heron picture " + QString::fromStdString(options.kind));
  generator.setDescription(QString::fromStdString(session.Answer().value("says", std::string())));
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
  if (options.out.empty()) throw Failure(cli::kUsage, "name a file for the picture with --out");
  const bool is_svg = options.out.ends_with(".svg");
  if (options.out != "-" && !is_svg && !options.out.ends_with(".png"))
    throw Failure(cli::kUsage, "a picture is written as PNG or SVG; give \"" + cli::Printable(options.out) +
                                   "\" a name that ends with .png or .svg");
  if (options.out == "-" && options.json)
    throw Failure(cli::kUsage, "the picture goes to standard output; leave --json out or name a file");
  cli::PictureSession session(options);
  Save(is_svg ? Svg(session, options) : Png(session, options), options.out);
  if (options.json) cli::PrintJson("picture", session.Answer());
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

// Opens the settings of `heron picture`, applies its changes and builds the picture stacks (picture_session.h).

#include "picture_session.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "engine/sizes.h"
#include "library_text.h"
#include "pages/cover_preview.h"
#include "pages/dialog_pictures.h"
#include "platform/api/text.h"
#include "preview/geometry.h"
#include "preview/labels.h"
#include "preview/machine_view.h"
#include "preview/paper_view.h"
#include "preview/quality_sample.h"
#include "preview/status_view.h"
#include "preview/watermark_picture.h"
#include "preview/words.h"
#include "settings_change.h"

namespace heron::cli {
namespace {

constexpr int kLargestScale = 16;

struct KindName {
  std::string_view name;
  PictureKind kind;
};
constexpr KindName kKinds[] = {{"paper", PictureKind::kPaper},         {"machine", PictureKind::kMachine},
                               {"device", PictureKind::kDevice},       {"status", PictureKind::kStatus},
                               {"margin", PictureKind::kMargin},       {"quality", PictureKind::kQuality},
                               {"watermark", PictureKind::kWatermark}, {"cover", PictureKind::kCover}};

PictureKind KindOf(const PictureOptions& options) {
  const auto known = std::ranges::find(kKinds, options.kind, &KindName::name);
  if (known == std::end(kKinds)) throw Failure(kUsage, "there is no picture \"" + Printable(options.kind) + '"');
  if (!options.entry.empty() && !options.requests.empty())
    throw Failure(kUsage, "--entry shows settings as they are saved; leave -o out, or recall them first");
  if (known->kind == PictureKind::kDevice && (!options.in.empty() || !options.entry.empty()))
    throw Failure(kUsage, "`picture device` shows the printer's saved record; leave --in and --entry out");
  if (options.sample.empty() != options.mask.empty())
    throw Failure(kUsage, "a sample needs its mask, which is black where the photo is; give --sample and --mask");
  if (!options.sample.empty() && known->kind != PictureKind::kQuality)
    throw Failure(kUsage, "--sample and --mask belong to `picture quality`");
  return known->kind;
}

SettingsKind SheetOf(PictureKind kind) {
  return kind == PictureKind::kDevice ? SettingsKind::kDevice : SettingsKind::kDocument;
}

constexpr platform::RECT kStatusArea = {0, 0, preview::kStatusSize.cx, preview::kStatusSize.cy};

Json LayersJson(const preview::Stack& stack) {
  Json rows = Json::array();
  for (const preview::Layer& layer : stack) {
    rows.push_back({{"picture", layer.picture},
                    {"mode", preview::NameOf(layer.mode)},
                    {"x", layer.x},
                    {"y", layer.y},
                    {"width", layer.width},
                    {"height", layer.height},
                    {"mask", layer.isMask}});
  }
  return rows;
}

template <typename Fields, typename Picture>
Json FieldsJson(const Fields& fields, const Picture& picture) {
  Json object = Json::object();
  for (const auto& field : fields) object[std::string(field.name)] = picture.*(field.field);
  return object;
}

Json PaperJson(const UiState& ui) {
  const preview::PaperPicture picture = preview::DescribePaper(ui);
  Json labels = Json::array();
  for (const preview::Label& label : preview::PaperLabels(ui))
    labels.push_back({{"place", preview::NameOf(label.place)}, {"text", platform::ToUtf8(label.text)}});
  return {{"descriptor", FieldsJson(preview::kPaperFields, picture)},
          {"layers", LayersJson(preview::StackPaper(picture))},
          {"labels", labels},
          {"says", platform::ToUtf8(preview::SayPaper(picture, preview::PaperFactsOf(ui)))}};
}

Json MachineJson(const UiState& ui, bool highlights) {
  const preview::MachinePicture picture = preview::DescribeMachine(ui);
  Json answer = {{"descriptor", FieldsJson(preview::kMachineFields, picture)},
                 {"base", LayersJson(preview::StackMachine(picture))}};
  if (highlights) answer["highlights"] = LayersJson(preview::StackHighlights(picture));
  answer["labels"] = Json::array();
  answer["says"] = platform::ToUtf8(preview::SayMachine(picture, highlights));
  return answer;
}

Json StatusJson(UiState& ui) {
  const preview::StatusPicture picture = preview::DescribeStatusPaint(ui, kStatusArea);
  const platform::RECT& area = picture.rectangle;
  Json descriptor = FieldsJson(preview::kStatusFields, picture);
  descriptor["iconOrder"] = picture.iconOrder;
  descriptor["rectangle"] = {area.left, area.top, area.right, area.bottom};
  return {{"descriptor", descriptor},
          {"layers", LayersJson(preview::StackStatus(picture))},
          {"labels", Json::array()},
          {"iconOrder", picture.iconOrder},
          {"says", platform::ToUtf8(preview::SayStatus(picture))}};
}

/// The dialog draws on its frame by itself.
Json MarginJson(const UiState& ui) {
  const pages::MarginPicture picture = pages::DescribeMargin(ui);
  constexpr auto kSize = static_cast<int16_t>(pages::kMarginPictureSize);
  const auto frame = static_cast<uint16_t>(pages::MarginFrame(picture));
  return {{"descriptor",
           {{"landscape", int{picture.landscape}},
            {"layoutClass", picture.layoutClass},
            {"marginOn", int{picture.marginOn}},
            {"marginMode", picture.marginMode},
            {"marginEdge", picture.marginEdge},
            {"booklet", int{picture.booklet}},
            {"bookletEdge", picture.bookletEdge}}},
          {"layers", LayersJson({{frame, preview::Mode::kCopy, 0, 0, kSize, kSize, false}})},
          {"labels", Json::array()},
          {"says", platform::ToUtf8(preview::SayPaper(preview::DescribePaper(ui), preview::PaperFactsOf(ui)))}};
}

Json QualityJson(const UiState& ui) {
  const preview::QualitySample sample = preview::DescribeQuality(ui);
  const preview::QualitySources sources = preview::QualitySourcesOf(ui);
  return {{"descriptor",
           {{"density", sample.density},
            {"halftoneMode", sample.halftoneMode},
            {"screen", sample.screen},
            {"saveToner", sample.saveToner}}},
          {"source", sources.source},
          {"mask", sources.mask},
          {"layers", Json::array()},
          {"labels", Json::array()},
          {"says", platform::ToUtf8(preview::SayQuality(ui))}};
}

Json RectJson(const platform::RECT& r) {
  return {r.left, r.top, r.right, r.bottom};
}

Json PointJson(const std::optional<platform::POINT>& point) {
  return point ? Json{point->x, point->y} : Json(nullptr);
}

Json ColorJson(platform::COLORREF color) {
  return {color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF};
}

Json WatermarkJson(const UiState& ui, platform::Canvas& canvas, int scale) {
  constexpr platform::SIZE kSize = preview::kWatermarkPictureSize;
  const platform::RECT place = {0, 0, kSize.cx * scale, kSize.cy * scale};
  const preview::WatermarkPicture picture = preview::DescribeWatermark(
      ui, preview::CurrentWatermark(ui), preview::WatermarkView::kPage, place, canvas.FontFamilies(), canvas);
  const preview::PaperFrame& frame = picture.frame;
  const std::u16string_view face(picture.font.lfFaceName, platform::kFaceSize);
  return {{"descriptor",
           {{"control", RectJson(frame.control)},
            {"square", RectJson(frame.square)},
            {"halfW", frame.halfW},
            {"halfH", frame.halfH},
            {"W", frame.width},
            {"H", frame.height},
            {"L", frame.largest},
            {"insetX", frame.insetX},
            {"insetY", frame.insetY},
            {"paper", RectJson(frame.paper)},
            {"clip", RectJson(frame.clip)},
            {"fontHeight", picture.font.lfHeight},
            {"weight", picture.font.lfWeight},
            {"italic", int{picture.font.lfItalic}},
            {"escapement", picture.font.lfEscapement},
            {"face", platform::ToUtf8(face.substr(0, face.find(u'\0')))},
            {"color", ColorJson(picture.color)},
            {"textColor", ColorJson(picture.textColor)},
            {"offX", picture.offX},
            {"offY", picture.offY},
            {"textHeight", picture.textHeight},
            {"dx", picture.dx},
            {"dy", picture.dy},
            {"text", PointJson(picture.text)},
            {"cross", PointJson(picture.cross)},
            {"string", Printable(picture.string)}}},
          {"layers", Json::array()},
          {"labels", Json::array()},
          {"says", platform::ToUtf8(preview::SayWatermark(ui))}};
}

/// The sheet's texts and switches are `heron fax cover show`'s; the picture is drawn from them at once.
Json CoverJson(const UiState& ui) {
  if (ui.stores.faxCover == nullptr) throw std::bad_alloc();
  const FaxCoverStore& store = *ui.stores.faxCover;
  const platform::RECT sheet =
      pages::CoverSheetIn(ui, {0, 0, pages::kCoverPictureSize.cx, pages::kCoverPictureSize.cy});
  return {{"descriptor",
           {{"style", store.style},
            {"paper", store.fcsPaper},
            {"pages", store.pagenum},
            {"zoom", store.zoom},
            {"x", store.xPosition},
            {"y", store.yPosition},
            {"sheet", {sheet.left, sheet.top, sheet.right, sheet.bottom}},
            {"recipients", ui.head().faxRowCount}}},
          {"layers", Json::array()},
          {"labels", Json::array()},
          {"says", "fax cover sheet, style " + std::to_string(store.style)}};
}

}  // namespace

bool PictureOptions::NeedsDrawing() const {
  return !out.empty() || (json && kind == "watermark");
}

void PictureOptions::AddTo(CLI::App& app) {
  std::vector<std::string> names;
  for (const KindName& known : kKinds) names.emplace_back(known.name);
  app.add_option("KIND", kind, "paper, machine, device, status, margin, quality, watermark or cover")
      ->required()
      ->check(CLI::IsMember(names));
  app.add_option("-p,--printer", printer, "Printer whose settings to use")->required();
  app.add_option("--in", in, "Record to show instead of your own for this printer (- for standard input)");
  app.add_option("--entry", entry, "Saved settings to show, by name or number");
  app.add_option("-o", requests, "Change a setting for this picture only; changes are made in order")
      ->take_all()
      ->allow_extra_args(false);
  app.add_option("--out", out, "PNG or SVG file that receives the picture (- for PNG on standard output)");
  app.add_option("--sample", sample, "Picture of your own for quality, whatever a job can hold");
  app.add_option("--mask", mask, "Picture of the same size that is black where the sample has a photo");
  app.add_option("--scale", scale, "Scale factor, 1 to 16")->check(CLI::Range(1, kLargestScale));
  app.add_flag("--dark", dark, "On a dark ground, as in a window with light text");
  app.add_flag("--yes", yes, "Answer all questions with yes");
  app.add_flag("--json", json, "Answer as JSON: the descriptor, the stack and the sentence");
}

std::vector<std::string> PictureOptions::Words() const {
  std::vector<std::string> words = {"--printer=" + printer, "--scale=" + std::to_string(scale)};
  const auto add = [&](const char* name, const std::string& value) {
    if (!value.empty()) words.push_back(name + value);
  };
  add("--in=", in);
  add("--entry=", entry);
  add("--sample=", sample);
  add("--mask=", mask);
  add("--out=", out);
  for (const std::string& request : requests) words.insert(words.end(), {"-o", request});
  if (dark) words.emplace_back("--dark");
  if (yes) words.emplace_back("--yes");
  if (json) words.emplace_back("--json");
  words.push_back(kind);
  return words;
}

PictureSession::PictureSession(const PictureOptions& options)
    : kind_(KindOf(options)),
      printer_(options.printer),
      opened_(printer_, options.printer, options.in, SheetOf(kind_)),
      view_(options.yes ? Consent::kYes : Consent::kAsk, true),
      ui_(opened_.engine().ui) {
  opened_.Open(!options.requests.empty());
  if (!options.entry.empty()) TakeEntry(options.entry);
  MakeRequests(options);
}

/// After each change the status panel is painted, as in a window: painting updates the order of its symbols.
void PictureSession::MakeRequests(const PictureOptions& options) {
  const auto paint = [this] { preview::DescribeStatusPaint(*ui_, kStatusArea); };
  paint();
  if (options.requests.empty()) return;
  const Catalogue catalogue(ReadLocaleCountry());
  for (const std::string& request : options.requests) {
    // One by one: each change is painted before the next, which the order of the symbols depends on.
    const std::vector<ChangeRecord> change =
        MakeChanges(opened_, {request}, kind_ == PictureKind::kDevice, catalogue, view_);
    int code = kDone;
    const std::string failure = WhyNot(change, view_, &code);
    if (!failure.empty()) throw Failure(code, failure);
    engine::DeriveLayout(*ui_);
    engine::DeriveBindMargin(*ui_);
    paint();
  }
}

void PictureSession::TakeEntry(const std::string& entry) {
  library_ = SettingsLibraryOpen(view_, opened_.ui(), opened_.resources(), LibraryLoad::kSettings, LibraryWrites::kNo);
  if (library_ == nullptr) throw Failure(kFailed, "the library's list can't be read now, or is damaged; try again");
  ui_ = library_->At(PlaceOfEntry(*library_, entry))->state.get();
  if (ui_ == nullptr) throw Failure(kFailed, "the settings \"" + Printable(entry) + "\" can't be read");
}

Json PictureSession::Answer(platform::Canvas* canvas, int scale) {
  switch (kind_) {
    case PictureKind::kMachine:
      return MachineJson(ui(), true);
    case PictureKind::kDevice:
      return MachineJson(ui(), false);
    case PictureKind::kStatus:
      return StatusJson(ui());
    case PictureKind::kMargin:
      return MarginJson(ui());
    case PictureKind::kQuality:
      return QualityJson(ui());
    case PictureKind::kWatermark:
      if (canvas == nullptr) throw std::logic_error("a watermark's letters need a canvas");
      return WatermarkJson(ui(), *canvas, scale);
    case PictureKind::kCover:
      return CoverJson(ui());
    case PictureKind::kPaper:
      break;
  }
  return PaperJson(ui());
}

}  // namespace heron::cli

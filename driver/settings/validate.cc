// The steps and their order are those of the record's contract: later steps see what earlier ones wrote, also where
// another order would settle sooner.
#include "settings/validate.h"

#include <string>

#include "catalog/other_values.h"
#include "catalog/paper_codes.h"
#include "generated/features.h"
#include "platform/api/devmode.h"
#include "settings/binding.h"
#include "settings/papers.h"
#include "settings/printer_data.h"
#include "settings/public_part.h"
#include "settings/zoom.h"

namespace heron {
namespace {

using namespace platform;

namespace bind = value::lpBindPosit;
namespace duplex = value::dmDuplex;
namespace orientation = value::lpOrientation;
namespace output = value::lpOutput;
namespace print_type = value::lpPRNType;

constexpr int16_t kCatalogueDpi = 300;  ///< of the catalogue's dots

/// What one pass carries from step to step.
struct Pass {
  const ResourceContext* resources;
  DriverEnv& env;
  HANDLE printer;
  uint16_t oldResolution = 0;
  bool resolutionChanged = false;
};

/// A paper's geometry in the units of the record.
struct Geometry {
  int64_t width = 0;  ///< hundredths of a millimetre
  int64_t height = 0;
  Rect margins{};     ///< printable rectangle, hundredths of a millimetre
  Rect marginDots{};  ///< the same in dots
  uint32_t dotWidth = 0;
  uint32_t dotHeight = 0;
};

/// A stored size: the value if the feature's range holds it, else the range's default.
uint16_t ClampToRange(const ResourceContext* resources, uint16_t feature, int64_t value) {
  const auto min = static_cast<int32_t>(CatalogQuery(resources, feature, kMin, nullptr, 0, 0));
  const auto max = static_cast<int32_t>(CatalogQuery(resources, feature, kMax, nullptr, 0, 0));
  const bool legal = value >= min && value <= max;
  return legal ? static_cast<uint16_t>(value) : static_cast<uint16_t>(CatalogDefault(resources, feature));
}

uint16_t StoredWidth(const Pass& pass, int64_t width) {
  return ClampToRange(pass.resources, feature::UDPaperWidth, width / 10);
}
uint16_t StoredHeight(const Pass& pass, int64_t height) {
  return ClampToRange(pass.resources, feature::UDPaperLength, height / 10);
}

// Resolution

/// The job goes to the printer, at a quality that the printer has.
void MakePrintJob(Pass& pass, int16_t old_quality) {
  const bool legal = CatalogIndexOf(feature::lpResolution, old_quality) >= 0;
  Set<"lpOutput">(pass.env, output::kPrinter);
  Set<"dmPrintQuality">(
      pass.env, legal ? old_quality : static_cast<int16_t>(CatalogDefault(pass.resources, feature::lpResolution)));
}

void ResolveResolution(Pass& pass) {
  DriverEnv& env = pass.env;
  const int16_t old_quality = Get<"dmPrintQuality">(env);
  pass.oldResolution = Get<"lpResolution">(env);
  if (Get<"lpOutput">(env) != output::kFax) {
    MakePrintJob(pass, old_quality);
  } else if (Get<"faxAddressCount">(env) != 0) {
    Set<"dmPrintQuality">(env, Get<"lpQuality">(env));
  } else if (BookModeStatus(GetText<"dmDeviceName">(env)) == 0) {
    MakePrintJob(pass, old_quality);  // a fax that has no recipients, and isn't the spreadsheet program's
  }
  Set<"dmYResolution">(env, Get<"dmPrintQuality">(env));
  if (Get<"lpOutput">(env) == output::kPrinter) {
    pass.resolutionChanged = static_cast<uint16_t>(Get<"dmPrintQuality">(env)) != pass.oldResolution;
  } else {
    Set<"lpResolution">(env, old_quality);
  }
}

// Papers

/// What is stored of a computed length. A negative one, of a size or quality that no printer has, counts as none: its
/// low bits would be a length of kilometres.
uint32_t StoredLength(int64_t length) {
  return static_cast<uint32_t>(std::max<int64_t>(length, 0));
}

/// Catalogue dots, at the resolution in force.
uint32_t ScaleDots(uint32_t dots, int16_t quality) {
  switch (quality) {
    case kCatalogueDpi:
      return dots;
    case 2 * kCatalogueDpi:
      return dots << 1;
    case 4 * kCatalogueDpi:
      return dots << 2;
    default:
      return StoredLength(int64_t{dots} * quality / kCatalogueDpi);
  }
}

Rect ScaleDots(const Rect& dots, int16_t quality) {
  return {ScaleDots(dots.left, quality), ScaleDots(dots.top, quality), ScaleDots(dots.right, quality),
          ScaleDots(dots.bottom, quality)};
}

/// A catalogue paper; one that the feature hasn't got takes the sizes of row 0, one without geometry is 0 throughout.
Geometry CatalogGeometry(const Pass& pass, int32_t code) {
  const auto row = static_cast<uint32_t>(std::max(CatalogIndexOf(feature::lpMediaSize, code), 0));
  const int16_t quality = Get<"dmPrintQuality">(pass.env);
  uint32_t size[2] = {};
  uint32_t dots[2] = {};
  Geometry paper;
  CatalogQuery(pass.resources, feature::lpMediaSize, kSize, size, row, sizeof size);
  CatalogQuery(pass.resources, feature::lpMediaSize, kMargin, &paper.margins, row, sizeof paper.margins);
  CatalogQuery(pass.resources, feature::lpMediaSize, kDotMargin, &paper.marginDots, row, sizeof paper.marginDots);
  CatalogQuery(pass.resources, feature::lpMediaSize, kDotSize, dots, row, sizeof dots);
  paper.width = size[0];
  paper.height = size[1];
  paper.marginDots = ScaleDots(paper.marginDots, quality);
  paper.dotWidth = ScaleDots(dots[0], quality);
  paper.dotHeight = ScaleDots(dots[1], quality);
  return paper;
}

/// A user paper of this size: margins from the paper source, dots at the resolution in force.
Geometry UserGeometry(const Pass& pass, int64_t width, int64_t height) {
  const int64_t quality = Get<"dmPrintQuality">(pass.env);
  const Margins edge = UserPaperMargins(Get<"lpMediaSource">(pass.env), Get<"lpSourceUnit">(pass.env),
                                        static_cast<int32_t>(width), static_cast<int32_t>(height));
  const int64_t printable_width = std::max<int64_t>(width - edge.left - edge.right, 0);
  const int64_t printable_height = std::max<int64_t>(height - edge.top - edge.bottom, 0);
  const int64_t dot_left = (edge.left * quality + 1270) / 2540;
  const int64_t dot_top = (edge.top * quality + 1270) / 2540;

  Geometry paper;
  paper.width = width;
  paper.height = height;
  paper.margins = {edge.left, edge.top, StoredLength(edge.left + printable_width),
                   StoredLength(edge.top + printable_height)};
  paper.marginDots = {StoredLength(dot_left), StoredLength(dot_top),
                      StoredLength(printable_width * quality / 2540 + dot_left),
                      StoredLength(printable_height * quality / 2540 + dot_top)};
  paper.dotWidth = StoredLength(width * quality / 2540);
  paper.dotHeight = StoredLength(height * quality / 2540);
  return paper;
}

/// The stored user paper `code`, hundredths of a millimetre.
void StoredUserSize(const Pass& pass, int32_t code, int64_t* width, int64_t* height) {
  uint32_t thou_width = 0;
  uint32_t thou_height = 0;
  ReadUserPaperSize(code, &thou_width, &thou_height, pass.printer);
  *width = int64_t{thou_width} * 2540 / 1000;
  *height = int64_t{thou_height} * 2540 / 1000;
}

Geometry ResolveUserDocument(Pass& pass) {
  DriverEnv& env = pass.env;
  int64_t width = Get<"dmPaperWidth">(env) * int64_t{10};
  int64_t height = Get<"dmPaperLength">(env) * int64_t{10};
  const int16_t code = Get<"dmPaperSize">(env);
  if (code != kLastUserPaper || width == 0 || height == 0) StoredUserSize(pass, code, &width, &height);

  const Geometry paper = UserGeometry(pass, width, height);
  Set<"UDPaperWidth">(env, StoredWidth(pass, width));
  Set<"UDPaperLength">(env, StoredHeight(pass, height));
  Set<"dmPaperWidth">(env, Get<"UDPaperWidth">(env));
  Set<"dmPaperLength">(env, Get<"UDPaperLength">(env));
  SetRect<"paperMarginsDotsCopy">(env, paper.marginDots);
  Set<"dmFields">(env, Get<"dmFields">(env) | DM_PAPERLENGTH | DM_PAPERWIDTH);
  return paper;
}

Geometry ResolvePlainDocument(Pass& pass) {
  DriverEnv& env = pass.env;
  const Geometry paper = CatalogGeometry(pass, Get<"dmPaperSize">(env));
  Set<"dmPaperWidth">(env, paper.width / 10);
  Set<"dmPaperLength">(env, paper.height / 10);
  Set<"UDPaperWidth">(env, StoredWidth(pass, 0));
  Set<"UDPaperLength">(env, StoredHeight(pass, 0));
  Set<"dmFields">(env, Get<"dmFields">(env) & ~(DM_PAPERLENGTH | DM_PAPERWIDTH));
  return paper;
}

Geometry ResolveDocumentPaper(Pass& pass) {
  DriverEnv& env = pass.env;
  const int16_t code = Get<"dmPaperSize">(env);
  if (code != static_cast<int16_t>(Get<"documentPaperSnapshot">(env)) &&
      Get<"QXOutputPaperSize">(env) == kSameAsDocument) {
    Set<"lpOutputPaper">(env, code);
  }
  const Geometry paper = IsCustomPaper(code) ? ResolveUserDocument(pass) : ResolvePlainDocument(pass);
  SetRect<"paperMargins">(env, paper.margins);
  SetRect<"paperMarginsDots">(env, paper.marginDots);
  Set<"paperSizeDots">(env, paper.dotWidth, 0);
  Set<"paperSizeDots">(env, paper.dotHeight, 1);
  return paper;
}

void SetOutput(DriverEnv& env, const Geometry& paper, uint16_t width, uint16_t length) {
  Set<"outputPaperWidth">(env, width);
  Set<"outputPaperLength">(env, length);
  SetRect<"outputMargins">(env, paper.margins);
  SetRect<"outputMarginsDots">(env, paper.marginDots);
  Set<"outputSizeDots">(env, paper.dotWidth, 0);
  Set<"outputSizeDots">(env, paper.dotHeight, 1);
}

void ResolveUserOutput(Pass& pass, const Geometry& document) {
  DriverEnv& env = pass.env;
  const uint16_t code = Get<"lpOutputPaper">(env);
  int64_t width = document.width;
  int64_t height = document.height;
  if (code != static_cast<uint16_t>(Get<"dmPaperSize">(env))) StoredUserSize(pass, code, &width, &height);
  SetOutput(env, UserGeometry(pass, width, height), static_cast<uint16_t>(StoredLength(width / 10)),
            static_cast<uint16_t>(StoredLength(height / 10)));
  Set<"UDMediaWidth">(env, StoredWidth(pass, width));
  Set<"UDMediaLength">(env, StoredHeight(pass, height));
}

void ResolvePlainOutput(Pass& pass) {
  DriverEnv& env = pass.env;
  const auto family = static_cast<uint16_t>(Get<"dmPaperSize">(env)) & paper::kFamilyF;
  Set<"lpOutputPaper">(env, (Get<"lpOutputPaper">(env) & ~paper::kFamilyF) | family);
  const Geometry paper = CatalogGeometry(pass, Get<"lpOutputPaper">(env));
  SetOutput(env, paper, static_cast<uint16_t>(paper.width / 10), static_cast<uint16_t>(paper.height / 10));
  Set<"UDMediaWidth">(env, StoredWidth(pass, 0));
  Set<"UDMediaLength">(env, StoredHeight(pass, 0));
}

void ResolveOutputPaper(Pass& pass, const Geometry& document) {
  DriverEnv& env = pass.env;
  if (Get<"ZoomCheck">(env) == 0 || Get<"lpOutputPaper">(env) == 0) {
    Set<"lpOutputPaper">(env, Get<"dmPaperSize">(env));
    SetOutput(env, document, static_cast<uint16_t>(Get<"dmPaperWidth">(env)),
              static_cast<uint16_t>(Get<"dmPaperLength">(env)));
    Set<"UDMediaWidth">(env, Get<"UDPaperWidth">(env));
    Set<"UDMediaLength">(env, Get<"UDPaperLength">(env));
  } else if (IsCustomPaper(Get<"lpOutputPaper">(env))) {
    ResolveUserOutput(pass, document);
  } else {
    ResolvePlainOutput(pass);
  }
}

// Zoom

bool ReducesForMargin(const DriverEnv& env) {
  const bool layout = IsOn<"BindMargin_Check">(env) && IsOn<"Layout_Check2">(env);
  const bool pod = IsOn<"POD_BindMargin_Check">(env) && IsOn<"POD_Check">(env);
  return (layout || pod) && Get<"lpMarginMode">(env) == value::lpMarginMode::kReduce;
}

void ResolveZoom(Pass& pass) {
  DriverEnv& env = pass.env;
  int64_t zoom = Get<"Zoom">(env);
  if (pass.resolutionChanged) {
    if (Get<"dmPrintQuality">(env) == kCatalogueDpi) {
      Set<"ZoomCheck">(env, value::ZoomCheck::kOn);
      zoom *= 2;
    } else if (pass.oldResolution == kCatalogueDpi) {
      Set<"ZoomCheck">(env, Get<"uiZoomMode">(env));
      zoom /= 2;
    }
    Set<"lpResolution">(env, Get<"dmPrintQuality">(env));
  }
  if (Get<"ZoomCheck">(env) == 0) {
    Set<"Zoom">(env, 100);
    return;
  }
  const int16_t paper = Get<"dmPaperSize">(env);
  if (paper != static_cast<int16_t>(Get<"documentPaperSnapshot">(env))) {
    zoom = ComputeFitZoom(GetRect<"paperMargins">(env), GetRect<"outputMargins">(env));
    Set<"documentPaperSnapshot">(env, paper);
    Set<"uiZoomMode">(env, value::UIZoomMode::kOn);
  }
  if (ReducesForMargin(env)) zoom = ComputeMarginZoom(env);
  Set<"Zoom">(env, ClampToRange(pass.resources, feature::Zoom, zoom));
}

// Duplex and binding

/// A two-sided job takes a binding position on the edge about which its sheets flip.
void FitBindingToDuplex(DriverEnv& env) {
  const int16_t side = SheetOrientation(env);
  const int16_t flip = Get<"dmDuplex">(env);
  const uint8_t position = Get<"lpBindPosit">(env);
  const auto beside = [](uint8_t edge) { return edge == bind::kLeft || edge == bind::kRight; };
  if ((side == orientation::kLandscape && flip == duplex::kShortEdge) ||
      (side == orientation::kPortrait && flip == duplex::kLongEdge)) {
    const bool fits = position == bind::kAuto ? beside(ComputeBindingSide(env)) : beside(position);
    if (!fits) Set<"lpBindPosit">(env, bind::kLeft);
  } else if (position == bind::kAuto ? ComputeBindingSide(env) != bind::kTop : beside(position)) {
    Set<"lpBindPosit">(env, bind::kTop);
  }
}

void ResolveDuplex(DriverEnv& env) {
  const int16_t flip = Get<"dmDuplex">(env);
  if (flip != duplex::kLongEdge && flip != duplex::kShortEdge) {
    Set<"dmDuplex">(env, duplex::kOneSided);
    Set<"lpPRNType">(env, print_type::kOneSided);
  } else if (Get<"lpPRNType">(env) != print_type::kBooklet) {
    Set<"lpPRNType">(env, print_type::kTwoSided);
    FitBindingToDuplex(env);
  }
  Set<"bindingSide">(env, ComputeBindingSide(env));
  Set<"lpBindMargin">(env, ComputeBindMarginSide(env));
}

void Close(const ResourceContext* resources, DriverEnv& env) {
  Set<"dmCopies">(env, LegalCopies(resources, Get<"dmCopies">(env)));
  std::memcpy(FieldBytes<"publicMirror">(env), env.bytes.data(), kPublicSize);
  Set<"renderCopyB">(env, Get<"renderCopyA">(env));
  const bool raster = Get<"lpGraphicsMode">(env) == value::lpGraphicsMode::kRaster;
  Set<"renderMode">(env, raster ? value::renderMode::kRaster : value::renderMode::kVector);
  Set<"renderFlagA">(env, 1);
  Set<"renderFlagB">(env, 1);
  Set<"renderFlagC">(env, 1);
  Set<"maxCopies">(env, CatalogQuery(resources, feature::Copies, kMax, nullptr, 0, 0));
  const bool has_form = !TextIs<"overlayName">(env, u"") && !TextIs<"overlayName">(env, u"HR_DEFAULT");
  if (Get<"lpOverlay">(env) != value::lpOverlay::kNoOverlay && !has_form)
    Set<"lpOverlay">(env, value::lpOverlay::kNoOverlay);
  Set<"lpMediaSource">(env, Get<"dmDefaultSource">(env));
}

}  // namespace

bool ValidateEnv(const ResourceContext* resources, DriverEnv* env, HANDLE printer) {
  if (resources == nullptr) return false;
  Pass pass{.resources = resources, .env = *env, .printer = printer};
  InitPublicPart(env, nullptr);
  ResolveResolution(pass);
  const Geometry document = ResolveDocumentPaper(pass);
  ResolveOutputPaper(pass, document);
  ResolveZoom(pass);
  ResolveDuplex(*env);
  Close(resources, *env);
  return true;
}

}  // namespace heron

// The steps and their order are those of the record's contract: later steps see what earlier ones wrote, also where
// another order would settle sooner.
#include "settings/validate.h"

#include <string>

#include "platform/devmode.h"
#include "settings/binding.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "settings/papers.h"
#include "settings/printer_data.h"
#include "settings/zoom.h"

namespace heron {
namespace {

using namespace platform;

constexpr uint8_t kFax = 1;
constexpr uint8_t kPrint = 2;
constexpr uint16_t kFullFamilyBit = 0x1000;

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
  return ClampToRange(pass.resources, 164, width / 10);
}
uint16_t StoredHeight(const Pass& pass, int64_t height) {
  return ClampToRange(pass.resources, 165, height / 10);
}

// Resolution

void TakePrintQuality(Pass& pass, int16_t old_quality) {
  const bool legal = CatalogIndexOf(5, old_quality) >= 0;
  Set<"dmPrintQuality">(pass.env, legal ? old_quality : static_cast<int16_t>(CatalogDefault(pass.resources, 5)));
}

void ResolveResolution(Pass& pass) {
  DriverEnv& env = pass.env;
  const int16_t old_quality = Get<"dmPrintQuality">(env);
  pass.oldResolution = Get<"lpResolution">(env);
  if (Get<"lpOutput">(env) != kFax) {
    Set<"lpOutput">(env, kPrint);
    TakePrintQuality(pass, old_quality);
  } else if (Get<"faxAddressCount">(env) != 0) {
    Set<"dmPrintQuality">(env, Get<"lpQuality">(env));
  } else if (BookModeStatus(GetText<"dmDeviceName">(env)) == 0) {
    TakePrintQuality(pass, old_quality);
  }
  Set<"dmYResolution">(env, Get<"dmPrintQuality">(env));
  if (Get<"lpOutput">(env) == kPrint) {
    pass.resolutionChanged = static_cast<uint16_t>(Get<"dmPrintQuality">(env)) != pass.oldResolution;
  } else {
    Set<"lpResolution">(env, old_quality);
  }
}

// Papers

/// Catalogue dots, which are at 300 dpi, at the resolution in force.
uint32_t ScaleDots(uint32_t dots, int16_t quality) {
  switch (quality) {
    case 300:
      return dots;
    case 600:
      return dots << 1;
    case 1200:
      return dots << 2;
    default:
      return static_cast<uint32_t>(int64_t{dots} * quality / 300);
  }
}

Rect ScaleDots(const Rect& dots, int16_t quality) {
  return {ScaleDots(dots.left, quality), ScaleDots(dots.top, quality), ScaleDots(dots.right, quality),
          ScaleDots(dots.bottom, quality)};
}

/// A catalogue paper; one that feature 0 hasn't got takes the sizes of row 0, one without geometry is 0 throughout.
Geometry CatalogGeometry(const Pass& pass, int32_t code) {
  const auto row = static_cast<uint32_t>(std::max(CatalogIndexOf(0, code), 0));
  const int16_t quality = Get<"dmPrintQuality">(pass.env);
  uint32_t size[2] = {};
  uint32_t dots[2] = {};
  Geometry paper;
  CatalogQuery(pass.resources, 0, kSize, size, row, sizeof size);
  CatalogQuery(pass.resources, 0, kMargin, &paper.margins, row, sizeof paper.margins);
  CatalogQuery(pass.resources, 0, kDotMargin, &paper.marginDots, row, sizeof paper.marginDots);
  CatalogQuery(pass.resources, 0, kDotSize, dots, row, sizeof dots);
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
  const auto stored = [](int64_t value) { return static_cast<uint32_t>(value); };
  const int64_t dot_left = (edge.left * quality + 1270) / 2540;
  const int64_t dot_top = (edge.top * quality + 1270) / 2540;

  Geometry paper;
  paper.width = width;
  paper.height = height;
  paper.margins = {edge.left, edge.top, stored(edge.left + printable_width), stored(edge.top + printable_height)};
  paper.marginDots = {stored(dot_left), stored(dot_top), stored(printable_width * quality / 2540 + dot_left),
                      stored(printable_height * quality / 2540 + dot_top)};
  paper.dotWidth = stored(width * quality / 2540);
  paper.dotHeight = stored(height * quality / 2540);
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
  SetOutput(env, UserGeometry(pass, width, height), static_cast<uint16_t>(width / 10),
            static_cast<uint16_t>(height / 10));
  Set<"UDMediaWidth">(env, StoredWidth(pass, width));
  Set<"UDMediaLength">(env, StoredHeight(pass, height));
}

void ResolvePlainOutput(Pass& pass) {
  DriverEnv& env = pass.env;
  const auto family = static_cast<uint16_t>(Get<"dmPaperSize">(env)) & kFullFamilyBit;
  Set<"lpOutputPaper">(env, (Get<"lpOutputPaper">(env) & ~kFullFamilyBit) | family);
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
  const bool layout = Get<"BindMargin_Check">(env) == 1 && Get<"Layout_Check2">(env) == 1;
  const bool pod = Get<"POD_BindMargin_Check">(env) == 1 && Get<"POD_Check">(env) == 1;
  return (layout || pod) && Get<"lpMarginMode">(env) == 2;
}

void ResolveZoom(Pass& pass) {
  DriverEnv& env = pass.env;
  int64_t zoom = Get<"Zoom">(env);
  if (pass.resolutionChanged) {
    if (Get<"dmPrintQuality">(env) == 300) {
      Set<"ZoomCheck">(env, 1);
      zoom *= 2;
    } else if (pass.oldResolution == 300) {
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
    Set<"uiZoomMode">(env, 1);
  }
  if (ReducesForMargin(env)) zoom = ComputeMarginZoom(env);
  Set<"Zoom">(env, ClampToRange(pass.resources, 26, zoom));
}

// Duplex and binding

/// A two-sided job takes a binding position on the edge about which its sheets flip.
void FitBindingToDuplex(DriverEnv& env) {
  const int16_t orientation = SheetOrientation(env);
  const int16_t duplex = Get<"dmDuplex">(env);
  const uint8_t position = Get<"lpBindPosit">(env);
  const auto beside = [](uint8_t side) { return side == 2 || side == 3; };
  if ((orientation == 2 && duplex == 3) || (orientation == 1 && duplex == 2)) {
    const bool fits = position == 1 ? beside(ComputeBindingSide(env)) : beside(position);
    if (!fits) Set<"lpBindPosit">(env, 2);
  } else if (position == 1 ? ComputeBindingSide(env) != 4 : beside(position)) {
    Set<"lpBindPosit">(env, 4);
  }
}

void ResolveDuplex(DriverEnv& env) {
  const int16_t duplex = Get<"dmDuplex">(env);
  if (duplex != 2 && duplex != 3) {
    Set<"dmDuplex">(env, 1);
    Set<"lpPRNType">(env, 1);
  } else if (Get<"lpPRNType">(env) != 3) {
    Set<"lpPRNType">(env, 2);
    FitBindingToDuplex(env);
  }
  Set<"bindingSide">(env, ComputeBindingSide(env));
  Set<"lpBindMargin">(env, ComputeBindMarginSide(env));
}

void Close(const ResourceContext* resources, DriverEnv& env) {
  Set<"dmCopies">(env, LegalCopies(resources, Get<"dmCopies">(env)));
  std::memcpy(FieldBytes<"publicMirror">(env), env.bytes.data(), kPublicSize);
  Set<"renderCopyB">(env, Get<"renderCopyA">(env));
  Set<"renderMode">(env, Get<"lpGraphicsMode">(env) == 1 ? 3 : 2);
  Set<"renderFlagA">(env, 1);
  Set<"renderFlagB">(env, 1);
  Set<"renderFlagC">(env, 1);
  Set<"maxCopies">(env, CatalogQuery(resources, 2, kMax, nullptr, 0, 0));
  const bool has_form = !TextIs<"overlayName">(env, u"") && !TextIs<"overlayName">(env, u"HR_DEFAULT");
  if (Get<"lpOverlay">(env) != 1 && !has_form) Set<"lpOverlay">(env, 1);
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

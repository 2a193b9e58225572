#include "preview/paper_view.h"

#include <algorithm>

#include "engine/setting.h"
#include "engine/sizes.h"
#include "generated/values.h"
#include "settings/binding.h"
#include "settings/papers.h"

namespace heron::preview {

using engine::IsOn;
using engine::Setting;

namespace {

namespace bind = value::lpBindPosit;  // of a resolved binding edge too
namespace layout = value::lpLayout;
namespace punch = value::lpPunchHoles;
namespace staple = value::lpStaple;

constexpr uint8_t kFlip4 = 4, kFlip5 = 5;

/// 1 left, 2 right, 3 top; 0 for an edge that isn't known.
uint8_t EdgeCode(uint8_t edge) {
  return edge >= bind::kLeft && edge <= bind::kTop ? static_cast<uint8_t>(edge - 1) : uint8_t{0};
}

/// The value, or 0 if it is above `highest`.
uint8_t Within(uint16_t value, uint8_t highest) {
  return value <= highest ? static_cast<uint8_t>(value) : uint8_t{0};
}

uint8_t LayoutClass(uint16_t layout) {
  constexpr uint16_t kLayouts[] = {layout::kTwoPages, layout::kFourPages, layout::kSixPages, layout::kNinePages,
                                   layout::kSixteenPages};  // classes 1 to 5
  const auto* const found = std::ranges::find(kLayouts, layout);
  return found == std::end(kLayouts) ? uint8_t{0} : static_cast<uint8_t>(found - kLayouts + 1);
}

uint8_t StapleMark(uint16_t staple, uint8_t edge, bool automatic) {
  switch (staple) {
    case staple::kCorner:
      return edge == bind::kLeft ? 1 : edge == bind::kRight ? 2 : edge == bind::kTop && automatic ? 1 : 0;
    case staple::kUpperLeft:
      return edge == bind::kTop ? 1 : 0;
    case staple::kUpperRight:
      return edge == bind::kTop ? 2 : 0;
    case staple::kTwoStaples:
      return edge == bind::kLeft ? 3 : edge == bind::kRight ? 4 : edge == bind::kTop ? 5 : 0;
    default:
      return 0;
  }
}

void DescribeDuplex(const UiState& ui, uint8_t edge, PaperPicture& picture) {
  if (Setting<u"lpPRNType">(ui) != value::lpPRNType::kTwoSided) return;
  if (IsOn<u"AdhesiveBind_Check">(ui)) {
    picture.adhesive = 1;
    picture.adhesiveEdge = EdgeCode(edge);
  }
  const bool landscape = picture.landscape != 0;
  if (edge == bind::kLeft || edge == bind::kRight) {
    picture.duplexFlip = landscape ? kFlip4 : kFlip5;
  } else if (edge == bind::kTop && IsOn<u"Staple_Check">(ui) && Setting<u"lpStaple">(ui) == staple::kCorner) {
    // Which way a corner opens isn't known where the edge was chosen.
    if (Setting<u"lpBindPosit">(ui) != bind::kAuto) return;
    picture.duplexFlip = kFlip5;
  } else if (edge == bind::kTop) {
    picture.duplexFlip = landscape ? kFlip5 : kFlip4;
  }
  picture.duplexEdge = EdgeCode(edge);
}

/// What loose sheets have and booklets haven't.
void DescribeLooseSheets(const UiState& ui, uint8_t edge, PaperPicture& picture) {
  if (IsOn<u"POD_OnePerSheet_Check">(ui)) {
    picture.layoutClass |= kTwoSheets;
    picture.landscape ^= 1;
    picture.onePerSheet = Within(Setting<u"lpPOD_OnePerSheet">(ui), 6);
  }
  DescribeDuplex(ui, edge, picture);
  if (IsOn<u"Staple_Check">(ui))
    picture.stapleMark = StapleMark(Setting<u"lpStaple">(ui), edge, Setting<u"lpBindPosit">(ui) == bind::kAuto);
  if (IsOn<u"Punch_Check">(ui)) {
    const uint16_t holes = Setting<u"lpPunchHoles">(ui);
    picture.punchEdge = EdgeCode(edge);
    picture.punchHoles = holes == punch::kThreeHoles || holes == punch::kFourHoles ? static_cast<uint8_t>(holes)
                                                                                   : uint8_t{punch::kTwoHoles};
  }
}

/// 0 bound right, 1 left, 2 top. A landscape booklet opens at the top even where its edge isn't known.
uint8_t BookletSide(uint8_t edge, bool landscape) {
  const uint8_t fold = FoldEdge(edge, landscape);
  return fold == bind::kTop || landscape ? 2 : fold == bind::kLeft ? 1 : 0;
}

uint8_t ZoomMark(const UiState& ui) {
  if (Setting<u"lpOutputPaper">(ui) == kSameAsDocument) return 0;
  const uint16_t zoom = Setting<u"Zoom">(ui);
  return zoom < 100 ? 2 : zoom > 100 ? 1 : 0;
}

}  // namespace

constexpr std::array<PaperField, 19> kPaperFields = {{
    {"landscape", &PaperPicture::landscape},
    {"zoomMark", &PaperPicture::zoomMark},
    {"layoutClass", &PaperPicture::layoutClass},
    {"stapleMark", &PaperPicture::stapleMark},
    {"punchEdge", &PaperPicture::punchEdge},
    {"punchHoles", &PaperPicture::punchHoles},
    {"bindMark", &PaperPicture::bindMark},
    {"marginOn", &PaperPicture::marginOn},
    {"marginMode", &PaperPicture::marginMode},
    {"marginEdge", &PaperPicture::marginEdge},
    {"duplexEdge", &PaperPicture::duplexEdge},
    {"duplexFlip", &PaperPicture::duplexFlip},
    {"order", &PaperPicture::order},
    {"border", &PaperPicture::border},
    {"booklet", &PaperPicture::booklet},
    {"bookletSide", &PaperPicture::bookletSide},
    {"onePerSheet", &PaperPicture::onePerSheet},
    {"adhesive", &PaperPicture::adhesive},
    {"adhesiveEdge", &PaperPicture::adhesiveEdge},
}};

uint8_t LayoutClassOf(const UiState& ui) {
  const uint8_t layout = IsOn<u"Nup_Check">(ui) ? LayoutClass(Setting<u"lpLayout">(ui)) : uint8_t{0};
  return IsOn<u"POD_OnePerSheet_Check">(ui) ? layout | kTwoSheets : layout;
}

uint8_t FoldEdge(uint8_t edge, bool landscape) {
  if (landscape) return edge == bind::kLeft || edge == bind::kRight ? bind::kTop : edge;
  return edge == bind::kTop ? bind::kLeft : edge;
}

PaperPicture DescribePaper(const UiState& ui) {
  const uint8_t edge = engine::ResolveBindingEdge(ui);
  PaperPicture picture;
  picture.landscape = Setting<u"lpOrientation">(ui) == value::lpOrientation::kLandscape;
  if (IsOn<u"Nup_Check">(ui)) {
    const uint16_t layout = Setting<u"lpLayout">(ui);
    picture.layoutClass = LayoutClass(layout);
    if (LayoutTurnsPages(layout)) picture.landscape ^= 1;
    picture.order = Within(Setting<u"lpOrder">(ui), value::lpOrder::kDownThenLeft);
    picture.border = Within(Setting<u"lpBorder">(ui), value::lpBorder::kDotted);
  }
  if (IsOn<u"BindMargin_Check">(ui)) {
    picture.marginOn = 1;
    picture.marginMode = static_cast<uint8_t>(Setting<u"lpMarginMode">(ui));
    picture.marginEdge = EdgeCode(edge);
  } else {
    picture.bindMark = EdgeCode(edge);
  }
  if (Setting<u"lpPRNType">(ui) == value::lpPRNType::kBooklet) {
    picture.booklet = 1;
    picture.bookletSide = BookletSide(edge, picture.landscape != 0);
  } else {
    DescribeLooseSheets(ui, edge, picture);
  }
  picture.zoomMark = ZoomMark(ui);
  return picture;
}

}  // namespace heron::preview

// The paper view: what the printed sheet will look like, from the settings to a stack of pictures.
//
// Two steps without a window, so that the sheet, a command and a test show the same: settings to a descriptor of plain
// codes, descriptor to a stack. Nothing is kept between calls.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "preview/layer.h"
#include "uistate/ui_state.h"

namespace heron::preview {

inline constexpr int16_t kSheetArea = 100;  ///< side of the square that a paper stack fills at scale 1

/// Added to a layout class where the pages of two sheets share one.
inline constexpr uint8_t kTwoSheets = 8;

/// What the paper view shows. Fields that don't apply are 0. Edges are 1 left, 2 right, 3 top.
struct PaperPicture {
  uint8_t landscape = 0;    ///< the sheet as it is drawn
  uint8_t zoomMark = 0;     ///< 1 enlarge, 2 reduce
  uint8_t layoutClass = 0;  ///< 0 one page, 1 to 5 for 2, 4, 6, 9 and 16; with kTwoSheets
  uint8_t stapleMark = 0;   ///< 1 corner left, 2 corner right, 3 two left, 4 two right, 5 two top
  uint8_t punchEdge = 0;
  uint8_t punchHoles = 0;  ///< 2, 3 or 4
  uint8_t bindMark = 0;    ///< the binding edge where no margin is set
  uint8_t marginOn = 0;
  uint8_t marginMode = 0;  ///< 1 the page moves, 2 it is reduced
  uint8_t marginEdge = 0;
  uint8_t duplexEdge = 0;
  uint8_t duplexFlip = 0;  ///< 4, 5: how the back is turned against the front
  uint8_t order = 0;       ///< 1 to 6
  uint8_t border = 0;      ///< 1 solid, 2 dotted
  uint8_t booklet = 0;
  uint8_t bookletSide = 0;  ///< 0 bound right, 1 left, 2 top
  uint8_t onePerSheet = 0;  ///< 1 to 6
  uint8_t adhesive = 0;
  uint8_t adhesiveEdge = 0;

  bool operator==(const PaperPicture&) const = default;
};

struct PaperField {
  std::string_view name;
  uint8_t PaperPicture::*field;
};
/// Every field by its name, in order.
extern const std::array<PaperField, 19> kPaperFields;
static_assert(sizeof(PaperPicture) == std::tuple_size_v<decltype(kPaperFields)>);

PaperPicture DescribePaper(const UiState& ui);
Stack StackPaper(const PaperPicture& picture);

/// `PreviewMode Sel` where the upper picture shows the paper; otherwise it shows the machine.
inline constexpr uint16_t kPaperView = 1;

/// The layout class of the settings, kTwoSheets included.
uint8_t LayoutClassOf(const UiState& ui);

/// The edge (2 left, 3 right, 4 top) at which a booklet bound on `edge` is folded: at the top of a landscape sheet, at
/// a side of a portrait one.
uint8_t FoldEdge(uint8_t edge, bool landscape);

}  // namespace heron::preview

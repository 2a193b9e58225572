// From the descriptor of the paper view to its stack. The order of the calls in StackPaper is the order of the layers.
#include "catalog/other_values.h"
#include "preview/paper_tables.h"
#include "preview/paper_view.h"

namespace heron::preview {
namespace {

namespace margin = value::lpBindMargin;

constexpr uint8_t kReduced = value::lpMarginMode::kReduce, kDotted = value::lpBorder::kDotted;
constexpr uint8_t kLeft = margin::kLeft, kRight = margin::kRight, kTop = margin::kTop;  // of a PaperPicture
constexpr size_t kMostLayers = 32;

struct Offset {
  int16_t x = 0, y = 0;
};

Offset operator+(Offset a, Offset b) {
  return {static_cast<int16_t>(a.x + b.x), static_cast<int16_t>(a.y + b.y)};
}

/// Away from a bound edge.
Offset Away(uint8_t edge, int16_t distance) {
  switch (edge) {
    case kLeft:
      return {distance, 0};
    case kRight:
      return {static_cast<int16_t>(-distance), 0};
    case kTop:
      return {0, distance};
    default:
      return {};
  }
}

bool IsBlock(const PaperPicture& picture) {
  return picture.duplexEdge != 0 && picture.adhesive != 0 && picture.adhesiveEdge != 0;
}

/// Where the upper sheet of a block lies on the block.
Offset BlockOffset(const PaperPicture& picture) {
  if (!IsBlock(picture)) return {};
  constexpr Offset kOffsets[] = {{0, 0}, {7, 0}, {3, 0}, {0, 7}};  // by adhesiveEdge
  return picture.adhesiveEdge <= kTop ? kOffsets[picture.adhesiveEdge] : Offset{};
}

class Builder {
 public:
  explicit Builder(const PaperPicture& picture) : picture_(picture), landscape_(picture.landscape != 0) {
    stack_.reserve(kMostLayers);
  }

  /// Adds a picture, its mask before it; nothing for a code without one.
  void Add(Element element, uint8_t code, Mode mode, Offset offset) {
    const PictureRow* const row = FindPicture(element, code);
    if (row == nullptr) return;
    const Box& box = landscape_ ? row->landscape : row->portrait;
    const Offset at = offset + Offset{box.x, box.y};
    if (const uint16_t mask = MaskOf(*row, code, landscape_); mask != 0)
      stack_.push_back({mask, Mode::kAnd, at.x, at.y, box.width, box.height, true});
    stack_.push_back({ImageOf(*row, code, landscape_), mode, at.x, at.y, box.width, box.height, false});
  }
  /// The same for each of the two pages where a sheet has two.
  void AddToPages(Element first, Element second, uint8_t code, Offset offset) {
    Add(first, code, Mode::kXor, offset);
    if (picture_.layoutClass < kTwoSheets) return;
    Add(second, code, Mode::kXor, offset + (landscape_ ? Offset{kSecondPage, 0} : Offset{0, kSecondPage}));
  }

  void AddSheets(Offset block) {
    if (picture_.booklet != 0) {
      Add(Element::kBookletBackground, picture_.bookletSide, Mode::kCopy, {});
      return Add(Element::kBookletForeground, picture_.bookletSide, Mode::kCopy, block);
    }
    IsBlock(picture_) ? Add(Element::kBlockBackground, picture_.adhesiveEdge, Mode::kCopy, {})
                      : Add(Element::kBackground, 0, Mode::kCopy, {});
    Add(Element::kForeground, 0, Mode::kCopy, block);
  }

  bool IsReduced() const { return picture_.marginMode == kReduced && picture_.layoutClass % kTwoSheets == 0; }
  Offset PageShift() const {
    if (picture_.marginOn == 0) return {};
    return Away(picture_.marginEdge, IsReduced() ? kReducedShift : kMarginShift);
  }

  void AddPages(Offset offset) {
    if (!IsReduced()) {
      const uint8_t order = picture_.onePerSheet;
      const bool other = landscape_ ? order == 3 || order == 4 : order == 5 || order == 6;
      return AddToPages(Element::kPages, other ? Element::kOtherPages : Element::kPages, picture_.layoutClass, offset);
    }
    AddToPages(Element::kReducedPage, Element::kReducedPage, picture_.layoutClass, offset);
    if (picture_.marginEdge == 0) return;
    const uint8_t pages = picture_.layoutClass < kTwoSheets ? 0 : 3;
    AddToPages(Element::kReducedMargin, Element::kReducedMargin, static_cast<uint8_t>(picture_.marginEdge + pages),
               offset);
  }

  void AddBorder(Offset offset) {
    if (picture_.border == 0) return;
    const Element border = picture_.border == kDotted ? Element::kDottedBorder : Element::kSolidBorder;
    AddToPages(border, border, picture_.layoutClass, offset);
  }

  void AddOrder(Offset offset) {
    AddToPages(Element::kOrder, Element::kOrder, OrderCode(picture_.layoutClass, picture_.order), offset);
  }

  void AddHoles(Offset offset) {
    if (picture_.punchEdge == 0) return;
    const Box& sheet = landscape_ ? kLandscapeSheet : kPortraitSheet;
    const Box& hole = FindPicture(Element::kHole, 0)->portrait;
    const bool along_top = picture_.punchEdge == kTop;
    const int16_t length = along_top ? sheet.width : sheet.height;
    const int count = picture_.punchHoles;
    for (int i = 0; i < count; ++i) {
      // Two are placed around the middle, three at the quarter points, four in the middle of each quarter.
      const int along = count == value::lpPunchHoles::kTwoHoles ? length / 2 + (i == 0 ? -kHoleDistance : kHoleDistance)
                        : count == value::lpPunchHoles::kThreeHoles ? length * (i + 1) / 4
                                                                    : length * (2 * i + 1) / 8;
      const int inset = picture_.punchEdge == kRight ? sheet.width - kHoleInset : kHoleInset;
      const int x = sheet.x + (along_top ? along : inset) - hole.width / 2;
      const int y = sheet.y + (along_top ? inset : along) - hole.height / 2;
      Add(Element::kHole, 0, Mode::kXor, offset + Offset{static_cast<int16_t>(x), static_cast<int16_t>(y)});
    }
  }

  Stack Take() { return std::move(stack_); }

 private:
  const PaperPicture& picture_;
  const bool landscape_;
  Stack stack_;
};

}  // namespace

std::string_view NameOf(Mode mode) {
  return mode == Mode::kCopy ? "copy" : mode == Mode::kAnd ? "and" : "xor";
}

Stack StackPaper(const PaperPicture& picture) {
  Builder builder(picture);
  const Offset block = BlockOffset(picture);
  const Offset pages = block + builder.PageShift();
  builder.AddSheets(block);
  builder.AddPages(pages);
  builder.AddBorder(pages);
  builder.Add(Element::kBindMark, picture.bindMark, Mode::kXor, block);
  builder.Add(Element::kMargin, picture.marginEdge, Mode::kXor, block);
  builder.AddOrder(pages);
  builder.Add(Element::kOnePerSheet, picture.onePerSheet, Mode::kXor, block);
  builder.Add(Element::kStapleShadow, picture.stapleMark, Mode::kXor, block);
  builder.AddHoles(block);
  builder.Add(Element::kStaple, picture.stapleMark, Mode::kXor, block);
  if (picture.adhesive != 1)
    builder.Add(Element::kDuplex, DuplexCode(picture.duplexEdge, picture.duplexFlip), Mode::kXor, block);
  if (picture.adhesive != 1) builder.Add(Element::kZoomArrow, picture.zoomMark, Mode::kXor, {});
  if (picture.adhesive == 1 && picture.duplexEdge != 0)
    builder.Add(Element::kBlockZoomArrow, picture.zoomMark, Mode::kXor, {});
  return builder.Take();
}

}  // namespace heron::preview

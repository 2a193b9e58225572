// The sentence of the paper view. The order of the calls in SayPaper is the order of the parts.
#include <algorithm>

#include "engine/setting.h"
#include "engine/sizes.h"
#include "preview/labels.h"
#include "preview/sentence.h"
#include "preview/words.h"
#include "rules/paper_rule_tables.h"

namespace heron::preview {

using engine::IsOn;
using engine::Setting;

namespace {

// Texts; where a descriptor's codes count on, so do the numbers.
constexpr uint32_t kPortrait = 32100, kLandscape = 32101, kBothSides = 32102;
constexpr uint32_t kBound = 32103, kBooklet = 32106, kMargin = 32109, kMarginMode = 32112;  // by edge, side, edge, mode
constexpr uint32_t kStaples = 32114, kHoles = 32119;                                        // by mark, by edge
constexpr uint32_t kPages = 32122, kPagesInOrder = 32123;
constexpr uint32_t kOrders[] = {0, 32124, 32125, 32124, 32126, 32127, 32128};  // by order
constexpr uint32_t kFrames = 32129;                                            // by border
constexpr uint32_t kSideBySide = 32131, kTwice = 32132, kTwoOnOne = 32133;
constexpr uint32_t kGlued = 32134;                           // by edge
constexpr uint32_t kZoomMark = 32137, kZoomPercent = 32139;  // by mark
constexpr uint32_t kFrom = 32141, kCopies = 32142;

constexpr int64_t kPagesOfClass[] = {1, 2, 4, 6, 9, 16};
constexpr uint8_t kSideBySideCode = 1, kTwiceCode = 2;

/// Nothing for code 0; `first` is the text of code 1.
void AddCode(Sentence& sentence, uint32_t first, uint8_t code) {
  if (code != 0) sentence.AddText(first + code - 1U);
}

void AddPages(Sentence& sentence, const PaperPicture& picture) {
  const int64_t pages = kPagesOfClass[std::min<size_t>(picture.layoutClass % kTwoSheets, 5)];
  if (pages == 1) return;
  const uint32_t order = picture.order < std::size(kOrders) ? kOrders[picture.order] : 0;
  const char16_t* const in_order = order == 0 ? u"" : GetUiString(order);
  *in_order == u'\0'
      ? sentence.AddText(kPages, pages)
      : sentence.Add(platform::ExpandText(GetUiString(kPagesInOrder), {pages, std::u16string_view(in_order)}));
}

void AddBinding(Sentence& sentence, const PaperPicture& picture) {
  if (picture.booklet != 0)
    sentence.AddText(kBooklet + picture.bookletSide);
  else
    AddCode(sentence, kBound, picture.bindMark);
  AddCode(sentence, kMargin, picture.marginEdge);
  if (picture.marginEdge != 0 && picture.marginMode <= 2) AddCode(sentence, kMarginMode, picture.marginMode);
  if (picture.adhesive != 0) AddCode(sentence, kGlued, picture.adhesiveEdge);
}

}  // namespace

PaperFacts PaperFactsOf(const UiState& ui) {
  const uint16_t original = Setting<u"lpMediaSize">(ui);
  const uint16_t printed = engine::PrintedPaper(ui);
  const bool combined = IsOn<u"POD_OnePerSheet_Check">(ui);
  PaperFacts facts;
  facts.paper = PaperName(ui, combined ? engine::DoubledPaper(printed) : printed);
  if (printed != original) facts.original = PaperName(ui, original);
  facts.zoom = ShowsZoom(ui) ? Setting<u"Zoom">(ui) : uint16_t{0};
  facts.copies = Setting<u"Copies">(ui);
  return facts;
}

std::u16string SayPaper(const PaperPicture& picture, const PaperFacts& facts) {
  Sentence sentence;
  sentence.AddText(picture.landscape != 0 ? kLandscape : kPortrait, std::u16string_view(facts.paper));
  if (!facts.original.empty()) sentence.AddText(kFrom, std::u16string_view(facts.original));
  if (picture.zoomMark != 0) {
    facts.zoom == 0 ? AddCode(sentence, kZoomMark, picture.zoomMark)
                    : sentence.AddText(kZoomPercent + picture.zoomMark - 1U, int64_t{facts.zoom});
  }
  if (picture.duplexEdge != 0) sentence.AddText(kBothSides);
  AddBinding(sentence, picture);
  AddCode(sentence, kStaples, picture.stapleMark);
  if (picture.punchEdge != 0) sentence.AddText(kHoles + picture.punchEdge - 1U, int64_t{picture.punchHoles});
  AddPages(sentence, picture);
  if (picture.layoutClass % kTwoSheets != 0) AddCode(sentence, kFrames, picture.border);
  if (picture.layoutClass >= kTwoSheets) {
    sentence.AddText(picture.onePerSheet == kSideBySideCode ? kSideBySide
                     : picture.onePerSheet == kTwiceCode    ? kTwice
                                                            : kTwoOnOne);
  }
  if (facts.copies > 1) sentence.AddText(kCopies, int64_t{facts.copies});
  return sentence.Take();
}

std::u16string SayUpperPicture(const UiState& ui) {
  if (Setting<u"PreviewMode Sel">(ui) == kPaperView) return SayPaper(DescribePaper(ui), PaperFactsOf(ui));
  return SayMachine(DescribeMachine(ui), true);
}

}  // namespace heron::preview

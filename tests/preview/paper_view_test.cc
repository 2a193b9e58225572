// The paper view: what settings come to, what a descriptor is stacked of, and what no stack breaks.
#include <set>

#include "engine/setting.h"
#include "preview/geometry.h"
#include "preview/labels.h"
#include "preview/painter.h"
#include "preview_fixture.h"
#include "support/recording_canvas.h"

namespace heron::preview {
namespace {

TEST_F(PreviewTest, SettingsComeToADescriptor) {
  struct Case {
    const char* settings;
    const char* fields;
  };
  const Case cases[] = {
      {"", "bindMark=1"},
      {"lpOrientation=Landscape", "landscape=1 bindMark=3"},
      {"lpMediaSize=A3", "bindMark=3"},
      {"lpMediaSize=A3 lpOrientation=Landscape", "landscape=1 bindMark=1"},
      {"lpMediaSize=5000", ""},  // a paper without a feed class has no edge
      {"lpBindPosit=Right", "bindMark=2"},
      {"lpMediaSize=A3 AdhesiveBind_Check=1", "bindMark=1"},  // bound blocks feed like small sheets
      // the output decides on the edge and on the zoom's mark
      {"lpOutputPaper=A3 Zoom=141", "zoomMark=1 bindMark=3"},
      {"lpOutputPaper=A4 Zoom=99", "zoomMark=2 bindMark=1"},
      {"lpOutputPaper=A4", "bindMark=1"},
      {"lpOutputPaper=SameAsDocument Zoom=50", "bindMark=1"},
      // several pages
      {"Nup_Check=On lpLayout=TwoPages lpOrder=BottomToTop lpBorder=1",
       "landscape=1 layoutClass=1 bindMark=3 order=2 border=1"},
      {"Nup_Check=On lpLayout=TwoPages lpOrientation=Landscape", "layoutClass=1 bindMark=1 order=1"},
      {"Nup_Check=On lpLayout=FourPages lpOrder=DownThenLeft lpBorder=2", "layoutClass=2 bindMark=1 order=6 border=2"},
      {"Nup_Check=On lpLayout=SixPages", "landscape=1 layoutClass=3 bindMark=3 order=1"},
      {"Nup_Check=On lpLayout=NinePages", "layoutClass=4 bindMark=1 order=1"},
      {"Nup_Check=On lpLayout=SixteenPages", "layoutClass=5 bindMark=1 order=1"},
      {"Nup_Check=On lpLayout=Details", "bindMark=1 order=1"},
      {"Nup_Check=Off lpLayout=TwoPages lpBorder=2", "bindMark=1"},
      // margins take the binding mark's place
      {"BindMargin_Check=On", "marginOn=1 marginMode=1 marginEdge=1"},
      {"BindMargin_Check=On lpMarginMode=Reduce lpBindPosit=Top", "marginOn=1 marginMode=2 marginEdge=3"},
      // two sides
      {"lpPRNType=TwoSided", "bindMark=1 duplexEdge=1 duplexFlip=5"},
      {"lpPRNType=TwoSided lpBindPosit=Right lpOrientation=Landscape",
       "landscape=1 bindMark=2 duplexEdge=2 duplexFlip=4"},
      {"lpPRNType=TwoSided lpBindPosit=Top", "bindMark=3 duplexEdge=3 duplexFlip=4"},
      {"lpPRNType=TwoSided lpOrientation=Landscape", "landscape=1 bindMark=3 duplexEdge=3 duplexFlip=5"},
      {"lpPRNType=TwoSided lpMediaSize=5000", ""},
      {"lpPRNType=TwoSided lpMediaSize=A3 Staple_Check=On lpStaple=Corner",
       "stapleMark=1 bindMark=3 duplexEdge=3 duplexFlip=5"},
      {"lpPRNType=TwoSided lpBindPosit=Top Staple_Check=On lpStaple=Corner", "bindMark=3"},
      {"lpPRNType=TwoSided lpBindPosit=Top Staple_Check=On lpStaple=TwoStaples",
       "stapleMark=5 bindMark=3 duplexEdge=3 duplexFlip=4"},
      {"lpPRNType=TwoSided AdhesiveBind_Check=1", "bindMark=1 duplexEdge=1 duplexFlip=5 adhesive=1 adhesiveEdge=1"},
      {"lpPRNType=OneSided AdhesiveBind_Check=1", "bindMark=1"},
      // staples
      {"Staple_Check=On lpStaple=Corner", "stapleMark=1 bindMark=1"},
      {"Staple_Check=On lpStaple=Corner lpBindPosit=Right", "stapleMark=2 bindMark=2"},
      {"Staple_Check=On lpStaple=Corner lpBindPosit=Top", "bindMark=3"},
      {"Staple_Check=On lpStaple=Corner lpMediaSize=A3", "stapleMark=1 bindMark=3"},
      {"Staple_Check=On lpStaple=UpperLeft", "bindMark=1"},
      {"Staple_Check=On lpStaple=UpperLeft lpBindPosit=Top", "stapleMark=1 bindMark=3"},
      {"Staple_Check=On lpStaple=UpperRight lpBindPosit=Top", "stapleMark=2 bindMark=3"},
      {"Staple_Check=On lpStaple=UpperRight lpBindPosit=Right", "bindMark=2"},
      {"Staple_Check=On lpStaple=TwoStaples", "stapleMark=3 bindMark=1"},
      {"Staple_Check=On lpStaple=TwoStaples lpBindPosit=Right", "stapleMark=4 bindMark=2"},
      // holes
      {"Punch_Check=On lpPunchHoles=ThreeHoles", "punchEdge=1 punchHoles=3 bindMark=1"},
      {"Punch_Check=On lpPunchHoles=FourHoles lpBindPosit=Top", "punchEdge=3 punchHoles=4 bindMark=3"},
      {"Punch_Check=On lpPunchHoles=7", "punchEdge=1 punchHoles=2 bindMark=1"},
      // two sheets on one: A4 becomes A3 and turns
      {"POD_OnePerSheet_Check=On lpPOD_OnePerSheet=SamePageTwice",
       "landscape=1 layoutClass=8 bindMark=1 onePerSheet=2"},
      {"POD_OnePerSheet_Check=On Nup_Check=On lpLayout=SixteenPages",
       "landscape=1 layoutClass=13 bindMark=1 order=1 onePerSheet=1"},
      {"POD_OnePerSheet_Check=On lpPOD_OnePerSheet=7", "landscape=1 layoutClass=8 bindMark=1"},
      // booklets have nothing of loose sheets, whatever the settings hold
      {"lpPRNType=Booklet Staple_Check=On lpStaple=TwoStaples Punch_Check=On POD_OnePerSheet_Check=On "
       "AdhesiveBind_Check=1",
       "bindMark=3 booklet=1 bookletSide=1"},
      {"lpPRNType=Booklet lpBindPosit=Right", "bindMark=2 booklet=1"},
      {"lpPRNType=Booklet lpBindPosit=Top", "bindMark=3 booklet=1 bookletSide=1"},
      {"lpPRNType=Booklet lpBindPosit=Right lpOrientation=Landscape", "landscape=1 bindMark=2 booklet=1 bookletSide=2"},
  };
  for (const Case& one : cases) EXPECT_EQ(Paper(one.settings), one.fields) << one.settings;
}

TEST_F(PreviewTest, DescriptorsComeToStacks) {
  struct Case {
    const char* settings;
    const char* stack;
  };
  const Case cases[] = {
      {"", "15000 15070 ^15080 ^15400"},
      {"lpOrientation=Landscape", "15001 15071 ^15081 ^15406"},
      {"lpOutputPaper=A4 Zoom=141", "15000 15070 ^15080 ^15400 &15014 ^15010"},
      {"lpOutputPaper=A4 Zoom=50 lpOrientation=Landscape", "15001 15071 ^15081 ^15406 &15017 ^15013"},
      {"Nup_Check=On lpLayout=TwoPages lpOrder=BottomToTop lpBorder=1",
       "15001 15071 ^15083 &15241 ^15201 ^15406 ^15139"},
      {"Nup_Check=On lpLayout=SixteenPages lpOrder=DownThenLeft lpBorder=2",
       "15000 15070 ^15090 &15240 ^15228 ^15400 ^15137"},
      {"Nup_Check=On lpLayout=FourPages lpOrder=BottomToTop",
       "15000 15070 ^15084 ^15400"},  // an order of another layout
      {"BindMargin_Check=On", "15000 15070 ^15080 ^15060"},
      {"BindMargin_Check=On lpMarginMode=Reduce", "15000 15070 ^15110 ^15250 ^15060"},
      {"BindMargin_Check=On lpMarginMode=Reduce lpOrientation=Landscape", "15001 15071 ^15111 ^15256 ^15066"},
      {"BindMargin_Check=On lpMarginMode=Reduce POD_OnePerSheet_Check=On lpPOD_OnePerSheet=SamePageTwice",
       "15001 15071 ^15112 ^15112 ^15262 ^15262 ^15064"},
      {"BindMargin_Check=On lpMarginMode=Reduce Nup_Check=On lpLayout=FourPages", "15000 15070 ^15084 ^15060"},
      {"lpPRNType=TwoSided", "15000 15070 ^15080 ^15400 ^15181"},
      {"lpPRNType=TwoSided lpOrientation=Landscape", "15001 15071 ^15081 ^15406 ^15191"},
      {"lpPRNType=TwoSided Staple_Check=On lpStaple=Corner Punch_Check=On",
       "15000 15070 ^15080 ^15400 ^15040 &15051 ^15050 &15051 ^15050 &15030 ^15020 ^15181"},
      {"Staple_Check=On lpStaple=TwoStaples lpOrientation=Landscape", "15001 15071 ^15081 ^15406 ^15047 &15037 ^15027"},
      {"POD_OnePerSheet_Check=On", "15001 15071 ^15093 ^15093 ^15404 &15873 ^15871"},
      {"POD_OnePerSheet_Check=On lpPOD_OnePerSheet=3", "15001 15071 ^15093 ^15985 ^15404"},
      {"POD_OnePerSheet_Check=On lpPOD_OnePerSheet=5", "15001 15071 ^15093 ^15093 ^15404"},
      {"POD_OnePerSheet_Check=On lpPOD_OnePerSheet=5 lpOrientation=Landscape", "15000 15070 ^15092 ^15984 ^15402"},
      {"POD_OnePerSheet_Check=On lpPOD_OnePerSheet=SamePageTwice Nup_Check=On lpLayout=SixteenPages "
       "lpOrder=DownThenLeft lpBorder=1",
       "15001 15071 ^15103 ^15103 &15243 ^15219 &15243 ^15219 ^15404 ^16012 ^16012"},
      {"lpPRNType=TwoSided AdhesiveBind_Check=1 lpOutputPaper=A4 Zoom=50", "16030 15070 ^15080 ^15400 &16038 ^16034"},
      {"lpPRNType=Booklet", "15002 15073 ^15080 ^15400"},
      {"lpPRNType=Booklet lpBindPosit=Right", "15003 15072 ^15080 ^15401"},
      {"lpPRNType=Booklet lpOrientation=Landscape", "15004 15074 ^15081 ^15406"},
  };
  for (const Case& one : cases) {
    Set(one.settings);
    EXPECT_EQ(TextOf(StackPaper(DescribePaper(*ui))), one.stack) << one.settings;
  }
}

TEST_F(PreviewTest, MarginsAndBlocksMoveWhatLiesOnThem) {
  const auto page = [&](const std::string& settings, size_t layer) {
    Set(settings);
    const Layer at = StackPaper(DescribePaper(*ui)).at(layer);
    return std::pair<int, int>(at.x, at.y);
  };
  using Place = std::pair<int, int>;
  const auto moved = [](Place from, Place to) { return Place(to.first - from.first, to.second - from.second); };
  const Place plain = page("", 2);
  EXPECT_EQ(moved(plain, page("BindMargin_Check=On", 2)), Place(4, 0));
  EXPECT_EQ(moved(plain, page("BindMargin_Check=On lpBindPosit=Right", 2)), Place(-4, 0));
  EXPECT_EQ(moved(plain, page("BindMargin_Check=On lpBindPosit=Top", 2)), Place(0, 4));
  const std::string reduced = "lpMarginMode=Reduce BindMargin_Check=On ";
  EXPECT_EQ(moved(page(reduced + "lpBindPosit=Left", 2), page(reduced + "lpBindPosit=Right", 2)), Place(-6, 0));
  // The second page of two.
  const std::string two = "POD_OnePerSheet_Check=On ";
  EXPECT_EQ(moved(page(two, 2), page(two, 3)), Place(45, 0));
  EXPECT_EQ(moved(page(two + "lpOrientation=Landscape", 2), page(two + "lpOrientation=Landscape", 3)), Place(0, 45));
  // The upper sheet of a block, with all that lies on it.
  const std::string block = "lpPRNType=TwoSided AdhesiveBind_Check=1 ";
  for (const auto& [position, offset] : {std::pair(2, Place(7, 0)), {3, Place(3, 0)}, {4, Place(0, 7)}}) {
    const std::string bound = " lpBindPosit=" + std::to_string(position);
    EXPECT_EQ(page(block + bound, 0), Place(0, 0));
    EXPECT_EQ(page(block + bound, 1), offset);
    EXPECT_EQ(moved(page(bound, 2), page(block + bound, 2)), offset);
  }
}

TEST_F(PreviewTest, HolesLieAlongTheirEdge) {
  for (const bool landscape : {false, true}) {
    for (int edge = 1; edge <= 3; ++edge) {
      for (int holes = 2; holes <= 4; ++holes) {
        SCOPED_TRACE(std::to_string(edge) + " " + std::to_string(holes));
        PaperPicture picture{.landscape = landscape, .punchEdge = static_cast<uint8_t>(edge)};
        picture.punchHoles = static_cast<uint8_t>(holes);
        std::vector<int> along, across;
        for (const Layer& layer : StackPaper(picture)) {
          if (layer.picture != 15050) continue;
          along.push_back(edge == 3 ? layer.x + 3 : layer.y + 3);
          across.push_back(edge == 3 ? layer.y + 3 : layer.x + 3);
        }
        ASSERT_EQ(along.size(), static_cast<size_t>(holes));
        EXPECT_EQ(std::set<int>(across.begin(), across.end()).size(), 1U);
        EXPECT_EQ(across[0] < 50, edge != 2);
        EXPECT_TRUE(std::ranges::is_sorted(along));
        // On both sides of the edge's middle alike.
        const int middle = (edge == 3) != landscape ? 50 : 47;
        EXPECT_NEAR(along.front() + along.back(), 2 * middle, 1);
        EXPECT_EQ(along[1] - along[0] == 12, holes == 2);
      }
    }
  }
}

// -- laws

/// Numbers set aside for the paper view.
bool IsPaperPicture(int number) {
  constexpr std::pair<int, int> kRanges[] = {
      {15000, 15004}, {16030, 16032}, {15070, 15074}, {15080, 15103}, {15984, 15995}, {15110, 15113}, {15200, 15243},
      {15120, 15173}, {15996, 16012}, {15010, 15017}, {16033, 16040}, {15020, 15027}, {15030, 15037}, {15040, 15047},
      {15050, 15051}, {15400, 15407}, {15060, 15067}, {15250, 15277}, {15180, 15191}, {15870, 15873}};
  return std::ranges::any_of(kRanges, [number](auto r) { return number >= r.first && number <= r.second; });
}

/// Calls `visit` for every descriptor that a group of fields can make, with `fields` over the values 0 to `last`.
template <typename Visit>
void Walk(PaperPicture& picture, std::span<const std::pair<uint8_t PaperPicture::*, int>> fields, Visit visit) {
  if (fields.empty()) return visit();
  for (int value = 0; value <= fields[0].second; ++value) {
    picture.*fields[0].first = static_cast<uint8_t>(value);
    Walk(picture, fields.subspan(1), visit);
  }
  picture.*fields[0].first = 0;
}

TEST(PaperStack, EveryPictureIsReachedAndNoOther) {
  using P = PaperPicture;
  std::set<int> seen;
  PaperPicture picture;
  const auto visit = [&] {
    const Stack stack = StackPaper(picture);
    EXPECT_EQ(stack, StackPaper(picture));
    EXPECT_LE(stack.size(), 32U);
    for (size_t i = 0; i < stack.size(); ++i) {
      const Layer& layer = stack[i];
      seen.insert(layer.picture);
      ASSERT_TRUE(IsPaperPicture(layer.picture)) << layer.picture;
      ASSERT_EQ(layer.mode, i < 2 ? Mode::kCopy : layer.isMask ? Mode::kAnd : Mode::kXor);
      // A mask lies right below its image, in the same place.
      if (!layer.isMask) continue;
      ASSERT_LT(i + 1, stack.size());
      ASSERT_EQ(std::tie(layer.x, layer.y, layer.width), std::tie(stack[i + 1].x, stack[i + 1].y, stack[i + 1].width));
      ASSERT_FALSE(stack[i + 1].isMask);
    }
  };
  const std::vector<std::pair<uint8_t P::*, int>> groups[] = {
      {{&P::landscape, 1}, {&P::layoutClass, 13}, {&P::order, 6}, {&P::border, 2}, {&P::onePerSheet, 6}},
      {{&P::landscape, 1}, {&P::layoutClass, 13}, {&P::marginOn, 1}, {&P::marginMode, 2}, {&P::marginEdge, 3}},
      {{&P::landscape, 1},
       {&P::zoomMark, 2},
       {&P::duplexEdge, 3},
       {&P::duplexFlip, 5},
       {&P::adhesive, 1},
       {&P::adhesiveEdge, 3}},
      {{&P::landscape, 1}, {&P::stapleMark, 5}, {&P::punchEdge, 3}, {&P::punchHoles, 4}, {&P::bindMark, 3}},
      {{&P::landscape, 1}, {&P::booklet, 1}, {&P::bookletSide, 2}, {&P::zoomMark, 2}},
  };
  for (const auto& group : groups) Walk(picture, std::span(group), visit);
  std::string unseen;
  for (int number = 15000; number < 17000; ++number) {
    if (IsPaperPicture(number) && !seen.contains(number)) unseen += std::to_string(number) + ' ';
  }
  // Places for a bottom edge, which nothing binds, and for masks of the margin marks.
  EXPECT_EQ(unseen,
            "15063 15067 15253 15257 15261 15265 15266 15267 15268 15269 15270 15271 15272 15273 15274 15275 "
            "15276 15277 15403 15407 ");
}

// -- labels, places, drawing

TEST_F(PreviewTest, LabelsNameBothPapersZoomAndCopies) {
  const auto labels = [&](const std::string& settings) {
    Set("Copies=1 " + settings);
    std::string text;
    for (const Label& label : PaperLabels(*ui))
      text += std::string(NameOf(label.place)) + "=" + platform::ToUtf8(label.text) + ";";
    return text;
  };
  LoadPaperLabels();
  const std::string a4 = "originalName=" + platform::ToUtf8(PaperLabel(9)) + ";originalSize=(210x297mm);";
  EXPECT_EQ(labels(""), a4 + "outputName=;outputSize=;arrow=;");
  const std::string a3 = "outputName=" + platform::ToUtf8(PaperLabel(8)) + ";outputSize=(297x420mm);arrow==>;";
  EXPECT_EQ(labels("lpOutputPaper=A3 Zoom=141 Copies=12"), a4 + a3 + "zoom=141 %;copies= X12;");
  EXPECT_EQ(labels("lpOutputPaper=A3 Zoom=50"), a4 + a3 + "zoom= 50 %;");
  EXPECT_EQ(labels("lpOutputPaper=A3 Nup_Check=On"), a4 + a3);
  EXPECT_EQ(labels("lpOutputPaper=A3 Zoom=90 BindMargin_Check=On"), a4 + a3 + "zoom= 90 %;");
  EXPECT_EQ(labels("lpOutputPaper=A3 Zoom=90 BindMargin_Check=On lpMarginMode=Reduce"), a4 + a3);
  EXPECT_EQ(labels("lpOutputPaper=SameAsDocument Zoom=50"), a4 + "outputName=;outputSize=;arrow=;");
  CustomPaperEntry& entry = (*ui->stores.userPapers)[0];
  entry.width = entry.height = 4000;
  entry.unit = 1;
  std::u16string_view(u"Card", 5).copy(entry.name, 5);
  EXPECT_EQ(labels("lpMediaSize=Custom1"),
            "originalName=Card;originalSize=101.6x101.6mm;outputName=;outputSize=;arrow=;");
}

TEST(PreviewGeometry, APlaceIsScaledAsAWhole) {
  const PaperGeometry usual = PaperGeometryOf(Viewport({0, 0, 200, 150}, kUpperSize).area());
  EXPECT_EQ(std::pair(usual.sheet.x, usual.sheet.y), std::pair(51, 36));
  const platform::RECT& copies = usual.labels[static_cast<size_t>(LabelPlace::kCopies)];
  EXPECT_EQ(std::tuple(copies.left, copies.top, copies.right, copies.bottom), std::tuple(147, 127, 198, 138));
  const Viewport twice({10, 20, 410, 320}, kUpperSize);
  EXPECT_EQ(twice.scale(), 2);
  const platform::RECT sheet = twice.Map({51, 36, 151, 136});
  EXPECT_EQ(std::tuple(sheet.left, sheet.top, sheet.right, sheet.bottom), std::tuple(112, 92, 312, 292));
  // A wide place has room at the sides; an empty one does no harm.
  const Viewport wide({0, 0, 600, 150}, kUpperSize);
  EXPECT_EQ(std::tuple(wide.scale(), wide.area().right, PaperGeometryOf(wide.area()).sheet.x), std::tuple(1, 600, 251));
  EXPECT_GT(Viewport({5, 5, 5, 5}, kUpperSize).scale(), 0);
  // The machine is drawn lower where there is room.
  EXPECT_EQ(MachineOrigin({0, 0, 200, 121}).y - MachineOrigin({0, 0, 200, 120}).y, 8);
}

/// Notes the pictures that are drawn.
class PictureCanvas : public test::RecordingCanvas {
 public:
  void DrawResource(uint32_t number, const platform::RECT& target, const std::optional<platform::RECT>&) override {
    pictures.emplace_back(number, target);
  }
  std::vector<std::pair<uint32_t, platform::RECT>> pictures;
};

TEST_F(PreviewTest, ThePainterDrawsAStackAtItsPlace) {
  LoadPaperLabels();
  Set("lpOutputPaper=A3 Zoom=141 Copies=3");
  engine::Setting<u"PreviewMode Sel">(*ui) = 1;
  PictureCanvas canvas;
  DrawUpperPicture(canvas, {0, 0, 400, 300}, *ui);
  std::string numbers;
  for (const auto& [number, target] : canvas.pictures) numbers += std::to_string(number) + ' ';
  EXPECT_EQ(numbers, "15000 15070 15080 15402 15010 ") << "the masks aren't drawn";
  const platform::RECT sheet = canvas.pictures[0].second;
  EXPECT_EQ(std::tuple(sheet.left, sheet.top, sheet.right, sheet.bottom), std::tuple(102, 72, 302, 272));
  EXPECT_EQ(canvas.drawings.size(), 5U) << "sizes, arrow, zoom and copies; without texts papers have no names";
  PictureCanvas machine;
  engine::Setting<u"PreviewMode Sel">(*ui) = 2;
  DrawUpperPicture(machine, {0, 0, 400, 300}, *ui);
  ASSERT_FALSE(machine.pictures.empty());
  EXPECT_GE(machine.pictures[0].first, 19000U);
  EXPECT_TRUE(machine.drawings.empty());
}

TEST(PreviewPainter, ALongLabelIsCutFromItsEnd) {
  test::RecordingCanvas canvas;  // each character is half as wide as the font is high
  platform::LOGFONTW font{};
  font.lfHeight = -10;
  const auto cut = [&](std::u16string_view text, int width) {
    return platform::ToUtf8(TruncateToFit(canvas, font, text, width, 5));
  };
  EXPECT_EQ(cut(u"Executive", 50), "Executive");
  EXPECT_EQ(cut(u"Executive", 49), "Execut..");
  EXPECT_EQ(cut(u"Executive", 25), "Ex..");
  EXPECT_EQ(cut(u"Executive", 0), "E..");
  EXPECT_EQ(cut(u"A3", 0), "A3");
  EXPECT_EQ(cut(u"", 0), "");
}

}  // namespace
}  // namespace heron::preview

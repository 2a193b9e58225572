// Sentences of the previews with the module's own texts, and what is drawn again after a change.
#include <fstream>
#include <map>
#include <random>

#include "engine/setting.h"
#include "preview/geometry.h"
#include "preview/painter.h"
#include "preview/words.h"
#include "preview_fixture.h"

namespace heron::preview {
namespace {

class WordsTest : public PreviewTest {
 protected:
  WordsTest() {
    auto& texts = backend.modules[test::kResourceModule];
    std::ifstream lines(HERON_TEXTS);
    for (std::string line; std::getline(lines, line);) {
      const size_t end = line.find('\t');
      if (line.empty() || line[0] == '#' || end == std::string::npos) continue;
      texts[static_cast<uint32_t>(std::stoul(line))] =
          platform::FromUtf8(line.substr(end + 1, line.find('\t', end + 1) - end - 1));
    }
    AcquireStrings();
    LoadPaperLabels();
  }
  ~WordsTest() override { ReleaseStrings(); }

  std::string Says(const std::string& settings) {
    Set("Copies=1 " + settings);
    return platform::ToUtf8(SayPaper(DescribePaper(*ui), PaperFactsOf(*ui)));
  }
};

TEST_F(WordsTest, ASheetIsOneSentence) {
  EXPECT_EQ(Says("lpPRNType=2 Staple_Check=1 lpStaple=4 Nup_Check=1 lpLayout=10 lpOrder=3"),
            "A4 portrait, printed on both sides, bound left, two staples left, 4 pages a sheet in reading order");
  EXPECT_EQ(Says("lpOutputPaper=8 Zoom=141 Copies=3"),
            "A3 portrait, from A4, enlarged to 141 %, bound at the top, 3 copies");
  EXPECT_EQ(Says("lpPRNType=3 Staple_Check=1 Punch_Check=1"), "A4 portrait, as a booklet bound left");
  EXPECT_EQ(Says("BindMargin_Check=1 lpMarginMode=2 lpBindPosit=3"),
            "A4 portrait, binding margin right, pages reduced to make room");
  EXPECT_EQ(Says("lpOrientation=2 Punch_Check=1 lpPunchHoles=4"), "A4 landscape, bound at the top, 4 holes at the top");
  EXPECT_EQ(Says("POD_OnePerSheet_Check=1"), "A3 landscape, bound left, two sheets side by side on one");
  EXPECT_EQ(Says("Nup_Check=1 lpLayout=8 lpOrder=2 lpBorder=2"),
            "A4 landscape, bound at the top, 2 pages a sheet in reverse order, with dotted frames");
}

/// Two sheets that look different have different sentences, as far as the picture alone shows the difference.
TEST_F(WordsTest, DifferentPicturesHaveDifferentSentences) {
  std::mt19937 random(5);
  std::map<std::u16string, PaperPicture> known;
  const PaperFacts facts{.paper = u"A4", .original = {}};
  const auto pick = [&](int last) { return static_cast<uint8_t>(random() % static_cast<unsigned>(last + 1)); };
  for (int n = 0; n < 20000; ++n) {
    PaperPicture picture{.landscape = pick(1), .zoomMark = pick(2), .stapleMark = pick(5), .bindMark = pick(3)};
    picture.punchEdge = pick(3);
    picture.punchHoles = picture.punchEdge == 0 ? uint8_t{0} : static_cast<uint8_t>(2 + pick(2));
    const auto [at, is_new] = known.emplace(SayPaper(picture, facts), picture);
    ASSERT_TRUE(is_new || at->second == picture) << platform::ToUtf8(at->first);
  }
}

TEST_F(WordsTest, TheMachineNamesItsPartsAndWhatIsLit) {
  const auto says = [](const MachinePicture& picture, bool lit = true) {
    return platform::ToUtf8(SayMachine(picture, lit));
  };
  MachinePicture picture{.sourceUnit = 1, .outputUnit = 1, .mailBinKit = 1, .saddleUnit = 1, .mediaSource = 258};
  EXPECT_EQ(says(picture), "Machine, without options") << "a tray that isn't there";
  picture = {.sourceUnit = 3, .outputUnit = 2, .mailBinKit = 2, .saddleUnit = 1, .mediaSource = 258};
  EXPECT_EQ(says(picture), "Machine, Tray 3, Bin-type finisher, mail bins, paper from Tray 3");
  EXPECT_EQ(says(picture, false), "Machine, Tray 3, Bin-type finisher, mail bins");
}

TEST_F(WordsTest, StatusNamesFeaturesInTheirOrder) {
  Set("lpPRNType=2 Chapter_Check=1 UserAuth_Check=0 ImageShift_Check=0 lpOutputMethod=4 lpOverlay=3 Watermark_Use=0");
  DescribeStatusPaint(*ui, kPanel);
  Write("ImageShift_Check=1");
  const IconOrder before = ui->iconOrder;
  EXPECT_EQ(platform::ToUtf8(SayStatus(DescribeNextPaint(*ui))),
            "printed, kept in a box, form behind the page, chapters begin on a front side, image shift");
  EXPECT_EQ(ui->iconOrder, before);
}

TEST_F(WordsTest, OnlyWhatChangedIsDrawnAgain) {
  constexpr platform::RECT kPlace = {0, 0, 400, 300};
  engine::Setting<u"PreviewMode Sel">(*ui) = kPaperView;
  const auto painted = [&](const std::string& settings) {
    Set("Copies=1 " + settings);
    return PaintedUpperOf(*ui);
  };
  const PaintedUpper plain = painted("");
  EXPECT_TRUE(ChangedAreas(plain, painted(""), kPlace).empty());
  const auto copies = ChangedAreas(plain, painted("Copies=2"), kPlace);
  ASSERT_EQ(copies.size(), 1U);
  EXPECT_GE(copies[0].top, 200) << "the label below, not the sheet";
  const auto sheet = ChangedAreas(plain, painted("lpPRNType=2"), kPlace);
  ASSERT_EQ(sheet.size(), 1U);
  EXPECT_EQ(sheet[0].left, 102);
  EXPECT_EQ(sheet[0].right, 302);
  EXPECT_EQ(ChangedAreas(plain, painted("lpOutputPaper=8 Zoom=141"), kPlace).size(), 5U)
      << "sheet, size, name, arrow, zoom";
  engine::Setting<u"PreviewMode Sel">(*ui) = 2;
  EXPECT_EQ(ChangedAreas(plain, painted(""), kPlace).size(), 1U) << "the whole place";
}

// -- laws over random settings

/// Sizes by number, of the list that the picture set is checked against.
std::map<int, std::string> PictureSizes() {
  std::map<int, std::string> sizes;
  std::ifstream lines(HERON_PICTURE_LIST);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string numbers, all;
    if (!std::getline(fields, numbers, '\t') || !std::getline(fields, all, '\t') || numbers[0] == '#') continue;
    const size_t dash = numbers.find('-');
    const int first = std::stoi(numbers);
    const int last = dash == std::string::npos ? first : std::stoi(numbers.substr(dash + 1));
    std::vector<std::string> turns;  // several sizes take turns
    std::istringstream words(all);
    for (std::string size; words >> size;) turns.push_back(size);
    for (int number = first; number <= last; ++number)
      sizes[number] = turns[static_cast<size_t>(number - first) % turns.size()];
  }
  return sizes;
}

TEST_F(PreviewTest, RandomSettingsStackPicturesOfTheirSize) {
  const std::map<int, std::string> sizes = PictureSizes();
  ASSERT_GT(sizes.size(), 300U);
  std::mt19937 random(11);
  for (int n = 0; n < 3000; ++n) {
    for (size_t row = 0; row < kParamRows.size(); ++row) {
      if (!kParamRows[row].HasBlock() || random() % 3 != 0) continue;
      uint16_t* const value = FieldsOf(*ui, static_cast<uint16_t>(row)).value;
      if (value != nullptr) *value = static_cast<uint16_t>(random() % (random() % 8 == 0 ? 300 : 8));
    }
    const PaperPicture paper = DescribePaper(*ui);
    const StatusPicture status = DescribeStatusPaint(*ui, kPanel);
    Stack all = StackPaper(paper);
    for (const Stack& more :
         {StackStatus(status), StackMachine(DescribeMachine(*ui)), StackHighlights(DescribeMachine(*ui))})
      all.insert(all.end(), more.begin(), more.end());
    for (const Layer& layer : all) {
      if (layer.isMask) continue;
      const auto known = sizes.find(layer.picture);
      ASSERT_NE(known, sizes.end()) << layer.picture;
      ASSERT_EQ(known->second, std::to_string(layer.width) + 'x' + std::to_string(layer.height)) << layer.picture;
    }
    if (paper.booklet != 0) {
      ASSERT_EQ(paper.stapleMark | paper.punchEdge | paper.duplexEdge, 0);
    }
    ASSERT_TRUE(paper.bindMark == 0 || paper.marginEdge == 0);
    ASSERT_EQ(paper.duplexEdge == 0, paper.duplexFlip == 0);
    const auto listed = std::ranges::count_if(status.iconOrder, [](uint8_t feature) { return feature != 0; });
    ASSERT_LE(std::ranges::count_if(StackStatus(status), [](const Layer& l) { return !l.isMask && l.y == 44; }),
              listed);
    PaperPicture turned =
        paper;  // the other orientation has the other picture of each pair, and no more or less layers
    turned.landscape ^= 1;
    if (paper.booklet == 0 && paper.onePerSheet < 3) {
      ASSERT_EQ(StackPaper(turned).size(), StackPaper(paper).size());
    }
    if (paper.booklet == 0 && paper.adhesive == 0) {
      ASSERT_EQ(StackPaper(turned)[0].picture, 15000 + turned.landscape);
    }
  }
}

}  // namespace
}  // namespace heron::preview

// What dialogs draw themselves: what their pictures show, and that they stay on their sheet.
#include "pages/dialog_pictures.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "sheet_fixture.h"
#include "support/recording_canvas.h"

namespace heron::pages {

void PrintTo(const MarginPicture& p, std::ostream* out) {
  *out << (p.landscape ? "landscape" : "portrait") << " class " << int{p.layoutClass} << " margin " << p.marginOn << ' '
       << p.marginMode << ' ' << int{p.marginEdge} << " booklet " << p.booklet << ' ' << int{p.bookletEdge};
}

}  // namespace heron::pages

namespace heron::test {
namespace {

using pages::MarginPicture;
using platform::RECT;

class DialogPicturesTest : public SheetTest {};

/// Keeps what is filled, cut to its clip.
class FillCanvas : public RecordingCanvas {
 public:
  void FillRect(const RECT& area, platform::COLORREF color, const std::optional<RECT>& clip) override {
    const RECT within = clip.value_or(area);
    const RECT seen = {std::max(area.left, within.left), std::max(area.top, within.top),
                       std::min(area.right, within.right), std::min(area.bottom, within.bottom)};
    if (!clip || (seen.left < seen.right && seen.top < seen.bottom)) fills.push_back({seen, color});
  }
  std::vector<std::pair<RECT, platform::COLORREF>> fills;
};

TEST_F(DialogPicturesTest, AMarginIsDescribedByTheJob) {
  OpenPage();
  const auto described = [&](const std::string& settings) {
    Put("lpOrientation=Portrait Nup_Check=Off POD_OnePerSheet_Check=Off BindMargin_Check=Off lpPRNType=OneSided "
        "lpBindPosit=Auto " +
        settings);
    return pages::DescribeMargin(ui());
  };
  const uint16_t mode = described("").marginMode;
  EXPECT_EQ(described(""), (MarginPicture{false, 0, false, mode, 0, false, 0}));
  engine::Setting<u"lpBindMargin">(ui()) = 3;
  EXPECT_EQ(described("BindMargin_Check=On lpMarginMode=Reduce lpOrientation=Landscape"),
            (MarginPicture{true, 0, true, 2, 3, false, 0}));
  Put("lpMarginMode=Shift");
  // Layouts of 2 and 6 pages turn the sheet, and so does one sheet for two.
  EXPECT_EQ(described("Nup_Check=On lpLayout=TwoPages"), (MarginPicture{true, 1, false, 1, 0, false, 0}));
  EXPECT_EQ(described("Nup_Check=On lpLayout=FourPages"), (MarginPicture{false, 2, false, 1, 0, false, 0}));
  EXPECT_EQ(described("Nup_Check=On lpLayout=SixPages POD_OnePerSheet_Check=On"),
            (MarginPicture{false, 11, false, 1, 0, false, 0}));
  EXPECT_EQ(described("Nup_Check=On lpLayout=SixteenPages lpOrientation=Landscape"),
            (MarginPicture{true, 5, false, 1, 0, false, 0}));
  // A booklet folds at a side of a portrait sheet and at the top of a landscape one, wherever it is bound.
  EXPECT_EQ(described("lpPRNType=Booklet lpBindPosit=Right"), (MarginPicture{false, 0, false, 1, 0, true, 3}));
  EXPECT_EQ(described("lpPRNType=Booklet lpBindPosit=Top"), (MarginPicture{false, 0, false, 1, 0, true, 2}));
  EXPECT_EQ(described("lpPRNType=Booklet lpBindPosit=Left lpOrientation=Landscape"),
            (MarginPicture{true, 0, false, 1, 0, true, 4}));
}

/// Pictures before the rows of a list; fails for one that doesn't exist.
std::vector<uint32_t> RowPictures(const ScriptedDialog& dialog, ControlName list) {
  std::vector<uint32_t> pictures;
  for (const platform::ListRow& row : dialog[list].rows) {
    pictures.push_back(row.picture);
    const std::string prefix = std::to_string(row.picture) + '-';
    const auto files = std::filesystem::directory_iterator(std::filesystem::path(HERON_RESOURCES) / "pictures");
    EXPECT_TRUE(row.picture == 0 ||
                std::any_of(begin(files), end(files),
                            [&](const auto& file) { return file.path().filename().string().starts_with(prefix); }))
        << row.picture;
  }
  return pictures;
}

TEST_F(DialogPicturesTest, DialogsAndListsShowThem) {
  using Pictures = std::vector<uint32_t>;
  OpenPage("Nup_Check=On lpLayout=TwoPages lpOrientation=Portrait BindMargin_Check=On");
  EXPECT_EQ(RowPictures(*page, "lpLayout"), (Pictures{17000, 17001, 17002, 17003, 17004, 0})) << "none for the details";
  desk.Expect("layout-details", [](ScriptedDialog& dialog) {
    EXPECT_EQ(RowPictures(dialog, "lpLayout.dialog"), (Pictures{17000, 17001, 17002, 17003, 17004}));
    EXPECT_EQ(RowPictures(dialog, "lpOrder.dialog"), (Pictures{17010, 17011}));
    EXPECT_EQ(RowPictures(dialog, "lpBorder2.dialog"), (Pictures{17020, 17021, 17022}));
    dialog.Click(platform::kCancelButton);
  });
  Choose("lpLayout", "Details");
  const auto paints = [](ScriptedDialog& dialog, ControlName place) {
    FillCanvas canvas;
    dialog.Paint(place, canvas, {0, 0, 140, 140});
    EXPECT_FALSE(canvas.fills.empty()) << place;
    dialog.Click(platform::kCancelButton);
  };
  desk.Expect("binding-margin", [&](ScriptedDialog& dialog) {
    EXPECT_EQ(dialog["marginPicture"].picture, 15281U) << "two pages turn the sheet";
    paints(dialog, "marginPicture");
  });
  page->Click("bindingMarginButton");
  desk.Expect("custom-size", [&](ScriptedDialog& dialog) { paints(dialog, "customPicture"); });
  Choose("lpMediaSize", "CustomSize");
}

TEST(DialogPictures, AMarginKeepsToItsSheet) {
  constexpr size_t kPagesOfClass[] = {1, 2, 4, 6, 9, 16};
  const RECT place = {0, 0, pages::kMarginPictureSize, pages::kMarginPictureSize};
  for (int n = 0; n < 2 * 12 * 2 * 5; ++n) {
    const MarginPicture picture{.landscape = n % 2 != 0,
                                .layoutClass = static_cast<uint8_t>(n / 2 % 12 < 6 ? n / 2 % 12 : n / 2 % 12 + 2),
                                .marginOn = n / 48 > 0,
                                .marginMode = static_cast<uint16_t>(1 + n / 24 % 2),
                                .marginEdge = static_cast<uint8_t>(n / 48),
                                .booklet = true,
                                .bookletEdge = static_cast<uint8_t>(n % 2 != 0 ? 4 : 2)};
    SCOPED_TRACE(::testing::PrintToString(picture));
    FillCanvas canvas;
    DrawMargin(picture, canvas, place);
    const RECT sheet = picture.landscape ? RECT{14, 28, 126, 112} : RECT{28, 14, 112, 126};
    std::map<platform::COLORREF, size_t> count;
    for (const auto& [area, color] : canvas.fills) {
      ++count[color];
      EXPECT_TRUE(area.left >= sheet.left && area.top >= sheet.top && area.right <= sheet.right &&
                  area.bottom <= sheet.bottom);
      EXPECT_TRUE(area.left < area.right && area.top < area.bottom);
    }
    const auto& page = canvas.fills.front();
    // A page that is moved may leave its sheet.
    if (picture.marginMode == 2) {
      EXPECT_EQ(count[page.second], kPagesOfClass[picture.layoutClass % 8] * (picture.layoutClass >= 8 ? 2 : 1));
    }
    if (picture.marginEdge == 0) continue;
    const RECT band = canvas.fills[canvas.fills.size() - 2].first;
    const bool upright = band.bottom - band.top > band.right - band.left;
    EXPECT_EQ(upright, picture.marginEdge <= 2);
    EXPECT_EQ(band.left + band.top < 140 - band.right + 140 - band.bottom, picture.marginEdge % 2 != 0);
    if (picture.marginMode != 2) continue;
    for (const auto& [area, color] : canvas.fills) {
      const bool beside =
          area.left >= band.right || area.right <= band.left || area.top >= band.bottom || area.bottom <= band.top;
      EXPECT_TRUE(color != page.second || beside) << "a reduced page stands beside its margin";
    }
  }
}

TEST(DialogPictures, APaperIsDrawnInItsProportions) {
  const RECT place = {0, 0, 180, 140};
  for (const auto& [width, length] : {std::pair(3622U, 17000U), {11692U, 5826U}, {8267U, 11692U}, {1U, 4000000000U}}) {
    FillCanvas canvas;
    pages::DrawPaper(width, length, canvas, place);
    ASSERT_FALSE(canvas.fills.empty());
    for (const auto& [area, color] : canvas.fills)
      EXPECT_TRUE(area.left >= 0 && area.top >= 0 && area.right <= 180 && area.bottom <= 140);
    const RECT sheet = canvas.fills.front().first;
    const double drawn = static_cast<double>(sheet.right - sheet.left) / static_cast<double>(sheet.bottom - sheet.top);
    EXPECT_NEAR(drawn, static_cast<double>(width) / length, 0.03);
  }
  FillCanvas nothing;
  pages::DrawPaper(0, 100, nothing, place);
  EXPECT_TRUE(nothing.fills.empty());
}

}  // namespace
}  // namespace heron::test

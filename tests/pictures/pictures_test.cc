// The pictures of the built resource module: all are there, in their sizes, drawn, different, seen on light and dark,
// and the parts of a stack agree.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "stack.h"

namespace heron::test {
namespace {

struct Wanted {
  std::vector<QSize> sizes;  ///< by turns
  std::string what;
};

/// What pictures.tsv lists, without masks; `all` counts these too.
std::map<uint32_t, Wanted> ReadList(size_t* all) {
  std::map<uint32_t, Wanted> list;
  std::ifstream file(HERON_PICTURE_LIST);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream columns(line);
    std::string numbers, sizes, what;
    std::getline(std::getline(std::getline(columns, numbers, '\t'), sizes, '\t'), what);
    const size_t dash = numbers.find('-');
    const auto first = static_cast<uint32_t>(std::stoul(numbers));
    const auto last = dash == std::string::npos ? first : static_cast<uint32_t>(std::stoul(numbers.substr(dash + 1)));
    *all += last - first + 1;
    if (sizes == "mask") continue;
    std::vector<QSize> read;
    std::istringstream parts(sizes);
    for (std::string size; parts >> size;)
      read.emplace_back(std::stoi(size), std::stoi(size.substr(size.find('x') + 1)));
    for (uint32_t number = first; number <= last; ++number)
      list[number] = {{read[(number - first) % read.size()]}, what};
  }
  return list;
}

class Pictures : public ::testing::Test {
 protected:
  /// Over a transparent ground, or over one of `ground`.
  QImage Render(uint32_t number, int scale = 1, QColor ground = Qt::transparent) const {
    QSvgRenderer renderer(set.Source(number));
    QImage image(renderer.defaultSize() * scale, QImage::Format_ARGB32);
    image.fill(ground);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
  }

  const PictureSet set{HERON_RESOURCE_MODULE};
};

/// How many pixels a predicate holds for.
template <typename Holds>
int CountPixels(const QImage& image, Holds holds) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) count += holds(QPoint(x, y), row[x]) ? 1 : 0;
  }
  return count;
}

constexpr int kSolid = 128;  // alpha

TEST_F(Pictures, EveryNumberIsDrawnInItsSize) {
  size_t all = 0;
  const auto list = ReadList(&all);
  EXPECT_EQ(all, 510U) << "a line of the list is lost";
  for (const auto& [number, wanted] : list) {
    SCOPED_TRACE(std::to_string(number) + ' ' + wanted.what);
    QSvgRenderer renderer(set.Source(number));
    ASSERT_TRUE(renderer.isValid());
    EXPECT_EQ(renderer.defaultSize(), wanted.sizes.front());
    for (const int scale : {1, 3}) {
      const QImage image = Render(number, scale);
      EXPECT_GT(CountPixels(image, [](QPoint, QRgb pixel) { return qAlpha(pixel) > 16; }), 8 * scale);
    }
  }
}

TEST_F(Pictures, NoTwoAreAlike) {
  std::map<QByteArray, uint32_t> known;
  for (const auto& [number, source] : set.All()) {
    const QImage image = Render(number);
    const QByteArray content = QByteArray::number(image.width()) +
                               QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    const auto [first, is_new] = known.emplace(content, number);
    EXPECT_TRUE(is_new) << number << " looks like " << first->second;
  }
}

TEST_F(Pictures, TheyAreSeenOnLightAndOnDark) {
  for (const auto& [number, source] : set.All()) {
    const bool lies_on_paper_alone = number >= 15040 && number <= 15047;  // shadows of staples
    for (const QColor& ground : {QColor(Qt::white), QColor(0x23, 0x26, 0x29)}) {
      if (lies_on_paper_alone && ground != Qt::white) continue;
      const int seen = CountPixels(Render(number, 2, ground), [&](QPoint, QRgb pixel) {
        return std::abs(qGray(pixel) - qGray(ground.rgb())) > 24;
      });
      EXPECT_GT(seen, 20) << number << " on " << ground.name().toStdString();
    }
  }
}

TEST_F(Pictures, ALitPartLiesOnItsMachine) {
  struct Case {
    std::vector<uint32_t> machine;
    std::vector<uint32_t> lit;
  };
  const Case cases[] = {{{19000}, {19046, 19047, 19044}},
                        {{19011, 19009}, {19046, 19047, 19044, 19048, 19050, 19039}},
                        {{19012, 19009}, {19046, 19047, 19044, 19049, 19039}},
                        {{19012, 19013, 19001}, {19030, 19031}},
                        {{19012, 19013, 19003}, {19030, 19031, 19045}},
                        {{19012, 19013, 19002}, {19036, 19031, 19040, 19041, 19042, 19043}},
                        {{19012, 19013, 19006}, {19036, 19031, 19045, 19040, 19041, 19042, 19043}},
                        {{19012, 19013, 19004}, {19034, 19031, 19035}},
                        {{19012, 19013, 19007}, {19034, 19031, 19045, 19035}},
                        {{19012, 19013, 19005}, {19032, 19033}},
                        {{19012, 19008}, {19037, 19038}}};
  constexpr int kSheets = 15;  // in a hundred: sheets in a lit tray may stand out
  for (const Case& row : cases) {
    QImage machine = Render(row.machine.front(), 2);
    QPainter painter(&machine);
    for (const uint32_t part : row.machine) painter.drawImage(0, 0, Render(part, 2));
    for (const uint32_t lit : row.lit) {
      const QImage part = Render(lit, 2);
      const int all = CountPixels(part, [](QPoint, QRgb pixel) { return qAlpha(pixel) > kSolid; });
      const int beside = CountPixels(
          part, [&](QPoint at, QRgb pixel) { return qAlpha(pixel) > kSolid && qAlpha(machine.pixel(at)) <= kSolid; });
      EXPECT_LE(beside * 100, all * kSheets) << lit << " on " << row.machine.back();
    }
  }
}

/// The smallest box around what is solid.
QRect Extent(const QImage& image) {
  QRect box;
  CountPixels(image, [&](QPoint at, QRgb pixel) {
    if (qAlpha(pixel) > kSolid) box |= QRect(at, QSize(1, 1));
    return false;
  });
  return box;
}

TEST_F(Pictures, FramesAndOrderKeepToThePages) {
  for (uint32_t n = 0; n < 20; ++n) {
    // Frames begin with two pages; those of half a sheet follow those of a whole one.
    const uint32_t pages = n < 10 ? 15082 + n : 15094 + n - 10;
    const QRect grid = Extent(Render(pages));
    for (const uint32_t frame : {15200 + n, 15220 + n}) {
      const QRect box = Extent(Render(frame));
      EXPECT_LE((box.topLeft() - grid.topLeft()).manhattanLength(), 3) << frame;
      EXPECT_LE((box.bottomRight() - grid.bottomRight()).manhattanLength(), 3) << frame;
    }
  }
  for (const auto& [first, last, pages] : {std::tuple(15120U, 15137U, 15090U), {15138U, 15155U, 15091U}}) {
    const QRect grid = Extent(Render(pages));
    for (uint32_t order = first; order <= last; ++order)
      EXPECT_TRUE(grid.adjusted(-2, -2, 2, 2).contains(Extent(Render(order)))) << order;
  }
}

TEST_F(Pictures, AnUpperSheetCoversWhatIsPrintedOnIt) {
  struct Case {
    uint32_t sheet, picture;
    QPoint at;
  };
  const Case cases[] = {{15070, 15082, {18, 5}},  {15071, 15083, {5, 18}}, {15070, 15094, {20, 48}},
                        {15071, 15095, {48, 20}}, {15072, 15082, {18, 5}}, {15073, 15082, {18, 5}},
                        {15074, 15083, {5, 18}},  {15070, 15400, {16, 5}}, {15071, 15406, {5, 16}},
                        {15070, 15180, {56, 64}}, {15071, 15186, {64, 56}}};
  for (const Case& row : cases)
    EXPECT_TRUE(Extent(Render(row.sheet)).contains(Extent(Render(row.picture)).translated(row.at)))
        << row.picture << " on " << row.sheet;
  // A block's upper sheet lies at its offset and leaves the strip of adhesive free.
  for (const auto& [block, sheet, offset] :
       {std::tuple(16030U, 15070U, QPoint(7, 0)), {16031U, 15070U, QPoint(3, 0)}, {16032U, 15071U, QPoint(0, 7)}}) {
    const QRect below = Extent(Render(block));
    const QRect above = Extent(Render(sheet)).translated(offset);
    EXPECT_TRUE(below.contains(above)) << block;
    const int strip = block == 16030   ? above.left() - below.left()
                      : block == 16031 ? below.right() - above.right()
                                       : above.top() - below.top();
    EXPECT_GE(strip, 5) << block;
  }
}

/// The stacks of stacks.txt over white, one to a cell.
std::vector<std::pair<std::string, QImage>> DrawStacks(const PictureSet& set) {
  constexpr QSize kCell(160, 128);
  std::vector<std::pair<std::string, QImage>> cells;
  std::ifstream file(HERON_PICTURE_STACKS);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    QImage cell(kCell, QImage::Format_RGB32);
    cell.fill(Qt::white);
    QPainter(&cell).drawImage(0, 0, DrawStack(set, QString::fromStdString(line), 1));
    cells.emplace_back(line, cell);
  }
  return cells;
}

/// The largest mean difference of a channel in any block of 8 x 8 pixels.
int LargestDifference(const QImage& a, const QImage& b) {
  constexpr int kBlock = 8;
  int largest = 0;
  for (int top = 0; top < a.height(); top += kBlock) {
    for (int left = 0; left < a.width(); left += kBlock) {
      int sum = 0;
      for (int y = top; y < top + kBlock; ++y) {
        for (int x = left; x < left + kBlock; ++x) {
          const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
          sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
      }
      largest = std::max(largest, sum / (3 * kBlock * kBlock));
    }
  }
  return largest;
}

/// A recipe that slips by a pixel changes a block by more than another version of the renderer does.
TEST_F(Pictures, StacksLookAsTheyWereApproved) {
  constexpr int kTolerance = 6, kColumns = 10;
  const auto cells = DrawStacks(set);
  const QSize cell = cells.front().second.size();
  const int rows = (static_cast<int>(cells.size()) + kColumns - 1) / kColumns;
  QImage now(cell.width() * kColumns, cell.height() * rows, QImage::Format_RGB32);
  now.fill(Qt::white);
  const auto place = [&](size_t n) {
    const auto at = static_cast<int>(n);
    return QRect(QPoint(at % kColumns * cell.width(), at / kColumns * cell.height()), cell);
  };
  for (size_t n = 0; n < cells.size(); ++n) QPainter(&now).drawImage(place(n), cells[n].second);
  if (std::getenv("HERON_APPROVE_STACKS") != nullptr) {
    ASSERT_TRUE(now.save(HERON_APPROVED_STACKS, "PNG", 0));
  }
  const QImage approved = QImage(HERON_APPROVED_STACKS).convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(approved.size(), now.size()) << "look at the stacks, then run once with HERON_APPROVE_STACKS=1";
  for (size_t n = 0; n < cells.size(); ++n) {
    EXPECT_LE(LargestDifference(cells[n].second, approved.copy(place(n))), kTolerance) << cells[n].first;
  }
}

TEST_F(Pictures, TheMaskOfTheSamplesIsBlackAtThePhotoAlone) {
  const QImage mask = Render(11205);
  const QImage grey = Render(11203);
  const QImage black = Render(11204);
  EXPECT_GT(CountPixels(mask, [](QPoint, QRgb pixel) { return qGray(pixel) == 0; }), 1000);
  EXPECT_EQ(
      CountPixels(grey, [&](QPoint at, QRgb pixel) { return qGray(mask.pixel(at)) != 0 && pixel != black.pixel(at); }),
      0);
}

}  // namespace
}  // namespace heron::test

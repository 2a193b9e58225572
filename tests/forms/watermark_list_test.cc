// The list of watermarks after every addition and removal, and what an entry can hold.
#include "forms/watermark_list.h"

#include <cstring>

#include "platform/api/text.h"
#include "support/driver_fixture.h"

namespace heron::test {
namespace {

class WatermarkListTest : public DriverTest {
 protected:
  WatermarkListTest() { backend.modules[kResourceModule][20403] = u"(none)"; }

  void Fill(int entries) {
    set = CreateListStoreSet();
    for (int i = 0; i < entries; ++i) Add(u"m" + platform::FromUtf8(std::to_string(i + 1)));
  }
  int Add(const std::u16string& text) {
    const int index = AddWatermark(store());
    if (index > 0) SetMarkText(store().entries[index], text);
    return index;
  }
  WatermarkStore& store() { return *set.watermarks; }
  std::string Texts() {
    const StringsInUse strings;
    std::string texts;
    for (int i = 0; i < WatermarksIn(store()); ++i) texts += platform::ToUtf8(WatermarkLabel(store(), i)) + ' ';
    return texts;
  }

  ListStoreSet set = CreateListStoreSet();
};

TEST_F(WatermarkListTest, KeepsItsOrderWithoutGaps) {
  const std::string left[] = {"", "(none) m2 m3 m4 ", "(none) m1 m3 m4 ", "(none) m1 m2 m4 ", "(none) m1 m2 m3 "};
  for (int place = 1; place <= 4; ++place) {
    Fill(4);
    const WatermarkEntry empty{};
    EXPECT_TRUE(RemoveWatermark(store(), place));
    EXPECT_EQ(Texts(), left[place]);
    EXPECT_EQ(std::memcmp(&store().entries[4], &empty, sizeof empty), 0) << "nothing of the last entry stays";
    EXPECT_EQ(Add(u"new"), 4);
    EXPECT_EQ(Texts(), left[place] + "new ");
  }
  for (const int place : {-1, 0, 5, 51}) EXPECT_FALSE(RemoveWatermark(store(), place)) << place;
}

TEST_F(WatermarkListTest, HoldsFiftyEntriesBesideTheFirst) {
  Fill(50);
  EXPECT_EQ(WatermarksIn(store()), 51);
  EXPECT_EQ(AddWatermark(store()), 0);
  EXPECT_TRUE(RemoveWatermark(store(), 50));
  EXPECT_EQ(AddWatermark(store()), 50);
  // Counts that another program may have stored.
  store().wMarkListNum = 0;
  EXPECT_EQ(Texts(), "(none) ");
  store().wMarkListNum = 0xFFFF;
  EXPECT_EQ(AddWatermark(store()), 0);
}

TEST_F(WatermarkListTest, NewAndRestoredEntriesEqualTheTemplate) {
  const int index = Add(u"Draft");
  WatermarkEntry& entry = store().entries[index];
  EXPECT_EQ(entry.size, 72U);
  EXPECT_EQ(entry.color, 126U);
  entry.size = 999;
  entry.angle = -1000;
  SetMarkFont(entry, u"A font whose name has more than thirty-one letters");
  EXPECT_EQ(MarkFont(entry).size(), kMarkFontLength);
  SetMarkCenter(entry, 40000, -12);
  EXPECT_EQ(MarkCenterX(entry), 32767);
  EXPECT_EQ(MarkCenterY(entry), -12);
  EXPECT_TRUE(ClampWatermark(entry));
  EXPECT_EQ(entry.size, 400U);
  EXPECT_EQ(entry.angle, -900);
  EXPECT_FALSE(ClampWatermark(entry));
  RestoreWatermark(store(), entry);
  EXPECT_EQ(MarkText(entry), u"Draft");
  EXPECT_EQ(entry.size, 72U);
  EXPECT_EQ(MarkFont(entry), u"宋体");
  SetMarkText(entry, std::u16string(31, u'x') + u"\U0001F600");
  EXPECT_EQ(MarkText(entry).size(), 31U) << "no half of a character";
}

}  // namespace
}  // namespace heron::test

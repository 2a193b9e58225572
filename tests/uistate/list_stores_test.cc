#include <set>

#include "store_fixture.h"
#include "uistate/list_stores_fields.h"
#include "uistate/list_stores_rows.h"
#include "uistate/transfer_value.h"

namespace heron::test {
namespace {

TEST(ListStoreTable, RowsFieldsAndPairsAgree) {
  const ListStoreTable table = BuildListStoreTable();
  ASSERT_EQ(table.rows.size(), 100u);
  EXPECT_EQ(table.rows.back().id(), 0);
  std::set<uint16_t> keys, fields;
  for (const auto& part : table.parts) {
    for (uint16_t n = part.firstRow; n < part.firstRow + part.rowCount; ++n) {
      const WorkingStoreRow& working = table.rows[n];
      const ListStoreRow& row = *working.row;
      EXPECT_EQ(table.IndexOf(row.id), n) << row.id;  // ids are unique
      EXPECT_EQ(working.store, part.store);
      EXPECT_LE(row.lo, row.hi) << row.id;
      EXPECT_EQ(row.name.find(u"%d") != row.name.npos, row.hi != 0) << row.id;
      if (row.link != 0) {
        EXPECT_TRUE(table.rows[table.IndexOf(row.link)].isCount) << row.id;
        EXPECT_EQ(row.lo, 0) << row.id;
        EXPECT_LT(table.IndexOf(row.link), n) << row.id;
      }
      (row.flags == kKeyRow || row.id == 93 ? keys : fields).insert(row.id);
    }
  }
  EXPECT_EQ(std::count_if(table.rows.begin(), table.rows.end(), [](const auto& row) { return row.isCount; }), 4);

  std::set<uint16_t> with_field;
  for (const StoreFieldRow& field : kStoreFields) {
    EXPECT_TRUE(with_field.insert(field.id).second) << field.id;
    const auto index = table.IndexOf(field.id);
    ASSERT_NE(index, kNoIndex) << field.id;
    EXPECT_EQ(table.rows[index].store, field.group->store) << field.id;
  }
  EXPECT_EQ(with_field, fields);

  std::set<uint16_t> paired;
  for (const ListSnapshotPair& pair : kListSnapshotPairs) {
    EXPECT_TRUE(paired.insert(pair.rowId).second) << pair.rowId;
    EXPECT_TRUE(fields.contains(pair.rowId) || pair.rowId == 90) << pair.rowId;
    EXPECT_EQ(KindOf(pair.feature), FeatureKind::kText) << pair.feature;
  }
}

TEST(ListStoreFields, StayInsideTheirStoreAndApart) {
  const ListStoreSet set = CreateListStoreSet();
  StoreField field;
  // Numbers just inside and just outside: lists from 1, pages from 0, messages and user papers from 1.
  const struct {
    uint16_t row;
    int list, first, last;
  } kRanges[] = {{43, 1, 0, 29}, {56, 10, 0, 29}, {10, 0, 0, 99}, {5, 0, 1, 3},
                 {15, 0, 0, 50}, {36, 0, 0, 499}, {94, 0, 1, 10}};
  for (const auto& range : kRanges) {
    EXPECT_TRUE(GetStoreField(range.row, set, range.list, range.first, &field)) << range.row;
    EXPECT_TRUE(GetStoreField(range.row, set, range.list, range.last, &field)) << range.row;
    EXPECT_FALSE(GetStoreField(range.row, set, range.list, range.first - 1, &field)) << range.row;
    EXPECT_FALSE(GetStoreField(range.row, set, range.list, range.last + 1, &field)) << range.row;
    EXPECT_FALSE(GetStoreField(range.row, set, range.list, INT32_MAX, &field)) << range.row;
    EXPECT_FALSE(GetStoreField(range.row, set, range.list, INT32_MIN, &field)) << range.row;
  }
  for (const int list : {0, 11, -1, INT32_MIN, INT32_MAX})
    EXPECT_FALSE(GetStoreField(40, set, list, 0, &field)) << list;
  for (const uint16_t row : std::initializer_list<uint16_t>{0, 13, 37, 90, 93, 0xFFFF})
    EXPECT_FALSE(GetStoreField(row, set, 1, 1, &field)) << row;

  ASSERT_TRUE(GetStoreField(56, set, 10, 29, &field));
  EXPECT_EQ(field.data, reinterpret_cast<uint8_t*>(&set.pageLists->lists[9].pages[29].tabTextFontSize));
  ASSERT_TRUE(GetStoreField(80, set, 0, 0, &field));
  EXPECT_EQ(field.data, reinterpret_cast<uint8_t*>(set.faxCover->senderFaxnum));
  EXPECT_FALSE(GetStoreField(80, ListStoreSet{}, 0, 0, &field));
}

TEST(ListStoreFields, AreReadTyped) {
  const ListStoreSet set = CreateListStoreSet();
  set.pageLists->lists[2].pages[4].tray = -2;
  int32_t value = 0;
  uint32_t size = 0;
  EXPECT_EQ(GetStoreValue(44, set, 3, 4, &value, sizeof value, kTypeI32, &size), 0);
  EXPECT_EQ(value, -2);
  EXPECT_EQ(size, 2u);
  EXPECT_EQ(GetStoreValue(44, set, 11, 4, &value, sizeof value, kTypeI32, &size), -1);
  EXPECT_EQ(GetStoreValue(43, set, 3, 4, &value, sizeof value, kTypeI32, &size), -2);
  EXPECT_EQ(GetStoreValue(43, set, 3, 4, &value, sizeof value, kTypeText, &size), 234);
}

TEST(ListStoreSets, AreCopiedInPlaceAndBearMissingStores) {
  const ListStoreSet source = PatternSet(3);
  ListStoreSet target = CreateListStoreSet();
  const void* block = target.pageLists.get();
  target.fontSubst.reset();
  CopyListStoreSet(target, source);
  EXPECT_EQ(target.pageLists.get(), block);
  EXPECT_TRUE(SameBytes(*target.pageLists, *source.pageLists));
  EXPECT_EQ(target.fontSubst, nullptr);
  EXPECT_NE(source.fontSubst, nullptr);
  DestroyListStoreSet(target);
  EXPECT_EQ(target.pageLists, nullptr);
  CopyListStoreSet(target, source);
  EXPECT_EQ(target.pageLists, nullptr);
}

}  // namespace
}  // namespace heron::test

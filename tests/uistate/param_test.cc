// The parameter table against its neighbours, and every setting through the by-id calls.
#include <map>
#include <set>

#include "generated/values.h"
#include "settings/defaults.h"
#include "store_fixture.h"
#include "uistate/ui_state.h"

namespace heron::test {
namespace {

std::u16string KeyName(const WorkingFileKey& key) {
  return std::u16string(key.row->section) + u"/" + std::u16string(key.row->key);
}

TEST(ParamTables, ReferencesExistAndNothingIsBoundTwice) {
  const ParamTables& tables = Params();
  std::set<uint16_t> ids;
  std::map<uint16_t, int> keys_named;
  for (const WorkingParam& param : tables.params) {
    SCOPED_TRACE(param.row->id);
    EXPECT_TRUE(ids.insert(param.row->id).second);
    EXPECT_EQ(param.storeIndex == kNoIndex, param.row->storeItem == 0);
    const bool stored = !param.row->section.empty() || param.row->fileKey != 0;
    EXPECT_EQ(param.fileKeyIndex == kNoIndex, !stored);
    if (stored) {
      EXPECT_EQ(++keys_named[param.fileKey], 1);
    }
    EXPECT_EQ(param.field != nullptr, !param.row->field.empty() && param.row->rule != ParamRule::kOwn);
    if (param.field != nullptr) {
      EXPECT_LT(param.row->fieldIndex, param.field->count);
    }
    const FeatureKind kind = param.row->feature == kNoFeature ? FeatureKind::kNone : KindOf(param.row->feature);
    if (param.row->HasPointer()) {
      EXPECT_NE(kind, FeatureKind::kRange);
    }
  }
}

TEST(ParamTables, EveryKeyOfASettingsFileHasItsSetting) {
  const ParamTables& tables = Params();
  std::set<uint16_t> ids;
  std::u16string unbound;
  for (const WorkingFileKey& key : tables.fileKeys) {
    EXPECT_TRUE(ids.insert(key.row->id).second) << key.row->id;
    if (key.row->link != 0) {
      EXPECT_TRUE(std::ranges::any_of(tables.fileKeys, [&](const WorkingFileKey& other) {
        return other.row->id == key.row->link && other.isCount && other.row->domain == key.row->domain;
      }));
    }
    if (key.row->key.empty()) continue;
    if (key.paramIndex == kNoIndex)
      unbound += KeyName(key);
    else
      EXPECT_EQ(tables.params[key.paramIndex].fileKeyIndex, key.selfIndex);
  }
  EXPECT_EQ(unbound, u"/FileName") << "the only key that is neither read nor written";
}

class ParamTest : public StoreTest {
 protected:
  ParamTest() {
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    ui = CreateUiState(resources.get(), env, printer.get());
  }
  uint16_t Value(uint16_t id, uint32_t which = kWorkingValue) {
    uint16_t value = 0xEEEE;
    EXPECT_EQ(GetParamValue(id, &value, sizeof value, kTypeI16, nullptr, nullptr, nullptr, ui.get(), which), 0);
    return value;
  }

  DriverEnv env;
  UiStatePtr ui;
};

TEST_F(ParamTest, EveryValueIsWrittenAndReadWithoutTouchingItsNeighbours) {
  int swept = 0;
  for (const WorkingParam& param : Params().params) {
    SCOPED_TRACE(param.row->id);
    const uint16_t id = param.row->id;
    uint8_t* slot = nullptr;
    uint32_t size = 0;
    uint16_t type = 0;
    const int32_t found = GetParamSlot(id, param.selfIndex, ui.get(), &slot, &size, &type);
    if (param.row->kind == ParamKind::kInternal) {
      EXPECT_EQ(found, 0);
      EXPECT_EQ(GetParamValue(id, nullptr, 0, 0, nullptr, nullptr, nullptr, ui.get(), 1), -1);
      continue;
    }
    ASSERT_EQ(found, 1);
    std::vector<uint8_t> fixed(ui->fixed.get(), ui->fixed.get() + ui->fixedSize);
    std::vector<uint8_t> variable(ui->variable.get(), ui->variable.get() + ui->variableSize);
    const std::vector<uint8_t> value(size, static_cast<uint8_t>(swept % 250 + 1));
    ASSERT_EQ(SetParamValue(id, value.data(), size, type, ui.get(), kWorkingValue), 0);
    std::vector<uint8_t> read(size);
    ASSERT_EQ(GetParamValue(id, read.data(), size, type, nullptr, nullptr, nullptr, ui.get(), kWorkingValue), 0);
    EXPECT_EQ(read, value);
    // Put back by hand: everything else is as it was.
    const bool in_variable = slot >= ui->variable.get() && slot < ui->variable.get() + ui->variableSize;
    std::vector<uint8_t>& before = in_variable ? variable : fixed;
    uint8_t* base = in_variable ? ui->variable.get() : ui->fixed.get();
    std::memcpy(slot, before.data() + (slot - base), size);
    ASSERT_EQ(std::memcmp(ui->fixed.get(), fixed.data(), fixed.size()), 0);
    ASSERT_EQ(std::memcmp(ui->variable.get(), variable.data(), variable.size()), 0);
    ++swept;
  }
  EXPECT_EQ(swept, 369);
}

TEST_F(ParamTest, DefaultsLieApartAndOtherPlacesAreRefused) {
  for (const uint16_t id : std::to_array<uint16_t>({1, 3, 2, 5})) {  // a number, a list, a radio, a check
    const uint16_t value = 77;
    EXPECT_EQ(SetParamValue(id, &value, sizeof value, kTypeI16, ui.get(), kDefaultValueOf), 0);
    EXPECT_EQ(Value(id, kDefaultValueOf), 77) << id;
    EXPECT_NE(Value(id), 77) << id;
    EXPECT_EQ(SetParamValue(id, &value, sizeof value, kTypeI16, ui.get(), 3), 0);
    EXPECT_NE(Value(id), 77) << id;
    EXPECT_EQ(Value(id, 0), 0xEEEE) << id;
  }
  const uint32_t wide = 0x10001;
  EXPECT_EQ(SetParamValue(1, &wide, sizeof wide, kTypeU32, ui.get(), kWorkingValue), kTransferTooLarge);
  EXPECT_EQ(GetParamValue(9999, nullptr, 0, 0, nullptr, nullptr, nullptr, ui.get(), 1), -1);
  EXPECT_EQ(GetParamValue(1, nullptr, 0, 0, nullptr, nullptr, nullptr, nullptr, 1), -1);
  EXPECT_EQ(AccessParam(nullptr), 0);
}

TEST_F(ParamTest, SpecialRowsReadTheRecordTheirOwnWay) {
  const auto read = [&](uint16_t id, const ResourceContext* with = nullptr) {
    uint16_t value = 0xEEEE;
    ParamAccess access;
    access.id = id;
    access.rowIndex = ParamIndexOf(id);
    access.env = &env;
    access.resources = with;
    access.valueOut = &value;
    EXPECT_EQ(AccessParam(&access), 1);
    return value;
  };
  Set<"lpFrontCover">(env, 1);
  EXPECT_EQ(read(20), 0);
  EXPECT_EQ(read(21), 2);
  EXPECT_EQ(Get<"lpFrontCover">(env), value::lpFrontCover::kBlank);
  EXPECT_EQ(read(20), 1);
  for (const uint16_t layout : std::to_array<uint16_t>({1, 2, 5})) {
    Set<"lpLayout">(env, layout);
    EXPECT_EQ(read(11), layout == 5 ? 5 : 8);
  }
  Set<"EnableBPPChange_Check">(env, 2);
  EXPECT_EQ(read(560), 1);
  Set<"EnableBPPChange_Check">(env, value::EnableBPPChange_Check::kOn);
  EXPECT_EQ(read(560), 0);
  Set<"dmPaperSize">(env, 9);
  Set<"dmPaperWidth">(env, 1234);
  Set<"UDPaperWidth">(env, 999);
  EXPECT_EQ(read(151), 999);
  Set<"dmPaperSize">(env, 513);
  EXPECT_EQ(read(151), 1234);
  EXPECT_EQ(read(187), CatalogDefault(resources.get(), 220));  // opens resources of its own
  EXPECT_EQ(read(187, resources.get()), CatalogDefault(resources.get(), 220));
  EXPECT_EQ(read(581), 0);
  EXPECT_EQ(read(500), 0xEEEE) << "a tray row has nothing to say";
  Set<"colorGroup.Black">(env, 42, 2);
  EXPECT_EQ(read(397), 42);
}

TEST_F(ParamTest, StoredDefaultsHaveTheTypeOfTheirRow) {
  const auto number = [&](uint16_t id, auto type) {
    const uint8_t* at = nullptr;
    EXPECT_TRUE(GetRowDefault(ParamIndexOf(id), *ui->snapshots, &at)) << id;
    std::memcpy(&type, at, sizeof type);
    return type;
  };
  const uint8_t* at = nullptr;
  EXPECT_EQ(number(230, uint16_t{}), 257);
  EXPECT_EQ(number(207, uint16_t{}), 1);
  EXPECT_EQ(number(209, uint16_t{}), 1);
  ASSERT_TRUE(GetRowDefault(ParamIndexOf(138), *ui->snapshots, &at));
  EXPECT_EQ(std::u16string_view(reinterpret_cast<const char16_t*>(at)), u"宋体");
  EXPECT_FALSE(GetRowDefault(ParamIndexOf(3), *ui->snapshots, &at)) << "a setting with a feature";
  EXPECT_FALSE(GetRowDefault(9999, *ui->snapshots, &at));
  const ListStoreTable& stores = Params().stores;
  ASSERT_TRUE(GetStoreRowDefault(stores.IndexOf(94), *ui->snapshots, &at));
  uint32_t width;
  std::memcpy(&width, at, sizeof width);
  EXPECT_EQ(width, 8267u);
  EXPECT_FALSE(GetStoreRowDefault(stores.IndexOf(90), *ui->snapshots, &at)) << "a key";
  const auto in_snapshot = [](const auto& row) { return row.inSnapshot; };
  EXPECT_EQ(std::ranges::count_if(stores.rows, in_snapshot), 83);
  EXPECT_EQ(std::ranges::count_if(Params().params, in_snapshot), 34);
}

}  // namespace
}  // namespace heron::test

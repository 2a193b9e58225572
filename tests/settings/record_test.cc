// The record's own checks: what counts as ours, and as the same format.
#include "settings/driver_env.h"

#include <gtest/gtest.h>

#include "generated/values.h"
#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace heron::test {
namespace {

class RecordTest : public DriverTest {
 protected:
  RecordTest() { BuildDefaultEnv(resources.get(), &env, u"P1", printer.get()); }
  DriverEnv env;
};

TEST_F(RecordTest, OwnRecordDependsOnHeaderSignatureAndTagOnly) {
  EXPECT_TRUE(IsOwnEnv(env.bytes.data()));
  EXPECT_FALSE(IsOwnEnv(nullptr));
  for (size_t at = 64; at < kEnvSize; ++at) {
    DriverEnv other = env;
    other.bytes[at] ^= 0x01;
    const bool header = at < 72;
    const bool signature = at >= 440 && at < 448;
    const bool tag = at >= 3293 && at < 3303;
    EXPECT_EQ(IsOwnEnv(other.bytes.data()), !header && !signature && !tag) << "byte " << at;
  }
}

TEST_F(RecordTest, TopTwoVersionBitsAreFree) {
  Set<"dmDriverVersion">(env, 0xC200);
  EXPECT_TRUE(IsOwnEnv(env.bytes.data()));
  Set<"dmDriverVersion">(env, 0x4201);
  EXPECT_FALSE(IsOwnEnv(env.bytes.data()));
}

TEST_F(RecordTest, SameFormatComparesBothSidesAndNeverReadsBeyondThem) {
  DriverEnv other = env;
  Set<"Zoom">(other, 50);
  EXPECT_TRUE(IsSameEnvFormat(other.bytes.data(), env.bytes.data()));
  EXPECT_FALSE(IsSameEnvFormat(nullptr, env.bytes.data()));
  EXPECT_FALSE(IsSameEnvFormat(env.bytes.data(), nullptr));
  CallerRecord bare;
  EXPECT_FALSE(IsSameEnvFormat(bare.data(), env.bytes.data()));
  EXPECT_FALSE(IsSameEnvFormat(bare.data(), bare.data()));
  CallerRecord signed_only(220, 300);  // long enough for a signature, too short for a tag
  std::memcpy(signed_only.data() + 440, u"QDRV", 8);
  EXPECT_FALSE(IsSameEnvFormat(signed_only.data(), signed_only.data()));
  other.bytes[3293] = 'W';
  EXPECT_FALSE(IsSameEnvFormat(other.bytes.data(), env.bytes.data()));
}

TEST_F(RecordTest, TextsAreBoundedByTheirFields) {
  SetText<"secureCodeA">(env, u"0123456789ABCDEF");
  EXPECT_EQ(GetText<"secureCodeA">(env), u"0123456789");
  EXPECT_EQ(GetText<"securePassword">(env), u"");
  const auto full = std::array<char16_t, 11>{u'1', u'2', u'3', u'4', u'5', u'6', u'7', u'8', u'9', u'A', u'B'};
  std::memcpy(FieldBytes<"securePassword">(env), full.data(), sizeof full);
  EXPECT_EQ(GetText<"securePassword">(env).size(), 11U);
}

TEST_F(RecordTest, DefaultsOfEachDestination) {
  struct Row {
    uint32_t country;
    int16_t paper, width, length;
  };
  for (const Row& row : {Row{1, 1, 2159, 2794}, {67, 1, 2159, 2794}, {86, 9, 2100, 2970}, {81, 9, 2100, 2970}}) {
    SCOPED_TRACE(row.country);
    Reopen(row.country);
    DriverEnv again;
    BuildDefaultEnv(resources.get(), &env, nullptr, printer.get());
    BuildDefaultEnv(resources.get(), &again, nullptr, printer.get());
    EXPECT_EQ(env.bytes, again.bytes);
    EXPECT_EQ(Get<"dmPaperSize">(env), row.paper);
    EXPECT_EQ(Get<"dmPaperWidth">(env), row.width);
    EXPECT_EQ(Get<"dmPaperLength">(env), row.length);
    EXPECT_EQ(Get<"lpOutputPaper">(env), row.paper);
    EXPECT_EQ(Get<"QXOutputPaperSize">(env), 257);
    EXPECT_EQ(Get<"documentPaperSnapshot">(env), row.paper);
    EXPECT_EQ(Get<"dmDuplex">(env), 1);
    EXPECT_EQ(Get<"lpFrontCover">(env), 1);
    EXPECT_EQ(Get<"EnableBPPChange_Check">(env), value::EnableBPPChange_Check::kOn);
    EXPECT_EQ(Get<"maxCopies">(env), 999);
    EXPECT_EQ(Get<"bindingSide">(env), 2);
    EXPECT_EQ(Get<"trayTable.lpMediaSource">(env, 3), 258);
    EXPECT_EQ(Get<"trayTable.lpMediaSource">(env, 9), 7);
    EXPECT_EQ(Get<"trayTable.lpMediaType">(env, 9), 1);
    EXPECT_EQ(GetText<"dmDeviceName">(env), u"P1");
    EXPECT_EQ(std::memcmp(env.bytes.data() + 1427, "4321", 4), 0);
    EXPECT_EQ(std::memcmp(env.bytes.data() + 3324, "1234", 4), 0);
  }
}

TEST_F(RecordTest, WithoutResourcesEveryCatalogueValueIsZero) {
  BuildDefaultEnv(nullptr, &env, u"P1", printer.get());
  EXPECT_TRUE(IsOwnEnv(env.bytes.data()));
  EXPECT_EQ(Get<"dmPaperSize">(env), 0);
  EXPECT_EQ(Get<"lpMediaSource">(env), 0);
  EXPECT_EQ(Get<"renderConstant">(env), 5);
}

}  // namespace
}  // namespace heron::test

// The record's own checks: what counts as ours, and as the same format.
#include "settings/driver_env.h"

#include <gtest/gtest.h>

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

// The values are those of the journey of the default record.
TEST_F(RecordTest, DefaultsFollowTheDestinationAlone) {
  for (const auto& [country, paper] : {std::pair(1u, 1), {67u, 1}, {86u, 9}, {81u, 9}}) {
    Reopen(country);
    DriverEnv again;
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    BuildDefaultEnv(resources.get(), &again, nullptr, printer.get());
    EXPECT_EQ(env.bytes, again.bytes);
    EXPECT_EQ(Get<"dmPaperSize">(env), paper) << country;
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

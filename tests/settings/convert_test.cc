// Conversions between formats: sizes, versions, what stays, and failure that touches nothing.
#include "settings/convert.h"

#include "settings/defaults.h"
#include "support/driver_fixture.h"
#include "support/records.h"

namespace heron::test {
namespace {

using namespace platform;

class ConvertTest : public DriverTest {
 protected:
  ConvertTest() { BuildDefaultEnv(resources.get(), &env, u"P1", printer.get()); }
  int32_t Convert(const uint8_t* in, uint8_t* out, uint32_t mode) {
    SetLastError(0);
    return ConvertDevMode(u"P1", in, out, &needed, mode);
  }
  DriverEnv env;
  uint32_t needed = 0;
};

TEST_F(ConvertTest, VersionFollowsFromThePublicSize) {
  for (const auto& [size, version] :
       {std::pair<uint16_t, uint16_t>{188, 0x320}, {212, 0x400}, {220, 0x401}, {100, 7}}) {
    CallerRecord target(size, 10, 7);
    EXPECT_EQ(ConvertEnv(ForeignEnv(env.bytes.data()), target.data()), std::min<int>(size, 220) + 10);
    EXPECT_EQ(ForeignEnv(target.data()).Public<"dmSpecVersion">(), version);
    EXPECT_EQ(ForeignEnv(target.data()).PublicSize(), size);
    EXPECT_EQ(ForeignEnv(target.data()).PrivateSize(), 10);
    EXPECT_EQ(std::memcmp(target.data() + size, env.bytes.data() + 220, 10), 0)
        << "private parts meet their own starts";
  }
}

TEST_F(ConvertTest, UnknownVersionsTouchNothing) {
  CallerRecord target(100, 10, 0);
  const std::vector<uint8_t> before = target.bytes();
  EXPECT_EQ(ConvertEnv(ForeignEnv(env.bytes.data()), target.data()), -1);
  EXPECT_EQ(ConvertEnv(ForeignEnv(target.data()), env.bytes.data()), -1);
  EXPECT_FALSE(ConvertEnvOut(env, ForeignEnv(target.data()), target.data()));
  EXPECT_EQ(target.bytes(), before);
  EXPECT_TRUE(IsOwnEnv(env.bytes.data()));
}

TEST_F(ConvertTest, OutTakesTheSmallerFormatAlsoInPlace) {
  CallerRecord input(212, 40, 0x400);
  input.Set<"dmDriverVersion">(0x1111);
  std::vector<uint8_t> output(kEnvSize, 0xEE);
  ASSERT_TRUE(ConvertEnvOut(env, ForeignEnv(input.data()), output.data()));
  const ForeignEnv out(output.data());
  EXPECT_EQ(out.PublicSize(), 212);
  EXPECT_EQ(out.PrivateSize(), 40);
  EXPECT_EQ(out.Public<"dmSpecVersion">(), 0x400);
  EXPECT_EQ(out.Public<"dmDriverVersion">(), 0x1111);
  EXPECT_EQ(output[252], 0xEE) << "nothing behind the format is written";
  ASSERT_TRUE(ConvertEnvOut(env, ForeignEnv(input.data()), input.data()));
  EXPECT_TRUE(std::equal(input.bytes().begin(), input.bytes().end(), output.begin()));

  CallerRecord larger(240, 4000, 0x500);
  ASSERT_TRUE(ConvertEnvOut(env, ForeignEnv(larger.data()), larger.data()));
  EXPECT_EQ(std::memcmp(larger.data(), env.bytes.data(), kEnvSize), 0) << "ties and larger formats take ours";
}

TEST_F(ConvertTest, ConvertModeWantsRoomAndBothRecords) {
  CallerRecord target(188, 100, 0x320);
  needed = 287;
  EXPECT_EQ(Convert(env.bytes.data(), target.data(), CDM_CONVERT), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidParameter);
  needed = 4000;
  EXPECT_EQ(Convert(env.bytes.data(), target.data(), CDM_CONVERT), 1);
  EXPECT_EQ(needed, 288U);
  EXPECT_EQ(Convert(nullptr, target.data(), CDM_CONVERT), 0);
  EXPECT_EQ(Convert(env.bytes.data(), nullptr, CDM_CONVERT), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidParameter);
  EXPECT_EQ(ConvertDevMode(u"P1", env.bytes.data(), target.data(), nullptr, CDM_CONVERT), 0);
  EXPECT_EQ(Convert(env.bytes.data(), target.data(), 3), 0);
}

TEST_F(ConvertTest, LegacyFormat) {
  std::vector<uint8_t> output(1037);
  EXPECT_EQ(Convert(env.bytes.data(), output.data(), CDM_CONVERT351), 0);
  EXPECT_EQ(needed, 1037U);
  EXPECT_EQ(GetLastError(), kErrorInsufficientBuffer);
  EXPECT_EQ(output, std::vector<uint8_t>(1037));
  needed = 2000;
  EXPECT_EQ(Convert(env.bytes.data(), output.data(), CDM_CONVERT351), 1);
  EXPECT_EQ(needed, 1037U);
  const ForeignEnv legacy(output.data());
  EXPECT_EQ(legacy.Public<"dmSpecVersion">(), 0x320);
  EXPECT_EQ(legacy.Public<"dmDriverVersion">(), 0);
  EXPECT_EQ(legacy.Public<"dmOrientation">(), 1);
  EXPECT_EQ(std::memcmp(output.data() + 188, env.bytes.data() + 220, 849), 0);
  EXPECT_EQ(Convert(nullptr, output.data(), CDM_CONVERT351), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidParameter);
}

TEST_F(ConvertTest, DriverDefaultIsTheUnvalidatedDefault) {
  std::vector<uint8_t> output(kEnvSize);
  EXPECT_EQ(Convert(nullptr, output.data(), CDM_DRIVER_DEFAULT), 0);
  EXPECT_EQ(needed, kEnvSize);
  EXPECT_EQ(Convert(nullptr, output.data(), CDM_DRIVER_DEFAULT), 1);
  EXPECT_TRUE(std::equal(output.begin(), output.end(), env.bytes.begin()));
  EXPECT_EQ(ConvertDevMode(u"unknown", nullptr, output.data(), &needed, CDM_DRIVER_DEFAULT), 0);
}

}  // namespace
}  // namespace heron::test

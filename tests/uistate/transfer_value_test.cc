#include "uistate/transfer_value.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

namespace heron {
namespace {

struct Code {
  uint16_t code;
  uint32_t width;
  uint32_t minusTwo;  ///< what the code's -2 is as 32 bits
};
constexpr Code kNumeric[] = {{1, 1, 0xFE},       {2, 2, 0xFFFE},      {4, 2, 0xFFFFFFFE},
                             {8, 4, 0xFFFFFFFE}, {16, 4, 0xFFFFFFFE}, {32, 4, 0xFFFFFFFE}};

TEST(TransferValue, ConvertsBetweenAllNumericCodes) {
  for (const Code& from : kNumeric) {
    for (const Code& to : kNumeric) {
      SCOPED_TRACE(testing::Message() << from.code << " to " << to.code);
      const std::array<uint8_t, 4> source = {0xFE, 0xFF, 0xFF, 0xFF};
      std::array<uint8_t, 8> target;
      target.fill(0xAA);
      uint32_t size = 0;
      ASSERT_EQ(TransferValue(TransferDirection::kRead, {target.data(), 4, to.code},
                              {source.data(), from.width, from.code}, &size),
                0);
      EXPECT_EQ(size, from.width);
      std::array<uint8_t, 8> expected;
      expected.fill(0xAA);
      std::memcpy(expected.data(), &from.minusTwo, to.code == from.code ? from.width : to.width);
      EXPECT_EQ(target, expected);
    }
  }
}

TEST(TransferValue, PairsNothingElse) {
  const std::array<uint8_t, 8> source = {1, 2, 3, 4, 5, 6, 7, 8};
  const std::vector<uint16_t> codes = {0, 1, 2, 3, 4, 8, 16, 32, 64, 128, 129, 256, 0xFFFF};
  for (const uint16_t from : codes) {
    for (const uint16_t to : codes) {
      const auto numeric = [](uint16_t code) { return code != 0 && code != 3 && code <= 32; };
      const bool block = from == 64 || from == 128;
      const bool paired = (numeric(from) && (numeric(to) || to == 0)) || (block && (to == from || to == 0));
      for (const auto direction : {TransferDirection::kRead, TransferDirection::kWrite}) {
        std::array<uint8_t, 8> target{};
        const int32_t result = TransferValue(direction, {target.data(), 8, to}, {source.data(), 8, from}, nullptr);
        EXPECT_EQ(result, paired ? 0 : -2) << from << " to " << to;
        EXPECT_EQ(target[0], paired ? 1 : 0) << from << " to " << to;
      }
    }
  }
}

TEST(TransferValue, BoundsBothEnds) {
  const std::array<uint8_t, 4> source = {1, 2, 3, 4};
  std::array<uint8_t, 8> target;
  const auto run = [&](TransferDirection direction, uint32_t to_size, uint16_t to, uint32_t from_size, uint16_t from) {
    target.fill(0xAA);
    uint32_t size = 0;
    const int32_t result =
        TransferValue(direction, {target.data(), to_size, to}, {source.data(), from_size, from}, &size);
    EXPECT_EQ(size, from_size);
    return result;
  };
  constexpr auto kRead = TransferDirection::kRead;
  constexpr auto kWrite = TransferDirection::kWrite;
  constexpr std::array<uint8_t, 8> kUntouched = {0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA};

  EXPECT_EQ(run(kRead, 3, 64, 4, 64), 234);
  EXPECT_EQ(run(kWrite, 3, 64, 4, 64), -1);
  EXPECT_EQ(run(kRead, 2, 16, 2, 2), 234);  // two bytes of room for four
  EXPECT_EQ(run(kWrite, 4, 16, 1, 2), -1);  // one byte given for two
  EXPECT_EQ(target, kUntouched);
  EXPECT_EQ(run(kRead, 8, 128, 4, 128), 0);  // a read leaves the rest of the buffer
  EXPECT_EQ(target, (std::array<uint8_t, 8>{1, 2, 3, 4, 0xAA, 0xAA, 0xAA, 0xAA}));
  EXPECT_EQ(run(kWrite, 6, 128, 4, 128), 0);  // a write clears the rest of the slot, and no more
  EXPECT_EQ(target, (std::array<uint8_t, 8>{1, 2, 3, 4, 0, 0, 0xAA, 0xAA}));

  uint32_t size = 0;
  EXPECT_EQ(TransferValue(kRead, {nullptr, 0, 64}, {source.data(), 4, 64}, &size), 0);
  EXPECT_EQ(size, 4u);
}

}  // namespace
}  // namespace heron

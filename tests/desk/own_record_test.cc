// What becomes of a confirmed window's record when another program has changed the user's own one meanwhile.
#include <gtest/gtest.h>

#include "common/record_file.h"

namespace heron::cli {
namespace {

/// The smallest record that a file may hold, told apart by `mark`.
Bytes Record(uint8_t mark) {
  constexpr size_t kSize = 220;
  constexpr size_t kSizeAt = 68;  // dmSize
  Bytes record(kSize);
  record[kSizeAt] = kSize;
  record.back() = mark;
  return record;
}

TEST(OwnRecord, WhatAnotherProgramHasSetIsReplacedOnlyIfThePersonSaysSo) {
  const std::string printer = "Own record";
  const Bytes none;
  const Bytes mine = Record(1);
  int asked = 0;
  const auto write_theirs = [&](uint8_t mark) { ASSERT_TRUE(KeepOwnRecord(printer, nullptr, Record(mark))); };
  const auto answer = [&](bool yes) { return [&asked, yes] { return ++asked, yes; }; };
  EXPECT_TRUE(KeepConfirmedRecord(printer, &none, mine, false, answer(false)));
  EXPECT_EQ(OwnRecord(printer), mine);

  write_theirs(2);
  EXPECT_TRUE(KeepConfirmedRecord(printer, &mine, mine, false, answer(true)));
  EXPECT_EQ(OwnRecord(printer), Record(2)) << "an untouched window undoes nothing";
  EXPECT_EQ(asked, 0);
  EXPECT_FALSE(KeepConfirmedRecord(printer, &mine, Record(3), true, answer(false)));
  EXPECT_EQ(OwnRecord(printer), Record(2));
  EXPECT_EQ(asked, 1);

  // The answer counts for what was there when it was asked.
  const auto changes_again = [&] {
    if (++asked == 2) write_theirs(4);
    return true;
  };
  EXPECT_TRUE(KeepConfirmedRecord(printer, &mine, Record(3), true, changes_again));
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(OwnRecord(printer), Record(3));
  EXPECT_TRUE(KeepConfirmedRecord(printer, nullptr, Record(5), true, answer(false))) << "made of another record";
  EXPECT_EQ(OwnRecord(printer), Record(5));
}

}  // namespace
}  // namespace heron::cli

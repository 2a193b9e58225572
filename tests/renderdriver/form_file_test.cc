// Forms that this printing half makes: their description, their page, and files that aren't whole.
#include "renderdriver/form_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/letter_record.h"

namespace heron::renderdriver {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes Page(size_t size) {
  Bytes page(size);
  for (size_t i = 0; i < size; ++i) page[i] = static_cast<uint8_t>(i * 7);
  return page;
}

TEST(FormFile, HoldsItsPageWholeOrNotAtAll) {
  const Bytes page = Page(300);
  const Bytes form = MakeForm(test::LetterRecord(), page);
  const auto read = PageOfForm(form);
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(Bytes(read->begin(), read->end()), page);
  for (size_t size = 0; size < form.size(); ++size)
    EXPECT_FALSE(PageOfForm(std::span(form).first(size)).has_value()) << size;
  Bytes longer = form;
  longer.push_back(0);
  EXPECT_FALSE(PageOfForm(longer).has_value());
}

TEST(FormFile, SuitsJobsOfItsKind) {
  DriverEnv record = test::LetterRecord();
  const auto with = [&](uint8_t pdl, uint8_t color) {
    DriverEnv job = record;
    Set<"lpPDLType">(job, pdl);
    Set<"lpColorMode">(job, color);
    return job;
  };
  const Bytes color = MakeForm(with(2, 1), Page(10));
  const Bytes mono = MakeForm(with(2, 2), Page(10));
  EXPECT_TRUE(FormSuits(color, with(2, 1)));
  EXPECT_TRUE(FormSuits(color, with(3, 3)));
  EXPECT_FALSE(FormSuits(color, with(2, 2)));
  EXPECT_FALSE(FormSuits(color, with(1, 1)));
  EXPECT_TRUE(FormSuits(mono, with(2, 1)));
  for (size_t size = 0; size < 60; ++size) EXPECT_FALSE(FormSuits(std::span(mono).first(size), with(2, 2))) << size;
  EXPECT_FALSE(FormSuits(Bytes(500, 0xC8), with(2, 2)));
}

}  // namespace
}  // namespace heron::renderdriver

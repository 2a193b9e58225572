// To fax and back: what is told, what is set to its default, what is moved afterwards.
#include "engine/fax_mode.h"

#include "engine/resolve_fixture.h"

namespace heron::engine {
namespace {

class FaxModeTest : public ResolveTest {
 protected:
  bool Switch(uint16_t output) {
    front.shown.clear();
    SnapshotValues(*engine);
    engine->Set(Control(u"lpOutput.902"), output);
    return ChangeOutputMode(*engine, &front);
  }
};

TEST_F(FaxModeTest, WhatAFaxExcludesGoesToItsDefaultAndIsTold) {
  Put("lpFAXUnit=2 lpOutputUnit=3 lpSaddleUnit=2 Copies=3 lpPRNType=3 Staple_Check=1 Front_Check=1 lpOutputPaper=2382");
  EXPECT_TRUE(Switch(kOutputFax));
  EXPECT_TRUE(front.shown.starts_with("[31631]|[31620][20008] => ")) << front.shown;
  EXPECT_NE(front.shown.find("[20005] => 1 \n[20039] => [21595] \n[31626][20009]   [20011]\n"), std::string::npos)
      << front.shown;
  EXPECT_EQ(front.shown.find("[31620]", 20), std::string::npos) << "the second look has nothing to add";
  EXPECT_EQ(Value("Copies"), 1);
  EXPECT_EQ(Value("lpPRNType"), 1);
  EXPECT_EQ(Value("Staple_Check"), 0);
  EXPECT_EQ(Value("Front_Check"), 0);
  EXPECT_EQ(Value("lpOutputPaper"), 2054) << "one page of a sheet that holds two";
  EXPECT_FALSE(Available("lpPRNType"));

  EXPECT_TRUE(Switch(kOutputPrinter));
  EXPECT_EQ(front.shown, "");
  EXPECT_TRUE(Available("lpPRNType"));
}

TEST_F(FaxModeTest, NamesStandTwoToALineAndEachOnce) {
  Put("lpOutput=1");
  std::u16string text;
  const int names = ListFaxIgnored(*engine, nullptr, text);
  std::map<std::u16string, int> seen;
  const std::u16string lines = text;
  int counted = 0;
  for (size_t at = 0; (at = lines.find(u'[', at)) != std::u16string::npos; ++at, ++counted) {
    EXPECT_EQ(++seen[lines.substr(at, 7)], 1);
  }
  EXPECT_EQ(counted, names);
  // Labels without a text are left out; a page's names begin a line.
  EXPECT_NE(text.find(u"[20016]\n[20100]   [20101]\n"), std::u16string::npos) << platform::ToUtf8(text);
  Put("lpOutput=2");
  text.clear();
  EXPECT_EQ(ListFaxIgnored(*engine, nullptr, text), 0);
  EXPECT_EQ(text, u"");
}

TEST_F(FaxModeTest, WithoutAPaperForItAFaxIsRefused) {
  Put("lpFAXUnit=2 Copies=3 lpMediaSize=9 lpOutputPaper=8");
  for (ListItem& item : engine->controls[Control(u"lpOutputPaper")].list->Items())
    item.value = 38;  // nothing but envelopes
  Put("lpOutputPaper=38");
  EXPECT_FALSE(Switch(kOutputFax));
  EXPECT_TRUE(front.shown.starts_with("[31631]|[22213][20008] : ")) << front.shown;
  EXPECT_NE(front.shown.find("[20010]("), std::string::npos) << front.shown;
  EXPECT_EQ(Value("lpOutput"), kOutputPrinter);
  EXPECT_EQ(Value("Copies"), 3);
  EXPECT_EQ(Value("lpOutputPaper"), 38);
}

TEST_F(FaxModeTest, WhereRecipientsCantBeEnteredTheNoticeSaysSo) {
  Put("lpFAXUnit=2 Copies=3");
  ui->head().printerDataLocked = 0;
  EXPECT_TRUE(Switch(kOutputFax));
  EXPECT_EQ(front.shown, "[31631]|[31630]");
  EXPECT_EQ(Value("Copies"), 1);
}

TEST_F(FaxModeTest, BackAtThePrinterForbiddenValuesMove) {
  Put("lpFAXUnit=2 lpOutput=1 lpMediaSource=258 lpSourceUnit=1");
  EXPECT_TRUE(Switch(kOutputPrinter));
  EXPECT_TRUE(front.shown.starts_with("[31635]|[31634][20009] => ")) << front.shown;
  EXPECT_EQ(Value("lpMediaSource"), 7);
}

}  // namespace
}  // namespace heron::engine

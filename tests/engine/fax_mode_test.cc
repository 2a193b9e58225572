// To fax and back: what is reported, what is set to its default, what is moved afterwards.
#include "changes/fax_mode.h"

#include "generated/values.h"
#include "resolve_fixture.h"

namespace heron::engine {
namespace {

class FaxModeTest : public ResolveTest {
 protected:
  bool Switch(uint16_t output) {
    front.shown.clear();
    SnapshotValues(*engine);
    engine->Set(Control(u"lpOutput.Fax"), output);
    return ChangeOutputMode(*engine, &front);
  }
};

TEST_F(FaxModeTest, WhatAFaxExcludesGoesToItsDefaultAndIsReported) {
  Put("lpFAXUnit=Installed lpOutputUnit=BinAndExit2 lpSaddleUnit=Installed Copies=3 lpPRNType=Booklet Staple_Check=On "
      "Front_Check=On lpOutputPaper=Size425x55R");
  EXPECT_TRUE(Switch(value::lpOutput::kFax));
  EXPECT_TRUE(front.shown.starts_with("[31631]|[31620][20008] => ")) << front.shown;
  EXPECT_NE(front.shown.find("[20005] => 1 \n[20039] => [21595] \n[31626][20009]   [20011]\n"), std::string::npos)
      << front.shown;
  EXPECT_EQ(front.shown.find("[31620]", 20), std::string::npos) << "the second look has nothing to add";
  EXPECT_EQ(Value("Copies"), 1);
  EXPECT_EQ(Value("lpPRNType"), "OneSided");
  EXPECT_EQ(Value("Staple_Check"), "Off");
  EXPECT_EQ(Value("Front_Check"), "Off");
  EXPECT_EQ(Value("lpOutputPaper"), "StatementR") << "one page of a sheet that holds two";
  EXPECT_FALSE(Available("lpPRNType"));

  EXPECT_TRUE(Switch(value::lpOutput::kPrinter));
  EXPECT_EQ(front.shown, "");
  EXPECT_TRUE(Available("lpPRNType"));
}

TEST_F(FaxModeTest, NamesAreListedOnceTwoToALine) {
  Put("lpOutput=Fax");
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
  Put("lpOutput=Printer");
  text.clear();
  EXPECT_EQ(ListFaxIgnored(*engine, nullptr, text), 0);
  EXPECT_EQ(text, u"");
}

TEST_F(FaxModeTest, WithoutAPaperForItAFaxIsRefused) {
  Put("lpFAXUnit=Installed Copies=3 lpMediaSize=A4 lpOutputPaper=A3");
  for (ListItem& item : engine->controls[Control(u"lpOutputPaper")].list->Items())
    item.value = 38;  // nothing but envelopes
  Put("lpOutputPaper=EnvelopePersonal");
  EXPECT_FALSE(Switch(value::lpOutput::kFax));
  EXPECT_TRUE(front.shown.starts_with("[31631]|[22213][20008] : ")) << front.shown;
  EXPECT_NE(front.shown.find("[20010]("), std::string::npos) << front.shown;
  EXPECT_EQ(Value("lpOutput"), value::lpOutput::kPrinter);
  EXPECT_EQ(Value("Copies"), 3);
  EXPECT_EQ(Value("lpOutputPaper"), "EnvelopePersonal");
}

TEST_F(FaxModeTest, WhereRecipientsCantBeEnteredTheNoticeSaysSo) {
  Put("lpFAXUnit=Installed Copies=3");
  ui->head().printerDataLocked = 0;
  EXPECT_TRUE(Switch(value::lpOutput::kFax));
  EXPECT_EQ(front.shown, "[31631]|[31630]");
  EXPECT_EQ(Value("Copies"), 1);
}

TEST_F(FaxModeTest, BackAtThePrinterForbiddenValuesMove) {
  Put("lpFAXUnit=Installed lpOutput=Fax lpMediaSource=Tray3 lpSourceUnit=NotInstalled");
  EXPECT_TRUE(Switch(value::lpOutput::kPrinter));
  EXPECT_TRUE(front.shown.starts_with("[31635]|[31634][20009] => ")) << front.shown;
  EXPECT_EQ(Value("lpMediaSource"), "Auto");
}

}  // namespace
}  // namespace heron::engine

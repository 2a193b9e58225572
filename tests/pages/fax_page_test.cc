// Page 900 and its dialogs: recipients, cover sheet, details.
#include "pages/recipient_list.h"
#include "sheet_fixture.h"

namespace heron::test {
namespace {

using namespace platform;
using engine::Setting;

class FaxPageTest : public SheetTest {
 protected:
  FaxPageTest() {
    auto& texts = backend.modules[kResourceModule];
    texts[31500] = u"0123456789#*-PT";
    texts[31507] = u"again %s";
    texts[31611] = u"more than %d";
    texts[31612] = u"none, %d";
    texts[21015] = u"no %s";
  }
  void OpenFax(const std::string& more = {}) {
    OpenPage("lpFAXUnit=Installed " + more, "fax", DM_COPY | DM_PROMPT | DM_MODIFY);
    page->Press("lpOutput.Fax");
    desk.Told();
  }
  void Add(std::u16string_view number, std::u16string_view name = {}) {
    page->Put("recipientName", name);
    page->Put("recipientNumber", number);
    page->Click("addRecipient");
  }
  std::string Numbers() {
    std::string numbers;
    for (const ListRow& row : (*page)["recipients"_id].rows) numbers += ToUtf8(row.cells[0]) + ' ';
    return numbers;
  }
};

TEST_F(FaxPageTest, RecipientsAreAddedCheckedSortedAndDeleted) {
  OpenFax();
  EXPECT_FALSE(page->IsEnabled("addRecipient"));
  page->Type("recipientNumber", u"1a2b");
  EXPECT_EQ(page->TextOf("recipientNumber"), "12");
  EXPECT_TRUE(page->IsEnabled("addRecipient"));
  Add(u"3", u"Zoe");
  Add(u"1", u"Anna");
  Add(u"2", u"Bob");
  EXPECT_EQ(page->TextOf("recipientCount"), "3/100");
  Add(u"2", u"Other");
  EXPECT_EQ(desk.Told(), "[31505]|again 2");
  Add(u"2x");
  EXPECT_EQ(desk.Told(), "[21128]|[21013][31540]");
  EXPECT_EQ(page->TextOf("recipientNumber"), "");
  page->ClickHeading("recipients", 1);
  EXPECT_EQ(Numbers(), "1 2 3 ");
  page->ClickHeading("recipients", 0);
  EXPECT_EQ(Numbers(), "1 2 3 ");
  page->ClickHeading("recipients", 1);
  EXPECT_EQ(Numbers(), "3 2 1 ") << "the second click on the number turns the order";
  page->Select("recipients", 1);
  page->Click("deleteRecipient");
  EXPECT_EQ(Numbers(), "3 1 ");
  EXPECT_EQ(page->SelectedText("recipients"), "Anna");
  EXPECT_EQ(ui().head().faxRowCount, 2);
  EXPECT_EQ(ui().head().faxAddressCount, 0) << "only Apply takes the rows over";
  EXPECT_TRUE(sheet->Apply());
  EXPECT_EQ(ui().head().faxAddressCount, 2);
}

TEST_F(FaxPageTest, TheHundredAndFirstIsRefused) {
  OpenFax();
  std::u16string table;
  for (int i = 0; i < 100; ++i) table += u"N\t" + FromUtf8(std::to_string(i)) + u"\n";
  page->clipboard = table;
  page->PressKey("recipients", ListKey::kPaste);
  EXPECT_EQ(page->TextOf("recipientCount"), "100/100");
  Add(u"777");
  EXPECT_EQ(desk.Told(), "[31504]|[31506]");
  page->clipboard = u"A\t5\n";
  page->PressKey("recipients", ListKey::kPaste);
  EXPECT_EQ(desk.Told(), "[31504]|1. [31506]\n");
}

TEST_F(FaxPageTest, V34BringsErrorCorrection) {
  OpenFax();
  page->Check("FaxV34_CheckTab", false);
  EXPECT_TRUE(page->IsEnabled("EcmTab"));
  page->Check("EcmTab", false);
  page->Check("FaxV34_CheckTab", true);
  EXPECT_TRUE((*page)["EcmTab"_id].checked);
  EXPECT_FALSE(page->IsEnabled("EcmTab"));
  EXPECT_EQ(Setting<u"EcmTab">(ui()), 1);
}

TEST_F(FaxPageTest, ElevenRecipientsTakeTheDetailsOffTheCoverSheet) {
  OpenFax();
  page->Check("CoverSheet", true);
  EXPECT_TRUE(page->IsEnabled("coverSheetButton"));
  Setting<u"lpFaxCover_ReceiveSetup">(ui()) = 1;
  for (int i = 0; i < 10; ++i) Add(FromUtf8(std::to_string(i)));
  EXPECT_EQ(desk.Told(), "");
  Add(u"11");
  EXPECT_EQ(desk.Told(), "[31610]|more than 10");
  EXPECT_EQ(Setting<u"lpFaxCover_ReceiveSetup">(ui()), 0);
}

TEST_F(FaxPageTest, WithoutAFaxUnitThereIsNoFax) {
  OpenPage("lpFAXUnit=NotInstalled", "fax");
  EXPECT_FALSE(page->IsEnabled("lpOutput.Fax"));
  EXPECT_FALSE(page->IsEnabled("recipients"));
}

TEST_F(FaxPageTest, ApplyWithoutRecipientsGoesBackToThePrinter) {
  OpenFax();
  EXPECT_TRUE(sheet->Apply());
  EXPECT_NE(desk.Told().find("[22302]"), std::string::npos);
  EXPECT_TRUE((*page)["lpOutput.Printer"_id].checked);
  EXPECT_FALSE(page->IsEnabled("recipients"));
}

TEST_F(FaxPageTest, DetailsAreCheckedAndKeptOnOkAlone) {
  OpenFax();
  desk.Expect("fax-details", [this](ScriptedDialog& dialog) {
    EXPECT_FALSE(dialog.IsEnabled("bTimeH"));
    dialog.Check("SendTime", true);
    dialog.Put("bTimeH", u"77");
    EXPECT_EQ(dialog.TextOf("bTimeH"), "23");
    dialog.Spin("bTimeH.spin", 0);
    EXPECT_EQ(dialog.TextOf("bTimeH"), "00");
    dialog.Check("SubAddress", true);
    dialog.Put("szSubAddress", u"12x");
    dialog.Check("SubAddress", false);
    EXPECT_EQ(desk.Told(), "[31520]|[21013][21011]");
    EXPECT_TRUE(dialog["SubAddress"_id].checked);
    dialog.Put("szSubAddress", u"");
    desk.Answer(IDNO);
    dialog.Click(kOkButton);
    EXPECT_EQ(desk.Told(), "no [31520]|[31550]?");
    EXPECT_FALSE(dialog.ended());
    dialog.Type("szSubAddress", u"4a2");
    dialog.Click(kOkButton);
    EXPECT_TRUE(dialog.ended());
  });
  page->Click("faxDetailsButton");
  EXPECT_EQ(Committed<u"SubAddress">(ui()), 1);
  EXPECT_EQ(std::u16string_view(&SlotAs<u"szSubAddress", char16_t>(ui())), u"42");
}

TEST_F(FaxPageTest, TheCoverSheetIsChangedByOkAlone) {
  OpenFax();
  page->Check("CoverSheet", true);
  Add(u"5", u"Anna");
  const auto edit = [this](ControlId button) {
    desk.Expect("fax-cover-sheet", [this, button](ScriptedDialog& dialog) {
      if (!dialog["FaxCover_Subject"_id].checked) dialog.Check("FaxCover_Subject", true);
      dialog.Put(1200, u"Offer");
      dialog.Select(1226, 2);
      dialog.Check("FaxCover_Pagenum", true);
      dialog.Put("coverPages", u"0");
      dialog.Click(kOkButton);
      EXPECT_EQ(desk.Told(), "[21129]|[21129] 1-999");
      EXPECT_EQ(dialog.TextOf("coverPages"), "1");
      dialog.Check("FaxCover_Image", true);
      dialog.PressAt(1245, 75, 100);
      dialog.Put(1203, u"/none.bmp");
      dialog.Focus(0);
      dialog.Click(kOkButton);
      EXPECT_EQ(desk.Told(), "[31570]|[31572]");
      EXPECT_FALSE(dialog.ended());
      dialog.Put(1203, u"");
      dialog.Focus(0);
      dialog.Click(button);
      EXPECT_TRUE(dialog.ended());
    });
    page->Click("coverSheetButton");
  };
  edit(kCancelButton);
  EXPECT_EQ(ui().stores.faxCover->style, 1u);
  edit(kOkButton);
  EXPECT_EQ(ui().stores.faxCover->style, 3u);
  EXPECT_EQ(std::u16string_view(ui().stores.faxCover->subject), u"Offer");
  EXPECT_GT(ui().stores.faxCover->xPosition, 0u);
  EXPECT_EQ(ui().head().faxAddressCount, 0);
  EXPECT_EQ(ui().head().faxRowCount, 1);
}

}  // namespace
}  // namespace heron::test

// Whole jobs as the printing side sees them: which escapes, in which order.
#include <gtest/gtest.h>

#include <sstream>

#include "generated/values.h"
#include "settings/printer_data.h"
#include "settings/text_scramble.h"
#include "support/job_fixture.h"
#include "uistate/user_stores.h"
#include "uistate/walk_store.h"

namespace heron::test {
namespace {

using namespace platform;

constexpr char kStart[] =
    "SetUserName [510] SetCancelFlag 0 DocStarted GetFaxStatus OutputStart GetJobRecord GetJobRecord GetDrawPath "
    "GetPageState SetPageState [488]";
constexpr char kStartPost[] = "GetJobState GetJobRecord GetJobState SetJobId [64]";
constexpr char kFirstPage[] =
    "SetUserPapers [120] GetFaxStatus GetAddressFile GetFaxStatus GetFaxStatus GetJobState GetJobRecord TabsDone "
    "TabsEnd GetRecordSize GetRecord GetPageNumber GetDrawPath SetFontMap [4784]";

class DocumentTest : public JobTest {
 protected:
  DocumentTest() { canvas.replies["EscGetAddressFile"].bytes = {0, 0, 0, 0}; }

  /// Stores a per-page list of `count` entries, every second with a tab.
  void StoreList(int number, uint16_t count) {
    ListStoreSet set = CreateListStoreSet();
    PageList& list = set.pageLists->lists[number - 1];
    list.pageCount = count;
    list.mixplex = 1;
    list.tabSettings.tabPaperSize = 77;
    for (int i = 0; i < count; ++i) {
      list.pages[i].prnTabIndex = static_cast<int16_t>(i % 2);
      list.pages[i].tabTextFontSize = 12;
      std::u16string(u"tab").copy(list.pages[i].tabText, 3);
      std::u16string(u"@宋体").copy(list.pages[i].tabTextFontName, 3);
    }
    ASSERT_TRUE(WalkStore(set, ListStoreId::kPageLists, u"P1", WalkOp::kWrite));
    Set<"InterSheet_Check">(record, value::InterSheet_Check::kOn);
    Set<"lpInterSheetList">(record, number);
  }

  void AskForSecurePrint() {
    Set<"lpOutputMethod">(record, value::lpOutputMethod::kSecure);
    SetText<"secureId">(record, u"anna");
    SetText<"securePassword">(record, TextScramble(u"geheim", SecretKind::kSecurePrint));
    WriteAt(std::span(jobState), JobStateBlock::kConfirmSecure, uint32_t{1});
  }
};

TEST_F(DocumentTest, PlainJob) {
  EXPECT_EQ(Run(DOCUMENTEVENT_CREATEDCPRE), "");
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOC), kStart);
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOCPOST), kStartPost);
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTPAGE), kFirstPage);
  canvas.replies["EscGetPageNumber"].result = 1;
  EXPECT_EQ(Run(DOCUMENTEVENT_ENDPAGE), "GetRecordSize GetRecord");
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTPAGE),
            "SetUserPapers [120] GetFaxStatus GetAddressFile GetFaxStatus GetFaxStatus GetJobState GetJobRecord "
            "TabsDone GetRecordSize GetRecord GetPageNumber");
  EXPECT_EQ(Run(DOCUMENTEVENT_ENDDOC), "FaxEndDoc");
  EXPECT_EQ(Run(DOCUMENTEVENT_ENDDOCPOST), "GetFaxStatus GetJobState");
  EXPECT_EQ(Run(DOCUMENTEVENT_ABORTDOC), "");
  EXPECT_EQ(Run(2), "");
  EXPECT_EQ(desk.count, 0);
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetUserName"], 0, 255), u"user");
}

TEST_F(DocumentTest, EachFailingEscapeGivesItsResult) {
  // Results by the number of the failing escape; drawing, from the tenth escape of a page on, isn't checked.
  const struct {
    int event;
    std::vector<int> results;
  } cases[] = {
      {DOCUMENTEVENT_STARTDOC, {-1, -1, -1, 0, -1, -1, -1, 1, 1, 1}},
      {DOCUMENTEVENT_STARTDOCPOST, {0, -1, -1, -1}},
      {DOCUMENTEVENT_STARTPAGE, {-1, 0, 0, 0, 0, -1, -1, -1, -1, 1, 1}},
      {DOCUMENTEVENT_ENDPAGE, {1, 1}},
      {DOCUMENTEVENT_ENDDOC, {0}},
      {DOCUMENTEVENT_ENDDOCPOST, {0, 0}},
  };
  for (const auto& row : cases) {
    for (uint32_t n = 1; n <= row.results.size(); ++n) {
      canvas.replies["EscTabsDone"].bytes = {0};
      canvas.escapes = 0;
      canvas.fail_at = n;
      const std::string log = Run(row.event);
      EXPECT_EQ(result, row.results[n - 1]) << "event " << row.event << ": " << log;
      EXPECT_TRUE(result == 1 || log.ends_with("FAILED")) << log;
    }
  }
}

TEST_F(DocumentTest, StaleHandlesFailWithoutHarm) {
  CloseCanvas(canvas.hdc);
  EXPECT_EQ(DrvDocumentEvent(printer.get(), canvas.hdc, DOCUMENTEVENT_STARTDOC, 0, nullptr, 0, nullptr), -1);
  EXPECT_EQ(DrvDocumentEvent(nullptr, canvas.hdc, DOCUMENTEVENT_ABORTDOC, 0, nullptr, 0, nullptr), -1);
  EXPECT_EQ(DrvDocumentEvent(nullptr, nullptr, DOCUMENTEVENT_ENDPAGE, 0, nullptr, 0, nullptr), 1);
}

TEST_F(DocumentTest, SpreadsheetJobLeavesItsDeviceForTheReset) {
  Set<"lpGraphicsMode">(record, value::lpGraphicsMode::kVector);
  Set<"lpPDLType">(record, value::lpPDLType::kPcl5);
  backend.processFileName = u"/opt/office/excel.exe";
  EXPECT_NE(Run(DOCUMENTEVENT_STARTDOC).find("DocStarted GetJobRecord GetFaxStatus"), std::string::npos);
  DriverEnv handed = record;
  Set<"lpGraphicsMode">(handed, value::lpGraphicsMode::kRaster);
  Set<"lpPDLType">(handed, value::lpPDLType::kPclXl);
  Set<"lpOutput">(handed, 7);
  const void* const pointer = &handed;
  const void* replaced = nullptr;
  SetBookModeStatus(record, 1);
  SetBookModeResolution(u"P1", 300);
  Run(DOCUMENTEVENT_RESETDCPRE, &pointer, sizeof pointer, &replaced, sizeof replaced);
  EXPECT_EQ(Get<"lpGraphicsMode">(handed), value::lpGraphicsMode::kVector);
  EXPECT_EQ(Get<"lpPDLType">(handed), value::lpPDLType::kPcl5);
  EXPECT_EQ(Get<"lpOutput">(handed), value::lpOutput::kFax);
  EXPECT_EQ(Get<"lpQuality">(handed), value::lpQuality::kDpi600);
  Run(DOCUMENTEVENT_ENDDOCPOST);
  EXPECT_EQ(ReadBookModeJob(u"P1").gfxMode, 0u);

  DOCEVENT_CREATEDCPRE create{};
  create.pdm = reinterpret_cast<DEVMODEW*>(handed.bytes.data());
  SetBookModeStatus(record, 2);
  replaced = &handed;
  Run(DOCUMENTEVENT_CREATEDCPRE, &create, sizeof create, &replaced, sizeof replaced);
  EXPECT_EQ(Get<"lpOutput">(handed), value::lpOutput::kFax);  // a replaced record is left alone
  replaced = nullptr;
  Run(DOCUMENTEVENT_CREATEDCPRE, &create, sizeof create, &replaced, sizeof replaced);
  EXPECT_EQ(Get<"lpOutput">(handed), value::lpOutput::kPrinter);
}

TEST_F(DocumentTest, RecordsOfOtherDriversAndShortArgumentsStay) {
  backend.processFileName = u"EXCEL.EXE";
  DriverEnv handed = record;
  Set<"dmDriverVersion">(handed, 1);
  const DriverEnv before = handed;
  const void* pointer = &handed;
  const void* const none = nullptr;
  Run(DOCUMENTEVENT_RESETDCPRE, &pointer, sizeof pointer, &none, sizeof none);
  EXPECT_EQ(handed.bytes, before.bytes);
  handed = record;
  Set<"lpOutput">(handed, 7);
  Run(DOCUMENTEVENT_RESETDCPRE, &pointer, sizeof pointer - 1, &none, sizeof none);
  Run(DOCUMENTEVENT_RESETDCPRE, &pointer, sizeof pointer, &none, 2);
  Run(DOCUMENTEVENT_CREATEDCPRE, &pointer, sizeof pointer, &none, sizeof none);
  EXPECT_EQ(Get<"lpOutput">(handed), 7);
}

TEST_F(DocumentTest, OtherProgramsLeaveNothing) {
  WriteBookModeJob(u"P1", {.gfxMode = 1, .pdlType = 2, .enableBppChange = 1});
  Run(DOCUMENTEVENT_STARTDOC);
  EXPECT_EQ(ReadBookModeJob(u"P1").gfxMode, 0u);
  EXPECT_EQ(ReadBookModeJob(u"P1").enableBppChange, 0u);
}

TEST_F(DocumentTest, SecurePrintIsConfirmed) {
  AskForSecurePrint();
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOCPOST), kStartPost);
  EXPECT_EQ(desk.shown, "<32008>: <32009><32028>anna<32011>******<32001>");
  Set<"undisplayPassword">(record, 0);
  SetText<"secureId">(record, u"");
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.shown, "<32008>: <32009><32028><21006><32011>geheim<32001>");
  desk.is_window = false;
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.shown, "<32008>: <32009><32028><21006><32011>***<32001>") << "what a terminal shows is kept";
  SetText<"secureId">(record, u"anna");
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.shown, "<32008>: <32009><32028>***<32011>***<32001>");
  desk.is_window = true;
  WriteAt(std::span(jobState), JobStateBlock::kMaskPassword, uint16_t{1});
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.shown.find("geheim"), std::string::npos);
  WriteAt(std::span(jobState), JobStateBlock::kConfirmSecure, uint32_t{0});
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.count, 5);
}

TEST_F(DocumentTest, CancelledConfirmationCancelsTheJobAndGoesOn) {
  AskForSecurePrint();
  for (const int answer : {IDCANCEL, 0}) {
    desk.answer = answer;
    EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOCPOST),
              "GetJobState GetJobRecord GetJobState SetCancelFlag 1 CancelJob SetJobId [64]");
  }
  canvas.failing = "EscCancelJob";
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOCPOST),
            "-1: GetJobState GetJobRecord GetJobState SetCancelFlag 1 CancelJob FAILED");
}

TEST_F(DocumentTest, BoxIsConfirmed) {
  Set<"lpOutputMethod">(record, value::lpOutputMethod::kSaveToBoxAndPrint);
  SetText<"boxFileName">(record, u"report");
  WriteAt(std::span(jobState), JobStateBlock::kConfirmBox, uint32_t{1});
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.shown, "<32012>: <32013><32015><32029>report<32017><21006><32001>");
  Set<"lpOutputMethod">(record, value::lpOutputMethod::kSaveToBox);
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_NE(desk.shown.find("<32014>"), std::string::npos);
  Set<"lpOutputMethod">(record, value::lpOutputMethod::kPrint);
  Run(DOCUMENTEVENT_STARTDOCPOST);
  EXPECT_EQ(desk.count, 2);
}

TEST_F(DocumentTest, PerPageListAndTabsGoOutOnce) {
  StoreList(3, 2);
  canvas.families = {{u"@宋体", 134}};
  const std::string page = Run(DOCUMENTEVENT_STARTPAGE);
  EXPECT_NE(page.find("GetJobState GetJobRecord SetPageListCount 2 SetPageList [560] SetPageListRange [8] "
                      "SetPageListMixplex 1 PageListDone TabsDone SetTabCount 1 SetTabIndex 2 TabDrawBegin "
                      "text (2500,3500) angle 900 height -100 color 000000 'tab' TabDrawEnd TabSideFront TabDrawBegin "
                      "text (3300,2500) angle 0 height -100 color 000000 'tab' TabDrawEnd TabSideBack TabEntryDone "
                      "TabsEnd GetRecordSize"),
            std::string::npos)
      << page;
  EXPECT_EQ(ReadAt<uint16_t>(canvas.sent["EscSetPageListRange"], 0), 77);
  EXPECT_EQ(std::u16string(canvas.drawings[0].font.lfFaceName), u"宋体");
  EXPECT_EQ(canvas.drawings[0].align, TA_CENTER);
  EXPECT_NE(Run(DOCUMENTEVENT_STARTPAGE).find("GetJobState TabsDone GetRecordSize"), std::string::npos);

  canvas.replies["EscTabsDone"].bytes = {0};  // lists sent, tabs not
  EXPECT_NE(Run(DOCUMENTEVENT_STARTPAGE).find("GetJobState TabsDone GetJobRecord SetTabCount 1"), std::string::npos);
}

TEST_F(DocumentTest, ListsOfNoOrTooManyEntriesStayHere) {
  StoreList(3, 2);
  const UniqueKey key = CreateKey(HKEY_CURRENT_USER, BuildUserKey(u"P1", u"InterSheet", u"InterSheetList3").c_str());
  for (const uint32_t count : {0u, 31u, 0x10002u}) {
    WriteAt(std::span(jobState), JobStateBlock::kPageListsSent, uint32_t{0});
    RegSetValueExW(key.get(), u"ISPageListNum", REG_DWORD, reinterpret_cast<const uint8_t*>(&count), sizeof count);
    const bool sent = Run(DOCUMENTEVENT_STARTPAGE).find("SetPageList") != std::string::npos;
    EXPECT_EQ(sent, count == 0x10002u) << count;  // a count is as wide as its field
  }
  Set<"lpInterSheetList">(record, 11);
  WriteAt(std::span(jobState), JobStateBlock::kPageListsSent, uint32_t{0});
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTPAGE).find("SetPageList"), std::string::npos);
}

TEST_F(DocumentTest, UserPapersAreSentInTheirUnits) {
  CustomPaperEntry paper{.width = 8268, .height = 11693, .unit = 1, .name = {}, .longFlag = 0};
  StorePrinterData(u"UDPaper1", REG_BINARY, &paper, sizeof paper);
  paper.unit = 2;
  StorePrinterData(u"UDPaper10", REG_BINARY, &paper, sizeof paper);
  Run(DOCUMENTEVENT_STARTPAGE);
  const auto number = [&](size_t index) { return ReadAt<uint32_t>(canvas.sent["EscSetUserPapers"], 4 * index); };
  EXPECT_EQ(number(0), 2100u);
  EXPECT_EQ(number(1), 2970u);
  EXPECT_EQ(number(2), 1u);
  EXPECT_EQ(number(3), 2100u);  // the default, rounded
  EXPECT_EQ(number(27), 8268u);
  EXPECT_EQ(number(29), 2u);
}

TEST_F(DocumentTest, RepliesNeverReplaceAnotherQueuesLists) {
  ASSERT_TRUE(SeedStores(u"other", kDriverVersion));
  const std::string before = backend.Dump(Hive::kUser);
  SetText<"dmDeviceName">(record, u"other");
  Set<"dmDriverVersion">(record, 0x1111);
  Run(DOCUMENTEVENT_STARTDOC);
  std::string after;
  std::istringstream lines(backend.Dump(Hive::kUser));
  for (std::string line; std::getline(lines, line);) {
    if (line.find("\\other") != std::string::npos) after += line + '\n';
  }
  EXPECT_EQ(after, before);
  EXPECT_EQ(CompareDriverVersion(u"P1", kDriverVersion), 1);  // the job's own queue was seeded
}

TEST_F(DocumentTest, RecordsThatPointOutsideTheirBlockFail) {
  canvas.on_escape = nullptr;
  for (const uint16_t offset : {uint16_t{7897}, uint16_t{9797}, uint16_t{0xFFFF}}) {
    Run(DOCUMENTEVENT_ENDDOC);
    auto& block = canvas.replies["EscGetJobRecord"].bytes;
    WriteAt(std::span(block), JobRecordBlock::kExtraOffset, offset);
    EXPECT_EQ(DrvDocumentEvent(printer.get(), canvas.hdc, DOCUMENTEVENT_STARTDOC, 0, nullptr, 0, nullptr), -1);
  }
}

}  // namespace
}  // namespace heron::test

// Fax jobs, spool files and forms as the printing side sees them.
#include "forms/fax_transmission.h"
#include "forms/temp_files.h"
#include "generated/values.h"
#include "platform/api/files.h"
#include "support/job_fixture.h"
#include "uistate/recipients.h"

namespace heron::test {
namespace {

using namespace platform;

class FaxTest : public JobTest {
 protected:
  FaxTest() { faxStatus[FaxStatus::kFaxJob] = 1; }

  /// Leaves an address file of `count` recipients for the job.
  void Address(uint32_t count, size_t size = sizeof(AddressBlock)) {
    const auto block = std::make_unique<AddressBlock>();
    block->count = count;
    const auto* bytes = reinterpret_cast<const uint8_t*>(block.get());
    backend.files.content[AddressFilePath(0x21)] = std::make_shared<std::vector<uint8_t>>(bytes, bytes + size);
    canvas.replies["EscGetAddressFile"].bytes = {0x21, 0, 0, 0};
    const std::u16string name = u"+44 1";
    canvas.replies["EscGetFaxRecipient"].bytes.assign(88, 0);
    std::memcpy(canvas.replies["EscGetFaxRecipient"].bytes.data(), name.data(), 10);
  }
  /// The fax's part of a page's start.
  std::string StartPage() {
    const std::string log = Run(DOCUMENTEVENT_STARTPAGE);
    const size_t from = log.find("GetFaxStatus");
    return log.substr(from, log.find(" GetJobState") - from);
  }
  std::u16string SpoolFile(const char16_t* prefix) {
    const std::u16string path = MakeTempFile(prefix);
    EXPECT_FALSE(path.empty());
    return path;
  }
  bool Exists(const std::u16string& path) { return backend.files.content.contains(path); }
  void PutText(size_t offset, size_t length, std::u16string_view text) {
    WriteTextAt(std::span(jobState), offset, length, text);
  }
};

TEST_F(FaxTest, OneRecipientIsConfirmedOnce) {
  Address(1);
  EXPECT_EQ(StartPage(),
            "GetFaxStatus GetAddressFile SetAddressData [18004] AddressDataDone GetFaxStatus GetFaxTime "
            "GetFaxRecipient GetFaxStatus FaxRangeFirst 0 FaxRangeEnd 1");
  EXPECT_EQ(desk.shown, "<32003>: <32005><to +44 1>");
  EXPECT_FALSE(Exists(AddressFilePath(0x21)));
  EXPECT_EQ(StartPage(), "GetFaxStatus");
  EXPECT_EQ(desk.count, 1);
  EXPECT_EQ(Run(DOCUMENTEVENT_ENDDOC), "FaxEndDoc");
}

TEST_F(FaxTest, ScheduledFaxToMany) {
  Address(100);
  faxStatus[FaxStatus::kTimeSet] = 1;
  faxStatus[FaxStatus::kHour] = 8;
  EXPECT_NE(StartPage().find("AddressDataDone SetFaxTime [10] GetFaxStatus"), std::string::npos);
  EXPECT_EQ(desk.shown, "<32003>: <at 2026-03-01 8:00><to +44 1, 100>");
}

TEST_F(FaxTest, UserGivesItUp) {
  Address(2);
  desk.answer = IDCANCEL;
  EXPECT_TRUE(StartPage().ends_with("GetFaxRecipient FaxCancel GetFaxStatus"));
  EXPECT_EQ(result, 1);
}

TEST_F(FaxTest, WithoutRecipientsNothingIsSent) {
  Address(0);
  EXPECT_TRUE(StartPage().ends_with("AddressDataDone GetFaxStatus FaxCancel GetFaxStatus"));
  EXPECT_EQ(desk.shown, "<32003>: <32002>");
}

TEST_F(FaxTest, LostAndShortAddressFiles) {
  Address(1);
  backend.files.content.clear();
  EXPECT_EQ(StartPage(), "GetFaxStatus GetAddressFile FaxCancel GetFaxStatus GetFaxStatus");
  faxStatus[FaxStatus::kFaxJob] = 1;
  Address(1, sizeof(AddressBlock) - 1);
  EXPECT_TRUE(StartPage().ends_with("GetAddressFile"));
  EXPECT_EQ(result, 0);
  EXPECT_TRUE(Exists(AddressFilePath(0x21)));
  canvas.replies["EscGetAddressFile"].bytes = {0, 0, 1, 0};  // no number of a file
  EXPECT_NE(StartPage().find("GetAddressFile FaxCancel"), std::string::npos);
}

TEST_F(FaxTest, CoverSheetsAreBuiltOnTheFirstPage) {
  Address(1);
  faxStatus[FaxStatus::kCoverSheets] = 1;
  const char16_t name[] = u"Letter";
  const DOCINFOW info = {
      .cbSize = sizeof info, .lpszDocName = name, .lpszOutput = nullptr, .lpszDatatype = nullptr, .fwType = 0};
  const void* const in = &info;
  EXPECT_NE(Run(DOCUMENTEVENT_STARTDOC, &in, sizeof in).find("GetFaxStatus SetDocName [520] SetUserName [510] Out"),
            std::string::npos);
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetDocName"], 0, 260), u"Letter");
  Run(DOCUMENTEVENT_STARTDOC);
  EXPECT_EQ(ReadTextAt(canvas.sent["EscSetDocName"], 0, 260), u"DocName None");
  EXPECT_TRUE(StartPage().ends_with("GetFaxStatus GetJobRecord"));
  EXPECT_EQ(ReadAt<uint32_t>(canvas.sent["EscFaxCoverCount"], 0), 1u);
}

TEST_F(FaxTest, EachEscapeFailingEndsTheJob) {
  for (const bool covers : {false, true}) {
    // The last two, the range or the first ones of the cover sheets, are -1.
    for (uint32_t n = 2; n <= 12; ++n) {
      Address(1);
      faxStatus.assign(FaxStatus::kSize, 0);
      faxStatus[FaxStatus::kFaxJob] = 1;
      faxStatus[FaxStatus::kCoverSheets] = covers ? 1 : 0;
      faxStatus[FaxStatus::kTimeSet] = 1;
      canvas.escapes = 0;
      canvas.fail_at = n;
      const std::string log = Run(DOCUMENTEVENT_STARTPAGE);
      EXPECT_TRUE(log.ends_with("FAILED")) << log;
      EXPECT_EQ(result, n >= 11 ? -1 : 0) << log;
    }
  }
}

TEST_F(FaxTest, TimeThatHasPassedIsTomorrows) {
  const auto sent = [&](SYSTEMTIME now, uint8_t hour, uint8_t minute) {
    backend.localTime = now;
    EXPECT_TRUE(SetScheduledTime(canvas.hdc, hour, minute));
    std::string text;
    for (size_t i = 0; i < 5; ++i) text += std::to_string(ReadAt<uint16_t>(canvas.sent["EscSetFaxTime"], 2 * i)) + ' ';
    return text;
  };
  const auto at = [](WORD year, WORD month, WORD day) { return SYSTEMTIME{year, month, 0, day, 13, 45, 59, 0}; };
  EXPECT_EQ(sent(at(2026, 2, 28), 13, 45), "2026 2 28 13 45 ");
  EXPECT_EQ(sent(at(2026, 2, 28), 13, 44), "2026 3 1 13 44 ");
  EXPECT_EQ(sent(at(2024, 2, 28), 12, 59), "2024 2 29 12 59 ");
  EXPECT_EQ(sent(at(2000, 2, 28), 0, 0), "2000 2 29 0 0 ");
  EXPECT_EQ(sent(at(2100, 2, 28), 0, 0), "2100 3 1 0 0 ");
  EXPECT_EQ(sent(at(2026, 12, 31), 0, 0), "2027 1 1 0 0 ");
  EXPECT_EQ(sent(at(2026, 4, 30), 0, 0), "2026 5 1 0 0 ");
  EXPECT_EQ(sent(at(2026, 12, 31), 23, 59), "2026 12 31 23 59 ");
  backend.clockFails = true;
  EXPECT_FALSE(SetScheduledTime(canvas.hdc, 1, 1));
}

TEST_F(FaxTest, SpoolFileLivesAsLongAsTheJob) {
  jobState[JobStateBlock::kSpoolFileUsed] = 1;
  EXPECT_TRUE(Run(DOCUMENTEVENT_STARTDOCPOST).starts_with("GetJobState SetSpoolFile [520] GetJobRecord"));
  const std::u16string path = ReadTextAt(canvas.sent["EscSetSpoolFile"], 0, 260);
  EXPECT_TRUE(path.starts_with(u"/system/spool/PRINTERS/vfs"));
  EXPECT_TRUE(Exists(path));
  faxStatus[FaxStatus::kFaxJob] = 0;
  PutText(JobStateBlock::kSpoolFile, 260, path);
  EXPECT_EQ(Run(DOCUMENTEVENT_ENDDOCPOST), "GetFaxStatus GetJobState SpoolFileDone");
  EXPECT_FALSE(Exists(path));

  canvas.failing = "EscSetSpoolFile";
  EXPECT_TRUE(Run(DOCUMENTEVENT_STARTDOCPOST).starts_with("0:"));
  EXPECT_TRUE(backend.files.content.empty());
  backend.files.writable = false;
  EXPECT_EQ(Run(DOCUMENTEVENT_STARTDOCPOST), "0: GetJobState");
}

TEST_F(FaxTest, ABrokenOffJobsFilesGoWithTheNext) {
  for (const int event : {DOCUMENTEVENT_STARTDOC, DOCUMENTEVENT_ABORTDOC}) {
    const std::u16string cover = SpoolFile(kCoverPrefix);
    const std::u16string last = SpoolFile(kLastCoverPrefix);
    const std::u16string spool = SpoolFile(kSpoolPrefix);
    const std::u16string other = SpoolFile(kCoverPrefix);
    EXPECT_TRUE(RecordTempFileCount(u"P1", 2) && RecordTempFile(u"P1", 0, cover) && RecordTempFile(u"P1", 1, last));
    EXPECT_TRUE(RecordTempFile(u"P1", kSpoolFileNumber, spool) && RecordTempFile(u"P2", 0, other));
    Run(event);
    EXPECT_FALSE(Exists(cover) || Exists(last) || Exists(spool));
    EXPECT_TRUE(Exists(other));
    EXPECT_EQ(backend.Dump(Hive::kUser).find("P1\\Fax Cover Sheet\\Temp"), std::string::npos);
  }
}

TEST_F(FaxTest, CoverFilesOfTheStateAreDeletedAndReported) {
  faxStatus[FaxStatus::kCoverSheets] = 1;
  const std::u16string cover = SpoolFile(kCoverPrefix);
  const std::u16string last = SpoolFile(kLastCoverPrefix);
  PutText(JobStateBlock::kCoverFolder, 260, SpoolFolder());
  PutText(JobStateBlock::kCoverFile, 30, cover.substr(SpoolFolder().size()));
  PutText(JobStateBlock::kLastCoverFile, 30, last.substr(SpoolFolder().size()));
  WriteAt(std::span(jobState), JobStateBlock::kCoverFiles, uint32_t{2});
  EXPECT_EQ(Run(DOCUMENTEVENT_ENDDOCPOST),
            "GetFaxStatus GetJobState FaxCoverDeleted 0 FaxCoverDeleted 1 FaxCoverFileDeleted GetJobState");
  EXPECT_TRUE(backend.files.content.empty());
  WriteAt(std::span(jobState), JobStateBlock::kCoverFiles, uint32_t{0xFFFFFFFF});
  Run(DOCUMENTEVENT_ENDDOCPOST);  // bounded by the block
  EXPECT_EQ(ReadAt<uint16_t>(canvas.sent["EscFaxCoverDeleted"], 0), 114);
}

TEST_F(FaxTest, OnlyFilesOfFaxJobsAreDeleted) {
  const char16_t* const paths[] = {u"/home/anna/report.txt",
                                   u"/system/spool/PRINTERS/report.tmp",
                                   u"/system/spool/PRINTERS/vfc../../vfc1.tmp",
                                   u"/system/spool/PRINTERS/x/vfc1.tmp",
                                   u"/system/spool/PRINTERS/vfc.tmp",
                                   u"/system/spool/PRINTERS/vfc12345.tmp",
                                   u"/system/spool/PRINTERS/vpb1.tmp",
                                   u"/tmp/heron/vfc1.tmp",
                                   u"vfc1.tmp"};
  jobState[JobStateBlock::kSpoolFileUsed] = 1;
  for (const char16_t* path : paths) {
    backend.files.content[path] = std::make_shared<std::vector<uint8_t>>(1);
    EXPECT_FALSE(DeleteTempFile(path));
    RecordTempFile(u"P1", kSpoolFileNumber, path);
    PutText(JobStateBlock::kSpoolFile, 260, path);
    Run(DOCUMENTEVENT_ENDDOCPOST);
    RecordTempFile(u"P1", 0, path);
    RecordTempFileCount(u"P1", 0xFFFFFFFF);
    Run(DOCUMENTEVENT_ABORTDOC);
    EXPECT_TRUE(Exists(path));
  }
}

class OverlayCheckTest : public JobTest {
 protected:
  std::string StartDocument() {
    const std::string log = Run(DOCUMENTEVENT_STARTDOC);
    const size_t from = log.find("GetJobRecord");
    return log.substr(from, log.find("GetDrawPath") - from);
  }
};

TEST_F(OverlayCheckTest, BadFormsCancelTheJob) {
  Set<"lpOverlay">(record, value::lpOverlay::kPrintWithForm);
  SetText<"overlayName">(record, u"/forms/head.vxf");
  EXPECT_EQ(StartDocument(), "GetJobRecord SetCancelFlag 1 CancelJob GetJobRecord ");
  EXPECT_EQ(result, 1);
  EXPECT_EQ(desk.shown, "<29510>: <29521>/forms/head.vxf");

  std::string bytes = std::string(9, ' ') + std::string("\xC8\xC1\x52\x00", 4) +
                      "Model=Varnell 70/36MX-2 PCL;System=0;Destination=US;PDL=1;Color=2;Reserved=0;xxxx;\xF8\x81\x47";
  bytes.resize(400);
  backend.files.content[u"/forms/head.vxf"] = std::make_shared<std::vector<uint8_t>>(bytes.begin(), bytes.end());
  Set<"lpColorMode">(record, value::lpColorMode::kMonochrome);
  StartDocument();
  EXPECT_EQ(desk.shown, "<29510>: <29522>/forms/head.vxf");
  Set<"lpColorMode">(record, value::lpColorMode::kColor);
  EXPECT_EQ(StartDocument(), "GetJobRecord GetJobRecord ");
  EXPECT_EQ(desk.count, 2);
}

TEST_F(OverlayCheckTest, FormsCantBeMadeInEveryMode) {
  Set<"lpOverlay">(record, value::lpOverlay::kCreateForm);
  Set<"lpPDLType">(record, value::lpPDLType::kPcl5);
  Set<"lpGraphicsMode">(record, value::lpGraphicsMode::kRaster);
  EXPECT_EQ(StartDocument(), "GetJobRecord GetJobRecord ");
  Set<"lpGraphicsMode">(record, value::lpGraphicsMode::kVector);
  EXPECT_EQ(StartDocument(), "GetJobRecord SetCancelFlag 1 CancelJob GetJobRecord ");
  EXPECT_EQ(desk.shown, "<29511>: <29546>");
  canvas.failing = "EscSetCancelFlag";
  canvas.on_escape = nullptr;
  EXPECT_EQ(DrvDocumentEvent(printer.get(), canvas.hdc, DOCUMENTEVENT_STARTDOC, 0, nullptr, 0, nullptr), -1);
}

}  // namespace
}  // namespace heron::test

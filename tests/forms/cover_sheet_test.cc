// Cover sheets: the layout as text lines, the device fields of a cover page, and the escapes around each sheet.
#include <cstdlib>

#include "forms/cover_layout.h"
#include "forms/cover_sheets.h"
#include "forms/cover_store.h"
#include "forms/temp_files.h"
#include "generated/values.h"
#include "support/job_fixture.h"
#include "uistate/walk_store.h"

namespace heron::test {
namespace {

using namespace platform;
namespace personal = value::lpFaxCover_ReceivePersonal;

template <size_t N>
void Put(char16_t (&field)[N], std::u16string_view text) {
  std::fill(std::begin(field), std::end(field), u'\0');
  text.substr(0, N - 1).copy(field, N - 1);
}

class CoverTest : public JobTest {
 protected:
  CoverTest() {
    for (const uint32_t id : {31660u, 31668u, 31670u, 31675u}) Text(id) = u"TITLE";
    for (const uint32_t id : {31661u, 31676u}) Text(id) = u"To: ";
    for (const uint32_t id : {31664u, 31679u}) Text(id) = u"From: ";
    for (const uint32_t id : {31663u, 31678u}) Text(id) = u"Re: ";
    for (const uint32_t id : {31662u, 31677u}) Text(id) = u"%d pages";
    for (const uint32_t id : {31665u, 31680u}) Text(id) = u"T %s";
    Text(31666) = u"F %s";
    Text(31681) = u"Fax %s";
    for (const uint32_t id : {31667u, 31682u}) Text(id) = u"@ %s";
    Text(31673) = u"%d-%02d-%02d";
    layout.dc = canvas.hdc;
    layout.resolution = 200;
    layout.percent = 100;
    layout.boxWidthHmm = 20152;
    layout.boxLengthHmm = 28852;
    layout.store = &store;
    layout.imageScale = 100;
    layout.fixedDate = true;
    layout.year = 2026;
    layout.month = 3;
    layout.day = 9;
    layout.flags.a4pFix = 1;
    Put(store.fixedform, u"everybody");
    ClampCover(store);
  }

  /// What is drawn, without its colours; each drawing of a text with its place and height.
  std::string Draw() {
    canvas.log.clear();
    canvas.drawings.clear();
    const StringsInUse texts;
    LayoutCover(layout);
    std::string lines;
    for (const auto& drawn : canvas.drawings)
      lines += ToUtf8(drawn.text) + " @" + std::to_string(drawn.at.x) + ',' + std::to_string(drawn.at.y) + " h" +
               std::to_string(drawn.font.lfHeight) + '\n';
    return lines;
  }
  void AddRow(std::u16string_view name, std::u16string_view number, std::u16string_view company = {}) {
    RecipientRow row{};
    name.copy(row.name, kRecipientTextLength);
    number.copy(row.number, kRecipientTextLength);
    company.copy(row.company, kRecipientTextLength);
    rows.push_back(row);
    layout.rows = rows;
    layout.endRow = static_cast<uint32_t>(rows.size());
  }

  FaxCoverStore store{};
  std::vector<RecipientRow> rows;
  CoverLayout layout;
};

// The recording canvas gives a character half the height of its font: the numbers below follow by hand from the
// millimetres of the sheet (15 mm = 118 dots of 200 dpi, 20 mm = 157).
TEST_F(CoverTest, BlocksFollowEachOtherFromTheTop) {
  layout.flags.date = layout.flags.pagenum = layout.flags.subject = layout.flags.senderName = 1;
  Put(store.subject, u"Hi");
  Put(store.senderName, u"Anna");
  Put(store.text, u"a\tb\r\n\r\nc\n");
  EXPECT_EQ(Draw(),
            "2026-03-09 @1304,157 h33\n"  // right-aligned at 1587 - 118
            "TITLE @118,206 h133\n"       // a bar of 16 above
            "To:  @118,402 h50\n"         // 190 + 133 + 79
            "everybody @218,402 h50\n"    // beside the label
            "From:  @118,491 h50\n"       // 402 + 50 + 39
            "Anna @268,491 h50\n"         //
            "1 pages @1315,580 h44\n"     //
            "Re:  @118,663 h50\n"         // 580 + 44 + 39
            "Hi @218,663 h50\n"           //
            "a b @250,752 h44\n"          // indented by six blanks
            "  @250,796 h44\n"            // an empty line keeps its height
            "c @250,840 h44\n");
}

TEST_F(CoverTest, RecipientsAreNamedByTheSwitches) {
  layout.flags.receiveSetup = 1;
  AddRow(u"Anna", u"1", u"Ltd");
  AddRow(u"Bob", u"");
  EXPECT_EQ(Draw(), "TITLE @118,173 h133\n") << "no switch: no block, and no rule";
  layout.flags.receiveName = layout.flags.receiveFaxnum = layout.flags.receiveCompany1 = 1;
  EXPECT_EQ(Draw(),
            "TITLE @118,173 h133\nTo:  @118,369 h50\nLtd  @218,369 h50\nAnna  @318,369 h50\nF 1 @218,419 h50\n"
            "Bob  @218,469 h50\n");
  layout.style = 3;
  EXPECT_NE(Draw().find("Anna  @218,369 h50\nLtd  @343,369 h50\n"), std::string::npos);
  layout.firstRow = 1;
  EXPECT_EQ(Draw().find("Anna"), std::string::npos);
  layout.flags.receivePersonal = personal::kTyped;
  Put(store.receiptName, u"Typed");
  Put(store.receiptFaxnum, u"77");
  EXPECT_NE(Draw().find("Typed  @218,369 h50\nFax 77 @218,419 h50\n"), std::string::npos);
  layout.flags.receivePersonal = personal::kAllOnOneSheet;
  layout.rows = {};
  EXPECT_EQ(Draw(), "TITLE @118,173 h133\n") << "without rows nothing is drawn";
  for (int i = 0; i < 18; ++i) AddRow(u"N", u"2");
  EXPECT_NE(Draw().find(" h25\n"), std::string::npos) << "20 recipients share the room of ten";
  Put(store.receiptCompany1, std::u16string(40, u'w'));
}

TEST_F(CoverTest, PicturesComeLastAndHostileOnesNotAtAll) {
  layout.flags.image = 1;
  layout.imagePath = u"/pictures/logo.bmp";
  layout.imageXHmm = 2540;
  const auto draws = [&](std::vector<uint8_t> bytes) {
    backend.files.content[layout.imagePath] = std::make_shared<std::vector<uint8_t>>(std::move(bytes));
    Draw();
    return canvas.bitmaps.empty() ? std::string("none") : canvas.TakeBitmaps();
  };
  std::vector<uint8_t> bmp(54);
  bmp[0] = 'B';
  bmp[1] = 'M';
  bmp[14] = 40;
  bmp[18] = 30;
  bmp[22] = 20;
  EXPECT_EQ(draws(bmp), "(200,0)-(230,20) 54");
  layout.flags.zoom = 1;
  layout.zoom = 300;
  EXPECT_EQ(draws(bmp), "(200,0)-(290,60) 54");
  bmp[1] = 'X';
  EXPECT_EQ(draws(bmp), "none");
  bmp[1] = 'M';
  bmp[21] = 0x80;  // a negative width
  EXPECT_EQ(draws(bmp), "none");
  EXPECT_EQ(draws({'B', 'M'}), "none");
  EXPECT_EQ(draws({}), "none");
}

TEST_F(CoverTest, TheDeviceFieldsOfACoverPage) {
  Set<"dmYResolution">(record, 600);
  Set<"dmPaperWidth">(record, 2100);
  std::array<uint8_t, DeviceFields::kSize> device;
  device.fill(0xAA);
  WriteAt<uint16_t>(device, DeviceFields::kOrientation, 2);
  ASSERT_TRUE(ChangeDeviceForCover(record, 1, device));  // A5
  EXPECT_EQ(ReadAt<uint32_t>(device, 128), 100u);        // 424 at 300 dpi is 50
  EXPECT_EQ(ReadAt<uint32_t>(device, 144 + 8), 14800u - 424);
  EXPECT_EQ(ReadAt<uint16_t>(device, 208), 11);
  EXPECT_EQ(ReadAt<uint8_t>(device, 82), 2);
  EXPECT_EQ(ReadAt<uint16_t>(device, 84), 1);
  EXPECT_EQ(device[240], 141) << "1480 of 2100, doubled for a document that lies across";
  EXPECT_EQ(device[242], 0);
  EXPECT_EQ(device[255], 0xAA);
  EXPECT_EQ(device[1995], 0);
  device.fill(0xAA);
  WriteAt<uint16_t>(device, DeviceFields::kOutputPaperWidth, 2970);
  ASSERT_TRUE(ChangeDeviceForCover(record, 5, device));
  EXPECT_EQ(device[25], 0xAA);
  EXPECT_EQ(device[234], 0);
  EXPECT_EQ(device[240], 141);
  EXPECT_EQ(device[242], 1);
  Set<"dmYResolution">(record, 300);
  EXPECT_FALSE(ChangeDeviceForCover(record, 5, device));
}

class CoverJobTest : public CoverTest {
 protected:
  CoverJobTest() {
    Set<"dmYResolution">(record, 600);
    Set<"dmPaperWidth">(record, 2100);
    Set<"dmPaperLength">(record, 2970);
    Set<"lpFaxCover_ReceiveSetup">(record, 1);
  }
  void Recipients(uint32_t count) {
    WriteAt(std::span(jobState), JobStateBlock::kRecipients, count);
    jobState[JobStateBlock::kRecipient] = '5';
  }
  std::string Build(bool expected = true) {
    Run(DOCUMENTEVENT_CREATEDCPRE);  // serves the replies
    canvas.log.clear();
    EXPECT_EQ(BuildCoverSheets(u"P1", canvas.hdc), expected);
    std::string text;
    for (const std::string& line : canvas.log)
      if (line.starts_with("Esc") || line.ends_with("page")) text += (text.empty() ? "" : " ") + line;
    return text;
  }
  static size_t Count(const std::string& text, std::string_view part) {
    size_t count = 0;
    for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
    return count;
  }
};

TEST_F(CoverJobTest, OneSheetHasItsEscapesInOrder) {
  Recipients(2);
  EXPECT_EQ(Build(),
            "EscGetJobRecord EscGetJobState EscFaxCoverCount 2 EscFaxCoverTotal 1 EscFaxCoverIndex 0 "
            "EscSetCoverFolder [520] EscSetCoverFile [64] EscSetLastCoverFile [60] EscGetCoverData EscFaxCoverIndex 0 "
            "EscFaxRangeFirst 0 EscFaxRangeEnd 2 EscFaxCoverStage 1 EscFaxCoverBegin EscGetFaxCoverPath "
            "EscFaxCoverPath [520] EscRestoreDevice [1996] page end page EscRestoreDevice [1996] EscFaxCoverStage 1 "
            "EscSetCoverData [48] EscFaxCoverStage 2 EscFaxCoverEnd 0");
  EXPECT_EQ(backend.files.content.size(), 2u);
  DeleteRecordedFiles(u"P1");
  EXPECT_TRUE(backend.files.content.empty());
}

TEST_F(CoverJobTest, SheetsByKindAndNumber) {
  const struct {
    uint8_t setup, kind;
    uint32_t recipients, sheets, told;
  } cases[] = {{1, personal::kAllOnOneSheet, 0, 1, 1},     {1, personal::kAllOnOneSheet, 100, 1, 100},
               {1, personal::kAllOnOneSheet, 101, 1, 100}, {1, personal::kSheetEach, 3, 3, 3},
               {1, personal::kSheetEach, 100, 100, 100},   {1, personal::kTyped, 11, 1, 11},
               {0, personal::kSheetEach, 10, 1, 10}};
  for (const auto& row : cases) {
    Set<"lpFaxCover_ReceiveSetup">(record, row.setup);
    Set<"lpFaxCover_ReceivePersonal">(record, row.kind);
    Recipients(row.recipients);
    const std::string log = Build();
    EXPECT_EQ(Count(log, "end page"), row.sheets) << row.recipients;
    EXPECT_NE(log.find("CoverCount " + std::to_string(row.told) + " "), std::string::npos) << log.substr(0, 80);
    DeleteRecordedFiles(u"P1");
  }
}

TEST_F(CoverJobTest, ASheetThatCannotBeDrawnIsPassedOver) {
  Recipients(1);
  Set<"dmYResolution">(record, 300);
  const std::string log = Build();
  EXPECT_EQ(Count(log, "page"), 0u);
  EXPECT_EQ(Count(log, "EscRestoreDevice"), 1u);
  EXPECT_TRUE(log.ends_with("EscFaxCoverEnd 0"));
}

TEST_F(CoverJobTest, EachFailedEscapeEndsItAndLeavesNoFileUnrecorded) {
  Recipients(2);
  Run(DOCUMENTEVENT_CREATEDCPRE);
  canvas.escapes = 0;
  BuildCoverSheets(u"P1", canvas.hdc);
  const uint32_t all = canvas.escapes;
  for (uint32_t n = 1; n <= all; ++n) {
    canvas.fail_at = n;
    canvas.escapes = 0;
    const bool built = BuildCoverSheets(u"P1", canvas.hdc);
    const std::string last = canvas.log.back();
    EXPECT_TRUE(!built || canvas.log.size() > 1) << n;
    canvas.fail_at = 0;
    DeleteRecordedFiles(u"P1");
    EXPECT_TRUE(backend.files.content.empty()) << n << last;
  }
}

TEST_F(CoverTest, PictureFiles) {
  backend.files.content[u"/system/logo.bmp"] = std::make_shared<std::vector<uint8_t>>(1);
  backend.files.content[u"/a/logo.png"] = std::make_shared<std::vector<uint8_t>>(1);
  const auto fault = [](std::u16string path) {
    const CoverImageFault found = ValidateCoverImage(&path);
    return std::to_string(static_cast<int>(found)) + ToUtf8(path);
  };
  EXPECT_EQ(fault(u"logo"), "3/system/logo.bmp");
  EXPECT_EQ(fault(u".bmp"), "1.bmp");
  EXPECT_EQ(fault(u"*.bmp"), "1*.bmp");
  EXPECT_EQ(fault(u"/a/logo.png"), "0/a/logo.png");
  EXPECT_EQ(fault(u"/a/none.bmp"), "1/a/none.bmp");
  EXPECT_EQ(fault(u"/" + std::u16string(258, u'x')).substr(0, 1), "2");
  EXPECT_EQ(fault(std::u16string(255, u'x')).substr(0, 1), "2");
}

TEST_F(CoverTest, CommentLines) {
  EXPECT_EQ(CountCommentLines(u"a\r\nb\r\nc\r\n"), 3u);
  EXPECT_EQ(CountCommentLines(u"a\n\nb"), 1u) << "the character behind a line feed isn't looked at";
  EXPECT_EQ(StoredComment(u"a\nb\r\nc"), u"a\r\nb\r\nc");
}

}  // namespace
}  // namespace heron::test

// The printing side against a driver that may send anything: sizes, order, honest answers, a ticket without secrets.
#include "renderdriver/escapes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "escapes/escape_table.h"
#include "generated/values.h"
#include "platform/memory/memory_backend.h"
#include "renderdriver/bytes.h"
#include "renderdriver/ticket.h"
#include "support/letter_record.h"
#include "uistate/list_stores.h"

namespace heron::renderdriver {
namespace {

using test::LetterRecord;
using Block = std::vector<uint8_t>;

uint32_t Code(std::string_view name) {
  for (const EscapeRow& row : kEscapes)
    if (row.name == name) return row.code;
  ADD_FAILURE() << name;
  return 0;
}

class RenderDriverTest : public ::testing::Test {
 protected:
  void Open(const DriverEnv& record, DrawPath path = DrawPath::k488) {
    job = *OpenJob({.record = record, .printer = u"Office", .path = path});
  }
  int Send(std::string_view name, const Block& in = {}) { return AnswerEscape(job, Code(name), in, {}); }
  Block Ask(std::string_view name, size_t size) {
    Block out(size, 0xEE);
    EXPECT_EQ(AnswerEscape(job, Code(name), {}, out), 1) << name;
    return out;
  }
  /// The beginning of every job.
  void Start() {
    EXPECT_EQ(Send("EscSetUserName", Block(510)), 1);
    EXPECT_EQ(Send("EscSetCancelFlag", {0}), 1);
    EXPECT_EQ(Send("EscDocStarted"), 1);
    EXPECT_EQ(Send("EscOutputStart"), 1);
  }
  static Block Number(uint32_t value) {
    Block bytes(4);
    Write(bytes, 0, value);
    return bytes;
  }
  uint32_t State(size_t offset) { return Read<uint32_t>(Ask("EscGetJobState", JobStateBlock::kSize), offset); }

  platform::MemoryBackend backend;  // code page of the recipients
  Job job;
};

TEST_F(RenderDriverTest, RefusesEveryWrongSizeAndLeavesTheBufferAlone) {
  for (const DrawPath path : {DrawPath::k488, DrawPath::k556}) {
    Open(LetterRecord(), path);
    Start();
    const size_t steps = job.steps;
    for (const EscapeRow& row : kEscapes) {
      const size_t in = row.in >= 0 ? static_cast<size_t>(row.in) : row.in == kPageState ? 1 : 0;
      const size_t out = row.out >= 0 ? static_cast<size_t>(row.out) : 7;
      for (const auto& [more_in, more_out] : {std::pair(1, 0), {0, 1}, {100000, 0}, {0, 100000}}) {
        Block reply(out + static_cast<size_t>(more_out), 0xEE);
        const Block sent(in + static_cast<size_t>(more_in));
        EXPECT_EQ(AnswerEscape(job, row.code, sent, reply), 0) << row.name;
        EXPECT_EQ(reply, Block(reply.size(), 0xEE)) << row.name;
      }
    }
    EXPECT_EQ(job.steps, steps);
    EXPECT_EQ(job.refused, 4 * kEscapes.size());
  }
  EXPECT_EQ(AnswerEscape(job, 0x12345678, {}, {}), 0);
}

TEST_F(RenderDriverTest, RefusesWhatComesOutOfOrder) {
  Open(LetterRecord());
  for (const char* early : {"EscDocStarted", "EscOutputStart", "EscCancelJob", "EscPageListDone", "EscTabDrawBegin",
                            "EscStampEnd", "EscFaxEndDoc", "EscFaxCancel", "EscSpoolFileDone"}) {
    EXPECT_EQ(Send(early), 0) << early;
  }
  EXPECT_FALSE(StartJobPage(job)) << "a page before the output starts";
  Start();
  EXPECT_EQ(Send("EscDocStarted"), 0) << "twice";
  EXPECT_EQ(Send("EscCancelJob"), 0) << "the flag is 0";
  EXPECT_EQ(Send("EscSetFormPath", Block(520)), 0) << "the other path's";
  EXPECT_EQ(Send("EscSetAddressData", Block(18004)), 0) << "no fax";
  EXPECT_TRUE(StartJobPage(job));
  EXPECT_FALSE(StartJobPage(job));
  EXPECT_EQ(Send("EscSetFontMap", Block(184)), 0) << "after the first page's start";
  EXPECT_EQ(Send("EscSetCancelFlag", {1}), 1);
  EXPECT_FALSE(IsCancelled(job));
  EXPECT_EQ(Send("EscCancelJob"), 1);
  EXPECT_TRUE(IsCancelled(job));
}

TEST_F(RenderDriverTest, TellsWhatWasSent) {
  Open(LetterRecord());
  Start();
  EXPECT_EQ(State(JobStateBlock::kPageListsSent), 0u);
  EXPECT_EQ(Send("EscSetPageListCount", Number(0)), 0);
  EXPECT_EQ(Send("EscSetPageListCount", Number(31)), 0);
  EXPECT_EQ(Send("EscSetPageListCount", Number(2)), 1);
  EXPECT_EQ(Send("EscSetPageList", Block(280)), 0) << "one row of two";
  EXPECT_EQ(Send("EscSetPageList", Block(560)), 1);
  EXPECT_EQ(State(JobStateBlock::kPageListsSent), 0u);
  EXPECT_EQ(Send("EscPageListDone"), 1);
  EXPECT_EQ(State(JobStateBlock::kPageListsSent), 1u);

  EXPECT_EQ(Read<uint32_t>(Ask("EscTabsDone", 4)), 0u);
  EXPECT_EQ(Send("EscTabsEnd"), 1);
  EXPECT_EQ(Read<uint32_t>(Ask("EscTabsDone", 4)), 1u);

  EXPECT_EQ(Send("EscGetPageNumber"), 0);
  EXPECT_EQ(job.refused, 3u) << "0 is a page number too";
  EXPECT_TRUE(StartJobPage(job));
  EXPECT_EQ(Send("EscGetPageNumber"), 1);
  EXPECT_TRUE(EndJobPage(job));
  EXPECT_FALSE(EndJobPage(job));
}

TEST_F(RenderDriverTest, HandsTheRecordOutInItsBlocks) {
  DriverEnv record = LetterRecord();
  Set<"lpOutputMethod">(record, value::lpOutputMethod::kSecure);
  Set<"lpPDLType">(record, value::lpPDLType::kPclXlMode3);
  Open(record);
  const Block block = Ask("EscGetJobRecord", JobRecordBlock::kSize);
  const auto extra = Read<uint16_t>(block, JobRecordBlock::kExtraOffset);
  EXPECT_TRUE(std::equal(block.begin() + JobRecordBlock::kEnvBase, block.begin() + extra, record.bytes.begin() + 220));
  EXPECT_TRUE(std::equal(record.bytes.begin() + 1427, record.bytes.end(), block.begin() + extra));
  EXPECT_EQ(ReadText(block, JobRecordBlock::kPrinterName, 110), u"Office");
  EXPECT_EQ(State(JobStateBlock::kConfirmSecure), 1u);
  EXPECT_EQ(State(JobStateBlock::kConfirmBox), 0u);
  const Block whole = Ask("EscGetRecord", Read<uint32_t>(Ask("EscGetRecordSize", 4)));
  EXPECT_TRUE(std::equal(whole.begin(), whole.end(), record.bytes.begin(), record.bytes.end()));
  Set<"paperSizeDots">(record, 0xFFFFFFFFu, 1);
  EXPECT_FALSE(OpenJob({.record = record, .printer = u"Office"}));
}

TEST_F(RenderDriverTest, AFaxHasTheRecipientsThatWereHandedOver) {
  DriverEnv record = LetterRecord();
  Set<"lpOutput">(record, value::lpOutput::kFax);
  Set<"faxAddressFileId">(record, 77);
  Open(record);
  Start();
  const auto recipients = [&] { return Read<uint32_t>(Ask("EscGetFaxStatus", 16), FaxStatus::kRecipients); };
  EXPECT_EQ(Read<uint32_t>(Ask("EscGetAddressFile", 4)), 77u);
  EXPECT_EQ(recipients(), 0u);
  Block none(88);
  EXPECT_EQ(AnswerEscape(job, Code("EscGetFaxRecipient"), {}, none), 0);

  auto addresses = std::make_unique<AddressBlock>();
  addresses->count = 101;
  Block sent(sizeof(AddressBlock));
  std::memcpy(sent.data(), addresses.get(), sent.size());
  EXPECT_EQ(Send("EscSetAddressData", sent), 0) << "more than there is room for";
  Write<uint32_t>(sent, 0, 2);
  std::memset(sent.data() + 4, 'N', 44);  // fills its field, without a terminator
  EXPECT_EQ(Send("EscSetAddressData", sent), 1);
  EXPECT_EQ(Read<uint32_t>(Ask("EscGetAddressFile", 4)), 0u) << "it is taken";
  EXPECT_EQ(recipients(), 2u);
  EXPECT_EQ(ReadText(Ask("EscGetFaxRecipient", 88), 0, 44), std::u16string(43, u'N'));

  EXPECT_EQ(Send("EscFaxRangeEnd", Number(2)), 0) << "before its first";
  EXPECT_EQ(Send("EscFaxRangeFirst", Number(3)), 0);
  EXPECT_EQ(Send("EscFaxRangeFirst", Number(1)), 1);
  EXPECT_EQ(Send("EscFaxRangeEnd", Number(0)), 0);
  EXPECT_EQ(Send("EscFaxRangeEnd", Number(2)), 1);
  EXPECT_EQ(Send("EscSetFaxTime", Block(10, 0xFF)), 0);
  EXPECT_EQ(Send("EscFaxCancel"), 1);
  EXPECT_EQ(recipients(), 0u);
  EXPECT_TRUE(IsCancelled(job));
}

TEST_F(RenderDriverTest, APageStateComesBackAsItWentButForTheFieldsOfTheStamp) {
  Open(LetterRecord(), DrawPath::k556);
  Start();
  Block state = Ask("EscGetPageState", 556);
  EXPECT_FALSE(StampLeftTo(job));
  Write<uint16_t>(state, PageState556::kZoom, 0);
  EXPECT_EQ(Send("EscSetPageState", state), 0);
  Write<uint16_t>(state, PageState556::kZoom, 100);
  WriteText(state, PageState556::kStampText, 33, u"DRAFT");
  Write<int16_t>(state, PageState556::kStampSize, 40);
  EXPECT_EQ(Send("EscSetPageState", state), 1);
  EXPECT_FALSE(StampLeftTo(job)) << "order 1: the driver draws";

  DriverEnv record = LetterRecord();
  Set<"lpWatermarkOrder">(record, value::lpWatermarkOrder::kTransparent);
  Open(record, DrawPath::k556);
  Start();
  StartJobPage(job);
  Write<uint16_t>(state, PageState556::kDrawingOrder, 2);
  EXPECT_EQ(Send("EscSetPageState", state), 1);
  ASSERT_TRUE(StampLeftTo(job));
  EXPECT_EQ(StampLeftTo(job)->text, u"DRAFT");
  EndJobPage(job);
  EXPECT_FALSE(StampLeftTo(job)) << "a stamp belongs to its page";
}

TEST_F(RenderDriverTest, AFontMapMayOnlyPointIntoItself) {
  Open(LetterRecord());
  Start();
  Block map(2 * 184);
  Write<uint32_t>(map, 0, 48);
  std::memcpy(map.data() + 48, "Arial", 5);
  for (const uint32_t wild : {1u, 47u, 2u * 184 - 31, 0xFFFFFFFFu}) {
    Write<uint32_t>(map, 24, wild);
    EXPECT_EQ(Send("EscSetFontMap", map), 0) << wild;
  }
  Write<uint32_t>(map, 24, 2 * 184 - 32);
  EXPECT_EQ(Send("EscSetFontMap", map), 1);
  EXPECT_EQ(Json::parse(Ticket(job, {}))["fontMap"][0]["trueType"], "Arial");
}

TEST_F(RenderDriverTest, TheTicketTellsEveryEscapeAndNoSecret) {
  DriverEnv record = LetterRecord();
  for (const EnvField& field : kEnvFields) {
    if (record::IsSecret(field)) WriteText(record.bytes, field.offset, field.length, u"Geheim");
  }
  Open(record);
  Start();
  for (const EscapeRow& row : kEscapes) {
    Block out(row.out > 0             ? static_cast<size_t>(row.out)
              : row.out == kRecord    ? kEnvSize
              : row.out == kPageState ? 488
                                      : 0);
    const Block in(row.in > 0 ? static_cast<size_t>(row.in) : row.in == kPageState ? 488 : 0);
    AnswerEscape(job, row.code, in, out);
  }
  const std::string ticket = Ticket(job, {.pages = "pages.pdf", .overlay = {}, .fax = {}});
  EXPECT_EQ(ticket.find("Geheim"), std::string::npos);
  const Json told = Json::parse(ticket);
  ASSERT_EQ(told["escapes"].size(), 4 + kEscapes.size());
  EXPECT_EQ(told["escapes"][2]["escape"], "EscDocStarted");
  EXPECT_EQ(told["escapes"][0]["in"], "");
  EXPECT_EQ(told["settings"]["securePassword"], "***");
  EXPECT_EQ(told["settings"]["lpOutput"], 2);
}

}  // namespace
}  // namespace heron::renderdriver

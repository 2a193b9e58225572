// What an escape carried, as JSON for the ticket (contents.h).

#include "renderdriver/contents.h"

#include <algorithm>
#include <cstdio>

#include "platform/api/text.h"
#include "renderdriver/answers.h"
#include "renderdriver/blocks.h"
#include "renderdriver/bytes.h"
#include "uistate/list_stores.h"

namespace heron::renderdriver {
namespace {

std::string Utf8At(In bytes, size_t offset, size_t room) {
  return platform::ToUtf8(ReadText(bytes, offset, room));
}

Json Rectangle(In bytes, size_t offset) {
  return DescribeNumbers32(bytes.subspan(offset, 16));
}

Json Describe556(In state) {
  using S = PageState556;
  Json state_json = {{"order", Read<uint16_t>(state, S::kDrawingOrder)},
                     {"physical", Rectangle(state, S::kPhysical)},
                     {"overlaySkipped", Read<uint8_t>(state, S::kOverlaySkipped)}};
  // The fields of a stamp mean nothing without its text.
  const std::string text = Utf8At(state, S::kStampText, kStampTextRoom);
  if (text.empty()) return state_json;
  state_json["stamp"] = {{"text", text},
                         {"font", Utf8At(state, S::kStampFont, kStampFontRoom)},
                         {"style", Read<int16_t>(state, S::kStampStyle)},
                         {"points", Read<int16_t>(state, S::kStampSize)},
                         {"angle", Read<int16_t>(state, S::kStampAngle)},
                         {"intensity", Read<uint8_t>(state, S::kStampIntensity)},
                         {"center", {Read<int32_t>(state, S::kStampCenterX), Read<int32_t>(state, S::kStampCenterY)}},
                         {"firstPageOnly", Read<uint32_t>(state, S::kFirstPageOnly)}};
  return state_json;
}

Json Describe488(In state) {
  using S = PageState488;
  Json flags = Json::array();
  for (size_t i = 0; i < 3; ++i) flags.push_back(Read<uint8_t>(state, S::kStampFlags + i));
  return {{"order", Read<uint8_t>(state, S::kDrawingOrder)},
          {"colorMode", Read<uint8_t>(state, S::kColorMode)},
          {"physical", Rectangle(state, S::kPhysical)},
          {"stampFlags", flags},
          {"appFlags", {Read<uint8_t>(state, S::kAppFlags), Read<uint8_t>(state, S::kAppFlags + 1)}}};
}

}  // namespace

Json DescribeText(In bytes) {
  return Utf8At(bytes, 0, bytes.size() / 2);
}

Json DescribeNumber(In bytes) {
  uint32_t value = 0;
  std::memcpy(&value, bytes.data(), std::min(bytes.size(), sizeof value));
  return value;
}

Json DescribeNumbers32(In bytes) {
  Json numbers = Json::array();
  for (size_t at = 0; at + 4 <= bytes.size(); at += 4) numbers.push_back(Read<uint32_t>(bytes, at));
  return numbers;
}

Json DescribeSize(In bytes) {
  return std::to_string(bytes.size()) + " bytes";
}

Json DescribeUserPapers(In bytes) {
  Json papers = Json::array();
  for (size_t at = 0; at + 12 <= bytes.size(); at += 12) papers.push_back(DescribeNumbers32(bytes.subspan(at, 12)));
  return papers;
}

Json DescribePageList(In bytes) {
  Json rows = Json::array();
  for (size_t at = 0; at + sizeof(PageEntry) <= bytes.size(); at += sizeof(PageEntry)) {
    const In row = bytes.subspan(at, sizeof(PageEntry));
    rows.push_back({{"pages", Utf8At(row, offsetof(PageEntry, page), 21)},
                    {"type", Read<int16_t>(row, offsetof(PageEntry, type))},
                    {"tray", Read<int16_t>(row, offsetof(PageEntry, tray))},
                    {"tabText", Utf8At(row, offsetof(PageEntry, tabText), 65)}});
  }
  return rows;
}

Json DescribeAddresses(In bytes) {
  const auto block = Read<AddressBlock>(bytes);
  Json recipients = Json::array();
  for (size_t i = 0; i < std::min<size_t>(block.count, kRecipientCount); ++i) {
    recipients.push_back({{"name", platform::ToUtf8(RecipientText(block.rows[i].name))},
                          {"number", platform::ToUtf8(RecipientText(block.rows[i].number))}});
  }
  return recipients;
}

Json DescribeFaxTime(In bytes) {
  const auto time = Read<FaxTime>(bytes);
  if (time.year == 0 && time.month == 0 && time.day == 0 && time.hour == 0 && time.minute == 0) return "none";
  char text[40];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", time.year, time.month, time.day, time.hour, time.minute);
  return text;
}

Json DescribeFaxStatus(In bytes) {
  return {{"fax", Read<uint8_t>(bytes, FaxStatus::kFaxJob)},
          {"coverSheets", Read<uint8_t>(bytes, FaxStatus::kCoverSheets)},
          {"recipients", Read<uint32_t>(bytes, FaxStatus::kRecipients)},
          {"timeSet", Read<uint8_t>(bytes, FaxStatus::kTimeSet)},
          {"pageDone", Read<uint32_t>(bytes, FaxStatus::kPageDone)}};
}

Json DescribeCoverFile(In bytes) {
  return {{"number", Read<uint32_t>(bytes)}, {"name", Utf8At(bytes, 4, 30)}};
}

Json DescribeFormBlock(In bytes) {
  return {{"mode", Read<uint8_t>(bytes, FormBlock::kMode)},
          {"path", Utf8At(bytes, FormBlock::kPath, 260)},
          {"bytes", Read<uint32_t>(bytes, FormBlock::kFileSize)}};
}

Json DescribeJobState(In bytes) {
  using S = JobStateBlock;
  return {{"pageListsSent", Read<uint32_t>(bytes, S::kPageListsSent)},
          {"spoolFile", Read<uint8_t>(bytes, S::kSpoolFileUsed)},
          {"confirmSecure", Read<uint32_t>(bytes, S::kConfirmSecure)},
          {"confirmBox", Read<uint32_t>(bytes, S::kConfirmBox)},
          {"recipients", Read<uint32_t>(bytes, S::kRecipients)},
          {"coverFiles", Read<uint32_t>(bytes, S::kCoverFiles)}};
}

Json DescribePageState(In bytes) {
  return bytes.size() == PageState556::kSize ? Describe556(bytes) : Describe488(bytes);
}

}  // namespace heron::renderdriver

// When each escape may come, what it changes, and how its contents are told in the ticket.
//
// Reader: escapes.cc. Rows stand in the order of kEscapes. `needs`: steps that must have been taken; `bars`: steps that
// must not; `sets` and `clears`: what the escape does to the steps if it is answered. `answer`: what it does besides,
// false if its contents can't be; null for nothing. `tellIn` and `tellOut`: contents for the ticket; null for none.
#pragma once

#include <array>
#include <string_view>

#include "escapes/escape_table.h"
#include "renderdriver/answers.h"
#include "renderdriver/contents.h"
#include "renderdriver/job.h"

namespace heron::renderdriver {

struct EscapeRule {
  std::string_view name;
  uint32_t needs = 0;
  uint32_t bars = 0;
  uint32_t sets = 0;
  uint32_t clears = 0;
  bool (*answer)(Job& job, In in, Out out) = nullptr;
  Json (*tellIn)(In in) = nullptr;
  Json (*tellOut)(In out) = nullptr;
};

// clang-format off
inline constexpr auto kEscapeRules = std::to_array<EscapeRule>({
    {.name = "EscGetJobRecord", .answer = GetJobRecord},
    {.name = "EscGetJobState", .answer = GetJobState, .tellOut = TellJobState},
    {.name = "EscSetUserName", .sets = kUserNamed, .answer = SetUserName, .tellIn = TellText},
    {.name = "EscSetCancelFlag", .sets = kFlagged, .answer = SetCancelFlag, .tellIn = TellNumber},
    {.name = "EscCancelJob", .needs = kMayCancel, .sets = kCancelled},
    {.name = "EscSetUserPapers", .needs = kStarted, .answer = SetUserPapers, .tellIn = TellUserPapers},
    {.name = "EscFaxCoverEnd", .needs = kCovers, .clears = kCovers | kCoverBegun, .answer = IsZero, .tellIn = TellNumber},
    {.name = "EscDocStarted", .needs = kUserNamed | kFlagged, .bars = kStarted | kMayCancel, .sets = kStarted},
    {.name = "EscSetJobId", .needs = kOutput, .answer = SetJobId, .tellIn = TellText},
    {.name = "EscSpoolFileDone", .needs = kSpoolFile, .clears = kSpoolFile, .answer = SpoolFileDone},
    {.name = "EscSetSpoolFile", .needs = kOutput | kSpoolFile, .answer = SetSpoolFile, .tellIn = TellText},
    {.name = "EscOutputStart", .needs = kStarted, .bars = kOutput, .sets = kOutput},
    {.name = "EscSetPageList", .needs = kListCounted, .bars = kListSent, .sets = kListSent, .answer = SetPageList, .tellIn = TellPageList},
    {.name = "EscSetPageListCount", .needs = kOutput, .bars = kListCounted, .sets = kListCounted, .answer = SetPageListCount, .tellIn = TellNumber},
    {.name = "EscSetPageListRange", .needs = kListSent, .tellIn = TellNumbers32},
    {.name = "EscSetPageListMixplex", .needs = kListSent, .tellIn = TellNumber},
    {.name = "EscPageListDone", .needs = kListSent, .clears = kListSent, .answer = PageListDone},
    {.name = "EscTabDrawBegin", .needs = kTabNamed, .bars = kTabDrawing, .sets = kTabDrawing},
    {.name = "EscTabDrawEnd", .needs = kTabDrawing, .clears = kTabDrawing},
    {.name = "EscSetTabCount", .needs = kOutput, .bars = kTabsCounted, .sets = kTabsCounted, .answer = SetTabCount, .tellIn = TellNumber},
    {.name = "EscTabSideFront", .needs = kTabNamed, .bars = kTabDrawing},
    {.name = "EscTabSideBack", .needs = kTabNamed, .bars = kTabDrawing},
    {.name = "EscTabsEnd", .needs = kOutput, .bars = kTabNamed, .answer = TabsEnd},
    {.name = "EscTabsDone", .answer = TabsDone, .tellOut = TellNumber},
    {.name = "EscSetTabIndex", .needs = kTabsCounted, .bars = kTabNamed, .sets = kTabNamed, .answer = SetTabIndex, .tellIn = TellNumber},
    {.name = "EscTabEntryDone", .needs = kTabNamed, .bars = kTabDrawing, .clears = kTabNamed},
    {.name = "EscRestoreDevice", .needs = kOutput, .answer = RestoreDevice, .tellIn = TellSize},
    {.name = "EscGetAddressFile", .answer = GetAddressFile, .tellOut = TellNumber},
    {.name = "EscAddressDataDone", .needs = kAddressed},
    {.name = "EscSetAddressData", .needs = kOutput | kFaxJob, .bars = kAddressed, .sets = kAddressed, .answer = SetAddressData, .tellIn = TellAddresses},
    {.name = "EscFaxRangeFirst", .needs = kFaxJob | kOutput, .sets = kRangeBegun, .answer = FaxRangeFirst, .tellIn = TellNumber},
    {.name = "EscFaxRangeEnd", .needs = kRangeBegun, .clears = kRangeBegun, .answer = FaxRangeEnd, .tellIn = TellNumber},
    {.name = "EscFaxCoverCount", .needs = kFaxJob | kOutput, .bars = kCovers, .sets = kCovers, .answer = FaxCoverCount, .tellIn = TellNumber},
    {.name = "EscFaxCoverTotal", .needs = kCovers, .answer = FaxCoverTotal, .tellIn = TellNumber},
    {.name = "EscFaxCoverIndex", .needs = kCovers, .answer = FaxCoverIndex, .tellIn = TellNumber},
    {.name = "EscFaxCoverPath", .needs = kCovers, .answer = FaxCoverPath, .tellIn = TellText},
    {.name = "EscFaxCoverStage", .needs = kCovers, .answer = FaxCoverStage, .tellIn = TellNumber},
    {.name = "EscFaxCoverBegin", .needs = kCovers, .sets = kCoverBegun},
    {.name = "EscGetFaxCoverPath", .needs = kCovers, .answer = GetFaxCoverPath, .tellOut = TellText},
    {.name = "EscSetDocName", .needs = kStarted, .answer = SetDocName, .tellIn = TellText},
    {.name = "EscGetFaxStatus", .answer = GetFaxStatus, .tellOut = TellFaxStatus},
    {.name = "EscSetFaxTime", .needs = kFaxJob | kOutput, .answer = SetFaxTime, .tellIn = TellFaxTime},
    {.name = "EscFaxCancel", .needs = kFaxJob | kOutput, .answer = FaxCancel},
    {.name = "EscGetFaxRecipient", .needs = kFaxJob, .answer = GetFaxRecipient, .tellOut = TellText},
    {.name = "EscGetFaxTime", .answer = GetFaxTime, .tellOut = TellFaxTime},
    {.name = "EscFaxEndDoc", .needs = kOutput},
    {.name = "EscFaxCoverDeleted", .needs = kFaxJob, .answer = FaxCoverDeleted, .tellIn = TellNumber},
    {.name = "EscFaxCoverFileDeleted", .needs = kFaxJob, .answer = FaxCoverFileDeleted},
    {.name = "EscSetCoverFolder", .needs = kCovers, .answer = SetCoverFolder, .tellIn = TellText},
    {.name = "EscSetCoverFile", .needs = kCovers, .answer = SetCoverFile, .tellIn = TellCoverFile},
    {.name = "EscSetLastCoverFile", .needs = kCovers, .answer = SetLastCoverFile, .tellIn = TellText},
    {.name = "EscGetCoverData", .needs = kCovers, .answer = GetCoverData, .tellOut = TellSize},
    {.name = "EscSetCoverData", .needs = kCoverBegun, .clears = kCoverBegun, .answer = SetCoverData, .tellIn = TellSize},
    {.name = "EscGetDrawPath", .answer = GetDrawPath, .tellOut = TellNumber},
    {.name = "EscGetRecordSize", .answer = GetRecordSize, .tellOut = TellNumber},
    {.name = "EscGetRecord", .answer = GetRecord},
    {.name = "EscGetPageState", .answer = GetPageState, .tellOut = TellPageState},
    {.name = "EscSetPageState", .needs = kStarted, .answer = SetPageState, .tellIn = TellPageState},
    {.name = "EscGetPageNumber"},
    {.name = "EscGetPageOrientation"},
    {.name = "EscStampBegin", .needs = kOutput, .bars = kStampOpen, .sets = kStampOpen},
    {.name = "EscStampEnd", .needs = kStampOpen, .clears = kStampOpen},
    {.name = "EscSetFormPath", .needs = kOutput | kFirstPage | kPath556, .answer = SetFormPath, .tellIn = TellText},
    {.name = "EscSetFormBlock", .needs = kOutput | kFirstPage | kPath488, .answer = SetFormBlock, .tellIn = TellFormBlock},
    {.name = "EscStampColor", .needs = kOutput, .answer = StampColor, .tellIn = TellNumber},
    {.name = "EscStampNoColor", .needs = kOutput, .answer = StampNoColor},
    {.name = "EscSetFontMap", .needs = kOutput | kFirstPage, .answer = SetFontMap, .tellIn = TellSize},
});
// clang-format on

consteval bool RulesFollowEscapes() {
  for (size_t i = 0; i < kEscapes.size(); ++i)
    if (kEscapeRules[i].name != kEscapes[i].name) return false;
  return true;
}
static_assert(kEscapeRules.size() == kEscapes.size() && RulesFollowEscapes());

}  // namespace heron::renderdriver

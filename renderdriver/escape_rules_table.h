// When each escape may come, what it changes, and how the ticket describes its contents.
//
// Reader: escapes.cc. Rows are in the order of kEscapes. `needs`: steps that must have been taken; `bars`: steps that
// must not; `sets` and `clears`: what the escape does to the steps if it is answered. `answer`: what it does besides,
// false if its contents can't be; null for nothing. `describeIn` and `describeOut`: contents for the ticket; null for
// none.
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
  Json (*describeIn)(In in) = nullptr;
  Json (*describeOut)(In out) = nullptr;
};

// clang-format off
inline constexpr auto kEscapeRules = std::to_array<EscapeRule>({
    {.name = "EscGetJobRecord", .answer = GetJobRecord},
    {.name = "EscGetJobState", .answer = GetJobState, .describeOut = DescribeJobState},
    {.name = "EscSetUserName", .sets = kUserNamed, .answer = SetUserName, .describeIn = DescribeText},
    {.name = "EscSetCancelFlag", .sets = kFlagged, .answer = SetCancelFlag, .describeIn = DescribeNumber},
    {.name = "EscCancelJob", .needs = kMayCancel, .sets = kCancelled},
    {.name = "EscSetUserPapers", .needs = kStarted, .answer = SetUserPapers, .describeIn = DescribeUserPapers},
    {.name = "EscFaxCoverEnd", .needs = kCovers, .clears = kCovers | kCoverBegun, .answer = IsZero, .describeIn = DescribeNumber},
    {.name = "EscDocStarted", .needs = kUserNamed | kFlagged, .bars = kStarted | kMayCancel, .sets = kStarted},
    {.name = "EscSetJobId", .needs = kOutput, .answer = SetJobId, .describeIn = DescribeText},
    {.name = "EscSpoolFileDone", .needs = kSpoolFile, .clears = kSpoolFile, .answer = SpoolFileDone},
    {.name = "EscSetSpoolFile", .needs = kOutput | kSpoolFile, .answer = SetSpoolFile, .describeIn = DescribeText},
    {.name = "EscOutputStart", .needs = kStarted, .bars = kOutput, .sets = kOutput},
    {.name = "EscSetPageList", .needs = kListCounted, .bars = kListSent, .sets = kListSent, .answer = SetPageList, .describeIn = DescribePageList},
    {.name = "EscSetPageListCount", .needs = kOutput, .bars = kListCounted, .sets = kListCounted, .answer = SetPageListCount, .describeIn = DescribeNumber},
    {.name = "EscSetPageListRange", .needs = kListSent, .describeIn = DescribeNumbers32},
    {.name = "EscSetPageListMixplex", .needs = kListSent, .describeIn = DescribeNumber},
    {.name = "EscPageListDone", .needs = kListSent, .clears = kListSent, .answer = PageListDone},
    {.name = "EscTabDrawBegin", .needs = kTabNamed, .bars = kTabDrawing, .sets = kTabDrawing},
    {.name = "EscTabDrawEnd", .needs = kTabDrawing, .clears = kTabDrawing},
    {.name = "EscSetTabCount", .needs = kOutput, .bars = kTabsCounted, .sets = kTabsCounted, .answer = SetTabCount, .describeIn = DescribeNumber},
    {.name = "EscTabSideFront", .needs = kTabNamed, .bars = kTabDrawing},
    {.name = "EscTabSideBack", .needs = kTabNamed, .bars = kTabDrawing},
    {.name = "EscTabsEnd", .needs = kOutput, .bars = kTabNamed, .answer = TabsEnd},
    {.name = "EscTabsDone", .answer = TabsDone, .describeOut = DescribeNumber},
    {.name = "EscSetTabIndex", .needs = kTabsCounted, .bars = kTabNamed, .sets = kTabNamed, .answer = SetTabIndex, .describeIn = DescribeNumber},
    {.name = "EscTabEntryDone", .needs = kTabNamed, .bars = kTabDrawing, .clears = kTabNamed},
    {.name = "EscRestoreDevice", .needs = kOutput, .answer = RestoreDevice, .describeIn = DescribeSize},
    {.name = "EscGetAddressFile", .answer = GetAddressFile, .describeOut = DescribeNumber},
    {.name = "EscAddressDataDone", .needs = kAddressed},
    {.name = "EscSetAddressData", .needs = kOutput | kFaxJob, .bars = kAddressed, .sets = kAddressed, .answer = SetAddressData, .describeIn = DescribeAddresses},
    {.name = "EscFaxRangeFirst", .needs = kFaxJob | kOutput, .sets = kRangeBegun, .answer = FaxRangeFirst, .describeIn = DescribeNumber},
    {.name = "EscFaxRangeEnd", .needs = kRangeBegun, .clears = kRangeBegun, .answer = FaxRangeEnd, .describeIn = DescribeNumber},
    {.name = "EscFaxCoverCount", .needs = kFaxJob | kOutput, .bars = kCovers, .sets = kCovers, .answer = FaxCoverCount, .describeIn = DescribeNumber},
    {.name = "EscFaxCoverTotal", .needs = kCovers, .answer = FaxCoverTotal, .describeIn = DescribeNumber},
    {.name = "EscFaxCoverIndex", .needs = kCovers, .answer = FaxCoverIndex, .describeIn = DescribeNumber},
    {.name = "EscFaxCoverPath", .needs = kCovers, .answer = FaxCoverPath, .describeIn = DescribeText},
    {.name = "EscFaxCoverStage", .needs = kCovers, .answer = FaxCoverStage, .describeIn = DescribeNumber},
    {.name = "EscFaxCoverBegin", .needs = kCovers, .bars = kCoverBegun, .sets = kCoverBegun, .answer = FaxCoverBegin},
    {.name = "EscGetFaxCoverPath", .needs = kCovers, .answer = GetFaxCoverPath, .describeOut = DescribeText},
    {.name = "EscSetDocName", .needs = kStarted, .answer = SetDocName, .describeIn = DescribeText},
    {.name = "EscGetFaxStatus", .answer = GetFaxStatus, .describeOut = DescribeFaxStatus},
    {.name = "EscSetFaxTime", .needs = kFaxJob | kOutput, .answer = SetFaxTime, .describeIn = DescribeFaxTime},
    {.name = "EscFaxCancel", .needs = kFaxJob | kOutput, .answer = FaxCancel},
    {.name = "EscGetFaxRecipient", .needs = kFaxJob, .answer = GetFaxRecipient, .describeOut = DescribeText},
    {.name = "EscGetFaxTime", .answer = GetFaxTime, .describeOut = DescribeFaxTime},
    {.name = "EscFaxEndDoc", .needs = kOutput},
    {.name = "EscFaxCoverDeleted", .needs = kFaxJob, .answer = FaxCoverDeleted, .describeIn = DescribeNumber},
    {.name = "EscFaxCoverFileDeleted", .needs = kFaxJob, .answer = FaxCoverFileDeleted},
    {.name = "EscSetCoverFolder", .needs = kCovers, .answer = SetCoverFolder, .describeIn = DescribeText},
    {.name = "EscSetCoverFile", .needs = kCovers, .answer = SetCoverFile, .describeIn = DescribeCoverFile},
    {.name = "EscSetLastCoverFile", .needs = kCovers, .answer = SetLastCoverFile, .describeIn = DescribeText},
    {.name = "EscGetCoverData", .needs = kCovers, .answer = GetCoverData, .describeOut = DescribeSize},
    {.name = "EscSetCoverData", .needs = kCoverBegun, .clears = kCoverBegun, .answer = SetCoverData, .describeIn = DescribeSize},
    {.name = "EscGetDrawPath", .answer = GetDrawPath, .describeOut = DescribeNumber},
    {.name = "EscGetRecordSize", .answer = GetRecordSize, .describeOut = DescribeNumber},
    {.name = "EscGetRecord", .answer = GetRecord},
    {.name = "EscGetPageState", .answer = GetPageState, .describeOut = DescribePageState},
    {.name = "EscSetPageState", .needs = kStarted, .answer = SetPageState, .describeIn = DescribePageState},
    {.name = "EscGetPageNumber"},
    {.name = "EscGetPageOrientation"},
    {.name = "EscStampBegin", .needs = kOutput, .bars = kStampOpen, .sets = kStampOpen},
    {.name = "EscStampEnd", .needs = kStampOpen, .clears = kStampOpen},
    {.name = "EscSetFormPath", .needs = kOutput | kFirstPage | kPath556, .answer = SetFormPath, .describeIn = DescribeText},
    {.name = "EscSetFormBlock", .needs = kOutput | kFirstPage | kPath488, .answer = SetFormBlock, .describeIn = DescribeFormBlock},
    {.name = "EscStampColor", .needs = kOutput, .answer = StampColor, .describeIn = DescribeNumber},
    {.name = "EscStampNoColor", .needs = kOutput, .answer = StampNoColor},
    {.name = "EscSetFontMap", .needs = kOutput | kFirstPage, .answer = SetFontMap, .describeIn = DescribeSize},
});
// clang-format on

consteval bool RulesFollowEscapes() {
  for (size_t i = 0; i < kEscapes.size(); ++i)
    if (kEscapeRules[i].name != kEscapes[i].name) return false;
  return true;
}
static_assert(kEscapeRules.size() == kEscapes.size() && RulesFollowEscapes());

}  // namespace heron::renderdriver

// What each escape does: takes what the driver sends into the job, or fills the driver's buffer from it.
//
// The caller has checked size and order. `in` and `out` have exactly the sizes of the escape's row, `out` is zeroed.
// False if the contents can't be: then the job hasn't changed.
#pragma once

#include "renderdriver/job.h"

namespace heron::renderdriver {

using In = std::span<const uint8_t>;
using Out = std::span<uint8_t>;

bool GetJobRecord(Job& job, In in, Out out);
bool GetJobState(Job& job, In in, Out out);
bool GetFaxStatus(Job& job, In in, Out out);
bool GetDrawPath(Job& job, In in, Out out);
bool GetRecordSize(Job& job, In in, Out out);
bool GetRecord(Job& job, In in, Out out);
bool GetPageState(Job& job, In in, Out out);
bool SetPageState(Job& job, In in, Out out);
bool RestoreDevice(Job& job, In in, Out out);

bool SetUserName(Job& job, In in, Out out);
bool SetDocName(Job& job, In in, Out out);
bool SetJobId(Job& job, In in, Out out);
bool SetCancelFlag(Job& job, In in, Out out);
bool SetUserPapers(Job& job, In in, Out out);
bool SetSpoolFile(Job& job, In in, Out out);
bool SpoolFileDone(Job& job, In in, Out out);

bool SetPageListCount(Job& job, In in, Out out);
bool SetPageList(Job& job, In in, Out out);
bool PageListDone(Job& job, In in, Out out);
bool SetTabCount(Job& job, In in, Out out);
bool SetTabIndex(Job& job, In in, Out out);
bool TabsEnd(Job& job, In in, Out out);
bool TabsDone(Job& job, In in, Out out);

bool SetFormPath(Job& job, In in, Out out);
bool SetFormBlock(Job& job, In in, Out out);
bool SetFontMap(Job& job, In in, Out out);
bool StampColor(Job& job, In in, Out out);
bool StampNoColor(Job& job, In in, Out out);

// Fax: fax_answers.cc
bool GetAddressFile(Job& job, In in, Out out);
bool SetAddressData(Job& job, In in, Out out);
bool FaxRangeFirst(Job& job, In in, Out out);
bool FaxRangeEnd(Job& job, In in, Out out);
bool SetFaxTime(Job& job, In in, Out out);
bool GetFaxTime(Job& job, In in, Out out);
bool GetFaxRecipient(Job& job, In in, Out out);
bool FaxCancel(Job& job, In in, Out out);
bool FaxCoverCount(Job& job, In in, Out out);
bool FaxCoverTotal(Job& job, In in, Out out);
bool FaxCoverIndex(Job& job, In in, Out out);
bool FaxCoverBegin(Job& job, In in, Out out);
bool FaxCoverStage(Job& job, In in, Out out);
bool GetFaxCoverPath(Job& job, In in, Out out);
bool FaxCoverPath(Job& job, In in, Out out);
bool SetCoverFolder(Job& job, In in, Out out);
bool SetCoverFile(Job& job, In in, Out out);
bool SetLastCoverFile(Job& job, In in, Out out);
bool FaxCoverDeleted(Job& job, In in, Out out);
bool FaxCoverFileDeleted(Job& job, In in, Out out);
bool GetCoverData(Job& job, In in, Out out);
bool SetCoverData(Job& job, In in, Out out);
/// The one byte that closes something must be 0.
bool IsZero(Job& job, In in, Out out);

/// One row of the font map.
struct FontMapRow {
  std::string trueType;
  std::array<std::string, 4> variants;  ///< regular, bold, italic, both
};
/// The rows of a font map whose texts all lie inside it; nothing if one doesn't.
std::optional<std::vector<FontMapRow>> FontMapRows(DrawPath path, In map);

/// Text of a recipient's field, which is in the system's code page and may fill its room.
std::u16string RecipientText(const char (&field)[44]);

}  // namespace heron::renderdriver

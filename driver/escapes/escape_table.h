// Every escape to the printing side: code, bytes in, bytes out, name, meaning.
//
// Readers: the handlers of the print path, and the printing side itself, which checks the sizes. The codes and sizes
// are the contract with the printing side and never change. A caller sends and asks for exactly these sizes.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace heron {

/// Sizes that are not one number.
inline constexpr int32_t kSentPageList = -1;  ///< n rows of 280 bytes, n as EscSetPageListCount said
inline constexpr int32_t kPageState = -2;     ///< 488 if EscGetDrawPath gives 0, else 556
inline constexpr int32_t kRecord = -3;        ///< what EscGetRecordSize gives
inline constexpr int32_t kFontMap = -4;       ///< n entries of 184 bytes if EscGetDrawPath gives 0, else of 180

struct EscapeRow {
  uint32_t code;
  int32_t in;   ///< bytes sent, or one of the sizes above
  int32_t out;  ///< bytes asked for, or one of the sizes above
  std::string_view name;
};

// clang-format off
inline constexpr auto kEscapes = std::to_array<EscapeRow>({
    {0x6fffff00,             0,       9797, "EscGetJobRecord"},  // JobRecordBlock
    {0x6fffff01,             0,      28332, "EscGetJobState"},  // JobStateBlock
    {0x6fffff02,           510,          0, "EscSetUserName"},  // wide text, zero-filled: the user for the job header
    {0x6fffff03,             1,          0, "EscSetCancelFlag"},  // 0 at the start of the job, 1 before a cancel
    {0x6fffff04,             0,          0, "EscCancelJob"},  // after the flag is 1: the job produces nothing more
    {0x6fffff05,           120,          0, "EscSetUserPapers"},  // ten times width, length, unit, 32 bits each; at each page start
    {0x6fffff06,             1,          0, "EscFaxCoverEnd"},  // 0: closes the cover pages
    {0x6fffff07,             0,          0, "EscDocStarted"},  // ends the job-start sequence
    {0x6ffffa00,            64,          0, "EscSetJobId"},  // wide text of up to 31 characters
    {0x6ffffb00,             0,          0, "EscSpoolFileDone"},  // the spool file is gone
    {0x6ffffb01,           520,          0, "EscSetSpoolFile"},  // wide path
    {0x6ffffc00,             0,          0, "EscOutputStart"},  // job-start notice
    {0x6ffffd00, kSentPageList,          0, "EscSetPageList"},  // the n entries of the per-page list, as stored
    {0x6ffffd01,             4,          0, "EscSetPageListCount"},  // n, 1 to 30
    {0x6ffffd02,             8,          0, "EscSetPageListRange"},  // two 32-bit values of the list
    {0x6ffffd03,             4,          0, "EscSetPageListMixplex"},  // mixed-simplex flag of the list
    {0x6ffffd13,             0,          0, "EscPageListDone"},  // after this, the state's word at offset 8 reads 1
    {0x6ffffd05,             0,          0, "EscTabDrawBegin"},  // what is drawn next is the text of one tab
    {0x6ffffd06,             0,          0, "EscTabDrawEnd"},  // ends it
    {0x6ffffd08,             4,          0, "EscSetTabCount"},  // number of list entries with tab text
    {0x6ffffd0c,             0,          0, "EscTabSideFront"},  // after the text for side 1
    {0x6ffffd0d,             0,          0, "EscTabSideBack"},  // after the text for side 2
    {0x6ffffd0e,             0,          0, "EscTabsEnd"},  // all tabs are sent
    {0x6ffffd0f,             0,          4, "EscTabsDone"},  // non-zero: tabs were already handled
    {0x6ffffd11,             4,          0, "EscSetTabIndex"},  // the entry's number, from 1
    {0x6ffffd12,             0,          0, "EscTabEntryDone"},  // closes one entry
    {0x6ffffe00,          1996,          0, "EscRestoreDevice"},  // the device fields for the next page: a cover's, then the saved ones
    {0x6ffffe02,             0,          4, "EscGetAddressFile"},  // unique number of the address file in the temporary folder, 0 for none
    {0x6ffffe03,             0,          0, "EscAddressDataDone"},
    {0x6ffffe04,         18004,          0, "EscSetAddressData"},  // the file's bytes
    {0x6ffffe05,             4,          0, "EscFaxRangeFirst"},  // first recipient of this transmission
    {0x6ffffe06,             4,          0, "EscFaxRangeEnd"},  // one past the last
    {0x6ffffe07,             4,          0, "EscFaxCoverCount"},  // number of recipients, at least 1
    {0x6ffffe08,             4,          0, "EscFaxCoverTotal"},
    {0x6ffffe09,             4,          0, "EscFaxCoverIndex"},  // the current cover number
    {0x6ffffe0a,           520,          0, "EscFaxCoverPath"},  // hands back what EscGetFaxCoverPath gave
    {0x6ffffe0c,             1,          0, "EscFaxCoverStage"},  // 1 before and after a cover, 2 at the end
    {0x6ffffe0d,             0,          0, "EscFaxCoverBegin"},
    {0x6ffffe0e,             0,        520, "EscGetFaxCoverPath"},  // wide path
    {0x6ffffe0f,           520,          0, "EscSetDocName"},  // wide document name
    {0x6ffffe10,             0,         16, "EscGetFaxStatus"},  // gives the FaxStatus
    {0x6ffffe11,            10,          0, "EscSetFaxTime"},  // year, month, day, hour, minute as unsigned 16-bit
    {0x6ffffe12,             0,          0, "EscFaxCancel"},  // the fax is dropped
    {0x6ffffe13,             0,         88, "EscGetFaxRecipient"},  // wide text: the first recipient
    {0x6ffffe14,             0,         10, "EscGetFaxTime"},  // as EscSetFaxTime; all zero means none
    {0x6ffffe15,             0,          0, "EscFaxEndDoc"},  // at the end of the document
    {0x6ffffe16,             2,          0, "EscFaxCoverDeleted"},  // number of the deleted file
    {0x6ffffe17,             0,          0, "EscFaxCoverFileDeleted"},  // the last file is deleted
    {0x6ffffe19,           520,          0, "EscSetCoverFolder"},  // folder for cover temporary files
    {0x6ffffe1a,            64,          0, "EscSetCoverFile"},  // file name and number of one cover
    {0x6ffffe1b,            60,          0, "EscSetLastCoverFile"},  // name of the last file
    {0x6ffffe1c,             0,         48, "EscGetCoverData"},  // opaque block, handed back by EscSetCoverData
    {0x6ffffe1d,            48,          0, "EscSetCoverData"},
    {0x7fff0001,             0,          4, "EscGetDrawPath"},  // 0 or not: selects which page-state size applies, 488 when 0 and 556 otherwise
    {0x7fff0002,             0,          4, "EscGetRecordSize"},  // size of the job's DriverEnv
    {0x7fff0003,             0,    kRecord, "EscGetRecord"},  // the job's DriverEnv, EnvBase at byte 220
    {0x7ffffff7,             0, kPageState, "EscGetPageState"},  // page-state block
    {0x7ffffff6,    kPageState,          0, "EscSetPageState"},  // puts it back with changes
    {0x7ffffffd,             0,          0, "EscGetPageNumber"},  // the return value: 0 on the first page's start, and 1 at its end
    {0x7ffffffe,             0,          0, "EscGetPageOrientation"},  // the return value: 2 for landscape
    {0x7ffffffc,             0,          0, "EscStampBegin"},  // before drawing a stamp in the way that needs marking
    {0x7ffffffb,             0,          0, "EscStampEnd"},  // after it
    {0x7ffffff4,           520,          0, "EscSetFormPath"},  // wide path of the overlay form
    {0x7ffffffa,           528,          0, "EscSetFormBlock"},  // the form block of escape_blocks.h
    {0x7fffffe8,             1,          0, "EscStampColor"},  // the stamp's intensity byte
    {0x7fffffe9,             0,          0, "EscStampNoColor"},  // what follows is drawn as the mark's mask
    {0x7fffffea,      kFontMap,          0, "EscSetFontMap"},  // font substitution table
});
// clang-format on
static_assert(kEscapes.size() == 67);

/// The row of a name; one that doesn't exist doesn't compile.
consteval EscapeRow Escape(std::string_view name) {
  for (const EscapeRow& row : kEscapes)
    if (row.name == name) return row;
  throw "no such escape";
}

}  // namespace heron

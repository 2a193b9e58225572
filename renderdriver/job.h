// One job of the printing half: its setup, what the driver has sent, and the log.
//
// The driver is untrusted: an escape of the wrong size, out of order or with impossible contents changes nothing and
// returns 0. Every escape, answered or refused, is logged in the ticket.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/field_json.h"
#include "escapes/escape_blocks.h"
#include "settings/driver_env.h"
#include "uistate/recipients.h"

namespace heron::renderdriver {

using record::Json;

/// The kind of page state that the printing half keeps; the number is the state's size.
enum class DrawPath : uint16_t { k488 = 488, k556 = 556 };

/// What a job is opened with.
struct JobSetup {
  DriverEnv record;
  std::u16string printer;
  DrawPath path = DrawPath::k488;
  bool usesSpoolFile = false;  ///< the pages wait in a file of the driver's until the job ends
  bool masksPassword = false;  ///< passwords are masked in a confirmation, whatever the record says
};

/// What the order of escapes depends on: bits of Job::steps.
enum Step : uint32_t {
  kUserNamed = 1u << 0,
  kFlagged = 1u << 1,    ///< EscSetCancelFlag was sent
  kStarted = 1u << 2,    ///< EscDocStarted
  kOutput = 1u << 3,     ///< EscOutputStart
  kMayCancel = 1u << 4,  ///< the cancel flag is 1
  kCancelled = 1u << 5,
  kListCounted = 1u << 6,
  kListSent = 1u << 7,  ///< the rows; the list isn't closed yet
  kTabsCounted = 1u << 8,
  kTabNamed = 1u << 9,     ///< EscSetTabIndex; its entry isn't closed yet
  kTabDrawing = 1u << 10,  ///< what is drawn is a tab's text
  kAddressed = 1u << 11,   ///< EscSetAddressData
  kRangeBegun = 1u << 12,
  kCovers = 1u << 13,  ///< EscFaxCoverCount
  kStampOpen = 1u << 14,
  kFirstPage = 1u << 15,  ///< no page has started yet
  kFaxJob = 1u << 16,
  kPath488 = 1u << 17,
  kPath556 = 1u << 18,
  kSpoolFile = 1u << 19,
  kCoverBegun = 1u << 20,  ///< pages that start are cover sheets
};

/// A whole row of the per-page list, as the driver stores it.
inline constexpr size_t kPageListRow = 280;
inline constexpr size_t kMostPageListRows = 30;
/// The device fields of the job record that a cover page replaces.
inline constexpr size_t kDeviceSize = DeviceFields::kSize;

struct FaxTime {
  uint16_t year = 0, month = 0, day = 0, hour = 0, minute = 0;
};
static_assert(sizeof(FaxTime) == 10);

/// Pages that go out together: cover sheets, then the pages of the document.
struct Transmission {
  uint32_t first = 0, end = 0;  ///< recipients, the end excluded
  int covers = 0;
};

/// How a form is used, by EscSetFormBlock or EscSetFormPath.
struct Form {
  uint8_t mode = 1;  ///< 1 none, 2 made, 3 or 4 printed
  std::u16string path;
};

struct Job {
  JobSetup setup;
  uint32_t steps = 0;
  int pages = 0;  ///< pages of the document that have started
  bool pageOpen = false;

  std::u16string user;
  std::u16string document;
  std::u16string id;
  std::u16string spoolFile;
  std::array<uint8_t, 120> userPapers{};

  std::vector<uint8_t> pageState;
  std::array<uint8_t, kDeviceSize> device{};  ///< in force; a cover page changes it for its time
  Form form;
  std::vector<uint8_t> fontMap;
  std::vector<uint8_t> pageList;

  uint32_t listRows = 0;
  bool listsDone = false;
  uint32_t tabCount = 0;
  bool tabsDone = false;

  std::optional<AddressBlock> addresses;
  bool faxDropped = false;
  FaxTime faxTime;
  uint32_t rangeFirst = 0, rangeEnd = 0;
  uint32_t coverTotal = 0, coverIndex = 0;
  uint32_t coverData = 0;  ///< what EscGetCoverData gave last
  std::u16string coverFolder, lastCoverFile;
  std::vector<std::u16string> coverFiles;
  std::vector<Transmission> covered;  ///< by cover sheet, as they came

  std::optional<uint8_t> stampShade;  ///< of a mask, by EscStampColor
  bool masking = false;               ///< until the page's end: what is drawn is the mark's mask

  Json notes = Json::array();  ///< every escape in order
  size_t refused = 0;          ///< how many of them failed
  std::string event;           ///< the document event that is running, for the notes
};

/// A job before its first escape; nothing for a record with an impossible sheet.
std::optional<Job> OpenJob(JobSetup setup);

/// A page of the document begins or ends; a cover page doesn't count as one. False if the other call is due.
bool StartJobPage(Job& job);
bool EndJobPage(Job& job);

inline bool Has(const Job& job, uint32_t steps) {
  return (job.steps & steps) == steps;
}
/// The job was cancelled by the driver: nothing of it may be printed.
inline bool IsCancelled(const Job& job) {
  return Has(job, kCancelled) || job.faxDropped;
}

/// What the fax sends, in order: a transmission for each cover sheet, or one to all without.
std::vector<Transmission> TransmissionsOf(const Job& job);

/// The sheet of a cover page that is being drawn, if it has a paper of its own.
struct CoverSheet {
  uint16_t width, length;  ///< tenths of a millimetre
  double scale;            ///< of what is drawn
};
std::optional<CoverSheet> CoverSheetOf(const Job& job);

/// The stamp of the page that is ending, if the driver left its drawing to the printing side: path 556 and an order
/// other than 1.
struct DeferredStamp {
  std::u16string text;
  std::u16string font;
  int style;             ///< 1 regular, 2 bold, 3 italic, 4 both
  int size;              ///< points
  int angle;             ///< degrees, counter-clockwise
  uint8_t shade;         ///< 0 black to 255 white
  int centerX, centerY;  ///< tenths of a millimetre from the middle of the page
};
std::optional<DeferredStamp> StampLeftTo(const Job& job);

}  // namespace heron::renderdriver

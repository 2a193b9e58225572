// What a handler asks the printing side about its job, fetched afresh by each. Every number of a reply is bounded here
// or by its reader; a reply that is too short reads as zeros.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "escapes/escape_blocks.h"
#include "escapes/send_escape.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

/// The arguments of a document event, as they came.
struct DocumentEvent {
  platform::HANDLE printer;
  platform::HDC hdc;
  int event;
  uint32_t inSize;
  const void* in;
  uint32_t outSize;
  const void* out;
};

/// Results of a handler. Anything but kGoOn ends the chain and is the event's result.
inline constexpr int kGoOn = 1;
inline constexpr int kStop = 0;
inline constexpr int kFailed = -1;

/// The reply of EscGetJobRecord, whose front are the device fields; null if the escape fails.
using JobRecord = std::array<uint8_t, JobRecordBlock::kSize>;
std::unique_ptr<JobRecord> FetchJobRecordBlock(platform::HDC hdc);
/// The settings in it; null if it names a place for EnvExtra where it doesn't fit.
std::unique_ptr<DriverEnv> SettingsIn(const JobRecord& block);

/// The job's settings out of the JobRecordBlock, with the public part taken from its mirror; null if the escape fails
/// or the block names a place for EnvExtra where it doesn't fit.
std::unique_ptr<DriverEnv> FetchJobRecord(platform::HDC hdc);

/// The record by EscGetRecordSize and EscGetRecord. Never fails: what can't be had is zero.
std::unique_ptr<DriverEnv> FetchRecord(platform::HDC hdc);

using JobState = std::array<uint8_t, JobStateBlock::kSize>;
/// Null if the escape fails.
std::unique_ptr<JobState> FetchJobState(platform::HDC hdc);

/// The FaxStatus, decoded.
struct FaxState {
  bool fax;
  bool coverSheets;
  uint32_t recipients;
  uint8_t hour;
  uint8_t minute;
  bool timeSet;
  bool pageDone;
};
std::optional<FaxState> FetchFaxState(platform::HDC hdc);

/// The user's logon name as EscSetUserName takes it, empty if it is unknown.
std::array<char16_t, 255> LogonName();

}  // namespace heron

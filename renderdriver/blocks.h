// The blocks that the printing half returns to the driver, filled from the job's record and from what was sent before.
// escapes/escape_blocks.h defines the offsets of their fields; every other byte is 0.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "renderdriver/job.h"

namespace heron::renderdriver {

inline constexpr uint8_t kFaxOutput = 1;  ///< lpOutput
/// Characters of the texts of a stamp in the page state.
inline constexpr size_t kStampTextRoom = 33;
inline constexpr size_t kStampFontRoom = 32;

/// The sheet that the pages of a record are printed on, turned as the record's orientation says: its size and printable
/// rectangle in dots.
struct Sheet {
  uint32_t dpi;
  uint32_t width, height;
  uint32_t left, top, right, bottom;
};
/// Nothing for a record with an impossible sheet: no size, one of more than 100,000 dots, a printable rectangle that
/// doesn't lie inside, a resolution outside 72 to 2,400.
std::optional<Sheet> SheetOf(const DriverEnv& record);
/// 1 upright, 2 across.
int OrientationOf(const DriverEnv& record);

/// The device fields of the job record.
void FillDevice(const DriverEnv& record, std::span<uint8_t, kDeviceSize> device);

/// The state with which a page begins.
std::vector<uint8_t> NewPageState(const JobSetup& setup);

/// Each fills a zeroed block of its size.
void FillJobRecord(const Job& job, std::span<uint8_t> block);
void FillJobState(const Job& job, std::span<uint8_t> block);
void FillFaxStatus(const Job& job, std::span<uint8_t> block);

/// Recipients of the job; a fax that was dropped has none.
uint32_t RecipientCount(const Job& job);

}  // namespace heron::renderdriver

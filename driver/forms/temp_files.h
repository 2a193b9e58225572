// Temporary files that a job leaves in the system's spool folder, and the user's record of them, by which a later job
// cleans up after one that was broken off.
//
// Numbers 0 to 100 are a fax job's cover sheets and the file after the last one; the spool file has a number of its own
// behind them. Whatever a record or the printing side names, only a file of a name made here, in that folder, is ever
// deleted.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace heron {

inline constexpr uint32_t kTempFileCount = 101;               ///< recorded by number and count
inline constexpr uint32_t kSpoolFileNumber = kTempFileCount;  ///< recorded by number alone

/// First three characters of the names.
inline constexpr char16_t kCoverPrefix[] = u"vfc";
inline constexpr char16_t kLastCoverPrefix[] = u"vfj";
inline constexpr char16_t kSpoolPrefix[] = u"vfs";

/// The folder with its separator; empty if it can't be had.
std::u16string SpoolFolder();

/// Makes an empty file there, readable by its owner alone; its path, or empty.
std::u16string MakeTempFile(const char16_t* prefix);

/// Deletes the file if it is one of ours. False if it isn't, or can't be deleted.
bool DeleteTempFile(std::u16string_view path);

/// The record, per user and printer. `number` is below kTempFileCount or kSpoolFileNumber. A count of 0 forgets the
/// count. False if it can't be written.
bool RecordTempFileCount(std::u16string_view printer_name, uint32_t count);
bool RecordTempFile(std::u16string_view printer_name, uint32_t number, std::u16string_view path);

/// Records files of one job, numbered behind those of jobs that still run; all in one transaction. False, with the
/// record unchanged, if it can't be written or has no room.
bool RecordTempFiles(std::u16string_view printer_name, std::span<const std::u16string> paths);
/// Takes these files, and no others, out of the record; the rest is numbered anew.
void ForgetTempFiles(std::u16string_view printer_name, std::span<const std::u16string> paths);

/// Deletes every recorded file that is ours, and its record. A file that a job of another process still uses stays,
/// and so does its record.
void DeleteRecordedFiles(std::u16string_view printer_name);

}  // namespace heron

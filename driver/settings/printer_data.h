// What outlives a job: the queue's saved record and its other values, and the small per-user states.
//
// Two places. Per queue, for all users: printer data "HERON NT" (the saved record), "CountryCode",
// "SPLUserModePrinterDriver", "UDPaper%ld". Per user and queue: the registry tree below UserKey(). A failed write is
// ignored where the record in memory stays valid; the next load rebuilds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/catalog.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

inline constexpr size_t kPrinterNameLength = 31;  ///< as records and keys have it

/// Name of the queue from PRINTER_INFO_1, cut to `length` characters; empty if it can't be read.
std::u16string PrinterName(platform::HANDLE printer, size_t length = kPrinterNameLength);

/// Path of the user's key of a queue, with up to two parts below; at most 260 characters. The name goes through the
/// system code page and is cut at the last whole character within 31 bytes; then a leading "\\" is dropped.
std::u16string BuildUserKey(std::u16string_view printer_name, std::u16string_view sub1 = {},
                            std::u16string_view sub2 = {});

/// "HERON NT" byte for byte; empty if nothing is stored, or nothing that could be a record.
using SavedRecord = std::vector<uint8_t>;
SavedRecord ReadSavedRecord(platform::HANDLE printer);

/// Always leaves a valid record in `env`: the saved one, or defaults, which are then saved. Null `printer_name`: the
/// queue's. `saved` (may be null) receives what is stored now, for ReplacePrinterEnv.
bool LoadPrinterEnv(platform::HANDLE printer, DriverEnv* env, const char16_t* printer_name,
                    const ResourceContext* resources, SavedRecord* saved = nullptr);

/// Saves `env` less its secrets as "HERON NT"; false if it can't be written. Overwrites what another program has saved
/// since `env` was loaded: what changes a loaded record is ReplacePrinterEnv.
bool SavePrinterEnv(platform::HANDLE printer, const DriverEnv& env);

/// Whether what is saved is `env`.
bool IsSaved(platform::HANDLE printer, const DriverEnv& env);

enum class Replaced : uint8_t {
  kDone,
  kOvertaken,  ///< something else is stored by now; nothing was written
  kUnwritten,  ///< it can't be written; GetLastError says why
};
/// Saves `env` if `seen` is still stored, both in one transaction.
Replaced ReplacePrinterEnv(platform::HANDLE printer, const SavedRecord& seen, const DriverEnv& env);

/// "CountryCode"; if it can't be read, the locale's country, which is then stored.
uint32_t ReadStoredCountry(const char16_t* printer_name);
/// Stores the locale's country if it differs from "CountryCode".
void UpdateStoredCountry(platform::HANDLE printer);

/// Makes sure that the queue names the printing-side driver; an unprivileged user changes nothing.
void EnsureRenderDriverValue(platform::HANDLE printer);

/// The work of DrvPrinterEvent: 1, or 0 only if the resources for event 3 can't be opened.
int32_t HandlePrinterEvent(const char16_t* printer_name, int event);

/// Whether the process's file name ends in `program`, which is in capitals; the case of letters doesn't count.
bool ProcessIs(std::u16string_view program);
/// Whether the process is the spreadsheet program whose jobs are handled apart.
bool InExcel();

/// BookMode of a user and queue: the last confirmed choice.
inline constexpr uint32_t kBookModeUnknown = 0, kBookModeFax = 1, kBookModePrint = 2;
uint32_t BookModeStatus(std::u16string_view printer_name);
/// 200, 400 or 600.
uint32_t BookModeResolution(std::u16string_view printer_name);
bool SetBookModeStatus(const DriverEnv& env, uint32_t status);
bool SetBookModeResolution(std::u16string_view printer_name, uint32_t value);

/// What a job of the spreadsheet program leaves for the reset that it performs; 0 is nothing known.
struct BookModeJob {
  uint32_t gfxMode = 0;
  uint32_t pdlType = 0;
  uint32_t enableBppChange = 0;
};
BookModeJob ReadBookModeJob(std::u16string_view printer_name);
/// All three as one. False only if the key doesn't open.
bool WriteBookModeJob(std::u16string_view printer_name, const BookModeJob& job);

/// 1 the stores were seeded by this version (low 14 bits), 2 by another, 3 never. 1 also if the store can't answer
/// now, so that no user's lists are replaced for it.
int CompareDriverVersion(std::u16string_view printer_name, uint16_t version);

}  // namespace heron

// The cover sheets of a fax job: their escapes, their temporary files, and their pages on the job's context.
#pragma once

#include <span>
#include <string_view>

#include "escapes/escape_blocks.h"
#include "forms/cover_layout.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

/// Draws the cover sheets of all recipients and hands each to the printing side. False if an escape fails, the job's
/// blocks can't be had or a temporary file can't be made; a sheet that can't be drawn is passed over. `printer_name` is
/// the queue's.
bool BuildCoverSheets(std::u16string_view printer_name, platform::HDC hdc);

/// How many sheets `recipients` (at least 1) get: one each, or one for all.
uint32_t CoverSheetCount(const CoverFlags& flags, uint32_t recipients);

CoverFlags CoverFlagsOf(const DriverEnv& record);

/// The device fields for a cover page on `paper` of kCoverPapers, made of those of the job's pages, which are in
/// `device`. False for a resolution other than 200, 400 and 600, or a record without a paper size.
bool ChangeDeviceForCover(const DriverEnv& record, uint32_t paper, std::span<uint8_t, DeviceFields::kSize> device);

}  // namespace heron

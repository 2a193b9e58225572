// What becomes of a user's stored lists when another driver version meets them: the old ones go, the defaults come.
//
// Works on the user's registry tree below BuildUserKey(printer name). The settings library ("IP_UIPROFILE"),
// "BookMode", "TempPlistID" and the temporary files of a job ("Tempfile Count", "Tempfile Name") outlive the change,
// wherever they are.
#pragma once

#include <cstdint>
#include <string_view>

#include "settings/driver_env.h"

namespace heron {

/// Brings the user's lists to the version of `env` and its indexes into their range. Printer name and version come from
/// the record's mirror of its public part, which the caller has brought up to date. If the lists were seeded by another
/// version or never, the old ones are deleted (after another version), the defaults written, and `lpOverlay`,
/// `bOverlayIndex` and `watermarkIndex` of the record set to 1, 0 and 0. In any case a `watermarkIndex` that names no
/// stored watermark becomes 0. False if the lists couldn't be renewed: they are then all as they were, and the next
/// call tries again.
bool RefreshUserStores(DriverEnv& env);

/// Deletes the queue's keys with all below them, but for those named above, and for keys of other queues that happen to
/// lie below: a queue's key holds "DriverVersion". A key that can't be deleted is passed over. Never leaves the queue's
/// own key; false, with nothing deleted, for a name that makes none.
bool DeleteOldStores(std::u16string_view printer_name);

/// Makes the queue's key, marks it with `version` and writes the defaults of the five registry stores, as one batch.
/// False, with nothing changed, if that failed or the name makes no key.
bool SeedStores(std::u16string_view printer_name, uint16_t version);

}  // namespace heron

// Process-wide texts by number, cached while anyone needs them; and the driver directory they come from.
//
// Guarded by one lock: any thread may call. A text's address stays valid until the next ReleaseStrings.
#pragma once

#include <cstdint>
#include <string>

#include "platform/api/types.h"

namespace heron {

/// Takes the driver directory of the queue `printer` (data file's path, cut behind its last separator). False, with the
/// old one kept, if the queue has none or one of more than 260 characters.
bool RefreshDriverDirectory(platform::HANDLE printer);
/// The driver directory with its closing separator, empty before the first refresh.
std::u16string DriverDirectory();

/// The resource module, loaded from the driver directory anew for the caller, who frees it; null if it can't be.
platform::HMODULE LoadResourceModule();

/// Counts one more user of the texts. Loads the module if it isn't open; without one every text is empty.
void AcquireStrings();
/// Counts one user less and frees the cache, so that every text's address ends here; the last user unloads the module.
/// More releases than acquisitions do nothing.
void ReleaseStrings();
/// Text `id` (20000 to 64000), or the empty text: for an unknown id, for 21200, for a text of 1000 characters or more,
/// with no module, when memory runs out. Never null.
const char16_t* GetUiString(uint32_t id);
/// Length in characters, read past the cache; 0 for an unknown id or with no module.
uint32_t GetUiStringLength(uint32_t id);

/// Keeps the texts open for a scope.
class StringsInUse {
 public:
  StringsInUse() { AcquireStrings(); }
  ~StringsInUse() { ReleaseStrings(); }
  StringsInUse(const StringsInUse&) = delete;
  StringsInUse& operator=(const StringsInUse&) = delete;
};

}  // namespace heron

// One settings record for a caller, by the one road: defaults, the queue's record, the caller's, device options,
// validation.
#pragma once

#include "catalog/catalog.h"
#include "platform/api/types.h"
#include "settings/driver_env.h"

namespace heron {

/// What a caller asks for and gets. Pointers only look; `resources` is closed by the caller that started the
/// resolution.
struct JobRequest {
  platform::HANDLE hPrinter = nullptr;
  const char16_t* printerName = nullptr;   ///< null: the queue's own name
  const DriverEnv* resolvedEnv = nullptr;  ///< `resultBuffer` after a resolution
  const void* inputEnv = nullptr;          ///< the caller's record or null
  uint32_t mode = 0;                       ///< fMode of the call
  DriverEnv* resultBuffer = nullptr;       ///< receives the resolved record
  ResourceContext* resources = nullptr;    ///< opened by the resolution
};

/// True, with the record in `resultBuffer` and `resources` open. False, with nothing open and `resultBuffer` untouched,
/// for want of printer data or a resource context; an exhausted memory throws. A damaged input never fails: what can't
/// be used is ignored field by field.
bool ResolveJobEnv(JobRequest* request);

}  // namespace heron

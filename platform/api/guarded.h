// What the exported calls have in common: an exhausted memory becomes an error code, and BOOL calls leave theirs in the
// last-error channel. Private to this folder.
#pragma once

#include <new>

#include "platform/api/backend.h"
#include "platform/api/types.h"

namespace heron::platform {

/// Runs `call`, which takes the backend in force and gives an error code.
template <class Call>
DWORD WithBackend(Call&& call) {
  try {
    const Backend* backend = CurrentBackend();
    return backend == nullptr ? kErrorGenFailure : call(*backend);
  } catch (const std::bad_alloc&) {
    return kErrorNotEnoughMemory;
  }
}

/// The result of a BOOL call that ended with `status`.
inline BOOL BoolResult(DWORD status) {
  if (status == kErrorSuccess) return 1;
  SetLastError(status);
  return 0;
}

}  // namespace heron::platform

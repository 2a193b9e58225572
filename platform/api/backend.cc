// The backend in force, and the last-error channel.

#include "platform/api/backend.h"

#include <atomic>
#include <mutex>

#include "platform/api/batch.h"
#include "platform/api/handle_table.h"

namespace heron::platform {
namespace {

thread_local DWORD last_error = kErrorSuccess;

struct Installed {
  std::atomic<const Backend*> current{nullptr};
  std::mutex mutex;                  ///< guards the change of `current`, and what follows
  BackendFactory factory = nullptr;  ///< asked once, at the first call that finds no backend
};

Installed& State() {
  static Installed& state = *new Installed;  // outlives every static destructor that may still call
  return state;
}

}  // namespace

DWORD GetLastError() {
  return last_error;
}

void SetLastError(DWORD code) {
  last_error = code;
}

void InstallBackend(const Backend* backend) {
  Installed& state = State();
  const std::lock_guard guard(state.mutex);
  // Handles hold keys of the backend before; with another one the same numbers mean other keys.
  DropAllHandles();
  ForgetBatches();
  state.current.store(backend, std::memory_order_release);
}

void SetDefaultBackend(BackendFactory factory) {
  Installed& state = State();
  const std::lock_guard guard(state.mutex);
  state.factory = factory;
}

const Backend* CurrentBackend() {
  Installed& state = State();
  const Backend* backend = state.current.load(std::memory_order_acquire);
  if (backend != nullptr) return backend;
  const std::lock_guard guard(state.mutex);
  backend = state.current.load(std::memory_order_relaxed);  // another thread may have been first
  if (backend == nullptr && state.factory != nullptr) {
    backend = state.factory();
    state.factory = nullptr;
    state.current.store(backend, std::memory_order_release);
  }
  return backend;
}

}  // namespace heron::platform

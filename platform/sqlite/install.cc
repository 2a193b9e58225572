// Makes the real backend the default of libheron_platform.so: a program that calls the platform without having chosen a
// backend gets this one. Only the shared library has this file.

#include "platform/api/backend.h"
#include "platform/sqlite/store.h"

namespace heron::store {
namespace {

/// Registers the backend when the library is loaded, and closes its files when the process ends, so that the
/// write-ahead log is merged and removed. The backend itself stays: a later destructor may still call, and only opens
/// the files again.
class DefaultBackend {
 public:
  DefaultBackend() { platform::SetDefaultBackend(Make); }
  ~DefaultBackend() {
    if (made_ != nullptr) made_->CloseFiles();
  }
  DefaultBackend(const DefaultBackend&) = delete;
  DefaultBackend& operator=(const DefaultBackend&) = delete;

 private:
  static const platform::Backend* Make() {
    made_ = new StoreBackend(OptionsFromEnvironment());
    return &made_->Interface();
  }

  static inline StoreBackend* made_ = nullptr;
};

const DefaultBackend default_backend;

}  // namespace
}  // namespace heron::store

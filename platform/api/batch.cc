// Nested batches (batch.h).

#include "platform/api/batch.h"

#include <array>
#include <atomic>

namespace heron::platform {
namespace {

struct OpenBatch {
  uint32_t depth = 0;
  bool withdrawn = false;
  uint64_t backend = 0;  ///< which backend's, counted by ForgetBatches
};

std::atomic<uint64_t> backends{0};
/// Per thread, since a transaction belongs to the thread that began it; one for each tree.
thread_local std::array<OpenBatch, 2> open_batches;

OpenBatch& Of(Hive hive) {
  OpenBatch& batch = open_batches[static_cast<size_t>(hive)];
  const uint64_t backend = backends.load(std::memory_order_relaxed);
  if (batch.backend != backend) batch = {.depth = 0, .withdrawn = false, .backend = backend};
  return batch;
}

}  // namespace

DWORD BeginBatch(TreeStore& trees, Hive hive) {
  OpenBatch& batch = Of(hive);
  if (batch.depth == 0) {
    const DWORD status = trees.Begin(hive);
    if (status != kErrorSuccess) return status;
    batch.withdrawn = false;
  }
  ++batch.depth;
  return kErrorSuccess;
}

DWORD EndBatch(TreeStore& trees, Hive hive, bool keep) {
  OpenBatch& batch = Of(hive);
  if (batch.depth == 0) return kErrorInvalidParameter;
  if (!keep) batch.withdrawn = true;
  // Only the outermost end decides: a withdrawn inner batch withdraws everything around it.
  if (--batch.depth != 0) return kErrorSuccess;
  const DWORD status = trees.End(hive, !batch.withdrawn);
  return status == kErrorSuccess && keep && batch.withdrawn ? kErrorOperationAborted : status;
}

void ForgetBatches() {
  backends.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace heron::platform

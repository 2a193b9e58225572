// Batches of changes to one tree. They nest by counting, per thread; the store sees the outermost only. The registry's
// and the printer data's batches are the same thing over different trees. Private to this folder.
#pragma once

#include "platform/api/backend.h"

namespace heron::platform {

/// Begins a batch of the calling thread, or goes one deeper.
DWORD BeginBatch(TreeStore& trees, Hive hive);
/// Ends it. kErrorInvalidParameter if the thread has none; kErrorOperationAborted if `keep` is asked of an outermost
/// one that an inner one withdrew. The tree is as before unless the outermost gives kErrorSuccess.
DWORD EndBatch(TreeStore& trees, Hive hive, bool keep);
/// Every thread's open batches are void from now on: the backend is going.
void ForgetBatches();

/// A batch that is withdrawn unless Keep is reached.
class Batch {
 public:
  Batch(TreeStore& trees, Hive hive) : trees_(trees), hive_(hive), status_(BeginBatch(trees, hive)) {
    open_ = status_ == kErrorSuccess;
  }
  ~Batch() {
    if (open_) EndBatch(trees_, hive_, false);
  }
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  DWORD Status() const { return status_; }
  DWORD Keep() {
    open_ = false;
    return EndBatch(trees_, hive_, true);
  }

 private:
  TreeStore& trees_;
  Hive hive_;
  DWORD status_;
  bool open_;
};

}  // namespace heron::platform

// Lets the allocations of the calling thread fail, for tests of what happens when memory runs out; and counts its
// blocks.
#pragma once

#include <cstdint>

namespace heron::test {

/// While it lives, the calling thread gets `left` more blocks and then none.
class FailingNew {
 public:
  explicit FailingNew(int64_t left);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  /// Whether a block was asked for and refused.
  bool Refused() const;
};

/// Blocks that the calling thread has taken and not given back.
int64_t LiveBlocks();

}  // namespace heron::test

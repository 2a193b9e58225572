// Lets the allocations of the calling thread fail, for tests of what happens when memory runs out.
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
};

}  // namespace heron::test

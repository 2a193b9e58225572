// Every form of `new` and `delete` that the program uses comes here; a file of its own, so that none is inlined into a
// caller.
#include "failing_new.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int64_t blocks_left = -1;  ///< below 0: no limit
thread_local bool refused = false;
thread_local int64_t live_blocks = 0;

void* Allocate(size_t size) noexcept {
  if (blocks_left == 0) {
    refused = true;
    return nullptr;
  }
  if (blocks_left > 0) --blocks_left;
  void* block = std::malloc(size == 0 ? 1 : size);
  live_blocks += block != nullptr;
  return block;
}

void Release(void* block) noexcept {
  live_blocks -= block != nullptr;
  std::free(block);
}

}  // namespace

namespace heron::test {
FailingNew::FailingNew(int64_t left) {
  refused = false;
  blocks_left = left;
}
FailingNew::~FailingNew() {
  blocks_left = -1;
}
bool FailingNew::Refused() const {
  return refused;
}
int64_t LiveBlocks() {
  return live_blocks;
}
}  // namespace heron::test

void* operator new(size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](size_t size) {
  return ::operator new(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  Release(block);
}
void operator delete(void* block, size_t) noexcept {
  Release(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  Release(block);
}
void operator delete[](void* block) noexcept {
  Release(block);
}
void operator delete[](void* block, size_t) noexcept {
  Release(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  Release(block);
}

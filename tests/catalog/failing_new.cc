// Every form of `new` and `delete` that the program uses comes here; a file of its own, so that none is inlined into a
// caller.
#include "catalog/failing_new.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int64_t blocks_left = -1;  ///< below 0: no limit

void* Allocate(size_t size) noexcept {
  if (blocks_left == 0) return nullptr;
  if (blocks_left > 0) --blocks_left;
  return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

namespace heron::test {
FailingNew::FailingNew(int64_t left) {
  blocks_left = left;
}
FailingNew::~FailingNew() {
  blocks_left = -1;
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
  std::free(block);
}
void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block, size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}

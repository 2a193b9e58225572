// A lock that its thread may take again, and that knows its owner; for backends, whose transactions hold it between
// calls.
//
// Unlike std::recursive_mutex it can be released in a forked child, where the owner has another number for the system.
#pragma once

#include <atomic>
#include <mutex>
#include <thread>

namespace heron::platform {

class OwnerLock {
 public:
  void lock() {
    if (!HeldHere()) {
      mutex_.lock();
      owner_.store(std::this_thread::get_id(), std::memory_order_relaxed);
    }
    ++depth_;
  }
  bool try_lock() {
    if (!HeldHere()) {
      if (!mutex_.try_lock()) return false;
      owner_.store(std::this_thread::get_id(), std::memory_order_relaxed);
    }
    ++depth_;
    return true;
  }
  void unlock() {
    if (--depth_ != 0) return;
    owner_.store(std::thread::id(), std::memory_order_relaxed);
    mutex_.unlock();
  }
  /// Whether the calling thread holds the lock. Only this thread can have stored its own id, so no ordering is needed.
  bool HeldHere() const { return owner_.load(std::memory_order_relaxed) == std::this_thread::get_id(); }

 private:
  std::mutex mutex_;
  std::atomic<std::thread::id> owner_{};
  unsigned depth_ = 0;  ///< guarded by mutex_
};

}  // namespace heron::platform

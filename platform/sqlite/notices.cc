// The sentences that wait for the host. Kept for the whole process, since they may arise before the host asks.

#include "platform/sqlite/notices.h"

#include <mutex>
#include <utility>

#include "platform/sqlite/store.h"

namespace heron::store {
namespace {

constexpr size_t kMostNotices = 64;  ///< a host that never asks doesn't pile them up

struct Notices {
  std::mutex mutex;
  std::vector<std::string> waiting;
  StoreFailure failure;
};

Notices& All() {
  static Notices& notices = *new Notices;
  return notices;
}

}  // namespace

void AddNotice(std::string sentence) {
  Notices& notices = All();
  const std::lock_guard guard(notices.mutex);
  if (notices.waiting.size() < kMostNotices) notices.waiting.push_back(std::move(sentence));
}

void NoteFailure(const std::filesystem::path& file, platform::DWORD status) {
  Notices& notices = All();
  const std::lock_guard guard(notices.mutex);
  notices.failure = {file, status};
}

StoreFailure LastStoreFailure() {
  Notices& notices = All();
  const std::lock_guard guard(notices.mutex);
  return notices.failure;
}

std::vector<std::string> TakeNotices() {
  Notices& notices = All();
  const std::lock_guard guard(notices.mutex);
  return std::exchange(notices.waiting, {});
}

}  // namespace heron::store

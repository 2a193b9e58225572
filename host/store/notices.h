// The sentences that wait for TakeNotices (store.h).
#pragma once

#include <string>

namespace heron::store {

void AddNotice(std::string sentence);

}  // namespace heron::store

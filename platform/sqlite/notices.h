// Notices for the user, collected until TakeNotices (store.h) returns them.
#pragma once

#include <filesystem>
#include <string>

#include "platform/api/types.h"

namespace heron::store {

void AddNotice(std::string sentence);

/// Remembers what LastStoreFailure returns (store.h).
void NoteFailure(const std::filesystem::path& file, platform::DWORD status);

}  // namespace heron::store

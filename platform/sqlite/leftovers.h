// Temporary files and folders, made beside their final path and renamed when complete. Their maker keeps them locked,
// so that a later run can distinguish them from those of killed programs.
#pragma once

#include <filesystem>
#include <string>

#include "platform/api/types.h"

namespace heron::store {

/// Makes an empty file for its owner alone in `folder`, open and locked as `*fd`, which the caller closes. 0 or the
/// errno of the failure.
int MakeUnfinishedFile(const std::filesystem::path& folder, std::string* path, int* fd);

/// A folder that is being made; unlocked when this ends, not removed.
class HERON_PLATFORM_API UnfinishedFolder {
 public:
  UnfinishedFolder() = default;
  ~UnfinishedFolder();
  UnfinishedFolder(const UnfinishedFolder&) = delete;
  UnfinishedFolder& operator=(const UnfinishedFolder&) = delete;

  /// Makes the folder in `parent` for its owner alone, after removing what killed programs left there. 0 or the errno
  /// of the failure.
  int Make(const std::filesystem::path& parent);
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
  int fd_ = -1;
};

/// Removes what killed runs of this user left unfinished in `folder`. What is being made now, and what another user
/// left, stays.
void SweepUnfinished(const std::filesystem::path& folder);
/// The same, but only once a process and folder.
void SweepUnfinishedOnce(const std::filesystem::path& folder);

}  // namespace heron::store

// The folder of a job: made beside its final path, renamed when complete, removed otherwise.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

#include "platform/sqlite/leftovers.h"

namespace heron::spool {

class JobFolder {
 public:
  /// `place` must not exist or be an empty folder, and its parent must exist; otherwise a Failure is thrown. Readable
  /// by its owner only.
  explicit JobFolder(const std::string& place);
  ~JobFolder();
  JobFolder(const JobFolder&) = delete;
  JobFolder& operator=(const JobFolder&) = delete;

  /// Path of a file of this name until Keep.
  std::string Path(const std::string& name) const { return (making_ / name).string(); }
  /// Writes a whole file into the folder; throws a Failure.
  void Write(const std::string& name, std::span<const uint8_t> bytes) const;
  void Remove(const std::string& name) const;
  /// Puts the folder into its place; throws a Failure.
  void Keep();

 private:
  std::filesystem::path place_;
  std::filesystem::path making_;  ///< empty once kept
  store::UnfinishedFolder unfinished_;
};

}  // namespace heron::spool

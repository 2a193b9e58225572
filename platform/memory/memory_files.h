// The files of the backend in memory (memory_backend.h). Private to it and to the tests that damage a file.
#pragma once

#include <map>
#include <mutex>
#include <set>
#include <vector>

#include "platform/api/backend.h"

namespace heron::platform {

class MemoryFiles : public FileStore {
 public:
  std::u16string TempFolder() override;
  std::u16string SystemFolder() override;
  std::u16string DocumentsFolder() override;
  uint32_t NumberHint() override { return 0; }
  DWORD CreateNew(std::u16string_view path) override;
  bool CanMakeFiles(std::u16string_view folder) override;
  DWORD Open(std::u16string_view path, bool write, bool create, std::shared_ptr<OpenFile>* file) override;
  DWORD Delete(std::u16string_view path) override;
  DWORD Attributes(std::u16string_view path, DWORD* attributes) override;
  DWORD Replace(std::u16string_view path, std::span<const uint8_t> data) override;

  /// Tests read and change these between calls.
  std::map<std::u16string, std::shared_ptr<std::vector<uint8_t>>> content;
  /// When a file was last written; the first moment of 2026 for others.
  std::map<std::u16string, SYSTEMTIME> written;
  bool writable = true;                     ///< false: nothing can be made, changed or deleted
  std::set<std::u16string> protectedPaths;  ///< the same for these files, and for files directly in these folders
  std::set<std::u16string> awayFolders;     ///< nothing in these can be found now

 private:
  bool MayChange(std::u16string_view path) const;
  bool IsAway(std::u16string_view path) const;

  std::mutex mutex_;
};

}  // namespace heron::platform

// Files through POSIX calls. Temporary files are in a folder of the home that only its user can enter.
//
// A spool file that this process made stays locked until it is deleted or the process ends. Another process can't
// delete it: the clean-up of one job never takes the files of another that still runs.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>

#include "platform/api/backend.h"

namespace heron::store {

/// The folder of the machine's home that holds the driver's files.
inline constexpr const char* kDriverFolder = "driver";

class PosixFiles final : public platform::FileStore {
 public:
  PosixFiles(std::filesystem::path home, std::filesystem::path machine_home, std::filesystem::path documents)
      : home_(std::move(home)), machine_home_(std::move(machine_home)), documents_(std::move(documents)) {}
  ~PosixFiles() override;

  std::u16string TempFolder() override;
  std::u16string SystemFolder() override;
  std::u16string DocumentsFolder() override;
  std::u16string DriverFolder() override;
  uint32_t NumberHint() override;
  platform::DWORD CreateNew(std::u16string_view path) override;
  bool CanMakeFiles(std::u16string_view folder) override;
  platform::DWORD Open(std::u16string_view path, bool write, bool create,
                       std::shared_ptr<platform::OpenFile>* file) override;
  platform::DWORD Delete(std::u16string_view path) override;
  platform::DWORD Attributes(std::u16string_view path, platform::DWORD* attributes) override;
  platform::DWORD Replace(std::u16string_view path, std::span<const uint8_t> data) override;

 private:
  std::filesystem::path PrivateFolder(const char* name);
  bool IsSpoolFile(const std::string& path);
  platform::DWORD Release(const std::string& path);

  const std::filesystem::path home_;
  const std::filesystem::path machine_home_;
  const std::filesystem::path documents_;
  std::mutex mutex_;
  std::map<std::string, int> held_;  ///< open and locked spool files of this process, by path
};

}  // namespace heron::store

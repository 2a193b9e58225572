// Files of the host: temporary ones lie in a folder of the home that only their user can enter.
#pragma once

#include <filesystem>

#include "platform/backend.h"

namespace heron::store {

class PosixFiles final : public platform::FileStore {
 public:
  explicit PosixFiles(std::filesystem::path home) : home_(std::move(home)) {}

  std::u16string TempFolder() override;
  std::u16string SystemFolder() override;
  uint32_t NumberHint() override;
  platform::DWORD CreateNew(std::u16string_view path) override;
  platform::DWORD Open(std::u16string_view path, bool write, bool create,
                       std::shared_ptr<platform::OpenFile>* file) override;
  platform::DWORD Delete(std::u16string_view path) override;
  platform::DWORD Attributes(std::u16string_view path, platform::DWORD* attributes) override;
  platform::DWORD Replace(std::u16string_view path, std::span<const uint8_t> data) override;

 private:
  std::filesystem::path PrivateFolder(const char* name);

  const std::filesystem::path home_;
};

}  // namespace heron::store

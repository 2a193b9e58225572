// Loaded modules with their texts (platform/api/module_texts.h) and data (platform/api/module_data.h), through dlopen.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/api/backend.h"

namespace heron::store {

class DlModules final : public platform::ModuleLoader {
 public:
  DlModules();
  ~DlModules() override;

  platform::HMODULE Load(std::u16string_view path) override;
  bool Free(platform::HMODULE module) override;
  void* Function(platform::HMODULE module, const char* name) override;
  platform::HMODULE Find(std::u16string_view path) override;
  std::u16string_view Text(platform::HMODULE module, uint32_t id) override;
  std::span<const uint8_t> Data(platform::HMODULE module, uint32_t kind, uint32_t id) override;

 private:
  struct Module;
  Module* FindLoaded(platform::HMODULE module);

  std::mutex mutex_;
  std::vector<std::unique_ptr<Module>> modules_;  ///< few; never shrinks
};

}  // namespace heron::store

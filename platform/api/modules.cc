// Modules and their texts over the backend's loader.

#include "platform/api/modules.h"

#include <algorithm>
#include <string_view>

#include "platform/api/guarded.h"

namespace heron::platform {

HMODULE LoadLibraryW(const char16_t* path) {
  HMODULE module = nullptr;
  const DWORD status = WithBackend([&](const Backend& backend) {
    if (path == nullptr) return kErrorInvalidParameter;
    module = backend.modules->Load(path);
    return module == nullptr ? kErrorModNotFound : kErrorSuccess;
  });
  if (status != kErrorSuccess) SetLastError(status);
  return module;
}

BOOL FreeLibrary(HMODULE module) {
  return BoolResult(WithBackend([&](const Backend& backend) {
    return module != nullptr && backend.modules->Free(module) ? kErrorSuccess : kErrorInvalidHandle;
  }));
}

HMODULE GetModuleHandleW(const char16_t* path) {
  HMODULE module = nullptr;
  BoolResult(WithBackend([&](const Backend& backend) {
    if (path == nullptr) return kErrorInvalidParameter;
    module = backend.modules->Find(path);
    return module == nullptr ? kErrorModNotFound : kErrorSuccess;
  }));
  return module;
}

void* GetProcAddress(HMODULE module, const char* name) {
  void* function = nullptr;
  BoolResult(WithBackend([&](const Backend& backend) {
    if (module == nullptr || name == nullptr) return kErrorInvalidHandle;
    function = backend.modules->Function(module, name);
    return function == nullptr ? kErrorProcNotFound : kErrorSuccess;
  }));
  return function;
}

int LoadStringW(HMODULE module, uint32_t id, char16_t* buffer, int room) {
  if (buffer == nullptr || room <= 0) return 0;
  buffer[0] = u'\0';
  size_t copied = 0;
  const DWORD status = WithBackend([&](const Backend& backend) {
    if (module == nullptr) return kErrorInvalidHandle;
    const std::u16string_view text = backend.modules->Text(module, id);
    copied = std::min(text.size(), static_cast<size_t>(room) - 1);
    std::copy_n(text.data(), copied, buffer);
    buffer[copied] = u'\0';
    return kErrorSuccess;
  });
  if (status != kErrorSuccess) SetLastError(status);
  return static_cast<int>(copied);
}

std::span<const uint8_t> FindModuleData(HMODULE module, uint32_t kind, uint32_t id) {
  std::span<const uint8_t> data;
  const DWORD status = WithBackend([&](const Backend& backend) {
    if (module == nullptr) return kErrorInvalidHandle;
    data = backend.modules->Data(module, kind, id);
    return kErrorSuccess;
  });
  if (status != kErrorSuccess) SetLastError(status);
  return data;
}

}  // namespace heron::platform

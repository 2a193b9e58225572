// Process, user and locale over the backend.

#include "platform/api/process.h"

#include <algorithm>
#include <string>

#include "platform/api/guarded.h"

namespace heron::platform {

DWORD GetModuleFileNameW(HMODULE module, char16_t* buffer, DWORD room) {
  DWORD copied = 0;
  const DWORD status = WithBackend([&](const Backend& backend) {
    if (module != nullptr) return kErrorInvalidHandle;  // only the program's own name is known
    if (buffer == nullptr || room == 0) return kErrorInvalidParameter;
    const std::u16string name = backend.process->FileName();
    if (name.empty()) return kErrorGenFailure;
    // As in the Win32 API, a name that is too long is cut and still terminated.
    copied = static_cast<DWORD>(std::min<size_t>(name.size(), room - 1));
    std::copy_n(name.data(), copied, buffer);
    buffer[copied] = u'\0';
    return copied < name.size() ? kErrorInsufficientBuffer : kErrorSuccess;
  });
  if (status != kErrorSuccess) SetLastError(status);
  return copied;
}

int GetLocaleInfoW(DWORD, DWORD item, char16_t* buffer, int room) {
  int written = 0;
  const DWORD status = WithBackend([&](const Backend& backend) {
    if (item != LOCALE_ICOUNTRY || room < 0 || (buffer == nullptr && room > 0)) return kErrorInvalidParameter;
    const std::u16string country = backend.process->LocaleCountry();
    if (country.empty()) return kErrorFileNotFound;  // the driver then takes its own default
    if (country.size() >= static_cast<size_t>(room)) return kErrorInsufficientBuffer;
    std::copy_n(country.c_str(), country.size() + 1, buffer);
    written = static_cast<int>(country.size()) + 1;
    return kErrorSuccess;
  });
  if (status != kErrorSuccess) SetLastError(status);
  return written;
}

BOOL GetUserNameW(char16_t* buffer, DWORD* length) {
  return BoolResult(WithBackend([&](const Backend& backend) {
    if (length == nullptr || (buffer == nullptr && *length != 0)) return kErrorInvalidParameter;
    const std::u16string name = backend.process->UserName();
    if (name.empty()) return kErrorGenFailure;
    const DWORD room = *length;
    *length = static_cast<DWORD>(name.size()) + 1;
    if (name.size() >= room) return kErrorInsufficientBuffer;
    std::copy_n(name.c_str(), name.size() + 1, buffer);
    return kErrorSuccess;
  }));
}

BOOL GetLocalTime(SYSTEMTIME* time) {
  return BoolResult(WithBackend([&](const Backend& backend) {
    if (time == nullptr) return kErrorInvalidParameter;
    return backend.process->LocalTime(time) ? kErrorSuccess : kErrorGenFailure;
  }));
}

DWORD GetAdapterAddress(DWORD index, uint8_t* address) {
  return WithBackend([&](const Backend& backend) {
    if (address == nullptr) return kErrorInvalidParameter;
    const std::vector<AdapterAddress> adapters = backend.process->Adapters();
    if (index >= adapters.size()) return kErrorNoMoreItems;
    std::ranges::copy(adapters[index], address);
    return kErrorSuccess;
  });
}

}  // namespace heron::platform

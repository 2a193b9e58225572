// What the modules of another operating system stand for on this one (system_modules.h).

#include "platform/sqlite/system_modules.h"

#include <sys/socket.h>
#include <unistd.h>

namespace heron::store {
namespace {

bool CanOpenSocket(int family) {
  const int descriptor = socket(family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  return descriptor >= 0 && close(descriptor) == 0;
}

}  // namespace

bool HasSystemModule(std::u16string_view name) {
  if (name == u"KERNEL32.DLL") return true;
  if (name != u"WS2_32.DLL" && name != u"WSOCK32.DLL") return false;
  return CanOpenSocket(AF_INET) || CanOpenSocket(AF_INET6);
}

}  // namespace heron::store

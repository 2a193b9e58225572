// The modules of the operating system that the driver looks for by bare names, to see what the system offers.
#pragma once

#include <string_view>

namespace heron::store {

/// True for the system's core module, and for the network's modules if this process can use a network at all. The
/// machine's own interface counts: a device may be asked on it.
bool HasSystemModule(std::u16string_view name);

}  // namespace heron::store

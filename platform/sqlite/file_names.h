// File names of users and queues.
#pragma once

#include <string>

namespace heron::store {

/// `name` as one part of a path, whatever it contains: control characters, separators, percent signs and a leading dot
/// become %XX, and a long name is cut to 220 bytes. Different names stay different.
std::string FileNameOf(const std::string& name);

}  // namespace heron::store

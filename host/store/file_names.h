// Names of files that stand for a user or a queue.
#pragma once

#include <string>

namespace heron::store {

/// `name` as one part of a path, whatever stands in it: control characters, separators, percent signs and a leading dot
/// become %XX. Different names stay different.
std::string FileNameOf(const std::string& name);

}  // namespace heron::store

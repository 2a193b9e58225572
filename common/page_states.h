// Names of the printing half's page states, as --path of `heron print` and `heron-spool` takes them.
#pragma once

#include <map>
#include <string>

namespace heron::cli {

/// By the size of the state in bytes.
inline const std::map<std::string, int> kPageStates = {{"compact", 488}, {"full", 556}};

}  // namespace heron::cli

// Lists of names as one text.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace heron::test {

/// The words of a text, blanks between them.
inline std::vector<std::string> Words(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), {}};
}

}  // namespace heron::test

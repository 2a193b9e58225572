// A stack of pictures: what the previews of a sheet, of the machine and of the status panel are made of.
//
// Pictures are named by their numbers in the resource module. Places are pixels at scale 1, from the upper left corner
// of the stack's own frame; a painter moves and scales a stack as a whole.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace heron::preview {

/// How a layer joins what lies below it.
enum class Mode : uint8_t { kCopy, kAnd, kXor };

/// "copy", "and" or "xor".
std::string_view NameOf(Mode mode);

struct Layer {
  uint16_t picture;
  Mode mode;
  int16_t x, y;
  int16_t width, height;
  bool isMask;  ///< cuts out the place of the layer above; pictures with transparency of their own need none

  bool operator==(const Layer&) const = default;
};
using Stack = std::vector<Layer>;

/// A place at scale 1.
struct Box {
  int16_t x, y, width, height;
};

}  // namespace heron::preview

#include "store/file_names.h"

namespace heron::store {

std::string FileNameOf(const std::string& text) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string name;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = byte > ' ' && byte != 0x7F && c != '/' && c != '%' && !(c == '.' && name.empty());
    if (plain)
      name += c;
    else
      name += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return name;
}

}  // namespace heron::store

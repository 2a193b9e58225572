// Makes file names out of user and queue names (file_names.h).

#include "platform/sqlite/file_names.h"

#include <cstdint>

namespace heron::store {
namespace {

constexpr size_t kLongestName = 220;  ///< leaves room for what is added to it

}  // namespace

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
  if (name.size() <= kLongestName) return name;
  // File systems take 255 bytes; names that are cut differ by their number.
  uint64_t hash = 14695981039346656037u;  // FNV-1a
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
  name.resize(kLongestName - 17);
  name += '~';
  for (int shift = 60; shift >= 0; shift -= 4) name += kDigits[hash >> shift & 15];
  return name;
}

}  // namespace heron::store

// Fuzzes the import of phone books: any bytes give entries that fit, and what is exported reads back the same.
#include <cstdlib>

#include "common/phone_book.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace heron::phone_book;
  size_t skipped = 0;
  const std::vector<Entry> entries = Parse({reinterpret_cast<const char*>(data), size}, &skipped);
  for (const Entry& entry : entries)
    if (!IsNumber(entry.number) || entry.name.size() > kLongestText) std::abort();
  const std::vector<Entry> again = Parse(ToCsv(entries), &skipped);
  if (again.size() != entries.size() || skipped != 0) std::abort();
  return 0;
}

// Fuzzes the recipients' exchange form: any block gives at most 100 recipients whose texts end inside their fields.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/memory/memory_backend.h"
#include "uistate/recipients.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static heron::platform::MemoryBackend backend;
  auto block = std::make_unique<heron::AddressBlock>();
  std::memcpy(block.get(), data, std::min(size, sizeof *block));
  for (const heron::AddressRow& row : block->rows) {
    heron::RecipientRow wide;
    heron::AddressRow back;
    heron::DecodeRow(row, &wide);
    heron::EncodeRow(wide, &back);
    if (back.ecm != row.ecm || back.spare != row.spare) std::abort();
  }
  return 0;
}

// Fuzzes the readers of overlay forms, which strangers may send: the driver's description and the printing half's page.
// Both must agree on which forms suit a job, as far as both look.
#include <cstdlib>
#include <memory>

#include "forms/form_check.h"
#include "platform/memory/memory_backend.h"
#include "renderdriver/form_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static heron::platform::MemoryBackend backend;
  backend.files.content[u"/form.vxf"] = std::make_shared<std::vector<uint8_t>>(data, data + size);
  heron::DriverEnv record{};
  heron::Set<"lpPDLType">(record, 2);
  heron::Set<"lpColorMode">(record, 2);
  heron::FormCheckTable table;
  heron::FormExpectFromJob(table, record);
  if (heron::FormReadDescription(table, u"/form.vxf")) {
    for (const std::u16string& value : table.file) {
      if (value.size() > 32) std::abort();
    }
    heron::FormCompare(table);
  }
  const std::span<const uint8_t> form(data, size);
  heron::renderdriver::FormSuits(form, record);
  const auto page = heron::renderdriver::PageOfForm(form);
  if (page && page->size() >= size) std::abort();
  return 0;
}

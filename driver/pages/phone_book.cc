#include "pages/phone_book.h"

#include <algorithm>
#include <memory>

#include "platform/api/modules.h"

namespace heron::pages {
namespace {

using namespace platform;
using PhoneBookProc = intptr_t (*)(AddressBlock*);

class LoadedLibrary {
 public:
  explicit LoadedLibrary(const std::u16string& path) : module_(LoadLibraryW(path.c_str())) {}
  ~LoadedLibrary() {
    if (module_ != nullptr) FreeLibrary(module_);
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  PhoneBookProc Entry() const {
    return module_ == nullptr ? nullptr : reinterpret_cast<PhoneBookProc>(GetProcAddress(module_, "QX_PhoneBookProc"));
  }

 private:
  HMODULE module_;
};

}  // namespace

bool CallPhoneBook(const std::u16string& path, RecipientTable* table) {
  const LoadedLibrary library(path);
  const PhoneBookProc entry = library.Entry();
  if (entry == nullptr) return false;
  const auto block = std::make_unique<AddressBlock>();
  block->count = table->count;
  for (uint32_t i = 0; i < table->count; ++i) EncodeRow(table->rows[i], &block->rows[i]);
  entry(block.get());
  if (block->count > kRecipientCount) return false;
  *table = {};
  table->count = block->count;
  for (uint32_t i = 0; i < table->count; ++i) DecodeRow(block->rows[i], &table->rows[i]);
  return true;
}

}  // namespace heron::pages

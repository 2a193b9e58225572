// The conversion between raw values. The rules are at the declaration.
//
// Sizes and codes come from two tables that needn't agree, so both are checked: the sizes against each other first,
// then each numeric end against the width of its code.
#include "uistate/transfer_value.h"

#include <cstring>

namespace heron {
namespace {

/// Bytes of a numeric code; 0 for a code that isn't numeric.
uint32_t NumericWidth(uint16_t type) {
  switch (type) {
    case kTypeU8:
      return 1;
    case kTypeU16:
    case kTypeI16:
      return 2;
    case kTypeI32:
    case kTypeU32:
    case kTypeI32Alone:
      return 4;
    default:
      return 0;
  }
}

/// Whether a value of code `from` can go to a place of code `to`.
bool Pairs(uint16_t to, uint16_t from) {
  if (from == kTypeBytes || from == kTypeText) return to == from || to == kTypeAny;
  return NumericWidth(from) != 0 && (NumericWidth(to) != 0 || to == kTypeAny);
}

/// The numeric value in 32 bits. 32 bit codes keep their bits whatever their sign.
uint32_t Widen(const TransferSource& source) {
  uint32_t value = 0;
  std::memcpy(&value, source.data, NumericWidth(source.type));
  if (source.type == kTypeI16 && (value & 0x8000) != 0) value |= 0xFFFF0000;
  return value;
}

}  // namespace

int32_t TransferValue(TransferDirection direction, const TransferTarget& target, const TransferSource& source,
                      uint32_t* size_out) {
  const bool write = direction == TransferDirection::kWrite;
  const int32_t too_large = write ? kTransferTooLarge : kTransferMoreData;
  if (size_out != nullptr) *size_out = source.size;
  if (!write && target.data == nullptr) return kTransferDone;
  if (!Pairs(target.type, source.type)) return kTransferUnpaired;
  if (target.data == nullptr || source.data == nullptr || source.size > target.size) return too_large;

  // The same form on both ends: the bytes as they are.
  if (target.type == kTypeAny || target.type == source.type) {
    std::memcpy(target.data, source.data, source.size);
    if (write) std::memset(static_cast<uint8_t*>(target.data) + source.size, 0, target.size - source.size);
    return kTransferDone;
  }
  const uint32_t width = NumericWidth(target.type);
  if (width > target.size || NumericWidth(source.type) > source.size) return too_large;
  const uint32_t value = Widen(source);
  std::memcpy(target.data, &value, width);
  return kTransferDone;
}

}  // namespace heron

// Raw values between places of different types: how the parameter table and the list stores are read and written.
#pragma once

#include <cstdint>

namespace heron {

/// How a raw value is held. The numbers are in tables and are shared with the printing side.
enum TypeCode : uint16_t {
  kTypeAny = 0,  ///< a destination that takes the source as it is
  kTypeU8 = 1,
  kTypeU16 = 2,
  kTypeI16 = 4,
  kTypeI32 = 8,
  kTypeU32 = 16,
  kTypeI32Alone = 32,  ///< an i32 whose sign is passed over when it is read from a settings file
  kTypeBytes = 64,
  kTypeText = 128,
};

enum class TransferDirection : uint8_t {
  kRead,   ///< `source` is our slot, `target` a caller's buffer
  kWrite,  ///< `source` is a caller's value, `target` our slot
};

inline constexpr int32_t kTransferDone = 0;
inline constexpr int32_t kTransferTooLarge = -1;   ///< write: the source doesn't fit the slot
inline constexpr int32_t kTransferUnpaired = -2;   ///< a type code above 128, or two that don't convert
inline constexpr int32_t kTransferMoreData = 234;  ///< read: the source is larger than the buffer

/// One end of a transfer.
struct TransferSource {
  const void* data;
  uint32_t size;  ///< bytes
  uint16_t type;
};
struct TransferTarget {
  void* data;
  uint32_t size;
  uint16_t type;
};

/// Moves a value, converting between the numeric codes: narrowing takes the low bytes, widening is with sign from
/// kTypeI16 only. Bytes and text pair with themselves. Equal codes and a target of kTypeAny copy the bytes as they are;
/// a write then zeroes the rest of the slot. `*size_out` (may be null) receives the source's size in any case; a read
/// with a null `target.data` does no more than that. Unless the result is kTransferDone the target is untouched. A
/// numeric end that is smaller than its code counts as too large an other end; nothing outside either end is touched.
int32_t TransferValue(TransferDirection direction, const TransferTarget& target, const TransferSource& source,
                      uint32_t* size_out);

}  // namespace heron

// Copies of a record's file of fax recipients, for programs that know the driver by its exports alone.
//
// The driver rewrites and takes the file that a record names. A job and an open sheet get a copy, so that the file of
// the record that the user keeps stays what it was when that record was read.
#pragma once

#include <cstdint>
#include <span>

#include "common/record_file.h"

namespace heron::cli {

/// A new file with these bytes; 0 if it can't be written.
uint32_t MakeAddressCopy(std::span<const uint8_t> bytes);
void DeleteAddressCopy(uint32_t id);

/// The file of an open sheet: `record` names a copy of its file afterwards. The copy goes again at the end, unless the
/// sheet's record was stored.
class SheetRecipients {
 public:
  explicit SheetRecipients(Bytes& record);
  ~SheetRecipients() { DeleteAddressCopy(id_); }
  SheetRecipients(const SheetRecipients&) = delete;
  SheetRecipients& operator=(const SheetRecipients&) = delete;

  /// `stored` is the user's record now.
  void Kept(const Bytes& stored);

 private:
  uint32_t named_ = 0;  ///< the file of before
  uint32_t id_ = 0;
};

}  // namespace heron::cli

// Owners of the platform's handles and batches: what is opened here is closed exactly once, also when memory runs out.
//
// Thin wrappers over spooler.h and registry.h; they add no behaviour of their own. An empty owner means that opening
// failed, with the reason where the wrapped call leaves it.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/api/files.h"
#include "platform/api/registry.h"
#include "platform/api/spooler.h"

namespace heron::platform {

struct CloseKeyHandle {
  using pointer = HKEY;
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using UniqueKey = std::unique_ptr<void, CloseKeyHandle>;

/// Opens the key `path` below `parent`; empty if it doesn't exist or may not be opened so. `status` may be null.
inline UniqueKey OpenKey(HKEY parent, const char16_t* path, DWORD access, DWORD* status = nullptr) {
  HKEY key = nullptr;
  const DWORD result = RegOpenKeyExW(parent, path, 0, access, &key);
  if (status != nullptr) *status = result;
  return UniqueKey(result == kErrorSuccess ? key : nullptr);
}

/// Opens the key `path` below `parent` for everything, creating what is missing. `created` may be null.
inline UniqueKey CreateKey(HKEY parent, const char16_t* path, bool* created = nullptr) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  const DWORD status = RegCreateKeyExW(parent, path, KEY_ALL_ACCESS, &key, &disposition);
  if (created != nullptr) *created = disposition == REG_CREATED_NEW_KEY;
  return UniqueKey(status == kErrorSuccess ? key : nullptr);
}

/// Whether there is a regular file that can be read.
inline bool CanOpenFile(const char16_t* path) {
  const HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  return file != INVALID_HANDLE_VALUE && CloseHandle(file) != 0;
}

struct ClosePrinterHandle {
  using pointer = HANDLE;
  void operator()(HANDLE printer) const { ClosePrinter(printer); }
};
using UniquePrinter = std::unique_ptr<void, ClosePrinterHandle>;

/// Opens the queue `name`; empty for a null name, an unknown queue, or access that isn't granted.
inline UniquePrinter OpenPrinterFor(const char16_t* name, DWORD access) {
  const PRINTER_DEFAULTSW defaults{nullptr, nullptr, access};
  HANDLE printer = nullptr;
  const bool opened = name != nullptr && OpenPrinterW(name, &printer, &defaults) != 0;
  return UniquePrinter(opened ? printer : nullptr);
}

/// What GetPrinterW returns of a queue at one level, with its texts and record behind it; the usual size takes one
/// call.
class PrinterInfo {
 public:
  PrinterInfo(HANDLE printer, DWORD level) : buffer_(kUsualSize) {
    DWORD needed = 0;
    valid_ = Fetch(printer, level, &needed);
    if (!valid_ && needed > buffer_.size()) {
      buffer_.resize(needed);
      valid_ = Fetch(printer, level, &needed);
    }
  }
  explicit operator bool() const { return valid_; }
  /// The structure of the level asked for; only if the call succeeded.
  template <typename Info>
  const Info& As() const {
    return *reinterpret_cast<const Info*>(buffer_.data());
  }

 private:
  static constexpr size_t kUsualSize = 6144;  ///< a saved record and some texts

  bool Fetch(HANDLE printer, DWORD level, DWORD* needed) {
    return GetPrinterW(printer, level, buffer_.data(), static_cast<DWORD>(buffer_.size()), needed) != 0;
  }
  std::vector<uint8_t> buffer_;
  bool valid_ = false;
};

/// Changes made while this lives take effect together at Keep(), or not at all. One that never began withdraws nothing,
/// and what is written then takes effect one by one: where that mustn't be, ask open() first.
template <auto kBegin, auto kEnd>
class Batch {
 public:
  explicit Batch(HANDLE on) : on_(on), open_(kBegin(on) == kErrorSuccess) {}
  ~Batch() {
    if (open_) kEnd(on_, 0);
  }
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  bool open() const { return open_; }
  /// False if it never began or the changes couldn't be made durable.
  bool Keep() { return std::exchange(open_, false) && kEnd(on_, 1) == kErrorSuccess; }

 private:
  HANDLE on_;
  bool open_;
};

/// Of a queue's printer data, by its handle.
using PrinterDataBatch = Batch<BeginPrinterDataBatch, EndPrinterDataBatch>;
/// Of one tree of the registry, by one of its two constants.
using RegistryBatch = Batch<RegBeginBatch, RegEndBatch>;

}  // namespace heron::platform

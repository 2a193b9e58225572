// The objects behind the HKEY, HANDLE, HDC and HGDIOBJ values that callers hold.
//
// A handle is a number that is never given out twice, so a stale, foreign or wrong handle is found out by a look-up and
// never touches memory. The table is guarded by a mutex; an entry found stays alive for its finder even if another
// thread closes the handle meanwhile. Private to this folder.
#pragma once

#include <memory>
#include <string>
#include <variant>

#include "platform/api/backend.h"
#include "platform/api/canvas.h"
#include "platform/api/types.h"
#include "platform/dialog/dialog.h"

namespace heron::platform {

struct OpenedKey {
  Hive hive;
  KeyId key;
  std::u16string path;  ///< normalised, as opened
  bool writable;        ///< opened for changing values
};

struct OpenedPrinter {
  KeyId queue;  ///< the queue's key, remembered so that reads need no look-up of a path
  KeyId data;   ///< its printer data
};

struct OpenedFile {
  std::shared_ptr<OpenFile> file;
};

struct DeviceContext;  ///< device_context.cc

struct OpenedCanvas {
  std::shared_ptr<DeviceContext> context;
};

struct Pen {
  LONG width;
  COLORREF color;
};

struct Brush {
  COLORREF color;
};

/// What can be selected into a device context.
using DrawingObject = std::variant<LOGFONTW, Pen, Brush>;

struct OpenedPage {
  PropertyPage page;
};

using HandleEntry = std::variant<OpenedKey, OpenedPrinter, OpenedFile, OpenedCanvas, DrawingObject, OpenedPage>;

/// A new handle for `entry`. May throw std::bad_alloc.
void* InsertHandle(HandleEntry entry);
/// The entry of `handle`, or null.
std::shared_ptr<const HandleEntry> FindHandle(const void* handle);
/// Closes `handle` if it is of type T; false otherwise.
bool EraseHandle(const void* handle, bool (*is_kind)(const HandleEntry&));
/// Makes every handle stale: the backend that they speak of is going.
void DropAllHandles();

template <class T>
std::shared_ptr<const T> FindHandleOf(const void* handle) {
  const std::shared_ptr<const HandleEntry> entry = FindHandle(handle);
  return {entry, entry == nullptr ? nullptr : std::get_if<T>(entry.get())};
}

template <class T>
bool EraseHandleOf(const void* handle) {
  return EraseHandle(handle, [](const HandleEntry& entry) { return std::holds_alternative<T>(entry); });
}

}  // namespace heron::platform

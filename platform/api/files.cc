// Files over the backend (files.h).
#include "platform/api/files.h"

#include <algorithm>
#include <string>

#include "platform/api/guarded.h"
#include "platform/api/handle_table.h"

namespace heron::platform {
namespace {

constexpr size_t kPrefixLength = 3;
constexpr uint32_t kNumbers = 0x10000;

std::u16string TempName(std::u16string_view folder, std::u16string_view prefix, uint32_t number) {
  static constexpr char16_t kDigits[] = u"0123456789abcdef";
  std::u16string hex;
  for (uint32_t rest = number; rest != 0 || hex.empty(); rest /= 16) hex.insert(hex.begin(), kDigits[rest % 16]);
  std::u16string name(folder);
  if (!name.ends_with(kPathSeparator)) name += kPathSeparator;
  return name.append(prefix.substr(0, kPrefixLength)).append(hex).append(u".tmp");
}

/// Makes a file of a number that isn't in use, from the one after the last on.
DWORD MakeUnique(FileStore& files, std::u16string_view folder, std::u16string_view prefix, uint32_t* number) {
  // Begins at a changing number, so that programs at the same time seldom try the same names.
  const uint32_t first = files.NumberHint();
  for (uint32_t i = 0; i < kNumbers - 1; ++i) {
    *number = (first + i) % (kNumbers - 1) + 1;
    const DWORD status = files.CreateNew(TempName(folder, prefix, *number));
    if (status != kErrorFileExists) return status;
  }
  return kErrorFileExists;
}

/// A folder for the caller's buffer; the length of its path, or the room it needs.
DWORD FolderResult(std::u16string (FileStore::*folder_of)(), DWORD room, char16_t* buffer) {
  DWORD length = 0;
  BoolResult(WithBackend([&](const Backend& backend) {
    const std::u16string folder = (backend.files->*folder_of)();
    if (folder.empty()) return kErrorPathNotFound;
    length = static_cast<DWORD>(folder.size());
    if (buffer == nullptr || room <= length) {
      ++length;
      return kErrorInsufficientBuffer;
    }
    std::copy_n(folder.c_str(), folder.size() + 1, buffer);
    return kErrorSuccess;
  }));
  return length;
}

}  // namespace

DWORD GetTempPathW(DWORD room, char16_t* buffer) {
  return FolderResult(&FileStore::TempFolder, room, buffer);
}

DWORD GetSystemDirectoryW(char16_t* buffer, DWORD room) {
  return FolderResult(&FileStore::SystemFolder, room, buffer);
}

DWORD GetDocumentsFolderW(char16_t* buffer, DWORD room) {
  return FolderResult(&FileStore::DocumentsFolder, room, buffer);
}

DWORD GetTempFileNameW(const char16_t* folder, const char16_t* prefix, DWORD unique, char16_t* name) {
  uint32_t number = unique & 0xFFFF;
  const DWORD status = WithBackend([&](const Backend& backend) {
    if (folder == nullptr || prefix == nullptr || name == nullptr) return kErrorInvalidParameter;
    if (TempName(folder, prefix, kNumbers - 1).size() >= kMaxPath) return kErrorInsufficientBuffer;
    if (unique == 0) {
      const DWORD made = MakeUnique(*backend.files, folder, prefix, &number);
      if (made != kErrorSuccess) return made;
    }
    const std::u16string path = TempName(folder, prefix, number);
    std::copy_n(path.c_str(), path.size() + 1, name);
    return kErrorSuccess;
  });
  return BoolResult(status) != 0 ? number : 0;
}

HANDLE CreateFileW(const char16_t* path, DWORD access, DWORD, DWORD disposition) {
  HANDLE handle = INVALID_HANDLE_VALUE;
  BoolResult(WithBackend([&](const Backend& backend) {
    const bool known = disposition >= CREATE_NEW && disposition <= OPEN_EXISTING;
    if (path == nullptr || !known) return kErrorInvalidParameter;
    // Made and opened in two steps: the backend's CreateNew is the exclusive one.
    if (disposition == CREATE_NEW) {
      if (const DWORD made = backend.files->CreateNew(path); made != kErrorSuccess) return made;
    }
    OpenedFile opened;
    const bool write = (access & GENERIC_WRITE) != 0;
    const DWORD status = backend.files->Open(path, write, disposition == CREATE_ALWAYS, &opened.file);
    if (status == kErrorSuccess) handle = InsertHandle(std::move(opened));
    return status;
  }));
  return handle;
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD size, DWORD* read) {
  if (read != nullptr) *read = 0;
  return BoolResult(WithBackend([&](const Backend&) {
    const auto opened = FindHandleOf<OpenedFile>(file);
    if (opened == nullptr) return kErrorInvalidHandle;
    if (read == nullptr || (buffer == nullptr && size != 0)) return kErrorInvalidParameter;
    return opened->file->Read({static_cast<uint8_t*>(buffer), size}, read);
  }));
}

BOOL WriteFile(HANDLE file, const void* buffer, DWORD size, DWORD* written) {
  if (written != nullptr) *written = 0;
  return BoolResult(WithBackend([&](const Backend&) {
    const auto opened = FindHandleOf<OpenedFile>(file);
    if (opened == nullptr) return kErrorInvalidHandle;
    if (written == nullptr || (buffer == nullptr && size != 0)) return kErrorInvalidParameter;
    return opened->file->Write({static_cast<const uint8_t*>(buffer), size}, written);
  }));
}

DWORD GetFileSize(HANDLE file) {
  uint64_t size = 0;
  const BOOL known = BoolResult(WithBackend([&](const Backend&) {
    const auto opened = FindHandleOf<OpenedFile>(file);
    return opened == nullptr ? kErrorInvalidHandle : opened->file->Size(&size);
  }));
  return known != 0 ? static_cast<DWORD>(std::min<uint64_t>(size, INVALID_FILE_SIZE - 1)) : INVALID_FILE_SIZE;
}

BOOL GetFileLocalTime(HANDLE file, SYSTEMTIME* time) {
  return BoolResult(WithBackend([&](const Backend&) {
    const auto opened = FindHandleOf<OpenedFile>(file);
    if (opened == nullptr) return kErrorInvalidHandle;
    return time == nullptr ? kErrorInvalidParameter : opened->file->WriteTime(time);
  }));
}

BOOL CloseHandle(HANDLE file) {
  return BoolResult(EraseHandleOf<OpenedFile>(file) ? kErrorSuccess : kErrorInvalidHandle);
}

BOOL CanMakeFilesIn(const char16_t* folder) {
  return BoolResult(WithBackend([&](const Backend& backend) {
    if (folder == nullptr) return kErrorInvalidParameter;
    return backend.files->CanMakeFiles(folder) ? kErrorSuccess : kErrorAccessDenied;
  }));
}

BOOL DeleteFileW(const char16_t* path) {
  return BoolResult(WithBackend(
      [&](const Backend& backend) { return path == nullptr ? kErrorInvalidParameter : backend.files->Delete(path); }));
}

DWORD GetFileAttributesW(const char16_t* path) {
  DWORD attributes = INVALID_FILE_ATTRIBUTES;
  BoolResult(WithBackend([&](const Backend& backend) {
    return path == nullptr ? kErrorInvalidParameter : backend.files->Attributes(path, &attributes);
  }));
  return attributes;
}

}  // namespace heron::platform

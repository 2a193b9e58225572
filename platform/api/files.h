// Files: the calls that carry temporary data from one process of a user to another. Conventions: platform/api/types.h.
//
// Paths are of the host, in kPathSeparator. Only regular files open. The arguments for
// security, attributes, templates and overlapped work are left out.
#pragma once

#include "platform/api/types.h"

namespace heron::platform {

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(intptr_t{-1});

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;

inline constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;    ///< this user can't write it
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x2;      ///< its name begins with a point
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x4;      ///< neither a regular file nor a folder
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;  ///< a folder
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;     ///< none of the others

extern "C" {

/// The user's private folder for temporary files, with its separator; it is made if it is missing. Returns its length,
/// or the room needed with the terminator if `room` is too small; 0 on failure.
HERON_PLATFORM_API DWORD GetTempPathW(DWORD room, char16_t* buffer);

/// The folder of the system's own working files, without a separator at its end; "spool" and "PRINTERS" below it exist
/// and belong to the user alone. Results as GetTempPathW.
HERON_PLATFORM_API DWORD GetSystemDirectoryW(char16_t* buffer, DWORD room);

/// The user's folder for documents, without a separator at its end; it is made if it is missing. Results as
/// GetTempPathW. A call of our own.
HERON_PLATFORM_API DWORD GetDocumentsFolderW(char16_t* buffer, DWORD room);

/// Writes the name "<folder><first three characters of prefix><low 16 bits of the number in hexadecimal>.tmp" into
/// `name` (kMaxPath characters) and returns those 16 bits. With `unique` 0 a number is chosen and the file is made,
/// exclusively, readable by its owner alone; otherwise nothing is looked at or made. 0 on failure.
HERON_PLATFORM_API DWORD GetTempFileNameW(const char16_t* folder, const char16_t* prefix, DWORD unique, char16_t* name);

/// Whether this user can make files in the folder. Nothing is left in it, also by a program that is killed meanwhile. A
/// call of our own.
HERON_PLATFORM_API BOOL CanMakeFilesIn(const char16_t* folder);

/// Opens a file: CREATE_NEW makes it and fails with kErrorFileExists if something of this name is there, CREATE_ALWAYS
/// makes it or empties it, readable by its owner alone; OPEN_EXISTING fails with kErrorFileNotFound if the file is
/// missing, with kErrorPathNotFound if its folder is. Sharing isn't enforced. INVALID_HANDLE_VALUE on failure.
HERON_PLATFORM_API HANDLE CreateFileW(const char16_t* path, DWORD access, DWORD share, DWORD disposition);

/// Reads on from where the last transfer ended; `*read` is less than `size` at the end of the file, 0 on failure.
HERON_PLATFORM_API BOOL ReadFile(HANDLE file, void* buffer, DWORD size, DWORD* read);
/// Writes all of `buffer` or fails; `*written` is set to the number of bytes written.
HERON_PLATFORM_API BOOL WriteFile(HANDLE file, const void* buffer, DWORD size, DWORD* written);
/// The file's size, at most 0xFFFFFFFE; INVALID_FILE_SIZE on failure. There is no `high` argument.
HERON_PLATFORM_API DWORD GetFileSize(HANDLE file);
/// When the file was last written, in the user's time zone. A call of our own; the Win32 API needs three for it.
HERON_PLATFORM_API BOOL GetFileLocalTime(HANDLE file, SYSTEMTIME* time);
HERON_PLATFORM_API BOOL CloseHandle(HANDLE file);
HERON_PLATFORM_API BOOL DeleteFileW(const char16_t* path);
/// FILE_ATTRIBUTE_ bits of the file, folder or link of this name; INVALID_FILE_ATTRIBUTES if there is none.
HERON_PLATFORM_API DWORD GetFileAttributesW(const char16_t* path);
}

}  // namespace heron::platform

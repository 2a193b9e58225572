// The head of a settings file: its name, its comment, and the driver that wrote it.
//
// Files are worked on in memory: reading and saving them is the caller's, so that all of a file is read once and
// replaced once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/api/profile.h"

namespace heron {

inline constexpr size_t kLibraryNameLength = 64;      ///< characters
inline constexpr size_t kLibraryCommentLength = 512;  ///< characters, line ends included
inline constexpr size_t kIdentityTextLength = 127;    ///< characters
inline constexpr int kReservedCount = 5;

/// Who wrote a file. The defaults are this driver.
struct DriverIdentity {
  std::u16string manufacture = u"Varnell";
  std::u16string product = u"Varnell PCL6 Driver";
  std::u16string system = u"MS Windows NT4.0";
  std::u16string model = u"Varnell 70/36MX-2 PCL";
  std::u16string version = u"02.00.00.00";
  uint32_t versionNumber = 0x2000000;
  int32_t usetVersion = 1;
  std::u16string language = u"CHS";
  std::u16string destination = u"US";
  int32_t reserved[kReservedCount] = {};
  int32_t attributes = 1;  ///< read only: 0 standard file, 1 user's file, 2 write-protected, 3 replaceable

  bool operator==(const DriverIdentity&) const = default;
};

/// Cut to kLibraryNameLength.
void WriteLibraryName(platform::Profile& file, std::u16string_view name);
/// The name in the file, else the base name of `path`.
std::u16string ReadLibraryName(const platform::Profile& file, std::u16string_view path);

/// Replaces the comment's section by one at the end of the file. Lines are cut to kLibraryCommentLength.
void WriteLibraryComment(platform::Profile& file, std::u16string_view comment);
/// Lines joined by CR LF; empty if there is none, if a line has lost its stars, or if all don't fit.
std::u16string ReadLibraryComment(const platform::Profile& file);

/// All but the attributes, which stay as they are in the file.
void WriteDriverIdentity(platform::Profile& file, const DriverIdentity& identity);
/// Only for files that come with the driver.
void WriteFileAttributes(platform::Profile& file, int32_t attributes);
/// False if the file has no manufacturer or no product: then it is no settings file. The version number isn't read.
bool ReadDriverIdentity(const platform::Profile& file, DriverIdentity* identity);

}  // namespace heron

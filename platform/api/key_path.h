// Paths of keys: parts joined by single backslashes, compared without regard to the case of ASCII letters. For the
// calls of this folder and for backends.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace heron::platform {

/// Longest normalised path in characters; keeps what comes from outside, and walks over it, within bounds.
inline constexpr size_t kLongestKeyPath = 1024;

/// `path` below the normalised `above`, normalised: doubled, leading and trailing backslashes are dropped.
std::u16string JoinKeyPath(std::u16string_view above, std::u16string_view path);
/// The last part of a normalised path.
std::u16string_view LastPart(std::u16string_view path);
/// All but the last part of a normalised path; empty for a path of one part.
std::u16string_view ParentPath(std::u16string_view path);
/// `text` with its ASCII capitals made small: what names and paths are compared by.
std::u16string FoldCase(std::u16string_view text);

}  // namespace heron::platform

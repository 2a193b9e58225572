// The texts and numbers of the fax cover sheet: defaults, limits, and the check of its picture's file.
#pragma once

#include <cstdint>
#include <string>

#include "uistate/ui_state.h"

namespace heron {

/// Bits of ResetCoverStore.
inline constexpr uint32_t kResetSubject = 0x100, kResetText = 0x200, kResetPagenum = 0x400, kResetStyle = 0x800,
                          kResetFilename = 0x1000, kResetX = 0x2000, kResetY = 0x4000, kResetZoom = 0x8000,
                          kResetFixedform = 0x10000, kResetPaper = 0x20000;
/// All but subject, text and file name, which a user typed.
inline constexpr uint32_t kResetByButton = 0x3EC00;

/// Sets the fields of the mask to their defaults. The strings are in use.
void ResetCoverStore(uint32_t mask, const UiState& ui);
/// Sets the switches of the cover sheet to their defaults, both values.
void ResetCoverFlags(const UiState& ui);

/// The cover sheet has a paper of its own unless FCSPaper is the document's; to be called when that changes.
void FollowCoverPaper(const UiState& ui);

/// What is wrong with a picture's file; the numbers are those of the messages.
enum class CoverImageFault : uint8_t { kNotBitmap = 0, kNotOpened = 1, kTooLong = 2, kNone };

/// Checks that the file can serve; completes a name without extension or folder.
CoverImageFault ValidateCoverImage(std::u16string* path);
/// The warning of a fault, with the path shortened. The strings are in use.
std::u16string CoverImageText(std::u16string_view path, CoverImageFault fault);

/// Whether the file can be opened for reading.
bool CoverImageOpens(const std::u16string& path);

/// A comment as it is stored: each line feed behind a carriage return.
std::u16string StoredComment(std::u16string_view text);

}  // namespace heron

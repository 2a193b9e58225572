// The settings that are texts, and the owner of the settings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/engine.h"

namespace heron::pages {

/// Numbers of their parameters. Passwords are kept scrambled.
enum class TextSetting : uint16_t {
  kSecureCodeA = 210,
  kSecurePassword = 211,
  kSecureCodeB = 221,
  kBoxNumber = 222,
  kOwnerName = 229,
  kSecureId = 293,
  kBoxFileName = 294,
  kAuthUserName = 300,
  kDepartmentName = 301,
  kAuthPassword = 302,
  kDepartmentPassword = 303,
};

/// Up to its terminator or its width.
std::u16string GetText(const UiState& ui, TextSetting setting);
/// Cut to its width; what the text doesn't fill is zeroed.
void SetText(const UiState& ui, TextSetting setting, std::u16string_view text);

/// Whose settings a record holds, compared with who has opened it.
enum class OwnerCheck : uint8_t { kBothEmpty = 1, kSameUser = 2, kNoneStored = 3, kUserUnknown = 4, kAnotherUser = 5 };

/// Makes the current user the owner. What the settings keep of another person, or of an unknown one (3 to 5), is
/// cleared first: secure print, box, authentication.
OwnerCheck TakeOwnership(engine::Engine& engine);
/// The same, but settings without an owner keep what they hold: for a user who sets them himself, one after the other.
OwnerCheck TakeUnowned(engine::Engine& engine);

}  // namespace heron::pages

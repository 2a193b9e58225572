// Settings files: a state's settings into a file, back, and from one state to another.
//
// A file is text in the system's code page, CR LF, in the layout of a profile (platform/api/profile.h). Which keys
// are in it and in which order is set by uistate/file_keys.table. A file is read up to kProfileLimit and replaced
// whole. Reading changes working values only; committed ones are the pages' to set.
#pragma once

#include <string_view>

#include "catalog/catalog.h"
#include "platform/api/profile.h"
#include "presets/preset_header.h"
#include "uistate/ui_state.h"

namespace heron {

/// Makes the working settings of `ui` what the file says: lists start empty, keys that are absent leave a setting as it
/// is or give it its stored default, and what the catalogue hasn't got becomes its default. False if the file can't be
/// read, is empty or too large: then only the lists are emptied. `resources` isn't null.
bool LibraryReadSettings(UiState& ui, std::u16string_view path, const ResourceContext* resources);
/// The same from a file that was read before.
void LibraryReadSettings(UiState& ui, const platform::Profile& file, const ResourceContext* resources);

/// Writes every setting into the file at `path`, which is made if it is missing; what else is in it stays. False if it
/// couldn't be replaced: it is then as it was.
bool LibraryWriteSettings(const UiState& ui, std::u16string_view path);
/// The same into a file in memory. False if not one key was written.
bool LibraryWriteSettings(const UiState& ui, platform::Profile& file);

/// Copies the settings of one recall group and repairs them. Both states are of this driver; `resources` isn't null.
void CopySettingsGroup(UiState& target, const UiState& source, int group, const ResourceContext* resources);

}  // namespace heron

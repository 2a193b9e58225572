// The media in the trays: a table by paper source, and the settings that show the media of a chosen tray.
#pragma once

#include <array>
#include <cstdint>

#include "uistate/ui_state.h"

namespace heron {

inline constexpr size_t kTrayRowCount = 10;

struct TrayMedia {
  uint8_t mediaType;
  uint8_t weight;
  uint8_t paperColor;
  uint8_t punched;
};

struct TrayRow {
  int16_t source;
  TrayMedia media;
};

/// The state's form of the table, 64 bytes of the record.
struct TrayTable {
  int16_t maxCount;
  int16_t index;  ///< of the selected row
  TrayRow rows[kTrayRowCount];
};
static_assert(sizeof(TrayRow) == 6 && sizeof(TrayTable) == sizeof(UiHead::trayTable));
static_assert(offsetof(UiHead, trayTable) % alignof(TrayTable) == 0);

/// A setting that chooses a tray, and the four that show what lies in it, in the order of TrayMedia; rows of
/// kParamRows.
struct MirroredTray {
  uint16_t source;
  std::array<uint16_t, 4> mirrors;
};
inline constexpr std::array<MirroredTray, 3> kMirroredTrays = {{
    {ParamNamed<u"lpMediaSource">(), {ParamIndexOf(510), ParamIndexOf(511), ParamIndexOf(512), ParamIndexOf(513)}},
    {ParamNamed<u"lpFrontCoverTray">(), {ParamIndexOf(530), ParamIndexOf(531), ParamIndexOf(532), ParamIndexOf(533)}},
    {ParamNamed<u"lpBackCoverTray">(), {ParamIndexOf(550), ParamIndexOf(551), ParamIndexOf(552), ParamIndexOf(553)}},
}};

TrayTable& TraysOf(const UiState& ui);

/// The media of the first row with this source, or null.
TrayMedia* FindTrayMedia(const UiState& ui, uint16_t source);
/// The same; the defaults if there is no such row.
TrayMedia MediaOfTray(const UiState& ui, uint16_t source);

/// Writes the media of the tray that the setting chooses into the settings that show them.
void LoadTrayMirrors(const UiState& ui, const MirroredTray& tray);
void LoadAllTrayMirrors(const UiState& ui);  ///< the same for all three settings

/// Every row takes the defaults of the settings that show media.
void ResetTrayMedia(const UiState& ui);

}  // namespace heron

// What lies in the paper trays: the tray media table, and the mirrors of three trays' rows that rules can name.
//
// The table stands in the front of a UiState as bytes of the record: two words, then ten rows of source (u16), media
// type, weight, colour and punched mark (u8 each). Of doubled rows of one source the first counts; a source without a
// row has the defaults of the mirrors' features.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "engine/controls.h"
#include "uistate/ui_state.h"

namespace heron::engine {

/// Media type, weight, colour, punched mark.
using TrayMedia = std::array<uint16_t, 4>;

/// A tray list whose media are mirrored, and the mirrors in the order of TrayMedia.
struct MirroredTray {
  ControlIndex tray;
  std::array<ControlIndex, 4> mirrors;
};

// clang-format off
inline constexpr std::array<MirroredTray, 3> kMirroredTrays = {{
    {Control(u"lpMediaSource"),    {Control(u"trayMediaType.3310"),  Control(u"trayWeight.3311"),
                                    Control(u"trayPaperColor.3312"), Control(u"trayPunched.3313")}},
    {Control(u"lpFrontCoverTray"), {Control(u"trayMediaType.3330"),  Control(u"trayWeight.3331"),
                                    Control(u"trayPaperColor.3332"), Control(u"trayPunched.3333")}},
    {Control(u"lpBackCoverTray"),  {Control(u"trayMediaType.3350"),  Control(u"trayWeight.3351"),
                                    Control(u"trayPaperColor.3352"), Control(u"trayPunched.3353")}},
}};
// clang-format on

/// The mirrored tray that `control` is a mirror of, or null.
const MirroredTray* TrayOfMirror(ControlIndex control);

/// Media of `source` in the table.
TrayMedia MediaOfTray(const UiState& ui, uint16_t source);
/// False, with nothing changed, if the table has no row for `source`. Values are stored in a byte each.
bool SetMediaOfTray(const UiState& ui, uint16_t source, const TrayMedia& media);

/// Loads the mirrors of one tray from the row of its current source.
void LoadMirrors(const UiState& ui, const MirroredTray& tray);
void LoadAllMirrors(const UiState& ui);

/// Sets the marks of the custom papers chosen (mediaSizeMark, outputPaperMark); a marked output paper brings the bypass
/// tray to a media type that can be that long.
void SetCustomPaperMarks(const UiState& ui);

}  // namespace heron::engine

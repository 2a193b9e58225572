#include "engine/tray_media.h"

#include <algorithm>
#include <cstring>

#include "engine/control_tables.h"
#include "engine/setting.h"
#include "engine/sizes.h"

namespace heron::engine {
namespace {

struct TrayRow {
  uint16_t source;
  uint8_t media[4];
};
static_assert(sizeof(TrayRow) == 6);

constexpr size_t kHeadSize = 4;  ///< the table's spare word and its selected row
constexpr size_t kRowCount = (sizeof(UiHead::trayTable) - kHeadSize) / sizeof(TrayRow);
constexpr uint16_t kBypass = 4;
constexpr uint8_t kLongMedia = 30;

uint8_t* RowOf(const UiState& ui, uint16_t source) {
  for (size_t i = 0; i < kRowCount; ++i) {
    uint8_t* row = ui.head().trayTable + kHeadSize + i * sizeof(TrayRow);
    uint16_t its_source;
    std::memcpy(&its_source, row, sizeof its_source);
    if (its_source == source) return row + sizeof its_source;
  }
  return nullptr;
}

ValueFields FieldsOfControl(const UiState& ui, ControlIndex control) {
  return FieldsOf(ui, ParamIndexOfControl(control));
}

bool IsMarked(const UiState& ui, uint16_t paper) {
  const int number = CustomPaperNumber(paper);
  return number != 0 && ui.stores.userPapers != nullptr &&
         (*ui.stores.userPapers)[static_cast<size_t>(number - 1)].longFlag == 1;
}

bool CanBeLong(uint8_t media_type) {
  constexpr uint8_t kTypes[] = {30, 31, 32, 45, 46, 47};
  return std::ranges::count(kTypes, media_type) != 0;
}

}  // namespace

const MirroredTray* TrayOfMirror(ControlIndex control) {
  for (const MirroredTray& tray : kMirroredTrays) {
    if (std::ranges::count(tray.mirrors, control) != 0) return &tray;
  }
  return nullptr;
}

TrayMedia MediaOfTray(const UiState& ui, uint16_t source) {
  TrayMedia media;
  if (const uint8_t* row = RowOf(ui, source); row != nullptr) {
    std::copy_n(row, media.size(), media.begin());
    return media;
  }
  for (size_t i = 0; i < media.size(); ++i) media[i] = *FieldsOfControl(ui, kMirroredTrays[0].mirrors[i]).defaultValue;
  return media;
}

bool SetMediaOfTray(const UiState& ui, uint16_t source, const TrayMedia& media) {
  uint8_t* row = RowOf(ui, source);
  if (row == nullptr) return false;
  std::ranges::transform(media, row, [](uint16_t value) { return static_cast<uint8_t>(value); });
  return true;
}

void LoadMirrors(const UiState& ui, const MirroredTray& tray) {
  const TrayMedia media = MediaOfTray(ui, *FieldsOfControl(ui, tray.tray).value);
  for (size_t i = 0; i < media.size(); ++i) *FieldsOfControl(ui, tray.mirrors[i]).value = media[i];
}

void LoadAllMirrors(const UiState& ui) {
  for (const MirroredTray& tray : kMirroredTrays) LoadMirrors(ui, tray);
}

void SetCustomPaperMarks(const UiState& ui) {
  const bool marked = IsMarked(ui, PrintedPaper(ui));
  *FieldsOfControl(ui, Control(u"mediaSizeMark")).value = IsMarked(ui, Setting<u"lpMediaSize">(ui));
  *FieldsOfControl(ui, Control(u"outputPaperMark")).value = marked;
  uint8_t* bypass = RowOf(ui, kBypass);
  if (marked && bypass != nullptr && !CanBeLong(bypass[0])) bypass[0] = kLongMedia;
}

}  // namespace heron::engine

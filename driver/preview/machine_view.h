// The machine view: the machine with its installed options, and over it the paper source and the output tray in use.
//
// Every picture of the machine is as large as the whole machine, so that all lie on one point. Nothing is kept between
// calls.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "preview/layer.h"
#include "uistate/ui_state.h"

namespace heron::preview {

inline constexpr int16_t kMachineWidth = 160, kMachineHeight = 110;

/// The settings that choose the pictures, as they are; only `foldStaple` is 0 or 1.
struct MachinePicture {
  uint16_t sourceUnit = 0;
  uint16_t outputUnit = 0;
  uint16_t mailBinKit = 0;
  uint16_t saddleUnit = 0;
  uint16_t mediaSource = 0;
  uint16_t outputTray = 0;
  uint16_t foldStaple = 0;

  bool operator==(const MachinePicture&) const = default;
};

struct MachineField {
  std::string_view name;  ///< the setting's
  uint16_t MachinePicture::*field;
};
extern const std::array<MachineField, 7> kMachineFields;

MachinePicture DescribeMachine(const UiState& ui);
/// The machine as it is installed.
Stack StackMachine(const MachinePicture& picture);
/// What is lit: a source or a tray that the machine hasn't got isn't.
struct LitParts {
  bool source = false, tray = false, saddle = false;
};
LitParts LitPartsOf(const MachinePicture& picture);
/// Their pictures.
Stack StackHighlights(const MachinePicture& picture);

}  // namespace heron::preview

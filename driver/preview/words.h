// The previews in words: one sentence for each picture, for assistive tools, tool tips and the command.
//
// Sentences are made of the same descriptors as the stacks, so that a sentence and its picture can't differ. The texts
// are in use and the paper table's names loaded; without texts a sentence is empty.
#pragma once

#include <string>

#include "preview/machine_view.h"
#include "preview/paper_view.h"
#include "preview/status_view.h"

namespace heron::preview {

/// What the paper view shows beside its picture, as its labels do.
struct PaperFacts {
  std::u16string paper;     ///< name of what is printed on
  std::u16string original;  ///< the document's; empty if it is the same
  uint16_t zoom = 0;        ///< percent; 0 where it isn't shown
  uint16_t copies = 1;
};

PaperFacts PaperFactsOf(const UiState& ui);

/// "A4 portrait, 4 pages a sheet in reading order, printed on both sides, bound left".
std::u16string SayPaper(const PaperPicture& picture, const PaperFacts& facts);
/// `highlights`: with the lit source and tray.
std::u16string SayMachine(const MachinePicture& picture, bool highlights);
/// Features in the order of `iconOrder`; what is usual isn't mentioned.
std::u16string SayStatus(const StatusPicture& picture);

/// What DrawUpperPicture shows of the settings.
std::u16string SayUpperPicture(const UiState& ui);

}  // namespace heron::preview

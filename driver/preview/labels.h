// The texts of the paper view: the two papers, the zoom, the number of copies.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "uistate/ui_state.h"

namespace heron::preview {

/// Where a text goes (geometry.h).
enum class LabelPlace : uint8_t {
  kOriginalName,
  kOriginalSize,
  kOutputName,
  kOutputSize,
  kArrow,
  kZoom,
  kCopies,
};
inline constexpr int kLabelPlaces = 7;

/// "originalName", "copies" ...
std::string_view NameOf(LabelPlace place);

struct Label {
  LabelPlace place;
  std::u16string text;
};

/// The name of a paper, that of a custom size from its entry.
std::u16string PaperName(const UiState& ui, uint16_t paper);
/// Whether the zoom has a label.
bool ShowsZoom(const UiState& ui);

/// The labels that show, in the order of their places; that of an output like the document is empty. The texts are in
/// use and the paper table's names loaded.
std::vector<Label> PaperLabels(const UiState& ui);

}  // namespace heron::preview

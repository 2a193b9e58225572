// The rows of the summary that no control's value tells alone (summary_table.h says where they stand).
#pragma once

#include <initializer_list>
#include <string_view>

#include "engine/engine.h"
#include "pages/summary.h"
#include "platform/api/text.h"

namespace heron::pages {

/// Takes the rows of a tab one behind the other.
class SummaryWriter {
 public:
  explicit SummaryWriter(SummaryRows& rows) : rows_(rows) {}

  void Row(std::u16string_view label, std::u16string_view value = {}, std::u16string_view second = {}) {
    rows_.push_back({std::u16string(label), std::u16string(value), std::u16string(second)});
  }
  /// The label indented by `indent`, which is blanks.
  void Row(std::u16string_view indent, TextNumber label, std::u16string_view value = {},
           std::u16string_view second = {}) {
    Row(std::u16string(indent) + GetUiString(label), value, second);
  }
  /// A line across label and value.
  void Separator();

 private:
  SummaryRows& rows_;
};

/// The settings that a builder reads; the engine is bound to them, and availability is evaluated.
struct SummaryInput {
  const UiState& ui;
  const engine::Engine& engine;
};

/// Appends the rows; `control` is the one of the table's row.
using SummaryBuilder = void (*)(const SummaryInput& input, uint16_t control, SummaryWriter& rows);

/// "On" or "Off".
const char16_t* SwitchText(bool on);
inline std::u16string PlainNumber(int64_t number) {
  return platform::ExpandText(u"%ld", {number});
}

/// The text that a value from `first` on has, or "--".
std::u16string_view TextAt(std::initializer_list<TextNumber> texts, int64_t value, int64_t first);

void AddDocumentSize(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddPrintSize(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddPaperType(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddPageOrder(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddCustomSizes(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddFrontCover(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddBackCover(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddChapters(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddPageLists(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddImageShift(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddOverlayPrompt(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddForms(const SummaryInput& input, uint16_t control, SummaryWriter& rows);
void AddWatermark(const SummaryInput& input, uint16_t control, SummaryWriter& rows);

// The fax cover sheet, in the order of the tab. Nothing is added without its store.
void AddFaxSubject(const SummaryInput& input, SummaryWriter& rows);
void AddFaxStyle(const SummaryInput& input, SummaryWriter& rows);
void AddFaxRecipient(const SummaryInput& input, SummaryWriter& rows);
void AddFaxSender(const SummaryInput& input, SummaryWriter& rows);
void AddFaxDate(const SummaryInput& input, SummaryWriter& rows);
void AddFaxPageNumber(const SummaryInput& input, SummaryWriter& rows);
void AddFaxPaper(const SummaryInput& input, SummaryWriter& rows);
void AddFaxPicture(const SummaryInput& input, SummaryWriter& rows);
void AddFaxComment(const SummaryInput& input, SummaryWriter& rows);

/// A field of a store up to its terminator.
template <size_t N>
std::u16string_view FieldText(const char16_t (&field)[N]) {
  const std::u16string_view text(field, N);
  return text.substr(0, text.find(u'\0'));
}

}  // namespace heron::pages

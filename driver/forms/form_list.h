// The user's list of overlay forms: full paths without gaps, what is shown of each file, and which names a form may
// have. The list holds kFormCount forms; a store may have been written by another program, so its count is bounded and
// an empty entry ends it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form_check.h"
#include "generated/texts.h"
#include "platform/api/types.h"
#include "uistate/ui_state.h"

namespace heron {

inline constexpr std::u16string_view kFormExtension = u".vxf";
inline constexpr size_t kFormPathLength = platform::kMaxPath - 1;  ///< characters of a path that a store can hold

// -- the list

std::vector<std::u16string> FormsIn(const OverlayStore& store);
/// Replaces the list; what goes beyond its room is left out.
void SetForms(OverlayStore& store, const std::vector<std::u16string>& paths);
/// Place of the path, from 0; nothing if the list hasn't got it.
std::optional<size_t> PlaceOfForm(const OverlayStore& store, std::u16string_view path);
/// Adds a path that isn't in the list at its end. False if the list is full or the path too long.
bool AddForm(OverlayStore& store, std::u16string_view path);
/// Removes the form at `place`. The chosen form of the settings stays chosen; if it is the one, the first is.
void RemoveForm(const UiState& ui, size_t place);
/// Removes the forms that don't exist or don't fit the settings; one that was made in colour stays.
void DropUnfitForms(const UiState& ui);

// -- files

struct FormFacts {
  uint32_t bytes = 0;
  platform::SYSTEMTIME time{};  ///< last written, in the user's time zone
};
/// Nothing for a file that can't be read.
std::optional<FormFacts> FormFactsOf(const std::u16string& path);
/// "12KB", at least "1KB".
std::u16string FormSizeText(uint32_t bytes);
/// "26/11/23 9:05": year, month, day, hour, minute.
std::u16string FormTimeText(const platform::SYSTEMTIME& time);

/// A line of the list: name, folder, size and date as texts.
struct FormRow {
  std::u16string path;
  std::u16string cells[4];
};
inline constexpr int kFormDateColumn = 3;
std::vector<FormRow> FormRowsOf(const OverlayStore& store);
/// Sorts by the text of a column, dates with their century (a year below 60 is of this one). Equal rows keep their
/// order.
void SortFormRows(std::vector<FormRow>& rows, int column, bool ascending);

// -- names

struct FormName {
  std::u16string folder;  ///< with its separator, or empty
  std::u16string name;
};
FormName SplitFormPath(std::u16string_view path);
/// The name with the extension, if it has no dot.
std::u16string WithFormExtension(std::u16string_view name);

/// What is wrong with the name of a form: the message's text, 0 if nothing is.
struct FormVerdict {
  TextNumber problem = 0;
  FormName name;        ///< with folder and extension
  bool exists = false;  ///< of a form to make: it would replace a file

  std::u16string Path() const { return name.folder + name.name; }
};
/// A form to make under this name, which may bring a folder of its own.
FormVerdict CheckNewForm(const FormName& name);
/// A form of the list to print with; it must fit the settings.
FormVerdict CheckListedForm(const UiState& ui, const FormName& name);

}  // namespace heron

// Whether an overlay form, a file made by a job in create mode, fits a job that is to print with it.
//
// A form is a binary page description; one thing in it is read, a comment with "name=value;" pairs in the system's code
// page. A file over 64 MiB or that isn't a regular file counts as unreadable.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "settings/driver_env.h"
#include "uistate/ui_state.h"

namespace heron {

enum class FormFit { kNone = 0, kFits = 1, kColorInMonochrome = 2 };

/// What is compared, in the order of the comparison.
inline constexpr std::array<std::u16string_view, 8> kFormRowNames = {u"Model", u"System",   u"Destination", u"PDL",
                                                                     u"Color", u"Reserved", u"OS",          u"Version"};

/// Whether the comparison looks at a row.
bool IsFormRowCompared(size_t row);

/// Texts of up to 32 characters, one for each name.
using FormColumn = std::array<std::u16string, kFormRowNames.size()>;

struct FormCheckTable {
  FormColumn expected;
  FormColumn file;
};

/// What a form must say for a job with these settings, or of this record.
void FormExpectFromState(FormCheckTable& table, const UiState& ui);
void FormExpectFromJob(FormCheckTable& table, const DriverEnv& record);

/// Reads what the file says; false, with an empty column, if it can't be read or holds no comment.
bool FormReadDescription(FormCheckTable& table, const std::u16string& path);

/// Texts compare without regard to case. A page description language above the expected one doesn't fit; a colour above
/// the expected one has its own result.
FormFit FormCompare(const FormCheckTable& table);

/// The three in order; kNone if any step fails.
FormFit FormCheck(const UiState& ui, const std::u16string& path);

/// The file for a message: folder and file name, each cut to 28 characters and three dots if it has 32 or more.
std::u16string ShortPath(std::u16string_view path);

}  // namespace heron

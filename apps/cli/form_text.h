// Overlay forms as text and JSON.
#pragma once

#include <string>

#include "common/command.h"
#include "forms/form_list.h"

namespace heron::cli {

/// A message of the driver about a form, on one line.
std::string FormMessage(TextNumber text, const std::u16string& path);
/// "2026-11-23T09:05:00", in the user's time zone.
std::string FormTimeIso(const platform::SYSTEMTIME& time);
/// Whether the form fits the settings, in words.
const char* FormState(const UiState& ui, const std::u16string& path, bool there);

Json FormRowsJson(const FormCheckTable& table);
void PrintFormRows(const FormCheckTable& table);

}  // namespace heron::cli

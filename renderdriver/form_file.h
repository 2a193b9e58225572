// Overlay form files, as this printing half makes and reads them: a page in a file of its own, laid under the pages of
// other jobs. README.md describes the format.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "settings/driver_env.h"

namespace heron::renderdriver {

/// Forms above this size count as unreadable, here and in the driver.
inline constexpr size_t kLargestForm = size_t{64} * 1024 * 1024;

/// A form made by a job with this record; `page` is a PDF of one page.
std::vector<uint8_t> MakeForm(const DriverEnv& record, std::span<const uint8_t> page);

/// The PDF of a form's page, inside `form`; nothing in a form that another printing half made, or that isn't whole.
std::optional<std::span<const uint8_t>> PageOfForm(std::span<const uint8_t> form);

/// Whether the form can be laid under a job with this record: made for this model, in no newer page language, and in
/// colour for colour jobs alone.
bool FormSuits(std::span<const uint8_t> form, const DriverEnv& record);

}  // namespace heron::renderdriver

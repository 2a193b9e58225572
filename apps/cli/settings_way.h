// Why a requested value isn't available with the current settings, and what to set first.
#pragma once

#include <string>
#include <vector>

#include "setting_names.h"
#include "settings_session.h"

namespace heron::cli {

/// A setting that must change before the requested one, and the values that work, best first.
struct Step {
  uint16_t control = 0;
  uint16_t now = 0;  ///< the value that prevents it
  std::vector<uint16_t> values;
};

/// Whether the page would offer the requested value: its control is usable and its item isn't forbidden.
bool IsOffered(const engine::Engine& engine, const RequestedChange& request);

/// The steps, in order, after which `request` is possible; empty if none were found. They were tried on the settings,
/// which are afterwards as they were. Options of the printer count as changeable.
std::vector<Step> WayTo(SettingsSession& opened, const RequestedChange& request);

/// `"Staple" = On can't be with "Output unit" = None; first set it to A or B: heron settings ...` for what WayTo found.
std::string WayText(const engine::Engine& engine, const RequestedChange& request, const std::vector<Step>& way);

}  // namespace heron::cli

// A watermark on the command line: its parts as options, as text and as JSON. Numbers are in the units of an entry.
#pragma once

#include <optional>
#include <string>

#include "common/command.h"
#include "uistate/list_stores.h"

namespace heron::cli {

/// The parts of an entry that the command line names.
struct MarkChange {
  std::optional<std::string> text, font, style, size, angle, color, shade, x, y;

  void AddTo(CLI::App& command);
  bool Any() const;
};

/// Exit code 2 for a part that an entry can't have; the entry may then be changed in part.
void ApplyMarkChange(const MarkChange& change, WatermarkEntry& entry);

Json MarkJson(const WatermarkEntry& entry, int index);
/// One line, with a star in front of the current one.
void PrintMark(const WatermarkEntry& entry, int index, bool current);

/// "12.5" of 125.
std::string TenthsText(int32_t tenths);

}  // namespace heron::cli

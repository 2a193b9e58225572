// The words of a report: what a line says, which changes are worth one, and what closes it.
//
// Texts come from the resource module and may be of any length; a report never grows beyond its room, lines that have
// none left are left out.
#pragma once

#include <string>
#include <string_view>

#include "changes/resolve.h"
#include "engine/page_list.h"
#include "engine/page_list_text.h"

namespace heron::engine {

/// Which controls earn a line that aren't usable on any page.
enum class DeviceLines : uint8_t { kYes, kNo };

class ReportText {
 public:
  explicit ReportText(std::u16string_view start = {}) { Add(start); }
  void Add(std::u16string_view text);
  /// Keeps its place even behind lines that fill the report.
  void Close(std::u16string_view text);
  bool empty() const { return text_.empty(); }
  std::u16string_view view() const { return text_; }
  std::u16string Take() { return std::move(text_); }

 private:
  std::u16string text_;
};

/// Model and language, as captions name the driver.
std::u16string ModelCaption();

/// Whether the control is reported at all: mirrors of a tray's media only with the first tray of that source.
bool IsReportable(ControlIndex control, const TraySnapshot& trays);

/// The control's label; of a mirror with its tray as in `trays`.
std::u16string ReportLabel(ControlIndex control, const TraySnapshot& trays);
/// Text of a value, or its number.
std::u16string ValueText(ControlIndex control, uint16_t value);

/// How many of the log's entries the user should hear about, by the engine's mode and the availability at hand.
int CountableEntries(const Engine& engine, const ChangeLog& log);

/// "Label => value" for each entry that earns a line; in other modes than a single change not for silent controls.
/// False if none does: then no header may introduce them.
bool AddLines(ReportText& report, const Resolver& resolver, DeviceLines device);
/// "Label : value" for each setting that opposes the change; mirrors that a report leaves out only where nothing else
/// does. False if there is none.
bool AddOpposingLines(ReportText& report, const Resolver& resolver);

/// That rows of the per-page list are in conflict now, or empty. With a line end before it if `follows_lines`.
std::u16string PerPageRemark(const Resolver& resolver, bool follows_lines);

// Messages about page numbers and per-page rows, for pages and commands.

/// Who asks: the row dialog, or the field of chapter starts.
enum class PageTextField : uint8_t { kRow, kChapters };

/// What is wrong with a page text; empty without an error.
std::u16string PageTextErrorText(PageTextError error, PageTextField field);

/// That pages are listed twice: the first five of `repeated`.
std::u16string DuplicatePagesText(std::span<const uint16_t> repeated);

/// What a repair of the row in the row settings has changed; empty if nothing.
std::u16string RepairedRowText(const Engine& engine, const PerPageRowCheck& repaired);

}  // namespace heron::engine

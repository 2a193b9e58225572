#include "changes/change_log.h"

#include <algorithm>
#include <functional>

#include "settings/papers.h"

namespace heron::engine {
namespace {

constexpr ControlIndex kMediaSize = Control(u"lpMediaSize");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");
constexpr ControlIndex kMediaSizeMark = Control(u"mediaSizeMark");
constexpr ControlIndex kOutputPaperMark = Control(u"outputPaperMark");

template <typename Row>
uint16_t IdOf(const Row& row) {
  return kControls[row.control].id;
}

/// Stable, and without the memory that the library's would take.
template <typename Row>
void SortById(std::span<Row> rows) {
  for (size_t i = 1; i < rows.size(); ++i) {
    for (size_t j = i; j > 0 && IdOf(rows[j]) < IdOf(rows[j - 1]); --j) std::swap(rows[j], rows[j - 1]);
  }
}

/// Leaves the last of each control in `rows` from `start` on, at the front; returns how many.
template <typename Row>
uint16_t ThinSorted(std::span<Row> rows, size_t start) {
  uint16_t count = 0;
  for (size_t i = start; i < rows.size(); ++i) {
    if (i + 1 < rows.size() && rows[i + 1].control == rows[i].control) continue;
    rows[count++] = rows[i];
  }
  return count;
}

std::span<Opposition> Opposing(ChangeLog& log) {
  return {log.opposition.data(), log.oppositionCount};
}

void SortEntries(ChangeLog& log, size_t start) {
  SortById(log.Entries());
  log.count = ThinSorted(log.Entries(), start);
}

void SortOpposition(ChangeLog& log) {
  SortById(Opposing(log));
  log.oppositionCount = ThinSorted(Opposing(log), 0);
}

/// The first entry that is kept: where the rules undid the user's own change, the first of the rules' kind that did.
size_t KeptFrom(const ChangeLog& log, ControlIndex control, uint16_t value) {
  const auto entries = log.Entries();
  for (size_t i = entries.size(); i-- > 0;) {
    if (entries[i].reason == Reason::kPair) return 0;
    if (entries[i].control != control || entries[i].value == value) continue;
    const Reason reason = entries[i].reason;
    return static_cast<size_t>(std::ranges::find(entries, reason, &LogEntry::reason) - entries.begin());
  }
  return 0;
}

/// A custom paper's mark opposes the change; the user knows the paper.
void NamePapers(const Engine& engine, ChangeLog& log) {
  const uint16_t count = log.oppositionCount;
  for (uint16_t i = 0; i < count; ++i) {
    Opposition& row = log.opposition[i];
    if (row.control == kMediaSizeMark) {
      row = {kMediaSize, engine.Value(kMediaSize)};
    } else if (row.control == kOutputPaperMark) {
      row = {kOutputPaper, engine.Value(kOutputPaper)};
      if (row.value == kSameAsDocument) AddOpposition(log, kMediaSize, engine.Value(kMediaSize));
    }
  }
}

}  // namespace

void KeepPriorityEntries(ChangeLog& log) {
  const auto decides_paper = [](const LogEntry& entry) {
    return entry.control == Control(u"POD_OnePerSheet_Check") || entry.control == Control(u"lpPRNType");
  };
  const auto pending = log.Pending();
  if (std::ranges::none_of(pending, decides_paper)) return;
  const auto kept = std::remove_if(pending.begin(), pending.end(), std::not_fn(decides_paper));
  log.count = static_cast<uint16_t>(log.mark + (kept - pending.begin()));
}

void CollapseLog(const Engine& engine, ChangeLog& log) {
  uint16_t count = 0;
  for (const LogEntry& entry : log.Entries()) {
    const std::span<LogEntry> kept(log.entries.data(), count);
    const auto earlier = std::ranges::find(kept, entry.control, &LogEntry::control);
    if (earlier == kept.end())
      log.entries[count++] = entry;
    else
      *earlier = entry;
  }
  log.count = count;
  const auto idle = [&engine](const LogEntry& entry) { return engine.Value(entry.control) == entry.value; };
  const auto entries = log.Entries();
  log.count = static_cast<uint16_t>(std::remove_if(entries.begin(), entries.end(), idle) - entries.begin());
}

void SortLog(ChangeLog& log) {
  SortEntries(log, 0);
  SortOpposition(log);
}

void OrderLog(const Engine& engine, ControlIndex control, uint16_t value, ChangeLog& log) {
  const bool is_button = kControls[control].type == ControlType::kButton;
  SortEntries(log, log.count == 0 || is_button ? 0 : KeptFrom(log, control, value));
  NamePapers(engine, log);
  SortOpposition(log);
}

}  // namespace heron::engine

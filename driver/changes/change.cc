// Requests and logs: rows, entries, opposition.
#include "changes/change.h"

#include <algorithm>
#include <utility>

namespace heron::engine {

const RequestRow* FindRow(const ChangeRequest& request, ControlIndex control) {
  const auto rows = request.Rows();
  const auto row = std::ranges::find(rows, control, &RequestRow::control);
  return row == rows.end() ? nullptr : &*row;
}

RequestRow* FindRow(ChangeRequest& request, ControlIndex control) {
  return const_cast<RequestRow*>(FindRow(std::as_const(request), control));
}

bool IsUserRow(const ChangeRequest& request, ControlIndex control) {
  return std::ranges::count(request.UserRows(), control, &RequestRow::control) != 0;
}

bool AppendRow(ChangeRequest& request, ControlIndex control, uint16_t old_value, uint16_t new_value) {
  if (control == kNoControl || FindRow(request, control) != nullptr) return false;
  request.rows[request.count++] = {control, old_value, new_value};
  return true;
}

bool AddEntry(const Engine& engine, ChangeLog& log, ControlIndex control, uint16_t value, Reason reason) {
  if (engine.Value(control) == value) return false;
  if (log.count == log.entries.size()) {
    log.full = true;
    return false;
  }
  log.entries[log.count++] = {control, value, reason};
  return true;
}

void AddOpposition(ChangeLog& log, ControlIndex control, uint16_t value) {
  if (log.oppositionCount == log.opposition.size())
    log.full = true;
  else
    log.opposition[log.oppositionCount++] = {control, value};
}

LogEntry* FindPending(ChangeLog& log, ControlIndex control) {
  for (size_t i = log.count; i > log.mark; --i) {
    if (log.entries[i - 1].control == control) return &log.entries[i - 1];
  }
  return nullptr;
}

}  // namespace heron::engine

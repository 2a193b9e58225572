// Refuses, before anything is written, changes that wouldn't be there when the settings are read again.
#pragma once

#include <string>
#include <vector>

#include "settings_change.h"

namespace heron::cli {

/// Throws exit code 4 for a request whose value no record of this kind keeps, whatever the other settings are: options
/// of the printer without `device`, values of open dialogs, what follows from other settings, sizes that a custom paper
/// can't have.
void CheckKeepable(const SettingsSession& opened, const RequestedChange& request, bool device);

/// The current value of the requested setting.
uint16_t ValueOfRequest(const UiState& ui, const RequestedChange& request);

/// Settings that the changes have reached, to be compared with what is read later. To be taken before the commit.
class Promises {
 public:
  Promises(const UiState& ui, const std::vector<ChangeRecord>& changes);

  /// Why one of them would be gone when the settings are read again, beginning with the request; empty if all stay. The
  /// sheet has been committed; nothing is stored for it.
  std::string WhatIsLost(SettingsSession& opened) const;
  /// The request whose value in `ui` differs from the promise; empty if there is none.
  std::string FirstBroken(const UiState& ui) const;

 private:
  struct Promise {
    RequestedChange request;
    uint16_t value;
  };
  std::vector<Promise> promises_;
};

}  // namespace heron::cli

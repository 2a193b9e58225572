// Passwords, and the identifiers that go with them: set from files or a prompt, checked by the rules of the dialogs
// that edit them, and shown as "***".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/command.h"
#include "pages/identity_fields.h"
#include "settings_session.h"

namespace heron::cli {

/// What was asked for with --secret.
class Secrets {
 public:
  void AddTo(CLI::App& command);
  bool empty() const { return requests_.empty(); }

  /// Takes the texts from where they are, before anything is opened. `takes_stdin`: standard input is wanted for
  /// something else. Throws exit code 2 for what can't be understood, 4 for characters that no text has, and what
  /// secret_input.h describes.
  void Read(bool takes_stdin);
  /// Makes the current user the owner of the settings, before anything else is changed: a sheet clears what belongs to
  /// another. What another user left is cleared here, too, and reported.
  void Own(SettingsSession& opened) const;
  /// Checks all, then stores all in the working settings. Throws exit code 4 for what the dialog would refuse.
  void Store(const SettingsSession& opened) const;

  /// "secureId: ***" for each that was set.
  void Print() const;
  Json ToJson() const;

 private:
  struct Secret {
    const pages::IdentityRule* rule;
    std::u16string text;
  };
  std::vector<std::string> requests_;
  std::vector<Secret> secrets_;
};

/// The identity texts of the settings, one a line, secrets as "***". All of them, or those that aren't empty.
void PrintIdentity(const UiState& ui, bool all);
/// The same: key and value, an empty text for what isn't set.
Json IdentityJson(const UiState& ui);

/// "--secret KEY=FILE sets it" if `key` names an identity text, else the empty text.
std::string SecretHint(std::string_view key);

}  // namespace heron::cli

// What every command of `heron library` works with: its options, and the library with the settings behind it.
#pragma once

#include <optional>
#include <string>

#include "common/command.h"
#include "presets/preset_library.h"
#include "settings_session.h"
#include "settings_text.h"
#include "terminal_view.h"

namespace heron::cli {

struct LibraryOptions {
  std::string printer;
  std::string entry;  ///< name or number
  std::string name;
  std::string text;
  std::string file;
  std::string folder;
  std::string direction;
  std::string in;
  std::string out;
  std::optional<std::string> with;  ///< names of parts, with commas between them
  std::string find;
  bool diff = false;
  bool list = false;
  bool none = false;
  bool json = false;
  ConsentOptions consent;
};

/// The library of a command with the settings behind it.
class LibrarySession {
 public:
  LibrarySession(const LibraryOptions& options, LibraryLoad load, bool corrects);

  SettingsSession& opened() { return opened_; }
  Printer& printer() { return printer_; }
  SettingsLibrary& library() { return *library_; }
  TerminalView& view() { return view_; }

  /// What the library has said since the last call, as news beside the answer.
  void PrintSayings();
  bool HasSaid() const { return view_.HasReports(); }

  /// Ends the command with what the library said last, or with `otherwise`.
  [[noreturn]] void Fail(const std::string& otherwise);

  int Place();
  /// The same of an entry whose settings are wanted.
  int PlaceToRead();

  /// The answer of a command that changed the library.
  void Answer(const std::string& schema, const std::string& sentence);

 private:
  const LibraryOptions& options_;
  Printer printer_;
  SettingsSession opened_;
  TerminalView view_;
  SettingsLibraryPtr library_;
};

std::string Quoted(std::u16string_view text);

// Each runs one command.
void ListLibrary(const LibraryOptions& options);
void ShowEntry(const LibraryOptions& options);
void ExportEntry(const LibraryOptions& options);
void DefaultEntry(const LibraryOptions& options);

/// A row for each setting whose value isn't `now`'s.
Json DifferencesJson(const std::vector<Setting>& settings, const std::vector<Setting>& now);

/// Makes the user's settings of a new queue what the entry says that `heron library default` chose. What goes wrong is
/// told on stderr: the queue then starts with its defaults.
void StartFromDefault(const std::string& printer);

}  // namespace heron::cli

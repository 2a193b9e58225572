// The settings that `heron picture` draws, and the pictures chosen for them: shared by the command, which prints them
// as JSON, and by the program heron-picture, which draws it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "common/command.h"
#include "presets/preset_library.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {

enum class PictureKind { kPaper, kMachine, kDevice, kStatus, kMargin, kCover };

struct PictureOptions {
  std::string kind;
  std::string printer;
  std::string in;
  std::string entry;  ///< name or number
  std::vector<std::string> requests;
  std::string out;
  int scale = 1;
  bool dark = false;
  bool yes = false;
  bool json = false;

  /// Adds the options to a command or program.
  void AddTo(CLI::App& app);
  /// The same options as words of a command line.
  std::vector<std::string> Words() const;
};

/// The working settings of a picture: a printer's own ones, a record's or an entry's, with the changes of the options
/// made on them and kept nowhere. Throws exit codes as `heron settings` does; `quality` and `watermark` are
/// known kinds that end with a failure.
class PictureSession {
 public:
  explicit PictureSession(const PictureOptions& options);

  PictureKind kind() const { return kind_; }
  UiState& ui() { return *ui_; }
  /// Descriptor, layers and labels (not const: the order of the status symbols is brought up to date).
  Json Answer();

 private:
  void MakeRequests(const PictureOptions& options);
  void TakeEntry(const std::string& entry);

  PictureKind kind_;
  Printer printer_;
  SettingsSession opened_;
  TerminalView view_;
  SettingsLibraryPtr library_;
  UiState* ui_;
};

}  // namespace heron::cli

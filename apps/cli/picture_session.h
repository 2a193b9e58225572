// The settings that `heron picture` draws, and the pictures chosen for them: shared by the command, which prints them
// as JSON, and by the program heron-picture, which draws it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "common/command.h"
#include "platform/api/canvas.h"
#include "presets/preset_library.h"
#include "settings_session.h"
#include "terminal_view.h"

namespace heron::cli {

enum class PictureKind { kPaper, kMachine, kDevice, kStatus, kMargin, kQuality, kWatermark, kCover };

struct PictureOptions {
  std::string kind;
  std::string printer;
  std::string in;
  std::string entry;  ///< name or number
  std::vector<std::string> requests;
  std::string sample;  ///< a picture of the user's own for `quality`, and its mask
  std::string mask;
  std::string out;
  int scale = 1;
  bool dark = false;
  bool yes = false;
  bool json = false;

  /// Adds the options to a command or program.
  void AddTo(CLI::App& app);
  /// Whether only heron-picture can answer: with a file, or where letters are measured.
  bool NeedsDrawing() const;
  /// The same options as words of a command line.
  std::vector<std::string> Words() const;
};

/// The working settings of a picture: a printer's own ones, a record's or an entry's, with the changes of the options
/// made on them and kept nowhere. Throws exit codes as `heron settings` does.
class PictureSession {
 public:
  explicit PictureSession(const PictureOptions& options);

  PictureKind kind() const { return kind_; }
  UiState& ui() { return *ui_; }
  /// Descriptor, layers and labels (not const: the order of the status symbols is brought up to date). `canvas`
  /// measures the letters of a watermark, which no other picture needs; `scale` is the watermark's too.
  Json Answer(platform::Canvas* canvas = nullptr, int scale = 1);

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

// The progress of a long print, as one line of the terminal that is overwritten. Nothing is shown without a terminal on
// stderr, or for a short print.
#pragma once

#include <chrono>
#include <string>

namespace heron::spool {

class Progress {
 public:
  Progress();
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Shows `text`, which takes the place of the text before it; most calls return without having drawn anything.
  void Show(const std::string& text);
  /// Empties the line: call it before any other output to the terminal.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool on_terminal_;
  Clock::time_point next_;  ///< no earlier than this the line is drawn again
  size_t width_ = 0;        ///< of what the line shows
};

}  // namespace heron::spool

// The progress line of a long print (progress.h).

#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

namespace heron::spool {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto kBeforeFirst = 300ms;  ///< a print that is done by then needs no progress
constexpr auto kBetween = 100ms;

}  // namespace

Progress::Progress() : on_terminal_(isatty(STDERR_FILENO) != 0), next_(Clock::now() + kBeforeFirst) {}

void Progress::Show(const std::string& text) {
  if (!on_terminal_) return;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kBetween;
  // Blanks over the rest of a longer text before it; no control sequence, so that a dumb terminal shows it too.
  const size_t rest = width_ - std::min(width_, text.size());
  std::cerr << '\r' << text << std::string(rest, ' ') << std::flush;
  width_ = std::max(text.size(), width_);
}

void Progress::Clear() {
  if (width_ == 0) return;
  std::cerr << '\r' << std::string(width_, ' ') << '\r' << std::flush;
  width_ = 0;
}

}  // namespace heron::spool

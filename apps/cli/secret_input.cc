// Reads secrets from files and from a terminal without echo (secret_input.h).

#include "secret_input.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <optional>

#include "common/command.h"

namespace heron::cli {
namespace {

/// More than any secret may have; what is longer isn't read to its end.
constexpr size_t kLongest = 1024;

constexpr std::array kEndingSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};
volatile std::sig_atomic_t caught_signal = 0;

/// Standard input without echo for a scope. A signal that would end or stop the program first brings the echo back.
class SilentTerminal {
 public:
  SilentTerminal() {
    caught_signal = 0;
    struct sigaction action {};
    action.sa_handler = [](int number) { caught_signal = number; };  // without SA_RESTART, so that the read ends
    for (size_t i = 0; i < kEndingSignals.size(); ++i) sigaction(kEndingSignals[i], &action, &actions_[i]);
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    silent.c_lflag |= ECHONL;  // the line end still shows, so that the cursor moves on
    silent_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
  }
  ~SilentTerminal() {
    if (silent_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    for (size_t i = 0; i < kEndingSignals.size(); ++i) sigaction(kEndingSignals[i], &actions_[i], nullptr);
    if (caught_signal != 0) raise(caught_signal);  // now with the handler of before, which ends the program
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;
  bool silent() const { return silent_; }

 private:
  termios before_{};
  std::array<struct sigaction, kEndingSignals.size()> actions_{};
  bool silent_ = false;
};

void DropLineEnd(std::string& text) {
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
}

[[noreturn]] void FailTooLong(const std::string& what) {
  throw Failure(kRefused, what + ": the text is far too long");
}

/// Reads byte by byte, so that the rest is left for who reads next. Nothing at the end of the input.
std::optional<std::string> ReadLine(const std::string& what) {
  std::string line;
  char byte = 0;
  while (caught_signal == 0) {
    const ssize_t count = read(STDIN_FILENO, &byte, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return line.empty() ? std::nullopt : std::optional(line);
    line += byte;
    if (byte == '\n') break;
    if (line.size() > kLongest) FailTooLong(what);
  }
  DropLineEnd(line);
  return line;
}

std::string AskOnce(const std::string& what, const char* again) {
  const SilentTerminal terminal;
  // Refused rather than shown: the prompt promises that nothing is seen.
  if (!terminal.silent())
    throw Failure(kFailed, what + ": this terminal can't hide what is typed; name a file instead");
  std::cerr << what << again << ": " << std::flush;
  const std::optional<std::string> line = ReadLine(what);
  if (!line || caught_signal != 0) throw Failure(kFailed, what + ": nothing was typed; nothing was changed");
  return *line;
}

}  // namespace

std::string ReadSecretFile(const std::string& what, const std::string& path) {
  const auto fail = [&](int error) {
    const int code = error == ENOENT || error == ENOTDIR ? kNotFound
                     : error == EACCES || error == EPERM ? kNotPermitted
                                                         : kFailed;
    throw Failure(code, what + ": can't read the file named for it: " + std::strerror(error) + "; write --secret " +
                            what + "=FILE, or - as FILE to type it");
  };
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) fail(errno);
  std::string text(kLongest + 1, '\0');
  size_t length = 0;
  ssize_t count = 0;
  do {
    count = read(file, text.data() + length, text.size() - length);
    if (count > 0) length += static_cast<size_t>(count);
  } while ((count > 0 && length < text.size()) || (count < 0 && errno == EINTR));
  const int error = count < 0 ? errno : 0;
  close(file);
  if (error != 0) fail(error);
  if (length > kLongest) FailTooLong(what);
  text.resize(length);
  DropLineEnd(text);
  return text;
}

std::string AskSecret(const std::string& what) {
  if (isatty(STDIN_FILENO) == 0) {
    caught_signal = 0;
    const std::optional<std::string> line = ReadLine(what);
    if (!line) throw Failure(kFailed, what + ": standard input has no line for it; nothing was changed");
    return *line;
  }
  const std::string typed = AskOnce(what, "");
  if (AskOnce(what, ", once more") != typed)
    throw Failure(kUsage, what + ": the two entries differ; nothing was changed");
  return typed;
}

}  // namespace heron::cli

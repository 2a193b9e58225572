// What the commands of `heron` share: exit codes, failures, answers as text or JSON, and the queue that a command works
// on.
//
// A command writes its answer to stdout and everything else to stderr. What goes wrong is thrown as a Failure, whose
// sentence tells the user what to do; main prints it and exits with its code. Text is UTF-8 here and UTF-16 below the
// command.
#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace CLI {
class App;
}

namespace heron::cli {

/// Exit codes; scripts rely on them. 7, the device doesn't answer, belongs to a command that doesn't exist yet.
enum ExitCode : int {
  kDone = 0,
  kFailed = 1,
  kUsage = 2,
  kConsent = 3,
  kRefused = 4,
  kNotFound = 5,
  kNotPermitted = 6,
};

/// Ends a command: a sentence for the user without the leading "heron: ", and the exit code.
class Failure : public std::runtime_error {
 public:
  Failure(int code, const std::string& sentence) : std::runtime_error(sentence), code_(code) {}
  int code() const { return code_; }

 private:
  int code_;
};

/// Throws what an error code of the platform means for the user; `doing` completes "heron: can't ...".
[[noreturn]] void FailWith(platform::DWORD status, std::string_view doing);

/// Keys stay in the order in which they were set.
using Json = nlohmann::ordered_json;

/// Prints `answer` (an object) with "schema": "heron.`schema`" and "version" in front.
void PrintJson(std::string_view schema, const Json& answer);

/// UTF-8 for a person: control characters, which could steer a terminal, become U+FFFD.
std::string Printable(std::u16string_view text);
std::string Printable(std::string_view text);

/// The same with line ends kept.
std::string PrintableLines(std::u16string_view text);

/// `text` padded with blanks to `width` characters of a terminal, as far as one code point takes one place.
std::string Padded(std::string_view text, size_t width);

/// Bold on a terminal, unless NO_COLOR is set; elsewhere the bare text.
std::string Heading(std::string_view text);

/// Those of `names` nearest to `wanted`, best first, at most three; case doesn't matter.
std::vector<std::string> NearestNames(std::string_view wanted, const std::vector<std::string>& names);
/// "did you mean a, b?" or the empty text.
std::string DidYouMean(std::string_view wanted, const std::vector<std::string>& names);

/// An open queue; closed at the end of the scope.
class Printer {
 public:
  /// Exit code 5, naming the nearest queues, if there is none of this name.
  explicit Printer(const std::string& name);
  ~Printer();
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;

  platform::HANDLE handle() const { return handle_; }
  /// The name as the driver takes it; it doesn't write to it.
  char16_t* name() { return name_.data(); }

 private:
  std::u16string name_;
  platform::HANDLE handle_ = nullptr;
};

/// Throws the failure for a queue that doesn't exist.
[[noreturn]] void FailUnknownPrinter(const std::string& name);

/// How questions are answered.
enum class Consent { kAsk, kYes, kNo };
/// What `consent` says, or what is typed on the terminal; nothing if there is no terminal. The question stands on
/// stderr already.
std::optional<bool> AnswerOf(Consent consent);

/// Folder that this program lies in, with a separator at its end; empty if it can't be told.
std::string ProgramFolder();
/// Becomes the program `name` that lies beside this one, with `words` as its arguments: terminal, exit code and signals
/// stay what they are. Fails only if it can't be run.
[[noreturn]] void BecomeProgram(const std::string& name, std::vector<std::string> words);
/// Folder of the driver's files as built or installed beside this program: "../lib/driver/".
std::string ProgramDriverFolder();

/// Tells what the user ought to know of the store (store::TakeNotices).
void PrintNotices();

/// Parses the command line, which runs the commands that it names, then `work`. The exit code; whatever went wrong has
/// been told on stderr.
int RunApp(CLI::App& app, int argc, char** argv, const std::function<void()>& work = nullptr);

/// Adds a subcommand with what every command has: --help and --version.
CLI::App* AddCommand(CLI::App& parent, const std::string& name, const std::string& description);

/// Each adds its group of subcommands to `app`; their callbacks do the work while the command line is parsed.
void AddPrinterCommands(CLI::App& app);
void AddRecordCommands(CLI::App& app);
void AddCatalogCommand(CLI::App& app);
void AddCapabilitiesCommand(CLI::App& app);
void AddSettingsCommand(CLI::App& app);
void AddControlsCommand(CLI::App& app);
void AddLibraryCommands(CLI::App& app);
void AddPrintCommand(CLI::App& app);
void AddSheetCommand(CLI::App& app);

}  // namespace heron::cli

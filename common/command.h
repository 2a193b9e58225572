// Shared by all commands: exit codes, failures, answers as text or JSON, and the queue of a command.
//
// A command writes its answer to stdout and everything else to stderr. Errors are thrown as Failure, whose message says
// what happened and what to do; main prints it and exits with its code. Text is UTF-8 here and UTF-16 in the driver.
#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/api/types.h"

namespace CLI {
class App;
}

namespace heron::cli {

/// Exit codes; scripts rely on them.
enum ExitCode : int {
  kDone = 0,
  kFailed = 1,
  kUsage = 2,
  kConsent = 3,
  kRefused = 4,
  kNotFound = 5,
  kNotPermitted = 6,
  kNoDevice = 7,  ///< the device doesn't answer, or there is no way to ask it
};

/// Ends a command: a sentence for the user without the leading "heron: ", and the exit code.
class Failure : public std::runtime_error {
 public:
  Failure(int code, const std::string& sentence) : std::runtime_error(sentence), code_(code) {}
  int code() const { return code_; }

 private:
  int code_;
};

/// Throws the Failure for an error code of the platform; `doing` completes "heron: can't ...".
[[noreturn]] void FailWith(platform::DWORD status, std::string_view doing);

/// Keeps keys in the order in which they were set.
using Json = nlohmann::ordered_json;

/// Prints `answer` (an object) with "schema": "heron.`schema`" and "version" in front.
void PrintJson(std::string_view schema, const Json& answer);

/// UTF-8 for display: control characters, which could control a terminal, become U+FFFD.
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
  enum class Needs : uint8_t { kDriver, kQueueAlone };
  /// Exit code 5, naming the nearest queues, if there is none of this name; 1 if the driver's files are needed and
  /// missing.
  explicit Printer(const std::string& name, Needs needs = Needs::kDriver);
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

/// Throws the failure for what the store last refused (store::LastStoreFailure), as `doing` something.
[[noreturn]] void FailStore(std::string_view doing);

/// Throws the failure for a queue that doesn't exist.
[[noreturn]] void FailUnknownPrinter(const std::string& name);

/// How questions are answered.
enum class Consent { kAsk, kYes, kNo };
/// The answer that `consent` gives, or what is typed on the terminal; nothing without a terminal. The question is on
/// stderr already.
std::optional<bool> AnswerOf(Consent consent);

/// Folder of this program with a separator at its end; empty if it is unknown.
std::string ProgramFolder();
/// Replaces this process by the program `name` in the same folder, with `words` as its arguments; terminal, exit code
/// and signals are then those of that program. Throws if it can't be run.
[[noreturn]] void BecomeProgram(const std::string& name, std::vector<std::string> words);
/// Folder of the driver's files as built or installed beside this program: "../lib/heron/driver/".
std::string ProgramDriverFolder();

/// Prints the store's notices (store::TakeNotices) to stderr.
void PrintNotices();

/// Parses the command line, which runs the commands that it names, then `work`. The exit code; failures
/// are reported on stderr.
int RunApp(CLI::App& app, int argc, char** argv, const std::function<void()>& work = nullptr);

/// Adds a subcommand with what every command has: --help and --version.
CLI::App* AddCommand(CLI::App& parent, const std::string& name, const std::string& description);

/// Each adds its group of subcommands to `app`; their callbacks do the work while the command line is parsed.
void AddPrinterCommands(CLI::App& app);
void AddRecordCommands(CLI::App& app);
void AddCatalogCommand(CLI::App& app);
void AddCapabilitiesCommand(CLI::App& app);
void AddSettingsCommand(CLI::App& app);
void AddDeviceCommands(CLI::App& app);
void AddControlsCommand(CLI::App& app);
void AddLibraryCommands(CLI::App& app);
void AddSummaryCommand(CLI::App& app);
void AddWatermarkCommands(CLI::App& app);
void AddFormCommands(CLI::App& app);
void AddPrintCommand(CLI::App& app);
void AddFaxCommands(CLI::App& app);
void AddSheetCommand(CLI::App& app);
void AddPagesCommands(CLI::App& app);
void AddFontsCommands(CLI::App& app);
void AddPictureCommand(CLI::App& app);

}  // namespace heron::cli

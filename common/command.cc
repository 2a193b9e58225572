// Answers, failures and queues, as every command needs them (command.h).

#include "command.h"

#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <new>
#include <numeric>

#include "command_line.h"
#include "platform/api/queues.h"
#include "platform/api/spooler.h"
#include "platform/api/text.h"
#include "platform/sqlite/store.h"

namespace heron::cli {
namespace {

namespace fs = std::filesystem;
using platform::DWORD;

constexpr const char* kResourceModule = "TVOR6T1.DLL";

bool named_store_failure = false;  ///< the message of the failure that ends the command names the store's file

struct Reason {
  DWORD status;
  int code;
  const char* sentence;
};

constexpr Reason kReasons[] = {
    {platform::kErrorFileNotFound, kNotFound, "it doesn't exist"},
    {platform::kErrorPathNotFound, kNotFound, "its folder doesn't exist"},
    {platform::kErrorAccessDenied, kNotPermitted,
     "permission denied; ask an administrator, or use a store of your own with HERON_HOME"},
    {platform::kErrorNotEnoughMemory, kFailed, "there isn't enough memory"},
    {platform::kErrorWriteFault, kFailed, "a write failed; check the disk and the folders above it"},
    {platform::kErrorDiskFull, kFailed, "the disk is full; make room and try again"},
    {platform::kErrorBusy, kFailed, "the store is in use by another program; try again in a moment"},
    {platform::kErrorRegistryCorrupt, kFailed, "it is damaged; try again, or see the message about it"},
    {platform::kErrorInvalidPrinterName, kUsage,
     "the name isn't valid for a printer: it is empty, too long, or has a comma or a control character"},
};

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

/// Edit distance of two texts.
size_t Distance(std::string_view a, std::string_view b) {
  std::vector<size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i + 1;
    for (size_t j = 0; j < b.size(); ++j) {
      const size_t replaced = diagonal + (a[i] != b[j]);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j + 1] + 1, row[j] + 1, replaced});
    }
  }
  return row.back();
}

/// Without its files the driver would show empty texts and choose nothing.
void CheckDriver(const std::u16string& printer) {
  platform::Queue queue;
  if (platform::FindQueue(printer, &queue) != platform::kErrorSuccess) return;
  const fs::path module = fs::path(platform::ToUtf8(queue.dataFile)).parent_path() / kResourceModule;
  std::error_code error;
  if (fs::is_regular_file(module, error)) return;
  const std::string name = Printable(queue.name);
  throw Failure(kFailed, "the driver's files of the printer \"" + name + "\" are missing: there is no \"" +
                             Printable(module.native()) + "\"; `heron printer add --replace \"" + name +
                             "\"` installs them again");
}

int Complain(const std::string& sentence, int code) {
  std::cerr << "heron: " << sentence << '\n';
  return code;
}

/// The reader of our answer has closed the pipe: `heron settings ... | head -1`.
bool ReaderHasLeft() {
  pollfd out{STDOUT_FILENO, POLLOUT, 0};
  return poll(&out, 1, 0) == 1 && (out.revents & POLLERR) != 0;
}

void Parse(CLI::App& app, CommandLine line) {
  try {
    std::reverse(line.words.begin(), line.words.end());  // the order in which the parser takes them
    app.parse(std::move(line.words));
  } catch (const CLI::CallForHelp&) {
    std::cout << HelpOf(*line.command);
    throw CLI::Success();
  } catch (const CLI::CallForVersion& version) {
    std::cout << version.what() << '\n';
    throw CLI::Success();
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) throw;
    throw Failure(kUsage, std::string(error.what()) + "; " + NearestOption(*line.command) + '`' +
                              CommandPath(*line.command) + " --help` shows how it is used");
  }
}

int ParseAndRun(CLI::App& app, int argc, char** argv, const std::function<void()>& work) {
  try {
    Parse(app, ReadCommandLine(app, {argv + 1, argv + argc}));
    if (work) work();
    return kDone;
  } catch (const CLI::Success&) {
    return kDone;
  } catch (const Failure& failure) {
    return Complain(failure.what(), failure.code());
  } catch (const std::bad_alloc&) {
    return Complain("there isn't enough memory", kFailed);
  } catch (const std::exception& error) {
    return Complain(error.what(), kFailed);
  }
}

}  // namespace

void FailWith(DWORD status, std::string_view doing) {
  const store::StoreFailure failure = store::LastStoreFailure();
  const bool of_store = failure.status == status && !failure.file.empty();
  named_store_failure = of_store;
  const std::string start =
      "can't " + std::string(doing) + (of_store ? " in \"" + Printable(failure.file.native()) + '"' : "") + ": ";
  for (const Reason& reason : kReasons) {
    if (reason.status == status) throw Failure(reason.code, start + reason.sentence);
  }
  throw Failure(kFailed, start + "the store or the system refused it (error " + std::to_string(status) +
                             "); check that the folder of HERON_HOME can be written");
}

void FailStore(std::string_view doing) {
  const DWORD status = store::LastStoreFailure().status;
  // Nothing of the store failed: only memory is left.
  FailWith(status == platform::kErrorSuccess ? platform::kErrorNotEnoughMemory : status, doing);
}

void PrintJson(std::string_view schema, const Json& answer) {
  Json document = {{"schema", "heron." + std::string(schema)}, {"version", 1}};
  document.update(answer);
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

std::string Printable(std::u16string_view text) {
  std::u16string clean(text);
  for (char16_t& c : clean) {
    // C0, DEL and C1 steer a terminal; the rest are direction overrides, which make a line read differently.
    if (c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069)) c = 0xFFFD;
  }
  return platform::ToUtf8(clean);
}

std::string PrintableLines(std::u16string_view text) {
  std::string lines;
  while (true) {
    const size_t end = text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    lines += Printable(line);
    if (end == std::u16string_view::npos) return lines;
    lines += '\n';
    text.remove_prefix(end + 1);
  }
}

std::string Printable(std::string_view text) {
  return Printable(platform::FromUtf8(text));
}

std::string Padded(std::string_view text, size_t width) {
  const auto is_start = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  const auto places = static_cast<size_t>(std::count_if(text.begin(), text.end(), is_start));
  return std::string(text) + std::string(width > places ? width - places : 0, ' ');
}

std::string Heading(std::string_view text) {
  static const bool bold = isatty(STDOUT_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr &&
                           Lower(std::getenv("TERM") != nullptr ? std::getenv("TERM") : "dumb") != "dumb";
  return bold ? "\033[1m" + std::string(text) + "\033[0m" : std::string(text);
}

std::vector<std::string> NearestNames(std::string_view wanted, const std::vector<std::string>& names) {
  std::vector<std::pair<size_t, std::string>> near;
  const std::string lower = Lower(wanted);
  for (const std::string& name : names) {
    const std::string other = Lower(name);
    // A part of a name counts as near: people type the word that they remember.
    const size_t distance = other.find(lower) != std::string::npos ? 1 : Distance(lower, other);
    if (distance <= std::max<size_t>(2, std::max(lower.size(), other.size()) / 3)) near.emplace_back(distance, name);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> best;
  for (size_t i = 0; i < near.size() && i < 3; ++i) best.push_back(near[i].second);
  return best;
}

std::string DidYouMean(std::string_view wanted, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : NearestNames(wanted, names)) {
    text += (text.empty() ? "did you mean \"" : ", \"") + Printable(name) + '"';
  }
  return text.empty() ? text : text + "?";
}

void FailUnknownPrinter(const std::string& name) {
  std::vector<std::u16string> queues;
  platform::ListQueues(&queues);
  std::vector<std::string> names;
  for (const std::u16string& queue : queues) names.push_back(platform::ToUtf8(queue));
  std::string hint = DidYouMean(name, names);
  if (hint.empty()) {
    hint = names.empty() ? "there is none yet; `heron printer add NAME` makes one" : "`heron printer list` names all";
  }
  throw Failure(kNotFound, "there is no printer \"" + Printable(name) + "\"; " + hint);
}

Printer::Printer(const std::string& name, Needs needs) : name_(platform::FromUtf8(name)) {
  if (needs == Needs::kDriver) CheckDriver(name_);
  if (platform::OpenPrinterW(name_.c_str(), &handle_, nullptr)) return;
  const DWORD status = platform::GetLastError();
  if (status == platform::kErrorInvalidPrinterName) FailUnknownPrinter(name);
  FailWith(status, "open the printer \"" + Printable(name) + '"');
}

Printer::~Printer() {
  platform::ClosePrinter(handle_);
}

std::optional<bool> AnswerOf(Consent consent) {
  if (consent != Consent::kAsk) return consent == Consent::kYes;
  if (isatty(STDIN_FILENO) == 0) return std::nullopt;
  std::string line;
  while (true) {
    std::cerr << "[yes/no] " << std::flush;
    if (!std::getline(std::cin, line)) return false;
    if (line == "y" || line == "yes" || line == "Yes" || line == "Y") return true;
    if (line == "n" || line == "no" || line == "No" || line == "N") return false;
  }
}

std::string ProgramFolder() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return error ? std::string() : program.parent_path().string() + '/';
}

void BecomeProgram(const std::string& name, std::vector<std::string> words) {
  std::string path = ProgramFolder() + name;
  std::vector<char*> arguments = {path.data()};
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  PrintNotices();  // this process won't get to the end of RunApp
  execv(path.c_str(), arguments.data());
  throw Failure(kFailed, "can't run " + name + ", which belongs beside heron: " + std::strerror(errno));
}

std::string ProgramDriverFolder() {
  const std::string programs = ProgramFolder();
  return programs.empty()
             ? programs
             : (fs::path(programs).parent_path().parent_path() / "lib" / "heron" / "driver").string() + '/';
}

void PrintNotices() {
  for (const std::string& notice : store::TakeNotices()) std::cerr << "heron: " << notice << '\n';
}

/// Names the file behind a failure, where the driver's own messages name only the consequence.
void PrintStoreFailure() {
  const store::StoreFailure failure = store::LastStoreFailure();
  for (const Reason& reason : kReasons) {
    // Rights that are missing may have been a question only.
    if (reason.status == failure.status && reason.code == kFailed && !failure.file.empty())
      Complain('"' + Printable(failure.file.native()) + "\": " + reason.sentence, kFailed);
  }
}

int RunApp(CLI::App& app, int argc, char** argv, const std::function<void()>& work) {
  // A reader that has read enough doesn't end a command in the middle of its work.
  std::signal(SIGPIPE, SIG_IGN);
  int code = ParseAndRun(app, argc, argv, work);
  // The driver reports "couldn't be stored" without a file; the reason comes from the store itself.
  if (code == kFailed && !named_store_failure) PrintStoreFailure();
  PrintNotices();
  std::cout.flush();
  if (!std::cout && code == kDone && !ReaderHasLeft())
    code = Complain("the answer couldn't be written to standard output", kFailed);
  return code;
}

CLI::App* AddCommand(CLI::App& parent, const std::string& name, const std::string& description) {
  CLI::App* command = parent.add_subcommand(name, description);
  command->set_help_flag("-h,--help", "Show how the command is used");
  command->set_version_flag("--version", "heron " HERON_VERSION, "Show the version");
  return command;
}

}  // namespace heron::cli

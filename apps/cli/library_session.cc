// The library of a command (library_session.h).
#include "library_session.h"

#include <iostream>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "library_text.h"

namespace heron::cli {
namespace {

/// What the library says, and what it means for a script.
struct Saying {
  TextNumber text;
  int code;
};
constexpr Saying kSayings[] = {
    {text::kSettingsFileNotWritten, kFailed},  {text::kSettingsFileNotCreated, kFailed},
    {text::kNotSavedInFolder, kNotPermitted},  {text::kNotASettingsFile, kFailed},
    {text::kSaveFileProtected, kNotPermitted}, {text::kFolderNotWritable, kNotPermitted},
    {text::kSaveNameMissing, kUsage},          {text::kSaveNameIllegal, kUsage},
    {text::kSaveNameTooLong, kUsage},          {text::kOrganizeNameMissing, kUsage},
    {text::kOrganizeNameIllegal, kUsage},      {text::kNameHasControlCharacter, kUsage},
    {text::kRegisterNameTooLong, kUsage},      {text::kRegisterExtension, kUsage},
    {text::kNameNotInCodePage, kUsage},        {text::kEntryGone, kNotFound},
    {text::kLibraryKeepsChanging, kFailed},    {text::kCommentNotInCodePage, kUsage},
};

/// Whether `text` is what the saying's text says, up to the first place in it.
bool Says(const Saying& saying, const std::string& text) {
  const std::u16string_view whole = GetUiString(saying.text);
  const size_t place = whole.find(u'%');
  return place == std::u16string_view::npos ? PrintableLines(whole) == text
                                            : text.starts_with(PrintableLines(whole.substr(0, place)));
}

int CodeOf(const std::string& text) {
  for (const Saying& saying : kSayings) {
    if (Says(saying, text)) return saying.code;
  }
  return kRefused;
}

std::string OneLine(std::string text) {
  for (size_t at; (at = text.find('\n')) != std::string::npos;) text.replace(at, 1, at == 0 ? "" : " ");
  return text;
}

}  // namespace

LibrarySession::LibrarySession(const LibraryOptions& options, LibraryLoad load, bool corrects)
    : options_(options),
      printer_(options.printer),
      opened_(printer_, options.printer, options.in, SettingsKind::kDocument),
      view_(options.consent.consent(), true) {
  opened_.Open(corrects);
  const LibraryWrites writes = options.consent.dry_run ? LibraryWrites::kNo : LibraryWrites::kYes;
  library_ = SettingsLibraryOpen(view_, opened_.ui(), opened_.resources(), load, writes);
  if (library_ == nullptr) {
    if (view_.wantedConsent()) Fail("");
    throw Failure(kFailed, "the library's list can't be read now, or is damaged; try again");
  }
  PrintSayings();
}

void LibrarySession::PrintSayings() {
  for (const ShownReport& report : view_.TakeReports()) {
    if (!report.asked) std::cerr << "heron: " << OneLine(report.text) << '\n';
  }
}

void LibrarySession::Fail(const std::string& otherwise) {
  const std::vector<ShownReport> reports = view_.TakeReports();
  if (reports.empty()) throw Failure(kRefused, otherwise);
  const ShownReport& last = reports.back();
  if (!last.asked) throw Failure(CodeOf(last.text), OneLine(last.text));
  if (view_.wantedConsent())
    throw Failure(kConsent,
                  "nothing was changed; agree with --yes, refuse with --no, or run on a terminal to be asked");
  throw Failure(kConsent, OneLine(last.text) + " Declined; nothing was changed");
}

int LibrarySession::Place() {
  return PlaceOfEntry(*library_, options_.entry);
}

int LibrarySession::PlaceToRead() {
  const int place = Place();
  const LibraryEntry& entry = *library_->At(place);
  if (entry.isAway) {
    throw Failure(kNotFound, "the file \"" + Printable(entry.location.Path()) +
                                 "\" can't be reached now: its folder isn't there or doesn't answer; connect the "
                                 "disk and try again");
  }
  return place;
}

void LibrarySession::Answer(const std::string& schema, const std::string& sentence) {
  if (options_.json)
    return PrintJson(schema, {{"applied", !options_.consent.dry_run}, {"entries", EntriesJson(*library_)}});
  std::cout << sentence << (options_.consent.dry_run ? " Nothing was changed (--dry-run).\n" : "\n");
}

std::string Quoted(std::u16string_view text) {
  return '"' + Printable(text) + '"';
}

}  // namespace heron::cli

// The question before a secure print or a job for a box goes out.
#include "catalog/strings.h"
#include "escapes/job_dialogue.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/document_events.h"
#include "printpath/handlers.h"
#include "settings/text_scramble.h"

namespace heron {
namespace {

using namespace platform;

namespace output = value::lpOutputMethod;

std::u16string_view Text(TextNumber id) {
  return GetUiString(id);
}

std::u16string OrNone(const std::u16string& identifier) {
  return identifier.empty() ? std::u16string(Text(text::kNone)) : identifier;
}

constexpr std::u16string_view kHiddenSecret = u"***";  ///< hides the length too

/// The identifier as it may be seen.
std::u16string ShownId(const DriverEnv& record) {
  const std::u16string identifier = GetText<"secureId">(record);
  const bool hidden = !identifier.empty() && !MessagesMayShowSecrets();
  return hidden ? std::u16string(kHiddenSecret) : OrNone(identifier);
}

/// The password as it may be seen.
std::u16string ShownPassword(const DriverEnv& record, const JobState& state) {
  std::u16string password = TextScramble(GetText<"securePassword">(record), SecretKind::kSecurePrint);
  if (!password.empty() && !MessagesMayShowSecrets()) return std::u16string(kHiddenSecret);
  const bool mask = ReadAt<uint16_t>(state, JobStateBlock::kMaskPassword) == 1 || IsOn<"undisplayPassword">(record);
  if (mask) password.assign(password.size(), u'*');
  return password;
}

int Ask(const std::u16string& question, TextNumber caption) {
  return ShowMessage(question, Text(caption), MB_OKCANCEL | MB_ICONQUESTION);
}

int AskSecurePrint(const DriverEnv& record, const JobState& state) {
  std::u16string question(Text(text::kSecurePrintIntro));
  question.append(Text(text::kSecureIdLine)).append(ShownId(record));
  question.append(Text(text::kPasswordLine)).append(ShownPassword(record, state)).append(Text(text::kAskToContinue));
  return Ask(question, text::kSecurePrintQuestion);
}

int AskBox(const DriverEnv& record, uint8_t method) {
  std::u16string question(Text(text::kBoxIntro));
  question.append(Text(method == output::kSaveToBox ? text::kMethodBoxLine : text::kMethodBoxAndPrintLine));
  question.append(Text(text::kFileNameLine)).append(OrNone(GetText<"boxFileName">(record)));
  question.append(Text(text::kBoxNumberLine))
      .append(OrNone(GetText<"boxNumber">(record)))
      .append(Text(text::kAskToContinue));
  return Ask(question, text::kBoxQuestion);
}

int Confirm(const DocumentEvent& event) {
  const auto record = FetchJobRecord(event.hdc);
  const auto state = record == nullptr ? nullptr : FetchJobState(event.hdc);
  if (state == nullptr) return kFailed;
  const StringsInUse texts;
  const uint8_t method = Get<"lpOutputMethod">(*record);
  int answer = IDOK;
  if (method == output::kSecure && ReadAt<uint32_t>(*state, JobStateBlock::kConfirmSecure) == 1) {
    answer = AskSecurePrint(*record, *state);
  } else if ((method == output::kSaveToBox || method == output::kSaveToBoxAndPrint) &&
             ReadAt<uint32_t>(*state, JobStateBlock::kConfirmBox) == 1) {
    answer = AskBox(*record, method);
  }
  return answer == IDOK || CancelJob(event.hdc) ? kGoOn : kFailed;
}

}  // namespace

int OnOutputConfirmation(const DocumentEvent& event) {
  if (event.event == DOCUMENTEVENT_STARTDOC) {
    return SendEscape<"EscOutputStart">(event.hdc) ? kGoOn : kFailed;
  }
  return event.event == DOCUMENTEVENT_STARTDOCPOST ? Confirm(event) : kGoOn;
}

}  // namespace heron

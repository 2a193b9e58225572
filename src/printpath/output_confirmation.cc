// The question before a secure print or a job for a box goes out.
#include "catalog/strings.h"
#include "escapes/job_dialogue.h"
#include "platform/document_events.h"
#include "printpath/handlers.h"
#include "settings/text_scramble.h"

namespace heron {
namespace {

using namespace platform;

/// Values of lpOutputMethod.
enum : uint8_t { kSecurePrint = 2, kBox = 3, kBoxAndPrint = 4 };

enum TextId : uint32_t {
  kNone = 21006,
  kContinue = 32001,
  kSecureCaption = 32008,
  kSecureIntro = 32009,
  kPassword = 32011,
  kBoxCaption = 32012,
  kBoxIntro = 32013,
  kMethodBox = 32014,
  kMethodBoxAndPrint = 32015,
  kBoxNumber = 32017,
  kSecureId = 32028,
  kFileName = 32029,
};

std::u16string_view Text(TextId id) {
  return GetUiString(id);
}

std::u16string OrNone(const std::u16string& identifier) {
  return identifier.empty() ? std::u16string(Text(kNone)) : identifier;
}

/// The password as it may be seen.
std::u16string ShownPassword(const DriverEnv& record, const JobState& state) {
  std::u16string password = TextScramble(GetText<"securePassword">(record), SecretKind::kSecurePrint);
  const bool mask = ReadAt<uint16_t>(state, JobStateBlock::kMaskPassword) == 1 || Get<"undisplayPassword">(record) == 1;
  if (mask) password.assign(password.size(), u'*');
  return password;
}

int Ask(const std::u16string& question, TextId caption) {
  return ShowMessage(question, Text(caption), MB_OKCANCEL | MB_ICONQUESTION);
}

int AskSecurePrint(const DriverEnv& record, const JobState& state) {
  std::u16string question(Text(kSecureIntro));
  question.append(Text(kSecureId)).append(OrNone(GetText<"secureId">(record)));
  question.append(Text(kPassword)).append(ShownPassword(record, state)).append(Text(kContinue));
  return Ask(question, kSecureCaption);
}

int AskBox(const DriverEnv& record, uint8_t method) {
  std::u16string question(Text(kBoxIntro));
  question.append(Text(method == kBox ? kMethodBox : kMethodBoxAndPrint));
  question.append(Text(kFileName)).append(OrNone(GetText<"boxFileName">(record)));
  question.append(Text(kBoxNumber)).append(OrNone(GetText<"boxNumber">(record))).append(Text(kContinue));
  return Ask(question, kBoxCaption);
}

int Confirm(const DocumentEvent& event) {
  const auto record = FetchJobRecord(event.hdc);
  const auto state = record == nullptr ? nullptr : FetchJobState(event.hdc);
  if (state == nullptr) return kFailed;
  const StringsInUse texts;
  const uint8_t method = Get<"lpOutputMethod">(*record);
  int answer = IDOK;
  if (method == kSecurePrint && ReadAt<uint32_t>(*state, JobStateBlock::kConfirmSecure) == 1) {
    answer = AskSecurePrint(*record, *state);
  } else if ((method == kBox || method == kBoxAndPrint) && ReadAt<uint32_t>(*state, JobStateBlock::kConfirmBox) == 1) {
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

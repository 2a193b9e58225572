// The identity texts of the settings: keys, limits, owner, and changes by --secret (secrets.h).

#include "secrets.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <iostream>
#include <iterator>

#include "common/field_json.h"
#include "pages/text_settings.h"
#include "platform/api/text.h"
#include "secret_input.h"

namespace heron::cli {
namespace {

using pages::IdentityRule;
using pages::kIdentityRules;
using pages::TextFault;
using pages::TextSetting;

constexpr char kHidden[] = "***";

/// For a person: what a text is, and the settings that it is used with.
struct IdentityLabel {
  TextSetting setting;
  const char* label;
  const char* usedWith;
};
constexpr IdentityLabel kLabels[] = {
    {TextSetting::kSecureId, "Secure print ID", "lpOutputMethod=2"},
    {TextSetting::kSecurePassword, "Secure print password", "lpOutputMethod=2"},
    {TextSetting::kSecureCodeA, "First code of the job", ""},
    {TextSetting::kSecureCodeB, "Second code of the job", ""},
    {TextSetting::kBoxNumber, "Box number", "lpOutputMethod=3 or 4"},
    {TextSetting::kBoxFileName, "File name in the box", "lpOutputMethod=3 or 4"},
    {TextSetting::kAuthUserName, "User name", "UserAuth_Check=1 and lpAuthUserMode=2"},
    {TextSetting::kAuthPassword, "User password", "UserAuth_Check=1 and lpAuthUserMode=2"},
    {TextSetting::kDepartmentName, "Department name", "SecMana_Check=1"},
    {TextSetting::kDepartmentPassword, "Department password", "SecMana_Check=1"},
};
static_assert(std::ranges::equal(kLabels, kIdentityRules, {}, &IdentityLabel::setting, &IdentityRule::setting));

const IdentityLabel& LabelOf(const IdentityRule& rule) {
  return kLabels[&rule - std::begin(kIdentityRules)];
}

/// The record's field, whose name is the key.
const EnvField& FieldOf(const IdentityRule& rule) {
  return *Params().params[ParamIndexOf(static_cast<uint16_t>(rule.setting))].field;
}

std::string KeyOf(const IdentityRule& rule) {
  return std::string(FieldOf(rule).name);
}

const IdentityRule* FindRule(std::string_view key) {
  const auto same = [key](const IdentityRule& rule) {
    return std::ranges::equal(KeyOf(rule), key,
                              [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
  };
  const auto rule = std::ranges::find_if(kIdentityRules, same);
  return rule == std::end(kIdentityRules) ? nullptr : &*rule;
}

/// The text as it may be shown; empty for none.
std::string Shown(const UiState& ui, const IdentityRule& rule) {
  const std::u16string text = pages::IdentityText(ui, rule.setting);
  return text.empty() || !record::IsSecret(FieldOf(rule)) ? Printable(text) : kHidden;
}

std::u16string AsText(const std::string& key, const std::string& bytes) {
  const std::u16string text = platform::FromUtf8(bytes);
  // Invalid bytes became U+FFFD, which would be a password that the user can't type.
  if (platform::ToUtf8(text) != bytes) throw Failure(kRefused, key + ": the text isn't UTF-8");
  if (std::ranges::any_of(text, [](char16_t c) { return c < u' ' || c == 0x7F; }))
    throw Failure(kRefused, key + ": the text has a control character or more than one line");
  return text;
}

std::string WhatIsAllowed(const IdentityRule& rule) {
  switch (rule.fieldClass) {
    case pages::FieldClass::kPrintable:
      return "letters, digits and signs of ASCII, but no double quote (\") and no plus sign (+)";
    case pages::FieldClass::kDigit:
      return "digits only";
    case pages::FieldClass::kName:
      return "no double quote (\") and no plus sign (+)";
  }
  return {};
}

/// Says what a dialog would refuse, without the text itself.
void CheckFault(const UiState& ui, const IdentityRule& rule, std::u16string_view text) {
  const auto refuse = [&](const std::string& why) { throw Failure(kRefused, KeyOf(rule) + ": " + why); };
  switch (pages::FindFault(ui, rule.setting, text)) {
    case TextFault::kNone:
      return;
    case TextFault::kEmpty:
      return refuse("it may not be empty");
    case TextFault::kTooLong:
      return refuse("it is too long; it may have " + std::to_string(rule.limit) +
                    (rule.fieldClass == pages::FieldClass::kName ? " bytes" : " characters"));
    case TextFault::kBadCharacter:
      return refuse("it holds a character that can't be used in it; use " + WhatIsAllowed(rule));
    case TextFault::kOnlyZeros:
      return refuse("give a number from 1 to " + std::string(rule.limit, '9'));
  }
}

}  // namespace

void Secrets::AddTo(CLI::App& command) {
  command
      .add_option("--secret", requests_,
                  "Set a password or identifier from FILE (- asks for it without echo); "
                  "`heron settings -l` lists the keys")
      ->take_all()
      ->allow_extra_args(false)
      ->type_name("KEY=FILE");
}

void Secrets::Read(bool takes_stdin) {
  for (const std::string& request : requests_) {
    const size_t equals = request.find('=');
    const std::string key = request.substr(0, equals);
    if (equals == std::string::npos || equals + 1 == request.size())
      throw Failure(kUsage, "write --secret KEY=FILE, with - as FILE to be asked for it");
    const IdentityRule* const rule = FindRule(key);
    if (rule == nullptr) {
      std::vector<std::string> keys;
      for (const IdentityRule& known : kIdentityRules) keys.push_back(KeyOf(known));
      const std::string hint = DidYouMean(key, keys);
      throw Failure(kUsage, "there is no secret \"" + Printable(key) + "\"; " +
                                (hint.empty() ? "`heron settings -l` lists all" : hint));
    }
    if (std::ranges::any_of(secrets_, [rule](const Secret& secret) { return secret.rule == rule; }))
      throw Failure(kUsage, KeyOf(*rule) + " is given twice");
    // The request is never printed: a user who writes the secret itself behind the = would see it in the message.
    const std::string path = request.substr(equals + 1);
    if (path == "-" && takes_stdin)
      throw Failure(kUsage, KeyOf(*rule) + " can't come from standard input too; name a file");
    const std::string name = KeyOf(*rule);
    secrets_.push_back({rule, AsText(name, path == "-" ? AskSecret(name) : ReadSecretFile(name, path))});
  }
}

void Secrets::Own(SettingsSession& opened) const {
  if (empty()) return;
  if (pages::TakeUnowned(opened.engine()) == pages::OwnerCheck::kAnotherUser)
    std::cerr << "heron: the settings were another user's; passwords, identifiers and the output method are cleared\n";
}

void Secrets::Store(const SettingsSession& opened) const {
  // All are checked before the first is set: one that is refused changes nothing.
  for (const Secret& secret : secrets_) CheckFault(opened.ui(), *secret.rule, secret.text);
  for (const Secret& secret : secrets_) {
    pages::SetIdentityText(opened.ui(), secret.rule->setting, secret.text);
    // Read back: with a password that isn't stored exactly the user couldn't release the job.
    if (pages::IdentityText(opened.ui(), secret.rule->setting) != secret.text)
      throw Failure(kFailed, KeyOf(*secret.rule) + ": the settings don't keep it; nothing was changed");
  }
}

void Secrets::Print() const {
  for (const Secret& secret : secrets_) {
    const IdentityLabel& label = LabelOf(*secret.rule);
    std::cout << label.label << ": " << (secret.text.empty() ? "(empty)" : kHidden);
    if (*label.usedWith != '\0' && !secret.text.empty()) std::cout << ", used with " << label.usedWith;
    std::cout << '\n';
  }
}

Json Secrets::ToJson() const {
  Json rows = Json::array();
  for (const Secret& secret : secrets_)
    rows.push_back({{"key", KeyOf(*secret.rule)}, {"value", secret.text.empty() ? "" : kHidden}});
  return rows;
}

void PrintIdentity(const UiState& ui, bool all) {
  bool titled = false;
  for (const IdentityRule& rule : kIdentityRules) {
    const std::string shown = Shown(ui, rule);
    if (shown.empty() && !all) continue;
    if (!titled) std::cout << '\n' << Heading("Identity (--secret KEY=FILE)") << '\n';
    titled = true;
    std::cout << "  " << Padded(LabelOf(rule).label, 42) << ' ' << Padded(KeyOf(rule), 28) << ' '
              << (shown.empty() ? "(empty)" : shown) << '\n';
  }
}

Json IdentityJson(const UiState& ui) {
  Json rows = Json::array();
  for (const IdentityRule& rule : kIdentityRules) {
    rows.push_back({{"key", KeyOf(rule)}, {"label", LabelOf(rule).label}, {"value", Shown(ui, rule)}});
  }
  return rows;
}

std::string SecretHint(std::string_view key) {
  const IdentityRule* const rule = FindRule(key);
  return rule == nullptr ? std::string() : "--secret " + KeyOf(*rule) + "=FILE sets it";
}

}  // namespace heron::cli

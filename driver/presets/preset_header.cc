// Name, comment and identity (preset_header.h).
#include "presets/preset_header.h"

#include <algorithm>

#include "platform/api/characters.h"
#include "presets/key_writer.h"

namespace heron {
namespace {

using platform::WholeCharacters;

constexpr std::string_view kNameSection = "IP_SETTING LIBRARY NAME";
constexpr std::string_view kCommentSection = "IP_SETTING LIBRARY COMMENT";
constexpr std::string_view kIdentitySection = "IP_SETTING LIBRARY DRIVERINFO";
constexpr std::string_view kAttributes = "attributes";
constexpr std::string_view kLineCount = "commentX";

struct IdentityText {
  std::string_view key;
  std::u16string DriverIdentity::*member;
  std::u16string_view fallback;
};
constexpr IdentityText kFirstTexts[] = {{"manufacture", &DriverIdentity::manufacture, u""},
                                        {"product", &DriverIdentity::product, u""},
                                        {"system", &DriverIdentity::system, u""},
                                        {"model", &DriverIdentity::model, u""},
                                        {"version", &DriverIdentity::version, u""}};
constexpr IdentityText kLastTexts[] = {{"DrvLanguage", &DriverIdentity::language, u""},
                                       {"DrvMachineDestination", &DriverIdentity::destination, u"error"}};

std::string Starred(std::u16string_view text) {
  std::string bytes = "*";
  AppendLineText(text, &bytes);
  return bytes + '*';
}

/// The text between two stars; false if they aren't there.
bool Unstar(std::u16string_view text, std::u16string_view* inner) {
  if (text.size() < 2 || text.front() != u'*' || text.back() != u'*') return false;
  *inner = text.substr(1, text.size() - 2);
  return true;
}

/// As the profile call reads it into a buffer of `length` characters and a terminator.
std::u16string ReadText(const platform::Profile& file, std::string_view section, std::string_view key,
                        std::u16string_view fallback, size_t length) {
  std::string_view bytes;
  if (!file.Get(section, key, &bytes)) return std::u16string(fallback);
  const std::u16string text = platform::FromAnsi(bytes);
  return std::u16string(WholeCharacters(std::u16string_view(text).substr(0, text.find(u'\0')), length));
}

int32_t ReadNumber(const platform::Profile& file, std::string_view section, std::string_view key, int32_t fallback) {
  std::string_view bytes;
  return file.Get(section, key, &bytes) ? platform::LeadingNumber(bytes) : fallback;
}

std::u16string_view BaseName(std::u16string_view path) {
  path.remove_prefix(path.rfind(platform::kPathSeparator) + 1);  // npos + 1 is 0
  const size_t dot = path.rfind(u'.');
  return dot == 0 ? path : path.substr(0, dot);
}

std::string ReservedKey(int number) {
  return "reserved" + std::to_string(number);
}

}  // namespace

void WriteLibraryName(platform::Profile& file, std::u16string_view name) {
  file.Set(kNameSection, "name", Starred(WholeCharacters(name, kLibraryNameLength)));
}

std::u16string ReadLibraryName(const platform::Profile& file, std::u16string_view path) {
  const std::u16string text = ReadText(file, kNameSection, "name", u"**", kLibraryNameLength + 2);
  std::u16string_view name;
  return std::u16string(Unstar(text, &name) && !name.empty() ? name : BaseName(path));
}

void WriteLibraryComment(platform::Profile& file, std::u16string_view comment) {
  file.Remove(kCommentSection);
  const platform::Profile::SectionId section = file.Add(kCommentSection);
  int count = 0;
  for (const std::u16string_view line : SplitLines(comment)) {
    file.Append(section, std::to_string(count++), Starred(WholeCharacters(line, kLibraryCommentLength)));
  }
  file.Append(section, kLineCount, std::to_string(count));
}

std::u16string ReadLibraryComment(const platform::Profile& file) {
  const int32_t count = ReadNumber(file, kCommentSection, kLineCount, 0);
  std::u16string comment;
  for (int32_t i = 0; i < count; ++i) {
    const std::u16string text = ReadText(file, kCommentSection, std::to_string(i), u"**", kLibraryCommentLength + 2);
    std::u16string_view line;
    if (!Unstar(text, &line)) return {};
    if (i > 0) comment += u"\r\n";
    comment += line;
    if (comment.size() > kLibraryCommentLength) return {};
  }
  return comment;
}

void WriteDriverIdentity(platform::Profile& file, const DriverIdentity& identity) {
  const auto put_text = [&](const IdentityText& text) {
    std::string bytes;
    AppendLineText(WholeCharacters(identity.*text.member, kIdentityTextLength), &bytes);
    file.Set(kIdentitySection, text.key, bytes);
  };
  for (const IdentityText& text : kFirstTexts) put_text(text);
  file.Set(kIdentitySection, "versionnum", std::to_string(identity.versionNumber));
  file.Set(kIdentitySection, "usetversion", std::to_string(identity.usetVersion));
  for (const IdentityText& text : kLastTexts) put_text(text);
  for (int i = 0; i < kReservedCount; ++i) {
    file.Set(kIdentitySection, ReservedKey(i), std::to_string(identity.reserved[i]));
  }
}

void WriteFileAttributes(platform::Profile& file, int32_t attributes) {
  file.Set(kIdentitySection, kAttributes, std::to_string(attributes));
}

bool ReadDriverIdentity(const platform::Profile& file, DriverIdentity* identity) {
  const auto take_text = [&](const IdentityText& text) {
    identity->*text.member = ReadText(file, kIdentitySection, text.key, text.fallback, kIdentityTextLength);
  };
  for (const IdentityText& text : kFirstTexts) take_text(text);
  for (const IdentityText& text : kLastTexts) take_text(text);
  identity->usetVersion = ReadNumber(file, kIdentitySection, "usetversion", 0);
  for (int i = 0; i < kReservedCount; ++i) {
    identity->reserved[i] = ReadNumber(file, kIdentitySection, ReservedKey(i), 0);
  }
  identity->attributes = ReadNumber(file, kIdentitySection, kAttributes, 1);
  return !identity->manufacture.empty() && !identity->product.empty();
}

}  // namespace heron

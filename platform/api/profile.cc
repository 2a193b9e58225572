// Profiles in memory, and the profile calls over them (profile.h).
//
// A file is cut into sections once; a section is cut into lines only when a key of it is replaced.
#include "platform/api/profile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/api/characters.h"
#include "platform/api/guarded.h"
#include "platform/api/text.h"

namespace heron::platform {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Plain loops: lines are short, and a search through a set of characters costs a call for each of them.

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

bool EndsKey(char c) {
  return c == '=' || c == '\r' || c == '\n';
}

std::string_view TrimFront(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view Trim(std::string_view text) {
  text = TrimFront(text);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// The line without its end, or its part before a CR.
std::string_view WithoutEnd(std::string_view line) {
  return line.substr(
      0, static_cast<size_t>(std::ranges::find_if(line, [](char c) { return c == '\r' || c == '\n'; }) - line.begin()));
}

/// The next line of `rest` with its end, taken off it.
std::string_view CutLine(std::string_view& rest) {
  const std::string_view line = rest.substr(0, std::min(rest.find('\n'), rest.size() - 1) + 1);
  rest.remove_prefix(line.size());
  return line;
}

/// Name of the heading that `line` is; empty if it is none.
std::string_view HeadingName(std::string_view line) {
  line = TrimFront(line);
  return line.size() > 4 && line.front() == '[' && line.ends_with("]\r\n") ? line.substr(1, line.size() - 4)
                                                                           : std::string_view();
}

std::string_view KeyOf(std::string_view line) {
  return Trim(line.substr(0, static_cast<size_t>(std::ranges::find_if(line, EndsKey) - line.begin())));
}

std::string_view ValueOf(std::string_view line) {
  line = WithoutEnd(line);
  const size_t sign = line.find('=');
  return sign == std::string_view::npos ? std::string_view() : Trim(line.substr(sign + 1));
}

/// Place of the next '[' that begins a line, blanks apart, at or behind `from`; the size of `bytes` if there is none.
size_t NextHeading(std::string_view bytes, size_t from) {
  for (size_t at = bytes.find('[', from); at != std::string_view::npos; at = bytes.find('[', at + 1)) {
    size_t start = at;
    while (start > 0 && IsBlank(bytes[start - 1])) --start;
    if (start == 0 || bytes[start - 1] == '\n') return start;
  }
  return bytes.size();
}

std::string LineOf(std::string_view key, std::string_view value) {
  std::string line;
  line.reserve(key.size() + value.size() + 3);
  return line.append(key).append(1, '=').append(value).append(kLineEnd);
}

bool IsEmptyLine(std::string_view line) {
  return Trim(WithoutEnd(line)).empty();
}

/// Where a new key of a section goes: behind its last line that isn't empty.
size_t EndOfKeys(std::string_view text) {
  if (!text.ends_with("\n\r\n") && !text.ends_with("\n\n")) return text.size();
  const size_t last = text.find_last_not_of("\r\n \t");
  return last == std::string_view::npos ? text.size() : std::min(text.find('\n', last), text.size() - 1) + 1;
}

/// The view without one pair of quotation marks.
std::string_view Unquote(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

/// A file that isn't there is an empty profile; any other failure is one.
DWORD LoadOrStart(const char16_t* path, std::string* bytes) {
  const DWORD status = ReadProfileBytes(path, bytes);
  return status == kErrorFileNotFound ? kErrorSuccess : status;
}

/// A caller's text as a line can hold it: no line end, no blanks around it.
std::string ToAnsi(std::u16string_view text) {
  std::string bytes;
  AppendAnsi(text, &bytes);
  std::ranges::replace_if(
      bytes, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return std::string(Trim(bytes));
}

/// Whether the value of a key could be had.
bool ReadValue(const char16_t* section, const char16_t* key, const char16_t* path, std::string* value) {
  std::string bytes;
  if (section == nullptr || key == nullptr || path == nullptr) return false;
  if (ReadProfileBytes(path, &bytes) != kErrorSuccess) return false;
  const Profile profile(bytes);
  std::string_view found;
  if (!profile.Get(ToAnsi(section), ToAnsi(key), &found)) return false;
  *value = found;
  return true;
}

}  // namespace

Profile::Profile(std::string_view bytes) {
  for (size_t at = 0; at < bytes.size();) {
    std::string_view line = bytes.substr(at);
    line = CutLine(line);
    const size_t end = NextHeading(bytes, at + line.size());
    Section section;
    section.name = HeadingName(line);
    section.headingSize = section.name.empty() ? 0 : line.size();
    section.text = bytes.substr(at, end - at);
    if (!section.name.empty()) byName_.try_emplace(section.name, sections_.size());
    sections_.push_back(std::move(section));
    at = end;
  }
}

Profile::SectionId Profile::Find(std::string_view section) const {
  const auto found = byName_.find(std::string(section));
  return found == byName_.end() ? kNone : found->second;
}

Profile::SectionId Profile::Add(std::string_view section) {
  // What a file ends with becomes a line of its own.
  if (!sections_.empty()) {
    std::string& last = sections_.back().lines ? sections_.back().lines->text.back() : sections_.back().text;
    if (!last.empty() && !last.ends_with('\n')) last += kLineEnd;
  }
  Section added;
  added.name = section;
  added.text.append(1, '[').append(section).append("]\r\n");
  added.headingSize = added.text.size();
  byName_.try_emplace(added.name, sections_.size());
  sections_.push_back(std::move(added));
  return sections_.size() - 1;
}

void Profile::Remove(std::string_view section) {
  if (Find(section) == kNone) return;
  std::erase_if(sections_, [&](const Section& s) { return s.name == section; });
  byName_.clear();
  for (SectionId id = 0; id < sections_.size(); ++id) {
    if (!sections_[id].name.empty()) byName_.try_emplace(sections_[id].name, id);
  }
}

bool Profile::Get(std::string_view section, std::string_view key, std::string_view* value) const {
  const SectionId id = Find(section);
  if (id == kNone || key.empty()) return false;
  const auto take = [&](std::string_view line) {
    line = TrimFront(line);
    if (!line.starts_with(key) || KeyOf(line) != key) return false;
    *value = ValueOf(line);
    return true;
  };
  if (sections_[id].lines != nullptr) return std::ranges::any_of(sections_[id].lines->text, take);
  for (std::string_view rest = Body(id); !rest.empty();) {
    if (take(CutLine(rest))) return true;
  }
  return false;
}

/// The line of a key, or null. Cuts the section into lines at the first call.
std::string* Profile::FindLine(Section& section, std::string_view key) {
  if (section.lines == nullptr) {
    section.lines = std::make_unique<Lines>();
    Lines& lines = *section.lines;
    for (std::string_view rest = section.text; !rest.empty();) lines.text.emplace_back(CutLine(rest));
    lines.later.assign(lines.text.size(), kNone);
    const size_t first = section.headingSize == 0 ? 0 : 1;
    for (size_t i = lines.text.size(); i-- > first;) {
      const auto [known, is_new] = lines.known.try_emplace(std::string(KeyOf(lines.text[i])), i);
      if (!is_new) lines.later[i] = std::exchange(known->second, i);
    }
  }
  const auto found = section.lines->known.find(std::string(key));
  return found == section.lines->known.end() ? nullptr : &section.lines->text[found->second];
}

void Profile::Set(SectionId section, std::string_view key, std::string_view value) {
  if (std::string* line = FindLine(sections_[section], key))
    *line = LineOf(key, value);
  else
    Append(section, key, value);
}

void Profile::Set(std::string_view section, std::string_view key, std::string_view value) {
  const SectionId id = Find(section);
  Set(id == kNone ? Add(section) : id, key, value);
}

void Profile::Append(SectionId id, std::string_view key, std::string_view value) {
  Section& section = sections_[id];
  if (section.lines == nullptr) {
    std::string& text = section.text;
    if (!text.ends_with('\n')) text += kLineEnd;
    const size_t end = EndOfKeys(text);
    if (end != text.size()) {
      text.insert(end, LineOf(key, value));
    } else {
      text.append(key).append(1, '=').append(value).append(kLineEnd);
    }
    return;
  }
  std::vector<std::string>& lines = section.lines->text;
  size_t end = lines.size();
  while (end > 1 && IsEmptyLine(lines[end - 1])) --end;
  if (end > 0 && !lines[end - 1].ends_with('\n')) lines[end - 1] += kLineEnd;
  lines.insert(lines.begin() + static_cast<ptrdiff_t>(end), LineOf(key, value));
  // Only empty lines have moved, so that the places of the keys are still valid.
  section.lines->known[std::string(key)] = end;
  section.lines->later.insert(section.lines->later.begin() + static_cast<ptrdiff_t>(end), kNone);
}

bool Profile::RemoveKey(SectionId section, std::string_view key) {
  std::string* line = FindLine(sections_[section], key);
  if (line == nullptr) return false;
  line->clear();
  Lines& lines = *sections_[section].lines;
  // A later line of the same key counts from now on.
  const auto known = lines.known.find(std::string(key));
  known->second = lines.later[known->second];
  if (known->second == kNone) lines.known.erase(known);
  return true;
}

std::string_view Profile::Body(SectionId section) const {
  if (section == kNone) return {};
  return std::string_view(sections_[section].text).substr(sections_[section].headingSize);
}

std::string Profile::Bytes() const {
  size_t size = 0;
  for (const Section& section : sections_) size += section.text.size();
  std::string bytes;
  bytes.reserve(size);
  for (const Section& section : sections_) {
    if (section.lines == nullptr)
      bytes += section.text;
    else
      for (const std::string& line : section.lines->text) bytes += line;
  }
  return bytes;
}

DWORD ReadProfileBytes(const char16_t* path, std::string* bytes) {
  return WithBackend([&](const Backend& backend) {
    std::shared_ptr<OpenFile> file;
    if (const DWORD status = backend.files->Open(path, false, false, &file); status != kErrorSuccess) return status;
    std::string held;
    constexpr size_t kPiece = size_t{1} << 17;
    for (DWORD got = 1; got != 0;) {
      // One byte more than the limit detects a file that is too large.
      const size_t used = held.size();
      held.resize(std::min(used + kPiece, kProfileLimit + 1));
      const DWORD status = file->Read({reinterpret_cast<uint8_t*>(held.data()) + used, held.size() - used}, &got);
      if (status != kErrorSuccess) return status;
      held.resize(used + got);
      if (held.size() > kProfileLimit) return kErrorMoreData;
    }
    if (held.empty()) return kErrorFileNotFound;
    *bytes = std::move(held);
    return kErrorSuccess;
  });
}

DWORD SaveProfile(const char16_t* path, const Profile& profile) {
  return WithBackend([&](const Backend& backend) {
    const std::string bytes = profile.Bytes();
    return backend.files->Replace(path, {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
  });
}

void AppendAnsi(std::u16string_view text, std::string* bytes) {
  // Every code page of the system holds ASCII as it is.
  if (std::ranges::all_of(text, [](char16_t c) { return c < 0x80; })) {
    const size_t used = bytes->size();
    bytes->resize(used + text.size());
    std::ranges::transform(text, bytes->begin() + static_cast<ptrdiff_t>(used),
                           [](char16_t c) { return static_cast<char>(c); });
    return;
  }
  std::array<char, 512> piece;
  const int length = static_cast<int>(text.size());
  if (text.size() <= piece.size() / 4) {
    bytes->append(piece.data(), static_cast<size_t>(WideCharToMultiByte(CP_ACP, text.data(), length, piece.data(),
                                                                        static_cast<int>(piece.size()))));
    return;
  }
  std::string whole(static_cast<size_t>(WideCharToMultiByte(CP_ACP, text.data(), length, nullptr, 0)), '\0');
  WideCharToMultiByte(CP_ACP, text.data(), length, whole.data(), static_cast<int>(whole.size()));
  *bytes += whole;
}

std::string AnsiWithin(std::u16string_view text, size_t room) {
  std::string bytes;
  AppendAnsi(text, &bytes);
  if (bytes.size() <= room) return bytes;
  bytes.clear();
  std::string character;
  while (!text.empty()) {
    const size_t units = CharacterUnits(text);
    character.clear();
    AppendAnsi(text.substr(0, units), &character);
    if (bytes.size() + character.size() > room) break;
    bytes += character;
    text.remove_prefix(units);
  }
  return bytes;
}

std::u16string FromAnsi(std::string_view bytes) {
  if (std::ranges::all_of(bytes, [](char c) { return static_cast<signed char>(c) >= 0; })) {
    return {bytes.begin(), bytes.end()};
  }
  // No code page makes more characters of a text than it has bytes.
  std::u16string text(bytes.size(), u'\0');
  text.resize(static_cast<size_t>(MultiByteToWideChar(CP_ACP, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                                                      static_cast<int>(text.size()))));
  return text;
}

int32_t LeadingNumber(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  uint32_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = number * 10 + static_cast<uint32_t>(c - '0');
  }
  return static_cast<int32_t>(negative ? 0 - number : number);
}

DWORD GetPrivateProfileStringW(const char16_t* section, const char16_t* key, const char16_t* fallback, char16_t* buffer,
                               DWORD size, const char16_t* path) {
  if (section == nullptr || key == nullptr || buffer == nullptr || size == 0 || path == nullptr) return 0;
  DWORD length = 0;
  WithBackend([&](const Backend&) {
    std::string value;
    const bool found = ReadValue(section, key, path, &value);
    const std::u16string text = found ? FromAnsi(Unquote(value)) : fallback == nullptr ? u"" : fallback;
    length = static_cast<DWORD>(std::min<size_t>(text.size(), size - 1));
    *std::copy_n(text.begin(), length, buffer) = u'\0';
    return kErrorSuccess;
  });
  return length;
}

DWORD GetPrivateProfileIntW(const char16_t* section, const char16_t* key, int32_t fallback, const char16_t* path) {
  int32_t number = fallback;
  WithBackend([&](const Backend&) {
    std::string value;
    if (ReadValue(section, key, path, &value)) number = LeadingNumber(value);
    return kErrorSuccess;
  });
  return static_cast<DWORD>(number);
}

BOOL WritePrivateProfileStringW(const char16_t* section, const char16_t* key, const char16_t* value,
                                const char16_t* path) {
  if (section == nullptr && key == nullptr && value == nullptr) return 0;
  return BoolResult(WithBackend([&](const Backend&) {
    std::string bytes;
    if (section == nullptr || *section == u'\0' || path == nullptr) return kErrorInvalidParameter;
    if (const DWORD status = LoadOrStart(path, &bytes); status != kErrorSuccess) return status;
    Profile profile(bytes);
    const std::string name = ToAnsi(section);
    const Profile::SectionId id = profile.Find(name);
    if (key == nullptr)
      profile.Remove(name);
    else if (value != nullptr)
      profile.Set(name, ToAnsi(key), ToAnsi(value));
    else if (id != Profile::kNone)
      profile.RemoveKey(id, ToAnsi(key));
    return SaveProfile(path, profile);
  }));
}

}  // namespace heron::platform

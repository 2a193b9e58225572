// Finding keys in a settings file (section_index.h).
#include "presets/section_index.h"

#include <algorithm>
#include <cstring>

#include "presets/key_plan.h"

namespace heron {
namespace {

struct KeyLine {
  std::string_view key;
  std::string_view value;
};

/// The key and value of the line at `*at`, which moves to the next line. An empty key belongs to a line without one.
KeyLine TakeLine(std::string_view body, size_t* at) {
  const char* const begin = body.data() + *at;
  const size_t left = body.size() - *at;
  const void* const feed = std::memchr(begin, '\n', left);
  const size_t size = feed == nullptr ? left : static_cast<size_t>(static_cast<const char*>(feed) - begin);
  *at += feed == nullptr ? size : size + 1;
  std::string_view line(begin, size);
  while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (const void* cr = std::memchr(line.data(), '\r', line.size()); cr != nullptr) {
    line = line.substr(0, static_cast<size_t>(static_cast<const char*>(cr) - line.data()));
  }
  const size_t sign = line.find('=');
  if (sign == std::string_view::npos) return {line, {}};
  return {line.substr(0, sign), line.substr(sign + 1)};
}

}  // namespace

SectionIndex::SectionIndex(const platform::Profile& file) : sections_(Plan().places) {
  NameBuffer buffer;
  for (const SectionEntry& entry : Plan().sections) {
    for (int number = entry.lo; number <= entry.hi; ++number) {
      sections_[entry.PlaceOf(number)].body = file.Body(file.Find(ExpandName(entry.name, number, buffer)));
    }
  }
}

bool SectionIndex::FindValue(size_t place, std::string_view key, std::string_view* value) {
  Section& section = sections_[place];
  if (section.body.empty()) return false;
  if (section.inStep) {
    KeyLine line;
    while (line.key.empty() && section.next < section.body.size()) line = TakeLine(section.body, &section.next);
    if (line.key == key) {
      *value = line.value;
      return true;
    }
    section.inStep = false;
    for (size_t at = 0; at < section.body.size();) {
      const KeyLine known = TakeLine(section.body, &at);
      if (!known.key.empty()) section.values.try_emplace(known.key, known.value);
    }
  }
  const auto found = section.values.find(key);
  if (found == section.values.end()) return false;
  *value = found->second;
  return true;
}

std::u16string ReadProfileKey(SectionIndex& index, size_t place, std::string_view key, std::u16string_view fallback,
                              size_t size) {
  std::string_view bytes;
  if (!index.FindValue(place, key, &bytes)) return std::u16string(fallback);
  std::u16string text = platform::FromAnsi(bytes);
  return text.size() < size ? text : std::u16string(fallback);
}

}  // namespace heron

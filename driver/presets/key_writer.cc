// Text forms of values, as they are written (key_writer.h).
#include "presets/key_writer.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace heron {
namespace {

bool IsControl(char16_t c) {
  return c < u' ' || c == 0x7F;
}

/// The text of a field up to its terminator.
std::u16string_view TextOf(const StoreField& field) {
  const auto* text = reinterpret_cast<const char16_t*>(field.data);
  return {text, static_cast<size_t>(std::find(text, text + field.size / sizeof(char16_t), u'\0') - text)};
}

std::string_view TrimBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// 32 bit values print with a sign, whatever they are.
int32_t NumberOf(const KeyEntry& key, const StoreField& field) {
  int32_t number = 0;
  std::memcpy(&number, field.data, std::min<size_t>(field.size, sizeof number));  // the low bytes come first
  if (field.type == kTypeI16) number = static_cast<int16_t>(number);
  return key.isCount ? std::min<int32_t>(number, key.room) : number;
}

}  // namespace

std::vector<std::u16string_view> SplitLines(std::u16string_view text) {
  std::vector<std::u16string_view> lines;
  for (;;) {
    const size_t feed = text.find(u'\n');
    std::u16string_view line = text.substr(0, feed);
    if (feed != std::u16string_view::npos && line.ends_with(u'\r')) line.remove_suffix(1);
    lines.push_back(line);
    if (feed == std::u16string_view::npos) return lines;
    text.remove_prefix(feed + 1);
  }
}

void AppendLineText(std::u16string_view text, std::string* bytes) {
  if (std::ranges::none_of(text, IsControl)) return platform::AppendAnsi(text, bytes);
  std::u16string clean(text);
  std::ranges::replace_if(clean, IsControl, u' ');
  platform::AppendAnsi(clean, bytes);
}

KeyWriter::KeyWriter(platform::Profile& file) : file_(file), sections_(Plan().places) {
  NameBuffer buffer;
  for (const SectionEntry& entry : Plan().sections) {
    for (int number = entry.lo; number <= entry.hi; ++number) {
      sections_[entry.PlaceOf(number)].id = file.Find(ExpandName(entry.name, number, buffer));
    }
  }
}

void KeyWriter::Put(size_t place, const KeyEntry& key, int section_number, std::string_view name,
                    std::string_view value) {
  Section& section = sections_[place];
  if (section.id == platform::Profile::kNone) {
    NameBuffer buffer;
    section.id = file_.Add(ExpandName(Plan().sections[key.section].name, section_number, buffer));
    section.own = true;
  }
  if (section.own)
    file_.Append(section.id, name, value);
  else
    file_.Set(section.id, name, value);
}

/// One key a line; keys of a longer text before are removed, since a reader would take them for more lines.
void KeyWriter::WriteLines(size_t place, const KeyEntry& key, int section_number, std::u16string_view text) {
  const NamePattern line_name{{}, {}, true};
  NameBuffer buffer;
  int number = 0;
  for (const std::u16string_view line : SplitLines(text)) {
    value_.assign(1, '*');
    AppendLineText(line, &value_);
    Put(place, key, section_number, ExpandName(line_name, number++, buffer), TrimBlanks(value_));
  }
  if (sections_[place].own) return;
  while (file_.RemoveKey(sections_[place].id, ExpandName(line_name, number, buffer))) ++number;
}

bool KeyWriter::Transfer(const KeyEntry& key, int section_number, int key_number, const StoreField* value) {
  if (value == nullptr || value->type == kTypeBytes) return false;
  const size_t place = Plan().sections[key.section].PlaceOf(section_number);
  if (key.style == LineStyle::kStarsLines) {
    WriteLines(place, key, section_number, TextOf(*value));
    return true;
  }
  NameBuffer buffer;
  const std::string_view name = ExpandName(key.key, key_number, buffer);
  if (value->type != kTypeText) {
    char digits[16];
    const auto end = std::to_chars(digits, std::end(digits), NumberOf(key, *value)).ptr;
    Put(place, key, section_number, name, {digits, static_cast<size_t>(end - digits)});
    return true;
  }
  value_.assign(key.style == LineStyle::kPlain ? 0 : 1, '*');
  AppendLineText(TextOf(*value), &value_);
  if (key.style == LineStyle::kStars) value_ += '*';
  Put(place, key, section_number, name, TrimBlanks(value_));
  return true;
}

}  // namespace heron

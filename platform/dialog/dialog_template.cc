// The parser of dialog templates (resources/dialogs/README.md describes the notation).
#include "platform/dialog/dialog_template.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "platform/api/text.h"

namespace heron::platform {
namespace {

struct KindName {
  std::string_view name;
  ControlKind kind;
};

constexpr KindName kKindNames[] = {
    {"label", ControlKind::kLabel},
    {"radio", ControlKind::kRadio},
    {"check", ControlKind::kCheck},
    {"button", ControlKind::kButton},
    {"library", ControlKind::kLibrary},
    {"defaults", ControlKind::kDefaults},
    {"list", ControlKind::kList},
    {"combo", ControlKind::kCombo},
    {"listbox", ControlKind::kListBox},
    {"listview", ControlKind::kListView},
    {"text", ControlKind::kText},
    {"password", ControlKind::kPassword},
    {"memo", ControlKind::kMemo},
    {"number", ControlKind::kNumber},
    {"spin", ControlKind::kSpin},
    {"slider", ControlKind::kSlider},
    {"scrollbar", ControlKind::kScrollBar},
    {"place", ControlKind::kPlace},
    {"tabs", ControlKind::kTabs},
    {"group", ControlKind::kGroup},
    {"firstpaint", ControlKind::kFirstPaint},
};

constexpr std::string_view kSizeNames[] = {"page", "small", "medium", "large"};  ///< by SizeClass

/// The words of a line: a quoted text is a word of its own, with its opening quote in front to distinguish it from a
/// bare word, or the value behind an =. \" is a quote inside. False if a text isn't closed.
bool SplitWords(std::string_view line, std::vector<std::string>* words) {
  bool quoted = false;
  bool open = false;
  for (size_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    if (!quoted && (c == ' ' || c == '\t' || c == '\r')) {
      open = false;
      continue;
    }
    if (!open) words->emplace_back();
    open = true;
    if (c == '"') {
      if (!quoted && words->back().empty()) words->back() = '"';
      quoted = !quoted;
    } else {
      const bool escaped = quoted && c == '\\' && at + 1 < line.size();
      words->back() += escaped ? line[++at] : c;
    }
  }
  return !quoted;
}

bool ReadNumber(std::string_view text, uint32_t most, uint32_t* value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return error == std::errc() && end == text.data() + text.size() && *value <= most;
}

bool ReadNumber(std::string_view text, uint32_t most, int* value) {
  uint32_t read = 0;
  if (!ReadNumber(text, most, &read)) return false;
  *value = static_cast<int>(read);
  return true;
}

/// "-" is no number.
bool ReadId(std::string_view text, ControlId* id) {
  uint32_t read = 0;
  if (text != "-" && (!ReadNumber(text, 0xFFFF, &read) || read == 0)) return false;
  *id = static_cast<ControlId>(read);
  return true;
}

/// "21002:160,Name:77": headings by text number or as text, each with its share.
bool ReadColumns(std::string_view text, std::vector<ColumnHeading>* columns) {
  while (!text.empty()) {
    const std::string_view column = text.substr(0, text.find(','));
    const size_t colon = std::min(column.rfind(':'), column.size());
    const std::string_view heading = column.substr(0, colon);
    ColumnHeading& added = columns->emplace_back();
    if (!ReadNumber(column.substr(std::min(colon + 1, column.size())), 1000, &added.width)) return false;
    if (!ReadNumber(heading, 0xFFFF, &added.number)) {
      added.number = 0;
      added.text = FromUtf8(heading);
    }
    text.remove_prefix(std::min(column.size() + 1, text.size()));
  }
  return true;
}

bool ReadSize(std::string_view text, int* width, int* height) {
  const size_t times = text.find('x');
  return times != std::string_view::npos && ReadNumber(text.substr(0, times), 2000, width) &&
         ReadNumber(text.substr(times + 1), 2000, height);
}

bool ReadFlag(std::string_view word, ControlTemplate* control) {
  if (word == "wraps") return control->wraps = true;
  if (word == "readonly") return control->read_only = true;
  if (word == "vertical") return control->vertical = true;
  if (word == "several") return control->several = true;
  if (word == "moves") return control->moves = true;
  return false;
}

bool ReadAttribute(std::string_view word, ControlTemplate* control) {
  const size_t equals = word.find('=');
  if (equals == std::string_view::npos) return ReadFlag(word, control);
  const std::string_view key = word.substr(0, equals);
  const std::string_view value = word.substr(equals + 1);
  if (value.empty()) return false;
  if (key == "for") return ReadId(value, &control->buddy);
  if (key == "limit") return ReadNumber(value, 32767, &control->limit);
  if (key == "columns") return ReadColumns(value, &control->columns);
  if (key == "size") return ReadSize(value, &control->width, &control->height);
  if (key == "set") control->set = value;
  if (key == "name") control->name = FromUtf8(value);
  if (key == "key" || key == "as") {
    if (!NameOf(*control).empty()) return false;  // one name
    (key == "key" ? control->key : control->alias) = value;
    return true;
  }
  return key == "set" || key == "name";
}

class Reader {
 public:
  DialogTemplate result;
  std::string error;

  bool ReadLine(std::string_view line) {
    std::vector<std::string> words;
    if (!SplitWords(line, &words)) return Fail("a text isn't closed");
    if (words.empty() || words[0].starts_with('#')) return true;
    if (result.number == 0) return ReadHead(words);
    if (words.size() > 1) return ReadControl(words);
    if (words[0] == "column") return BeginColumn();
    if (words[0] == "pane") return BeginArea(Area::kPane);
    if (words[0] == "buttons") return BeginArea(Area::kButtons);
    if (words[0] == "end") return EndGroup();
    return Fail("'" + words[0] + "' isn't known");
  }

  bool Finish() {
    if (result.number == 0) return Fail("there is no dialog");
    return group_ < 0 || Fail("a group isn't ended");
  }

 private:
  bool Fail(std::string sentence) {
    error = std::move(sentence);
    return false;
  }

  bool ReadHead(const std::vector<std::string>& words) {
    if (words.size() != 4 || words[0] != "dialog" || !words[3].starts_with('"') || !ReadId(words[1], &result.number) ||
        result.number == 0) {
      return Fail("a template begins with: dialog NUMBER SIZE \"TITLE\"");
    }
    const auto size = std::ranges::find(kSizeNames, words[2]);
    if (size == std::end(kSizeNames)) return Fail("'" + words[2] + "' isn't a size");
    result.size = static_cast<SizeClass>(size - std::begin(kSizeNames));
    result.title = FromUtf8(std::string_view(words[3]).substr(1));
    return true;
  }

  bool BeginColumn() {
    if (group_ >= 0 || area_ != Area::kColumns) return Fail("a column begins outside of groups, before the pane");
    ++columns_;
    return true;
  }

  bool BeginArea(Area area) {
    if (group_ >= 0 || area <= area_) return Fail("the pane comes behind the columns, the buttons come last");
    area_ = area;
    return true;
  }

  bool EndGroup() {
    if (group_ < 0) return Fail("there is no group to end");
    group_ = result.controls[static_cast<size_t>(group_)].group;
    return true;
  }

  bool ReadControl(const std::vector<std::string>& words) {
    ControlTemplate control;
    control.beside = words[0] == "+";
    size_t at = control.beside ? 1 : 0;
    const auto kind = std::ranges::find(kKindNames, words[at], &KindName::name);
    if (kind == std::end(kKindNames)) return Fail("'" + words[at] + "' isn't a kind of control");
    control.kind = kind->kind;
    if (++at == words.size() || !ReadId(words[at], &control.id)) return Fail("a number or - must follow the kind");
    const bool needs_id = control.kind != ControlKind::kLabel && control.kind != ControlKind::kGroup;
    // The logic reaches a control by its number; only labels and boxes may have none.
    if (control.id == 0 && needs_id) return Fail("only labels and groups do without a number");
    for (++at; at < words.size(); ++at) {
      if (words[at].starts_with('"')) {
        control.label = FromUtf8(std::string_view(words[at]).substr(1));
      } else if (!ReadAttribute(words[at], &control)) {
        return Fail("'" + words[at] + "' isn't understood");
      }
    }
    control.area = area_;
    control.column = std::max(columns_ - 1, 0);
    control.group = group_;
    if (control.kind == ControlKind::kGroup) group_ = static_cast<int>(result.controls.size());
    result.controls.push_back(std::move(control));
    return true;
  }

  Area area_ = Area::kColumns;
  int columns_ = 0;
  int group_ = -1;
};

}  // namespace

std::optional<DialogTemplate> ParseDialogTemplate(std::string_view source, std::string* error) {
  Reader reader;
  int line = 0;
  bool good = true;
  while (good && !source.empty()) {
    ++line;
    const std::string_view text = source.substr(0, source.find('\n'));
    good = reader.ReadLine(text);
    source.remove_prefix(std::min(text.size() + 1, source.size()));
  }
  if (good && reader.Finish()) return std::move(reader.result);
  *error = "line " + std::to_string(line) + ": " + reader.error;
  return std::nullopt;
}

char16_t Mnemonic(std::u16string_view label) {
  for (size_t at = 0; at + 1 < label.size(); ++at) {
    if (label[at] != u'&') continue;
    const char16_t c = label[++at];
    if (c != u'&') return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
  }
  return 0;
}

}  // namespace heron::platform

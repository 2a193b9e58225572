// Parses help files (help.h).

#include "help.h"

#include <QStringList>
#include <algorithm>

#include "text.h"

namespace heron::desk {
namespace {

constexpr size_t kMostBytes = 65536;

/// The text between the brackets of a heading: numbers, or a group's title in quotes.
bool ReadHeading(const QString& heading, HelpEntry* entry) {
  if (heading.size() > 2 && heading.startsWith(u'"') && heading.endsWith(u'"')) {
    entry->group = heading.sliced(1, heading.size() - 2);
    return true;
  }
  bool good = true;
  for (const QString& word : heading.split(u' ', Qt::SkipEmptyParts)) {
    bool is_number = false;
    entry->controls.push_back(word.toUShort(&is_number));
    good = good && is_number && entry->controls.back() != 0;
  }
  return good && !entry->controls.empty();
}

/// A line goes on with its paragraph, or begins one behind an empty line.
void AddLine(QString* text, const QString& line, bool begins) {
  if (!text->isEmpty()) *text += begins ? QStringLiteral("\n\n") : QStringLiteral(" ");
  *text += line;
}

}  // namespace

std::optional<DialogHelp> ParseHelp(std::string_view source, QString* error) {
  DialogHelp help;
  int number = 0;
  const auto fail = [&](const char* sentence) {
    *error = QStringLiteral("line %1: %2").arg(number).arg(QLatin1String(sentence));
    return std::nullopt;
  };
  if (source.size() > kMostBytes) return fail("the help is too long");
  bool begins = true;
  const auto complete = [&] {
    return help.entries.empty() ? !help.topic.isEmpty() : !help.entries.back().text.isEmpty();
  };
  for (const QString& whole : QString::fromUtf8(source.data(), static_cast<qsizetype>(source.size())).split(u'\n')) {
    ++number;
    const QString line = whole.trimmed();
    if (line.startsWith(u'#')) continue;
    if (line.startsWith(u'[')) {
      if (!complete()) return fail("a heading or the dialog has no text");
      if (!line.endsWith(u']') || !ReadHeading(line.sliced(1, line.size() - 2), &help.entries.emplace_back())) {
        return fail("a heading is [NUMBER ...] or [\"GROUP\"]");
      }
    } else if (!line.isEmpty()) {
      AddLine(help.entries.empty() ? &help.topic : &help.entries.back().text, line, begins);
    }
    begins = line.isEmpty();
  }
  if (!complete()) return fail("the last text is missing");
  return help;
}

const HelpEntry* EntryOf(const DialogHelp& help, const platform::DialogTemplate& plan, platform::ControlId control) {
  const auto own = std::ranges::find_if(
      help.entries, [&](const HelpEntry& entry) { return std::ranges::count(entry.controls, control) != 0; });
  if (own != help.entries.end()) return &*own;
  const auto row = std::ranges::find(plan.controls, control, &platform::ControlTemplate::id);
  if (control == 0 || row == plan.controls.end()) return nullptr;
  for (int at = row->group; at >= 0; at = plan.controls[static_cast<size_t>(at)].group) {
    const QString title = Spoken(ToQt(plan.controls[static_cast<size_t>(at)].label));
    const auto group = std::ranges::find(help.entries, title, &HelpEntry::group);
    if (!title.isEmpty() && group != help.entries.end()) return &*group;
  }
  return nullptr;
}

}  // namespace heron::desk

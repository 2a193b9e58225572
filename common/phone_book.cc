// The phone book in the user's tree, and its vCard and CSV files (phone_book.h).

#include "phone_book.h"

#include <algorithm>
#include <array>

#include "platform/api/handles.h"
#include "platform/api/registry.h"
#include "platform/api/text.h"

namespace heron::phone_book {
namespace {

using namespace platform;

constexpr char16_t kKey[] = u"Software\\Varnell\\Phone Book";
constexpr char16_t kLastId[] = u"LastId";
constexpr char16_t kSeparator = 0x1F;  ///< between the fields of a value; never part of a text
constexpr size_t kFields = 6;
constexpr uint32_t kMostIds = 100000;  ///< ever given to an entry

/// A transaction on the user's tree; withdrawn unless it is kept.
class Change {
 public:
  Change() : open_(RegBeginBatch(HKEY_CURRENT_USER) == kErrorSuccess) {
    if (open_) key = CreateKey(HKEY_CURRENT_USER, kKey);
  }
  ~Change() {
    key.reset();
    if (open_) RegEndBatch(HKEY_CURRENT_USER, 0);
  }
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;

  bool Keep() {
    key.reset();
    const bool was_open = open_;
    open_ = false;
    return was_open && RegEndBatch(HKEY_CURRENT_USER, 1) == kErrorSuccess;
  }

  UniqueKey key;

 private:
  bool open_;
};

uint32_t LastId(HKEY key) {
  uint32_t id = 0;
  DWORD type = 0, size = sizeof id;
  const DWORD status = RegQueryValueExW(key, kLastId, &type, reinterpret_cast<uint8_t*>(&id), &size);
  return status == kErrorSuccess && type == REG_DWORD && size == sizeof id ? std::min(id, kMostIds) : 0;
}

std::u16string NameOf(uint32_t id) {
  return ExpandText(u"%u", {int64_t{id}});
}

/// A text as it is kept: without signs of control, cut behind a whole character.
std::u16string Clean(std::u16string_view text) {
  std::u16string clean;
  for (const char16_t c : text.substr(0, std::min(text.size(), kLongestText))) clean += c < u' ' ? u' ' : c;
  if (!clean.empty() && (clean.back() & 0xFC00) == 0xD800) clean.pop_back();
  return clean;
}

std::u16string Pack(const Entry& entry) {
  std::u16string packed;
  for (const std::u16string* text : {&entry.name, &entry.number, &entry.company, &entry.department, &entry.group})
    packed += Clean(*text) + kSeparator;
  for (const bool flag : {entry.ecm, entry.overseas, entry.v34}) packed += flag ? u'1' : u'0';
  return packed;
}

bool Unpack(std::u16string_view packed, Entry* entry) {
  std::array<std::u16string, kFields> parts;
  for (size_t i = 0; i < kFields; ++i) {
    const size_t end = std::min(packed.find(kSeparator), packed.size());
    if (end == packed.size() && i + 1 < kFields) return false;
    parts[i] = i + 1 < kFields ? Clean(packed.substr(0, end)) : std::u16string(packed);
    packed.remove_prefix(std::min(end + 1, packed.size()));
  }
  entry->name = parts[0];
  entry->number = parts[1];
  entry->company = parts[2];
  entry->department = parts[3];
  entry->group = parts[4];
  entry->ecm = parts[5].starts_with(u'1');
  entry->overseas = parts[5].size() > 1 && parts[5][1] == u'1';
  entry->v34 = parts[5].size() > 2 && parts[5][2] == u'1';
  return IsNumber(entry->number);
}

bool ReadEntry(HKEY key, uint32_t id, Entry* entry) {
  std::array<char16_t, kFields*(kLongestText + 1)> text{};
  DWORD type = 0, size = sizeof text;
  if (RegQueryValueExW(key, NameOf(id).c_str(), &type, reinterpret_cast<uint8_t*>(text.data()), &size) != 0)
    return false;
  if (type != REG_SZ) return false;
  entry->id = id;
  return Unpack({text.data(), static_cast<size_t>(std::ranges::find(text, u'\0') - text.begin())}, entry);
}

bool WriteEntry(HKEY key, const Entry& entry) {
  const std::u16string packed = Pack(entry);
  return RegSetValueExW(key, NameOf(entry.id).c_str(), REG_SZ, reinterpret_cast<const uint8_t*>(packed.c_str()),
                        static_cast<DWORD>((packed.size() + 1) * sizeof(char16_t))) == kErrorSuccess;
}

char16_t Lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

std::u16string Lowered(std::u16string_view text) {
  std::u16string lowered(text);
  std::ranges::transform(lowered, lowered.begin(), Lower);
  return lowered;
}

// -- files

std::string_view TakeLine(std::string_view* rest) {
  const size_t end = std::min(rest->find('\n'), rest->size());
  std::string_view line = rest->substr(0, end);
  rest->remove_prefix(std::min(end + 1, rest->size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// The logical lines of a vCard: a line that begins with a blank continues the one before.
std::vector<std::string> UnfoldedLines(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(&bytes);
    const bool continues = !line.empty() && (line[0] == ' ' || line[0] == '\t') && !lines.empty();
    if (continues)
      lines.back() += line.substr(1);
    else
      lines.emplace_back(line);
  }
  return lines;
}

std::string Unescaped(std::string_view value) {
  std::string text;
  for (size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\' && i + 1 < value.size()) {
      ++i;
      text += value[i] == 'n' || value[i] == 'N' ? ' ' : value[i];
    } else {
      text += value[i];
    }
  }
  return text;
}

/// The parts of a value between semicolons that aren't escaped.
std::vector<std::string> Parts(std::string_view value) {
  std::vector<std::string> parts(1);
  for (size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\' && i + 1 < value.size()) {
      parts.back() += value.substr(i, 2);
      ++i;
    } else if (value[i] == ';') {
      parts.emplace_back();
    } else {
      parts.back() += value[i];
    }
  }
  for (std::string& part : parts) part = Unescaped(part);
  return parts;
}

std::string Upper(std::string_view text) {
  std::string upper(text);
  std::ranges::transform(upper, upper.begin(),
                         [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return upper;
}

/// One property of a card; a number counts if its type is fax, and only the first.
void TakeProperty(const std::string& line, Entry* entry, std::u16string* any_name) {
  const size_t colon = line.find(':');
  if (colon == std::string::npos) return;
  std::string head = Upper(std::string_view(line).substr(0, colon));
  if (const size_t group = head.find('.'); group != std::string::npos) head.erase(0, group + 1);
  const std::string name = head.substr(0, head.find(';'));
  const std::string_view value = std::string_view(line).substr(colon + 1);
  const std::vector<std::string> parts = Parts(value);
  if (name == "FN") entry->name = FromUtf8(Unescaped(value));
  if (name == "N") *any_name = FromUtf8(parts.size() > 1 && !parts[1].empty() ? parts[1] + ' ' + parts[0] : parts[0]);
  if (name == "ORG") {
    entry->company = FromUtf8(parts[0]);
    if (parts.size() > 1) entry->department = FromUtf8(parts[1]);
  }
  if (name == "CATEGORIES") {
    const std::string first = Unescaped(value);
    entry->group = FromUtf8(first.substr(0, first.find(',')));
  }
  if (name == "TEL" && head.find("FAX") != std::string::npos && entry->number.empty()) {
    const bool uri = Upper(value).starts_with("TEL:");
    entry->number = PlainNumber(FromUtf8(Unescaped(uri ? value.substr(4) : value)));
  }
}

std::vector<Entry> ParseCards(std::string_view bytes) {
  std::vector<Entry> entries;
  Entry entry;
  std::u16string any_name;
  bool open = false;
  for (const std::string& line : UnfoldedLines(bytes)) {
    const std::string word = Upper(line);
    if (word == "BEGIN:VCARD") {
      entry = {};
      any_name.clear();
      open = true;
    } else if (word == "END:VCARD" && open) {
      open = false;
      if (entry.name.empty()) entry.name = any_name;
      entries.push_back(entry);
    } else if (open) {
      TakeProperty(line, &entry, &any_name);
    }
    if (entries.size() > kMostEntries) break;
  }
  return entries;
}

/// The cells of one row; a quoted cell may hold separators, doubled quotes and line ends.
std::vector<std::string> TakeRow(std::string_view* rest, char separator) {
  std::vector<std::string> cells(1);
  bool quoted = false;
  size_t i = 0;
  for (; i < rest->size(); ++i) {
    const char c = (*rest)[i];
    if (quoted) {
      const bool doubled = c == '"' && i + 1 < rest->size() && (*rest)[i + 1] == '"';
      if (c == '"' && !doubled)
        quoted = false;
      else
        cells.back() += (*rest)[doubled ? ++i : i];
    } else if (c == '"') {
      quoted = true;
    } else if (c == separator) {
      cells.emplace_back();
    } else if (c == '\n') {
      break;
    } else if (c != '\r') {
      cells.back() += c;
    }
  }
  rest->remove_prefix(std::min(i + 1, rest->size()));
  return cells;
}

constexpr std::array<std::string_view, 8> kColumns = {"name",  "number", "company",  "department",
                                                      "group", "ecm",    "overseas", "v34"};

void TakeCell(Entry* entry, size_t column, const std::string& cell) {
  const bool on = cell == "1" || Upper(cell) == "YES" || Upper(cell) == "TRUE";
  switch (column) {
    case 0:
      entry->name = FromUtf8(cell);
      return;
    case 1:
      entry->number = PlainNumber(FromUtf8(cell));
      return;
    case 2:
      entry->company = FromUtf8(cell);
      return;
    case 3:
      entry->department = FromUtf8(cell);
      return;
    case 4:
      entry->group = FromUtf8(cell);
      return;
    case 5:
      entry->ecm = on;
      return;
    case 6:
      entry->overseas = on;
      return;
    default:
      entry->v34 = on;
  }
}

/// With a heading that names columns, or name and number in the first two.
std::vector<Entry> ParseRows(std::string_view bytes) {
  const std::string_view first = bytes.substr(0, bytes.find('\n'));
  const char separator = first.find('\t') != std::string_view::npos  ? '\t'
                         : first.find(';') != std::string_view::npos ? ';'
                                                                     : ',';
  std::vector<size_t> columns = {0, 1, 2, 3, 4, 5, 6, 7};
  std::string_view after = bytes;
  std::vector<std::string> heading = TakeRow(&after, separator);
  for (std::string& cell : heading)
    std::ranges::transform(cell, cell.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  if (std::ranges::count(heading, "number") != 0) {
    columns.clear();
    for (const std::string& cell : heading)
      columns.push_back(static_cast<size_t>(std::ranges::find(kColumns, cell) - kColumns.begin()));
    bytes = after;
  }
  std::vector<Entry> entries;
  while (!bytes.empty() && entries.size() <= kMostEntries) {
    const std::vector<std::string> cells = TakeRow(&bytes, separator);
    if (cells.size() == 1 && cells[0].empty()) continue;
    Entry entry;
    for (size_t i = 0; i < std::min(cells.size(), columns.size()); ++i)
      if (columns[i] < kColumns.size()) TakeCell(&entry, columns[i], cells[i]);
    entries.push_back(entry);
  }
  return entries;
}

std::string Escaped(std::u16string_view text) {
  std::string escaped;
  for (const char c : ToUtf8(text)) {
    if (c == '\\' || c == ',' || c == ';') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

std::string Quoted(std::u16string_view text) {
  std::string quoted = "\"";
  for (const char c : ToUtf8(text)) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

}  // namespace

bool Read(std::vector<Entry>* entries) {
  entries->clear();
  DWORD status = kErrorSuccess;
  const UniqueKey key = OpenKey(HKEY_CURRENT_USER, kKey, KEY_READ, &status);
  if (key == nullptr) return status == kErrorFileNotFound;
  const uint32_t last = LastId(key.get());
  for (uint32_t id = 1; id <= last && entries->size() < kMostEntries; ++id) {
    Entry entry;
    if (ReadEntry(key.get(), id, &entry)) entries->push_back(std::move(entry));
  }
  std::ranges::stable_sort(*entries, {}, [](const Entry& entry) { return Lowered(entry.name); });
  return true;
}

bool Add(std::vector<Entry>* entries) {
  Change change;
  std::vector<Entry> stored;
  if (change.key == nullptr || !Read(&stored) || stored.size() + entries->size() > kMostEntries) return false;
  uint32_t id = LastId(change.key.get());
  if (entries->size() > kMostIds - id) return false;
  for (Entry& entry : *entries) {
    entry.id = ++id;
    if (!WriteEntry(change.key.get(), entry)) return false;
  }
  return RegSetValueExW(change.key.get(), kLastId, REG_DWORD, reinterpret_cast<const uint8_t*>(&id), sizeof id) == 0 &&
         change.Keep();
}

Changed Replace(const Entry& entry) {
  Change change;
  Entry before;
  if (change.key == nullptr) return Changed::kUnwritten;
  if (!ReadEntry(change.key.get(), entry.id, &before)) return Changed::kMissing;
  return WriteEntry(change.key.get(), entry) && change.Keep() ? Changed::kDone : Changed::kUnwritten;
}

Changed Remove(const std::vector<uint32_t>& ids) {
  Change change;
  if (change.key == nullptr) return Changed::kUnwritten;
  for (const uint32_t id : ids) {
    const DWORD status = RegDeleteValueW(change.key.get(), NameOf(id).c_str());
    if (status != kErrorSuccess) return status == kErrorFileNotFound ? Changed::kMissing : Changed::kUnwritten;
  }
  return change.Keep() ? Changed::kDone : Changed::kUnwritten;
}

bool IsNumber(std::u16string_view number) {
  return !number.empty() && number.size() <= kLongestText &&
         number.find_first_not_of(u"0123456789#*-PT") == std::u16string_view::npos;
}

std::u16string PlainNumber(std::u16string_view written) {
  std::u16string plain;
  for (const char16_t c : written) {
    if (c == u'+' && plain.empty())
      plain = u"00";
    else if (std::u16string_view(u" ./()\u00A0").find(c) == std::u16string_view::npos)
      plain += c;
  }
  return plain;
}

bool Matches(const Entry& entry, std::u16string_view text) {
  const std::u16string wanted = Lowered(text);
  for (const std::u16string* field : {&entry.name, &entry.number, &entry.company, &entry.department, &entry.group})
    if (Lowered(*field).find(wanted) != std::u16string::npos) return true;
  return false;
}

std::vector<Entry> Parse(std::string_view bytes, size_t* skipped) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  bytes = bytes.substr(0, kLargestFile);
  const bool cards = Upper(bytes.substr(0, 11)) == "BEGIN:VCARD";
  std::vector<Entry> entries = cards ? ParseCards(bytes) : ParseRows(bytes);
  const size_t all = entries.size();
  const auto fits = [](const std::u16string& text) { return text.size() <= kLongestText; };
  std::erase_if(entries, [&](const Entry& e) {
    return !IsNumber(e.number) || !fits(e.name) || !fits(e.company) || !fits(e.department) || !fits(e.group);
  });
  *skipped = all - entries.size();
  return entries;
}

std::string ToVCard(const std::vector<Entry>& entries) {
  std::string cards;
  for (const Entry& entry : entries) {
    cards += "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:" + Escaped(entry.name) + "\r\nN:" + Escaped(entry.name) + ";;;;\r\n";
    if (!entry.company.empty() || !entry.department.empty())
      cards += "ORG:" + Escaped(entry.company) + ';' + Escaped(entry.department) + "\r\n";
    if (!entry.group.empty()) cards += "CATEGORIES:" + Escaped(entry.group) + "\r\n";
    cards += "TEL;TYPE=FAX:" + ToUtf8(entry.number) + "\r\nEND:VCARD\r\n";
  }
  return cards;
}

std::string ToCsv(const std::vector<Entry>& entries) {
  std::string rows = "name,number,company,department,group,ecm,overseas,v34\r\n";
  for (const Entry& entry : entries) {
    for (const std::u16string* text : {&entry.name, &entry.number, &entry.company, &entry.department, &entry.group})
      rows += Quoted(*text) + ',';
    rows += std::string(entry.ecm ? "1," : "0,") + (entry.overseas ? "1," : "0,") + (entry.v34 ? "1" : "0") + "\r\n";
  }
  return rows;
}

}  // namespace heron::phone_book

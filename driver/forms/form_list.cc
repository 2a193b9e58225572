#include "forms/form_list.h"

#include <algorithm>

#include "platform/api/files.h"
#include "platform/api/text.h"

namespace heron {
namespace {

using namespace platform;

std::u16string_view TextIn(const char16_t (&field)[kMaxPath]) {
  return {field, std::find(field, field + kMaxPath - 1, u'\0')};
}

uint8_t& ChosenForm(const UiState& ui) {
  return SlotAs<u"bOverlayIndex", uint8_t>(ui);
}

/// As the system compares texts of a list: first without regard to case.
int CompareTexts(std::u16string_view a, std::u16string_view b) {
  const auto folded = [](std::u16string_view text) {
    std::u16string lower(text);
    for (char16_t& c : lower) c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
    return lower;
  };
  const int order = folded(a).compare(folded(b));
  return order != 0 ? order : a.compare(b);
}

std::u16string SortKey(const FormRow& row, int column) {
  const std::u16string& cell = row.cells[column];
  if (column != kFormDateColumn || cell.empty()) return cell;
  constexpr char16_t kFirstDecadeOfLastCentury = u'6';
  return (cell[0] < kFirstDecadeOfLastCentury ? u"20" : u"19") + cell;
}

/// The first dot of a name; its end if there is none.
size_t DotOf(std::u16string_view name) {
  return std::min(name.find(u'.'), name.size());
}

bool IsLegalName(std::u16string_view name) {
  const size_t dot = DotOf(name);
  return dot != 0 && name[dot - 1] != u'*' && name[dot - 1] != u' ';
}

/// The name with its folder apart; a problem if it is too long or can't be a name at all.
FormVerdict CheckName(const FormName& name, TextNumber illegal) {
  FormVerdict verdict{.problem = 0, .name = name, .exists = false};
  FormName parts = SplitFormPath(name.name);
  if (parts.folder.empty()) parts.folder = name.folder;
  if (name.name.size() >= kFormPathLength) {
    verdict.problem = text::kFormNotWritable;
    return verdict;
  }
  if (!IsLegalName(parts.name)) {
    verdict.problem = illegal;
    return verdict;
  }
  if (!parts.folder.empty() && !parts.folder.ends_with(kPathSeparator)) parts.folder += kPathSeparator;
  parts.name = WithFormExtension(parts.name);
  verdict.name = std::move(parts);
  if (verdict.Path().size() > kFormPathLength) verdict.problem = text::kFormNotWritable;
  return verdict;
}

}  // namespace

std::vector<std::u16string> FormsIn(const OverlayStore& store) {
  std::vector<std::u16string> paths;
  for (size_t i = 0; i < std::min<size_t>(store.formListNum, kFormCount); ++i) {
    const std::u16string_view path = TextIn(store.forms[i]);
    if (path.empty()) break;
    paths.emplace_back(path);
  }
  return paths;
}

void SetForms(OverlayStore& store, const std::vector<std::u16string>& paths) {
  const size_t count = std::min<size_t>(paths.size(), kFormCount);
  for (size_t i = 0; i < kFormCount; ++i) {
    std::fill(std::begin(store.forms[i]), std::end(store.forms[i]), u'\0');
    if (i < count) paths[i].copy(store.forms[i], kFormPathLength);
  }
  store.formListNum = static_cast<uint16_t>(count);
}

std::optional<size_t> PlaceOfForm(const OverlayStore& store, std::u16string_view path) {
  const std::vector<std::u16string> paths = FormsIn(store);
  const auto found = std::ranges::find(paths, path);
  if (found == paths.end()) return std::nullopt;
  return static_cast<size_t>(found - paths.begin());
}

bool AddForm(OverlayStore& store, std::u16string_view path) {
  std::vector<std::u16string> paths = FormsIn(store);
  if (paths.size() >= kFormCount || path.empty() || path.size() > kFormPathLength) return false;
  paths.emplace_back(path);
  SetForms(store, paths);
  return true;
}

void RemoveForm(const UiState& ui, size_t place) {
  OverlayStore& store = *ui.stores.overlays;
  std::vector<std::u16string> paths = FormsIn(store);
  if (place >= paths.size()) return;
  paths.erase(paths.begin() + static_cast<ptrdiff_t>(place));
  SetForms(store, paths);
  uint8_t& chosen = ChosenForm(ui);
  if (chosen == place)
    chosen = 0;
  else if (chosen > place)
    --chosen;
}

void DropUnfitForms(const UiState& ui) {
  if (ui.stores.overlays == nullptr) return;
  const std::vector<std::u16string> paths = FormsIn(*ui.stores.overlays);
  for (size_t place = paths.size(); place-- > 0;) {
    if (FormCheck(ui, paths[place]) == FormFit::kNone) RemoveForm(ui, place);
  }
}

std::optional<FormFacts> FormFactsOf(const std::u16string& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  FormFacts facts{.bytes = GetFileSize(file), .time = {}};
  const bool known = facts.bytes != INVALID_FILE_SIZE && GetFileLocalTime(file, &facts.time) != 0;
  CloseHandle(file);
  if (!known) return std::nullopt;
  return facts;
}

std::u16string FormSizeText(uint32_t bytes) {
  const int64_t kilobytes = (int64_t{bytes} + 712) / 1024;  // rounds like the list that users know
  return ExpandText(u"%dKB", {std::max<int64_t>(kilobytes, 1)});
}

std::u16string FormTimeText(const SYSTEMTIME& time) {
  constexpr int64_t kCentury = 100;
  return ExpandText(u"%02d/%02d/%02d %d:%02d", {time.wYear % kCentury, int64_t{time.wMonth}, int64_t{time.wDay},
                                                int64_t{time.wHour}, int64_t{time.wMinute}});
}

std::vector<FormRow> FormRowsOf(const OverlayStore& store) {
  std::vector<FormRow> rows;
  for (const std::u16string& path : FormsIn(store)) {
    const FormFacts facts = FormFactsOf(path).value_or(FormFacts());
    FormName parts = SplitFormPath(path);
    rows.push_back({.path = path,
                    .cells = {std::move(parts.name), std::move(parts.folder), FormSizeText(facts.bytes),
                              FormTimeText(facts.time)}});
  }
  return rows;
}

void SortFormRows(std::vector<FormRow>& rows, int column, bool ascending) {
  std::ranges::stable_sort(rows, [&](const FormRow& a, const FormRow& b) {
    const int order = CompareTexts(SortKey(a, column), SortKey(b, column));
    return ascending ? order < 0 : order > 0;
  });
}

FormName SplitFormPath(std::u16string_view path) {
  const size_t name = path.find_last_of(kPathSeparator) + 1;  // 0 if there is no folder
  return {std::u16string(path.substr(0, name)), std::u16string(path.substr(name))};
}

std::u16string WithFormExtension(std::u16string_view name) {
  std::u16string whole(name);
  if (name.find(u'.') == std::u16string_view::npos) whole += kFormExtension;
  return whole;
}

FormVerdict CheckNewForm(const FormName& name) {
  FormVerdict verdict = CheckName(name, text::kFormNameInvalid);
  if (verdict.problem != 0) return verdict;
  const std::u16string_view file = verdict.name.name;
  if (file.substr(DotOf(file)) != kFormExtension) {
    verdict.problem = text::kFormNameNotVxf;
    return verdict;
  }
  const std::u16string path = verdict.Path();
  const DWORD attributes = GetFileAttributesW(path.c_str());
  verdict.exists = attributes != INVALID_FILE_ATTRIBUTES;
  constexpr DWORD kNotReplaceable = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;
  const bool replaceable = !verdict.exists || (attributes & kNotReplaceable) == 0;
  std::u16string folder = verdict.name.folder;
  if (folder.size() > 1) folder.pop_back();
  if (!replaceable || CanMakeFilesIn(folder.c_str()) == 0) verdict.problem = text::kFormNotWritable;
  return verdict;
}

FormVerdict CheckListedForm(const UiState& ui, const FormName& name) {
  FormVerdict verdict = CheckName(name, text::kFormNotInList);
  if (verdict.problem != 0) return verdict;
  const std::u16string path = verdict.Path();
  const bool listed = ui.stores.overlays != nullptr && PlaceOfForm(*ui.stores.overlays, path).has_value();
  const FormFit fit = listed ? FormCheck(ui, path) : FormFit::kNone;
  if (!listed)
    verdict.problem = text::kFormNotInList;
  else if (fit == FormFit::kNone)
    verdict.problem = text::kFormUnusable;
  else if (fit == FormFit::kColorInMonochrome)
    verdict.problem = text::kFormInColor;
  return verdict;
}

}  // namespace heron

// Adding, removing and sorting fax recipients, and what their number means for the cover sheet (recipient_list.h).
#include "pages/recipient_list.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>

#include "catalog/strings.h"
#include "engine/setting.h"
#include "generated/texts.h"
#include "generated/values.h"
#include "platform/api/text.h"
#include "presets/fold_case.h"
#include "uistate/unnamed_params.h"

namespace heron::pages {
namespace {

using engine::IsOn;
using engine::Setting;
using Field = char16_t[kRecipientTextLength];

constexpr std::u16string_view kNumberSigns = u"0123456789#*-PT";

std::u16string_view TextIn(const Field& field) {
  const std::u16string_view whole(field, std::size(field));
  return whole.substr(0, whole.find(u'\0'));
}

void Put(Field& field, std::u16string_view text) {
  std::ranges::fill(field, u'\0');
  text.copy(field, std::size(field));
}

bool Fits(const NewRecipient& recipient) {
  return recipient.name.size() <= kRecipientTextLength && recipient.number.size() <= kRecipientTextLength &&
         recipient.company.size() <= kRecipientTextLength && recipient.department.size() <= kRecipientTextLength;
}

Added Check(const RecipientTable& table, const NewRecipient& recipient) {
  if (table.count >= kRecipientCount) return Added::kFull;
  if (recipient.number.empty()) return Added::kEmpty;
  if (recipient.number.find_first_not_of(kNumberSigns) != std::u16string::npos) return Added::kBadSign;
  if (FindRecipient(table, recipient.number) < table.count) return Added::kRepeated;
  return Fits(recipient) ? Added::kDone : Added::kTooLong;
}

/// The part of a line up to its separator, and what follows in `rest`; a part in double quotes holds separators and
/// doubled quotes.
std::u16string TakePart(std::u16string_view line, char16_t separator, std::u16string_view* rest) {
  std::u16string part;
  size_t at = 0;
  bool quoted = false;
  for (; at < line.size() && (quoted || line[at] != separator); ++at) {
    if (line[at] != u'"') {
      part += line[at];
    } else if (quoted && at + 1 < line.size() && line[at + 1] == u'"') {
      part += line[at++];
    } else {
      quoted = !quoted;
    }
  }
  *rest = at < line.size() ? line.substr(at + 1) : std::u16string_view();
  const size_t first = part.find_first_not_of(u" \t");
  if (first == std::u16string::npos) return {};
  return part.substr(first, part.find_last_not_of(u" \t") + 1 - first);
}

char16_t SeparatorOf(std::u16string_view line) {
  for (const char16_t separator : {u'\t', u';'})
    if (line.find(separator) != std::u16string_view::npos) return separator;
  return u',';
}

/// Name and number of a line; nothing for an empty one.
std::optional<NewRecipient> ParseLine(std::u16string_view line, const NewRecipient& flags) {
  if (line.find_first_not_of(u" \t\r") == std::u16string_view::npos) return std::nullopt;
  if (line.ends_with(u'\r')) line.remove_suffix(1);
  const char16_t separator = SeparatorOf(line);
  NewRecipient recipient = flags;
  std::u16string_view rest;
  recipient.name = TakePart(line, separator, &rest);
  recipient.number = TakePart(rest, separator, &rest);
  // A number alone.
  if (recipient.number.empty()) std::swap(recipient.name, recipient.number);
  return recipient;
}

}  // namespace

Added AddRecipient(RecipientTable& table, const NewRecipient& recipient) {
  const Added result = Check(table, recipient);
  if (result != Added::kDone) return result;
  RecipientRow& row = table.rows[table.count++];
  row = {};
  Put(row.name, recipient.name);
  Put(row.number, recipient.number);
  Put(row.company, recipient.company);
  Put(row.department, recipient.department);
  row.ecm = recipient.ecm || recipient.v34;
  row.overseas = recipient.overseas;
  row.v34 = recipient.v34;
  return result;
}

void RemoveRecipient(RecipientTable& table, uint32_t row) {
  if (row >= table.count) return;
  const uint32_t before = table.count--;
  table.rows[row] = {};
  // The phone book may have brought rows without a number: such a gap is closed as well.
  for (uint32_t gap = 0; gap < table.count; ++gap) {
    if (table.rows[gap].number[0] != u'\0') continue;
    const auto used = std::find_if(table.rows + gap + 1, table.rows + before,
                                   [](const RecipientRow& next) { return next.number[0] != u'\0'; });
    if (used == table.rows + before) break;
    table.rows[gap] = *used;
    *used = {};
  }
}

uint32_t FindRecipient(const RecipientTable& table, std::u16string_view number) {
  const auto same = [number](const RecipientRow& row) { return TextIn(row.number) == number; };
  return static_cast<uint32_t>(std::find_if(table.rows, table.rows + table.count, same) - table.rows);
}

std::u16string CellText(const RecipientRow& row, RecipientField field) {
  const auto flag = [](uint8_t value) { return std::u16string(GetUiString(value != 0 ? text::kOn : text::kOff)); };
  switch (field) {
    case RecipientField::kName:
      return std::u16string(TextIn(row.name));
    case RecipientField::kNumber:
      return std::u16string(TextIn(row.number));
    case RecipientField::kCompany:
      return std::u16string(TextIn(row.company));
    case RecipientField::kDepartment:
      return std::u16string(TextIn(row.department));
    case RecipientField::kEcm:
      return flag(row.ecm);
    case RecipientField::kOverseas:
      return flag(row.overseas);
    default:
      return flag(row.v34);
  }
}

void SortRecipients(RecipientTable& table, RecipientField field, bool ascending) {
  const std::span rows(table.rows, table.count);
  const auto before = [&](const RecipientRow& a, const RecipientRow& b) {
    return CompareFolded(CellText(ascending ? a : b, field), CellText(ascending ? b : a, field)) < 0;
  };
  std::ranges::stable_sort(rows, before);
}

std::vector<RefusedLine> AddRecipientLines(RecipientTable& table, std::u16string_view text, const NewRecipient& flags) {
  const auto trial = std::make_unique<RecipientTable>(table);
  std::vector<RefusedLine> refused;
  for (size_t number = 1; !text.empty(); ++number) {
    const size_t end = std::min(text.find(u'\n'), text.size());
    const std::optional<NewRecipient> recipient = ParseLine(text.substr(0, end), flags);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!recipient) continue;
    const Added result = AddRecipient(*trial, *recipient);
    if (result != Added::kDone) refused.push_back({number, recipient->number, result});
  }
  if (refused.empty()) table = *trial;
  return refused;
}

std::vector<CoverNotice> AlignCover(const UiState& ui) {
  namespace setup = value::lpFaxCover_ReceiveSetup;
  namespace personal = value::lpFaxCover_ReceivePersonal;
  if (Setting<u"lpOutput">(ui) != value::lpOutput::kFax || !IsOn<u"CoverSheet">(ui)) return {};
  std::vector<CoverNotice> notices;
  const uint16_t count = ui.head().faxRowCount;
  uint16_t& detailed = Setting<u"lpFaxCover_ReceiveSetup">(ui);
  uint16_t& kind = Setting<u"lpFaxCover_ReceivePersonal">(ui);
  if (count == 0 && kind == personal::kTyped && detailed == setup::kDetailed) {
    notices.push_back(CoverNotice::kNoneToName);
    kind = personal::kAllOnOneSheet;
  }
  if (count > kMostDetailed && detailed == setup::kDetailed) {
    notices.push_back(CoverNotice::kTooMany);
    detailed = setup::kTemplate;
  }
  const ValueFields printed = FieldsOf(ui, ParamIndexOf(param::kFilePrint));
  if (count > 1 && *printed.value == 1 && detailed == setup::kDetailed && kind == personal::kSheetEach) {
    notices.push_back(CoverNotice::kPrintedToo);
    *printed.value = *printed.committed = 0;
  }
  return notices;
}

std::u16string CoverCaption() {
  return std::u16string(GetUiString(text::kFaxCoverCaption));
}

std::u16string CoverNoticeText(CoverNotice notice) {
  switch (notice) {
    case CoverNotice::kTooMany:
      return platform::ExpandText(GetUiString(text::kTooManyForCover), {int64_t{kMostDetailed}});
    case CoverNotice::kNoneToName:
      return platform::ExpandText(GetUiString(text::kNoneForTypedRecipient), {int64_t{kMostDetailed}});
    default:
      return std::u16string(GetUiString(text::kNotPrintedWithEachSheet));
  }
}

}  // namespace heron::pages

#include "changes/reports.h"

#include <algorithm>

#include "catalog/strings.h"
#include "changes/resolve_parts.h"
#include "generated/texts.h"
#include "platform/api/text.h"
#include "rules/dialogs.h"
#include "settings/papers.h"

namespace heron::engine {
namespace {

constexpr size_t kRoom = 16383;        ///< characters
constexpr size_t kClosing = 3 * 1000;  ///< kept free for what follows the lines
constexpr ControlIndex kCopies = Control(u"Copies");
constexpr ControlIndex kOutputPaper = Control(u"lpOutputPaper");

constexpr std::array<ControlIndex, 3> kTrays = {Control(u"lpMediaSource"), Control(u"lpFrontCoverTray"),
                                                Control(u"lpBackCoverTray")};

/// Which of kTrays the control mirrors, or 3.
size_t TrayOf(ControlIndex control) {
  return static_cast<size_t>(std::ranges::find(kTrays, SourceOfMirror(control)) - kTrays.begin());
}

bool IsDeviceReason(Reason reason) {
  return reason == Reason::kDevice || reason == Reason::kDeviceGone;
}

bool IsOfDevice(const LogEntry& entry) {
  return kControls[entry.control].dialog == dialog::kDevicePage;
}

bool EarnsLine(const Resolver& resolver, const LogEntry& entry, DeviceLines device) {
  const Engine& engine = resolver.engine;
  if (engine.mode != ResolveMode::kSingle && IsSilent(entry.control)) return false;
  if (engine.Usable(entry.control) && IsReportable(entry.control, resolver.traysAfter)) return true;
  return (device == DeviceLines::kYes && IsOfDevice(entry)) || IsDeviceReason(entry.reason);
}

/// What a refused paper of the request means: the double-only paper that the user asked for.
uint16_t OpposingValue(const Resolver& resolver, const Opposition& row) {
  const RequestRow* asked = FindRow(resolver.request, kOutputPaper);
  if (row.control != kOutputPaper || asked == nullptr || !IsSubstitutedPaper(asked->newValue)) return row.value;
  return asked->newValue;
}

/// Text of the character that isn't allowed at its place.
TextNumber NameOf(PageTextError error) {
  if (error == PageTextError::kComma) return text::kComma;
  return error == PageTextError::kZero ? text::kDigitZero : text::kHyphen;
}

}  // namespace

void ReportText::Add(std::u16string_view text) {
  if (text_.size() + text.size() + kClosing <= kRoom) text_ += text;
}

void ReportText::Close(std::u16string_view text) {
  if (text_.size() + text.size() <= kRoom) text_ += text;
}

std::u16string ModelCaption() {
  return u"Varnell 70/36MX-2 PCL";
}

bool IsSilent(ControlIndex control) {
  constexpr ControlIndex kSilent[] = {Control(u"lpDither.Fine"), Control(u"lpDither.Medium"),
                                      Control(u"lpDither.Coarse"), Control(u"FontUseFlg")};
  return std::ranges::count(kSilent, control) != 0;
}

TraySnapshot TakeTraySnapshot(const Engine& engine) {
  TraySnapshot trays;
  for (size_t i = 0; i < kTrays.size(); ++i) {
    TraySnapshot::Row& row = trays.rows[i];
    row.value = row.shown = engine.Value(kTrays[i]);
    for (size_t j = 0; j < i; ++j) {
      if (engine.Available(kTrays[i]) && engine.Available(kTrays[j]) && trays.rows[j].value == row.value)
        row.shown = kUnknownValue;
    }
  }
  return trays;
}

bool IsReportable(ControlIndex control, const TraySnapshot& trays) {
  if (kControls[control].dialog == dialog::kPaperTypeEdit) return false;
  const size_t tray = TrayOf(control);
  return tray == kTrays.size() || trays.rows[tray].shown != kUnknownValue;
}

std::u16string ReportLabel(ControlIndex control, const TraySnapshot& trays) {
  const std::u16string_view label = GetUiString(kControls[control].label);
  const size_t tray = TrayOf(control);
  if (tray == kTrays.size()) return std::u16string(label);
  const std::u16string text = ValueText(kTrays[tray], trays.rows[tray].value);
  return platform::ExpandText(u"%s(%s)", {label, std::u16string_view(text)});
}

std::u16string ValueText(ControlIndex control, uint16_t value) {
  const char16_t* text = control == kCopies ? nullptr : GetValueLabel(kControls[control].id, value);
  if (text != nullptr) return text;
  return platform::ExpandText(u"%d", {int64_t{static_cast<int16_t>(value)}});
}

int CountableEntries(const Engine& engine, const ChangeLog& log) {
  int count = 0;
  for (const LogEntry& entry : log.Entries()) {
    const bool device_reason = IsDeviceReason(entry.reason);
    const bool heard = engine.Usable(entry.control) || IsOfDevice(entry) || device_reason;
    if (engine.mode == ResolveMode::kRecall) {
      count += !IsSilent(entry.control);
    } else {
      count += heard;
      if (engine.mode == ResolveMode::kOpening) count -= IsSilent(entry.control) + device_reason;
    }
  }
  return count;
}

bool AddLines(ReportText& report, const Resolver& resolver, DeviceLines device) {
  bool added = false;
  for (const LogEntry& entry : resolver.log.Entries()) {
    if (!EarnsLine(resolver, entry, device)) continue;
    const std::u16string label = ReportLabel(entry.control, resolver.traysAfter);
    const std::u16string value = ValueText(entry.control, entry.value);
    report.Add(platform::ExpandText(u"%s => %s \n", {std::u16string_view(label), std::u16string_view(value)}));
    added = true;
  }
  return added;
}

bool AddOpposingLines(ReportText& report, const Resolver& resolver) {
  const auto rows = resolver.log.Opposing();
  const auto reportable = [&](const Opposition& row) { return IsReportable(row.control, resolver.traysBefore); };
  const bool takes_all = std::ranges::none_of(rows, reportable);
  for (const Opposition& row : rows) {
    if (!takes_all && !reportable(row)) continue;
    const std::u16string label = ReportLabel(row.control, resolver.traysBefore);
    const std::u16string value = ValueText(row.control, OpposingValue(resolver, row));
    report.Add(platform::ExpandText(u"   %s : %s\n", {std::u16string_view(label), std::u16string_view(value)}));
  }
  return !rows.empty();
}

std::u16string PerPageRemark(const Resolver& resolver, bool follows_lines) {
  if (resolver.log.perPageConflicts <= 0 || resolver.engine.ui->stores.pageLists == nullptr ||
      !IsControlAvailable(resolver.engine, kPerPageListControl))
    return {};
  std::u16string remark(follows_lines ? u"\n" : u"");
  remark += GetUiString(text::kRowsInConflict);
  return remark;
}

std::u16string PageTextErrorText(PageTextError error, PageTextField field) {
  const bool is_row = field == PageTextField::kRow;
  const std::u16string_view name = GetUiString(is_row ? text::kPages : text::kChapterStartPages);
  switch (error) {
    case PageTextError::kNone:
      return {};
    case PageTextError::kCharacter:
      return platform::ExpandText(GetUiString(text::kEnterPageNumbersOf), {name, int64_t{kPageDigits}});
    case PageTextError::kTooMany:
      return platform::ExpandText(GetUiString(text::kTooManyPages),
                                  {name, std::u16string_view(is_row ? u"9999" : u"30")});
    default:
      break;
  }
  const std::u16string_view character = GetUiString(NameOf(error));
  return platform::ExpandText(GetUiString(text::kCharacterMisplaced), {character}) +
         GetUiString(text::kEnterPageNumbers);
}

std::u16string DuplicatePagesText(std::span<const uint16_t> repeated) {
  constexpr size_t kListed = 5;
  if (repeated.empty()) return {};
  std::u16string text = std::u16string(GetUiString(text::kPageOnlyOnce)) + GetUiString(text::kPagesRepeated);
  for (const uint16_t page : repeated.first(std::min(repeated.size(), kListed)))
    text += platform::ExpandText(u"%d,", {int64_t{page}});
  if (repeated.size() > kListed) text += u"...";
  return text;
}

std::u16string RepairedRowText(const Engine& engine, const PerPageRowCheck& repaired) {
  using Check = PerPageRowCheck;
  constexpr std::pair<Check::Fields, ControlIndex> kFields[] = {
      {Check::kType, Control(u"lpInterSheetListPRNType")},
      {Check::kTray, Control(u"lpInterSheetListTray")},
      {Check::kStaple, Control(u"lpInterSheetListStaple")},
      {Check::kStapleStop, Control(u"InterSheetListStapleStop")},
      {Check::kPunch, Control(u"lpInterSheetListPunch")}};
  std::u16string lines;
  for (const auto& [field, control] : kFields) {
    if ((repaired.failed & field) == 0) continue;
    const std::u16string value = ValueText(control, engine.Value(control));
    lines += platform::ExpandText(u"%s => %s \n", {GetUiString(kControls[control].label), std::u16string_view(value)});
  }
  return lines.empty() ? lines : std::u16string(GetUiString(text::kRowChanges)) + lines;
}

}  // namespace heron::engine

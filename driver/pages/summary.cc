// The walk over the tables of the summary (summary_table.h).
#include "pages/summary.h"

#include <new>
#include <span>

#include "engine/setting.h"
#include "pages/summary_table.h"
#include "settings/papers.h"

namespace heron::pages {
namespace {

/// By SummaryTab; the fax tab has a table of another kind.
constexpr std::array<std::span<const SummaryItem>, kSummaryTabCount - 1> kItems = {
    kPaperItems, kPerPageItems, kSpecialItems, kOverlayItems, kWatermarkItems, kQualityItems, kFontItems};

/// An absent label leaves a choice out; "" is one.
const char16_t* ChosenLabel(const SummaryInput& input, uint16_t control) {
  return engine::GetValueLabel(control, engine::GetControlValue(input.engine, control));
}

void AddGuarded(const SummaryItem& item, const SummaryInput& input, SummaryWriter& rows) {
  const bool on = engine::GetControlValue(input.engine, item.guard) == 1;
  const char16_t* chosen = on ? ChosenLabel(input, item.control) : nullptr;
  rows.Row(engine::GetControlLabel(input.engine, item.guard), SwitchText(on), chosen == nullptr ? u"" : chosen);
}

void AddItem(const SummaryItem& item, const SummaryInput& input, SummaryWriter& rows) {
  if (item.kind == SummaryKind::kBuilt) return item.builder(input, item.control, rows);
  if (item.kind == SummaryKind::kGuarded) return AddGuarded(item, input, rows);
  if (item.guard != 0 && engine::GetControlValue(input.engine, item.guard) == 0) return;
  const uint16_t value = engine::GetControlValue(input.engine, item.control);
  const std::u16string label = std::u16string(item.indent) + engine::GetControlLabel(input.engine, item.control);
  if (item.kind == SummaryKind::kCheck) return rows.Row(label, SwitchText(value == 1));
  if (item.kind == SummaryKind::kNumber) return rows.Row(label, platform::ExpandText(item.format, {int64_t{value}}));
  if (const char16_t* chosen = ChosenLabel(input, item.control); chosen != nullptr) rows.Row(label, chosen);
}

bool Appears(const SummaryItem& item, const engine::Engine& engine) {
  return engine::IsControlAvailable(engine, item.control) ||
         (item.kind == SummaryKind::kGuarded && engine::IsControlAvailable(engine, item.guard));
}

/// Runs `add`, which appends rows; with memory exhausted its rows are left out and the walk goes on.
template <typename Add>
void TryRows(SummaryRows& rows, Add&& add) {
  const size_t before = rows.size();
  try {
    add();
  } catch (const std::bad_alloc&) {
    rows.resize(before);
  }
}

void ShowPapers(const UiState& ui) {
  if (ui.stores.userPapers == nullptr) return;
  RefreshUserPaperRows(*ui.stores.userPapers);
  BuildUserPaperSizeTexts(*ui.stores.userPapers);
}

}  // namespace

SummaryRows BuildSummary(UiState& ui, SummaryTab tab) {
  SummaryRows rows;
  SummaryWriter writer(rows);
  // An engine of its own: what the open sheet's engine has computed stays as it is.
  engine::Engine engine(ui);
  engine::EvaluateRules(engine, nullptr);
  const SummaryInput input{ui, engine};
  if (tab == SummaryTab::kFax) {
    for (const FaxBuilder add : kFaxItems) TryRows(rows, [&] { add(input, writer); });
    return rows;
  }
  for (const SummaryItem& item : kItems[static_cast<size_t>(tab)]) {
    if (Appears(item, engine)) TryRows(rows, [&] { AddItem(item, input, writer); });
  }
  return rows;
}

ShownPapers::ShownPapers(const UiState& shown, const UiState& before) : before_(before) {
  ShowPapers(shown);
}

ShownPapers::~ShownPapers() {
  try {
    ShowPapers(before_);
  } catch (const std::bad_alloc&) {
    // Names stay those of the shown settings until the table is filled again.
  }
}

}  // namespace heron::pages

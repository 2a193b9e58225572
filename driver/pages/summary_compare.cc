#include "pages/summary_compare.h"

#include <algorithm>
#include <utility>

#include "presets/fold_case.h"

namespace heron::pages {
namespace {

/// The cell that names a row: rows of the image shift have their word in the second column.
const std::u16string& LabelOf(const SummaryRow& row) {
  return row[0].empty() ? row[1] : row[0];
}

/// Lengths of the best ways to bring the ends of two lists together; equal rows count more than equal labels.
class Alignment {
 public:
  Alignment(const SummaryRows& shown, const SummaryRows& now)
      : shown_(shown), now_(now), width_(now.size() + 1), best_((shown.size() + 1) * width_) {
    for (size_t i = shown.size(); i-- > 0;) {
      for (size_t j = now.size(); j-- > 0;) {
        At(i, j) = std::max({At(i + 1, j), At(i, j + 1), Together(i, j)});
      }
    }
  }

  bool StandTogether(size_t i, size_t j) const {
    return i < shown_.size() && j < now_.size() && LabelOf(shown_[i]) == LabelOf(now_[j]) &&
           best_[i * width_ + j] == Together(i, j);
  }
  /// Of rows that don't stand together, whether the shown one comes next.
  bool ShownFirst(size_t i, size_t j) const {
    return j == now_.size() || (i < shown_.size() && best_[(i + 1) * width_ + j] >= best_[i * width_ + j + 1]);
  }

 private:
  uint32_t& At(size_t i, size_t j) { return best_[i * width_ + j]; }
  uint32_t Together(size_t i, size_t j) const {
    const uint32_t worth = shown_[i] == now_[j] ? 3 : LabelOf(shown_[i]) == LabelOf(now_[j]) ? 2 : 0;
    return worth == 0 ? 0 : worth + best_[(i + 1) * width_ + j + 1];
  }

  const SummaryRows& shown_;
  const SummaryRows& now_;
  size_t width_;
  std::vector<uint32_t> best_;
};

}  // namespace

std::vector<ComparedRow> CompareSummaries(const SummaryRows& shown, const SummaryRows& now) {
  const Alignment alignment(shown, now);
  std::vector<ComparedRow> rows;
  for (size_t i = 0, j = 0; i < shown.size() || j < now.size();) {
    if (alignment.StandTogether(i, j)) {
      rows.push_back({shown[i], now[j], RowOf::kBoth});
      ++i, ++j;
    } else if (alignment.ShownFirst(i, j)) {
      rows.push_back({shown[i], {shown[i][0]}, RowOf::kShown});
      ++i;
    } else {
      rows.push_back({{now[j][0]}, now[j], RowOf::kNow});
      ++j;
    }
  }
  return rows;
}

bool SummaryMentions(UiState& ui, std::u16string_view part) {
  for (size_t tab = 0; tab < kSummaryTabCount; ++tab) {
    for (const SummaryRow& row : BuildSummary(ui, static_cast<SummaryTab>(tab))) {
      if (std::ranges::any_of(row, [&](const std::u16string& cell) { return ContainsFolded(cell, part); })) return true;
    }
  }
  return false;
}

}  // namespace heron::pages

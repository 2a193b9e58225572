// Makes the paper geometry out of the sizes by its rule, at compile time.
//
// Dots are rounded down, in the wide families up. Only plain papers keep a margin; it is the same on all four sides.
#include "catalog/paper_codes.h"
#include "catalog/paper_sizes.h"
#include "catalog/table_text.h"
#include "catalog/tables.h"

namespace heron::catalog {
namespace {

using Text = std::u16string_view;

constexpr uint32_t kMargin = 424;    ///< hundredths of a millimetre
constexpr uint32_t kDotMargin = 50;  ///< the same at 300 dpi

/// Hundredths of a millimetre as dots at 300 dpi.
constexpr uint32_t Dots(uint16_t code, uint32_t size) {
  const uint64_t scaled = uint64_t{size} * 300 + ((code & paper::kFamilyW) != 0 ? 2539 : 0);
  return static_cast<uint32_t>(scaled / 2540);
}

constexpr std::array<uint32_t, 4> Inset(const std::array<uint32_t, 2>& size, uint32_t margin) {
  return {margin, margin, size[0] - margin, size[1] - margin};
}

constexpr PaperGeometry MakeRow(int code_number, const std::array<uint32_t, 2>& size, bool to_edge) {
  const auto code = static_cast<uint16_t>(code_number);
  const bool margin = !to_edge && (code & paper::kFamilies) == 0;
  PaperGeometry row{.code = code, .size = size};
  row.printable = Inset(size, margin ? kMargin : 0);
  row.dotSize = {Dots(code, size[0]), Dots(code, size[1])};
  row.dotPrintable = Inset(row.dotSize, margin ? kDotMargin : 0);
  return row;
}

/// Hands every row that the sizes give to `visit`.
constexpr void ForEachRow(auto visit) {
  ForEachLine(kPaperSizeText, [&](Text line) {
    const int code = Unsigned(CutWord(line));
    const uint32_t width = Unsigned(CutWord(line));
    const uint32_t height = Unsigned(CutWord(line));
    const bool to_edge = line.find(u"edge") != Text::npos;
    visit(MakeRow(code, {width, height}, to_edge));
    if (line.find(u"twin") != Text::npos) visit(MakeRow(code | paper::kRotated, {width, height}, to_edge));
    if (line.find(u"families") == Text::npos) return;
    for (int family = paper::kFamilyF; family <= paper::kFamilies; family += paper::kFamilyF)
      visit(MakeRow(code | family, {width, height}, false));
  });
}

constexpr size_t CountRows() {
  size_t rows = 0;
  ForEachRow([&](const PaperGeometry&) { ++rows; });
  return rows;
}

constexpr auto MakeRows() {
  std::array<PaperGeometry, CountRows()> rows{};
  size_t next = 0;
  ForEachRow([&](const PaperGeometry& row) { rows[next++] = row; });
  return rows;
}

constexpr auto kGeometry = MakeRows();
static_assert(kGeometry.size() == 144);

}  // namespace

const PaperGeometry* GeometryOf(int16_t value) {
  const auto row = std::ranges::find(kGeometry, static_cast<uint16_t>(value), &PaperGeometry::code);
  return row == kGeometry.end() ? nullptr : &*row;
}

std::span<const PaperGeometry> AllGeometry() {
  return kGeometry;
}

}  // namespace heron::catalog

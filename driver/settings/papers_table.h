// The paper tables as constants: what every paper code means, and which codes belong together.
//
// Readers: papers.cc and papers_user.cc. Sizes, in hundredths of a millimetre, are the catalogue's. The plain rows are
// written out in their order; the rows of the families follow from them by rule, and the checks at the end hold the
// counts. A new paper takes a plain row, a label number of the paper names, says which families have it, and has its
// size in catalog/paper_sizes.h.
#pragma once

#include <array>
#include <cstdint>

#include "catalog/paper_sizes.h"
#include "catalog/table_text.h"
#include "settings/papers.h"

namespace heron::papers_internal {

enum Families : uint8_t {
  kPlainOnly,  ///< the plain family alone
  kTabs,       ///< plain and _F
  kAll,        ///< plain, _F, _W and _WF
};

struct PaperRow {
  int16_t code = 0;
  uint16_t label = 0;  ///< text number of the name
  Families families = kPlainOnly;
  uint32_t width = 0;  ///< from the catalogue's sizes; 0 in the rows of user papers, whose sizes come at run time
  uint32_t height = 0;
};

// clang-format off
inline constexpr auto kPlainPapers = std::to_array<PaperRow>({
    // code label  families
    { 257, 48000, kPlainOnly},  // same as document
    { 512, 48001, kPlainOnly},  // end of the list
    { 513, 21550, kPlainOnly},  // user papers
    { 514, 21551, kPlainOnly},
    { 515, 21552, kPlainOnly},
    { 516, 21553, kPlainOnly},
    { 517, 21554, kPlainOnly},
    { 518, 21555, kPlainOnly},
    { 519, 21556, kPlainOnly},
    { 520, 21557, kPlainOnly},
    { 521, 21558, kPlainOnly},
    { 256, 21559, kPlainOnly},
    {   8, 48010, kAll},        // A3
    {   9, 48011, kAll},        // A4
    {2057, 48012, kAll},
    {  11, 48013, kAll},        // A5
    {2059, 48014, kAll},
    {  70, 48015, kAll},        // A6
    {  12, 48016, kAll},        // B4
    {  13, 48017, kAll},        // B5
    {2061, 48018, kAll},
    {  88, 48019, kAll},        // B6
    {   1, 48020, kAll},        // letter
    {2049, 48021, kAll},
    {   3, 48022, kAll},        // ledger
    {   5, 48023, kAll},        // legal
    {   6, 48024, kAll},        // statement
    {2054, 48025, kAll},
    {   7, 48026, kAll},        // executive
    {2055, 48027, kAll},
    {  14, 48028, kAll},        // folio; twice in the list, a search finds the first
    {  14, 48028, kAll},
    { 330, 48029, kAll},        // 12 x 18 inch
    { 340, 48030, kAll},        // folios of other widths
    { 341, 48031, kAll},
    { 342, 48032, kAll},
    { 343, 48033, kAll},
    { 320, 48034, kAll},
    { 360, 48035, kAll},        // 8K
    { 361, 48036, kAll},        // 16K
    {2409, 48037, kAll},
    {  34, 48038, kAll},        // B5 (ISO)
    {2082, 48039, kAll},
    {  28, 48040, kAll},        // envelope C5
    {2076, 48041, kAll},
    {  27, 48042, kAll},        // envelope DL
    {  37, 48043, kAll},        // envelope Monarch
    {  20, 48044, kAll},        // envelope No. 10
    {  43, 48045, kAll},        // postcard
    { 390, 48046, kAll},        // postcard 4 x 6 inch
    {1033, 48047, kTabs},       // A4 tab
    {1025, 48048, kTabs},       // letter tab
    { 370, 48049, kPlainOnly},  // envelopes Youkei 1, 4 and 6
    {  91, 48050, kPlainOnly},
    { 372, 48051, kPlainOnly},
    {  31, 48052, kPlainOnly},  // envelope C6
    {  19, 48053, kPlainOnly},  // envelope No. 9
    {  38, 48054, kPlainOnly},  // envelope Personal
    { 333, 48055, kPlainOnly},  // 7 x 8.5 inch
    {2381, 48056, kPlainOnly},
    { 334, 48057, kPlainOnly},  // 4.25 x 5.5 inch
    {2382, 48058, kPlainOnly},
});

/// A family adds its bits to a size's code and its distance to the label number.
struct Family {
  int16_t bits;
  uint16_t labels;
};
inline constexpr Family kFullFamily{0x1000, 90};
inline constexpr auto kFamilies = std::to_array<Family>({kFullFamily, {0x2000, 190}, {0x3000, 290}});

/// (rotated code, plain code) of the plain family; the other families add their bits to both.
struct CodePair {
  int16_t first;
  int16_t second;
};
inline constexpr auto kPlainTwins = std::to_array<CodePair>({
    {2057,   9}, {2061,  13}, {2049,   1}, {2055,   7}, {2082,  34},
    {2076,  28}, {2409, 361}, {2380, 332}, {2381, 333}, {2382, 334},
});

/// (code, substitute): papers that the device makes of a larger sheet, and that sheet.
inline constexpr auto kSubstitutePapers = std::to_array<CodePair>({
    {  332,   330}, { 2380,   330}, {  333,     5}, { 2381,     5}, {  334,  2054}, { 2382,  2054},
    { 4428,  4426}, { 6476,  4426}, { 4429,  4101}, { 6477,  4101}, { 4430,  4102}, { 6478,  4102},
    { 8524,  8522}, {10572,  8522}, { 8525,  8197}, {10573,  8197}, { 8526,  8198}, {10574,  8198},
    {12620, 12618}, {14668, 12618}, {12621, 12293}, {14669, 12293}, {12622, 12294}, {14670, 12294},
});

inline constexpr auto kSourceLimits = std::to_array<SourceLimit>({
    // source, unit of feed, label, width, length, printable size, margins, unit
    {  7, 0, 21530,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {  1, 0, 21531,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {  2, 0, 21532,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {258, 0, 21533,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {259, 0, 21534,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {270, 0, 21541,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {  4, 0, 21537,  920,  2970, 1480,  4318,  2970,  4318, 424, 424, 424, 424, 1},
    {  7, 0, 21530, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
    {  1, 0, 21531, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
    {  2, 0, 21532, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
    {258, 0, 21533, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
    {259, 0, 21534, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
    {270, 0, 21541, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
    {  4, 0, 21537, 3622, 11692, 5826, 17000, 11692, 17000, 424, 424, 424, 424, 2},
});
// clang-format on

inline constexpr uint16_t kFirstFixedLabel = 48010;  ///< names below are those of entries without a size of their own
inline constexpr size_t kPapersInUse = 178;
inline constexpr size_t kPaperRows = 180;  ///< two closing rows of code 0

/// Takes the catalogue's size of the row's paper; a rotated code and those of the families have that of their plain
/// code.
consteval PaperRow Sized(PaperRow row) {
  if (row.label < kFirstFixedLabel) return row;
  catalog::ForEachLine(catalog::kPaperSizeText, [&](std::u16string_view line) {
    const int code = catalog::Unsigned(catalog::CutWord(line));
    if (code != (row.code & ~0x3800)) return;
    row.width = catalog::Unsigned(catalog::CutWord(line));
    row.height = catalog::Unsigned(catalog::CutWord(line));
  });
  return row;
}

consteval std::array<PaperRow, kPaperRows> BuildPaperTable() {
  std::array<PaperRow, kPaperRows> rows{};
  size_t used = 0;
  for (const PaperRow& row : kPlainPapers) rows[used++] = Sized(row);
  for (const Family& family : kFamilies) {
    for (PaperRow row : kPlainPapers) {
      if (row.families == kPlainOnly || (row.families == kTabs && family.bits != kFullFamily.bits)) continue;
      row.code = static_cast<int16_t>(row.code + family.bits);
      row.label = static_cast<uint16_t>(row.label + family.labels);
      rows[used++] = Sized(row);
    }
  }
  if (used != kPapersInUse) throw "the families don't add up";
  return rows;
}
inline constexpr auto kPaperTable = BuildPaperTable();

consteval auto BuildRotatedTwins() {
  std::array<CodePair, kPlainTwins.size() * 4> pairs{};
  size_t used = 0;
  for (int bits = 0; bits <= 0x3000; bits += 0x1000) {
    for (const CodePair& pair : kPlainTwins) {
      pairs[used++] = {static_cast<int16_t>(pair.first + bits), static_cast<int16_t>(pair.second + bits)};
    }
  }
  return pairs;
}
inline constexpr auto kRotatedTwins = BuildRotatedTwins();

static_assert(kPlainPapers.size() == 62 && kRotatedTwins.size() == 40);
static_assert(kSubstitutePapers.size() == 24 && kSourceLimits.size() == 14);

}  // namespace heron::papers_internal

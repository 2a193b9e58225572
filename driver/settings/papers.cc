// Look-ups in the paper tables, and the part of them that is filled at run time: names and the user papers' sizes.
//
// The run-time part is shared by the process and guarded by one lock. A text that has been handed out is never written
// again: a changed name is another text, so a reader needs no lock and sees no half-written one.
#include "settings/papers.h"

#include <algorithm>
#include <mutex>
#include <set>

#include "catalog/strings.h"
#include "platform/api/text.h"
#include "settings/papers_table.h"

namespace heron {
namespace {

using papers_internal::CodePair;
using papers_internal::kPaperRows;
using papers_internal::kPaperTable;
using papers_internal::kRotatedTwins;
using papers_internal::kSubstitutePapers;

constexpr size_t kLongestLabel = 31;  ///< characters of a name taken from the texts

struct Size {
  uint32_t width = 0;
  uint32_t height = 0;
};

constexpr size_t kSizeTextRoom = 16;
using SizeText = std::array<char16_t, kSizeTextRoom>;

/// "(297x420mm)" of a size in hundredths of a millimetre, rounded to whole millimetres; empty for size 0.
consteval SizeText MakeSizeText(uint32_t width, uint32_t height) {
  SizeText text{};
  if (width == 0) return text;
  size_t length = 0;
  const auto append = [&](uint32_t hundredths) {
    const uint32_t millimetres = (hundredths + 50) / 100;
    uint32_t divisor = 1;
    while (millimetres / divisor >= 10) divisor *= 10;
    for (; divisor > 0; divisor /= 10) text[length++] = static_cast<char16_t>(u'0' + millimetres / divisor % 10);
  };
  text[length++] = u'(';
  append(width);
  text[length++] = u'x';
  append(height);
  for (const char16_t c : {u'm', u'm', u')'}) text[length++] = c;
  return text;
}

consteval auto MakeSizeTexts() {
  std::array<SizeText, kPaperRows> texts{};
  for (size_t i = 0; i < kPaperRows; ++i) texts[i] = MakeSizeText(kPaperTable[i].width, kPaperTable[i].height);
  return texts;
}
constexpr auto kSizeTexts = MakeSizeTexts();

/// What the rows get at run time; `mutex` guards all of it.
struct RuntimeRows {
  std::mutex mutex;
  std::set<std::u16string> texts;  ///< every text ever handed out
  std::array<const char16_t*, kPaperRows> labels;
  std::array<const char16_t*, kUserPaperCount> userSizeTexts;
  std::array<Size, kUserPaperCount> userSizes{};  ///< thousandths of an inch

  RuntimeRows() {
    labels.fill(u"");
    userSizeTexts.fill(u"");
  }
  const char16_t* Keep(std::u16string text) { return texts.insert(std::move(text)).first->c_str(); }
};

RuntimeRows& Runtime() {
  static RuntimeRows rows;
  return rows;
}

/// Index of the first row with the code, or -1.
int FindRow(int32_t code) {
  for (size_t i = 0; i < kPaperRows; ++i) {
    if (kPaperTable[i].code == code) return static_cast<int>(i);
  }
  return -1;
}

size_t UserPaperIndex(int32_t code) {
  return static_cast<size_t>(CustomPaperNumber(code) - 1);
}

/// Size of the row with the code: of a user paper what RefreshUserPaperRows brought. False if there is no row.
bool FindSize(int32_t code, Size* size) {
  const int row = FindRow(code);
  if (row < 0) return false;
  if (IsCustomPaper(code)) {
    RuntimeRows& runtime = Runtime();
    const std::scoped_lock lock(runtime.mutex);
    *size = runtime.userSizes[UserPaperIndex(code)];
  } else {
    *size = {kPaperTable[static_cast<size_t>(row)].width, kPaperTable[static_cast<size_t>(row)].height};
  }
  return true;
}

uint32_t ThouToMm(uint32_t value) {
  return ThouToTenthMm(1, value) * 10;
}
uint32_t ThouToMmExact(uint32_t value) {
  return static_cast<uint32_t>(uint64_t{value} * 254 / 100);
}

/// The steps that the size operations share; `convert_user` and `convert_plain` turn the row's unit into the asked one.
template <typename ConvertUser, typename ConvertPlain>
bool ConvertedSize(int32_t code, uint32_t* width, uint32_t* height, uint32_t if_zero, ConvertUser convert_user,
                   ConvertPlain convert_plain) {
  Size size;
  if (!FindSize(code, &size)) return false;
  const auto convert = [&](uint32_t value) {
    const uint32_t converted = IsCustomPaper(code) ? convert_user(value) : convert_plain(value);
    return converted != 0 ? converted : if_zero;
  };
  *width = convert(size.width);
  *height = convert(size.height);
  return true;
}

uint32_t Unchanged(uint32_t value) {
  return value;
}

std::u16string BoundedText(const char16_t* text, size_t room) {
  return {text, static_cast<size_t>(std::find(text, text + room, u'\0') - text)};
}

/// The other member of the first pair that has `code` on the given side, or -1.
int32_t PartnerOf(std::span<const CodePair> pairs, int32_t code, int16_t CodePair::*side, int16_t CodePair::*other) {
  const auto pair = std::find_if(pairs.begin(), pairs.end(), [&](const CodePair& row) { return row.*side == code; });
  return pair != pairs.end() ? (*pair).*other : -1;
}

}  // namespace

std::u16string UserPaperSizeText(const CustomPaperEntry& entry) {
  const uint32_t width = ThouToTenthMm(entry.unit, entry.width);
  const uint32_t height = ThouToTenthMm(entry.unit, entry.height);
  const bool metric = entry.unit == value::lpUDPaperUnit::kMillimetre;
  const uint32_t whole = metric ? 10 : 1000;
  return platform::ExpandText(metric ? u"%ld.%01ldx%ld.%01ldmm" : u"%ld.%03ldx%ld.%03ldinch",
                              {width / whole, width % whole, height / whole, height % whole});
}

bool IsCustomPaper(int32_t code) {
  return CustomPaperNumber(code) != 0;
}

int CustomPaperNumber(int32_t code) {
  if (code == kLastUserPaper) return kUserPaperCount;
  return code > kCustomEntry && code < kCustomEntry + kUserPaperCount ? code - kCustomEntry : 0;
}

int16_t CustomPaperCode(int number) {
  if (number == kUserPaperCount) return kLastUserPaper;
  return static_cast<int16_t>(kCustomEntry + (number > 1 && number < kUserPaperCount ? number : 1));
}

void LoadPaperLabels() {
  RuntimeRows& runtime = Runtime();
  const std::scoped_lock lock(runtime.mutex);
  for (size_t i = 0; i < kPaperRows; ++i) {
    std::u16string label = GetUiString(kPaperTable[i].label);
    if (label.size() > kLongestLabel) label.resize(kLongestLabel);
    runtime.labels[i] = runtime.Keep(std::move(label));
  }
}

void RefreshUserPaperRows(const UserPaperStore& store) {
  RuntimeRows& runtime = Runtime();
  const std::scoped_lock lock(runtime.mutex);
  for (size_t n = 0; n < store.size(); ++n) {
    const auto row = static_cast<size_t>(FindRow(CustomPaperCode(static_cast<int>(n) + 1)));
    runtime.userSizes[n] = {store[n].width, store[n].height};
    runtime.labels[row] = runtime.Keep(BoundedText(store[n].name, std::size(store[n].name)));
  }
}

void BuildUserPaperSizeTexts(const UserPaperStore& store) {
  RuntimeRows& runtime = Runtime();
  const std::scoped_lock lock(runtime.mutex);
  for (size_t n = 0; n < store.size(); ++n) runtime.userSizeTexts[n] = runtime.Keep(UserPaperSizeText(store[n]));
}

const char16_t* PaperLabel(int32_t code) {
  const int row = FindRow(code);
  if (row < 0) return nullptr;
  RuntimeRows& runtime = Runtime();
  const std::scoped_lock lock(runtime.mutex);
  return runtime.labels[static_cast<size_t>(row)];
}

const char16_t* PaperSizeText(int32_t code) {
  const int row = FindRow(code);
  if (row < 0) return nullptr;
  if (!IsCustomPaper(code)) return kSizeTexts[static_cast<size_t>(row)].data();
  RuntimeRows& runtime = Runtime();
  const std::scoped_lock lock(runtime.mutex);
  return runtime.userSizeTexts[UserPaperIndex(code)];
}

uint32_t ThouToTenthMm(int unit, uint32_t value) {
  return unit == value::lpUDPaperUnit::kMillimetre ? static_cast<uint32_t>((uint64_t{value} * 10000 / 3937 + 9) / 10)
                                                   : value;
}

bool PaperSizeMm(int32_t code, uint32_t* width, uint32_t* height) {
  return ConvertedSize(code, width, height, 10000, ThouToMm, Unchanged);
}

bool PaperSizeMmExact(int32_t code, uint32_t* width, uint32_t* height) {
  return ConvertedSize(code, width, height, 10000, ThouToMmExact, Unchanged);
}

bool PaperSizeThou(int32_t code, uint32_t* width, uint32_t* height) {
  return ConvertedSize(code, width, height, 100, Unchanged, [](uint32_t value) { return value * 100 / 254; });
}

void MaxPaperSize(const UserPaperStore& store, uint32_t* width, uint32_t* height) {
  *width = *height = 0;
  for (const papers_internal::PaperRow& row : kPaperTable) {
    *width = std::max(*width, row.width);
    *height = std::max(*height, row.height);
  }
  RuntimeRows& runtime = Runtime();
  const std::scoped_lock lock(runtime.mutex);
  for (size_t n = 0; n < store.size(); ++n) {
    if (store[n].longFlag != 0) continue;
    *width = std::max(*width, ThouToMm(runtime.userSizes[n].width));
    *height = std::max(*height, ThouToMm(runtime.userSizes[n].height));
  }
}

bool IsRotatedCode(int32_t code) {
  return PlainTwin(code) != -1;
}
bool IsPlainTwin(int32_t code) {
  return RotatedTwin(code) != -1;
}
int32_t PlainTwin(int32_t code) {
  return PartnerOf(kRotatedTwins, code, &CodePair::first, &CodePair::second);
}
int32_t RotatedTwin(int32_t code) {
  return PartnerOf(kRotatedTwins, code, &CodePair::second, &CodePair::first);
}
bool IsSubstitutedPaper(int32_t code) {
  return PaperSubstitute(code) != -1;
}
int32_t PaperSubstitute(int32_t code) {
  return PartnerOf(kSubstitutePapers, code, &CodePair::first, &CodePair::second);
}

}  // namespace heron

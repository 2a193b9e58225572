#include "pages/size_text.h"

#include <algorithm>

#include "platform/api/text.h"
#include "settings/papers.h"

namespace heron::pages {

using platform::TypedKey;

namespace {

/// A field without what is selected in it, which the key is going to replace.
struct Remainder {
  std::u16string text;
  size_t caret;

  explicit Remainder(const TypedKey& key) : text(key.text), caret(std::min(key.selection_start, key.text.size())) {
    const size_t end = std::min(std::max(key.selection_end, caret), text.size());
    text.erase(caret, end - caret);
  }
};

bool IsControlKey(const TypedKey& key) {
  return key.character < u' ';
}

/// A zero before other digits, or behind a lone zero.
bool IsIdleZero(const TypedKey& key, const Remainder& field) {
  return key.character == u'0' && (field.caret == 0 || (field.text == u"0" && field.caret == 1));
}

bool IsSelected(const TypedKey& key) {
  return key.selection_start != key.selection_end;
}

/// Shown values in a millimetre, or in an inch.
int64_t ScaleOf(int unit) {
  return unit == kInch ? 1000 : 10;
}

/// A second point, or one digit more behind the point than the unit has.
bool IsBeyondFraction(int unit, char16_t key, const Remainder& field) {
  const size_t digits = unit == kMillimetre ? 1 : 3;
  const size_t point = field.text.substr(0, SizeTextLimit(unit)).find(u'.');
  if (point == std::u16string::npos) return false;
  if (key == u'.') return true;
  size_t behind = 0;
  while (point + 1 + behind < field.text.size() && field.text[point + 1 + behind] >= u'0' &&
         field.text[point + 1 + behind] <= u'9') {
    ++behind;
  }
  return field.caret > point && behind >= digits;
}

}  // namespace

uint32_t ThouFromShown(int unit, uint32_t shown) {
  return unit == kMillimetre ? static_cast<uint32_t>(uint64_t{shown} * 1000 / 254) : shown;
}

uint32_t ShownFromThou(int unit, uint32_t thou) {
  return ThouToTenthMm(unit, thou);
}

std::u16string ExpandSize(int unit, const SizeFormat& format, uint32_t shown) {
  const int64_t scale = ScaleOf(unit);
  return platform::ExpandText(unit == kInch ? format.inch : format.mm, {shown / scale, shown % scale});
}

std::u16string ExpandSizes(int unit, const SizeFormat& format, uint32_t first, uint32_t second) {
  const int64_t scale = ScaleOf(unit);
  return platform::ExpandText(unit == kInch ? format.inch : format.mm,
                              {first / scale, first % scale, second / scale, second % scale});
}

std::u16string FormatSize(int unit, uint32_t shown) {
  return ExpandSize(unit, {u"%ld.%01ldmm", u"%ld.%03ldinch"}, shown);
}

uint32_t ParseSize(int unit, std::u16string_view text) {
  constexpr size_t kLongest = 32;
  constexpr int kFractionDigits = 5;
  constexpr uint64_t kCeiling = 1'000'000;  // beyond every size, and far from any overflow
  if (text.size() >= kLongest) return 0;
  const auto is_digit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
  size_t at = 0;
  while (at < text.size() && !is_digit(text[at]) && text[at] != u'.') ++at;
  uint64_t whole = 0;
  for (; at < text.size() && is_digit(text[at]); ++at) whole = std::min(whole * 10 + (text[at] - u'0'), kCeiling);
  uint64_t fraction = 0;
  uint64_t scale = 1;
  if (at < text.size() && text[at] == u'.') {
    ++at;
    for (int n = 0; n < kFractionDigits && at < text.size() && is_digit(text[at]); ++n, ++at) {
      fraction = fraction * 10 + (text[at] - u'0');
      scale *= 10;
    }
  }
  const uint64_t thousandths = whole * 1000 + (scale / 2 + fraction * 1000) / scale;
  return static_cast<uint32_t>(unit == kMillimetre ? thousandths / 100 : thousandths);
}

size_t SizeTextLimit(int unit) {
  return unit == kMillimetre ? 7 : 10;
}

bool AcceptsSizeKey(int unit, const TypedKey& key) {
  if (IsControlKey(key)) return true;
  if (key.text.size() > SizeTextLimit(unit) && !IsSelected(key)) return false;
  const Remainder field(key);
  if (IsIdleZero(key, field) || (key.character == u'.' && field.caret == 0)) return false;
  const char16_t before = field.caret == 0 ? u'\0' : field.text[field.caret - 1];
  if (before != u'\0' && std::u16string_view(u"inchm").find(before) != std::u16string_view::npos) return false;
  const bool is_digit = key.character >= u'0' && key.character <= u'9';
  if (!is_digit && key.character != u'.') return false;
  return !IsBeyondFraction(unit, key.character, field);
}

bool AcceptsNumberKey(const TypedKey& key, size_t most) {
  if (IsControlKey(key)) return true;
  if (key.text.size() > most && !IsSelected(key)) return false;
  if (IsIdleZero(key, Remainder(key))) return false;
  return key.character >= u'0' && key.character <= u'9';
}

bool AcceptsShortNumberKey(const TypedKey& key) {
  if (IsControlKey(key)) return true;
  const Remainder field(key);
  if (key.character < u'0' || key.character > u'9') return false;
  if (key.character == u'0' && field.caret == 0 && !field.text.empty()) return false;
  return field.caret == 0 || field.text.front() != u'0';
}

}  // namespace heron::pages

// The expander of texts with places (text.h).

#include <algorithm>
#include <charconv>

#include "platform/api/text.h"

namespace heron::platform {
namespace {

constexpr size_t kWidestPlace = 999;

/// One place of a text, parsed.
struct Spot {
  bool zeros = false;
  size_t width = 0;
  char16_t form = 0;  ///< 's', 'd' (signed), 'u' (unsigned) or '%'
};

/// Parses a placeholder at the front of `text`, behind the percent sign. False for an unknown form.
bool TakeSpot(std::u16string_view* text, Spot* spot) {
  const auto next = [text] { return text->empty() ? u'\0' : text->front(); };
  if (next() == u'%') {
    spot->form = u'%';
    text->remove_prefix(1);
    return true;
  }
  if (next() == u'0') {
    spot->zeros = true;
    text->remove_prefix(1);
  }
  for (; next() >= u'0' && next() <= u'9'; text->remove_prefix(1)) {
    spot->width = spot->width * 10 + static_cast<size_t>(next() - u'0');
    if (spot->width > kWidestPlace) return false;  // texts come from a module; a huge width would take all memory
  }
  const bool is_long = next() == u'l';
  if (is_long) text->remove_prefix(1);
  const char16_t form = next();
  if (form == u'd' || form == u'u') spot->form = form;
  if (form == u'i' && !is_long) spot->form = u'd';
  if (form == u's' && !is_long) spot->form = u's';
  if (spot->form == 0) return false;
  text->remove_prefix(1);
  return true;
}

void AppendNumber(const Spot& spot, int64_t value, std::u16string* out) {
  const int64_t shown =
      spot.form == u'd' ? int64_t{static_cast<int32_t>(value)} : int64_t{static_cast<uint32_t>(value)};
  char digits[16];
  const char* end = std::to_chars(digits, digits + sizeof digits, shown < 0 ? -shown : shown).ptr;
  const size_t sign = shown < 0 ? 1 : 0;
  const size_t length = static_cast<size_t>(end - digits) + sign;
  const size_t filler = spot.width - std::min(spot.width, length);
  if (!spot.zeros) out->append(filler, u' ');
  out->append(sign, u'-');
  if (spot.zeros) out->append(filler, u'0');
  out->append(static_cast<const char*>(digits), end);
}

bool AppendArgument(const Spot& spot, const TextArgument& argument, std::u16string* out) {
  if (const auto* value = std::get_if<int64_t>(&argument)) {
    if (spot.form == u's') return false;
    AppendNumber(spot, *value, out);
    return true;
  }
  if (spot.form != u's') return false;
  const std::u16string_view text = std::get<std::u16string_view>(argument);
  out->append(spot.width - std::min(spot.width, text.size()), u' ');
  out->append(text);
  return true;
}

}  // namespace

std::u16string ExpandText(std::u16string_view format, std::initializer_list<TextArgument> arguments) {
  std::u16string out;
  auto argument = arguments.begin();
  std::u16string_view rest = format;
  while (!rest.empty()) {
    const size_t plain = std::min(rest.find(u'%'), rest.size());
    out.append(rest.substr(0, plain));
    rest.remove_prefix(plain);
    if (rest.empty()) break;
    rest.remove_prefix(1);
    Spot spot;
    // A text that can't be filled is shown as it is: better than no message, and never a wrong argument.
    if (!TakeSpot(&rest, &spot)) return std::u16string(format);
    if (spot.form == u'%') {
      out += u'%';
      continue;
    }
    if (argument == arguments.end() || !AppendArgument(spot, *argument, &out)) return std::u16string(format);
    ++argument;
  }
  return argument == arguments.end() ? out : std::u16string(format);
}

}  // namespace heron::platform

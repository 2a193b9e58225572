#include "renderdriver/form_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <string_view>

#include "generated/values.h"
#include "renderdriver/bytes.h"

namespace heron::renderdriver {
namespace {

/// What a stream of the page language begins with: its byte order, its name and version.
constexpr std::string_view kStreamHeader = ") HP-PCL XL;2;0;Comment overlay form\n";
/// A comment: an array of bytes with a 16-bit length, the attribute and the operator behind it.
constexpr std::string_view kArray = "\xC8\xC1";
constexpr std::string_view kTail = "\xF8\x81\x47";
/// Marks the page, which a 32-bit length and the PDF follow.
constexpr std::string_view kPageMark = "\nHERON FORM PAGE 1\n";

constexpr std::string_view kModel = "Varnell 70/36MX-2 PCL";
constexpr int kMonochromeForm = 1, kColorForm = 2;

int ColorOf(const DriverEnv& record) {
  const uint8_t mode = Get<"lpColorMode">(record);
  const bool color = mode == value::lpColorMode::kColor || mode == value::lpColorMode::kTwoColor;
  return color ? kColorForm : kMonochromeForm;
}

std::string DescriptionOf(const DriverEnv& record) {
  return "Model=" + std::string(kModel) + ";System=0;Destination=US;PDL=" + std::to_string(Get<"lpPDLType">(record)) +
         ";Color=" + std::to_string(ColorOf(record)) + ";Reserved=0;OS=1;Version=02.00;";
}

std::string_view AsText(std::span<const uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The text of the first comment; empty if there is none.
std::string_view CommentOf(std::string_view form) {
  for (size_t at = form.find(kArray); at != std::string_view::npos; at = form.find(kArray, at + 1)) {
    const size_t text = at + kArray.size() + sizeof(uint16_t);
    if (text > form.size()) break;
    const size_t length = static_cast<uint8_t>(form[text - 2]) | size_t{static_cast<uint8_t>(form[text - 1])} << 8;
    if (form.size() - text < length) break;
    if (form.substr(text + length, kTail.size()) == kTail) return form.substr(text, length);
  }
  return {};
}

std::string_view ValueIn(std::string_view description, std::string_view name) {
  const std::string key = std::string(name) + '=';
  size_t at = description.starts_with(key) ? 0 : description.find(';' + key);
  if (at == std::string_view::npos) return {};
  at = description.find('=', at) + 1;
  return description.substr(at, description.find(';', at) - at);
}

int NumberIn(std::string_view text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

std::vector<uint8_t> MakeForm(const DriverEnv& record, std::span<const uint8_t> page) {
  const std::string description = DescriptionOf(record);
  std::string form(kStreamHeader);
  form.append(kArray);
  form += static_cast<char>(description.size() & 0xFF);
  form += static_cast<char>(description.size() >> 8 & 0xFF);
  form.append(description).append(kTail).append(kPageMark);
  std::array<uint8_t, sizeof(uint32_t)> length{};
  Write(std::span(length), 0, static_cast<uint32_t>(page.size()));
  form.append(AsText(length)).append(AsText(page));
  return {form.begin(), form.end()};
}

std::optional<std::span<const uint8_t>> PageOfForm(std::span<const uint8_t> form) {
  const size_t mark = AsText(form).find(kPageMark);
  if (mark == std::string_view::npos) return std::nullopt;
  const std::span<const uint8_t> rest = form.subspan(mark + kPageMark.size());
  if (rest.size() < sizeof(uint32_t)) return std::nullopt;
  const std::span<const uint8_t> page = rest.subspan(sizeof(uint32_t));
  if (page.size() != Read<uint32_t>(rest)) return std::nullopt;
  return page;
}

bool FormSuits(std::span<const uint8_t> form, const DriverEnv& record) {
  const std::string_view description = CommentOf(AsText(form));
  const auto same = [](std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) {
      return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
    });
  };
  return same(ValueIn(description, "Model"), kModel) &&
         NumberIn(ValueIn(description, "PDL")) <= Get<"lpPDLType">(record) &&
         NumberIn(ValueIn(description, "Color")) <= ColorOf(record);
}

}  // namespace heron::renderdriver

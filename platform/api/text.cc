// Text between UTF-16 and bytes. UTF-8 is converted here; every other code page is the backend's.

#include "platform/api/text.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/api/characters.h"
#include "platform/api/guarded.h"

namespace heron::platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t c) {
  return (c & 0xFC00) == 0xD800;
}
bool IsLowSurrogate(char16_t c) {
  return (c & 0xFC00) == 0xDC00;
}

void AppendUtf8(char32_t c, std::string* out) {
  const auto put = [out](char32_t byte) { out->push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

/// What a first byte announces: the continuation bytes that follow, its own bits, and the least character of that
/// length.
struct Lead {
  size_t more;
  char32_t bits;
  char32_t least;
};

bool ReadLead(unsigned char byte, Lead* lead) {
  if (byte >= 0xC2 && byte < 0xE0)
    *lead = {1, byte & 0x1Fu, 0x80};
  else if (byte >= 0xE0 && byte < 0xF0)
    *lead = {2, byte & 0x0Fu, 0x800};
  else if (byte >= 0xF0 && byte < 0xF5)
    *lead = {3, byte & 0x07u, 0x10000};
  else
    return false;
  return true;
}

/// The character that `bytes` begins with, and its length. A sequence that is cut, overlong, a surrogate or too high is
/// bad as its first byte alone.
char32_t ReadUtf8(std::string_view bytes, size_t* length) {
  *length = 1;
  const auto first = static_cast<unsigned char>(bytes[0]);
  if (first < 0x80) return first;
  Lead lead{};
  if (!ReadLead(first, &lead) || bytes.size() <= lead.more) return kReplacement;
  char32_t c = lead.bits;
  for (size_t i = 1; i <= lead.more; ++i) {
    const auto next = static_cast<unsigned char>(bytes[i]);
    if ((next & 0xC0) != 0x80) return kReplacement;
    c = c << 6 | (next & 0x3Fu);
  }
  // Overlong forms would let a separator or a control character slip through a check of bytes.
  if (c < lead.least || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return kReplacement;
  *length = lead.more + 1;
  return c;
}

/// The length in units of a caller's text whose `length` may be -1 for "with the terminator".
template <class Char>
std::basic_string_view<Char> CallersText(const Char* text, int length) {
  if (length >= 0) return {text, static_cast<size_t>(length)};
  return {text, std::char_traits<Char>::length(text) + 1};
}

DWORD Encode(DWORD code_page, std::u16string_view text, std::string* out) {
  if (code_page == CP_UTF8) {
    *out = ToUtf8(text);
    return kErrorSuccess;
  }
  return WithBackend([&](const Backend& backend) {
    const DWORD page = code_page == CP_ACP ? backend.text->ActiveCodePage() : code_page;
    if (page == CP_UTF8)
      *out = ToUtf8(text);
    else if (!backend.text->Encode(page, text, out))
      return kErrorInvalidParameter;
    return kErrorSuccess;
  });
}

DWORD Decode(DWORD code_page, std::string_view bytes, std::u16string* out) {
  if (code_page == CP_UTF8) {
    *out = FromUtf8(bytes);
    return kErrorSuccess;
  }
  return WithBackend([&](const Backend& backend) {
    const DWORD page = code_page == CP_ACP ? backend.text->ActiveCodePage() : code_page;
    if (page == CP_UTF8)
      *out = FromUtf8(bytes);
    else if (!backend.text->Decode(page, bytes, out))
      return kErrorInvalidParameter;
    return kErrorSuccess;
  });
}

/// Fills `buffer` with the whole characters of `text` that fit, converted one by one.
DWORD EncodeWhatFits(DWORD code_page, std::u16string_view text, char* buffer, size_t room) {
  std::string bytes;
  size_t used = 0;
  while (!text.empty()) {
    const size_t units = CharacterUnits(text);
    if (const DWORD status = Encode(code_page, text.substr(0, units), &bytes); status != kErrorSuccess) return status;
    if (bytes.size() > room - used) break;
    std::copy(bytes.begin(), bytes.end(), buffer + used);
    used += bytes.size();
    text.remove_prefix(units);
  }
  return kErrorInsufficientBuffer;
}

DWORD CopyWhatFits(std::u16string_view text, char16_t* buffer, size_t room) {
  std::ranges::copy(WholeCharacters(text, room), buffer);
  return kErrorInsufficientBuffer;
}

DWORD ConvertToBytes(DWORD code_page, std::u16string_view text, char* buffer, size_t room, int* result) {
  std::string bytes;
  const DWORD status = Encode(code_page, text, &bytes);
  if (status != kErrorSuccess) return status;
  if (bytes.size() > INT_MAX) return kErrorInvalidParameter;
  if (room != 0 && bytes.size() > room) return EncodeWhatFits(code_page, text, buffer, room);
  if (room != 0) std::copy(bytes.begin(), bytes.end(), buffer);
  *result = static_cast<int>(bytes.size());
  return kErrorSuccess;
}

DWORD ConvertToWide(DWORD code_page, std::string_view bytes, char16_t* buffer, size_t room, int* result) {
  std::u16string text;
  const DWORD status = Decode(code_page, bytes, &text);
  if (status != kErrorSuccess) return status;
  if (text.size() > INT_MAX) return kErrorInvalidParameter;
  if (room != 0 && text.size() > room) return CopyWhatFits(text, buffer, room);
  if (room != 0) std::copy(text.begin(), text.end(), buffer);
  *result = static_cast<int>(text.size());
  return kErrorSuccess;
}

/// Both conversions' common frame: arguments, memory, last error.
template <class Char, class Out, class Convert>
int ConvertCallers(const Char* text, int length, Out* buffer, int room, Convert&& convert) {
  int result = 0;
  DWORD status = kErrorInvalidParameter;
  if (text != nullptr && length >= -1 && length != 0 && room >= 0 && (buffer != nullptr || room == 0)) {
    try {
      status = convert(CallersText(text, length), static_cast<size_t>(room), &result);
    } catch (const std::bad_alloc&) {
      status = kErrorNotEnoughMemory;
    }
  }
  if (status != kErrorSuccess) SetLastError(status);
  return status == kErrorSuccess ? result : 0;
}

}  // namespace

DWORD GetACP() {
  DWORD page = 0;
  const DWORD status = WithBackend([&](const Backend& backend) {
    page = backend.text->ActiveCodePage();
    return kErrorSuccess;
  });
  if (status != kErrorSuccess) SetLastError(status);
  return page;
}

int WideCharToMultiByte(DWORD code_page, const char16_t* text, int length, char* buffer, int room) {
  return ConvertCallers(text, length, buffer, room, [=](std::u16string_view whole, size_t space, int* result) {
    return ConvertToBytes(code_page, whole, buffer, space, result);
  });
}

int MultiByteToWideChar(DWORD code_page, const char* text, int length, char16_t* buffer, int room) {
  return ConvertCallers(text, length, buffer, room, [=](std::string_view whole, size_t space, int* result) {
    return ConvertToWide(code_page, whole, buffer, space, result);
  });
}

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const size_t units = CharacterUnits(text);
    char32_t c = text[0];
    if (units == 2)
      c = 0x10000 + ((c & 0x3FF) << 10) + (text[1] & 0x3FFu);
    else if (IsHighSurrogate(text[0]) || IsLowSurrogate(text[0]))
      c = kReplacement;
    AppendUtf8(c, &out);
    text.remove_prefix(units);
  }
  return out;
}

std::u16string FromUtf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  while (!text.empty()) {
    size_t length = 1;
    const char32_t c = ReadUtf8(text, &length);
    if (c >= 0x10000) {
      out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      out += static_cast<char16_t>(c);
    }
    text.remove_prefix(length);
  }
  return out;
}

}  // namespace heron::platform

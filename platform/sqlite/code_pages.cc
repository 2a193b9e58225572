// Code pages through iconv (code_pages.h). Opening a converter costs more than a conversion, so they are kept.

#include "platform/sqlite/code_pages.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <utility>

#include "platform/api/text.h"

namespace heron::store {

using platform::DWORD;

namespace {

struct NamedPage {
  DWORD code_page;
  const char* name;
};

/// Pages whose name in iconv isn't "CP" and the number.
constexpr NamedPage kNamedPages[] = {
    {936, "GBK"},      {949, "UHC"},      {950, "BIG5"},     {1361, "JOHAB"},   {20127, "ASCII"},   {20866, "KOI8-R"},
    {20932, "EUC-JP"}, {21866, "KOI8-U"}, {51936, "EUC-CN"}, {51949, "EUC-KR"}, {54936, "GB18030"},
};

std::string NameOf(DWORD code_page) {
  for (const NamedPage& page : kNamedPages) {
    if (page.code_page == code_page) return page.name;
  }
  // 28591 to 28605 are the parts of ISO 8859.
  if (code_page > 28590 && code_page < 28606) return "ISO-8859-" + std::to_string(code_page - 28590);
  return "CP" + std::to_string(code_page);
}

/// An opened converter. A page that isn't known leaves it invalid.
class Converter {
 public:
  Converter(const std::string& to, const std::string& from) : handle_(iconv_open(to.c_str(), from.c_str())) {}
  ~Converter() {
    if (Valid()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool Valid() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  /// Converts all of `input`. Where it can't, `skip` says how many bytes to pass over, and `substitute` takes their
  /// place.
  template <class Skip>
  std::string Convert(std::string_view input, std::string_view substitute, Skip&& skip) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);  // back to the initial state: the converter is reused
    std::string out;
    std::array<char, 512> piece;
    char* from = const_cast<char*>(input.data());  // iconv doesn't write there
    size_t left = input.size();
    while (left > 0) {
      char* to = piece.data();
      size_t room = piece.size();
      const bool failed = iconv(handle_, &from, &left, &to, &room) == static_cast<size_t>(-1);
      out.append(piece.data(), piece.size() - room);
      if (!failed || errno == E2BIG) continue;  // E2BIG: the piece is full, go on with an empty one
      const size_t passed = skip(std::string_view(from, left));
      out.append(substitute);
      from += passed;
      left -= passed;
    }
    return out;
  }

 private:
  iconv_t handle_;
};

/// Bytes of the character in UTF-16LE that `rest` begins with.
size_t CharacterBytes(std::string_view rest) {
  const auto is = [rest](size_t at, unsigned kind) {
    return rest.size() > at && (static_cast<unsigned char>(rest[at]) & 0xFCu) == kind;
  };
  return is(1, 0xD8) && is(3, 0xDC) ? 4 : std::min<size_t>(2, rest.size());
}

}  // namespace

struct IconvCodec::Converters {
  explicit Converters(const std::string& name) : encoder(name, "UTF-16LE"), decoder("UTF-16LE", name) {}

  Converter encoder;
  Converter decoder;
};

IconvCodec::IconvCodec(DWORD active) : active_(active) {}
IconvCodec::~IconvCodec() = default;

/// Under the lock.
IconvCodec::Converters* IconvCodec::Find(DWORD code_page) {
  const auto found = converters_.find(code_page);
  if (found != converters_.end()) return found->second.get();
  auto made = std::make_unique<Converters>(NameOf(code_page));
  // A page counts only with both directions: a text that is stored must be readable again.
  if (!made->encoder.Valid() || !made->decoder.Valid()) return nullptr;
  return converters_.emplace(code_page, std::move(made)).first->second.get();
}

bool IconvCodec::Encode(DWORD code_page, std::u16string_view text, std::string* out) {
  const std::lock_guard guard(mutex_);
  Converters* const converters = Find(code_page);
  if (converters == nullptr) return false;
  const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
  *out = converters->encoder.Convert(bytes, "?", CharacterBytes);
  return true;
}

bool IconvCodec::Decode(DWORD code_page, std::string_view bytes, std::u16string* out) {
  const std::lock_guard guard(mutex_);
  Converters* const converters = Find(code_page);
  if (converters == nullptr) return false;
  const std::string wide = converters->decoder.Convert(bytes, "\xFD\xFF", [](std::string_view) { return size_t{1}; });
  out->assign(wide.size() / sizeof(char16_t), u'\0');
  wide.copy(reinterpret_cast<char*>(out->data()), out->size() * sizeof(char16_t));
  return true;
}

bool IsKnownCodePage(DWORD code_page) {
  std::string bytes;
  return code_page == platform::CP_UTF8 || IconvCodec(code_page).Encode(code_page, u"", &bytes);
}

}  // namespace heron::store

#include "forms/form_check.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "engine/setting.h"
#include "generated/values.h"
#include "platform/api/characters.h"
#include "platform/api/files.h"
#include "platform/api/profile.h"

namespace heron {
namespace {

using namespace platform;

enum class Comparison : uint8_t { kNone, kText, kAtMost, kColor };
enum Row : size_t { kModel, kSystem, kDestination, kPdl, kColor, kReserved, kOs, kVersion };

constexpr std::array<Comparison, kFormRowNames.size()> kComparisons = {
    Comparison::kText,  Comparison::kText, Comparison::kText, Comparison::kAtMost,
    Comparison::kColor, Comparison::kText, Comparison::kNone, Comparison::kNone};

constexpr size_t kValueLength = 32;
constexpr uint32_t kSmallestForm = 164;
constexpr uint32_t kLargestForm = 64u << 20;

char16_t Lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

bool SameText(std::u16string_view a, std::u16string_view b) {
  return std::ranges::equal(a, b, {}, Lower, Lower);
}

/// Sign and digits of the text, whatever is between them.
int64_t NumberIn(std::u16string_view text) {
  int64_t value = 0;
  bool negative = false;
  for (const char16_t c : text) {
    if (c == u'-' && value == 0) negative = true;
    if (c >= u'0' && c <= u'9') value = std::min<int64_t>(value * 10 + (c - u'0'), INT32_MAX);
  }
  return negative ? -value : value;
}

void Expect(FormCheckTable& table, unsigned pdl, unsigned color_mode) {
  const auto digits = [](unsigned number) { return std::u16string(1, static_cast<char16_t>(u'0' + number % 10)); };
  table.expected[kModel] = u"Varnell 70/36MX-2 PCL";
  table.expected[kSystem] = u"0";
  table.expected[kDestination] = u"US";
  table.expected[kPdl] = digits(pdl);
  table.expected[kColor] =
      color_mode == value::lpColorMode::kColor || color_mode == value::lpColorMode::kTwoColor ? u"2" : u"1";
  table.expected[kReserved] = u"0";
  table.expected[kOs] = u"1";
  table.expected[kVersion] = u"02.00";
}

/// An open form file and as much of it as was needed so far.
class FormFile {
 public:
  explicit FormFile(const std::u16string& path)
      : file_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING)) {
    if (file_ != INVALID_HANDLE_VALUE) size_ = GetFileSize(file_);
  }
  ~FormFile() {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
  }
  FormFile(const FormFile&) = delete;
  FormFile& operator=(const FormFile&) = delete;

  bool HasFormSize() const { return size_ >= kSmallestForm && size_ <= kLargestForm; }
  size_t size() const { return size_; }
  std::string_view bytes() const { return bytes_; }
  /// Reads on to `count` bytes or the end. False if that fails.
  bool ReadTo(size_t count) {
    const size_t before = bytes_.size();
    const size_t wanted = std::min<size_t>(count, size_) - std::min<size_t>(before, size_);
    bytes_.resize(before + wanted);
    DWORD read = 0;
    return ReadFile(file_, bytes_.data() + before, static_cast<DWORD>(wanted), &read) != 0 && read == wanted;
  }

 private:
  const HANDLE file_;
  DWORD size_ = 0;
  std::string bytes_;
};

/// What a search in the beginning of a form came to.
struct CommentSearch {
  bool needsMore = false;  ///< the rest of the file decides
  std::optional<std::string_view> comment;
};

/// The text of the first comment: an array with a 16-bit length, then the attribute and the operator that make it one.
/// `bytes` is the beginning of a file of `size` bytes.
CommentSearch FindComment(std::string_view bytes, size_t size) {
  static constexpr std::string_view kArray = "\xC8\xC1";
  static constexpr std::string_view kTail = "\xF8\x81\x47";
  for (size_t at = bytes.find(kArray, 1); at != std::string_view::npos; at = bytes.find(kArray, at + 1)) {
    if (size - at < 4) return {};
    if (bytes.size() - at < 4) return {.needsMore = true, .comment = {}};
    const size_t length = static_cast<uint8_t>(bytes[at + 2]) | size_t{static_cast<uint8_t>(bytes[at + 3])} << 8;
    if (at + length + 6 >= size) return {};
    const size_t tail = at + 4 + length;
    if (tail + kTail.size() > bytes.size()) return {.needsMore = true, .comment = {}};
    if (bytes.substr(tail, kTail.size()) == kTail) return {.needsMore = false, .comment = bytes.substr(at + 4, length)};
  }
  return {.needsMore = bytes.size() < size, .comment = {}};
}

/// Takes the pairs that end in `;`.
void TakePairs(FormColumn& column, std::u16string_view text) {
  for (size_t end = text.find(u';'); end != std::u16string_view::npos; end = text.find(u';')) {
    const std::u16string_view pair = text.substr(0, end);
    const size_t equals = std::min(pair.find(u'='), pair.size());
    for (size_t row = 0; row < kFormRowNames.size(); ++row) {
      if (!SameText(pair.substr(0, equals), kFormRowNames[row])) continue;
      column[row] = WholeCharacters(pair.substr(std::min(equals + 1, pair.size())), kValueLength);
    }
    text.remove_prefix(end + 1);
  }
}

std::u16string Shorten(std::u16string_view part) {
  constexpr size_t kLongest = 31;
  constexpr size_t kKept = 28;
  if (part.size() <= kLongest) return std::u16string(part);
  return std::u16string(WholeCharacters(part, kKept)).append(u"...");
}

}  // namespace

bool IsFormRowCompared(size_t row) {
  return kComparisons[row] != Comparison::kNone;
}

void FormExpectFromState(FormCheckTable& table, const UiState& ui) {
  Expect(table, engine::Setting<u"lpPDLType">(ui), engine::Setting<u"lpColorMode">(ui));
}

void FormExpectFromJob(FormCheckTable& table, const DriverEnv& record) {
  Expect(table, Get<"lpPDLType">(record), Get<"lpColorMode">(record));
}

bool FormReadDescription(FormCheckTable& table, const std::u16string& path) {
  table.file = {};
  constexpr size_t kUsualPlace = 64 * 1024;  // a list of forms shows quickly, as the comment is mostly in front
  FormFile file(path);
  if (!file.HasFormSize() || !file.ReadTo(kUsualPlace)) return false;
  CommentSearch found = FindComment(file.bytes(), file.size());
  if (found.needsMore) {
    if (!file.ReadTo(file.size())) return false;
    found = FindComment(file.bytes(), file.size());
  }
  if (!found.comment.has_value()) return false;
  TakePairs(table.file, FromAnsi(*found.comment));
  return true;
}

FormFit FormCompare(const FormCheckTable& table) {
  const auto above = [&](size_t row) { return NumberIn(table.file[row]) > NumberIn(table.expected[row]); };
  for (size_t row = 0; row < kComparisons.size(); ++row) {
    const bool fails = (kComparisons[row] == Comparison::kAtMost && above(row)) ||
                       (kComparisons[row] == Comparison::kText && !SameText(table.file[row], table.expected[row]));
    if (fails) return FormFit::kNone;
  }
  return above(kColor) ? FormFit::kColorInMonochrome : FormFit::kFits;
}

FormFit FormCheck(const UiState& ui, const std::u16string& path) {
  FormCheckTable table;
  FormExpectFromState(table, ui);
  return FormReadDescription(table, path) ? FormCompare(table) : FormFit::kNone;
}

std::u16string ShortPath(std::u16string_view path) {
  const size_t name = path.find_last_of(kPathSeparator) + 1;  // 0 if there is no folder
  std::u16string text;
  if (name > 0) (text = Shorten(path.substr(0, name - 1))) += kPathSeparator;
  return text.append(Shorten(path.substr(name)));
}

}  // namespace heron

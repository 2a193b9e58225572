// The driver directory and the cache of texts, both process-wide and guarded by one lock.
//
// A cached text is found by its offset in a pool. The pool grows by further pieces and never moves one, so addresses
// hold until the cache is freed. When memory runs out a text is simply not found: no caller gets a dangling or a half
// text.
#include "catalog/strings.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <span>
#include <vector>

#include "generated/texts.h"
#include "platform/api/modules.h"
#include "platform/api/spooler.h"

namespace heron {
namespace {

constexpr std::u16string_view kModuleName = u"TVOR6T1.DLL";
constexpr size_t kDirectoryLimit = 260;

constexpr uint32_t kFirstText = 20000;
constexpr uint32_t kLastText = 64000;
constexpr size_t kTextLimit = 999;
constexpr int kLongestText = 65536;  ///< characters that a module can hold in one text, terminator included

constexpr uint32_t kNoOffset = 0xFFFFFFFF;
constexpr uint32_t kFirstPiece = 102400;  ///< bytes
constexpr uint32_t kPieceStep = 1024;

/// Texts end to end. An offset counts through the pieces as if they lay behind each other.
class TextPool {
 public:
  /// Stores `text` with a terminator and returns its offset in bytes. Throws std::bad_alloc.
  uint32_t Add(std::u16string_view text) {
    const auto bytes = static_cast<uint32_t>((text.size() + 1) * sizeof(char16_t));
    if (pieces_.empty() || pieces_.back().size - used_ < bytes) Grow(bytes);
    const Piece& piece = pieces_.back();
    char16_t* place = piece.texts.get() + used_ / sizeof(char16_t);
    std::copy(text.begin(), text.end(), place);  // the piece is zeroed, so the terminator is there
    const uint32_t offset = piece.start + used_;
    used_ += bytes;
    return offset;
  }

  const char16_t* At(uint32_t offset) const {
    const auto next = std::ranges::upper_bound(pieces_, offset, {}, &Piece::start);
    const Piece& piece = *std::prev(next);
    return piece.texts.get() + (offset - piece.start) / sizeof(char16_t);
  }

 private:
  struct Piece {
    uint32_t start;  ///< offset of its first byte
    uint32_t size;
    std::unique_ptr<char16_t[]> texts;
  };

  void Grow(uint32_t bytes) {
    const uint32_t start = pieces_.empty() ? 0 : pieces_.back().start + pieces_.back().size;
    const uint32_t size = pieces_.empty() ? kFirstPiece : (bytes + kPieceStep - 1) / kPieceStep * kPieceStep;
    pieces_.push_back({start, size, std::make_unique<char16_t[]>(size / sizeof(char16_t))});
    used_ = 0;
  }

  std::vector<Piece> pieces_;
  uint32_t used_ = 0;  ///< bytes of the last piece
};

/// Offsets by text number, and the pool they lead into.
class TextCache {
 public:
  bool Ready() const { return !offsets_.empty(); }
  /// Throws std::bad_alloc, and is then as before.
  void Prepare() { offsets_.assign(kLastText - kFirstText + 1, kNoOffset); }

  /// The text if it is cached, else null.
  const char16_t* Find(uint32_t id) const {
    const uint32_t offset = offsets_[id - kFirstText];
    return offset == kNoOffset ? nullptr : pool_.At(offset);
  }
  /// Throws std::bad_alloc; the text then isn't cached.
  const char16_t* Add(uint32_t id, std::u16string_view text) {
    const uint32_t offset = pool_.Add(text);
    offsets_[id - kFirstText] = offset;
    return pool_.At(offset);
  }

 private:
  std::vector<uint32_t> offsets_;
  TextPool pool_;
};

/// All that this file keeps for the process. Guarded by `lock`.
struct Shared {
  std::mutex lock;
  std::array<char16_t, kDirectoryLimit> directory{};
  size_t directoryLength = 0;
  uint32_t users = 0;
  platform::HMODULE module = nullptr;
  TextCache cache;
};

Shared& TheShared() {
  static Shared shared;
  return shared;
}

/// Loads the resource module from the directory; the lock is held.
platform::HMODULE LoadModule(const Shared& shared) {
  std::array<char16_t, kDirectoryLimit + kModuleName.size() + 1> path{};
  const auto end = std::copy_n(shared.directory.begin(), shared.directoryLength, path.begin());
  std::ranges::copy(kModuleName, end);
  return platform::LoadLibraryW(path.data());
}

/// A text from the module into the cache; empty if it can't be cached. The lock is held.
const char16_t* CacheText(Shared& shared, uint32_t id) {
  std::array<char16_t, kTextLimit + 2> text;  // one more than the limit, so that a text beyond it is known
  const int length = platform::LoadStringW(shared.module, id, text.data(), static_cast<int>(text.size()));
  if (length <= 0 || static_cast<size_t>(length) > kTextLimit) return u"";
  return shared.cache.Add(id, {text.data(), static_cast<size_t>(length)});
}

bool IsTextId(uint32_t id) {
  return id >= kFirstText && id <= kLastText;
}

/// The directory part of `path` with its closing separator; empty if there is none that we can keep.
std::u16string_view DirectoryOf(std::u16string_view path) {
  const size_t separator = path.rfind(platform::kPathSeparator);
  if (separator == std::u16string_view::npos || separator >= kDirectoryLimit) return {};
  return path.substr(0, separator + 1);
}

}  // namespace

bool RefreshDriverDirectory(platform::HANDLE printer) {
  constexpr platform::DWORD kUsualSize = 2048;  // the structure and texts of the usual length cost one call
  alignas(platform::DRIVER_INFO_2W) std::array<uint8_t, kUsualSize> usual;
  std::unique_ptr<uint8_t[]> longer;
  uint8_t* buffer = usual.data();
  platform::DWORD needed = 0;
  if (!platform::GetPrinterDriverW(printer, nullptr, 2, buffer, kUsualSize, &needed)) {
    if (needed <= kUsualSize) return false;
    longer = std::make_unique<uint8_t[]>(needed);  // aligned for the structure, as all of operator new's
    buffer = longer.get();
    if (!platform::GetPrinterDriverW(printer, nullptr, 2, buffer, needed, &needed)) return false;
  }
  platform::DRIVER_INFO_2W info;
  std::memcpy(&info, buffer, sizeof info);
  if (info.pDataFile == nullptr) return false;
  const std::u16string_view directory = DirectoryOf(info.pDataFile);
  if (directory.empty()) return false;

  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  std::ranges::copy(directory, shared.directory.begin());
  shared.directoryLength = directory.size();
  return true;
}

std::u16string DriverDirectory() {
  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  return {shared.directory.data(), shared.directoryLength};
}

platform::HMODULE LoadResourceModule() {
  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  return LoadModule(shared);
}

void AcquireStrings() {
  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  ++shared.users;
  if (shared.module != nullptr) return;
  shared.module = LoadModule(shared);
  try {
    if (shared.module != nullptr) shared.cache.Prepare();
  } catch (const std::bad_alloc&) {
    // The first text that is asked for tries again.
  }
}

void ReleaseStrings() {
  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  if (shared.users == 0) return;
  if (shared.users == 1 && shared.module != nullptr) {
    platform::FreeLibrary(shared.module);
    shared.module = nullptr;
  }
  shared.cache = TextCache{};
  --shared.users;
}

const char16_t* GetUiString(uint32_t id) {
  if (!IsTextId(id) || id == text::kEmpty) return u"";
  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  if (shared.module == nullptr) return u"";
  try {
    if (!shared.cache.Ready()) shared.cache.Prepare();
    const char16_t* cached = shared.cache.Find(id);
    return cached != nullptr ? cached : CacheText(shared, id);
  } catch (const std::bad_alloc&) {
    return u"";
  }
}

uint32_t GetUiStringLength(uint32_t id) {
  if (!IsTextId(id)) return 0;
  Shared& shared = TheShared();
  const std::lock_guard guard(shared.lock);
  if (shared.module == nullptr) return 0;
  std::array<char16_t, kTextLimit + 2> text;
  int room = static_cast<int>(text.size());
  int length = platform::LoadStringW(shared.module, id, text.data(), room);
  if (length == room - 1) {  // cut, perhaps
    const std::unique_ptr<char16_t[]> longest(new (std::nothrow) char16_t[kLongestText]);
    length = longest == nullptr ? 0 : platform::LoadStringW(shared.module, id, longest.get(), kLongestText);
  }
  return length > 0 ? static_cast<uint32_t>(length) : 0;
}

}  // namespace heron

// The printing side's page state, in either of its two layouts.
#pragma once

#include <array>

#include "escapes/escape_blocks.h"
#include "escapes/send_escape.h"

namespace heron {

/// Which layout a job has, from EscGetDrawPath.
enum class DrawPath : uint8_t { k488, k556 };

inline DrawPath AskDrawPath(platform::HDC hdc) {
  uint32_t path = 0;
  AskEscape<"EscGetDrawPath">(hdc, &path);
  return path == 0 ? DrawPath::k488 : DrawPath::k556;
}

/// Fetched whole, changed in few places and put back. A state that couldn't be read is zero and isn't put back.
class PageState {
 public:
  PageState(platform::HDC hdc, DrawPath path) : hdc_(hdc), path_(path) {
    read_ = RunEscape(hdc_, Escape("EscGetPageState"), {}, Bytes()) != 0;
  }
  void PutBack() {
    if (read_) RunEscape(hdc_, Escape("EscSetPageState"), Bytes(), {});
  }

  template <std::integral T>
  T At(size_t offset) const {
    return ReadAt<T>(block_, offset);
  }
  template <std::integral T>
  void Put(size_t offset, T value) {
    WriteAt(Bytes(), offset, value);
  }
  void PutText(size_t offset, size_t length, std::u16string_view text) { WriteTextAt(Bytes(), offset, length, text); }

 private:
  std::span<uint8_t> Bytes() {
    return std::span(block_).first(path_ == DrawPath::k488 ? PageState488::kSize : PageState556::kSize);
  }

  const platform::HDC hdc_;
  const DrawPath path_;
  bool read_ = false;
  std::array<uint8_t, PageState556::kSize> block_{};
};

}  // namespace heron

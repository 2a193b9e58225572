// A sentence of parts: how words.h puts its sentences together.
#pragma once

#include <string>
#include <string_view>

#include "catalog/strings.h"
#include "platform/api/text.h"

namespace heron::preview {

class Sentence {
 public:
  /// An empty part adds nothing.
  void Add(std::u16string_view part) {
    constexpr uint32_t kJoined = 32143;  // a text, as languages join in their own ways
    if (part.empty()) return;
    text_ = text_.empty() ? std::u16string(part)
                          : platform::ExpandText(GetUiString(kJoined), {std::u16string_view(text_), part});
  }
  /// The text with this number; with an argument where it has a place.
  void AddText(uint32_t number) { Add(GetUiString(number)); }
  void AddText(uint32_t number, platform::TextArgument argument) {
    if (*GetUiString(number) != u'\0') Add(platform::ExpandText(GetUiString(number), {argument}));
  }
  std::u16string Take() { return std::move(text_); }

 private:
  std::u16string text_;
};

}  // namespace heron::preview

// Code pages through iconv.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "platform/api/backend.h"

namespace heron::store {

class IconvCodec final : public platform::TextCodec {
 public:
  explicit IconvCodec(platform::DWORD active);
  ~IconvCodec() override;

  platform::DWORD ActiveCodePage() override { return active_; }
  bool Encode(platform::DWORD code_page, std::u16string_view text, std::string* out) override;
  bool Decode(platform::DWORD code_page, std::string_view bytes, std::u16string* out) override;

 private:
  struct Converters;
  Converters* Find(platform::DWORD code_page);

  const platform::DWORD active_;
  std::mutex mutex_;
  std::map<platform::DWORD, std::unique_ptr<Converters>> converters_;  ///< by code page; null for one that isn't known
};

/// Whether iconv, or the platform itself, knows the code page.
bool IsKnownCodePage(platform::DWORD code_page);

}  // namespace heron::store

// Labels of the catalogue (labels.h).

#include "labels.h"

#include <algorithm>
#include <array>

#include "common/command.h"
#include "platform/api/modules.h"
#include "platform/api/text.h"
#include "platform/sqlite/store.h"

namespace heron::cli {
namespace {

constexpr const char* kResourceModule = "TVOR6T1.DLL";

platform::HMODULE LoadTexts() {
  const std::u16string beside = platform::FromUtf8(ProgramDriverFolder() + kResourceModule);
  if (platform::HMODULE module = platform::LoadLibraryW(beside.c_str())) return module;
  const std::u16string installed = platform::FromUtf8((store::DriverDirectoryPath() / kResourceModule).string());
  return platform::LoadLibraryW(installed.c_str());
}

}  // namespace

Catalogue::Catalogue(uint32_t country) : context_{LoadTexts(), 0, DestinationMask(country)} {}

Catalogue::~Catalogue() {
  if (context_.module != nullptr) platform::FreeLibrary(context_.module);
}

std::string Catalogue::Label(uint16_t feature, uint32_t index) const {
  std::array<char16_t, 256> text{};
  // A list's room counts characters, a text's counts bytes.
  const size_t room = KindOf(feature) == FeatureKind::kList ? text.size() - 1 : sizeof text;
  CatalogQuery(&context_, feature, kLabel, text.data(), index, static_cast<uint32_t>(room));
  return Printable(std::u16string_view(text.begin(), std::find(text.begin(), text.end(), u'\0')));
}

std::string Catalogue::Text(uint32_t id) const {
  std::array<char16_t, 1024> text{};
  const int length = platform::LoadStringW(context_.module, id, text.data(), static_cast<int>(text.size()));
  return Printable(std::u16string_view(text.data(), static_cast<size_t>(length)));
}

std::string Catalogue::LabelOfValue(uint16_t feature, int32_t value) const {
  const int index = KindOf(feature) == FeatureKind::kList ? CatalogIndexOf(feature, value) : -1;
  return index < 0 ? std::string() : Label(feature, static_cast<uint32_t>(index));
}

bool IsSwitch(uint16_t feature) {
  const auto options = ListOptionsOf(feature);
  return options.size() == 2 && options[0].value + options[1].value == 1 && options[0].value * options[1].value == 0;
}

}  // namespace heron::cli

// The sales destination, the resource context and the model's switches.
#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "catalog/catalog.h"
#include "catalog/destinations.h"
#include "catalog/model.h"
#include "catalog/strings.h"
#include "catalog/table_text.h"
#include "catalog/tables.h"
#include "platform/api/modules.h"
#include "platform/api/process.h"

namespace heron {
namespace {

constexpr uint32_t kUnknownCountry = 1;

struct CountryRun {
  uint16_t first = 0;
  uint16_t last = 0;
};

constexpr auto ParseCountries() {
  constexpr std::u16string_view kText = catalog::kSecondDestinationText;
  std::array<CountryRun, std::ranges::count_if(kText, [](char16_t c) { return c == u' ' || c == u'\n'; }) - 1> runs{};
  size_t next = 0;
  catalog::ForEachLine(kText, [&](std::u16string_view line) {
    for (auto word = catalog::CutWord(line); !word.empty(); word = catalog::CutWord(line)) {
      CountryRun& run = runs.at(next++);
      run.first = catalog::Unsigned(catalog::Cut(word, u'-'));
      run.last = word.empty() ? run.first : catalog::Unsigned(word);
      if (next > 1 && run.first <= runs[next - 2].last) throw "the countries don't ascend";
    }
  });
  return runs;
}

constexpr auto kSecondDestination = ParseCountries();

bool IsFacilityOn(std::span<const catalog::FacilityOf> map, uint16_t id) {
  const auto row = std::ranges::find(map, id, &catalog::FacilityOf::id);
  return row != map.end() && IsFacilityEnabled(row->facility);
}

}  // namespace

uint32_t ReadLocaleCountry() {
  char16_t text[8];  // the item has at most five digits
  const int room = static_cast<int>(std::size(text));
  const int written = platform::GetLocaleInfoW(platform::LOCALE_USER_DEFAULT, platform::LOCALE_ICOUNTRY, text, room);
  if (written < 2) return kUnknownCountry;
  uint32_t country = 0;
  for (const char16_t c : std::u16string_view(text, static_cast<size_t>(std::min(written, room)) - 1)) {
    if (c < u'0' || c > u'9') return kUnknownCountry;
    country = country * 10 + static_cast<uint32_t>(c - u'0');
  }
  return country;
}

uint32_t DestinationMask(uint32_t country) {
  if (country == 81) return catalog::kDestinationThird;
  const bool second = std::ranges::any_of(
      kSecondDestination, [country](const CountryRun& run) { return run.first <= country && country <= run.last; });
  return second ? catalog::kDestinationSecond : catalog::kDestinationFirst;
}

ResourceContext* OpenResourceContext(uint32_t country) {
  auto* context = new (std::nothrow) ResourceContext{};
  if (context == nullptr) return nullptr;
  context->module = LoadResourceModule();
  context->destinationMask = DestinationMask(country);
  return context;
}

void CloseResourceContext(ResourceContext* context) {
  if (context == nullptr) return;
  if (context->module != nullptr) platform::FreeLibrary(context->module);
  delete context;
}

bool IsFacilityEnabled(uint16_t facility) {
  const auto row = std::ranges::find(catalog::kFacilities, facility, &catalog::FacilitySwitch::facility);
  return row != std::end(catalog::kFacilities) && row->on;
}

bool IsStoreEnabled(uint16_t store_id) {
  return IsFacilityOn(catalog::kStoreFacilities, store_id);
}

bool IsFileSectionEnabled(uint16_t section_id) {
  return IsFacilityOn(catalog::kFileSectionFacilities, section_id);
}

}  // namespace heron

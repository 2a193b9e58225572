// The territory of a locale and the country code that the driver chooses its defaults by.
#pragma once

#include <cstdint>
#include <string_view>

namespace heron::store {

/// Country code of the territory in a locale's name ("de_AT.UTF-8@euro" gives 43); 0 for a name without a territory,
/// such as "C" or "de", and for one that isn't known.
uint32_t CountryOfLocale(std::string_view locale);

}  // namespace heron::store

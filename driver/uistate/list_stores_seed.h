// The lists that a user starts with.
#pragma once

#include <span>
#include <string_view>

#include "catalog/catalog.h"
#include "uistate/list_stores.h"

namespace heron {

/// Fills the five registry stores of a fresh `set` with their defaults; null stores are passed over. Names and messages
/// come from the texts, numbers from the catalogue or from here.
void FillListDefaults(ListStoreSet& set, const ResourceContext* resources);

/// The font substitutions that a user starts with; their device fonts are all that the printer has.
std::span<const FontPair> DefaultFontPairs();

/// Writes the defaults of the five registry stores of the queue, in table order, as one batch. False, with the registry
/// unchanged, if a store or the resources couldn't be had or a write failed.
bool SeedListStores(std::u16string_view printer_name);

}  // namespace heron

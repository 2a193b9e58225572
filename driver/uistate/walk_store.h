// Reading and writing list stores: one common walk over the row table for the five that live in the user's registry
// tree, and the saving of all six.
//
// The walk trusts nothing that it reads: a value of the wrong type or size counts as missing and leaves its field as it
// was, a count is narrowed to its width and clamped to its list's room, a text is always terminated. A write of one
// store is one batch: after a failure or a crash the registry holds all of the old or all of the new. It overwrites
// whatever is there: who has read the lists and changed them writes them back by keep_lists.h.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/api/types.h"
#include "uistate/list_stores.h"

namespace heron {

enum class WalkOp : uint8_t {
  kRead = 1,
  kWrite = 2,
  kSeed = 3,  ///< walks like a write
};

/// Reads or writes one registry store of the queue `printer_name`. True at once for a store that this model leaves out
/// or that has no place in the registry. False for a null store, or if a registry call failed: nothing has then been
/// written, and a store that was being read holds what came before the failure.
bool WalkStore(const ListStoreSet& set, ListStoreId store, std::u16string_view printer_name, WalkOp op);

/// Reads what one level 2 name of the store holds, a per-page list (1 to 10) or a watermark (0 to 50), and the fields
/// that have no number. A count is then as stored, narrowed but not clamped: who asks for one item wants to know
/// whether its list is sound. Result as of WalkStore; a number that isn't stored leaves its fields.
bool ReadStoreItem(const ListStoreSet& set, ListStoreId store, std::u16string_view printer_name, int number);

/// Reads the five registry stores, then the user papers from the queue's data. A value that isn't stored leaves its
/// field. False if one of the stores couldn't be read; the others are read all the same.
bool ReadListStores(ListStoreSet& set, std::u16string_view printer_name, platform::HANDLE printer);

/// Writes the five registry stores, and the user papers unless the queue is a server's (its name begins with "\\") and
/// `printer_data_locked` is set. False if one couldn't be written; the others are written all the same, and `unwritten`
/// (may be null) holds those that weren't.
bool WriteListStores(const ListStoreSet& set, std::u16string_view printer_name, platform::HANDLE printer,
                     bool printer_data_locked, std::vector<ListStoreId>* unwritten = nullptr);

/// What a print job needs of the queue's per-page lists, read afresh. `list` is 1 to 10, `page` 0 to 29. False, with
/// `out` untouched, for a number outside or a store that can't be allocated or read.
bool ReadListPageCount(std::u16string_view printer_name, int list, uint16_t* out);
bool ReadListMixplex(std::u16string_view printer_name, int list, uint16_t* out);
bool ReadListPage(std::u16string_view printer_name, int list, int page, PageEntry* out);
bool ReadListTabSettings(std::u16string_view printer_name, int list, TabSettings* out);

}  // namespace heron

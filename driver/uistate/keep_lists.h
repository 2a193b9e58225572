// Writing back the lists that were changed, and only those: what another program has written meanwhile stays.
//
// Who works on lists keeps a copy of them as they were read. A per-page list, a custom paper and each of the other
// stores is one piece: a piece that wasn't changed here is never written, one that was changed here alone is, and one
// that was changed here and elsewhere is overtaken.
#pragma once

#include <string_view>
#include <vector>

#include "platform/api/types.h"
#include "uistate/list_stores.h"

namespace heron {

/// A copy of its own; a store that is null, or for which memory runs out, is null in it.
ListStoreSet CopyOfLists(const ListStoreSet& set);

/// The stores that weren't written; both empty if everything is stored.
struct ListsKept {
  std::vector<ListStoreId> overtaken;  ///< another program has changed the same piece since it was read
  std::vector<ListStoreId> unwritten;  ///< it can't be written; the old list stays

  bool All() const { return overtaken.empty() && unwritten.empty(); }
};

enum class Overtaken : uint8_t {
  kLeave,      ///< a store with an overtaken piece isn't written
  kOverwrite,  ///< the pieces of `set` replace those that another program has written
};

/// Writes what differs between `set` and `seen`, the lists as they were read, back to the stores of the queue; each
/// store in a transaction of its own, in which it is compared with what is stored now. Afterwards `seen` has the pieces
/// that were written. User papers of a server's queue (its name begins with "\\") stay if `printer_data_locked`.
ListsKept KeepListStores(const ListStoreSet& set, ListStoreSet& seen, std::u16string_view printer_name,
                         platform::HANDLE printer, bool printer_data_locked, Overtaken overtaken = Overtaken::kLeave);

}  // namespace heron

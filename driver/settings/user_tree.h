// The user's tree of a queue as a whole: whose it is, and how it goes.
//
// Its key is made of the queue's name (BuildUserKey), so a queue that is removed and made again would find the lists
// and the library of the one before. The key therefore keeps the identities of the queues that used it: several, where
// one home serves machines that each have a queue of this name.
#pragma once

#include <span>
#include <string_view>

namespace heron {

/// Where the user's settings are those of a queue that was removed (platform::WasQueueRemoved), all of them go. The key
/// then holds the identity of the queue as it is now. Nothing happens where no queue has the name, or where several
/// share the key because their names are cut to the same one. False if settings that must go couldn't be removed: they
/// are as they were.
bool AdoptUserTree(std::u16string_view printer_name);

/// Deletes the user's settings of a queue that was removed, with their key, unless a queue that is there has the same
/// key. False if anything of them is left.
bool DeleteUserTree(std::u16string_view printer_name);

/// Deletes all subkeys of the queue's key but those named in `spared`, at every depth, and keys of other queues that
/// happen to lie below: a queue's key holds "DriverVersion". A key that can't be deleted is passed over. Never leaves
/// the queue's own key; false, with nothing deleted, for a name that makes none.
bool DeleteUserSubkeys(std::u16string_view printer_name, std::span<const std::u16string_view> spared);

/// The queue's key, or an empty text for a name that would give the key of all queues.
std::u16string UserTreeKey(std::u16string_view printer_name);

}  // namespace heron

// The exchange of recipients with the phone book's library, which another maker may have written.
#pragma once

#include <string>

#include "uistate/recipients.h"

namespace heron::pages {

/// Lets the user choose recipients in the library at `path` and puts what he chose into `table`. False, with the table
/// unchanged, if the library or its entry isn't there or leaves a block that can't be: whatever it leaves is bounded.
bool CallPhoneBook(const std::u16string& path, RecipientTable* table);

}  // namespace heron::pages

// Fax recipients on their way from the sheet to the job: the exchange form, the temporary address file, and the ring
// that keeps the ten most recent files.
//
// A recipient has four texts of 44 characters and three flags. In a file the texts are in the system's code page, cut
// to 44 bytes at a whole character and without terminator if they fill their field. What a file says is bounded before
// it is used: a count above 100 is 100, and a file of any size but its own counts as missing.
#pragma once

#include <cstdint>
#include <string>

#include "settings/driver_env.h"
#include "uistate/ui_state.h"

namespace heron {

struct AddressRow {
  char name[kRecipientTextLength];
  char number[kRecipientTextLength];
  char company[kRecipientTextLength];
  char department[kRecipientTextLength];
  uint8_t ecm;
  uint8_t overseas;
  uint8_t v34;
  uint8_t spare;  ///< the phone book passes it through; 0 in a file
};
static_assert(sizeof(AddressRow) == 180 && offsetof(AddressRow, ecm) == 176);

/// The address file, byte for byte; also what the phone book and the rendering side take.
struct AddressBlock {
  uint32_t count;
  AddressRow rows[kRecipientCount];
};
static_assert(sizeof(AddressBlock) == 18004);

/// A recipient as the fax page edits it and as a cover sheet names it. A text that fills its field has no terminator.
struct RecipientRow {
  char16_t name[kRecipientTextLength];
  char16_t number[kRecipientTextLength];
  char16_t company[kRecipientTextLength];
  char16_t department[kRecipientTextLength];
  uint8_t ecm;
  uint8_t overseas;
  uint8_t v34;
  uint8_t spare;
};
static_assert(sizeof(RecipientRow) == 356);

/// The list of recipients while it is edited. Rows at and beyond the count are zero.
struct RecipientTable {
  uint32_t count;  ///< at most kRecipientCount
  RecipientRow rows[kRecipientCount];
};

/// One row between the two forms.
void EncodeRow(const RecipientRow& row, AddressRow* out);
void DecodeRow(const AddressRow& row, RecipientRow* out);

/// The table of `ui`, as applied.
void LoadRecipients(const UiState& ui, RecipientTable* table);
/// Replaces the recipients of `ui` and both counts; flags take their defaults from the catalogue.
void StoreRecipients(const UiState& ui, const RecipientTable& table, const ResourceContext* resources);

/// The recipients of `ui` in exchange form; rows at and beyond the count are zero.
void FillAddressBlock(const UiState& ui, AddressBlock* block);

/// Replaces the recipients of `ui` and both counts by what `block` says; flags take their defaults from the catalogue.
void ReadAddressBlock(const UiState& ui, const AddressBlock& block, const ResourceContext* resources);

/// Path of the address file with this number in the user's temporary folder; empty if there is no such folder.
std::u16string AddressFilePath(uint32_t id);

/// Reads a whole address file into `block`; false, with `block` unspecified, unless there is one of exactly its size.
bool ReadAddressFile(uint32_t id, AddressBlock* block);
/// Makes a new address file, which no ring knows. Its number, or 0 if it can't be written whole.
uint32_t MakeAddressFile(const AddressBlock& block);
void DeleteAddressFile(uint32_t id);

/// Loads the recipients of the file that the record names. Without such a file the recipients of `ui` and the record's
/// count and number become 0.
void LoadAddressFile(UiState& ui, DriverEnv& env, const ResourceContext* resources);

/// Writes the recipients to the record's file, or to a new one, and records it in the ring; without recipients deletes
/// it. True if everything was written. If the file can't be made, the record names none: the job has no recipients.
bool WriteAddressFile(const UiState& ui, DriverEnv& env);

/// Puts a file into the user's ring of the printer `printer_name`, and deletes the file that it displaces. False if it
/// is the last one recorded already or the ring can't be written.
bool RecordAddressFile(std::u16string_view printer_name, uint32_t id);

}  // namespace heron

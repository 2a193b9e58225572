// The list of fax recipients while it is edited: what page 900 and `heron fax recipients` do with it.
//
// A list holds at most kRecipientCount rows, each number once. Nothing here reaches the settings: LoadRecipients and
// StoreRecipients (uistate/recipients.h) are the way in and out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "uistate/recipients.h"

namespace heron::pages {

/// Characters of the texts that are typed.
inline constexpr size_t kTypedName = 40, kTypedNumber = 38;

struct NewRecipient {
  std::u16string name;
  std::u16string number;
  std::u16string company;
  std::u16string department;
  bool ecm = false;
  bool overseas = false;
  bool v34 = false;  ///< adds with error correction
};

enum class Added : uint8_t {
  kDone,
  kFull,
  kEmpty,     ///< no number
  kBadSign,   ///< other than digits, # * - P T
  kRepeated,  ///< the number is in the list, character for character
  kTooLong,   ///< a text doesn't fit
};

/// Appends a row; the table stays as it is unless the result is kDone.
Added AddRecipient(RecipientTable& table, const NewRecipient& recipient);

/// Removes a row and closes the gap; nothing for a row that isn't there.
void RemoveRecipient(RecipientTable& table, uint32_t row);

/// The row with this number; the count if there is none.
uint32_t FindRecipient(const RecipientTable& table, std::u16string_view number);

/// Columns of the list, in their order on the page.
enum class RecipientField : uint8_t { kName, kNumber, kCompany, kDepartment, kEcm, kOverseas, kV34 };
inline constexpr size_t kRecipientFields = 7;

/// The text of a cell; of a flag "On" or "Off" in the words of the module.
std::u16string CellText(const RecipientRow& row, RecipientField field);

/// Sorts by the texts of a column, capital letters behind their small ones; rows that are equal keep their order.
void SortRecipients(RecipientTable& table, RecipientField field, bool ascending);

/// A line of pasted text that isn't a recipient.
struct RefusedLine {
  size_t line;  ///< from 1
  std::u16string number;
  Added why;
};

/// Adds the recipients of a table of names and numbers: a line each, the two separated by a tab, a semicolon or a
/// comma; a line of one part is a number. A part may be in double quotes. All lines are added or, if one is refused,
/// none: then the result tells of each that was. `flags` gives the flags of all of them.
std::vector<RefusedLine> AddRecipientLines(RecipientTable& table, std::u16string_view text, const NewRecipient& flags);

/// What the cover sheet had to give up for the number of recipients; the numbers are those of the notices.
enum class CoverNotice : uint8_t {
  kPrintedToo = 0,  ///< the document isn't printed along with a sheet for each recipient
  kTooMany = 1,     ///< more than kMostDetailed
  kNoneToName = 2,  ///< a typed recipient, without a recipient to send to
};
inline constexpr int kMostDetailed = 10;  ///< recipients that a sheet names one by one

/// Brings the settings of the cover sheet in line with the number of recipients (UiHead::faxRowCount), for a fax with a
/// cover sheet. The notices that are due, in order.
std::vector<CoverNotice> AlignCover(const UiState& ui);

/// Caption and text of a notice.
std::u16string CoverCaption();
std::u16string CoverNoticeText(CoverNotice notice);

}  // namespace heron::pages

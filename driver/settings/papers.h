// Paper codes: sizes, names and relations; and the ten user papers.
//
// A code's low bits name the size, the others its form (catalog/paper_codes.h).
// 256 and 513 to 521 are the user papers, 257 "same as document", 512 an empty entry. Sizes are hundredths of a
// millimetre unless stated otherwise; a user paper's stored size is thousandths of an inch.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "generated/values.h"
#include "platform/api/types.h"

namespace heron {

inline constexpr int16_t kSameAsDocument = value::lpOutputPaper::kSameAsDocument;
inline constexpr int16_t kLastUserPaper = value::lpMediaSize::kCustom10;
inline constexpr int16_t kCustomEntry = value::lpMediaSize::kCustomSize;
inline constexpr int kUserPaperCount = 10;

bool IsCustomPaper(int32_t code);
/// 1 to 9 for 513 to 521, 10 for 256, else 0.
int CustomPaperNumber(int32_t code);
/// The reverse; anything but 2 to 10 gives 513.
int16_t CustomPaperCode(int number);

/// One user paper as it is stored, 76 bytes.
struct CustomPaperEntry {
  uint32_t width;   ///< thousandths of an inch
  uint32_t height;  ///< thousandths of an inch
  int16_t unit;     ///< 1 millimetre, 2 inch: how it is shown
  char16_t name[32];
  uint16_t longFlag;  ///< not 0: long paper

  bool operator==(const CustomPaperEntry&) const = default;
};
static_assert(sizeof(CustomPaperEntry) == 76);
using UserPaperStore = std::array<CustomPaperEntry, kUserPaperCount>;

/// Default of entry `number` (1 to 10): 8267 x 8267, millimetre, name from the texts, which the caller keeps in use.
CustomPaperEntry DefaultUserPaper(int number);

/// The run-time part of the rows, shared by the process and guarded: any thread may call.
void LoadPaperLabels();                                     ///< names of all rows, from the texts in use
void RefreshUserPaperRows(const UserPaperStore& store);     ///< names and sizes of the user papers' rows
void BuildUserPaperSizeTexts(const UserPaperStore& store);  ///< their size texts: "210.0x297.0mm", "8.267x11.693inch"

/// Size of an entry in its own unit: "210.0x297.0mm", "8.267x11.693inch".
std::u16string UserPaperSizeText(const CustomPaperEntry& entry);

/// Label and size text of the first row with the code; null if the table hasn't got it, empty before the operations
/// above have run. A text handed out stays as it is while the process lives; a changed name is another text.
const char16_t* PaperLabel(int32_t code);
const char16_t* PaperSizeText(int32_t code);

/// `unit` 1: thousandths of an inch to tenths of a millimetre, rounded up; otherwise unchanged.
uint32_t ThouToTenthMm(int unit, uint32_t value);
/// False, with outputs untouched, for a code that the table hasn't got.
bool PaperSizeMm(int32_t code, uint32_t* width, uint32_t* height);       ///< user papers rounded up; 0 becomes 10000
bool PaperSizeMmExact(int32_t code, uint32_t* width, uint32_t* height);  ///< user papers x 254 / 100
bool PaperSizeThou(int32_t code, uint32_t* width, uint32_t* height);     ///< thousandths of an inch; 0 becomes 100
/// Largest width and height over all rows; a user paper with its longFlag set counts as 0.
void MaxPaperSize(const UserPaperStore& store, uint32_t* width, uint32_t* height);

bool IsRotatedCode(int32_t code);
bool IsPlainTwin(int32_t code);
int32_t PlainTwin(int32_t code);    ///< -1 if it has none
int32_t RotatedTwin(int32_t code);  ///< -1 if it has none
bool IsSubstitutedPaper(int32_t code);
int32_t PaperSubstitute(int32_t code);  ///< -1 if it has none

/// Entry `number` (1 to 10) as it is stored; false, with `entry` untouched, if it isn't, or not as 76 bytes.
bool ReadStoredUserPaper(platform::HANDLE printer, int number, CustomPaperEntry* entry);
/// Reads "UDPaper1" to "UDPaper10" of printer data in one look; a missing entry is its default. False, with every
/// default, if printer data can't be read now.
bool LoadUserPapers(UserPaperStore* store, platform::HANDLE printer);
/// Writes the entries that differ from what is stored, in one batch. False if a write failed, with nothing written, and
/// readers don't find the entries as they are: a default needs no entry.
bool SaveUserPapers(const UserPaperStore& store, platform::HANDLE printer);
/// Stored size of the user paper `code`, thousandths of an inch; the default's if nothing is stored.
void ReadUserPaperSize(int32_t code, uint32_t* width, uint32_t* height, platform::HANDLE printer);
/// Entry `number` (1 to 10) with its name, cut to `name_bytes` / 2 characters and filled up with zeros: a name that
/// fills its room has no terminator. False, with the default's values, if the store doesn't load.
bool ReadUserPaper(platform::HANDLE printer, int number, uint32_t* width, uint32_t* height, char16_t* name,
                   uint32_t name_bytes);

/// Limits of a paper source in one unit (1: tenths of a millimetre, 2: thousandths of an inch).
struct SourceLimit {
  uint16_t source;      ///< tray value
  uint16_t sourceUnit;  ///< paper feed unit, 0 for any
  uint32_t label;       ///< text number of the source's name
  int32_t minWidth, maxWidth, minLength, maxLength;
  int32_t printableWidth, printableLength;
  int32_t marginLeft, marginTop, marginRight, marginBottom;  ///< hundredths of a millimetre
  uint16_t unit;
};
/// First row with this source, a source unit of 0 or `source_unit`, and this unit; row 0 if there is none.
const SourceLimit& FindSourceLimit(uint16_t source, uint16_t source_unit, uint16_t unit);

struct Margins {
  uint32_t left, top, right, bottom;  ///< hundredths of a millimetre, distances from the edges
};
/// Unprintable margins of a user paper of this size fed from `source`.
Margins UserPaperMargins(uint16_t source, uint16_t source_unit, int32_t width, int32_t height);

}  // namespace heron

// The user's phone book: entries in the user's tree, and their exchange as vCard and CSV.
//
// An entry is one value, so that two programs that change different entries don't disturb each other; each change is a
// transaction. Files are untrusted: their size, entries and texts are bounded.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace heron::phone_book {

inline constexpr size_t kMostEntries = 5000;
inline constexpr size_t kLongestText = 44;  ///< characters of a field, as a fax's recipient has
inline constexpr size_t kLargestFile = size_t{4} << 20;

struct Entry {
  uint32_t id = 0;  ///< 0 for one that isn't stored
  std::u16string name, number, company, department, group;
  bool ecm = false, overseas = false, v34 = false;
};

/// The entries by name. False, with none, if the user's tree can't be read.
bool Read(std::vector<Entry>* entries);

/// Stores new entries, all or none, and gives them their ids. False if they can't be written or the book is full.
bool Add(std::vector<Entry>* entries);
enum class Changed : uint8_t { kDone, kMissing, kUnwritten };
Changed Replace(const Entry& entry);               ///< the entry with its id
Changed Remove(const std::vector<uint32_t>& ids);  ///< all or none

/// Whether a fax number can have these characters, and isn't empty.
bool IsNumber(std::u16string_view number);
/// The number with what people write into it for reading left out: blanks, points, brackets, slashes; a leading + stays
/// as "00".
std::u16string PlainNumber(std::u16string_view written);

/// Entries whose name, number, company, department or group holds the text, whatever the case.
bool Matches(const Entry& entry, std::u16string_view text);

/// The entries of a vCard or CSV file (UTF-8), recognised by its first line. `skipped` receives how many had no fax
/// number or didn't fit.
std::vector<Entry> Parse(std::string_view bytes, size_t* skipped);
std::string ToVCard(const std::vector<Entry>& entries);
std::string ToCsv(const std::vector<Entry>& entries);

}  // namespace heron::phone_book

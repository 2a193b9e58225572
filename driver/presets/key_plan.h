// The keys of a settings file that have a value, made ready for the walk over them: names split at their number, and
// the way from a key to its value.
//
// Made once from file_keys.table and the joined parameter tables, and constant from then on.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "uistate/list_stores_fields.h"
#include "uistate/ui_state.h"

namespace heron {

/// A name of the table; `numbered` if a number is between its two parts. Names are ASCII.
struct NamePattern {
  std::string head;
  std::string tail;
  bool numbered = false;
};

/// Room for any name of the table with its number.
struct NameBuffer {
  char text[80];
};
std::string_view ExpandName(const NamePattern& name, int number, NameBuffer& buffer);

/// How a text is protected in its line: the platform's calls trim blanks.
enum class LineStyle : uint8_t {
  kPlain,
  kStar,        ///< "*" before it
  kStars,       ///< "*" on both sides
  kStarsLines,  ///< "*" before each line; keys 0, 1, ...
};

struct SectionEntry {
  NamePattern name;
  uint16_t lo = 1;
  uint16_t hi = 1;
  uint16_t firstPlace = 0;  ///< of number `lo` among all sections of a file; the others follow

  size_t PlaceOf(int number) const { return firstPlace + static_cast<size_t>(number - lo); }
};

inline constexpr int kNoEntry = -1;

struct KeyEntry {
  const FileKeyRow* row = nullptr;
  uint16_t section = 0;  ///< in KeyPlan::sections
  NamePattern key;
  LineStyle style = LineStyle::kPlain;
  bool isCount = false;  ///< holds the number of items of a list
  int count = kNoEntry;  ///< entry that holds this list's number of items
  uint16_t room = 0;     ///< of a count: the most items that the list holds
  const WorkingParam* param = nullptr;
  const StoreFieldRow* field = nullptr;  ///< of a list store; null: the parameter's own value
};

struct KeyPlan {
  std::vector<SectionEntry> sections;
  std::vector<KeyEntry> keys;  ///< in file order; those that no parameter binds are left out
  size_t places = 0;           ///< sections that a file can have
};
const KeyPlan& Plan();

/// The value that a key names in `ui`, by the numbers of its section and its own name. False if it has no place there.
bool LocateValue(const KeyEntry& key, const UiState& ui, int section_number, int key_number, StoreField* value);

/// The default of an absent value, with the size and type of the value; null if there is none.
const uint8_t* StoredDefault(const KeyEntry& key, const UiState& ui);

}  // namespace heron

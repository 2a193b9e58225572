// Settings files in memory: states to write, files to read, and states as text to compare.
#pragma once

#include <map>
#include <random>
#include <string>

#include "presets/key_plan.h"
#include "presets/media_list.h"
#include "presets/page_numbers.h"
#include "presets/preset_file.h"
#include "presets/repair.h"
#include "settings/defaults.h"
#include "uistate/store_fixture.h"
#include "uistate/ui_state.h"

namespace heron::test {

inline constexpr char16_t kFile[] = u"/home/user/entry.vxs";

class LibraryTest : public StoreTest {
 protected:
  LibraryTest() {
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    ui = Create();
  }

  UiStatePtr Create() { return CreateUiState(resources.get(), env, printer.get()); }

  std::string Bytes() {
    const auto file = backend.files.content.find(kFile);
    return file == backend.files.content.end() ? "" : std::string(file->second->begin(), file->second->end());
  }
  void SetBytes(std::string_view bytes) {
    backend.files.content[kFile] = std::make_shared<std::vector<uint8_t>>(bytes.begin(), bytes.end());
  }
  bool Read(std::string_view bytes) {
    SetBytes(bytes);
    return LibraryReadSettings(*ui, kFile, resources.get());
  }
  std::string Written(UiState& state) {
    platform::Profile file;
    EXPECT_TRUE(LibraryWriteSettings(state, file));
    return file.Bytes();
  }

  /// Hands every value that the key table names to `visit`, each once, lists at their full room.
  template <typename Visit>
  static void ForEachValue(const UiState& state, Visit visit) {
    for (const KeyEntry& key : Plan().keys) {
      const SectionEntry& section = Plan().sections[key.section];
      for (int s = section.lo; s <= section.hi; ++s) {
        for (int k = key.row->lo; k <= key.row->hi; ++k) {
          StoreField value;
          if (LocateValue(key, state, s, k, &value)) visit(key, s, k, value);
        }
      }
    }
  }

  /// "section/key#group" and the bytes of every value that a file of the state holds: items beyond a count don't count.
  static std::map<std::string, std::string> Values(const UiState& state) {
    std::map<std::string, std::string> values;
    NameBuffer buffer;
    ForEachValue(state, [&](const KeyEntry& key, int s, int k, const StoreField& value) {
      StoreField count;
      if (key.count != kNoEntry && LocateValue(Plan().keys[static_cast<size_t>(key.count)], state, s, 1, &count) &&
          k >= CountOf(count)) {
        return;
      }
      std::string name(ExpandName(Plan().sections[key.section].name, s, buffer));
      name.append("/").append(ExpandName(key.key, k, buffer)).append("#").append(std::to_string(key.row->group));
      values[name].assign(reinterpret_cast<const char*>(value.data), value.size);
    });
    const PageNumberLists& pages = PageNumbersOf(state);
    values["pages"] = FormatPageNumbers(pages);
    values["media"].assign(reinterpret_cast<const char*>(state.head().trayTable), sizeof state.head().trayTable);
    return values;
  }
  static int CountOf(const StoreField& field) { return field.data[0] | field.data[1] << 8; }

  /// Another legal value for everything, lists filled to `items`.
  void Randomize(UiState& state, uint32_t seed, int items) {
    std::mt19937 random(seed);
    ForEachValue(state, [&](const KeyEntry& key, int, int, const StoreField& value) {
      if (key.isCount) {
        const auto count = static_cast<uint16_t>(std::min<int>(items, key.room));
        std::memcpy(value.data, &count, sizeof count);
      } else if (value.type == kTypeText) {
        RandomText(random, value, key.style == LineStyle::kStarsLines);
      } else {
        const uint32_t number =
            key.field != nullptr ? static_cast<uint32_t>(random()) : LegalNumber(*key.param->row, random);
        std::memcpy(value.data, &number, std::min<size_t>(value.size, sizeof number));
      }
    });
    PageNumberLists& pages = PageNumbersOf(state);
    pages.count[kChapterList] = 5;
    std::ranges::copy(std::initializer_list<uint16_t>{1, 2, 3, 7, 9999}, pages.pages[kChapterList]);
  }

  uint32_t LegalNumber(const ParamRow& row, std::mt19937& random) {
    if (const auto options = ListOptionsOf(row.feature); !options.empty()) {
      return static_cast<uint32_t>(options[random() % options.size()].value);
    }
    if (KindOf(row.feature) == FeatureKind::kRange) {
      const uint32_t min = CatalogQuery(resources.get(), row.feature, kMin, nullptr, 0, 0);
      const uint32_t max = CatalogQuery(resources.get(), row.feature, kMax, nullptr, 0, 0);
      return min + static_cast<uint32_t>(random()) % (max - min + 1);
    }
    return 1;  // legal for everything that has bounds and no feature
  }

  static void RandomText(std::mt19937& random, const StoreField& value, bool lines) {
    const size_t room = value.size / sizeof(char16_t);
    std::u16string text(random() % room, u'x');
    for (char16_t& c : text) c = std::u16string_view(u"aZ09=[]*;宋é")[random() % 11];
    if (lines && text.size() > 20) text.replace(7, 2, u"\r\n");
    std::memset(value.data, 0, value.size);
    std::memcpy(value.data, text.data(), text.size() * sizeof(char16_t));
  }

  DriverEnv env;
  UiStatePtr ui;
};

}  // namespace heron::test

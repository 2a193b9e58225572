// Damaged files by the thousand: each is read without harm, leaves legal settings and stays as it is.
#include "preset_fixture.h"

namespace heron::test {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kFiles = 20000;  // a share: each takes ten times as long
#else
constexpr int kFiles = 100000;
#endif

/// Cuts, doubles, swaps and poisons parts of a good file.
class Damager {
 public:
  explicit Damager(std::string good) {
    for (size_t at = 0, end = 0; at < good.size(); at = end) {
      end = std::min(good.find("\r\n[", at), good.size() - 2) + 2;
      sections_.push_back(good.substr(at, end - at));
    }
  }

  std::string Next(std::mt19937& random) {
    std::string file;
    for (size_t n = 1 + random() % 6; n > 0; --n) file += sections_[random() % sections_.size()];
    for (size_t n = random() % 8; n > 0; --n) Damage(file, random);
    return file;
  }

 private:
  static void Damage(std::string& file, std::mt19937& random) {
    // clang-format off
    static const std::string kPoison[] = {
        "0", "-1", "31", "65535", "99999999999999999999", "error", "=", "[", "]\r\n[", "\r\n", "\n", "\r", "*", "\xE5\xAE",
        "\xFF", "%d", "/C", " ", std::string(1, '\0'), "5-1", "ISListNum=31\r\n", std::string(16384, '7')};
    // clang-format on
    if (file.empty()) return;
    const size_t at = random() % file.size();
    const size_t size = random() % std::min<size_t>(file.size() - at, 40);
    const std::string& poison = kPoison[random() % std::size(kPoison)];
    switch (random() % 4) {
      case 0:
        file.erase(at, size);
        break;
      case 1:
        file.insert(random() % file.size(), file.substr(at, size));
        break;
      case 2:
        file.replace(at, random() % 3, poison);
        break;
      default:
        // A value as a whole.
        if (const size_t sign = file.find('=', at); sign != std::string::npos) {
          file.replace(sign + 1, std::min(file.find('\r', sign), file.size()) - sign - 1, poison);
        }
    }
  }

  std::vector<std::string> sections_;
};

class HostileFiles : public LibraryTest {
 protected:
  /// What is wrong with the state; empty if nothing is.
  std::string Complaints(const UiState& state) {
    std::string complaints;
    for (const KeyEntry& key : Plan().keys) {
      const ParamRow& row = *key.param->row;
      if (row.HasBlock() && row.feature != kNoFeature &&
          !IsLegalValue(resources.get(), row.feature, *FieldsOf(state, key.param->selfIndex).value)) {
        complaints += " value " + std::to_string(row.id);
      }
    }
    ForEachValue(state, [&](const KeyEntry& key, int s, int, const StoreField& value) {
      if (key.isCount && CountOf(value) > key.room) complaints += " count " + std::to_string(s);
      const auto* text = reinterpret_cast<const char16_t*>(value.data);
      if (value.type == kTypeText && text[value.size / sizeof(char16_t) - 1] != u'\0') complaints += " text";
    });
    if (PageNumbersOf(state).count[kChapterList] > kPageNumbersPerList) complaints += " pages";
    return complaints;
  }
};

TEST_F(HostileFiles, LeaveLegalSettingsAndStayAsTheyAre) {
  Randomize(*ui, 1, 3);
  Damager damager(Written(*ui));
  std::mt19937 random(20261122);
  for (int n = 0; n < kFiles; ++n) {
    const std::string bytes = damager.Next(random);
    Read(bytes);
    ASSERT_EQ(Bytes(), bytes);
    if (n % 16 == 0) {
      ASSERT_EQ(Complaints(*ui), "") << n;
    }
    if (n % 128 == 0) {
      // What was read can be written into the damaged file; from then on it reads and writes as it is.
      ASSERT_TRUE(LibraryWriteSettings(*ui, kFile));
      ASSERT_TRUE(LibraryReadSettings(*ui, kFile, resources.get()));
      ASSERT_TRUE(LibraryWriteSettings(*ui, kFile));
      const std::string rewritten = Bytes();
      const auto wanted = Values(*ui);
      ASSERT_TRUE(LibraryReadSettings(*ui, kFile, resources.get()));
      std::string changed;
      for (const auto& [name, value] : Values(*ui)) changed += wanted.at(name) == value ? "" : name + ' ';
      ASSERT_EQ(changed, "") << n;
      ASSERT_TRUE(LibraryWriteSettings(*ui, kFile));
      ASSERT_EQ(Bytes(), rewritten) << n;
    }
    if (n % 16 == 0) {
      platform::Profile file(bytes);
      ReadLibraryName(file, kFile);
      EXPECT_LE(ReadLibraryComment(file).size(), kLibraryCommentLength);
      DriverIdentity identity;
      ReadDriverIdentity(file, &identity);
    }
  }
}

TEST_F(HostileFiles, OfTheLargestSizeEnd) {
  std::string sections;
  std::string keys = "[IP_SETTING LIBRARY UIPARAM]\r\n";
  std::string lines = "[Faxcoversheet Comment]\r\n";
  for (int n = 0; lines.size() < platform::kProfileLimit - 100; ++n) {
    lines += std::to_string(n) + "=*" + "l\r\n";
    if (keys.size() < platform::kProfileLimit - 100) keys += "k" + std::to_string(n) + "=1\r\n";
    if (sections.size() < platform::kProfileLimit - 100) sections += "[s" + std::to_string(n) + "]\r\n";
  }
  for (const std::string& bytes :
       {sections, keys, lines, std::string(platform::kProfileLimit, '['), std::string(platform::kProfileLimit, ' '),
        std::string(platform::kProfileLimit, '\0'), "[IP_SETTING LIBRARY UIPARAM]\r\n" + std::string(1000000, '\n')}) {
    EXPECT_TRUE(Read(bytes));
    EXPECT_EQ(Complaints(*ui), "");
    // All that fits under the limit is written; what would go beyond it is refused when it is read again.
    EXPECT_TRUE(LibraryWriteSettings(*ui, kFile));
  }
}

}  // namespace
}  // namespace heron::test

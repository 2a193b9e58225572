// Both backends against the contract of TreeStore, on either tree, and against each other.

#include <array>
#include <random>
#include <thread>

#include "platform/memory/memory_backend.h"
#include "store_fixture.h"

namespace heron::test {
namespace {

using namespace platform;
using Bytes = std::vector<uint8_t>;

struct Variant {
  bool real;
  Hive hive;
};

class TreeContract : public ::testing::TestWithParam<Variant> {
 protected:
  TreeContract() {
    if (GetParam().real)
      real_ = InstallAt(folder_.path / "home");
    else
      memory_ = std::make_unique<MemoryBackend>();
    trees = CurrentBackend()->trees;
  }

  KeyId Make(std::u16string_view path) {
    KeyId key = -1;
    bool created = false;
    EXPECT_EQ(trees->Create(hive, path, &key, &created), kErrorSuccess);
    return key;
  }
  DWORD Write(KeyId key, std::u16string_view name, const Bytes& data) {
    return trees->Write(hive, key, name, REG_BINARY, data);
  }
  /// The value's bytes, or its error code alone.
  Bytes Read(KeyId key, std::u16string_view name) {
    Bytes room(64, 0xEE);
    DWORD type = 0;
    DWORD size = 0;
    const DWORD status = trees->Read(hive, key, name, &type, room, &size);
    if (status != kErrorSuccess) return {static_cast<uint8_t>(status), static_cast<uint8_t>(status >> 8)};
    room.resize(size);
    return room;
  }
  DWORD FindStatus(std::u16string_view path) {
    KeyId key = 0;
    return trees->Find(hive, path, &key);
  }

  TreeStore* trees = nullptr;
  const Hive hive = GetParam().hive;

 private:
  TempFolder folder_;
  std::unique_ptr<MemoryBackend> memory_;
  std::unique_ptr<store::StoreBackend> real_;
};

const Bytes kMissing{2, 0};
const Bytes kDeleted{1018 & 0xFF, 1018 >> 8};

TEST_P(TreeContract, KeysKeepTheirSpellingAndOrderAndCompareWithoutAsciiCase) {
  EXPECT_EQ(FindStatus(u""), kErrorSuccess);
  EXPECT_EQ(FindStatus(u"Software"), kErrorFileNotFound);
  KeyId key = 0;
  KeyId again = 0;
  bool created = false;
  ASSERT_EQ(trees->Create(hive, u"Software\\Zeta\\Deep", &key, &created), kErrorSuccess);
  EXPECT_TRUE(created);
  ASSERT_EQ(trees->Create(hive, u"SOFTWARE\\zeta\\deep", &again, &created), kErrorSuccess);
  EXPECT_FALSE(created);
  EXPECT_EQ(key, again);
  const KeyId large = Make(u"Software\\\u00C4rger");
  EXPECT_NE(large, Make(u"Software\\\u00E4rger"));  // ASCII letters only
  Make(u"Software\\Alpha");
  Make(u"Software Zeta");  // no subkey of Software

  const KeyId parent = Make(u"software");
  std::u16string names;
  std::u16string name;
  uint32_t index = 0;
  while (trees->Subkey(hive, parent, index, &name) == kErrorSuccess) names += name + u'|', ++index;
  EXPECT_EQ(names, u"Zeta|\u00C4rger|\u00E4rger|Alpha|");
  EXPECT_EQ(trees->Subkey(hive, parent, index, &name), kErrorNoMoreItems);
}

TEST_P(TreeContract, ValuesAreReadWholeOrNotAtAll) {
  const KeyId key = Make(u"k");
  EXPECT_EQ(Read(key, u"v"), kMissing);
  ASSERT_EQ(Write(key, u"Value", {1, 2, 3}), kErrorSuccess);
  EXPECT_EQ(Read(key, u"vALUE"), (Bytes{1, 2, 3}));
  Bytes room{7, 7};
  DWORD type = 0;
  DWORD size = 0;
  EXPECT_EQ(trees->Read(hive, key, u"Value", &type, room, &size), kErrorMoreData);
  EXPECT_EQ(size, 3u);
  EXPECT_EQ(room, (Bytes{7, 7}));

  ASSERT_EQ(trees->Write(hive, key, u"VALUE", REG_SZ, Bytes{}), kErrorSuccess);  // one value, its first spelling
  ASSERT_EQ(Write(key, u"", {9}), kErrorSuccess);
  std::u16string seen;
  ASSERT_EQ(trees->ReadAll(hive, key,
                           [&](std::u16string_view name, DWORD t, std::span<const uint8_t> data) {
                             seen += name;
                             seen += t == REG_SZ ? u"=text" : u"=bytes";
                             seen += static_cast<char16_t>(u'0' + data.size());
                           }),
            kErrorSuccess);
  EXPECT_EQ(seen, u"=bytes1Value=text0");

  EXPECT_EQ(trees->Delete(hive, key, u"value"), kErrorSuccess);
  EXPECT_EQ(trees->Delete(hive, key, u"value"), kErrorFileNotFound);
  EXPECT_EQ(Read(key, u"Value"), kMissing);
}

TEST_P(TreeContract, TheValuesOfAllSubkeysAreReadAtOnce) {
  const KeyId parent = Make(u"p");
  const auto all = [&](KeyId key) {
    std::u16string seen;
    const DWORD status = trees->ReadBelow(
        hive, key, [&](std::u16string_view subkey, std::u16string_view name, DWORD, std::span<const uint8_t> data) {
          seen.append(subkey).append(u".").append(name).append(data.size(), u'#').append(u"|");
        });
    return status == kErrorSuccess ? seen : u"error";
  };
  EXPECT_EQ(all(parent), u"");
  const KeyId second = Make(u"p\\z");
  const KeyId first = Make(u"p\\a");
  Make(u"p\\empty");
  ASSERT_EQ(Write(first, u"v", {1}), kErrorSuccess);
  ASSERT_EQ(Write(second, u"w", {1, 2}), kErrorSuccess);
  ASSERT_EQ(Write(Make(u"p\\a\\deeper"), u"v", {1}), kErrorSuccess);
  ASSERT_EQ(Write(parent, u"own", {1}), kErrorSuccess);
  EXPECT_EQ(all(parent), u"z.w##|a.v#|");
  ASSERT_EQ(trees->Remove(hive, u"p\\z"), kErrorSuccess);
  EXPECT_EQ(all(second), u"error");
}

TEST_P(TreeContract, ARemovedKeysIdIsNeverAnothers) {
  const KeyId key = Make(u"a\\b");
  ASSERT_EQ(Write(key, u"v", {1}), kErrorSuccess);
  EXPECT_EQ(trees->Remove(hive, u"a"), kErrorAccessDenied);
  EXPECT_EQ(trees->Remove(hive, u""), kErrorAccessDenied);
  EXPECT_EQ(trees->Remove(hive, u"A\\B"), kErrorSuccess);
  EXPECT_EQ(trees->Remove(hive, u"a\\b"), kErrorFileNotFound);
  const KeyId next = Make(u"a\\b");
  EXPECT_NE(next, key);
  EXPECT_EQ(Read(next, u"v"), kMissing);
  EXPECT_EQ(Read(key, u"v"), kDeleted);
  EXPECT_EQ(Write(key, u"v", {1}), kErrorKeyDeleted);
  EXPECT_EQ(trees->Delete(hive, key, u"v"), kErrorKeyDeleted);
  EXPECT_EQ(trees->ReadAll(hive, key, [](auto, auto, auto) {}), kErrorKeyDeleted);
  std::u16string name;
  EXPECT_EQ(trees->Subkey(hive, key, 0, &name), kErrorKeyDeleted);
}

TEST_P(TreeContract, AWithdrawnTransactionLeavesEverythingAsItWas) {
  const KeyId key = Make(u"k");
  ASSERT_EQ(Write(key, u"v", {1}), kErrorSuccess);
  Make(u"k\\old");
  EXPECT_EQ(trees->End(hive, true), kErrorInvalidParameter);
  ASSERT_EQ(trees->Begin(hive), kErrorSuccess);
  EXPECT_EQ(Write(key, u"v", {2}), kErrorSuccess);
  EXPECT_EQ(Read(key, u"v"), (Bytes{2}));
  EXPECT_EQ(trees->Remove(hive, u"k\\old"), kErrorSuccess);
  const KeyId lost = Make(u"k\\new");
  EXPECT_EQ(trees->End(hive, false), kErrorSuccess);
  EXPECT_EQ(Read(key, u"v"), (Bytes{1}));
  EXPECT_EQ(FindStatus(u"k\\old"), kErrorSuccess);
  EXPECT_EQ(FindStatus(u"k\\new"), kErrorFileNotFound);
  EXPECT_NE(Make(u"k\\later"), lost);
  EXPECT_EQ(Read(lost, u"v"), kDeleted);
}

TEST_P(TreeContract, ATransactionKeepsOtherThreadsWaiting) {
  const KeyId key = Make(u"k");
  ASSERT_EQ(trees->Begin(hive), kErrorSuccess);
  Bytes seen;
  std::thread reader([&] { seen = Read(key, u"b"); });
  EXPECT_EQ(Write(key, u"a", {1}), kErrorSuccess);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(Write(key, u"b", {2}), kErrorSuccess);
  EXPECT_EQ(trees->End(hive, true), kErrorSuccess);
  reader.join();
  EXPECT_EQ(seen, (Bytes{2}));
}

INSTANTIATE_TEST_SUITE_P(Backends, TreeContract,
                         ::testing::Values(Variant{false, Hive::kUser}, Variant{true, Hive::kUser},
                                           Variant{true, Hive::kMachine}),
                         [](const auto& variant) {
                           return std::string(variant.param.real ? "Real" : "Memory") +
                                  (variant.param.hive == Hive::kUser ? "User" : "Machine");
                         });

/// One backend of the pair that runs the same random calls; ids differ, so keys go by their number in `ids`.
struct Player {
  TreeStore* trees;
  std::vector<KeyId> ids{0};
  std::string log;

  std::u16string Path(unsigned dice) const {
    static constexpr std::array<std::u16string_view, 3> kParts{u"a", u"B", u"\u00E9"};
    std::u16string path(kParts[dice % 3]);
    if (dice & 4) path += u'\\' + std::u16string(kParts[dice / 8 % 3]);
    return path;
  }

  void Play(unsigned op, unsigned dice) {
    constexpr Hive kHive = Hive::kUser;
    const KeyId key = ids[dice / 32 % ids.size()];
    const std::u16string name = dice & 1 ? u"N" : u"n" + Path(dice / 2);
    KeyId found = -1;
    bool created = false;
    DWORD type = 0;
    DWORD size = 0;
    std::u16string text;
    Bytes room(dice % 9);
    const auto write = [&] {
      return trees->Write(kHive, key, name, dice % 5, Bytes(dice % 11, static_cast<uint8_t>(dice)));
    };
    const std::function<DWORD()> calls[] = {[&] { return trees->Find(kHive, Path(dice), &found); },
                                            [&] { return trees->Create(kHive, Path(dice), &found, &created); },
                                            [&] { return trees->Remove(kHive, Path(dice)); },
                                            [&] { return trees->Subkey(kHive, key, dice % 3, &text); },
                                            [&] { return trees->Read(kHive, key, name, &type, room, &size); },
                                            write,
                                            write,
                                            [&] { return trees->Delete(kHive, key, name); },
                                            [&] { return trees->Begin(kHive); },
                                            [&] { return trees->End(kHive, dice % 3 != 0); },
                                            [&] {
                                              return trees->ReadAll(kHive, key, [&](auto n, DWORD t, auto d) {
                                                text += n;
                                                type += t;
                                                size += static_cast<DWORD>(d.size());
                                              });
                                            }};
    const DWORD status = calls[op]();
    if (found >= 0) ids.push_back(found);
    log = std::to_string(op) + ':' + std::to_string(status) + ' ' + std::to_string(created) + ' ' +
          std::to_string(type) + ' ' + std::to_string(size) + ' ' + std::string(text.begin(), text.end()) + ' ' +
          std::string(room.begin(), room.end());
  }
};

TEST(TreePair, RandomCallsGiveTheSameAnswersInMemoryAndOnDisk) {
  const TempFolder folder;
  const MemoryBackend memory;
  Player first{.trees = CurrentBackend()->trees, .log = {}};
  const auto real = InstallAt(folder.path);
  Player second{.trees = CurrentBackend()->trees, .log = {}};
  std::minstd_rand dice(20240229);
  bool open = false;
  for (int step = 0; step < 20000; ++step) {
    const unsigned op = static_cast<unsigned>(dice() % (open ? 11 : 9));
    if (op == 8 && open) continue;  // never nested
    // Most of the run lies inside transactions, which spares the disk.
    const unsigned chosen = open && op == 9 && dice() % 4 != 0 ? 10 : !open && dice() % 2 != 0 ? 8 : op;
    const unsigned value = static_cast<unsigned>(dice());
    first.Play(chosen, value);
    second.Play(chosen, value);
    ASSERT_EQ(first.log, second.log) << "step " << step;
    open = chosen == 8 || (open && chosen != 9);
  }
  if (open) {
    first.Play(9, 1);
    second.Play(9, 1);
  }
  EXPECT_GT(first.ids.size(), 100u);
}

}  // namespace
}  // namespace heron::test

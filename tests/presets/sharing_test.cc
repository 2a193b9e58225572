// A library that other programs and other queues change too, and one whose disk is away for a moment.
#include "preset_library_fixture.h"
#include "settings/printer_data.h"

namespace heron::test {
namespace {

class SharingTest : public SettingsLibraryTest {
 protected:
  SharingTest() {
    Open();
    EXPECT_TRUE(Save(u"One") && Save(u"Two"));
  }
  /// The list of another queue of this user, with one file.
  static void ListElsewhere(std::u16string_view queue, const std::u16string& path) {
    LibraryIndex index;
    index.driver.emplace();
    index.entries.push_back({.slot = 0, .location = LocationOf(path), .type = kOwnEntry});
    index.count = 1;
    ASSERT_TRUE(WriteLibraryIndex(queue, index));
  }
};

TEST_F(SharingTest, EveryChangeIsMadeOfWhatIsThereByThen) {
  struct Case {
    const char* name;
    std::function<bool(SettingsLibrary&)> change;
    const char* after;
  };
  const Case cases[] = {
      {"save", [&](auto& own) { return SaveSettingsAs(own, *ui, kHome, u"Mine", {}); },
       "Standard, Two, Other, One, Mine"},
      {"rename", [&](auto& own) { return RenameSettings(own, 1, u"Mine"); }, "Standard, Two, Other, Mine"},
      {"remove", [&](auto& own) { return RemoveSettings(own, 1); }, "Standard, Two, Other"},
      {"move", [&](auto& own) { return MoveSettings(own, 1, LibraryDirection::kUp); }, "Standard, Two, One, Other"},
      {"comment", [&](auto& own) { return CommentSettings(own, 1, u"mine"); }, "Standard, Two, Other, One"},
      {"register", [&](auto& own) { return RegisterSettingsFile(own, u"/other/Far.vxs"); },
       "Standard, Two, Other, One, Far"}};
  const LibraryIndex list = library->stored;
  const auto files = backend.files.content;
  for (const auto& [name, change, after] : cases) {
    backend.files.content = files;
    ASSERT_TRUE(WriteLibraryIndex(u"P1", list));
    MakeFile(u"/other/Far.vxs", u"Far");
    ASSERT_EQ(Open(), "Standard, One, Two");
    Elsewhere([&](SettingsLibrary& other) {
      ASSERT_TRUE(MoveSettings(other, 1, LibraryDirection::kDown));
      ASSERT_TRUE(SaveSettingsAs(other, *ui, kHome, u"Other", {}));
      ASSERT_TRUE(MoveSettings(other, 3, LibraryDirection::kUp));
    });
    EXPECT_TRUE(change(*library)) << name;
    EXPECT_EQ(Open(), after) << name;
  }
}

TEST_F(SharingTest, AFileThatCameMeanwhileIsAskedForAndOneThatChangedIsReadAgain) {
  view.someone = false;
  Elsewhere([&](SettingsLibrary& other) { ASSERT_TRUE(SaveSettingsAs(other, *ui, kHome, u"New", u"theirs")); });
  EXPECT_FALSE(Save(u"New", u"mine"));
  EXPECT_EQ(view.Said(), "[21103]|[25755]?");
  EXPECT_NE(FileBytes(At(u"New")).find("*theirs*"), std::string::npos);
  view.someone = true;
  Elsewhere([&](SettingsLibrary& other) {
    ASSERT_TRUE(CommentSettings(other, PlaceOfFile(other, LocationOf(At(u"One"))), u"theirs"));
  });
  EXPECT_TRUE(RenameSettings(*library, PlaceNamed(u"One"), u"Renamed"));
  EXPECT_NE(FileBytes(At(u"Renamed")).find("*theirs*"), std::string::npos) << "the comment isn't undone";
  view.meanwhile = [&] {
    Elsewhere([&](SettingsLibrary& other) {
      ASSERT_TRUE(CommentSettings(other, PlaceOfFile(other, LocationOf(At(u"Two"))), u"while asked"));
    });
  };
  EXPECT_TRUE(Save(u"Two", u"mine"));
  EXPECT_EQ(view.Said(), "[21103]|[25755]?[21103]|[25755]?") << "another file than the one that was asked about";
}

TEST_F(SharingTest, AnEntryThatLeftMeanwhileIsReported) {
  Elsewhere([&](SettingsLibrary& other) { ASSERT_TRUE(RemoveSettings(other, 1)); });
  EXPECT_FALSE(CommentSettings(*library, 1, u"too late"));
  EXPECT_EQ(view.Said(), "[21105]|[25776]");
  EXPECT_EQ(Names(), "Standard, Two");
}

TEST_F(SharingTest, AFileOfAnotherQueueIsNeverTakenWithoutSayingSo) {
  backend.modules[kResourceModule][25773] = u" also %s";
  backend.modules[kResourceModule][25774] = u"leaves %s";
  ReleaseStrings();
  AcquireStrings();
  ListElsewhere(u"P2", At(u"One"));
  ListElsewhere(u"\\\\server\\share", At(u"One"));
  ListElsewhere(u"P3", At(u"Two"));
  view.yes = false;
  EXPECT_FALSE(Save(u"One"));
  EXPECT_EQ(view.Said(), "[21103]|[25755] also \"P2\", \"server\\share\"?");
  EXPECT_FALSE(RenameSettings(*library, 2, u"Three"));
  EXPECT_EQ(view.Said(), "[21105]|leaves \"P3\"?");
  EXPECT_FALSE(FileBytes(At(u"Two")).empty());
  view.yes = true;
  EXPECT_TRUE(RenameSettings(*library, 2, u"Three"));
  EXPECT_TRUE(FileBytes(At(u"Two")).empty());
}

TEST_F(SharingTest, AFolderThatIsAwayDropsNothing) {
  backend.modules[kResourceModule][25772] = u"away: %s";
  ReleaseStrings();
  AcquireStrings();
  const std::string tree = UserTree();
  backend.files.awayFolders = {kHome};
  EXPECT_EQ(Open(), "Standard, One, Two");
  EXPECT_EQ(view.Said(), "[21102]|away: One: /home/user\nTwo: /home/user");
  EXPECT_EQ(UserTree(), tree);
  EXPECT_FALSE(RenameSettings(*library, 1, u"Three"));
  EXPECT_FALSE(CommentSettings(*library, 1, u"lost"));
  engine::Engine bound(*ui);
  engine::Resolver resolver(bound);
  engine::ResolveOutcome outcome;
  EXPECT_FALSE(RecallSettings(resolver, &view, *library, 1, kAllRecallParts, &outcome));
  EXPECT_TRUE(SaveSettingsAs(*library, *ui, u"/elsewhere", u"Three", {}));
  EXPECT_TRUE(RemoveSettings(*library, 2)) << "what is gone for good can be taken off the list";
  PretendVersion(u"01.00.00.00");
  EXPECT_EQ(Open(), "Standard, One, Three") << "another driver version keeps it too";
  backend.files.awayFolders.clear();
  view.Said();
  EXPECT_EQ(Open(), "Standard, One, Three");
  EXPECT_EQ(view.Said(), "");
  backend.files.content.erase(At(u"One"));
  EXPECT_EQ(Open(), "Standard, Three") << "its folder is there";
}

TEST_F(SharingTest, CharactersThatTheCodePageLacksAreNamed) {
  backend.modules[kResourceModule][25770] = u"%d: %s";
  backend.modules[kResourceModule][25771] = u"comment %d: %s";
  ReleaseStrings();
  AcquireStrings();
  backend.codePage = 28591;
  EXPECT_FALSE(Save(u"ä\u65E5b\u672C\u65E5"));
  EXPECT_FALSE(Save(u"Fine", u"\U0001F600"));
  EXPECT_FALSE(CommentSettings(*library, 1, u"\u20AC"));
  EXPECT_EQ(view.Said(), "[21103]|28591: \u65E5 \u672C[21103]|comment 28591: \U0001F600[21105]|comment 28591: \u20AC");
  EXPECT_TRUE(Save(u"Fine", u"\u00E4"));
}

}  // namespace
}  // namespace heron::test

// The library's list: what opening makes of it, what a user does to it, and what is reported.
#include "preset_library_fixture.h"

namespace heron::test {
namespace {

class OpeningTest : public SettingsLibraryTest {};

TEST_F(OpeningTest, BeginsWithTheStandardFileAndWritesOnlyWhatIsNew) {
  EXPECT_EQ(Open(), "Standard");
  const std::string tree = UserTree();
  EXPECT_NE(tree.find("P1\\IP_UIPROFILE\\Locate Info\\File Info 00|"), std::string::npos);
  backend.userWritable = false;
  EXPECT_EQ(Open(), "Standard");
  backend.userWritable = true;
  EXPECT_EQ(UserTree(), tree);
  backend.files.content.erase(kStandard);
  EXPECT_EQ(Open(), "") << "a file that is gone leaves silently";
  EXPECT_EQ(view.Said(), "");
}

TEST_F(OpeningTest, KeepsTheOrderAndPassesOverPlacesThatCantBe) {
  Open();
  for (const auto* name : {u"A", u"B", u"C"}) ASSERT_TRUE(Save(name));
  ASSERT_TRUE(LibraryMove(*library, 3, LibraryDirection::kUp));
  EXPECT_TRUE(LibrarySaveIndex(*library));
  EXPECT_EQ(library->stored.entries[2].slot, 3) << "an entry keeps its key when it moves";
  EXPECT_EQ(Open(), "Standard, A, C, B");
  EXPECT_EQ(library->turn[3], 3) << "closed up";
  StoreNumber(u"IP_UIPROFILE\\Locate Info\\Turn", u"1", 25);
  StoreNumber(u"IP_UIPROFILE\\Locate Info\\Turn", u"2", 0);
  EXPECT_EQ(Open(), "Standard, B");
  EXPECT_EQ(Open(), "Standard, B");
  EXPECT_FALSE(FileBytes(At(u"A")).empty());
  StoreNumber(u"IP_UIPROFILE\\Locate Info\\Count", u"count", 26);
  EXPECT_EQ(Open(), "-");
}

TEST_F(OpeningTest, RefusesFilesOfOtherDriversAndSaysWhy) {
  struct Case {
    const char* key;
    const char* value;
    const char* said;
  };
  const Case cases[] = {{"system", "OS/2", "[21102]|[25733]"},     {"model", "Other", "[21102]|[25732]"},
                        {"DrvLanguage", "ENU", "[21102]|[25735]"}, {"DrvMachineDestination", "EU", "[21102]|[25735]"},
                        {"manufacture", "", "[21106]|[25706]"},    {"product", "", "[21106]|[25706]"},
                        {"attributes", "0", "[21106]|[25707]"},    {"DrvMachineDestination", "0", ""},
                        {"DrvLanguage", "chs", "[21105]|[25765]"}};
  Open();
  for (const auto& [key, value, said] : cases) {
    MakeFile(u"/other/" + Wide(key) + u"x.vxs", u"Other", {{key, value}});
    const std::string tree = UserTree();
    EXPECT_EQ(Register(u"/other/" + Wide(key) + u"x.vxs"), *said == 0) << key;
    EXPECT_EQ(view.Said(), said) << key;
    if (*said != 0) {
      EXPECT_EQ(UserTree(), tree) << key;
    }
  }
  EXPECT_EQ(Names(), "Standard, Other");
  MakeFile(u"/other/DrvMachineDestinationx.vxs", u"Other", {{"model", "Other"}});
  EXPECT_EQ(Open(), "Standard");
  EXPECT_EQ(view.Said(), "[21102]|[25732]");
}

TEST_F(OpeningTest, WhatIsNoSettingsFileIsRefusedWithoutDamage) {
  Open();
  const std::string junk[] = {"",         std::string(1, '\0'),
                              "[x]",      std::string((1 << 20) + 1, 'x'),
                              "\r\n\r\n", "[IP_SETTING LIBRARY DRIVERINFO]\nmanufacture=Varnell\nproduct=x\n"};
  for (const std::string& bytes : junk) {
    SetFile(u"/other/junk.vxs", bytes);
    EXPECT_FALSE(Register(u"/other/junk.vxs"));
    EXPECT_EQ(view.Said(), "[21106]|[25706]");
    EXPECT_EQ(FileBytes(u"/other/junk.vxs"), bytes);
  }
  EXPECT_FALSE(Register(u"/other/none.vxs"));
  EXPECT_EQ(view.Said(), "[21106]|[25706]");
  EXPECT_FALSE(Register(u"/other/junk.txt"));
  EXPECT_FALSE(Register(u"/other/" + std::u16string(65, u'n') + u".vxs"));
  EXPECT_EQ(view.Said(), "[21106]|[25763][21106]|[25761]");
}

class VersionTest : public SettingsLibraryTest {
 protected:
  VersionTest() {
    Open();
    EXPECT_TRUE(Save(u"Mine") && Save(u"Old"));
    MakeFile(At(u"Old"), u"Old", {{"version", "01.00.00.00"}});
    PretendVersion(u"01.00.00.00");
  }
};

TEST_F(VersionTest, YesKeepsTheUsersFilesAndConvertsThem) {
  EXPECT_EQ(Open(LibraryLoad::kHeads), "Standard, Mine, Old");
  EXPECT_EQ(view.Said(), "[21102]|[25714]Mine\nOld\n[25717][25718]?[21102]|[25734][25712][25713]?");
  EXPECT_NE(FileBytes(At(u"Old")).find("version=02.00.00.00\r\n"), std::string::npos) << "written anew at once";
  EXPECT_EQ(Open(), "Standard, Mine, Old");
  EXPECT_EQ(view.Said(), "");
}

TEST_F(VersionTest, NoBeginsTheListAnewAndNoAnswerLeavesItAlone) {
  view.someone = false;
  const std::string tree = UserTree();
  const auto files = backend.files.content;
  EXPECT_EQ(Open(), "-");
  EXPECT_EQ(UserTree(), tree);
  EXPECT_TRUE(files == backend.files.content);
  view.someone = true;
  view.yes = false;
  EXPECT_EQ(Open(), "Standard");
  EXPECT_EQ(view.Said().substr(0, 7), "[21102]");
  EXPECT_FALSE(FileBytes(At(u"Mine")).empty());
}

TEST_F(VersionTest, WithoutTheUsersFilesNothingIsAsked) {
  ASSERT_TRUE(backend.files.content.erase(At(u"Mine")) && backend.files.content.erase(At(u"Old")));
  EXPECT_EQ(Open(), "Standard");
  EXPECT_EQ(view.Said(), "");
}

TEST_F(VersionTest, AFileOfTheUsersWithTheStandardsNameKeepsItOut) {
  MakeFile(At(u"Mine"), u"STANDARD");
  EXPECT_EQ(Open(), "STANDARD, Old");
}

TEST_F(VersionTest, AProtectedFileCantBeConverted) {
  backend.files.protectedPaths = {At(u"Old")};
  EXPECT_EQ(Open(), "Standard, Mine");
  EXPECT_EQ(view.Said(), "[21102]|[25714]Mine\nOld\n[25717][25718]?[21102]|[25734][25709][25710]");
  EXPECT_FALSE(Register(At(u"Old")));
  EXPECT_EQ(view.Said(), "[21102]|[25734][25711]");
}

class EditingTest : public SettingsLibraryTest {
 protected:
  EditingTest() { Open(); }
};

TEST_F(EditingTest, NamesAreCheckedInOrder) {
  ASSERT_TRUE(Save(u"Taken"));
  SetFile(At(u"lying"), "another file");
  SetFile(At(u"locked"), "another file");
  backend.files.protectedPaths = {At(u"locked")};
  struct Case {
    std::u16string name;
    const char* save;
    const char* rename;
  };
  const Case cases[] = {
      {u"a.b", "[21103]|[25751]", "[21105]|[25760]"},
      {u"a\tb", "[21103]|[25768]", "[21105]|[25768]"},
      {u"", "[21103]|[25750]", "[21105]|[25759]"},
      {std::u16string(65, u'n'), "[21103]|[25752]", "[21105]|[25752]"},
      {u"tAKEN", "[21103]|[25755]?", ""},
      {u"standard", "[21103]|[25754]", "[21105]|[25765]"},
      {u"locked", "[21103]|[25756]", "[21105]|[25704]"},
      {u"lying", "[21103]|[25755]?", "[21105]|[25704]"},
  };
  view.yes = false;
  for (const auto& [name, save, rename] : cases) {
    EXPECT_FALSE(Save(name));
    EXPECT_EQ(view.Said(), save) << platform::ToUtf8(name);
    EXPECT_EQ(RenameSettings(*library, 1, name), *rename == 0);
    EXPECT_EQ(view.Said(), rename) << platform::ToUtf8(name);
  }
  EXPECT_EQ(FileBytes(At(u"lying")), "another file");
  EXPECT_EQ(FileBytes(At(u"Taken")), "") << "renamed to another case";
  EXPECT_EQ(Names(), "Standard, tAKEN");
  backend.codePage = 1;
  backend.files.protectedPaths = {kHome};
  EXPECT_FALSE(Save(u"Anything"));
  EXPECT_EQ(view.Said(), "[21103]|[25767]");
}

TEST_F(EditingTest, AFullLibraryTakesNothingMore) {
  for (int n = 1; n < kLibraryCapacity; ++n) ASSERT_TRUE(Save(u"Entry " + Wide(std::to_string(n))));
  MakeFile(u"/other/more.vxs", u"More");
  backend.modules[kResourceModule][21010] = u"%d at most";
  ReleaseStrings();
  AcquireStrings();
  const std::string tree = UserTree();
  EXPECT_FALSE(Save(u"More"));
  EXPECT_FALSE(Register(u"/other/more.vxs"));
  EXPECT_FALSE(LibraryRegisterFile(*library, LocationOf(u"/other/more.vxs")));
  EXPECT_EQ(view.Said(), "[21103]|25 at most[21106]|[25769]");
  EXPECT_EQ(UserTree(), tree);
  EXPECT_EQ(library->count, kLibraryCapacity);
}

TEST_F(EditingTest, RenamesMovesRemovesAndComments) {
  ASSERT_TRUE(Save(u"One", u"a\nb") && Save(u"Two"));
  EXPECT_TRUE(RenameSettings(*library, 1, u"Three"));
  EXPECT_EQ(FileBytes(At(u"One")), "");
  EXPECT_TRUE(LibrarySetComment(*library, 2, u"line\nline"));
  EXPECT_FALSE(LibrarySetComment(*library, 2, std::u16string(513, u'c')));
  EXPECT_FALSE(LibrarySetComment(*library, 0, u"not the standard's")) << "it would never be written";
  EXPECT_FALSE(LibraryMove(*library, 0, LibraryDirection::kUp));
  EXPECT_FALSE(LibraryMove(*library, 2, LibraryDirection::kDown));
  EXPECT_TRUE(LibraryMove(*library, 2, LibraryDirection::kUp) && LibrarySaveIndex(*library));
  EXPECT_EQ(Open(), "Standard, Two, Three");
  EXPECT_EQ(library->At(1)->comment, u"line\r\nline");
  EXPECT_EQ(library->At(2)->comment, u"a\r\nb");
  EXPECT_FALSE(RenameSettings(*library, 0, u"Mine now"));
  EXPECT_FALSE(RemoveSettings(*library, 0));
  EXPECT_EQ(view.Said(), "[21105]|[25704][21105]|[25703]");
  EXPECT_TRUE(RemoveSettings(*library, 1));
  EXPECT_EQ(Open(), "Standard, Three");
  EXPECT_FALSE(FileBytes(At(u"Two")).empty()) << "the file stays";
  view.Said();
  EXPECT_TRUE(Register(At(u"Two")));
  EXPECT_EQ(Open(), "Standard, Three, Two");
}

TEST_F(EditingTest, AProtectedEntryStaysAsItIs) {
  ASSERT_TRUE(Save(u"One"));
  backend.files.protectedPaths = {At(u"One")};
  EXPECT_EQ(Open(), "Standard, One");
  EXPECT_EQ(library->At(1)->identity.attributes, kProtectedEntry);
  EXPECT_FALSE(RenameSettings(*library, 1, u"Two"));
  EXPECT_EQ(view.Said(), "[21105]|[25704]");
  EXPECT_TRUE(LibrarySaveIndex(*library));
  EXPECT_EQ(Open(), "Standard, One");
  backend.files.protectedPaths.clear();
  EXPECT_EQ(Open(), "Standard, One");
  EXPECT_EQ(library->At(1)->identity.attributes, kOwnEntry) << "it was never written into the file";
}

TEST_F(EditingTest, AnOverwrittenFileOfTheListGivesUpItsPlace) {
  ASSERT_TRUE(Save(u"One") && Save(u"Two"));
  MakeFile(At(u"One"), u"Shown");
  EXPECT_EQ(Open(), "Standard, Shown, Two");
  Value<u"Copies">(*ui) = 42;
  EXPECT_TRUE(Save(u"One"));
  EXPECT_EQ(view.Said(), "[21103]|[25755]?");
  EXPECT_EQ(Open(), "Standard, One, Two");
  EXPECT_EQ(Value<u"Copies">(*library->At(1)->state), 42);
  EXPECT_TRUE(Save(u"oNE"));
  EXPECT_EQ(Open(), "Standard, oNE, Two");
  EXPECT_EQ(FileBytes(At(u"One")), "") << "no file is left that nothing names";
}

TEST_F(EditingTest, AnythingThatFailsLeavesListAndFiles) {
  ASSERT_TRUE(Save(u"One") && Save(u"Two"));
  const LibraryIndex list = library->stored;
  const auto files = backend.files.content;
  const auto reset = [&] {
    backend.files.content = files;
    ASSERT_TRUE(WriteLibraryIndex(u"P1", list));
    ASSERT_EQ(Open(), "Standard, One, Two");
  };
  SweepFailures(
      reset,
      [&] {
        const bool done = RenameSettings(*library, 1, u"Three");
        EXPECT_TRUE(done || files == backend.files.content);
        return done;
      },
      true);
  EXPECT_EQ(Open(), "Standard, Three, Two");
  SweepFailures(reset, [&] { return LibraryMove(*library, 2, LibraryDirection::kUp) && LibrarySaveIndex(*library); });
  EXPECT_EQ(Open(), "Standard, Two, One");
}

TEST_F(EditingTest, ATrialWritesNothing) {
  ASSERT_TRUE(Save(u"One"));
  const std::string tree = UserTree();
  const auto files = backend.files.content;
  library = SettingsLibraryOpen(view, *ui, resources.get(), LibraryLoad::kSettings, LibraryWrites::kNo);
  EXPECT_TRUE(Save(u"Two"));
  EXPECT_TRUE(RenameSettings(*library, 1, u"Three"));
  EXPECT_TRUE(RemoveSettings(*library, 2));
  EXPECT_EQ(Names(), "Standard, Three");
  EXPECT_EQ(UserTree(), tree);
  EXPECT_TRUE(files == backend.files.content);
}

}  // namespace
}  // namespace heron::test

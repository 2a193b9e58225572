// Copies of entries for others, the file that new queues start from, and moves past several entries.
#include "preset_library_fixture.h"

namespace heron::test {
namespace {

class ExportTest : public SettingsLibraryTest {
 protected:
  ExportTest() { Open(); }
  bool Export(std::u16string_view name, const std::u16string& path) {
    return ExportSettings(*library, PlaceNamed(name), path);
  }
};

TEST_F(ExportTest, ACopyHasItsFilesNameAndCanBeRegistered) {
  Value<u"Copies">(*ui) = 9;
  ASSERT_TRUE(Save(u"Nine", u"nine\nof each"));
  const std::string original = FileBytes(At(u"Nine"));
  ASSERT_TRUE(Export(u"Nine", At(u"Copy")));
  EXPECT_EQ(FileBytes(At(u"Nine")), original);
  ASSERT_TRUE(Register(At(u"Copy")));
  const LibraryEntry& copy = *library->At(2);
  EXPECT_EQ(copy.displayName, u"Copy");
  EXPECT_EQ(copy.comment, u"nine\r\nof each");
  EXPECT_EQ(Value<u"Copies">(*copy.state), 9);
  ASSERT_TRUE(ExportSettings(*library, 0, At(u"Standard copy")));
  EXPECT_TRUE(Register(At(u"Standard copy"))) << "a standard file itself is refused";
  EXPECT_EQ(view.Said(), "");
}

TEST_F(ExportTest, RefusesNamesFoldersAndFilesOfTheList) {
  ASSERT_TRUE(Save(u"One"));
  const struct {
    std::u16string path;
    const char* said;
  } kCases[] = {{u"/home/user/a.txt", "[25763]"},
                {u"/home/user/a.b.vxs", "[25760]"},
                {u"/home/user/.vxs", "[25759]"},
                {u"/home/user/" + std::u16string(65, u'x') + u".vxs", "[25752]"},
                {At(u"one"), "[25765]"}};
  for (const auto& row : kCases) {
    EXPECT_FALSE(ExportSettings(*library, 1, row.path));
    EXPECT_NE(view.Said().find(row.said), std::string::npos) << row.said;
  }
  EXPECT_FALSE(ExportSettings(*library, 5, At(u"Two")));
}

TEST_F(ExportTest, AsksBeforeItReplacesAndAgainIfTheFileChanged) {
  ASSERT_TRUE(Save(u"One"));
  SetFile(At(u"Other"), "somebody's");
  view.yes = false;
  EXPECT_FALSE(Export(u"One", At(u"Other")));
  EXPECT_EQ(FileBytes(At(u"Other")), "somebody's");
  view.Said();
  view.yes = true;
  view.meanwhile = [this] { SetFile(At(u"Other"), "changed while it was asked"); };
  EXPECT_TRUE(Export(u"One", At(u"Other")));
  const std::string said = view.Said();
  EXPECT_NE(said.find("[25755]"), said.rfind("[25755]")) << "asked twice: " << said;
  EXPECT_EQ(FileBytes(At(u"Other")).substr(0, 1), "[");
}

TEST_F(ExportTest, AFailureLeavesEveryFile) {
  ASSERT_TRUE(Save(u"One"));
  SetFile(At(u"Other"), "old");
  const std::string original = FileBytes(At(u"One"));
  view.yes = true;
  bool disturbed = true;
  for (uint64_t call = 1; disturbed; ++call) {
    SetFile(At(u"Other"), "old");
    backend.FailCall(call, platform::kErrorWriteFault);
    const bool exported = Export(u"One", At(u"Other"));
    disturbed = backend.Calls() >= call;
    backend.FailCall(0, 0);
    EXPECT_TRUE(exported || disturbed);
    EXPECT_EQ(FileBytes(At(u"Other")) == "old", !exported) << call;
    EXPECT_EQ(FileBytes(At(u"One")), original);
  }
}

TEST_F(ExportTest, AnEntryHasTheRowsOfItsOwnList) {
  Put(ui->stores.pageLists->lists[0].name, u"First");
  ui->stores.pageLists->lists[0].pageCount = 1;
  Put(ui->stores.pageLists->lists[0].pages[0].page, u"77");
  ASSERT_TRUE(Save(u"One"));
  Put(CurrentPages(*ui)[0].page, u"5");
  ASSERT_EQ(Open(), "Standard, One");
  EXPECT_EQ(std::u16string(CurrentPages(*library->At(1)->state)[0].page), u"77");
}

TEST_F(ExportTest, MovesPastOthers) {
  for (const char16_t* name : {u"A", u"B", u"C"}) ASSERT_TRUE(Save(name));
  EXPECT_TRUE(MoveSettingsTo(*library, 3, 1));
  EXPECT_EQ(Names(), "Standard, C, A, B");
  EXPECT_TRUE(MoveSettingsTo(*library, 1, 99));
  EXPECT_EQ(Open(), "Standard, A, B, C");
}

TEST_F(ExportTest, TheStartFileIsTheUsers) {
  EXPECT_EQ(ReadStartFile(), u"");
  EXPECT_TRUE(WriteStartFile(At(u"House")));
  EXPECT_EQ(ReadStartFile(), At(u"House"));
  EXPECT_TRUE(WriteStartFile({}));
  EXPECT_EQ(ReadStartFile(), u"");
}

}  // namespace
}  // namespace heron::test

// Fax recipients: the exchange form in two code pages, damaged files, and the ring of address files.
#include <filesystem>

#include "platform/api/files.h"
#include "platform/sqlite/store.h"
#include "settings/defaults.h"
#include "store_fixture.h"
#include "uistate/recipients.h"

namespace heron::test {
namespace {

using namespace platform;

class FaxTest : public StoreTest {
 protected:
  FaxTest() {
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    ui = CreateUiState(resources.get(), env, printer.get());
  }

  void AddRecipients(uint16_t count) {
    UiHead& head = ui->head();
    head.faxAddressCount = head.faxRowCount = count;
    for (uint16_t i = 0; i < count; ++i) {
      Put(head.faxNames[i], u"Name " + Wide(std::to_string(i)));
      Put(head.faxNumbers[i], std::u16string(44, static_cast<char16_t>(u'0' + i % 10)));
      head.faxV34[i].value = i % 2;
    }
  }
  UiStatePtr Reopen(DriverEnv& record) { return CreateUiState(resources.get(), record, printer.get()); }
  std::vector<uint8_t>& File() { return *backend.files.content.begin()->second; }

  DriverEnv env;
  UiStatePtr ui;
};

TEST_F(FaxTest, RecipientsTravelThroughTheFile) {
  AddRecipients(100);
  WriteBackUiState(*ui, env, resources.get());
  EXPECT_EQ(Get<"faxAddressCount">(env), 100);
  ASSERT_NE(Get<"faxAddressFileId">(env), 0u);
  ASSERT_EQ(File().size(), 18004u);
  const UiStatePtr again = Reopen(env);
  const UiHead& head = again->head();
  EXPECT_EQ(head.faxAddressCount, 100);
  EXPECT_EQ(head.faxRowCount, 100);
  EXPECT_EQ(std::u16string_view(head.faxNames[99]), u"Name 99");
  EXPECT_EQ(std::u16string_view(head.faxNumbers[3]), std::u16string(44, u'3')) << "fills its field";
  EXPECT_EQ(head.faxV34[1].committed, 1);
  EXPECT_EQ(head.faxV34[1].defaultValue, CatalogDefault(resources.get(), 183));

  const uint32_t id = Get<"faxAddressFileId">(env);
  WriteBackUiState(*again, env, resources.get());
  EXPECT_EQ(Get<"faxAddressFileId">(env), id) << "the file is replaced";
  again->head().faxAddressCount = 0;
  WriteBackUiState(*again, env, resources.get());
  EXPECT_EQ(Get<"faxAddressFileId">(env), 0u);
  EXPECT_TRUE(backend.files.content.empty());
}

TEST_F(FaxTest, ADamagedFileNeverLeavesTheTable) {
  AddRecipients(2);
  WriteBackUiState(*ui, env, resources.get());
  const std::vector<uint8_t> good = File();
  for (const size_t size : {size_t{0}, size_t{3}, size_t{18003}, size_t{18005}, size_t{100000}}) {
    File() = good;
    File().resize(size, 0xAA);
    const UiStatePtr state = Reopen(env);
    EXPECT_EQ(state->head().faxAddressCount, 0) << size;
    EXPECT_EQ(state->head().faxRowCount, 0) << size;
  }
  for (const uint32_t count : {101u, 0x80000000u, 0xFFFFFFFFu}) {
    File().assign(18004, 0xFF);
    std::memcpy(File().data(), &count, sizeof count);
    const UiStatePtr state = Reopen(env);
    EXPECT_EQ(state->head().faxAddressCount, 100);
    for (const auto& name : state->head().faxNames) EXPECT_EQ(name[kRecipientTextLength], u'\0');
  }
  backend.files.content.clear();
  DriverEnv work = env;
  LoadAddressFile(*ui, work, resources.get());
  EXPECT_EQ(ui->head().faxAddressCount, 0);
  EXPECT_EQ(Get<"faxAddressFileId">(work), 0u);
}

TEST_F(FaxTest, AFolderThatCannotBeWrittenClearsTheNumber) {
  AddRecipients(2);
  WriteBackUiState(*ui, env, resources.get());
  backend.files.writable = false;
  EXPECT_FALSE(WriteAddressFile(*ui, env));
  EXPECT_EQ(Get<"faxAddressFileId">(env), 0u);
}

TEST_F(FaxTest, TheEleventhFileDisplacesTheFirst) {
  AddRecipients(1);
  std::vector<uint32_t> ids;
  for (int i = 0; i < 25; ++i) {
    Set<"faxAddressFileId">(env, 0);
    ASSERT_TRUE(WriteAddressFile(*ui, env));
    ids.push_back(Get<"faxAddressFileId">(env));
    EXPECT_EQ(backend.files.content.size(), std::min<size_t>(ids.size(), 10));
    if (ids.size() > 10) {
      EXPECT_FALSE(backend.files.content.contains(AddressFilePath(ids[ids.size() - 11])));
    }
    EXPECT_FALSE(RecordAddressFile(u"P1", ids.back())) << "recorded already";
  }
  // A ring with an unknown number goes on; one that can't be written deletes nothing.
  StoreNumber(u"TempPlistID", u"idx", 77);
  EXPECT_TRUE(RecordAddressFile(u"P1", 500));
  backend.userWritable = false;
  EXPECT_FALSE(RecordAddressFile(u"P1", 501));
  EXPECT_GE(backend.files.content.size(), 9u);
}

class CodePageTest : public ::testing::TestWithParam<uint32_t> {};

TEST_P(CodePageTest, TextsAreCutAtAWholeCharacterInTheRealStore) {
  std::string home = (std::filesystem::temp_directory_path() / "heron-fax-XXXXXX").native();
  ASSERT_NE(mkdtemp(home.data()), nullptr);
  {
    store::StoreOptions options;
    options.home = home;
    options.user = "user";
    options.code_page = GetParam();
    const auto backend = store::InstallStoreBackend(options);
    AddQueue({.name = u"P1", .server = {}, .port = {}, .driver = {}, .dataFile = u"/driver/a.dat", .devMode = {}});
    const UniquePrinter printer = OpenPrinterFor(u"P1", PRINTER_ALL_ACCESS);
    const std::unique_ptr<ResourceContext, CloseContext> resources(OpenResourceContext(1));
    DriverEnv env;
    BuildDefaultEnv(resources.get(), &env, u"P1", printer.get());
    UiStatePtr ui = CreateUiState(resources.get(), env, printer.get());
    UiHead& head = ui->head();
    head.faxAddressCount = 1;
    Put(head.faxNames[0], u"x" + std::u16string(43, u'字'));
    Put(head.faxCompanies[0], u"短い");
    WriteBackUiState(*ui, env, resources.get());

    const std::filesystem::path file = AddressFilePath(Get<"faxAddressFileId">(env));
    namespace fs = std::filesystem;
    EXPECT_EQ(fs::file_size(file), 18004u);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms::owner_all);
    ui = CreateUiState(resources.get(), env, printer.get());
    const size_t fits = GetParam() == CP_UTF8 ? 43 / 3 : 43 / 2;
    EXPECT_EQ(std::u16string_view(ui->head().faxNames[0]), u"x" + std::u16string(fits, u'字'));
    EXPECT_EQ(std::u16string_view(ui->head().faxCompanies[0]), u"短い");
    EXPECT_EQ(std::u16string_view(ui->head().faxDepartments[0]), u"");
    // Keys of queues are cut to 31 bytes of the code page as well.
    const std::u16string a29(29, u'a');
    const bool two_bytes = GetParam() == 936;
    EXPECT_TRUE(BuildUserKey(a29 + u"中").ends_with(two_bytes ? u"\\" + a29 + u"中" : u"\\" + a29));
    EXPECT_TRUE(BuildUserKey(a29 + u"a中").ends_with(u"\\" + a29 + u"a"));
    EXPECT_TRUE(BuildUserKey(u"😀").ends_with(two_bytes ? u"\\?" : u"\\😀"));
    // A link in the file's place is refused rather than followed.
    const fs::path elsewhere = fs::path(home) / "elsewhere";
    fs::rename(file, elsewhere);
    fs::create_symlink(elsewhere, file);
    EXPECT_FALSE(WriteAddressFile(*ui, env));
    EXPECT_EQ(fs::file_size(elsewhere), 18004u);
  }
  std::filesystem::remove_all(home);
}

INSTANTIATE_TEST_SUITE_P(Pages, CodePageTest, ::testing::Values(65001u, 936u));

}  // namespace
}  // namespace heron::test

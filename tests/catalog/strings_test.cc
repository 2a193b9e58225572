// The driver directory and the cache of texts.
#include <atomic>
#include <thread>

#include "support/driver_fixture.h"
#include "support/failing_new.h"

namespace heron {
namespace {

using test::DriverTest;
using View = std::u16string_view;

class StringsTest : public DriverTest {
 protected:
  std::map<uint32_t, std::u16string>& Texts() { return backend.modules[test::kResourceModule]; }
  static View Get(uint32_t id) { return GetUiString(id); }
};

TEST_F(StringsTest, TheQueueNamesTheDirectory) {
  EXPECT_EQ(DriverDirectory(), test::kDriverFolder);
  const auto refresh = [](const std::u16string& name, const std::u16string& data_file) {
    platform::Queue queue;
    queue.name = name;
    queue.dataFile = data_file;
    EXPECT_EQ(platform::AddQueue(queue), platform::kErrorSuccess);
    const platform::UniquePrinter other = platform::OpenPrinterFor(name.c_str(), platform::PRINTER_ACCESS_USE);
    return RefreshDriverDirectory(other.get());
  };
  const std::u16string longest(259, u'd');
  EXPECT_FALSE(refresh(u"none", u""));
  EXPECT_FALSE(refresh(u"bare", u"varnell.dat"));
  EXPECT_FALSE(refresh(u"long", longest + u"d/varnell.dat"));
  EXPECT_FALSE(RefreshDriverDirectory(nullptr));
  EXPECT_EQ(DriverDirectory(), test::kDriverFolder);
  EXPECT_TRUE(refresh(u"just", longest + u"/varnell.dat"));
  EXPECT_EQ(DriverDirectory(), longest + u"/");
  EXPECT_TRUE(refresh(u"deep", u"/a/b\\c/varnell.dat"));
  EXPECT_EQ(DriverDirectory(), u"/a/b\\c/");
}

TEST_F(StringsTest, NumbersAndLengthsHaveBounds) {
  for (const uint32_t id : {19999u, 20000u, 21200u, 64000u, 64001u}) Texts()[id] = u"text";
  Texts()[30000] = std::u16string(999, u'a');
  Texts()[30001] = std::u16string(1000, u'b');
  Texts()[30002] = std::u16string(5000, u'c');
  EXPECT_EQ(Get(20000), u"");  // not acquired
  EXPECT_EQ(GetUiStringLength(20000), 0u);
  const StringsInUse strings;
  const std::pair<uint32_t, View> cases[] = {{19999, u""},     {20000, u"text"}, {21200, u""},
                                             {64000, u"text"}, {64001, u""},     {30000, Texts()[30000]},
                                             {30001, u""},     {30002, u""},     {25000, u""}};
  for (const auto& [id, text] : cases) EXPECT_EQ(Get(id), text) << id;
  const std::pair<uint32_t, uint32_t> lengths[] = {{19999, 0},   {20000, 4},    {21200, 4},    {64001, 0},
                                                   {30000, 999}, {30001, 1000}, {30002, 5000}, {25000, 0}};
  for (const auto& [id, length] : lengths) EXPECT_EQ(GetUiStringLength(id), length) << id;
}

TEST_F(StringsTest, ReleaseFreesTheCacheAndKeepsAModuleInUse) {
  Texts()[30000] = u"first";
  const StringsInUse outer;
  {
    const StringsInUse inner;
    EXPECT_EQ(Get(30000), u"first");
    Texts()[30000] = u"second";
    EXPECT_EQ(Get(30000), u"first");
    EXPECT_EQ(GetUiStringLength(30000), 6u);  // past the cache
  }
  backend.modules[u"/elsewhere"].swap(Texts());
  EXPECT_EQ(Get(30000), u"");
  backend.modules[u"/elsewhere"].swap(Texts());
  EXPECT_EQ(Get(30000), u"second");
}

TEST_F(StringsTest, LastReleaseClosesTheModule) {
  Texts()[30000] = u"text";
  AcquireStrings();
  ReleaseStrings();
  EXPECT_EQ(Get(30000), u"");
  ReleaseStrings();  // one too many
  AcquireStrings();
  EXPECT_EQ(Get(30000), u"text");
  ReleaseStrings();
  EXPECT_EQ(Get(30000), u"");
}

TEST_F(StringsTest, MissingModuleIsTriedAgain) {
  std::map<std::u16string, std::map<uint32_t, std::u16string>> away;
  away.swap(backend.modules);
  const StringsInUse early;
  EXPECT_EQ(Get(48011), u"");
  EXPECT_EQ(GetUiStringLength(48011), 0u);
  away.swap(backend.modules);
  EXPECT_EQ(Get(48011), u"");
  const StringsInUse late;
  EXPECT_EQ(Get(48011), u"A4");
}

TEST_F(StringsTest, AddressesStayWhileThePoolGrows) {
  constexpr uint32_t kFirst = 30000, kTexts = 3000;  // some 900 KB
  const auto text = [](uint32_t id) { return std::u16string(id % 300 + 1, static_cast<char16_t>(u'a' + id % 26)); };
  for (uint32_t id = kFirst; id < kFirst + kTexts; ++id) Texts()[id] = text(id);
  Texts()[29000] = std::u16string(999, u'z');
  const StringsInUse strings;
  std::vector<const char16_t*> addresses;
  for (uint32_t id = kFirst; id < kFirst + kTexts; ++id) addresses.push_back(GetUiString(id));
  EXPECT_EQ(Get(29000).size(), 999u);
  for (uint32_t id = kFirst; id < kFirst + kTexts; ++id) {
    ASSERT_EQ(View(addresses[id - kFirst]), text(id)) << id;
    ASSERT_EQ(GetUiString(id), addresses[id - kFirst]) << id;
  }
}

TEST_F(StringsTest, ThreadsShareTheTexts) {
  constexpr uint32_t kFirst = 30000, kTexts = 500;
  const auto text = [](uint32_t id) { return std::u16string(id % 400 + 1, static_cast<char16_t>(id)); };
  for (uint32_t id = kFirst; id < kFirst + kTexts; ++id) Texts()[id] = text(id);
  const StringsInUse strings;
  std::vector<std::thread> threads;
  std::atomic<int> wrong = 0;
  for (uint32_t n = 0; n < 4; ++n) {
    threads.emplace_back([&, n] {
      for (uint32_t i = 0; i < kTexts; ++i) {
        const uint32_t id = kFirst + (i * (2 * n + 1)) % kTexts;
        if (Get(id) != text(id) || GetUiStringLength(id) != text(id).size()) ++wrong;
        if (i % 50 == 0 && !RefreshDriverDirectory(printer.get())) ++wrong;
        if (DriverDirectory() != test::kDriverFolder) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST_F(StringsTest, ExhaustedMemoryGivesEmptyTexts) {
  Texts()[30000] = u"text";
  bool served = false;
  for (int64_t left = 0; !served; ++left) {
    ASSERT_LT(left, 100);
    View text;
    {
      const test::FailingNew failing(left);
      AcquireStrings();
      text = GetUiString(30000);
    }
    served = !text.empty();
    EXPECT_TRUE(text.empty() || text == u"text") << left;
    {
      const StringsInUse again;
      EXPECT_EQ(Get(30000), u"text") << left;
    }
    ReleaseStrings();
    EXPECT_FALSE(left == 0 && served);
  }
  const test::FailingNew failing(0);
  EXPECT_EQ(OpenResourceContext(1), nullptr);
}

}  // namespace
}  // namespace heron

// The driver's fixture with the texts that the lists start from, and short ways to the user's tree of a queue.
#pragma once

#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/api/registry.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"
#include "support/driver_fixture.h"
#include "uistate/list_stores.h"
#include "uistate/walk_store.h"

namespace heron::test {

inline std::u16string Wide(std::string_view text) {
  return {text.begin(), text.end()};
}

template <size_t N>
void Put(char16_t (&field)[N], std::u16string_view text) {
  std::fill(std::copy(text.begin(), text.end(), field), field + N, u'\0');
}

class StoreTest : public DriverTest {
 protected:
  StoreTest() {
    auto& texts = backend.modules[kResourceModule];
    for (uint32_t n = 1; n <= 10; ++n) texts[28586 + n] = u"List " + Wide(std::to_string(n));
    for (uint32_t n = 2; n <= 12; ++n) texts[30000 + n] = u"Mark " + Wide(std::to_string(n));
    for (uint32_t n = 29541; n <= 29545; ++n) texts[n] = u"Text " + Wide(std::to_string(n));
    texts[20703] = u"Please find";
  }

  std::string UserTree() const { return backend.Dump(platform::Hive::kUser); }

  /// A key below the user's key of `printer_name`, made if it is missing.
  static platform::UniqueKey Key(std::u16string_view sub, std::u16string_view printer_name = u"P1") {
    return platform::CreateKey(platform::HKEY_CURRENT_USER, BuildUserKey(printer_name, sub).c_str());
  }
  static bool HasKey(std::u16string_view sub, std::u16string_view printer_name = u"P1") {
    const std::u16string path = BuildUserKey(printer_name, sub);
    return platform::OpenKey(platform::HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ) != nullptr;
  }
  static void StoreRaw(std::u16string_view sub, const char16_t* name, platform::DWORD type, const void* data,
                       size_t size) {
    EXPECT_EQ(platform::RegSetValueExW(Key(sub).get(), name, type, static_cast<const uint8_t*>(data),
                                       static_cast<platform::DWORD>(size)),
              platform::kErrorSuccess);
  }
  static void StoreNumber(std::u16string_view sub, const char16_t* name, uint32_t value) {
    StoreRaw(sub, name, platform::REG_DWORD, &value, sizeof value);
  }
  /// Bytes of a value; nothing if the key or the value is missing.
  static std::optional<std::vector<uint8_t>> Value(std::u16string_view sub, const char16_t* name,
                                                   platform::DWORD* type = nullptr) {
    const std::u16string path = BuildUserKey(u"P1", sub);
    const auto key = platform::OpenKey(platform::HKEY_CURRENT_USER, path.c_str(), platform::KEY_READ);
    std::vector<uint8_t> data(4096);
    auto size = static_cast<platform::DWORD>(data.size());
    if (key == nullptr || platform::RegQueryValueExW(key.get(), name, type, data.data(), &size) != 0) return {};
    data.resize(size);
    return data;
  }

  bool Write(const ListStoreSet& set, ListStoreId store) { return WalkStore(set, store, u"P1", WalkOp::kWrite); }
  ListStoreSet ReadAll() {
    ListStoreSet set = CreateListStoreSet();
    EXPECT_TRUE(ReadListStores(set, u"P1", printer.get()));
    return set;
  }

  /// Runs `act` with call 1, 2, 3 ... of the backend failing until none is left to fail. A run that reports failure
  /// must leave the user's tree as it was, and only with `may_bear` may one succeed all the same. `reset` prepares each
  /// run.
  template <typename Reset, typename Act>
  void SweepFailures(Reset reset, Act act, bool may_bear = false) {
    int failed = 0;
    for (uint64_t n = 1;; ++n) {
      ASSERT_LT(n, 20000u);
      reset();
      const std::string before = UserTree();
      backend.FailCall(n, platform::kErrorWriteFault);
      const bool done = act();
      const bool disturbed = backend.Calls() >= n;
      backend.FailCall(0, 0);
      if (!disturbed) {
        EXPECT_TRUE(done);
        break;
      }
      failed += !done;
      ASSERT_TRUE(!done || may_bear) << "call " << n;
      ASSERT_TRUE(done || UserTree() == before) << "call " << n;
    }
    EXPECT_GT(failed, 10);
  }
};

/// A set whose every stored field differs from zero and from its neighbours, its lists `count` long.
inline ListStoreSet PatternSet(int count) {
  ListStoreSet set = CreateListStoreSet();
  const auto number = [](int n) { return Wide(std::to_string(n)); };
  for (int n = 0; n < kPageListCount; ++n) {
    PageList& list = set.pageLists->lists[n];
    Put(list.name, u"name " + number(n));
    list.pageCount = static_cast<uint16_t>(std::min(count, kPagesPerList));
    list.mixplex = static_cast<uint16_t>(0xFFF0 + n);
    std::memset(&list.tabSettings, 0x10 + n, sizeof list.tabSettings);
    std::memset(&list.tabDialog, 0x20 + n, sizeof list.tabDialog);
    for (int page = 0; page < list.pageCount; ++page) std::memset(&list.pages[page], 0x40 + page, sizeof(PageEntry));
  }
  OverlayStore& overlays = *set.overlays;
  Put(overlays.createFileName, u"/forms/new.vxf");
  Put(overlays.printFileName, std::u16string(259, u'p'));
  overlays.formListNum = static_cast<uint16_t>(std::min(count, kFormCount));
  for (int n = 0; n < overlays.formListNum; ++n) Put(overlays.forms[n], u"form " + number(n));
  for (int n = 0; n < kOverlayMessageCount; ++n) {
    if (n > 0) Put(overlays.messages[n].caption, u"caption " + number(n));
    Put(overlays.messages[n].message, u"message " + number(n));
    overlays.messages[n].style = 0x80000000u + static_cast<uint32_t>(n);
  }
  set.watermarks->wMarkListNum = static_cast<uint16_t>(std::min(count, kWatermarkCount));
  for (int n = 0; n < set.watermarks->wMarkListNum; ++n) {
    WatermarkEntry& mark = set.watermarks->entries[n];
    const auto base = static_cast<uint32_t>(n) * 8;
    mark = {.text = {},
            .font = u"宋体",
            .style = base + 1,
            .size = base + 2,
            .angle = -n,
            .selectColor = base + 3,
            .color = base + 4,
            .centerX = 0xFFFFFF00u + base,
            .centerY = base + 5};
    Put(mark.text, u"mark " + number(n));
  }
  set.fontSubst->fontSubTblNum = static_cast<uint16_t>(std::min(count, kFontPairCount));
  set.fontSubst->index = 7;
  for (int n = 0; n < set.fontSubst->fontSubTblNum; ++n) {
    Put(set.fontSubst->pairs[n].trueTypeFont, u"true " + number(n));
    Put(set.fontSubst->pairs[n].deviceFont, u"device " + number(n));
  }
  FaxCoverStore& fax = *set.faxCover;
  Put(fax.subject, std::u16string(64, u's'));
  Put(fax.senderTelnum, u"1");
  Put(fax.senderFaxnum, u"2");
  Put(fax.senderEmail, u"a@b");
  fax.pagenum = 999;
  fax.zoom = 800;
  fax.xPosition = 1;
  fax.yPosition = 10000;
  fax.lineNum = 1;
  Put(fax.text, u"first\r\nsecond");
  return set;
}

template <typename Store>
bool SameBytes(const Store& a, const Store& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Whether two sets agree in every byte of the five registry stores.
inline bool SameLists(const ListStoreSet& a, const ListStoreSet& b) {
  return SameBytes(*a.pageLists, *b.pageLists) && SameBytes(*a.overlays, *b.overlays) &&
         SameBytes(*a.watermarks, *b.watermarks) && SameBytes(*a.fontSubst, *b.fontSubst) &&
         SameBytes(*a.faxCover, *b.faxCover);
}

}  // namespace heron::test

// Texts: conversions with their cuts and bad input, the expander, and the small calls that hand texts out.

#include "platform/api/text.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/api/modules.h"
#include "platform/api/process.h"
#include "platform/memory/memory_backend.h"

namespace heron::platform {
namespace {

TEST(Utf8, WellFormedTextSurvivesAndBadInputIsReplaced) {
  const std::u16string text = u"a\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(u"\xD800x\xDC00"), "\xEF\xBF\xBDx\xEF\xBF\xBD");
  const std::pair<std::string_view, std::u16string_view> bad[] = {
      {"\xC0\x80", u"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
      {"\xE4\xB8", u"\uFFFD\uFFFD"},                      // cut off
      {"\xE4"
       "a\xFF",
       u"\uFFFD"
       u"a\uFFFD"},
  };
  for (const auto& [bytes, expected] : bad) EXPECT_EQ(FromUtf8(bytes), expected);
}

TEST(Conversion, WhatDoesNotFitIsCutAtAWholeCharacter) {
  const char16_t text[] = u"a\u00E9\U0001F600z";  // 1, 2, 4 and 1 bytes
  const int whole_up_to[] = {-1, 1, 1, 3, 3, 3, 3, 7};
  for (int room = 1; room < 8; ++room) {
    char buffer[8] = {};
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, text, 5, buffer, room), 0);
    EXPECT_EQ(GetLastError(), kErrorInsufficientBuffer);
    EXPECT_EQ(std::string(buffer), ToUtf8(text).substr(0, static_cast<size_t>(whole_up_to[room]))) << room;
  }
  char buffer[16];
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, text, 5, buffer, 8), 8);
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, text, -1, nullptr, 0), 9);  // with the terminator
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, text, -1, buffer, 9), 9);
  char16_t wide[8] = {};
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, buffer, -1, wide, 3), 0);  // would split the pair
  EXPECT_EQ(std::u16string(wide), u"a\u00E9");
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, buffer, -1, wide, 8), 6);
  EXPECT_EQ(std::u16string(wide), text);
  for (const int length : {0, -2}) EXPECT_EQ(WideCharToMultiByte(CP_UTF8, text, length, buffer, 9), 0);
  EXPECT_EQ(GetLastError(), kErrorInvalidParameter);
}

TEST(Conversion, TheSystemsCodePageIsTheBackends) {
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, u"a", 1, nullptr, 0), 0);
  EXPECT_EQ(GetLastError(), kErrorGenFailure);
  MemoryBackend backend;
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, u"\u00E9", 1, nullptr, 0), 2);
  backend.codePage = 28591;
  char buffer[8] = {};
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, u"\u00E9\u6587\U0001F600", 4, buffer, 8), 3);
  EXPECT_EQ(std::string(buffer), "\xE9??");
  EXPECT_EQ(GetACP(), 28591u);
}

TEST(ExpandText, PlacesThatFitAreExpandedAndOthersShownAsTheyAre) {
  const std::u16string_view name = u"50%s";
  EXPECT_EQ(ExpandText(u"%s: %d of %u%%", {name, int64_t{-3}, int64_t{7}}), u"50%s: -3 of 7%");
  EXPECT_EQ(ExpandText(u"[%3d|%03i|%05ld|%lu|%4s|%1d]",
                       {int64_t{7}, int64_t{7}, int64_t{-42}, int64_t{-1}, std::u16string_view(u"ab"), int64_t{123}}),
            u"[  7|007|-0042|4294967295|  ab|123]");
  EXPECT_EQ(ExpandText(u"%d %d", {int64_t{INT32_MIN}, int64_t{0xFFFFFFFF}}), u"-2147483648 -1");
  EXPECT_EQ(ExpandText(u"100%%", {}), u"100%");
  const std::u16string_view text = u"x";
  const int64_t number = 1;
  const std::pair<std::u16string_view, std::u16string> unfit[] = {
      {u"%d%%", ExpandText(u"%d%%", {text})},
      {u"%s", ExpandText(u"%s", {number})},
      {u"%s %s", ExpandText(u"%s %s", {text})},
      {u"none", ExpandText(u"none", {text})},
      {u"%s %n", ExpandText(u"%s %n", {text})},
      {u"%-3d", ExpandText(u"%-3d", {number})},
      {u"%ls", ExpandText(u"%ls", {text})},
      {u"%", ExpandText(u"%", {})},
      {u"%1000d", ExpandText(u"%1000d", {number})},
      {u"%.2d", ExpandText(u"%.2d", {number})},
      {u"%99999999999999999999d", ExpandText(u"%99999999999999999999d", {number})},
  };
  for (const auto& [format, shown] : unfit) EXPECT_EQ(shown, format);
}

TEST(SmallCalls, TextsAreCutOrRefusedByEachCall) {
  MemoryBackend backend;
  backend.modules[u"/m"] = {{5, u"five"}};
  char16_t buffer[32] = u"#";
  EXPECT_EQ(GetModuleFileNameW(nullptr, buffer, 5), 4u);
  EXPECT_EQ(std::u16string_view(buffer), u"/opt");
  EXPECT_EQ(GetModuleFileNameW(nullptr, buffer, 32), backend.processFileName.size());
  backend.country = u"86";
  EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_ICOUNTRY, buffer, 2), 0);
  EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_ICOUNTRY, buffer, 3), 3);
  backend.country = u"";
  EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_ICOUNTRY, buffer, 3), 0);
  DWORD length = 4;
  EXPECT_EQ(GetUserNameW(buffer, &length), 0);
  EXPECT_EQ(length, 5u);
  EXPECT_EQ(GetUserNameW(buffer, &length), 1);
  EXPECT_EQ(std::u16string_view(buffer), u"user");

  const HMODULE module = LoadLibraryW(u"/m");
  EXPECT_EQ(LoadStringW(module, 5, buffer, 3), 2);
  EXPECT_EQ(std::u16string_view(buffer), u"fi");
  EXPECT_EQ(LoadStringW(module, 6, buffer, 3), 0);
  EXPECT_EQ(buffer[0], u'\0');
  EXPECT_EQ(LoadStringW(nullptr, 5, buffer, 3), 0);
  EXPECT_EQ(FreeLibrary(module), 1);
  EXPECT_EQ(FreeLibrary(module), 0);
  EXPECT_EQ(LoadLibraryW(u"/none"), nullptr);
  EXPECT_EQ(GetLastError(), kErrorModNotFound);
}

const Backend* MakeNone() {
  return nullptr;
}
int factory_calls = 0;

TEST(Installation, TheFactoryIsAskedOnceAndOnlyWithoutABackend) {
  SetDefaultBackend([]() -> const Backend* {
    ++factory_calls;
    return MakeNone();
  });
  {
    const MemoryBackend backend;
    EXPECT_NE(CurrentBackend(), nullptr);
  }
  EXPECT_EQ(factory_calls, 0);
  EXPECT_EQ(CurrentBackend(), nullptr);
  EXPECT_EQ(CurrentBackend(), nullptr);
  EXPECT_EQ(factory_calls, 1);
}

}  // namespace
}  // namespace heron::platform

// A module of three texts, for the loader's test.

#include "platform/api/module_texts.h"

namespace {
constexpr HeronModuleText kTexts[] = {{1, 3, u"one"}, {7, 0, u""}, {48011, 4, u"A4\u00E9\u6587"}};
}

extern "C" __attribute__((visibility("default"))) const HeronModuleText* HeronModuleTexts(uint32_t* count) {
  *count = 3;
  return kTexts;
}

// The interface by which a module of texts offers them to LoadStringW. Written by the sibling modules, read by the
// loader.
//
// A module exports, with C linkage and default visibility,
//   const HeronModuleText* HeronModuleTexts(uint32_t* count);
// The rows are sorted by id, without doubles, and stay where they are as long as the module is loaded. Never change the
// layout: a module and the platform library may be of different releases.
#pragma once

#include <cstdint>

extern "C" {

struct HeronModuleText {
  uint32_t id;
  uint32_t length;       ///< in characters, without a terminator
  const char16_t* text;  ///< needs no terminator
};

using HeronModuleTextsFunction = const HeronModuleText* (*)(uint32_t* count);
}

/// Name of the exported function.
inline constexpr char kHeronModuleTextsName[] = "HeronModuleTexts";

// The interface by which a module offers data of a kind by number to FindModuleData. Written by the sibling modules,
// read by the loader.
//
// A module exports, with C linkage and default visibility,
//   const HeronModuleData* HeronModuleDataTable(uint32_t* count);
// The rows are sorted by kind and number, without doubles, and stay where they are as long as the module is loaded.
// Never change the layout: a module and the platform library may be of different releases.
#pragma once

#include <cstdint>

extern "C" {

struct HeronModuleData {
  uint32_t kind;
  uint32_t id;
  uint32_t size;  ///< in bytes
  const uint8_t* data;
};

using HeronModuleDataFunction = const HeronModuleData* (*)(uint32_t* count);
}

/// Name of the exported function.
inline constexpr char kHeronModuleDataName[] = "HeronModuleDataTable";

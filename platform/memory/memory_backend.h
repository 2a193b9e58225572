// A backend in memory for tests, benchmarks and fuzzing. Nothing is stored outside it, and it can fail any of its
// calls.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "platform/api/backend.h"
#include "platform/memory/memory_files.h"

namespace heron::platform {

class MemoryBackend {
 public:
  MemoryBackend();   ///< installs itself
  ~MemoryBackend();  ///< takes itself away
  MemoryBackend(const MemoryBackend&) = delete;
  MemoryBackend& operator=(const MemoryBackend&) = delete;

  /// Lets the `n`-th call of a tree, module or locale operation from now on fail (1: the next one); 0: none. `sticky`:
  /// that one and all after it.
  void FailCall(uint64_t n, DWORD status, bool sticky = false);
  /// Backend calls made since construction or the last FailCall.
  uint64_t Calls() const;

  /// A printable image of one tree: one "path|name=type:hex" line a value, in path order. For comparisons.
  std::string Dump(Hive hive) const;

  /// What the driver finds around it; tests change them freely between calls.
  std::u16string processFileName = u"/opt/office/writer";
  std::u16string country = u"1";
  std::u16string userName = u"user";
  DWORD codePage = 65001;
  bool machineWritable = true;
  bool userWritable = true;
  /// Modules by full path, each with its texts by number.
  std::map<std::u16string, std::map<uint32_t, std::u16string>> modules;
  /// The modules' functions, by full path and name; a module of either map can be loaded.
  std::map<std::u16string, std::map<std::string, void*>> functions;
  SYSTEMTIME localTime = {.wYear = 2026,
                          .wMonth = 2,
                          .wDayOfWeek = 6,
                          .wDay = 28,
                          .wHour = 13,
                          .wMinute = 45,
                          .wSecond = 7,
                          .wMilliseconds = 500};
  bool clockFails = false;
  std::vector<AdapterAddress> adapters = {{0x02, 0x00, 0x5E, 0x10, 0xAB, 0xCD}};
  MemoryFiles files;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace heron::platform

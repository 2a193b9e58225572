// The interface of the device communication module, ETVORBD.DLL: the functions that the driver looks up by name, what
// it passes and the records it gets. Written by modules/devicecomm, read by driver/devicelink.
//
// A module exports all functions below with C linkage and default visibility, under the names of kBdcFunctionNames.
// Never change a layout: a module and the driver may be of different releases. Numbers are little-endian; texts are
// bytes, terminated unless they fill their field; what a record doesn't use is zero.
//
// Results: kBdcDone; kBdcNoData, the device has nothing of the kind; a negative number, the call failed and wrote
// nothing.
//
// A list function is called twice. With a null buffer it stores the number of records in `*count`. With a buffer,
// `*count` holds the number of records that fit, and receives the number that was written, which is never more.
//
// A conversation begins with BdcGetDevCommInfo and belongs to the thread that called it; the other functions continue
// it for the same address.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

extern "C" {

/// The device that is asked.
struct BdcLink {
  uint32_t constants[3];   ///< each 1
  char address[64];        ///< "host", "host:port", "[v6]:port"
  char secondAddress[64];  ///< empty
  char community[32];
  /// Whether the call should return a failure soon; null if it shouldn't. May be called from the caller's thread at any
  /// time during the call.
  bool (*stopRequested)(const void* context);
  const void* stopContext;
};

struct BdcVersion {
  uint32_t words[4];  ///< major, minor, release, 0
};

struct BdcCommInfo {
  uint32_t family;  ///< 4 or 6 for a numeric address, 0 for a name
  uint32_t port;
  uint32_t reserved[2];
  char address[64];  ///< numeric, empty for a name
  char host[256];    ///< as given, without the port
};

struct BdcName {
  char model[256];
  char family[68];
};

struct BdcMemory {
  uint32_t index;
  uint32_t size;  ///< in KiB; what doesn't fit is the largest number
  uint32_t type;  ///< kBdcMemoryDisk, kBdcMemoryRam or another
};

struct BdcFirmware {
  uint32_t index;
  char name[64];
  char version[64];
};

struct BdcOption {
  uint32_t index;
  uint32_t type;
  char name[64];
};

struct BdcInputTray {
  uint32_t index;
  uint32_t type;  ///< as prtInputType
  uint32_t unit;
  uint32_t capacity;
  uint32_t level;
  uint32_t status;
  char name[64];
};

struct BdcOutputTray {
  uint32_t index;
  uint32_t type;  ///< as prtOutputType
  uint32_t capacity;
  uint32_t remaining;
  char name[64];
  char model[64];
};

struct BdcMediaPath {
  uint32_t index;
  uint32_t type;  ///< as prtMediaPathType
};

struct BdcFinisher {
  uint32_t index;
  uint32_t type;  ///< as finDeviceType
  char name[128];
  uint32_t flags;  ///< kBdcPunches... bits
};

using BdcVersionFunction = int (*)(uint32_t constant, BdcVersion* version);
using BdcCommInfoFunction = int (*)(const char* address, BdcCommInfo* info);
using BdcNameFunction = int (*)(const BdcLink* link, BdcName* name);
using BdcListFunction = int (*)(const BdcLink* link, uint32_t* count, void* records);
}

static_assert(sizeof(BdcVersion) == 16 && sizeof(BdcCommInfo) == 336 && sizeof(BdcName) == 324);
static_assert(sizeof(BdcFirmware) == 132 && sizeof(BdcMemory) == 12 && sizeof(BdcOption) == 72);
static_assert(sizeof(BdcInputTray) == 88 && sizeof(BdcOutputTray) == 144 && sizeof(BdcMediaPath) == 8);
static_assert(sizeof(BdcFinisher) == 140 && offsetof(BdcFinisher, flags) == 136);
static_assert(offsetof(BdcOption, type) == 4 && offsetof(BdcOption, name) == 8);
static_assert(offsetof(BdcMemory, size) == 4 && offsetof(BdcMemory, type) == 8 && offsetof(BdcName, family) == 256);

inline constexpr int kBdcDone = 0;
inline constexpr int kBdcNoData = 1;
inline constexpr int kBdcFailed = -1;

inline constexpr uint32_t kBdcMemoryRam = 1;
inline constexpr uint32_t kBdcMemoryDisk = 3;

inline constexpr uint32_t kBdcPunchesTwoHoles = 16;
inline constexpr uint32_t kBdcPunchesThreeHoles = 32;
inline constexpr uint32_t kBdcPunchesFourHoles = 64;

/// The module's functions, in the order of the driver's table.
enum BdcFunction : size_t {
  kBdcGetLibVersion,
  kBdcGetDevIpAddress,
  kBdcGetDevCommInfo,
  kBdcGetDevName,
  kBdcGetDevMemoryCapacity,
  kBdcGetDevFirmwareVersion,
  kBdcGetDevOptionInfo,
  kBdcGetDevInputTrayInfo,
  kBdcGetDevOutputTrayInfo,
  kBdcGetDevMediaPathInfo,
  kBdcGetDevFinisherInfo,
  kBdcGetDevStatus,
  kBdcBeginDevEventNotify,
  kBdcEndDevEventNotify,
  kBdcBeginNotifyPrint,
  kBdcGetDevJobHistoryList,
  kBdcEndNotifyPrint,
  kBdcBeginNotifyJobCompletion,
  kBdcGetReceiveAddress,
  kBdcEndNotifyJobCompletion,
  kBdcFunctionCount
};

inline constexpr std::array<const char*, kBdcFunctionCount> kBdcFunctionNames = {
    "BdcGetLibVersion",        "BdcGetDevIpAddress",          "BdcGetDevCommInfo",     "BdcGetDevName",
    "BdcGetDevMemoryCapacity", "BdcGetDevFirmwareVersion",    "BdcGetDevOptionInfo",   "BdcGetDevInputTrayInfo",
    "BdcGetDevOutputTrayInfo", "BdcGetDevMediaPathInfo",      "BdcGetDevFinisherInfo", "BdcGetDevStatus",
    "BdcBeginDevEventNotify",  "BdcEndDevEventNotify",        "BdcBeginNotifyPrint",   "BdcGetDevJobHistoryList",
    "BdcEndNotifyPrint",       "BdcBeginNotifyJobCompletion", "BdcGetReceiveAddress",  "BdcEndNotifyJobCompletion"};

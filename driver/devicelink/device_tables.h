// From what a device reports to the values of the installed options.
//
// Readers: device_options.cc, and a test that checks the rows against each other. kDeviceOptions: the options that a
// query sets, in its order, and how each is found. kDeviceNames: the names in a device's records that belong to an
// option. kOptionBits: a name with the type code and the number of records that set a bit. kValueBits: the value of the
// option for exactly these bits; bits without a row give the default. To add a device, add its names, a bit of its own
// for each, and the values of the combinations that can be bought.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "catalog/other_values.h"
#include "generated/values.h"
#include "platform/api/device_module.h"
#include "rules/controls.h"

namespace heron {

enum class OptionSource : uint8_t {
  kMemory = 2,  ///< the size of the memory records of a type
  kNames = 4,   ///< the names of option records
  kModel = 15,  ///< the model's name
};

struct DeviceOptionRow {
  uint16_t control;
  OptionSource source;
};

struct DeviceNameRow {
  uint16_t control;
  std::string_view name;
};

struct OptionBitRow {
  uint32_t type;
  std::string_view name;
  uint32_t count;  ///< of records with this name
  uint32_t bit;
};

struct ValueBitsRow {
  uint32_t bits;
  uint16_t value;
};

/// Among the bits of an option: the finishers' bits belong to it.
inline constexpr uint32_t kTakesFinisherBits = 0x10000000;
inline constexpr uint32_t kDiskBit = 0x40000, kNoDiskBit = 0x80000;

struct ModelBitRow {
  std::string_view model;
  uint32_t bit;
};

/// A flag of a finisher record (platform/api/device_module.h) and its bit.
struct FinisherBitRow {
  uint32_t flag;
  uint32_t bit;
};

// clang-format off
inline constexpr auto kDeviceOptions = std::to_array<DeviceOptionRow>({
    {engine::ControlId(u"lpSourceUnit"),     OptionSource::kNames},
    {engine::ControlId(u"lpOutputUnit"),     OptionSource::kNames},
    {engine::ControlId(u"lpMailBinKit"),     OptionSource::kNames},
    {engine::ControlId(u"lpPunchKit"),       OptionSource::kNames},
    {engine::ControlId(u"lpSaddleUnit"),     OptionSource::kNames},
    {engine::ControlId(u"lpFAXUnit"),        OptionSource::kNames},
    {engine::ControlId(u"lpCopierHardDisk"), OptionSource::kMemory},
    {engine::ControlId(u"lpEngine"),         OptionSource::kModel},
});

inline constexpr auto kDeviceNames = std::to_array<DeviceNameRow>({
    {engine::ControlId(u"lpFAXUnit"),        "Bdc_Function_Fax"},
    {engine::ControlId(u"lpCopierHardDisk"), "MEM_HDD"},
    {engine::ControlId(u"lpCopierPrnChg"),   "Bdc_Function_Copy"},
    {engine::ControlId(u"lpCopierPrnChg"),   "Bdc_Function_Print"},
    {engine::ControlId(u"lpSourceUnit"),     "Tray3+Tray4"},
    {engine::ControlId(u"lpSourceUnit"),     "Tray3"},
    {engine::ControlId(u"lpSourceUnit"),     "LCT"},
    {engine::ControlId(u"lpOutputUnit"),     "Job separator"},
    {engine::ControlId(u"lpOutputUnit"),     "Bin-type finisher"},
    {engine::ControlId(u"lpOutputUnit"),     "Floor-type finisher"},
    {engine::ControlId(u"lpOutputUnit"),     "Exit Tray2"},
    {engine::ControlId(u"lpPunchKit"),       "Punch unit"},
    {engine::ControlId(u"lpMailBinKit"),     "Mail-bin unit"},
    {engine::ControlId(u"lpSaddleUnit"),     "Saddle unit"},
    {engine::ControlId(u"lpEngine"),         "Varnell 70MX-2"},
    {engine::ControlId(u"lpEngine"),         "Varnell 36MX-2"},
});

inline constexpr auto kOptionBits = std::to_array<OptionBitRow>({
    {   3, "Tray3+Tray4",         1,        0x1},
    {   3, "Tray3",               1,        0x2},
    {   3, "LCT",                 1,        0x4},
    {   5, "Job separator",       1,        0x8},
    {   5, "Bin-type finisher",   1,       0x10},
    {   5, "Floor-type finisher", 1, 0x10000020},
    {   6, "Punch unit",          1, 0x10000040},
    {   6, "Exit Tray2",          1,       0x80},
    {   6, "Mail-bin unit",       1,      0x100},
    {   6, "Saddle unit",         1,      0x200},
    {1000, "Bdc_Function_Fax",    1,    0x10000},
});

/// Models that a query accepts; their families have the same names.
inline constexpr auto kModelBits = std::to_array<ModelBitRow>({
    {"Varnell 70MX-2", 0x100000},
    {"Varnell 36MX-2", 0x200000},
});

inline constexpr auto kFinisherBits = std::to_array<FinisherBitRow>({
    {kBdcPunchesTwoHoles,   0x20000000},
    {kBdcPunchesThreeHoles, 0x40000000},
    {kBdcPunchesFourHoles,  0x80000000},
});

inline constexpr auto kValueBits = std::to_array<ValueBitsRow>({
    {       0x1, value::lpSourceUnit::kTray3And4},
    {       0x2, value::lpSourceUnit::kTray3},
    {       0x5, value::lpSourceUnit::kTray3And4AndLarge},
    {       0x6, value::lpSourceUnit::kTray3AndLarge},
    {      0x10, value::lpOutputUnit::kBin},
    {      0x90, value::lpOutputUnit::kBinAndExit2},
    {0x30000020, value::lpOutputUnit::kFloor2},
    {0x70000020, value::lpOutputUnit::kFloor2And3},
    {0x90000020, value::lpOutputUnit::kFloor4},
    {       0x8, value::lpOutputUnit::kSeparator},
    {     0x100, value::lpMailBinKit::kInstalled},
    {0x30000040, value::lpPunchKit::kTwoHoles},
    {0x70000040, value::lpPunchKit::kTwoAndThreeHoles},
    {0x90000040, value::lpPunchKit::kFourHoles},
    {     0x200, value::lpSaddleUnit::kInstalled},
    {   0x10000, value::lpFAXUnit::kInstalled},
    {   0x40000, value::lpCopierHardDisk::kInstalled},
    {   0x80000, value::lpCopierHardDisk::kNotInstalled},
    {  0x100000, value::lpEngine::kModel70},
    {  0x200000, value::lpEngine::kModel36},
});
// clang-format on

inline constexpr size_t kDeviceOptionCount = kDeviceOptions.size();
static_assert(kDeviceOptionCount == 8 && kDeviceNames.size() == 16 && kOptionBits.size() == 11);
static_assert(kModelBits.size() == 2 && kValueBits.size() == 20);

}  // namespace heron

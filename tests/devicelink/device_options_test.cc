// From records to the values of options.
#include "devicelink/device_options.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <sstream>

#include "rules/control_tables.h"
#include "support/named_values.h"

namespace heron::test {
namespace {

/// "3:Tray3 flags:16 flags:32 disk:5 model:..." as a report; a ~ is a blank.
DeviceReport ReportOf(const std::string& text) {
  DeviceReport report;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    std::ranges::replace(word, '~', ' ');
    const std::string what = word.substr(0, word.find(':')), value = word.substr(word.find(':') + 1);
    if (what == "flags") {
      report.finishers.push_back(
          {.index = 1, .type = 16, .name = {}, .flags = static_cast<uint32_t>(std::stoul(value))});
    } else if (what == "disk" || what == "ram") {
      const uint32_t type = what == "disk" ? kBdcMemoryDisk : kBdcMemoryRam;
      report.memory.push_back({.index = 1, .size = static_cast<uint32_t>(std::stoul(value)), .type = type});
    } else if (what == "model") {
      report.model = value;
    } else {
      BdcOption option{.index = 1, .type = static_cast<uint32_t>(std::stoul(what)), .name = {}};
      std::copy_n(value.begin(), std::min(value.size(), sizeof option.name), option.name);
      report.options.push_back(option);
    }
  }
  return report;
}

struct Case {
  const char* records;
  const char* option;
  uint32_t bits;
  const char* value;  ///< "" if no value belongs to the bits
};

// clang-format off
constexpr Case kCases[] = {
    {"",                                             "lpSourceUnit",     0,          ""},
    {"3:Tray3+Tray4",                                "lpSourceUnit",     0x1,        "Tray3And4"},
    {"3:Tray3",                                      "lpSourceUnit",     0x2,        "Tray3"},
    {"3:LCT",                                        "lpSourceUnit",     0x4,        ""},
    {"3:Tray3+Tray4 3:LCT",                          "lpSourceUnit",     0x5,        "Tray3And4AndLarge"},
    {"3:LCT 3:Tray1 3:Tray3",                        "lpSourceUnit",     0x6,        "Tray3AndLarge"},
    {"3:Tray3 3:Tray3",                              "lpSourceUnit",     0,          ""},
    {"3:Tray3+Tray4 3:Tray3",                        "lpSourceUnit",     0x3,        ""},
    {"3:tray3",                                      "lpSourceUnit",     0,          ""},
    {"4:Tray3",                                      "lpSourceUnit",     0,          ""},
    {"5:Job~separator",                              "lpOutputUnit",     0x8,        "Separator"},
    {"5:Bin-type~finisher",                          "lpOutputUnit",     0x10,       "Bin"},
    {"5:Bin-type~finisher 6:Exit~Tray2",             "lpOutputUnit",     0x90,       "BinAndExit2"},
    {"5:Floor-type~finisher",                        "lpOutputUnit",     0x10000020, ""},
    {"5:Floor-type~finisher flags:16",               "lpOutputUnit",     0x30000020, "Floor2"},
    {"5:Floor-type~finisher flags:48",               "lpOutputUnit",     0x70000020, "Floor2And3"},
    {"5:Floor-type~finisher flags:16 flags:32",      "lpOutputUnit",     0x70000020, "Floor2And3"},
    {"5:Floor-type~finisher flags:16 flags:16",      "lpOutputUnit",     0x30000020, "Floor2"},
    {"5:Floor-type~finisher flags:64",               "lpOutputUnit",     0x90000020, "Floor4"},
    {"5:Floor-type~finisher flags:112",              "lpOutputUnit",     0xF0000020, ""},
    {"5:Bin-type~finisher flags:16",                 "lpOutputUnit",     0x10,       "Bin"},
    {"6:Punch~unit flags:16",                        "lpPunchKit",       0x30000040, "TwoHoles"},
    {"6:Punch~unit flags:32 flags:16",               "lpPunchKit",       0x70000040, "TwoAndThreeHoles"},
    {"6:Punch~unit flags:64",                        "lpPunchKit",       0x90000040, "FourHoles"},
    {"flags:16",                                     "lpPunchKit",       0,          ""},
    {"6:Mail-bin~unit",                              "lpMailBinKit",     0x100,      "Installed"},
    {"6:Saddle~unit",                                "lpSaddleUnit",     0x200,      "Installed"},
    {"1000:Bdc_Function_Fax",                        "lpFAXUnit",        0x10000,    "Installed"},
    {"3:Bdc_Function_Fax",                           "lpFAXUnit",        0,          ""},
    {"disk:1",                                       "lpCopierHardDisk", 0x40000,    "Installed"},
    {"disk:0 disk:4294967295",                       "lpCopierHardDisk", 0x40000,    "Installed"},
    {"disk:4294967295 disk:1",                       "lpCopierHardDisk", 0x40000,    "Installed"},
    {"ram:512 disk:0",                               "lpCopierHardDisk", 0x80000,    "NotInstalled"},
    {"",                                             "lpCopierHardDisk", 0x80000,    "NotInstalled"},
    {"model:Varnell~70MX-2",                         "lpEngine",         0x100000,   "1"},
    {"model:Varnell~36MX-2",                         "lpEngine",         0x200000,   "2"},
    {"model:varnell~36mx-2",                         "lpEngine",         0,          ""},
};
// clang-format on

TEST(DeviceOptionsTest, RecordsBecomeValues) {
  for (const Case& row : kCases) {
    const engine::ControlIndex control = ControlNamed(row.option);
    const ReportedOptions options = MapDeviceOptions(ReportOf(row.records));
    const auto found = std::ranges::find(options, engine::kControls[control].id, &ReportedOption::control);
    ASSERT_NE(found, options.end());
    EXPECT_EQ(found->bits, row.bits) << row.records << " " << row.option;
    const std::optional<uint16_t> value =
        *row.value == '\0' ? std::nullopt : std::optional(ValueNamed(control, row.value));
    EXPECT_EQ(found->value, value) << row.records << " " << row.option;
  }
}

/// Of one name with several types all records count and the last type decides.
TEST(DeviceOptionsTest, TheLastTypeOfANameDecides) {
  const auto source = [](const char* records) { return MapDeviceOptions(ReportOf(records))[0].bits; };
  EXPECT_EQ(source("9:LCT"), 0u);
  EXPECT_EQ(source("9:LCT 3:LCT"), 0u) << "two records";
  EXPECT_EQ(source("3:LCT 9:Other"), 0x4u);
}

TEST(DeviceOptionsTest, ANameMayFillItsField) {
  DeviceReport report = ReportOf("3:Tray3");
  std::ranges::fill(report.options[0].name, 'x');
  EXPECT_EQ(MapDeviceOptions(report)[0].bits, 0u);
  EXPECT_EQ(BoundedText(report.options[0].name).size(), sizeof report.options[0].name);
}

/// Every name that sets a bit belongs to an option, every bit is used by a value or belongs to a combination, and every
/// value is one that the option can have.
TEST(DeviceOptionsTest, TheTablesAgree) {
  const auto owner = [](std::string_view name) {
    const auto row = std::ranges::find(kDeviceNames, name, &DeviceNameRow::name);
    return row == kDeviceNames.end() ? uint16_t{0} : row->control;
  };
  for (const OptionBitRow& row : kOptionBits) EXPECT_NE(owner(row.name), 0) << row.name;
  for (const ModelBitRow& row : kModelBits) EXPECT_EQ(owner(row.model), engine::ControlId(u"lpEngine"));
  std::set<uint32_t> bits;
  for (const ValueBitsRow& row : kValueBits) EXPECT_TRUE(bits.insert(row.bits).second) << row.bits;
  for (const OptionBitRow& row : kOptionBits) {
    const bool used = std::ranges::any_of(bits, [&](uint32_t all) { return (all & row.bit) == row.bit; });
    EXPECT_TRUE(used) << row.name;
  }
}

}  // namespace
}  // namespace heron::test

// Addresses as people write them, and the files that say what a device's rows stand for. The conversation itself is
// tested against a real agent by tests/cli/test_device.py.
#include <gtest/gtest.h>

#include <map>

#include "modules/devicecomm/address.h"
#include "modules/devicecomm/device_table.h"

namespace heron::devicecomm {
namespace {

std::string Parsed(std::string_view text) {
  const auto address = ParseAddress(text);
  if (!address) return "none";
  return address->host + " " + std::to_string(address->port) + " " + std::to_string(address->family);
}

TEST(AddressTest, HostPortAndFamily) {
  const std::map<std::string, std::string> cases = {
      {"printer", "printer 161 0"},
      {"printer.example:1161", "printer.example 1161 0"},
      {"192.0.2.7", "192.0.2.7 161 4"},
      {"192.0.2.7:65535", "192.0.2.7 65535 4"},
      {"[2001:db8::7]:161", "2001:db8::7 161 6"},
      {"[::1]", "::1 161 6"},
      {"2001:db8::7", "2001:db8::7 161 6"},
      {"[fe80::1%eth0]:9", "fe80::1%eth0 9 6"},
      {"", "none"},
      {":161", "none"},
      {"printer:", "none"},
      {"printer:0", "none"},
      {"printer:65536", "none"},
      {"printer:12x", "none"},
      {"printer:-1", "none"},
      {"[::1", "none"},
      {"[::1]x", "none"},
      {"[printer]:161", "none"},
      {"a:b:c", "none"},
      {"printer 7", "none"},
      {"tcp/printer", "none"},
      {"printer@x", "none"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(Parsed(text), expected) << text;
}

TEST(AddressTest, ANumericHostNeedsNoLookUp) {
  const auto never = [] { return true; };
  EXPECT_EQ(Resolve(*ParseAddress("[::1]:9"), Clock::now(), never), std::vector<std::string>{"udp6:[::1]:9"});
  EXPECT_EQ(Resolve(*ParseAddress("127.0.0.1"), Clock::now(), never), std::vector<std::string>{"udp:127.0.0.1:161"});
}

TEST(DeviceTableTest, RulesAndTests) {
  std::vector<Rule> rules;
  EXPECT_TRUE(
      ParseDeviceTable("# comment\nobject name 1.3.6.1\n\noption 3 \"Tray 3\" name is \"PF 3\" # more\r\n"
                       "option 6 * name\nmodel \"M\" 1.3.7 has 70\nfamily F name above 4",
                       &rules));
  ASSERT_EQ(rules.size(), 4u);
  EXPECT_EQ(rules[0].object, (Oid{1, 3, 6, 1}));
  EXPECT_EQ(rules[0].type, 3u);
  EXPECT_TRUE(rules[0].Matches({.text = "PF 3"}));
  EXPECT_FALSE(rules[0].Matches({.text = "PF 31"}));
  EXPECT_EQ(rules[0].NameOf({.text = "PF 3"}), "Tray 3");
  EXPECT_TRUE(rules[1].Matches({.text = "anything"}));
  EXPECT_FALSE(rules[1].Matches({.text = ""}));
  EXPECT_EQ(rules[1].NameOf({.text = "anything"}), "anything");
  EXPECT_EQ(rules[2].kind, RuleKind::kModel);
  EXPECT_TRUE(rules[2].Matches({.text = "a 70 b"}));
  EXPECT_TRUE(rules[3].Matches({.text = "5", .number = 5}));
  EXPECT_FALSE(rules[3].Matches({.text = "4", .number = 4}));
}

TEST(DeviceTableTest, ALineThatMeansNothingIsLeftOut) {
  for (const char* line : {"option x \"N\" 1.3.6", "option 3", "option 3 N", "option 3 \"N 1.3.6", "option 3 N unknown",
                           "option 3 N 1.3.6 is", "option 3 N 1.3.6 isnt x", "option 3 N 1.3.6 above x",
                           "option 3 N 1.3.6 is a b", "option 99999999999 N 1.3.6", "option 3 \"\" 1.3.6", "object a",
                           "object a 1..3", "object a 1.99999999999", "model", "paper A4"}) {
    std::vector<Rule> rules;
    EXPECT_FALSE(ParseDeviceTable(std::string(line) + "\noption 3 N 1.3.6\n", &rules)) << line;
    EXPECT_EQ(rules.size(), 1u) << line;
  }
}

TEST(OidTest, OnlyDottedNumbers) {
  EXPECT_EQ(OidText(ParseOid("1.3.6.1.4294967295")), "1.3.6.1.4294967295");
  std::string longest = "1";
  for (int i = 0; i < 200; ++i) longest += ".1";
  EXPECT_TRUE(ParseOid(longest).empty());
}

}  // namespace
}  // namespace heron::devicecomm

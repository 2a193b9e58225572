// The notation of templates, and that every template under resources/dialogs is sound.
#include "platform/dialog/dialog_template.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "platform/api/text.h"
#include "support/control_names.h"

namespace heron::platform {
namespace {

using Kind = ControlKind;

/// How many controls each dialog has, labels and numbered boxes included.
constexpr std::pair<int, int> kCounts[] = {
    {100, 50},  {200, 33},  {300, 12},  {400, 19},  {500, 24},  {600, 17},  {700, 13}, {800, 26},  {900, 31},
    {1000, 5},  {1100, 35}, {1235, 14}, {1236, 7},  {1237, 48}, {1238, 14}, {1800, 7}, {1820, 17}, {2001, 6},
    {2020, 4},  {2200, 18}, {2300, 15}, {2320, 35}, {2355, 6},  {2400, 13}, {2440, 5}, {2500, 13}, {2520, 15},
    {2540, 11}, {2560, 20}, {2900, 8},  {2910, 7},  {2920, 4},  {2950, 20},
};

std::optional<DialogTemplate> Parsed(std::string_view source, std::string* error) {
  return ParseDialogTemplate(source, error);
}

std::vector<DialogTemplate> AllTemplates() {
  std::vector<DialogTemplate> all;
  for (const auto& [number, dialog] : test::Templates()) all.push_back(dialog);
  return all;
}

bool NeedsName(Kind kind) {
  return kind == Kind::kList || kind == Kind::kCombo || kind == Kind::kText || kind == Kind::kPassword ||
         kind == Kind::kNumber || kind == Kind::kMemo;
}

bool HasOwnLabel(Kind kind) {
  return kind == Kind::kRadio || kind == Kind::kCheck || kind == Kind::kButton || kind == Kind::kLibrary ||
         kind == Kind::kDefaults;
}

TEST(DialogTemplate, EveryDialogIsThereWithAllItsControls) {
  std::vector<std::pair<int, int>> counts;
  for (const DialogTemplate& dialog : AllTemplates()) {
    counts.emplace_back(dialog.number, std::ranges::count_if(dialog.controls, [](const ControlTemplate& control) {
                          return control.kind != Kind::kGroup || control.id != 0;
                        }));
    EXPECT_FALSE(dialog.title.empty()) << dialog.number;
  }
  EXPECT_EQ(counts, std::vector(std::begin(kCounts), std::end(kCounts)));
}

TEST(DialogTemplate, NumbersAndMnemonicsAreUniqueAndBuddiesExist) {
  for (const DialogTemplate& dialog : AllTemplates()) {
    std::map<ControlId, Kind> kinds;
    std::map<char16_t, std::u16string> letters;
    for (const ControlTemplate& control : dialog.controls) {
      const std::string where =
          std::to_string(dialog.number) + ": " + std::to_string(control.id) + " '" + ToUtf8(control.label) + "'";
      EXPECT_TRUE(control.id == 0 || kinds.emplace(control.id, control.kind).second) << where;
      const char16_t letter = Mnemonic(control.label);
      EXPECT_TRUE(letter == 0 || letters.emplace(letter, control.label).second) << where;
      EXPECT_TRUE(letter == 0 || control.kind != Kind::kLabel || control.buddy != 0) << where;
      EXPECT_LE(std::ranges::count(control.label, u'&'), 1) << where;
      EXPECT_TRUE(!HasOwnLabel(control.kind) || !control.label.empty() || !control.name.empty()) << where;
      EXPECT_EQ(control.kind == Kind::kRadio, !control.set.empty()) << where;
      EXPECT_EQ(control.kind == Kind::kPlace, control.width > 0 && control.height > 0) << where;
    }
    for (const ControlTemplate& control : dialog.controls) {
      EXPECT_TRUE(control.buddy == 0 || kinds.contains(control.buddy)) << dialog.number << ": " << control.buddy;
      if (control.kind != Kind::kSpin) continue;
      const Kind field = kinds[control.buddy];
      EXPECT_TRUE(field == Kind::kNumber || field == Kind::kText) << dialog.number << ": " << control.id;
    }
  }
}

TEST(DialogTemplate, EveryFieldFollowsItsName) {
  for (const DialogTemplate& dialog : AllTemplates()) {
    std::set<ControlId> named;
    std::map<std::string, int> sets;
    for (const ControlTemplate& control : dialog.controls) {
      if (control.kind == Kind::kRadio) ++sets[control.set];
      const bool behind_its_twin = control.kind == Kind::kText && control.beside;  // a password's plain twin
      if (NeedsName(control.kind)) {
        EXPECT_TRUE(named.contains(control.id) || !control.name.empty() || behind_its_twin)
            << dialog.number << ": " << control.id;
      }
      if (control.kind != Kind::kSpin) named.insert(control.buddy);
    }
    for (const auto& [set, radios] : sets) EXPECT_GE(radios, 2) << dialog.number << ": " << set;
  }
}

TEST(DialogTemplate, ModalDialogsCloseAndPagesDont) {
  for (const DialogTemplate& dialog : AllTemplates()) {
    std::set<ControlId> ids;
    for (const ControlTemplate& control : dialog.controls) ids.insert(control.id);
    EXPECT_EQ(ids.contains(kOkButton), dialog.size != SizeClass::kPage) << dialog.number;
    EXPECT_EQ(ids.contains(kCancelButton), dialog.size != SizeClass::kPage && dialog.number != 2560) << dialog.number;
  }
}

TEST(DialogTemplate, ReadsEveryPartOfTheNotation) {
  std::string error;
  const auto read = Parsed(
      "# a remark\r\ndialog 7 medium \"A \\\"title\\\"\"\ncolumn\ngroup - \"One\"\n"
      "  label - \"&Na&&me:\" for=9\n  + text 9 key=lpText limit=31 readonly\n  group 10 \"In\"\n    spin 11 "
      "as=lpText.spin for=9 wraps\n  "
      "end\nend\n"
      "column\nlistview 12 columns=\"21002:160,Größe:5\" several\npane\nplace 13 size=170x84\nbuttons\nbutton 1 \"\"\n",
      &error);
  ASSERT_TRUE(read.has_value()) << error;
  EXPECT_EQ(read->title, u"A \"title\"");
  ASSERT_EQ(read->controls.size(), 8U);
  const auto& controls = read->controls;
  EXPECT_EQ(Mnemonic(controls[1].label), u'n');
  EXPECT_TRUE(controls[2].beside && controls[2].read_only && controls[2].limit == 31 && controls[2].group == 0);
  EXPECT_TRUE(controls[2].key == "lpText" && controls[2].alias.empty() && controls[4].alias == "lpText.spin");
  EXPECT_TRUE(controls[4].wraps && controls[4].group == 3 && controls[3].group == 0);
  ASSERT_EQ(controls[5].columns.size(), 2U);
  EXPECT_TRUE(controls[5].columns[0].number == 21002 && controls[5].columns[1].text == u"Größe");
  EXPECT_TRUE(controls[5].column == 1 && controls[5].group == -1 && controls[5].several);
  EXPECT_TRUE(controls[6].area == Area::kPane && controls[6].width == 170 && controls[6].height == 84);
  EXPECT_EQ(controls[7].area, Area::kButtons);
}

TEST(DialogTemplate, RefusesWhatItDoesntUnderstandAndNamesTheLine) {
  const std::string head = "dialog 7 small \"T\"\n";
  for (const std::string& source : {
           std::string(),
           std::string("dialog 0 small \"T\""),
           std::string("dialog 7 huge \"T\""),
           head + "list",
           head + "list -",
           head + "list 70000",
           head + "list 5 limit=",
           head + "list 5 nonsense",
           head + "list 5 key=",
           head + "list 5 key=a as=b",
           head + "lists 5",
           head + "label - \"open",
           head + "group - \"T\"",
           head + "end",
           head + "buttons\ncolumn",
           head + "buttons\npane",
           head + "place 5 size=5",
           head + "listview 5 columns=5",
           head + "+",
       }) {
    std::string error;
    EXPECT_FALSE(Parsed(source, &error).has_value()) << source;
    EXPECT_TRUE(error.starts_with("line ")) << source;
  }
}

}  // namespace
}  // namespace heron::platform

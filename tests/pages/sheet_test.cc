// The sheet itself: its four reasons, the life of its pages, what opening and confirming do.
#include "pages/sheet_fixture.h"
#include "pages/text_settings.h"
#include "settings/printer_data.h"
#include "support/failing_new.h"

namespace heron::test {
namespace {

using namespace platform;
using pages::TextSetting;

TEST_F(SheetTest, ABookletIsAskedForAndWritten) {
  OpenPage("lpBindPosit=4");
  desk.Answer(IDNO);
  Choose(176, 3);
  const std::string report = desk.Told();
  EXPECT_EQ(report, "[20039]|[22212][20038] => [21592] \n[22214]?");
  EXPECT_EQ(Value("lpPRNType"), 1);
  EXPECT_EQ(page->SelectedText(176), "[21595]") << "the list goes back too";

  desk.Answer(IDYES);
  Choose(176, 3);
  EXPECT_EQ(desk.Told(), report);
  EXPECT_EQ(page->SelectedText(176), "[21597]");
  EXPECT_EQ(page->SelectedText(174), "[21592]");
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"lpPRNType">(sheet->out), 3);
  EXPECT_EQ(Get<"lpBindPosit">(sheet->out), 2);
  EXPECT_EQ(Get<"dmDuplex">(sheet->out), 2) << "what follows from the settings is written back too";
}

TEST_F(SheetTest, APageIsAddedForEachTemplateInOrder) {
  OpenPage();
  std::string numbers;
  for (const auto& added : sheet->pages) numbers += std::to_string(added.number) + " ";
  EXPECT_EQ(numbers, "100 200 300 400 500 600 700 900 1000 ");
  PROPSHEETUI_INFO_HEADER header{};
  EXPECT_EQ(sheet->Reason(PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&header)), 1);
  EXPECT_EQ(std::u16string(header.pTitle), u"P1");
  EXPECT_EQ(header.IconID, 64062U);
  EXPECT_EQ(sheet->Reason(4), -1);

  ScriptedSheet device(desk, printer.get(), 0, true);
  ASSERT_EQ(device.Open(), 1);
  ASSERT_EQ(device.pages.size(), 1U);
  EXPECT_EQ(device.pages[0].number, 800);
  EXPECT_EQ(device.context().ui().head().printerDataLocked, 1U);
}

TEST_F(SheetTest, ARefusedPageFailsTheSheet) {
  sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
  sheet->accepted = 3;
  EXPECT_EQ(sheet->Open(), 0);
  EXPECT_EQ(sheet->info().Result, 0U);
  EXPECT_EQ(sheet->pages.size(), 3U);
  EXPECT_EQ(sheet->Reason(PROPSHEETUI_REASON_DESTROY), 1);
  EXPECT_EQ(sheet->Reason(PROPSHEETUI_REASON_DESTROY), 1) << "without a context";
  EXPECT_EQ(sheet->Reason(PROPSHEETUI_REASON_GET_INFO_HEADER), -1);
}

TEST_F(SheetTest, ACancelledSheetWritesNothing) {
  OpenPage();
  Choose(176, 2);
  page->Type(103, u"7");
  EXPECT_EQ(page->changes, 2);
  sheet->out.bytes.fill(0xEE);
  const DriverEnv before = sheet->out;
  sheet->Cancel();
  EXPECT_EQ(sheet->out.bytes, before.bytes);
  EXPECT_EQ(sheet->results, 0);
}

TEST_F(SheetTest, WhatWasAppliedIsCommittedWhateverFollows) {
  OpenPage();
  const auto set = [&](int print_type, const char16_t* copies, const char16_t* id, uint8_t tray_media) {
    Choose(176, print_type);
    page->Type(103, copies);
    pages::SetText(ui(), TextSetting::kSecureId, id);
    ui().head().trayTable[4] = tray_media;
    ui().stores.overlays->createFileName[0] = id[0];
  };
  engine::Setting<u"lpOverlay">(ui()) = 2;
  for (const char16_t* id : {u"first", u"last"}) {
    set(2, u"5", id, 7);
    ASSERT_TRUE(sheet->Apply());
  }
  EXPECT_EQ(sheet->results, 2);
  set(1, u"7", u"never", 9);
  sheet->Cancel();
  EXPECT_EQ(Get<"lpPRNType">(sheet->out), 2);
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 5);
  EXPECT_EQ(GetText<"secureId">(sheet->out), u"last");
  EXPECT_EQ(FieldBytes<"trayTableIndex">(sheet->out)[2], 7);
  EXPECT_EQ(GetText<"overlayName">(sheet->out), u"l");
}

/// Five lists of the user's and the custom sizes; each is whole or as it was.
TEST_F(SheetTest, ListsThatCannotBeStoredAreAskedForOnce) {
  OpenPage();
  sheet->Show(200);
  backend.userWritable = backend.machineWritable = false;
  const std::string before = backend.Dump(Hive::kUser);
  const std::string question = "Varnell 70/36MX-2 PCL|lists:\n[26425]\n[26412]\n[26423]\n[32032]\n[26200]?";
  desk.Answer(IDNO);
  EXPECT_FALSE(sheet->Confirm());
  EXPECT_EQ(desk.Told(), question) << "custom sizes are still the defaults, which need no room";
  EXPECT_EQ(sheet->results, 0);
  desk.Answer(IDYES);
  EXPECT_TRUE(sheet->Apply());
  EXPECT_EQ(desk.Told(), question) << "of two pages one asks";
  EXPECT_EQ(sheet->results, 2);
  EXPECT_EQ(backend.Dump(Hive::kUser), before);

  page = sheet->Show(100);
  (*ui().stores.userPapers)[3].width = 5000;
  page->Type(103, u"7");
  backend.userWritable = true;
  desk.Answer(IDNO);
  EXPECT_FALSE(sheet->Apply());
  EXPECT_EQ(desk.Told(), "Varnell 70/36MX-2 PCL|lists:\n[26404]?") << "something has changed";
  sheet->Cancel();
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 1);
}

TEST_F(SheetTest, WhatTheCommitMovesIsShown) {
  OpenPage("lpOutput=1");
  EXPECT_FALSE(page->IsEnabled(155));
  ASSERT_TRUE(sheet->Apply());
  EXPECT_EQ(desk.Told(), "[22302]|[22301]");
  EXPECT_TRUE(page->IsEnabled(155));
}

TEST_F(SheetTest, APageMayRefuseToBeLeft) {
  OpenPage();
  Choose(114, 8);
  page->Type(116, u"5");
  EXPECT_EQ(sheet->Show(200), nullptr);
  EXPECT_EQ(desk.Told(), "[21016]|[21016] 25-400");
  EXPECT_EQ(page->Focused(), 116);
  EXPECT_EQ((*page)[116].selection_end, 1U);
  EXPECT_FALSE(sheet->Confirm());
  EXPECT_EQ(desk.Told(), "[21016]|[21016] 25-400");
  page->Type(116, u"50");
  EXPECT_NE(sheet->Show(200), nullptr);
}

TEST_F(SheetTest, APageIsRebuiltWhenItComesToTheFront) {
  OpenPage();
  ASSERT_NE(sheet->Show(700), nullptr);
  engine().Set(Named("lpPRNType"), 2);
  engine().Set(Named("Staple_Check"), 1);
  page = sheet->Show(100);
  EXPECT_EQ(page->SelectedText(176), "[21596]");
  EXPECT_TRUE((*page)[130].checked);
}

TEST_F(SheetTest, ReadOnlyShowsEverythingAndEnablesNothing) {
  OpenPage("lpPRNType=2", 100, DM_COPY | DM_NOPERMISSION);
  EXPECT_EQ(page->SelectedText(176), "[21596]");
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << id;
  ASSERT_NE(sheet->Show(200), nullptr);
  sheet->Show(100);
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << id;
}

TEST_F(SheetTest, TheReportOfTheOpeningAppearsOnce) {
  DriverEnv saved;
  LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get());
  DriverEnv conflicting = saved;
  Set<"lpPRNType">(conflicting, 3);
  Set<"dmDuplex">(conflicting, 2);
  Set<"PaperLess_Check">(conflicting, 1);
  sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
  sheet->SetInput(conflicting);
  ASSERT_EQ(sheet->Open(), 1);
  EXPECT_EQ(desk.Told(), "") << "not before something is on the screen";
  sheet->Show(100)->Paint(154);
  EXPECT_EQ(desk.Told(), "Varnell 70/36MX-2 PCL|[22221][20017] => [21204] \n");
  sheet->Show(200)->Paint(239);
  sheet->Show(100)->Paint(154);
  EXPECT_EQ(desk.Told(), "");
}

TEST_F(SheetTest, EventsBeforeAndAfterTheLifeOfAPageDoNothing) {
  ScriptedSheet early(desk, printer.get(), DM_COPY);
  ASSERT_EQ(early.Open(), 1);
  const auto pester = [](DialogLogic* logic) {
    for (const ControlId id : {ControlId{0}, ControlId{103}, ControlId{111}, ControlId{151}, ControlId{170}}) {
      logic->Clicked(id);
      logic->RowSelected(id);
      logic->TextChanged(id);
      logic->PositionChanged(id);
      EXPECT_TRUE(logic->TakesKey(id, {u'x', u"", 0, 0}));
      EXPECT_TRUE(logic->LeavesFocus(id, 0));
      logic->Help(id);
    }
    logic->Activate();
    EXPECT_TRUE(logic->Deactivate());
    EXPECT_TRUE(logic->Apply());
    logic->Reset();
    logic->Destroy();
  };
  for (const auto& added : early.pages) pester(added.logic);
  early.Show(100);
  early.pages[0].logic->Destroy();
  pester(early.pages[0].logic);
  EXPECT_EQ(early.results, 0);
}

TEST_F(SheetTest, TwoSheetsDoNotDisturbEachOther) {
  OpenPage();
  ScriptedSheet other(desk, printer.get(), kMayChangePrinterData);
  ASSERT_EQ(other.Open(), 1);
  ScriptedDialog* second = other.Show(100);
  Choose(176, 2);
  page->Type(103, u"9");
  EXPECT_EQ(other.context().engine().Value(Named("lpPRNType")), 1);
  second->Press(107);
  EXPECT_EQ(Value("lpOrientation"), 1);
  EXPECT_EQ(second->TextOf(103), "1");
  ASSERT_TRUE(other.Confirm());
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 9);
  EXPECT_EQ(Get<"dmOrientation">(sheet->out), 1);
  EXPECT_EQ(Get<"dmOrientation">(other.out), 2);
}

TEST_F(SheetTest, APageThatIsNotBuiltShowsItsSettings) {
  OpenPage("Front_Check=1 lpFrontCover=3 lpImgShiftMode=2");
  page = sheet->Show(200);
  EXPECT_TRUE((*page)[201].checked);
  EXPECT_TRUE((*page)[203].checked);
  EXPECT_EQ(page->SelectedText(247), "[28587]");
  ASSERT_TRUE(sheet->Apply());
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << id;
}

TEST_F(SheetTest, AReportNamesThePapersOfItsOwnSheet) {
  OpenPage("lpBindPosit=4");
  AddQueue(u"P2");
  const UniquePrinter second = OpenPrinterFor(u"P2", PRINTER_ALL_ACCESS);
  (*ui().stores.userPapers)[0] = {.width = 5000, .height = 7000, .unit = 1, .name = u"Ticket", .longFlag = 0};
  ScriptedSheet other(desk, second.get(), kMayChangePrinterData);
  ASSERT_EQ(other.Open(), 1);
  EXPECT_EQ(std::u16string(PaperLabel(513)), u"[21550]");
  desk.Answer(IDNO);
  Choose(176, 3);
  EXPECT_NE(desk.Told(), "");
  EXPECT_EQ(std::u16string(PaperLabel(513)), u"Ticket");
}

TEST_F(SheetTest, TheNextOwnerDoesNotInheritSecrets) {
  DriverEnv env{};
  for (const char16_t* user : {u"ada", u"ada", u"", u"grace"}) {
    backend.userName = user;
    sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
    if (env.bytes[0] != 0) sheet->SetInput(env);
    ASSERT_EQ(sheet->Open(), 1);
    const std::u16string kept = pages::GetText(ui(), TextSetting::kSecureId);
    const bool same = env.bytes[0] != 0 && std::u16string_view(user) == u"ada";
    EXPECT_EQ(kept, same ? u"plans" : u"") << platform::ToUtf8(user);
    EXPECT_EQ(pages::GetText(ui(), TextSetting::kAuthPassword), kept);
    EXPECT_EQ(pages::GetText(ui(), TextSetting::kSecureCodeA), kept);
    EXPECT_EQ(Value("UserAuth_Check"), same ? 1 : 0);
    EXPECT_EQ(Value("lpOutputMethod"), 1);
    EXPECT_EQ(pages::GetText(ui(), TextSetting::kOwnerName), user);
    pages::SetText(ui(), TextSetting::kSecureId, u"plans");
    pages::SetText(ui(), TextSetting::kAuthPassword, u"plans");
    pages::SetText(ui(), TextSetting::kSecureCodeA, u"plans");
    engine().Set(Named("UserAuth_Check"), 1);
    sheet->Show(100);
    if (env.bytes[0] == 0 || same) {
      ASSERT_TRUE(sheet->Confirm());
      env = sheet->out;
    }
  }
}

TEST_F(SheetTest, TheDeviceSheetStoresWhatItConfirms) {
  ScriptedSheet device(desk, printer.get(), 0, true);
  ASSERT_EQ(device.Open(), 1);
  ScriptedDialog* shown = device.Show(800);
  for (const ControlId id : shown->Controls()) EXPECT_FALSE(shown->IsEnabled(id)) << id;
  device.context().engine().Set(Named("lpOutputUnit"), 41);
  backend.machineWritable = false;
  SETRESULT_INFO confirmed{.cbSize = sizeof confirmed, .wReserved = 0, .hSetResult = nullptr, .Result = 1};
  EXPECT_EQ(device.Reason(PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&confirmed)), -1);
  backend.machineWritable = true;
  ASSERT_TRUE(device.Confirm());
  DriverEnv saved;
  LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get());
  EXPECT_EQ(Get<"lpOutputUnit">(saved), 41);
}

TEST_F(SheetTest, ThePaneAndTheVersion) {
  OpenPage();
  page->Press(164);
  EXPECT_EQ(Value("previewMode"), 2);
  EXPECT_EQ(page->changes, 0) << "what the pictures show is no change of the job";
  EXPECT_GE((*page)[166].repaints, 2);
  sheet->pages[0].logic->Help(111);
  EXPECT_EQ(page->help, std::pair(2002U, ControlId{111}));
  ScriptedDialog* version = sheet->Show(1000);
  EXPECT_EQ(version->TextOf(1001), "Varnell 70/36MX-2 PCL");
  EXPECT_EQ(version->TextOf(1003), "Version : 02.00.00.00");
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"previewMode">(sheet->out), 2) << "but kept with it";
}

TEST_F(SheetTest, ThePagesAddressOnlyWhatTheirTemplatesHave) {
  OpenPage("BindMargin_Check=1 lpCopierHardDisk=2 UserAuth_Check=1 lpAuthUserMode=2 SecMana_Check=1");
  const auto leave = [](ScriptedDialog& dialog) {
    EXPECT_TRUE(dialog.strangers().empty()) << *dialog.strangers().begin();
    dialog.Click(kCancelButton);
  };
  desk.Expect(2300, leave);
  desk.Expect(2950, leave);
  page->Click(179);
  page->Click(181);
  desk.Expect(2910, [&](ScriptedDialog& trays) {
    desk.Expect(2920, leave);
    trays.Select(2911, 0);
    trays.Click(2912);
    leave(trays);
  });
  page->Click(182);
  desk.Expect(1800, leave);
  Choose(172, 2);
  desk.Expect(2001, leave);
  Choose(172, 3);
  desk.Expect(2200, leave);
  Choose(111, 512);
  page->Check(124, true);
  desk.Expect(2900, leave);
  Choose(125, 20);
  EXPECT_TRUE(page->strangers().empty()) << *page->strangers().begin();
}

/// Every allocation of a sheet's life fails once: it fails or goes on, and nothing is thrown, lost or left behind.
TEST_F(SheetTest, WithoutMemoryNothingIsThrown) {
  OpenPage();
  sheet.reset();
  bool finished = false;
  for (int64_t left = 0; left < 100000 && !finished; left += 1 + left / 50) {
    ScriptedSheet poor(desk, printer.get(), DM_COPY);
    LONG opened = 0;
    {
      const FailingNew failing(left);
      opened = poor.Open();
      finished = !failing.Refused();
    }
    if (opened != 1) poor.Reason(PROPSHEETUI_REASON_DESTROY);
    EXPECT_EQ(opened == 1, poor.info().UserData != 0) << left;
  }
  EXPECT_TRUE(finished);
}

TEST_F(SheetTest, AHandlerWithoutMemoryLetsNothingOut) {
  OpenPage();
  DialogLogic* const logic = sheet->pages[0].logic;
  bool refused = true;
  for (int64_t left = 0; refused && left < 5000; ++left) {
    const FailingNew failing(left);
    logic->Activate();
    logic->RowSelected(176);
    logic->TextChanged(103);
    logic->Deactivate();
    refused = failing.Refused();
  }
  EXPECT_FALSE(refused);
  EXPECT_EQ(page->SelectedText(176), "[21595]");
  EXPECT_EQ(Value("Copies"), 1);
}

TEST_F(SheetTest, ADialogThatCannotBeCopiedForIsNotOpened) {
  OpenPage();
  const auto before = Bytes();
  {
    const FailingNew none(0);
    page->Click(181);
    page->Click(182);
  }
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(desk.Told(), "");
}

}  // namespace
}  // namespace heron::test

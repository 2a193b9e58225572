// The sheet itself: its four reasons, the life of its pages, what opening and confirming do.
#include "generated/values.h"
#include "pages/text_settings.h"
#include "settings/printer_data.h"
#include "sheet_fixture.h"
#include "support/failing_new.h"
#include "uistate/keep_lists.h"
#include "uistate/walk_store.h"

namespace heron::test {
namespace {

using namespace platform;
using pages::TextSetting;

TEST_F(SheetTest, ABookletIsAskedForAndWritten) {
  OpenPage("lpBindPosit=Top");
  desk.Answer(IDNO);
  Choose("lpPRNType", "Booklet");
  const std::string report = desk.Told();
  EXPECT_EQ(report, "[20039]|[22212][20038] => [21592] \n[22214]?");
  EXPECT_EQ(Value("lpPRNType"), "OneSided");
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21595]") << "the list goes back too";

  desk.Answer(IDYES);
  Choose("lpPRNType", "Booklet");
  EXPECT_EQ(desk.Told(), report);
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21597]");
  EXPECT_EQ(page->SelectedText("lpBindPosit"), "[21592]");
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"lpPRNType">(sheet->out), value::lpPRNType::kBooklet);
  EXPECT_EQ(Get<"lpBindPosit">(sheet->out), value::lpBindPosit::kLeft);
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
  Choose("lpPRNType", "TwoSided");
  page->Type("Copies", u"7");
  EXPECT_EQ(page->changes, 2);
  sheet->out.bytes.fill(0xEE);
  const DriverEnv before = sheet->out;
  sheet->Cancel();
  EXPECT_EQ(sheet->out.bytes, before.bytes);
  EXPECT_EQ(sheet->results, 0);
}

TEST_F(SheetTest, WhatWasAppliedIsCommittedWhateverFollows) {
  OpenPage();
  const auto set = [&](const char* print_type, const char16_t* copies, const char16_t* id, uint8_t tray_media) {
    Choose("lpPRNType", print_type);
    page->Type("Copies", copies);
    pages::SetText(ui(), TextSetting::kSecureId, id);
    ui().head().trayTable[4] = tray_media;
    ui().stores.overlays->createFileName[0] = id[0];
  };
  engine::Setting<u"lpOverlay">(ui()) = value::lpOverlay::kCreateForm;
  for (const char16_t* id : {u"first", u"last"}) {
    set("TwoSided", u"5", id, 7);
    ASSERT_TRUE(sheet->Apply());
  }
  EXPECT_EQ(sheet->results, 2);
  set("OneSided", u"7", u"never", 9);
  sheet->Cancel();
  EXPECT_EQ(Get<"lpPRNType">(sheet->out), value::lpPRNType::kTwoSided);
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 5);
  EXPECT_EQ(GetText<"secureId">(sheet->out), u"last");
  EXPECT_EQ(FieldBytes<"trayTableIndex">(sheet->out)[2], 7);
  EXPECT_EQ(GetText<"overlayName">(sheet->out), u"l");
}

TEST_F(SheetTest, AHostThatConfirmsWithoutAnApplyGetsWhatThePagesShow) {
  OpenPage();
  Choose("lpPRNType", "TwoSided");
  page->Type("Copies", u"5");
  ui().stores.watermarks->wMarkListNum = 3;
  SETRESULT_INFO confirmed{.cbSize = sizeof confirmed, .wReserved = 0, .hSetResult = nullptr, .Result = 1};
  const auto confirm = [&] {
    return sheet->Reason(PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&confirmed));
  };
  ASSERT_EQ(confirm(), 1);
  EXPECT_EQ(Get<"lpPRNType">(sheet->out), value::lpPRNType::kTwoSided);
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 5);
  EXPECT_EQ(Get<"dmDuplex">(sheet->out), 2);
  ListStoreSet stored = CreateListStoreSet();
  ReadListStores(stored, u"P1", printer.get());
  EXPECT_EQ(stored.watermarks->wMarkListNum, 3) << "its lists too";
  page->Type("Copies", u"6");
  ASSERT_EQ(confirm(), 1);
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 6) << "as often as it confirms";

  backend.userWritable = false;
  ui().stores.watermarks->wMarkListNum = 4;
  sheet->out.bytes.fill(0xEE);
  const DriverEnv before = sheet->out;
  desk.Answer(IDNO);
  EXPECT_EQ(confirm(), -1);
  EXPECT_NE(desk.Told().find("lists:"), std::string::npos);
  EXPECT_EQ(sheet->out.bytes, before.bytes);
  desk.Answer(IDYES);
  EXPECT_EQ(confirm(), 1);
  EXPECT_NE(desk.Told(), "");
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 6);
}

/// Five lists of the user's and the custom sizes; each is whole or as it was.
TEST_F(SheetTest, ListsThatCannotBeStoredAreAskedForOnce) {
  OpenPage();
  sheet->Show("per-page");
  ui().stores.pageLists->lists[3].mixplex ^= 1;
  ui().stores.overlays->formListNum ^= 1;
  ui().stores.watermarks->wMarkListNum ^= 1;
  ui().stores.fontSubst->index ^= 1;
  ui().stores.faxCover->zoom ^= 1;
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

  page = sheet->Show("paper");
  (*ui().stores.userPapers)[3].width = 5000;
  page->Type("Copies", u"7");
  backend.userWritable = true;
  desk.Answer(IDNO);
  EXPECT_FALSE(sheet->Apply());
  EXPECT_EQ(desk.Told(), "Varnell 70/36MX-2 PCL|lists:\n[26404]?") << "something has changed";
  sheet->Cancel();
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 1);
}

/// Another program changes lists while the sheet is open: what the sheet didn't touch stays theirs, what both changed
/// is asked for.
TEST_F(SheetTest, ListsChangedMeanwhileAreNotUndone) {
  OpenPage();
  ListStoreSet theirs = CopyOfLists(ui().stores);
  theirs.watermarks->entries[1].size = 77;
  theirs.faxCover->zoom = 66;
  (*theirs.userPapers)[2].width = 5555;
  const auto write_theirs = [&] { ASSERT_TRUE(WriteListStores(theirs, u"P1", printer.get(), false)); };
  const auto stored = [&] {
    ListStoreSet set = CreateListStoreSet();
    EXPECT_TRUE(ReadListStores(set, u"P1", printer.get()));
    return set;
  };
  write_theirs();
  EXPECT_TRUE(sheet->Apply());
  EXPECT_EQ(desk.Told(), "");
  EXPECT_EQ(stored().watermarks->entries[1].size, 77u);
  EXPECT_EQ((*stored().userPapers)[2].width, 5555u);

  ui().stores.watermarks->entries[1].size = 33;
  (*ui().stores.userPapers)[3].width = 4444;
  const std::string question = "Varnell 70/36MX-2 PCL|changed lists:\n[26423]?";
  desk.Answer(IDNO);
  EXPECT_FALSE(sheet->Apply()) << "the sheet stays open";
  EXPECT_EQ(desk.Told(), question);
  EXPECT_EQ(stored().watermarks->entries[1].size, 77u);
  desk.Answer(IDYES);
  EXPECT_TRUE(sheet->Apply());
  EXPECT_EQ(desk.Told(), question);
  EXPECT_EQ(stored().watermarks->entries[1].size, 33u);
  EXPECT_EQ(stored().faxCover->zoom, 66u) << "theirs, as the sheet never touched it";
  EXPECT_EQ((*stored().userPapers)[2].width, 5555u);
  EXPECT_EQ((*stored().userPapers)[3].width, 4444u);
}

TEST_F(SheetTest, WhatTheCommitMovesIsShown) {
  OpenPage("lpOutput=Fax");
  EXPECT_FALSE(page->IsEnabled("BindMargin_Check"));
  ASSERT_TRUE(sheet->Apply());
  EXPECT_EQ(desk.Told(), "[22302]|[22301]");
  EXPECT_TRUE(page->IsEnabled("BindMargin_Check"));
}

TEST_F(SheetTest, APageMayRefuseToBeLeft) {
  OpenPage();
  Choose("lpOutputPaper", "A3");
  page->Type("Zoom", u"5");
  EXPECT_EQ(sheet->Show("per-page"), nullptr);
  EXPECT_EQ(desk.Told(), "[21016]|[21016] 25-400");
  EXPECT_EQ(page->FocusedName(), "Zoom");
  EXPECT_EQ((*page)["Zoom"].selection_end, 1U);
  EXPECT_FALSE(sheet->Confirm());
  EXPECT_EQ(desk.Told(), "[21016]|[21016] 25-400");
  page->Type("Zoom", u"50");
  EXPECT_NE(sheet->Show("per-page"), nullptr);
}

TEST_F(SheetTest, APageIsRebuiltWhenItComesToTheFront) {
  OpenPage();
  ASSERT_NE(sheet->Show("font"), nullptr);
  engine().Set(ControlNamed("lpPRNType"), 2);
  engine().Set(ControlNamed("Staple_Check"), 1);
  page = sheet->Show("paper");
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21596]");
  EXPECT_TRUE((*page)["Staple_Check"].checked);
}

TEST_F(SheetTest, ReadOnlyShowsEverythingAndEnablesNothing) {
  OpenPage("lpPRNType=TwoSided", "paper", DM_COPY | DM_NOPERMISSION);
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21596]");
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << NameOfControl(id);
  ASSERT_NE(sheet->Show("per-page"), nullptr);
  sheet->Show("paper");
  for (const ControlId id : page->Controls()) EXPECT_FALSE(page->IsEnabled(id)) << NameOfControl(id);
}

TEST_F(SheetTest, TheReportOfTheOpeningAppearsOnce) {
  DriverEnv saved;
  LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get());
  DriverEnv conflicting = saved;
  Set<"lpPRNType">(conflicting, value::lpPRNType::kBooklet);
  Set<"dmDuplex">(conflicting, 2);
  Set<"PaperLess_Check">(conflicting, value::PaperLess_Check::kOn);
  sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
  sheet->SetInput(conflicting);
  ASSERT_EQ(sheet->Open(), 1);
  EXPECT_EQ(desk.Told(), "") << "not before something is on the screen";
  sheet->Show("paper")->Paint("firstPaint.paper");
  EXPECT_EQ(desk.Told(), "Varnell 70/36MX-2 PCL|[22221][20017] => [21204] \n");
  sheet->Show("per-page")->Paint("firstPaint.perPage");
  sheet->Show("paper")->Paint("firstPaint.paper");
  EXPECT_EQ(desk.Told(), "");
}

TEST_F(SheetTest, ARecordWithoutLayoutOptionsOpensWithThem) {
  DriverEnv saved;
  LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get());
  Set<"lpOutputUnit">(saved, value::lpOutputUnit::kFloor2);
  Set<"Layout_Check2">(saved, value::Layout_Check2::kOff);
  Set<"Staple_Check">(saved, value::Staple_Check::kOn);
  Set<"lpPRNType">(saved, value::lpPRNType::kBooklet);
  Set<"dmDuplex">(saved, 2);
  ASSERT_TRUE(SavePrinterEnv(printer.get(), saved));
  std::string reports[2];
  for (const uint8_t in_use : {uint8_t{1}, uint8_t{0}}) {
    Set<"Layout_Check2">(saved, in_use);
    sheet = std::make_unique<ScriptedSheet>(desk, printer.get(), DM_COPY);
    sheet->SetInput(saved);
    ASSERT_EQ(sheet->Open(), 1);
    EXPECT_EQ(Value("Layout_Check2"), "On");
    EXPECT_TRUE(engine::IsControlAvailable(engine(), "Staple_Check"_id)) << "before any page is shown";
    page = sheet->Show("paper");
    page->Paint("firstPaint.paper");
    reports[in_use] = desk.Told() + page->SelectedText("lpPRNType") + page->SelectedText("lpStaple");
  }
  EXPECT_NE(reports[1].find("[22221]"), std::string::npos) << "the record has a conflict";
  EXPECT_EQ(reports[0], reports[1]);
}

TEST_F(SheetTest, EventsBeforeAndAfterTheLifeOfAPageDoNothing) {
  ScriptedSheet early(desk, printer.get(), DM_COPY);
  ASSERT_EQ(early.Open(), 1);
  const auto pester = [](DialogLogic* logic) {
    for (const ControlId id :
         {ControlId{0}, "Copies"_id, "lpMediaSize"_id, "restoreDefaults.paper"_id, "settingsLibrary.paper"_id}) {
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
  early.Show("paper");
  early.pages[0].logic->Destroy();
  pester(early.pages[0].logic);
  EXPECT_EQ(early.results, 0);
}

TEST_F(SheetTest, TwoSheetsDoNotDisturbEachOther) {
  OpenPage();
  ScriptedSheet other(desk, printer.get(), kMayChangePrinterData);
  ASSERT_EQ(other.Open(), 1);
  ScriptedDialog* second = other.Show("paper");
  Choose("lpPRNType", "TwoSided");
  page->Type("Copies", u"9");
  EXPECT_EQ(other.context().engine().Value(ControlNamed("lpPRNType")), 1);
  second->Press("lpOrientation.Landscape");
  EXPECT_EQ(Value("lpOrientation"), "Portrait");
  EXPECT_EQ(second->TextOf("Copies"), "1");
  ASSERT_TRUE(other.Confirm());
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"dmCopies">(sheet->out), 9);
  EXPECT_EQ(Get<"dmOrientation">(sheet->out), 1);
  EXPECT_EQ(Get<"dmOrientation">(other.out), 2);
}

TEST_F(SheetTest, AReportNamesThePapersOfItsOwnSheet) {
  OpenPage("lpBindPosit=Top");
  AddQueue(u"P2");
  const UniquePrinter second = OpenPrinterFor(u"P2", PRINTER_ALL_ACCESS);
  (*ui().stores.userPapers)[0] = {.width = 5000, .height = 7000, .unit = 1, .name = u"Ticket", .longFlag = 0};
  ScriptedSheet other(desk, second.get(), kMayChangePrinterData);
  ASSERT_EQ(other.Open(), 1);
  EXPECT_EQ(std::u16string(PaperLabel(value::lpMediaSize::kCustom1)), u"[21550]");
  desk.Answer(IDNO);
  Choose("lpPRNType", "Booklet");
  EXPECT_NE(desk.Told(), "");
  EXPECT_EQ(std::u16string(PaperLabel(value::lpMediaSize::kCustom1)), u"Ticket");
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
    EXPECT_EQ(Value("lpOutputMethod"), "Print");
    EXPECT_EQ(pages::GetText(ui(), TextSetting::kOwnerName), user);
    pages::SetText(ui(), TextSetting::kSecureId, u"plans");
    pages::SetText(ui(), TextSetting::kAuthPassword, u"plans");
    pages::SetText(ui(), TextSetting::kSecureCodeA, u"plans");
    engine().Set(ControlNamed("UserAuth_Check"), 1);
    sheet->Show("paper");
    if (env.bytes[0] == 0 || same) {
      ASSERT_TRUE(sheet->Confirm());
      env = sheet->out;
    }
  }
}

TEST_F(SheetTest, TheDeviceSheetStoresWhatItConfirms) {
  ScriptedSheet device(desk, printer.get(), 0, true);
  ASSERT_EQ(device.Open(), 1);
  device.Show("device-settings");
  device.context().engine().Set(ControlNamed("lpOutputUnit"), 41);
  backend.machineWritable = false;
  SETRESULT_INFO confirmed{.cbSize = sizeof confirmed, .wReserved = 0, .hSetResult = nullptr, .Result = 1};
  EXPECT_EQ(device.Reason(PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&confirmed)), -1);
  backend.machineWritable = true;
  ASSERT_TRUE(device.Confirm());
  DriverEnv saved;
  LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get());
  EXPECT_EQ(Get<"lpOutputUnit">(saved), value::lpOutputUnit::kFloor2);
}

/// Another program saves device options while the sheet is open.
TEST_F(SheetTest, TheDeviceSheetNeverUndoesWhatItDidNotChange) {
  const auto saved_unit = [&] {
    DriverEnv saved;
    LoadPrinterEnv(printer.get(), &saved, nullptr, resources.get());
    return Get<"lpFAXUnit">(saved);
  };
  const auto save_theirs = [&](uint8_t unit) {
    DriverEnv theirs;
    LoadPrinterEnv(printer.get(), &theirs, nullptr, resources.get());
    Set<"lpFAXUnit">(theirs, unit);
    ASSERT_TRUE(SavePrinterEnv(printer.get(), theirs));
  };
  const std::string question = "Varnell 70/36MX-2 PCL|changed printer P1?";
  for (const bool touched : {false, true}) {
    for (const int answer : {IDNO, IDYES}) {
      save_theirs(1);
      ScriptedSheet device(desk, printer.get(), 0, true);
      ASSERT_EQ(device.Open(), 1);
      device.Show("device-settings");
      device.context().touched = touched;
      save_theirs(2);
      if (touched) desk.Answer(answer);
      SETRESULT_INFO confirmed{.cbSize = sizeof confirmed, .wReserved = 0, .hSetResult = nullptr, .Result = 1};
      EXPECT_EQ(device.Reason(PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&confirmed)), 1);
      EXPECT_EQ(desk.Told(), touched ? question : "");
      EXPECT_EQ(saved_unit(), touched && answer == IDYES ? 1 : 2);
      EXPECT_EQ(device.info().Result, touched && answer == IDNO ? 0u : 1u);
    }
  }
}

TEST_F(SheetTest, ThePaneAndTheVersion) {
  OpenPage();
  page->Press("previewMode.Machine");
  EXPECT_EQ(Value("previewMode"), "Machine");
  EXPECT_EQ(page->changes, 0) << "what the pictures show is no change of the job";
  EXPECT_GE((*page)["upperPicture"].repaints, 2);
  sheet->pages[0].logic->Help("lpMediaSize"_id);
  EXPECT_EQ(page->help, std::pair(2002U, "lpMediaSize"_id));
  ScriptedDialog* version = sheet->Show("version");
  EXPECT_EQ(version->TextOf("product"), "Varnell 70/36MX-2 PCL");
  EXPECT_EQ(version->TextOf("version"), "Version : 02.00.00.00");
  ASSERT_TRUE(sheet->Confirm());
  EXPECT_EQ(Get<"previewMode">(sheet->out), 2) << "but kept with it";
}

TEST_F(SheetTest, ThePagesAddressOnlyWhatTheirTemplatesHave) {
  OpenPage("BindMargin_Check=On lpCopierHardDisk=Installed UserAuth_Check=On lpAuthUserMode=LoggedIn SecMana_Check=On");
  const auto leave = [](ScriptedDialog& dialog) {
    EXPECT_TRUE(dialog.strangers().empty()) << NameOfControl(*dialog.strangers().begin());
    dialog.Click(kCancelButton);
  };
  desk.Expect("binding-margin", leave);
  desk.Expect("authentication-and-department", leave);
  page->Click("bindingMarginButton");
  page->Click("authenticationButton");
  desk.Expect("paper-type", [&](ScriptedDialog& trays) {
    desk.Expect("edit-paper-type", leave);
    trays.Select("trays", 0);
    trays.Click("editTray");
    leave(trays);
  });
  page->Click("paperTypeButton");
  desk.Expect("secure-print", leave);
  Choose("lpOutputMethod", "Secure");
  desk.Expect("box", leave);
  Choose("lpOutputMethod", "SaveToBox");
  desk.Expect("custom-size", leave);
  Choose("lpMediaSize", "CustomSize");
  page->Check("Nup_Check", true);
  desk.Expect("layout-details", leave);
  Choose("lpLayout", "Details");
  EXPECT_TRUE(page->strangers().empty()) << NameOfControl(*page->strangers().begin());
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
    logic->RowSelected("lpPRNType"_id);
    logic->TextChanged("Copies"_id);
    logic->Deactivate();
    refused = failing.Refused();
  }
  EXPECT_FALSE(refused);
  EXPECT_EQ(page->SelectedText("lpPRNType"), "[21595]");
  EXPECT_EQ(Value("Copies"), 1);
}

/// Dialogs on the settings themselves and on a copy: whatever memory their start lacks, each closes, and nothing
/// changes.
TEST_F(SheetTest, ADialogThatCannotStartCloses) {
  OpenPage("lpCopierHardDisk=Installed BindMargin_Check=On lpMarginMode=Reduce fMargin=50");
  for (const TextSetting text : {TextSetting::kSecureId, TextSetting::kBoxFileName})
    pages::SetText(ui(), text, u"longer than a text without an allocation");
  struct Case {
    DialogName dialog;
    std::function<void()> open;
  };
  const Case cases[] = {{"binding-margin", [&] { page->Click("bindingMarginButton"); }},
                        {"authentication-and-department", [&] { page->Click("authenticationButton"); }},
                        {"paper-type", [&] { page->Click("paperTypeButton"); }},
                        {"secure-print", [&] { Choose("lpOutputMethod", "Secure"); }},
                        {"box", [&] { Choose("lpOutputMethod", "SaveToBox"); }},
                        {"custom-size", [&] { Choose("lpMediaSize", "CustomSize"); }},
                        {"layout-details", [&] {
                           Put("BindMargin_Check=Off lpMarginMode=Shift fMargin=0 Nup_Check=On");
                           page = sheet->Show("paper");
                           Choose("lpLayout", "Details");
                         }}};
  for (const Case& c : cases) {
    const auto before = Bytes();
    int closed = 0;
    for (int64_t left = 0; left < 400; ++left) {
      bool started = false;
      desk.Expect(c.dialog, [&](ScriptedDialog& dialog) {
        started = true;
        dialog.Click(kCancelButton);
      });
      desk.while_starting = [left](const auto& start) {
        const FailingNew failing(left);
        start();
      };
      c.open();
      if (started) break;
      ++closed;
      ASSERT_TRUE(c.dialog == DialogName("paper-type") || c.dialog == DialogName("layout-details") || Bytes() == before)
          << c.dialog << ' ' << left;
    }
    EXPECT_GT(closed, 0) << c.dialog;
    EXPECT_EQ(page->SelectedText("lpOutputMethod"), "[40103]");
    EXPECT_EQ(desk.Told(), "");
  }
}

TEST_F(SheetTest, ADialogThatCannotBeCopiedForIsNotOpened) {
  OpenPage();
  const auto before = Bytes();
  {
    const FailingNew none(0);
    page->Click("authenticationButton");
    page->Click("paperTypeButton");
  }
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(desk.Told(), "");
}

}  // namespace
}  // namespace heron::test

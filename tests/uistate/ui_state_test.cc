// The working store: its blocks, the way of a record through it and back, and its copies.
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "generated/values.h"
#include "settings/defaults.h"
#include "store_fixture.h"
#include "support/failing_new.h"
#include "support/records.h"
#include "support/words.h"
#include "uistate/ui_state.h"

namespace heron::test {
namespace {

class UiStateTest : public StoreTest {
 protected:
  UiStateTest() { BuildDefaultEnv(resources.get(), &env, u"P1", printer.get()); }

  UiStatePtr Create(const DriverEnv& from) {
    UiStatePtr ui = CreateUiState(resources.get(), from, printer.get());
    EXPECT_NE(ui, nullptr);
    return ui;
  }
  DriverEnv ThroughStore(const DriverEnv& from) {
    const UiStatePtr ui = Create(from);
    DriverEnv to = from;
    WriteBackUiState(*ui, to, resources.get());
    return to;
  }

  /// A value that the row's feature allows.
  uint16_t Legal(const ParamRow& row, std::mt19937& random) {
    const auto options = ListOptionsOf(row.feature);
    if (!options.empty()) return static_cast<uint16_t>(options[random() % options.size()].value);
    if (KindOf(row.feature) != FeatureKind::kRange) return 0;
    const uint32_t min = CatalogQuery(resources.get(), row.feature, kMin, nullptr, 0, 0);
    const uint32_t max = CatalogQuery(resources.get(), row.feature, kMax, nullptr, 0, 0);
    return static_cast<uint16_t>(min + random() % (max - min + 1));
  }

  /// Random values for every setting, with what belongs together made to agree.
  DriverEnv RandomLegal(std::mt19937& random) {
    DriverEnv record = env;
    for (const WorkingParam& param : Params().params) {
      if (param.field == nullptr || !param.row->HasBlock() || param.row->rule == ParamRule::kIsCovered) continue;
      const uint16_t value = Legal(*param.row, random);
      std::memcpy(record.bytes.data() + param.field->At(param.row->fieldIndex), &value, param.field->ElementSize());
    }
    Set<"dmDefaultSource">(record, Get<"lpMediaSource">(record));
    if (Get<"lpLayout">(record) <= 2) Set<"lpLayout">(record, value::lpLayout::kTwoPages);
    Set<"EnableBPPChange_Check">(record, 1 + random() % 2);
    if (Get<"ZoomCheck">(record) == 0) Set<"lpOutputPaper">(record, Get<"dmPaperSize">(record));
    if (Get<"lpOverlay">(record) == 3) Set<"OverlayPrompt">(record, value::OverlayPrompt::kOff);
    if (IsCustomPaper(Get<"dmPaperSize">(record))) {
      Set<"dmPaperWidth">(record, Get<"UDPaperWidth">(record));
      Set<"dmPaperLength">(record, Get<"UDPaperLength">(record));
    }
    return record;
  }

  /// Fields in which the records differ though a setting has them.
  static std::string ChangedSettings(const DriverEnv& a, const DriverEnv& b) {
    std::set<std::string> settings = {"trayTableIndex", "trayTable.lpMediaSource", "trayTable.lpWeight", "pageMemo"};
    for (const WorkingParam& param : Params().params) {
      if (param.field != nullptr) settings.emplace(param.field->name);
    }
    std::string changed;
    std::istringstream names(Differences(a, b));
    for (std::string name; names >> name;) changed += settings.contains(name) ? name + " " : "";
    return changed;
  }

  DriverEnv env;
};

TEST_F(UiStateTest, BlocksHaveTheSizesOfTheCatalogue) {
  const UiStatePtr ui = Create(env);
  EXPECT_EQ(ui->variableSize, 20u + 12 + 12 + 146 + 64 + 8400 + 332);
  uint32_t fixed = 46496;
  for (const ParamRow& row : kParamRows) {
    if (IsVariableRow(row.id) || !row.HasPointer()) continue;
    const uint32_t count = CatalogQuery(resources.get(), row.feature, kCount, nullptr, 0, 0);
    fixed += row.kind == ParamKind::kList ? (count - 1) * 134 + 146 : count * 4 + 12;
  }
  EXPECT_EQ(ui->fixedSize, fixed);
  EXPECT_EQ(ui->totalSize, fixed + ui->variableSize);
  // The slots end before the blocks begin, and no two places overlap.
  std::map<uint32_t, uint32_t> places;
  for (const WorkingParam& param : Params().params) {
    if (param.blockSize != 0) places[param.blockOffset + (param.variable ? fixed : 0)] = param.blockSize;
    if (param.row->kind != ParamKind::kInternal)
      places[param.slotOffset] = param.row->HasPointer() ? 4 : param.slotSize;
  }
  uint32_t end = sizeof(UiHead);
  for (const auto& [at, size] : places) {
    ASSERT_GE(at, end);
    end = at + size;
  }
  EXPECT_EQ(end, ui->totalSize);
}

TEST_F(UiStateTest, BlocksHoldValuesDefaultsAndOptions) {
  backend.modules[kResourceModule][48011] = std::u16string(80, u'x');
  backend.modules[kResourceModule][28531] = u"none";
  Set<"dmPaperSize">(env, 12345);  // no option has it
  Set<"Zoom">(env, 77);
  Set<"lpInterSheetList">(env, 200);
  Create(env);  // seeds the lists, which resets the index of a watermark
  Set<"watermarkIndex">(env, 3);
  SetText<"boxNumber">(env, u"12345");
  const UiStatePtr ui = Create(env);
  auto& paper = SlotAs<u"lpMediaSize", ListBlock>(*ui);
  EXPECT_EQ(paper.value, 12345);
  EXPECT_EQ(paper.committed, 12345);
  EXPECT_EQ(paper.index, 0);
  EXPECT_EQ(paper.defaultValue, CatalogDefault(resources.get(), 0));
  EXPECT_EQ(paper.count, CatalogQuery(resources.get(), 0, kCount, nullptr, 0, 0));
  for (uint16_t i = 0; i < paper.count; ++i) {
    const ListItem& item = paper.Items()[i];
    EXPECT_EQ(item.value, CatalogQuery(resources.get(), 0, kValue, nullptr, i, 0));
    EXPECT_EQ(item.displayIndex, i);
    EXPECT_EQ(item.status, 1);
    EXPECT_EQ(item.label[kLabelLength - 1], u'\0');
  }
  const auto& zoom = SlotAs<u"Zoom", NumericBlock>(*ui);
  EXPECT_EQ(zoom.committed, 77);
  EXPECT_EQ(zoom.min, CatalogQuery(resources.get(), 26, kMin, nullptr, 0, 0));
  EXPECT_EQ(zoom.max, CatalogQuery(resources.get(), 26, kMax, nullptr, 0, 0));
  auto& tabs = SlotAs<u"lpPrnTabIndexNo", ListBlock>(*ui);
  EXPECT_EQ(tabs.count, 1);
  EXPECT_EQ(std::u16string_view(tabs.Items()[0].label), u"none");
  EXPECT_EQ((SlotAs<u"InterSheetListData_nCurrent", uint16_t>(*ui)), 10) << "clamped";
  EXPECT_EQ((SlotAs<u"bWatermarkFixed", uint8_t>(*ui)), 3);
  EXPECT_EQ(std::u16string_view(reinterpret_cast<char16_t*>(SlotOf(*ui, ParamIndexOf(222)))), u"12345");
  EXPECT_EQ(std::u16string_view(DeviceName(*ui).data()), u"P1");
  EXPECT_EQ(std::u16string_view(ui->head().phoneBookPath), u"/driver/TVORPB.DLL");
}

TEST_F(UiStateTest, TheCurrentListsTabSettingsAreTaken) {
  Create(env);  // seeds the lists
  ListStoreSet set = ReadAll();
  set.pageLists->lists[4].tabSettings = {1025, 5, 11, 12, 13, -3};
  ASSERT_TRUE(Write(set, ListStoreId::kPageLists));
  Set<"lpInterSheetList">(env, value::lpInterSheetList::kList5);
  const UiStatePtr ui = Create(env);
  EXPECT_EQ((SlotAs<u"lpTabPaperSize", ListBlock>(*ui).value), 1025);
  EXPECT_EQ((SlotAs<u"TabTopMargin", NumericBlock>(*ui).value), 11);
  EXPECT_EQ((SlotAs<u"TabTextPosition", NumericBlock>(*ui).committed), 0xFFFD);
}

TEST_F(UiStateTest, ARecordComesBackAsItWas) {
  EXPECT_EQ(ChangedSettings(env, ThroughStore(env)), "");
  std::mt19937 random(7);
  for (int i = 0; i < 200; ++i) {
    const DriverEnv record = RandomLegal(random);
    const DriverEnv back = ThroughStore(record);
    ASSERT_EQ(ChangedSettings(record, back), "") << "record " << i;
    ASSERT_EQ(Differences(back, ThroughStore(back)), "") << "record " << i;
  }
}

TEST_F(UiStateTest, HostileRecordsChangeNothingBeyondTheirSettings) {
  const std::vector<std::string> derived = Words(
      "dmFields dmPaperLength dmPaperWidth dmDefaultSource dmPrintQuality dmColor dmDuplex dmYResolution layoutFactor "
      "layoutFlag documentPaperSnapshot renderConstant overlayName bindingSide lpOutputPaper lpFrontCover lpBackCover "
      "lpOverlay bOverlayIndex lpLayout lpResolution faxAddressCount faxAddressFileId UDPaperWidth UDPaperLength "
      "watermarkIndex EnableBPPChange_Check");
  std::mt19937 random(11);
  for (int i = 0; i < 500; ++i) {
    DriverEnv record = env;
    for (size_t at = 72; at < kEnvSize; ++at) record.bytes[at] = static_cast<uint8_t>(random());
    const DriverEnv back = ThroughStore(record);
    std::istringstream names(Differences(record, back));
    for (std::string name; names >> name;)
      ASSERT_NE(std::ranges::count(derived, name), 0) << name << " of record " << i;
  }
}

TEST_F(UiStateTest, WritingBackDerivesWhatFollows) {
  const UiStatePtr ui = Create(env);
  const auto set = [&](uint16_t id, uint16_t value) { *FieldsOf(*ui, ParamIndexOf(id)).committed = value; };
  set(3, 513);  // a user paper
  set(151, 1000);
  set(152, 2000);
  set(5, 0);
  set(8, 1);
  set(9, 2);
  set(560, 1);
  set(35, 3);
  set(36, 1);
  SlotAs<u"bOverlayIndex", uint8_t>(*ui) = 2;
  Put(ui->stores.overlays->forms[2], u"/forms/a.vxf");
  SetText<"deviceInfoText">(env, u"kept");
  ui->head().pageMemo[5] = 9;
  DriverEnv out = env;
  WriteBackUiState(*ui, out, resources.get());
  EXPECT_EQ(Get<"dmPaperWidth">(out), 1000);
  EXPECT_EQ(Get<"dmPaperLength">(out), 2000);
  EXPECT_EQ(Get<"dmFields">(out) & 12, 12u);
  EXPECT_EQ(Get<"lpOutputPaper">(out), value::lpOutputPaper::kCustom1);
  EXPECT_EQ(Get<"layoutFactor">(out), 4);
  EXPECT_EQ(Get<"EnableBPPChange_Check">(out), 2);
  EXPECT_EQ(Get<"lpOverlay">(out), 4);
  EXPECT_EQ(GetText<"overlayName">(out), u"/forms/a.vxf");
  EXPECT_EQ(GetText<"deviceInfoText">(out), u"kept");
  EXPECT_EQ(FieldBytes<"pageMemo">(out)[5], 9);

  ui->head().printerDataLocked = 0;
  set(20, 0);
  set(21, 4);
  set(245, 2);
  SlotAs<u"bOverlayIndex", uint8_t>(*ui) = 200;  // beyond the list
  WriteBackUiState(*ui, out, resources.get());
  EXPECT_EQ(Get<"dmPaperWidth">(out), 0);
  EXPECT_EQ(Get<"lpFrontCover">(out), 1);
  EXPECT_EQ(GetText<"overlayName">(out), u"HR_DEFAULT");
  EXPECT_NE(Get<"dmDuplex">(out), 1);

  set(3, 9);
  set(35, 1);
  set(245, 1);
  set(47, 400);
  set(45, 1);
  WriteBackUiState(*ui, out, resources.get());
  EXPECT_EQ(Get<"dmPaperWidth">(out), 2100);
  EXPECT_EQ(Get<"dmFields">(out) & 12, 0u);
  EXPECT_EQ(GetText<"overlayName">(out), u"");
  EXPECT_EQ(Get<"bOverlayIndex">(out), 0);
  EXPECT_EQ(Get<"dmDuplex">(out), 1);
}

TEST_F(UiStateTest, TheSpreadsheetProgramsChoiceIsRemembered) {
  backend.processFileName = u"c:/EXCEL.EXE";
  const UiStatePtr ui = Create(env);
  for (const uint16_t output : std::to_array<uint16_t>({1, 2, 1})) {
    *FieldsOf(*ui, ParamNamed<u"lpOutput">()).committed = output;
    WriteBackUiState(*ui, env, resources.get());
    EXPECT_EQ(BookModeStatus(u"P1"), output);
  }
  backend.processFileName = u"writer";
  WriteBackUiState(*ui, env, resources.get());
  EXPECT_EQ(BookModeStatus(u"P1"), 0u);
}

TEST_F(UiStateTest, CopiesAreIndependentAndKeepTheirBlocks) {
  const UiStatePtr ui = Create(env);
  UiStatePtr clone = CloneUiState(*ui);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(std::memcmp(clone->fixed.get(), ui->fixed.get(), ui->fixedSize), 0);
  for (const WorkingParam& param : Params().params) {
    if (!param.row->HasBlock()) continue;
    *FieldsOf(*clone, param.selfIndex).value ^= 0x5555;
    ASSERT_NE(*FieldsOf(*clone, param.selfIndex).value, *FieldsOf(*ui, param.selfIndex).value) << param.row->id;
  }
  CurrentPages(*clone)[29].tray = 7;
  clone->stores.watermarks->wMarkListNum = 40;
  EXPECT_EQ(CurrentPages(*ui)[29].tray, 0);
  EXPECT_EQ(ui->stores.watermarks->wMarkListNum, 12);

  uint8_t* const variable = ui->variable.get();
  WatermarkStore* const store = ui->stores.watermarks.get();
  CopyUiState(*ui, *clone);
  FreeUiStateClone(clone);
  EXPECT_EQ(ui->variable.get(), variable);
  EXPECT_EQ(ui->stores.watermarks.get(), store);
  EXPECT_EQ(CurrentPages(*ui)[29].tray, 7);
  EXPECT_EQ(store->wMarkListNum, 40);
}

TEST_F(UiStateTest, AStoreThatCantBeReadNowMakesNoState) {
  // Each backend call fails from the n-th on: a state either holds what is stored, or isn't made.
  const UiStatePtr whole = CreateUiState(resources.get(), env, printer.get());
  ASSERT_NE(whole, nullptr);
  size_t refused = 0;
  for (uint64_t n = 1; n < 2000; n += 7) {
    backend.FailCall(n, platform::kErrorBusy, true);
    const UiStatePtr ui = CreateUiState(resources.get(), env, printer.get());
    const bool reached = backend.Calls() >= n;
    backend.FailCall(0, 0);
    if (!reached) break;
    refused += ui == nullptr;
    if (ui == nullptr) continue;
    EXPECT_EQ(ui->stores.watermarks->wMarkListNum, whole->stores.watermarks->wMarkListNum) << n;
    EXPECT_EQ(ui->stores.pageLists->lists[9].name, std::u16string_view(whole->stores.pageLists->lists[9].name)) << n;
  }
  EXPECT_GT(refused, 10U);
}

TEST_F(UiStateTest, AnExhaustedMemoryLeavesNothingBehind) {
  const UiStatePtr warm = Create(env);  // what is made once is there
  /// Counts the runs in which an allocation failed.
  const auto failures = [&](auto make, bool fails_always) {
    int failed = 0;
    for (int64_t left = 0, step = 1;; left += step, ++failed) {
      const int64_t blocks = LiveBlocks();
      bool refused = false;
      {
        const FailingNew failing(left);
        try {
          const UiStatePtr ui = make();
          EXPECT_TRUE(!fails_always || (ui == nullptr) == failing.Refused());
        } catch (const std::bad_alloc&) {
          // The exports make this a failure.
        }
        refused = failing.Refused();
      }
      EXPECT_EQ(LiveBlocks(), blocks) << left;
      if (!refused || HasFailure()) return failed;
      if (left > 300) step = 13;
    }
  };
  EXPECT_EQ(failures([&] { return CloneUiState(*warm); }, true), 9) << "the state, two blocks, six stores";
  EXPECT_GT(failures([&] { return CreateUiState(resources.get(), env, printer.get()); }, false), 9);
}

}  // namespace
}  // namespace heron::test

// Making a state from a record.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

#include "catalog/strings.h"
#include "generated/texts.h"
#include "platform/api/text.h"
#include "settings/printer_data.h"
#include "uistate/recipients.h"
#include "uistate/ui_blocks.h"
#include "uistate/ui_state.h"
#include "uistate/user_stores.h"
#include "uistate/walk_store.h"

namespace heron {
namespace {

using namespace platform;

constexpr char16_t kHelpFile[] = u"TVOR6HZ.hlp";
constexpr char16_t kPhoneBook[] = u"TVORPB.DLL";
constexpr uint32_t kTrayTableOffset = 3170;

template <size_t N>
void SetText(char16_t (&field)[N], std::u16string_view text) {
  const size_t length = std::min(text.size(), N - 1);
  std::fill(std::copy_n(text.begin(), length, field), field + N, u'\0');
}

/// The lists follow the driver's version, which is in the record's mirror; then indexes into lists that are gone go
/// too.
void RefreshStores(DriverEnv& env) {
  constexpr uint32_t kNameBytes = 62;
  constexpr uint32_t kVersion = FieldOf<"dmDriverVersion">().offset;
  uint8_t* mirror = FieldBytes<"publicMirror">(env);
  std::memcpy(mirror, env.bytes.data(), kNameBytes);
  std::memcpy(mirror + kVersion, env.bytes.data() + kVersion, sizeof(uint16_t));
  RefreshUserStores(env);
}

/// The name in the system's code page, at most 31 characters.
std::u16string ThroughCodePage(const std::u16string& name) {
  std::array<char, 256> bytes;
  std::array<char16_t, 256> text;
  const int length = static_cast<int>(std::min<size_t>(name.size(), 31));
  if (length == 0) return {};
  const int size = WideCharToMultiByte(CP_ACP, name.c_str(), length, bytes.data(), static_cast<int>(bytes.size()));
  if (size == 0) return {};
  const int back = MultiByteToWideChar(CP_ACP, bytes.data(), size, text.data(), static_cast<int>(text.size()));
  return {text.data(), static_cast<size_t>(std::clamp(back, 0, 31))};
}

/// The number of the current per-page list in the record, 1 to 10.
uint16_t CurrentList(const DriverEnv& env) {
  return std::clamp<uint16_t>(Get<"lpInterSheetList">(env), 1, kPageListCount);
}

void SetPaths(UiHead& head) {
  const std::u16string directory = DriverDirectory();
  SetText(head.driverDirectory, directory);
  SetText(head.helpPath, directory + kHelpFile);
  SetText(head.phoneBookPath, directory + kPhoneBook);
}

void SetDeviceName(const UiState& ui) {
  const std::u16string name = ThroughCodePage(PrinterName(ui.printer));
  const std::span<char16_t, 32> block = DeviceName(ui);
  std::fill(std::copy(name.begin(), name.end(), block.begin()), block.end(), u'\0');
}

/// Items for no tab and for each number that a tab can have.
void FillTabNumbers(ListBlock& block, uint16_t value) {
  const uint32_t highest = HighestTabIndex();
  block.value = block.committed = value;
  block.status = 1;
  block.count = static_cast<uint16_t>(highest + 1);
  for (uint16_t i = 0; i < block.count; ++i) {
    ListItem& item = block.Items()[i];
    item.value = item.displayIndex = i;
    item.status = 1;
    const std::u16string label =
        i == 0 ? GetUiString(text::kContinuous) : ExpandText(u"%d/%d", {int64_t{i}, int64_t{highest}});
    const size_t length = std::min(label.size(), std::size(item.label) - 1);
    std::memcpy(item.label, label.data(), length * sizeof(char16_t));
    if (i == value) block.index = i;
  }
}

/// Rows that share blocks with the per-page list, the preview and the watermark page.
void FillVariableRows(const UiState& ui, const DriverEnv& env, const ResourceContext* resources) {
  constexpr uint16_t kTabPaper = ParamNamed<u"lpTabPaperSize">();
  constexpr uint16_t kTabCount = ParamNamed<u"lpTabIndexNum">();
  constexpr uint16_t kPreview = ParamNamed<u"PreviewMode Sel">();
  std::memcpy(ui.head().pageMemo, FieldBytes<"pageMemo">(env), sizeof ui.head().pageMemo);
  for (const uint16_t index : {kTabPaper, kTabCount}) {
    const uint16_t feature = kParamRows[index].feature;
    FillListBlock(resources, feature, *reinterpret_cast<ListBlock*>(SlotOf(ui, index)),
                  static_cast<uint16_t>(CatalogDefault(resources, feature)));
  }
  FillTabNumbers(SlotAs<u"lpPrnTabIndexNo", ListBlock>(ui), Get<"lpPrnTabIndexNo">(env));
  SlotAs<u"bWatermarkCurrent", uint8_t>(ui) = Get<"watermarkIndex">(env);
  SlotAs<u"bWatermarkFixed", uint8_t>(ui) = Get<"watermarkIndex">(env);
  SlotAs<u"bWatermarkDefault", uint8_t>(ui) = 0;
  FillRadioBlock(resources, kParamRows[kPreview].feature, *reinterpret_cast<RadioBlock*>(SlotOf(ui, kPreview)),
                 Get<"previewMode">(env));
}

template <ParamKey kKey>
void SetBothValues(const UiState& ui, uint16_t value) {
  const ValueFields fields = FieldsOf(ui, ParamNamed<kKey>());
  *fields.value = *fields.committed = value;
}

template <ParamKey kKey>
void SetListValue(const UiState& ui, uint16_t value) {
  ListBlock& block = SlotAs<kKey, ListBlock>(ui);
  const auto items = block.Items();
  const auto item = std::ranges::find(items, value, [](const ListItem& i) { return i.value; });
  block.value = block.committed = value;
  block.index = item == items.end() ? uint16_t{0} : static_cast<uint16_t>(item - items.begin());
}

/// The tab settings of the current per-page list become the current ones.
void TakeTabSettings(const UiState& ui, uint16_t list) {
  if (ui.stores.pageLists == nullptr) return;
  const TabSettings& tabs = ui.stores.pageLists->lists[list - 1].tabSettings;
  SetListValue<u"lpTabPaperSize">(ui, tabs.tabPaperSize);
  SetListValue<u"lpTabIndexNum">(ui, tabs.tabIndexNum);
  SetBothValues<u"TabTopMargin">(ui, tabs.tabTopMargin);
  SetBothValues<u"TabBottomMargin">(ui, tabs.tabBottomMargin);
  SetBothValues<u"TabIndexSpace">(ui, tabs.tabIndexSpace);
  SetBothValues<u"TabTextPosition">(ui, static_cast<uint16_t>(tabs.tabTextPosition));
}

}  // namespace

UiStatePtr CreateUiState(const ResourceContext* resources, const DriverEnv& env, HANDLE printer) {
  RefreshDriverDirectory(printer);
  const StringsInUse strings;
  DriverEnv work = env;  // accessors rewrite what they read
  RefreshStores(work);

  const ParamTables& tables = Params();
  auto ui = std::make_unique<UiState>();
  if (!AllocateBlocks(*ui, tables.fixedSize, tables.variableSize)) return nullptr;
  ui->printer = printer;
  ui->head().printerDataLocked = 1;
  BindUiState(*ui);

  const uint16_t list = CurrentList(work);
  SlotAs<u"InterSheetListData_nCurrent", uint16_t>(*ui) = list;
  SlotAs<u"InterSheetListData_PageListNum", uint16_t>(*ui) = 0;
  std::memcpy(ui->head().trayTable, work.bytes.data() + kTrayTableOffset, sizeof ui->head().trayTable);
  SetPaths(ui->head());
  if (Get<"faxAddressFileId">(work) != 0) LoadAddressFile(*ui, work, resources);
  SetDeviceName(*ui);

  FillUiState(*ui, work, resources);
  FillVariableRows(*ui, work, resources);
  ui->stores = CreateListStoreSet();
  if (!ReadListStores(ui->stores, PrinterName(printer), printer)) return nullptr;
  TakeTabSettings(*ui, list);
  ui->snapshots = std::make_shared<const UiSnapshots>(TakeSnapshots(resources));
  return ui;
}

}  // namespace heron

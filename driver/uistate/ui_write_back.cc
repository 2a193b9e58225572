// From a state back to a record: every committed value into its field, then what follows from several of them.
#include <algorithm>
#include <cstring>
#include <string>

#include "catalog/other_values.h"
#include "generated/features.h"
#include "platform/api/devmode.h"
#include "settings/binding.h"
#include "settings/papers.h"
#include "settings/printer_data.h"
#include "uistate/recipients.h"
#include "uistate/ui_state.h"
#include "uistate/unnamed_params.h"

namespace heron {
namespace {

namespace form = value::lpOverlay;

constexpr char16_t kBuiltInForm[] = u"HR_DEFAULT";

void PutField(const WorkingParam& param, DriverEnv& env, uint32_t value) {
  std::memcpy(env.bytes.data() + param.field->At(param.row->fieldIndex), &value, param.field->ElementSize());
}

/// Rows whose rule is more than a copy, and rows that a later step decides, are left to those steps.
void WriteBackRows(const UiState& ui, DriverEnv& env) {
  constexpr uint16_t kOverlayIndex = ParamNamed<u"bOverlayIndex">();
  for (const WorkingParam& param : Params().params) {
    if (param.field == nullptr || param.row->rule == ParamRule::kIsCovered) continue;
    if (param.row->IsRaw()) {
      if (param.selfIndex == kOverlayIndex || param.row->id == param::kDeviceInfoText) continue;
      std::memcpy(env.bytes.data() + param.field->offset, SlotOf(ui, param.selfIndex), param.slotSize);
    } else if (param.row->HasBlock()) {
      const uint16_t value = *FieldsOf(ui, param.selfIndex).committed;
      PutField(param, env, param.row->rule == ParamRule::kPlusOne ? value + 1u : value);
    }
  }
  std::memcpy(FieldBytes<"pageMemo">(env), ui.head().pageMemo, sizeof ui.head().pageMemo);
}

/// The output paper is one of its own only with zoom on.
void WriteBackOutputPaper(const UiState& ui, DriverEnv& env) {
  const int16_t paper = Get<"dmPaperSize">(env);
  Set<"documentPaperSnapshot">(env, paper);
  if (Committed<u"ZoomCheck">(ui) == 0) Set<"lpOutputPaper">(env, paper);
}

void WriteBackPaperSize(const UiState& ui, DriverEnv& env, const ResourceContext* resources) {
  constexpr uint32_t kSizeBits = platform::DM_PAPERLENGTH | platform::DM_PAPERWIDTH;
  const int16_t paper = Get<"dmPaperSize">(env);
  if (IsCustomPaper(paper)) {
    const bool locked = ui.head().printerDataLocked != 0;
    Set<"dmPaperWidth">(env, locked ? Committed<u"UDPaperWidth">(ui) : 0);
    Set<"dmPaperLength">(env, locked ? Committed<u"UDPaperLength">(ui) : 0);
    Set<"dmFields">(env, Get<"dmFields">(env) | kSizeBits);
    return;
  }
  uint32_t size[2] = {};
  const uint32_t row = static_cast<uint32_t>(std::max(CatalogIndexOf(feature::lpMediaSize, paper), 0));
  CatalogQuery(resources, feature::lpMediaSize, kSize, size, row, sizeof size);
  Set<"dmPaperWidth">(env, size[0] / 10);
  Set<"dmPaperLength">(env, size[1] / 10);
  Set<"dmFields">(env, Get<"dmFields">(env) & ~kSizeBits);
}

void WriteBackLayout(const UiState& ui, DriverEnv& env) {
  const bool divided =
      Committed<u"Layout_Check">(ui) != 0 && Committed<u"lpLayout_Select">(ui) == value::lpLayout_Select::kBooklet;
  Set<"layoutFactor">(env, divided ? 4 : 1);
  Set<"layoutFlag">(env, divided ? 1 : 0);
}

void WriteBackCovers(const UiState& ui, DriverEnv& env) {
  if (Committed<u"Front_Check">(ui) == 0) Set<"lpFrontCover">(env, value::lpFrontCover::kNoCover);
  if (Committed<u"Back_Check">(ui) == 0) Set<"lpBackCover">(env, value::lpBackCover::kNoCover);
}

/// Path of the form that the job makes or prints; empty if the store has none.
std::u16string_view FormPath(const UiState& ui, uint16_t overlay, uint8_t index) {
  const OverlayStore* store = ui.stores.overlays.get();
  if (store == nullptr) return {};
  if (overlay != form::kCreateForm && index >= kFormCount) return {};
  const auto& field = overlay == form::kCreateForm ? store->createFileName : store->forms[index];
  const std::u16string_view text(field, std::size(field));
  return text.substr(0, text.find(u'\0'));
}

void WriteBackOverlay(const UiState& ui, DriverEnv& env) {
  const uint16_t overlay = Committed<u"lpOverlay">(ui);
  const uint8_t index = SlotAs<u"bOverlayIndex", uint8_t>(ui);
  if (overlay == form::kNoOverlay) {
    Set<"bOverlayIndex">(env, 0);
    SetText<"overlayName">(env, {});
    return;
  }
  if (overlay != form::kCreateForm && overlay != form::kPrintWithForm && overlay != form::kPrintWithFormAsking) return;
  if (overlay == form::kPrintWithForm && Committed<u"OverlayPrompt">(ui) == value::OverlayPrompt::kOn)
    Set<"lpOverlay">(env, form::kPrintWithFormAsking);
  Set<"bOverlayIndex">(env, index);
  const std::u16string_view path = FormPath(ui, overlay, index);
  SetText<"overlayName">(env, path.empty() ? std::u16string_view(kBuiltInForm) : path);
}

void WriteBackDeviceInfo(const UiState& ui, DriverEnv& env) {
  const uint8_t* text = SlotOf(ui, ParamIndexOf(param::kDeviceInfoText));
  if (text[0] != 0 || text[1] != 0)
    std::memcpy(FieldBytes<"deviceInfoText">(env), text, FieldOf<"deviceInfoText">().Size());
}

/// What the user confirmed in the spreadsheet program. Written only where it changes: a write costs more than all else.
void WriteBackBookMode(const UiState& ui, const DriverEnv& env) {
  const uint32_t status = !InExcel()                                            ? kBookModeUnknown
                          : Committed<u"lpOutput">(ui) == value::lpOutput::kFax ? kBookModeFax
                                                                                : kBookModePrint;
  if (BookModeStatus(GetText<"dmDeviceName">(env)) != status) SetBookModeStatus(env, status);
}

void WriteBackResolution(const UiState& ui, DriverEnv& env) {
  const bool fax = Committed<u"lpOutput">(ui) == value::lpOutput::kFax && ui.head().faxAddressCount != 0;
  const uint16_t resolution = fax ? Committed<u"lpQuality">(ui) : Committed<u"lpResolution">(ui);
  Set<"dmPrintQuality">(env, resolution);
  Set<"dmYResolution">(env, resolution);
  Set<"lpResolution">(env, resolution);
}

void WriteBackDuplex(DriverEnv& env) {
  const uint8_t side = ComputeBindingSide(env);
  Set<"bindingSide">(env, side);
  const bool one_sided = Get<"lpPRNType">(env) == value::lpPRNType::kOneSided;
  Set<"dmDuplex">(env, one_sided ? value::dmDuplex::kOneSided : DuplexForBinding(SheetOrientation(env), side));
}

/// The selected row and the ten rows; the word before them isn't the table's.
void WriteBackTrays(const UiState& ui, DriverEnv& env) {
  constexpr uint32_t kSkipped = sizeof(uint16_t);
  constexpr uint32_t kSize = sizeof(UiHead::trayTable) - kSkipped;
  std::memcpy(FieldBytes<"trayTableIndex">(env), ui.head().trayTable + kSkipped, kSize);
}

}  // namespace

void FillRecord(const UiState& ui, DriverEnv& env, const ResourceContext* resources) {
  WriteBackRows(ui, env);
  WriteBackOutputPaper(ui, env);
  WriteBackPaperSize(ui, env, resources);
  Set<"dmDefaultSource">(env, Committed<u"lpMediaSource">(ui));
  WriteBackLayout(ui, env);
  WriteBackCovers(ui, env);
  Set<"renderConstant">(env, 5);
  WriteBackOverlay(ui, env);
  WriteBackDeviceInfo(ui, env);
  Set<"faxAddressCount">(env, ui.head().faxAddressCount);
  WriteBackResolution(ui, env);
  Set<"dmColor">(env, value::dmColor::kMonochrome);
  WriteBackDuplex(env);
  WriteBackTrays(ui, env);
}

void WriteBackUiState(UiState& ui, DriverEnv& env, const ResourceContext* resources, AddressFile addresses) {
  // May come to no recipients, which the record then says.
  if (addresses == AddressFile::kWrite) WriteAddressFile(ui, env);
  FillRecord(ui, env, resources);
  if (addresses == AddressFile::kWrite && Get<"faxAddressFileId">(env) == 0) Set<"faxAddressCount">(env, 0);
  WriteBackBookMode(ui, env);
}

}  // namespace heron

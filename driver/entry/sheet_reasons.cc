#include "entry/sheet_reasons.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "catalog/strings.h"
#include "changes/commit.h"
#include "changes/reports.h"
#include "entry/exports.h"
#include "generated/texts.h"
#include "pages/page.h"
#include "pages/sheet_context.h"
#include "platform/api/message_box.h"
#include "platform/api/text.h"
#include "settings/driver_env.h"
#include "settings/printer_data.h"
#include "uistate/keep_lists.h"

namespace heron {
namespace {

using namespace platform;

constexpr int32_t kFailed = -1;
constexpr DWORD kReturnsRecord = DM_UPDATE | DM_COPY;

SheetContext* ContextOf(const PROPSHEETUI_INFO& info) {
  return reinterpret_cast<SheetContext*>(info.UserData);
}

/// Makes the working settings of the context's record and hands the pages to the host. From then on the context lives
/// until DESTROY, also after a failure: the host may hold pages.
int32_t OpenSheet(std::unique_ptr<SheetContext> context, PROPSHEETUI_INFO& info, bool is_device) {
  context->settings = engine::OpenRecord(context->resources.get(), context->env, context->hPrinter);
  if (context->settings == nullptr) return kFailed;
  context->lists = CopyOfLists(context->ui().stores);
  context->ui().head().uiEditable = context->editable ? 1 : 0;
  context->ui().head().isDocumentSheet = is_device ? 0 : 1;
  SheetContext& opened = *context.release();
  info.UserData = reinterpret_cast<ULONG_PTR>(&opened);
  return RegisterPages(opened, &info, is_device) ? 1 : 0;
}

int32_t InitDocument(PROPSHEETUI_INFO& info, const DOCUMENTPROPERTYHEADER& header) {
  auto context = std::make_unique<SheetContext>();
  context->hPrinter = header.hPrinter;
  context->printerName = header.pszPrinterName;
  context->editable = (header.fMode & DM_NOPERMISSION) == 0;
  context->request = std::make_unique<JobRequest>(JobRequest{.hPrinter = header.hPrinter,
                                                             .printerName = context->printerName.c_str(),
                                                             .inputEnv = header.pdmIn,
                                                             .mode = header.fMode,
                                                             .resultBuffer = &context->env});
  if (!ResolveJobEnv(context->request.get())) return kFailed;
  context->resources.reset(std::exchange(context->request->resources, nullptr));
  return OpenSheet(std::move(context), info, false);
}

int32_t InitDevice(PROPSHEETUI_INFO& info, const DEVICEPROPERTYHEADER& header) {
  auto context = std::make_unique<SheetContext>();
  context->hPrinter = header.hPrinter;
  context->printerName = header.pszPrinterName != nullptr ? header.pszPrinterName : PrinterName(header.hPrinter);
  context->editable = (header.Flags & DPS_NOPERMISSION) == 0;
  context->resources.reset(OpenResourceContext(ReadLocaleCountry()));
  if (context->resources == nullptr) return kFailed;
  if (!LoadPrinterEnv(header.hPrinter, &context->env, context->printerName.c_str(), context->resources.get(),
                      &context->saved))
    return kFailed;
  return OpenSheet(std::move(context), info, true);
}

int32_t DescribeSheet(const PROPSHEETUI_INFO& info, LPARAM lParam) {
  constexpr WORD kHeaderFlags = 4;
  constexpr ULONG_PTR kIcon = 64062;
  auto* const description = reinterpret_cast<PROPSHEETUI_INFO_HEADER*>(lParam);
  SheetContext* const context = ContextOf(info);
  if (description == nullptr || context == nullptr) return kFailed;
  description->Flags = kHeaderFlags;
  description->pTitle = context->printerName.data();
  description->hInst = LibraryInstance();
  description->IconID = kIcon;
  return 1;
}

int32_t CloseSheet(PROPSHEETUI_INFO& info) {
  delete ContextOf(info);
  info.UserData = 0;
  return 1;
}

/// Keeps the result; true if it confirms the sheet, whose record then holds what the user has set.
bool TakeResult(PROPSHEETUI_INFO& info, LPARAM lParam) {
  const auto* const result = reinterpret_cast<const SETRESULT_INFO*>(lParam);
  if (result == nullptr) return false;
  info.Result = static_cast<ULONG_PTR>(result->Result);
  return IsConfirmed(info, lParam);
}

/// Does what a page's Apply does. False if lists can't be stored and the user doesn't want to go on without them, or
/// can't be asked.
bool ApplyNow(SheetContext& context) {
  engine::CommitSettings(context.engine(), nullptr);
  return pages::StoreSheet(context, [](const std::u16string& question) {
    return MessageBoxW(nullptr, question.c_str(), engine::ModelCaption().c_str(), pages::kListsQuestion) == IDYES;
  });
}

/// What a user changed after the last Apply dies with the sheet, as texts and lists have no committed copy to compare.
/// A host that confirms without an Apply gets what is on the pages. False if that can't be applied.
bool WriteBack(SheetContext& context) {
  const bool unapplied = context.applied == nullptr;
  if (unapplied && !ApplyNow(context)) return false;
  WriteBackUiState(*context.applied, context.env, context.resources.get());
  if (unapplied) context.applied.reset();  // the host may confirm once more
  return true;
}

int32_t SetDocumentResult(PROPSHEETUI_INFO& info, const DOCUMENTPROPERTYHEADER& header, LPARAM lParam) {
  const bool confirmed = TakeResult(info, lParam);
  if (!confirmed || (header.fMode & kReturnsRecord) == 0 || header.pdmOut == nullptr) return 1;
  SheetContext& context = *ContextOf(info);
  if (!WriteBack(context)) return kFailed;
  const size_t size = size_t{Get<"dmSize">(context.env)} + Get<"dmDriverExtra">(context.env);
  std::memcpy(header.pdmOut, context.env.bytes.data(), std::min<size_t>(size, kEnvSize));
  return 1;
}

/// Whether the user wants his settings in place of those that another program has saved since the sheet was opened.
bool AsksToReplace(const SheetContext& context) {
  const std::u16string text = platform::ExpandText(GetUiString(text::kAskToReplaceSettings), {context.printerName});
  constexpr DWORD kFlags = MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2;
  return MessageBoxW(nullptr, text.c_str(), engine::ModelCaption().c_str(), kFlags) == IDYES;
}

/// Saves the sheet's record in place of the one that it was opened with. What another program has saved meanwhile stays
/// unless the user says otherwise; he isn't asked where he changed nothing. Nothing is locked while he thinks.
int32_t SetDeviceResult(PROPSHEETUI_INFO& info, const DEVICEPROPERTYHEADER& header, LPARAM lParam) {
  if (!TakeResult(info, lParam)) return 1;
  SheetContext& context = *ContextOf(info);
  if (!WriteBack(context)) return kFailed;
  Replaced replaced = Replaced::kDone;
  while ((replaced = ReplacePrinterEnv(header.hPrinter, context.saved, context.env)) == Replaced::kOvertaken) {
    if (!context.editable || !context.touched) return 1;
    context.saved = ReadSavedRecord(header.hPrinter);
    if (AsksToReplace(context)) continue;
    info.Result = 0;
    return 1;
  }
  UpdateStoredCountry(header.hPrinter);
  return replaced == Replaced::kDone || !context.editable ? 1 : kFailed;
}

}  // namespace

bool IsConfirmed(const PROPSHEETUI_INFO& info, LPARAM lParam) {
  const auto* const result = reinterpret_cast<const SETRESULT_INFO*>(lParam);
  return info.Reason == PROPSHEETUI_REASON_SET_RESULT && result != nullptr && result->Result == 1 &&
         ContextOf(info) != nullptr;
}

int32_t DocumentSheetReason(PROPSHEETUI_INFO& info, const DOCUMENTPROPERTYHEADER& header, LPARAM lParam) {
  switch (info.Reason) {
    case PROPSHEETUI_REASON_INIT:
      return InitDocument(info, header);
    case PROPSHEETUI_REASON_GET_INFO_HEADER:
      return DescribeSheet(info, lParam);
    case PROPSHEETUI_REASON_DESTROY:
      return CloseSheet(info);
    case PROPSHEETUI_REASON_SET_RESULT:
      return SetDocumentResult(info, header, lParam);
    default:
      return kFailed;
  }
}

int32_t DeviceSheetReason(PROPSHEETUI_INFO& info, const DEVICEPROPERTYHEADER& header, LPARAM lParam) {
  EnsureRenderDriverValue(header.hPrinter);
  RefreshDriverDirectory(header.hPrinter);
  switch (info.Reason) {
    case PROPSHEETUI_REASON_INIT:
      return InitDevice(info, header);
    case PROPSHEETUI_REASON_GET_INFO_HEADER:
      return DescribeSheet(info, lParam);
    case PROPSHEETUI_REASON_DESTROY:
      return CloseSheet(info);
    case PROPSHEETUI_REASON_SET_RESULT:
      return SetDeviceResult(info, header, lParam);
    default:
      return kFailed;
  }
}

}  // namespace heron

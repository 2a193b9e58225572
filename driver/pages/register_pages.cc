// The pages of a sheet on their way to its host, and the steps that open it.
#include <span>

#include "engine/page_list.h"
#include "pages/page.h"
#include "pages/text_settings.h"
#include "settings/papers.h"

namespace heron {
namespace {

using namespace platform;

/// Mode of a call that may change what the printer keeps for all users.
constexpr uint32_t kPrinterDataMode = 78;

/// The page's handle, which the host now owns; null if it refused.
HANDLE AddPage(SheetContext& context, const PROPSHEETUI_INFO& info, const pages::PageRow& row) {
  context.pages.push_back(pages::MakePage(context, row));
  const HANDLE page =
      CreatePropertySheetPageW({.dialog = row.number, .logic = context.pages.back().get(), .has_help = true});
  if (page == nullptr) return nullptr;
  const auto added =
      info.pfnComPropSheet(info.hComPropSheet, CPSFUNC_ADD_HPROPSHEETPAGE, reinterpret_cast<LPARAM>(page), 0);
  if (added != 0) return page;
  TakePropertySheetPage(page);
  return nullptr;
}

bool AddPages(SheetContext& context, const PROPSHEETUI_INFO& info, std::span<const pages::PageRow> rows) {
  for (const pages::PageRow& row : rows) {
    context.lastPage = AddPage(context, info, row);
    if (context.lastPage == nullptr) return false;
  }
  return true;
}

}  // namespace

bool RegisterPages(SheetContext& context, PROPSHEETUI_INFO* pPSUIInfo, bool isDeviceSheet) {
  LoadPaperLabels();
  pPSUIInfo->Result = context.result = 0;
  const auto rows = isDeviceSheet ? std::span<const pages::PageRow>(pages::kDevicePages) : pages::kDocumentPages;
  if (!AddPages(context, *pPSUIInfo, rows)) return false;
  context.callback = pPSUIInfo->pfnComPropSheet;
  context.sheet = pPSUIInfo->hComPropSheet;
  pPSUIInfo->Result = context.result = 1;

  engine::OpenSettings(context.resolver(), nullptr,
                       isDeviceSheet ? engine::OpeningPass::kSkip : engine::OpeningPass::kRun);
  pages::TakeOwnership(context.engine());
  engine::ValidatePerPageList(context.engine(), engine::Conflicts::kAll);
  const bool may_write = !isDeviceSheet && context.request->mode == kPrinterDataMode;
  context.ui().head().printerDataLocked = may_write ? 0 : 1;
  return true;
}

}  // namespace heron

// One property sheet from PROPSHEETUI_REASON_INIT to PROPSHEETUI_REASON_DESTROY: the record that it edits, its working
// settings, its pages, and what the sheet's host gave.
//
// Made by the entry of the sheet, kept in the UserData of its PROPSHEETUI_INFO. Everything runs on the sheet's thread;
// two sheets share nothing but the process's texts and paper table.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalog/catalog.h"
#include "changes/opening.h"
#include "platform/dialog/dialog.h"
#include "settings/driver_env.h"
#include "settings/printer_data.h"
#include "settings/resolve.h"
#include "uistate/list_stores.h"

namespace heron {

struct SheetContext {
  platform::HANDLE hPrinter = nullptr;
  std::u16string printerName;
  uint32_t ownerWindow = 0;
  bool editable = true;
  std::unique_ptr<JobRequest> request;  ///< null for a device sheet

  // What the host gave, and what it has been informed of.
  platform::PFNCOMPROPSHEET callback = nullptr;
  platform::HANDLE sheet = nullptr;
  platform::HANDLE lastPage = nullptr;
  platform::ULONG_PTR result = 0;

  std::unique_ptr<ResourceContext, CloseContext> resources;
  DriverEnv env{};
  std::unique_ptr<engine::OpenedSettings> settings;
  std::vector<std::unique_ptr<platform::DialogLogic>> pages;
  SavedRecord saved;              ///< of a device sheet: the printer's saved record as it was read
  ListStoreSet lists;             ///< the lists as they were read or last written
  bool touched = false;           ///< the user has changed something
  bool doesWithoutLists = false;  ///< the user knows that these lists can't be stored, and has changed nothing since
  UiStatePtr applied;             ///< a copy of the settings as the last Apply left them; null before the first

  UiState& ui() const { return *settings->ui; }
  engine::Engine& engine() const { return settings->engine; }
  engine::Resolver& resolver() const { return settings->resolver; }
};

/// Builds the pages, adds them to the host and runs the opening steps. `Result` of `pPSUIInfo` becomes 1; 0, with no
/// further page added, if the host refuses one: it then shows none of those that it has. The context's settings are
/// open and outlive the pages.
bool RegisterPages(SheetContext& context, platform::PROPSHEETUI_INFO* pPSUIInfo, bool isDeviceSheet);

}  // namespace heron

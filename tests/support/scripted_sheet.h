// The host of property sheets without windows: opens a sheet through the exports and keeps its pages on the scripted
// desk.
#pragma once

#include <memory>
#include <vector>

#include "entry/exports.h"
#include "pages/sheet_context.h"
#include "scripted_desk.h"

namespace heron::test {

inline constexpr platform::DWORD kMayChangePrinterData = 78;  ///< mode of the call, DM_COPY among it

/// The host of one sheet.
class ScriptedSheet {
 public:
  ScriptedSheet(ScriptedDesk& desk, platform::HANDLE printer, platform::DWORD mode, bool is_device = false)
      : desk_(desk), is_device_(is_device) {
    document_ = {.cbSize = sizeof document_,
                 .Reserved = 0,
                 .hPrinter = printer,
                 .pszPrinterName = nullptr,
                 .pdmIn = nullptr,
                 .pdmOut = reinterpret_cast<platform::DEVMODEW*>(out.bytes.data()),
                 .cbOut = 0,
                 .fMode = mode};
    device_ = {
        .cbSize = sizeof device_, .Flags = static_cast<uint16_t>(mode), .hPrinter = printer, .pszPrinterName = nullptr};
    info_.hComPropSheet = this;
    info_.pfnComPropSheet = [](platform::HANDLE sheet, uint32_t function, platform::LPARAM page,
                               platform::LPARAM value) {
      return static_cast<ScriptedSheet*>(sheet)->Call(function, page, value);
    };
    info_.lParamInit =
        is_device ? reinterpret_cast<platform::LPARAM>(&device_) : reinterpret_cast<platform::LPARAM>(&document_);
  }
  ~ScriptedSheet() { Close(); }

  platform::LONG Reason(uint16_t reason, platform::LPARAM lParam = 0) {
    info_.Reason = reason;
    return is_device_ ? DrvDevicePropertySheets(&info_, lParam) : DrvDocumentPropertySheets(&info_, lParam);
  }
  /// The record that the caller hands in.
  void SetInput(const DriverEnv& env) {
    input_ = env;
    document_.pdmIn = reinterpret_cast<platform::DEVMODEW*>(input_.bytes.data());
  }
  platform::LONG Open() { return Reason(platform::PROPSHEETUI_REASON_INIT); }

  /// Brings a page to the front, first leaving the one there; null if that one refuses.
  ScriptedDialog* Show(DialogName number) {
    if (front_ != nullptr && !front_->logic->Deactivate()) return nullptr;
    front_ = nullptr;
    for (Page& page : pages) {
      if (page.number == number) front_ = &page;
    }
    if (front_ == nullptr) return nullptr;
    if (front_->dialog == nullptr) {
      front_->dialog = std::make_unique<ScriptedDialog>(desk_, number, front_->logic);
      front_->logic->Initialise(front_->dialog.get());
    }
    front_->logic->Activate();
    return front_->dialog.get();
  }

  /// OK: false if the page in front or a page's apply refuses.
  bool Confirm() {
    if (!Apply()) return false;
    End(1);
    return true;
  }
  bool Apply() {
    if (front_ != nullptr && !front_->logic->Deactivate()) return false;
    for (Page& page : pages) {
      if (page.dialog != nullptr && !page.logic->Apply()) return false;
    }
    return true;
  }
  void Cancel() {
    for (Page& page : pages) {
      if (page.dialog != nullptr) page.logic->Reset();
    }
    End(results == 0 ? 0 : 1);  // what was applied before stays
  }

  SheetContext& context() { return *reinterpret_cast<SheetContext*>(info_.UserData); }
  platform::PROPSHEETUI_INFO& info() { return info_; }

  struct Page {
    uint16_t number = 0;
    platform::DialogLogic* logic = nullptr;
    std::unique_ptr<ScriptedDialog> dialog = {};
  };
  std::vector<Page> pages;
  size_t accepted = 100;  ///< pages that the host takes
  int results = 0;        ///< times that it received a result
  DriverEnv out{};        ///< what a confirmed document sheet gives

 private:
  intptr_t Call(uint32_t function, platform::LPARAM page, platform::LPARAM value) {
    if (function == platform::CPSFUNC_SET_RESULT) return results += static_cast<int>(value);
    if (pages.size() >= accepted) return 0;
    const auto given = platform::TakePropertySheetPage(reinterpret_cast<platform::HANDLE>(page));
    EXPECT_TRUE(given && given->has_help);
    pages.push_back({.number = given->dialog, .logic = given->logic});
    return 1;
  }
  void End(platform::LRESULT result) {
    platform::SETRESULT_INFO told{.cbSize = sizeof told, .wReserved = 0, .hSetResult = nullptr, .Result = result};
    EXPECT_EQ(Reason(platform::PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<platform::LPARAM>(&told)), 1);
    EXPECT_EQ(info_.Result, static_cast<platform::ULONG_PTR>(result));
    Close();
  }
  void Close() {
    if (info_.UserData == 0) return;
    for (Page& page : pages) {
      if (page.dialog != nullptr) page.logic->Destroy();
    }
    front_ = nullptr;
    EXPECT_EQ(Reason(platform::PROPSHEETUI_REASON_DESTROY), 1);
    EXPECT_EQ(info_.UserData, 0U);
    pages.clear();
  }

  ScriptedDesk& desk_;
  bool is_device_;
  DriverEnv input_{};
  platform::DOCUMENTPROPERTYHEADER document_{};
  platform::DEVICEPROPERTYHEADER device_{};
  platform::PROPSHEETUI_INFO info_{};
  Page* front_ = nullptr;
};

}  // namespace heron::test

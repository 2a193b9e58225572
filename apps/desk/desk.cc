// Runs the sheet through its reasons and stores its result (desk.h).

#include "desk.h"

#include <QEventLoop>
#include <exception>
#include <memory>

#include "message_window.h"
#include "platform/dialog/dialog.h"
#include "property_sheet.h"
#include "text.h"

namespace heron::desk {
namespace {

using platform::LPARAM;
using platform::PROPSHEETUI_INFO;

constexpr intptr_t kConfirmedResult = 1;

/// The callback that the driver adds its pages with. The sheet's handle is its window.
intptr_t CallSheet(platform::HANDLE handle, uint32_t function, LPARAM first, LPARAM second) {
  auto* const sheet = static_cast<PropertySheet*>(handle);
  if (sheet == nullptr) return 0;
  if (function == platform::CPSFUNC_SET_RESULT) {
    sheet->SetResult(second);
    return 1;
  }
  if (function != platform::CPSFUNC_ADD_HPROPSHEETPAGE) return 0;
  const auto page = platform::TakePropertySheetPage(reinterpret_cast<platform::HANDLE>(first));
  return page.has_value() && sheet->AddPage(*page) ? 1 : 0;
}

/// The driver's operation with the block that it keeps its own things in from one reason to the next.
class DriverSheet {
 public:
  DriverSheet(const SheetRequest& request, PropertySheet& sheet)
      : operation_(request.operation),
        info_{.cbSize = sizeof(PROPSHEETUI_INFO),
              .Version = 0x100,
              .Flags = 0,
              .Reason = 0,
              .hComPropSheet = &sheet,
              .pfnComPropSheet = CallSheet,
              .lParamInit = reinterpret_cast<LPARAM>(request.header),
              .UserData = 0,
              .Result = 0} {}

  int32_t Call(platform::WORD reason, void* argument = nullptr) {
    info_.Reason = reason;
    return operation_(&info_, reinterpret_cast<LPARAM>(argument));
  }
  /// What the driver made of the sheet's result: 1 if it was confirmed.
  intptr_t Result() const { return static_cast<intptr_t>(info_.Result); }

 private:
  SheetOperation operation_;
  PROPSHEETUI_INFO info_;
};

/// A window's title made of what the driver calls the sheet.
QString Title(DriverSheet& driver) {
  platform::PROPSHEETUI_INFO_HEADER header{};
  header.cbSize = sizeof(header);
  driver.Call(platform::PROPSHEETUI_REASON_GET_INFO_HEADER, &header);
  const QString name = header.pTitle == nullptr ? QString() : QString::fromUtf16(header.pTitle);
  return name.isEmpty() ? QStringLiteral("Printer settings") : QStringLiteral("%1 - Printer settings").arg(name);
}

/// Uninstalls itself at the end, so that no question reaches a desk that no longer exists.
class InstalledMessages {
 public:
  InstalledMessages() { platform::InstallMessageDesk(&windows_); }
  ~InstalledMessages() { platform::InstallMessageDesk(nullptr); }
  InstalledMessages(const InstalledMessages&) = delete;
  InstalledMessages& operator=(const InstalledMessages&) = delete;

 private:
  MessageWindows windows_;
};

/// Has the driver hand its result back and stores it. Why it couldn't, or an empty text.
QString StoreResult(const SheetRequest& request, DriverSheet& driver, PropertySheet& sheet) {
  platform::SETRESULT_INFO info{.cbSize = sizeof(info),
                                .wReserved = 0,
                                .hSetResult = &sheet,
                                .Result = static_cast<platform::LRESULT>(sheet.result())};
  if (driver.Call(platform::PROPSHEETUI_REASON_SET_RESULT, &info) <= 0) {
    return QStringLiteral(
        "The driver can't store them. The disk may be full, or you may not have the right to write there.");
  }
  if (sheet.result() != kConfirmedResult || !request.keep) return {};
  try {
    request.keep(sheet.touched());
    return {};
  } catch (const std::exception& error) {
    return QString::fromUtf8(error.what());
  }
}

/// The same, with failures shown in a window. False on failure.
bool StoreOrTell(const SheetRequest& request, DriverSheet& driver, PropertySheet& sheet) {
  const QString why = StoreResult(request, driver, sheet);
  if (why.isEmpty()) return true;
  constexpr platform::DWORD kFlags = platform::MB_OK | platform::MB_ICONEXCLAMATION;
  MessageWindow(&sheet, sheet.windowTitle(), QStringLiteral("The settings aren't stored.\n\n%1").arg(why), kFlags)
      .Run();
  return false;
}

/// Shows the sheet until it is closed. False if what was confirmed in it isn't stored.
bool ShowUntilClosed(const SheetRequest& request, DriverSheet& driver, PropertySheet& sheet) {
  bool stored = false;
  sheet.stores = [&] { return stored = StoreOrTell(request, driver, sheet); };
  sheet.setWindowTitle(Title(driver));
  if (request.opened) request.opened(sheet);
  QEventLoop loop;
  QObject::connect(&sheet, &QDialog::finished, &loop, &QEventLoop::quit);
  sheet.Open();
  loop.exec();
  sheet.stores = nullptr;
  // After a Cancel the driver has still to hear of it, and what was applied before stays.
  return stored || StoreOrTell(request, driver, sheet);
}

}  // namespace

SheetEnd RunSheet(const SheetRequest& request) {
  const InstalledMessages messages;
  Resources resources(request.resources);
  auto sheet = std::make_unique<PropertySheet>(resources);
  DriverSheet driver(request, *sheet);
  const bool made = driver.Call(platform::PROPSHEETUI_REASON_INIT) > 0 && sheet->pageCount() > 0 &&
                    ShowUntilClosed(request, driver, *sheet);
  const intptr_t result = sheet->result();
  // The pages go before the settings that they show.
  sheet.reset();
  driver.Call(platform::PROPSHEETUI_REASON_DESTROY);
  if (!made) return SheetEnd::kRefused;
  return result == kConfirmedResult ? SheetEnd::kConfirmed : SheetEnd::kCancelled;
}

}  // namespace heron::desk
